// Cancellation of an item, of the receipt being issued and of the receipt issued last.
#include "FiscalCommands.h"
#include "bancada/Messages.h"
#include "bancada/comandos/Subjects.h"
#include "bancada/tape/FieldVisitor.h"

namespace bancada
{
namespace
{

class CancelaItem final : public ComandoOf<CmdCancelaItem>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor& fields) override
    {
        fields.Integer("item", m_iNumeroItem, 1, MAX_ITENS_CUPOM, Presence::REQUIRED,
                       TrLater("item number from 1"), "2");
    }

    BOOL FiscalCheck() override
    {
        return Accept(m_registro.CheckCancelaItem(m_iNumeroItem, m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.CancelaItem(m_iNumeroItem, m_dtExecStart);
        return TRUE;
    }
};

class CancelaCupomEmEmissao final : public ComandoOf<CmdCancelaCupomFiscalNfEmEmissao>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor&) override {}

    BOOL FiscalCheck() override
    {
        return Accept(m_registro.CheckCancelaCupomEmEmissao(m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.CancelaCupomEmEmissao(Fim());
        return TRUE;
    }
};

class CancelaCupom final : public ComandoOf<CmdCancelaCupom>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor& fields) override
    {
        fields.Integer(
            "coo", m_iCOOCancelado, 1, MAX_CONTADOR, Presence::OPTIONAL,
            TrLater("document number of the receipt; the receipt issued last when absent"), "120");
    }

    BOOL InitCheck(CommandDataFisco*) override
    {
        if (m_iCOOCancelado == 0) {
            m_iCOOCancelado = m_registro.GetMemoria().cupom.coo;
        }
        return TRUE;
    }

    BOOL FiscalCheck() override
    {
        return Accept(m_registro.CheckCancelaCupom(m_iCOOCancelado, m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.CancelaCupom(m_iCOOCancelado, m_dtExecStart);
        return TRUE;
    }
};

} // namespace

std::vector<CatalogueEntry> CancelamentoComandos()
{
    return {
        EntryOf<CancelaItem>("cancela_item", "CmdCancelaItem",
                             TrLater("cancels an item of the open receipt"),
                             "item_cupom_fiscal, item_cupom_nf", ""),
        EntryOf<CancelaCupomEmEmissao>(
            "cancela_cupom_em_emissao", "CmdCancelaCupomFiscalNfEmEmissao",
            TrLater("cancels the receipt that is being issued"), "cupom_fiscal, cupom_nf", ""),
        EntryOf<CancelaCupom>("cancela_cupom", "CmdCancelaCupom",
                              TrLater("cancels the receipt issued last"),
                              "cupom_fiscal, cupom_nf, outros_documentos", "NC"),
    };
}

} // namespace bancada

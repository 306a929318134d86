// Credit/debit vouchers and management reports.
#include "FiscalCommands.h"
#include "bancada/Messages.h"
#include "bancada/comandos/CommonFields.h"
#include "bancada/comandos/Subjects.h"

namespace bancada
{
namespace
{

class AbreCCD final : public ComandoOf<CmdAbreCCD>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor& fields) override
    {
        MeioPagamentoField(fields, "meio", m_iMeioPagamento,
                           TrLater("number of the payment means that the voucher is tied to"));
        fields.Integer(
            "coo", m_iCOO, 1, MAX_CONTADOR, Presence::OPTIONAL,
            TrLater("document number of the receipt; the receipt issued last when absent"), "120");
    }

    BOOL FiscalCheck() override
    {
        const int last = m_registro.GetMemoria().cupom.coo;
        if (m_iCOO != 0 && m_iCOO != last) {
            return Accept(Tr("document %1 is not the receipt issued last, which is %2",
                             {std::to_string(m_iCOO), std::to_string(last)}));
        }
        return Accept(m_registro.CheckAbreCCD(m_iMeioPagamento, m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.AbreCCD(m_iMeioPagamento, m_dtExecStart);
        return TRUE;
    }

  private:
    int m_iMeioPagamento = 0;
    int m_iCOO = 0; // 0 is the receipt issued last
};

class AbreEstornoCCD final : public ComandoOf<CmdAbreEstornoCCD>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor&) override {}

    BOOL FiscalCheck() override { return Accept(m_registro.CheckAbreEstornoCCD(m_dtExecStart)); }

    BOOL Fiscal() override
    {
        m_registro.AbreEstornoCCD(m_dtExecStart);
        return TRUE;
    }
};

class AbreGerencial final : public ComandoOf<CmdAbreGerencial>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor&) override {}

    BOOL FiscalCheck() override { return Accept(m_registro.CheckAbreGerencial(m_dtExecStart)); }

    BOOL Fiscal() override
    {
        m_registro.AbreGerencial(m_dtExecStart);
        return TRUE;
    }
};

class FechaCCDGerencial final : public ComandoOf<CmdFechaCCDGerencial>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor&) override {}

    BOOL FiscalCheck() override { return Accept(m_registro.CheckFechaCCDGerencial(m_dtExecStart)); }

    BOOL Fiscal() override
    {
        m_registro.FechaCCDGerencial(m_dtExecStart);
        return TRUE;
    }
};

} // namespace

std::vector<CatalogueEntry> ComprovanteComandos()
{
    return {
        EntryOf<AbreCCD>("abre_ccd", "CmdAbreCCD", TrLater("opens a credit/debit voucher"),
                         "outros_documentos", "CC"),
        EntryOf<AbreEstornoCCD>("abre_estorno_ccd", "CmdAbreEstornoCCD",
                                TrLater("opens the reversal of a credit/debit voucher"), "", ""),
        EntryOf<AbreGerencial>("abre_gerencial", "CmdAbreGerencial",
                               TrLater("opens a management report"), "outros_documentos", "RG"),
        EntryOf<FechaCCDGerencial>("fecha_ccd_gerencial", "CmdFechaCCDGerencial",
                                   TrLater("closes the open voucher or management report"),
                                   "outros_documentos", ""),
    };
}

} // namespace bancada

// Discounts and surcharges on an item, and their cancellation.
#include "FiscalCommands.h"
#include "bancada/Messages.h"
#include "bancada/comandos/CommonFields.h"
#include "bancada/comandos/Subjects.h"

namespace bancada
{
namespace
{

class EfetuaDescAcresItem final : public ComandoOf<CmdEfetuaDescAcresItem>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor& fields) override
    {
        OperacaoField(fields, m_eOperacao);
        TipoValorField(fields, m_eTipoValor);
        ValorAjusteField(fields, m_valor);
        fields.Integer("item", m_iNumeroItem, 0, MAX_ITENS_CUPOM, Presence::OPTIONAL,
                       TrLater("item number from 1; 0 or absent is the item sold last"), "2");
    }

    BOOL InitCheck(CommandDataFisco*) override
    {
        m_Valor = CommandedValor(m_eTipoValor, m_valor);
        return TRUE;
    }

    BOOL FiscalCheck() override
    {
        return Accept(m_registro.CheckAjustaItem({m_eOperacao, m_eTipoValor, m_Valor},
                                                 m_iNumeroItem, m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.AjustaItem({m_eOperacao, m_eTipoValor, m_Valor}, m_iNumeroItem, m_dtExecStart);
        return TRUE;
    }

  private:
    Decimal m_valor;
};

class CancelaDescAcresItem final : public ComandoOf<CmdCancelaDescAcresItem>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor& fields) override
    {
        OperacaoField(fields, m_eOperacao);
        fields.Integer("item", m_iNumeroItem, 1, MAX_ITENS_CUPOM, Presence::REQUIRED,
                       TrLater("item number from 1"), "2");
    }

    BOOL FiscalCheck() override
    {
        return Accept(m_registro.CheckCancelaAjusteItem(m_eOperacao, m_iNumeroItem, m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.CancelaAjusteItem(m_eOperacao, m_iNumeroItem, m_dtExecStart);
        return TRUE;
    }
};

} // namespace

std::vector<CatalogueEntry> AjusteItemComandos()
{
    return {
        EntryOf<EfetuaDescAcresItem>("efetua_desc_acres_item", "CmdEfetuaDescAcresItem",
                                     TrLater("applies a discount or surcharge to an item"),
                                     "item_cupom_fiscal, item_cupom_nf", ""),
        EntryOf<CancelaDescAcresItem>("cancela_desc_acres_item", "CmdCancelaDescAcresItem",
                                      TrLater("cancels the discount or surcharge of an item"),
                                      "item_cupom_fiscal, item_cupom_nf", ""),
    };
}

} // namespace bancada

// Discounts and surcharges on an item, and their cancellation.
#include "FiscalCommands.h"
#include "bancada/comandos/Assuntos.h"
#include "bancada/comandos/Campo.h"

namespace bancada
{
namespace
{

class EfetuaDescAcresItem final : public ComandoDe<CmdEfetuaDescAcresItem>
{
  public:
    using ComandoDe::ComandoDe;

    void Campos(FieldVisitor& campos) override
    {
        CampoOperacao(campos, m_eOperacao);
        CampoTipoValor(campos, m_eTipoValor);
        CampoValorAjuste(campos, m_valor);
        campos.Integer("item", m_iNumeroItem, 0, MAX_ITENS_CUPOM, Presence::OPTIONAL,
                       "item number from 1; 0 or absent is the item sold last", "2");
    }

    BOOL InitCheck(CommandDataFisco*) override
    {
        m_Valor = ValorComandado(m_eTipoValor, m_valor);
        return TRUE;
    }

    BOOL FiscalCheck() override
    {
        return Aceita(m_registro.PodeAjustaItem({m_eOperacao, m_eTipoValor, m_Valor}, m_iNumeroItem,
                                                m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.AjustaItem({m_eOperacao, m_eTipoValor, m_Valor}, m_iNumeroItem, m_dtExecStart);
        return TRUE;
    }

  private:
    Decimal m_valor;
};

class CancelaDescAcresItem final : public ComandoDe<CmdCancelaDescAcresItem>
{
  public:
    using ComandoDe::ComandoDe;

    void Campos(FieldVisitor& campos) override
    {
        CampoOperacao(campos, m_eOperacao);
        campos.Integer("item", m_iNumeroItem, 1, MAX_ITENS_CUPOM, Presence::REQUIRED,
                       "item number from 1", "2");
    }

    BOOL FiscalCheck() override
    {
        return Aceita(m_registro.PodeCancelaAjusteItem(m_eOperacao, m_iNumeroItem, m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.CancelaAjusteItem(m_eOperacao, m_iNumeroItem, m_dtExecStart);
        return TRUE;
    }
};

} // namespace

std::vector<ItemCatalogo> ComandosDeAjusteDeItem()
{
    return {
        ItemDe<EfetuaDescAcresItem>("efetua_desc_acres_item", "CmdEfetuaDescAcresItem",
                                    "applies a discount or surcharge to an item",
                                    "item_cupom_fiscal, item_cupom_nf", ""),
        ItemDe<CancelaDescAcresItem>("cancela_desc_acres_item", "CmdCancelaDescAcresItem",
                                     "cancels the discount or surcharge of an item",
                                     "item_cupom_fiscal, item_cupom_nf", ""),
    };
}

} // namespace bancada

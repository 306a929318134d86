// Discounts and surcharges on the subtotal, and their cancellation.
#include "FiscalCommands.h"
#include "bancada/comandos/Assuntos.h"
#include "bancada/comandos/Campo.h"

namespace bancada
{
namespace
{

class EfetuaDescAcresSubtotal final : public ComandoDe<CmdEfetuaDescAcresSubtotal>
{
  public:
    using ComandoDe::ComandoDe;

    void Campos(FieldVisitor& campos) override
    {
        CampoOperacao(campos, m_eOperacao);
        CampoTipoValor(campos, m_eTipoValor);
        CampoValorAjuste(campos, m_valor);
    }

    BOOL InitCheck(CommandDataFisco*) override
    {
        m_Valor = ValorComandado(m_eTipoValor, m_valor);
        return TRUE;
    }

    BOOL FiscalCheck() override
    {
        return Aceita(
            m_registro.PodeAjustaSubtotal({m_eOperacao, m_eTipoValor, m_Valor}, m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.AjustaSubtotal({m_eOperacao, m_eTipoValor, m_Valor}, m_dtExecStart);
        return TRUE;
    }

  private:
    Decimal m_valor;
};

class CancelaDescAcresSubtotal final : public ComandoDe<CmdCancelaDescAcresSubtotal>
{
  public:
    using ComandoDe::ComandoDe;

    void Campos(FieldVisitor& campos) override { CampoOperacao(campos, m_eOperacao); }

    BOOL FiscalCheck() override
    {
        return Aceita(m_registro.PodeCancelaAjusteSubtotal(m_eOperacao, m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.CancelaAjusteSubtotal(m_eOperacao, m_dtExecStart);
        return TRUE;
    }
};

} // namespace

std::vector<ItemCatalogo> ComandosDeAjusteDeSubtotal()
{
    return {
        ItemDe<EfetuaDescAcresSubtotal>("efetua_desc_acres_subtotal", "CmdEfetuaDescAcresSubtotal",
                                        "applies a discount or surcharge to the subtotal",
                                        "cupom_fiscal, cupom_nf", ""),
        ItemDe<CancelaDescAcresSubtotal>(
            "cancela_desc_acres_subtotal", "CmdCancelaDescAcresSubtotal",
            "cancels the discount or surcharge of the subtotal", "cupom_fiscal, cupom_nf", ""),
    };
}

} // namespace bancada

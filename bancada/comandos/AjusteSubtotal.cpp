// Discounts and surcharges on the subtotal, and their cancellation.
#include "FiscalCommands.h"
#include "bancada/Messages.h"
#include "bancada/comandos/CommonFields.h"
#include "bancada/comandos/Subjects.h"

namespace bancada
{
namespace
{

class EfetuaDescAcresSubtotal final : public ComandoOf<CmdEfetuaDescAcresSubtotal>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor& fields) override
    {
        OperacaoField(fields, m_eOperacao);
        TipoValorField(fields, m_eTipoValor);
        ValorAjusteField(fields, m_valor);
    }

    BOOL InitCheck(CommandDataFisco*) override
    {
        m_Valor = CommandedValor(m_eTipoValor, m_valor);
        return TRUE;
    }

    BOOL FiscalCheck() override
    {
        return Accept(
            m_registro.CheckAjustaSubtotal({m_eOperacao, m_eTipoValor, m_Valor}, m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.AjustaSubtotal({m_eOperacao, m_eTipoValor, m_Valor}, m_dtExecStart);
        return TRUE;
    }

  private:
    Decimal m_valor;
};

class CancelaDescAcresSubtotal final : public ComandoOf<CmdCancelaDescAcresSubtotal>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor& fields) override { OperacaoField(fields, m_eOperacao); }

    BOOL FiscalCheck() override
    {
        return Accept(m_registro.CheckCancelaAjusteSubtotal(m_eOperacao, m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.CancelaAjusteSubtotal(m_eOperacao, m_dtExecStart);
        return TRUE;
    }
};

} // namespace

std::vector<CatalogueEntry> AjusteSubtotalComandos()
{
    return {
        EntryOf<EfetuaDescAcresSubtotal>("efetua_desc_acres_subtotal", "CmdEfetuaDescAcresSubtotal",
                                         TrLater("applies a discount or surcharge to the subtotal"),
                                         "cupom_fiscal, cupom_nf", ""),
        EntryOf<CancelaDescAcresSubtotal>(
            "cancela_desc_acres_subtotal", "CmdCancelaDescAcresSubtotal",
            TrLater("cancels the discount or surcharge of the subtotal"), "cupom_fiscal, cupom_nf",
            ""),
    };
}

} // namespace bancada

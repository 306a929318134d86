#include "bancada/relatorio/Documento.h"

#include "bancada/relatorio/DisplayText.h"

namespace bancada::relatorio
{

bool Documento::HasFechamento() const
{
    if (tipo == TipoDocumento::CUPOM_FISCAL) {
        return !IsBlank(assinatura.Value());
    }
    return !total.IsZero() || SumItens().IsZero();
}

bool Documento::IsRateado() const
{
    const bool adjusted = !desconto.valor.IsZero() || !acrescimo.valor.IsZero();
    const Amount sum = SumItens();
    return adjusted && total.IsKnown() && subtotal.IsKnown() && !IsSame(total, subtotal) &&
           IsSame(total, sum);
}

Amount Documento::SumItens() const
{
    Amount sum{0, 3};
    for (const Item& item : itens) {
        if (!item.cancelado.IsSet()) {
            sum = sum + item.liquido;
        }
    }
    return sum;
}

Amount Documento::SumPagamentos() const
{
    Amount sum;
    for (const Pagamento& pagamento : pagamentos) {
        sum = sum + pagamento.Saldo();
    }
    return sum;
}

std::string Documento::CanceladoMark() const
{
    if (!cancelado.IsKnown()) {
        return "CANCELADO: " + cancelado.Raw();
    }
    return cancelado.IsSet() ? "CANCELADO" : "";
}

std::string Title(const Documento& documento)
{
    static constexpr struct {
        const char* codigo;
        const char* title;
    } NAMES[] = {
        {"LX", "LEITURA X"},
        {"MF", "LEITURA DA MEMÓRIA FISCAL"},
        {"CC", "COMPROVANTE CRÉDITO OU DÉBITO"},
        {"RG", "RELATÓRIO GERENCIAL"},
        {"NC", "CANCELAMENTO DE NÃO FISCAL"},
        {"CN", "COMPROVANTE NÃO FISCAL"},
        {"RZ", "REDUÇÃO Z"},
    };
    if (documento.tipo == TipoDocumento::CUPOM_FISCAL) {
        return documento.adicional.IsSet() ? "CUPOM FISCAL ADICIONAL" : "CUPOM FISCAL";
    }
    for (const auto& name : NAMES) {
        if (documento.codigo.Value() == name.codigo) {
            return name.title;
        }
    }
    return "DOCUMENTO " + documento.codigo.Shown();
}

} // namespace bancada::relatorio

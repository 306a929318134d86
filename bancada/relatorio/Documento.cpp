#include "bancada/relatorio/Documento.h"

#include "bancada/relatorio/Texto.h"

namespace bancada::relatorio
{

bool Documento::fechamentoRegistrado() const
{
    if (tipo == TipoDocumento::CUPOM_FISCAL) {
        return !emBranco(assinatura);
    }
    return !total.zero() || somaItens().zero();
}

bool Documento::rateado() const
{
    const bool ajustado = !desconto.valor.zero() || !acrescimo.valor.zero();
    const Decimal soma = somaItens();
    return ajustado && total.legivel && subtotal.legivel && total.unidades != subtotal.unidades &&
           soma.legivel && soma.unidades == comCasas(total, soma.casas).unidades;
}

Decimal Documento::somaItens() const
{
    Decimal soma{0, 3, true};
    for (const Item& item : itens) {
        if (!item.cancelado) {
            soma = soma + item.liquido;
        }
    }
    return soma;
}

Decimal Documento::somaPagamentos() const
{
    Decimal soma;
    for (const Pagamento& pagamento : pagamentos) {
        soma = soma + pagamento.saldo();
    }
    return soma;
}

std::string titulo(const Documento& documento)
{
    static constexpr struct {
        const char* codigo;
        const char* nome;
    } NOMES[] = {
        {"LX", "LEITURA X"},
        {"MF", "LEITURA DA MEMÓRIA FISCAL"},
        {"CC", "COMPROVANTE CRÉDITO OU DÉBITO"},
        {"RG", "RELATÓRIO GERENCIAL"},
        {"NC", "CANCELAMENTO DE NÃO FISCAL"},
        {"CN", "COMPROVANTE NÃO FISCAL"},
        {"RZ", "REDUÇÃO Z"},
    };
    if (documento.tipo == TipoDocumento::CUPOM_FISCAL) {
        return documento.adicional ? "CUPOM FISCAL ADICIONAL" : "CUPOM FISCAL";
    }
    for (const auto& nome : NOMES) {
        if (documento.codigo == nome.codigo) {
            return nome.nome;
        }
    }
    return "DOCUMENTO " + documento.codigo;
}

} // namespace bancada::relatorio

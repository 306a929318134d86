#include "bancada/registro/Escrituracao.h"

namespace bancada
{

namespace
{

bool Fiscal(const Memoria& memoria)
{
    return memoria.cupom.tipo == CUPOM_FISCAL;
}

std::size_t Imposto(const ItemRegistrado& item)
{
    return static_cast<std::size_t>(item.baseImposto);
}

Financial& Totalizador(Memoria& memoria, const ItemRegistrado& item)
{
    const auto posicao = static_cast<std::size_t>(item.posicao);
    return Fiscal(memoria) ? memoria.fiscal.totais[Imposto(item)][posicao]
                           : memoria.naoFiscal.totais[posicao];
}

} // namespace

void EscrituraVenda(Memoria& memoria, const ItemRegistrado& item)
{
    Totalizador(memoria, item) += item.bruto;
    if (Fiscal(memoria)) {
        memoria.gt += item.bruto;
    }
}

void EscrituraDesconto(Memoria& memoria, const ItemRegistrado& item, const Financial& valor)
{
    Totalizador(memoria, item) -= valor;
    if (Fiscal(memoria)) {
        memoria.fiscal.descontos[Imposto(item)] += valor;
    }
}

void EscrituraAcrescimo(Memoria& memoria, const ItemRegistrado& item, const Financial& valor)
{
    Totalizador(memoria, item) += valor;
    if (Fiscal(memoria)) {
        memoria.fiscal.acrescimos[Imposto(item)] += valor;
        memoria.gt += valor;
    }
}

void EscrituraCancelamentoDesconto(Memoria& memoria, const ItemRegistrado& item,
                                   const Financial& valor)
{
    Totalizador(memoria, item) += valor;
    if (Fiscal(memoria)) {
        memoria.fiscal.descontos[Imposto(item)] -= valor;
    }
}

void EscrituraCancelamentoAcrescimo(Memoria& memoria, const ItemRegistrado& item,
                                    const Financial& valor)
{
    EscrituraCancelamentoItem(memoria, item, valor);
}

void EscrituraCancelamentoItem(Memoria& memoria, const ItemRegistrado& item,
                               const Financial& liquido)
{
    Totalizador(memoria, item) -= liquido;
    if (Fiscal(memoria)) {
        memoria.fiscal.cancelamentos[Imposto(item)] += liquido;
    }
}

} // namespace bancada

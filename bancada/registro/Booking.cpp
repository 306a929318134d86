#include "bancada/registro/Booking.h"

namespace bancada
{

namespace
{

bool IsFiscal(const Memoria& memoria)
{
    return memoria.cupom.tipo == CUPOM_FISCAL;
}

std::size_t ImpostoIndex(const ItemVendido& item)
{
    return static_cast<std::size_t>(item.baseImposto);
}

Financial& Totalizador(Memoria& memoria, const ItemVendido& item)
{
    const auto posicao = static_cast<std::size_t>(item.posicao);
    return IsFiscal(memoria) ? memoria.fiscal.totais[ImpostoIndex(item)][posicao]
                             : memoria.naoFiscal.totais[posicao];
}

} // namespace

void BookVenda(Memoria& memoria, const ItemVendido& item)
{
    Totalizador(memoria, item) += item.bruto;
    if (IsFiscal(memoria)) {
        memoria.gt += item.bruto;
    }
}

void BookDesconto(Memoria& memoria, const ItemVendido& item, const Financial& valor)
{
    Totalizador(memoria, item) -= valor;
    if (IsFiscal(memoria)) {
        memoria.fiscal.descontos[ImpostoIndex(item)] += valor;
    }
}

void BookAcrescimo(Memoria& memoria, const ItemVendido& item, const Financial& valor)
{
    Totalizador(memoria, item) += valor;
    if (IsFiscal(memoria)) {
        memoria.fiscal.acrescimos[ImpostoIndex(item)] += valor;
        memoria.gt += valor;
    }
}

void BookCancelamentoDesconto(Memoria& memoria, const ItemVendido& item, const Financial& valor)
{
    Totalizador(memoria, item) += valor;
    if (IsFiscal(memoria)) {
        memoria.fiscal.descontos[ImpostoIndex(item)] -= valor;
    }
}

void BookCancelamentoAcrescimo(Memoria& memoria, const ItemVendido& item, const Financial& valor)
{
    BookCancelamentoItem(memoria, item, valor);
}

void BookCancelamentoItem(Memoria& memoria, const ItemVendido& item, const Financial& liquido)
{
    Totalizador(memoria, item) -= liquido;
    if (IsFiscal(memoria)) {
        memoria.fiscal.cancelamentos[ImpostoIndex(item)] += liquido;
    }
}

} // namespace bancada

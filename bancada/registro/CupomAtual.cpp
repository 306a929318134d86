#include "bancada/registro/CupomAtual.h"

namespace bancada
{

Financial LiquidoDoItem(const ItemRegistrado& item)
{
    return item.bruto - item.desconto + item.acrescimo;
}

Financial LiquidoRateado(const CupomAtual& cupom, const ItemRegistrado& item)
{
    const Financial liquido = LiquidoDoItem(item);
    return cupom.ajusteOperacao == DESCONTO ? liquido - item.rateio : liquido + item.rateio;
}

Financial TotalDoCupom(const CupomAtual& cupom)
{
    if (!cupom.ajusteAplicado) {
        return cupom.subtotal;
    }
    return cupom.ajusteOperacao == DESCONTO ? cupom.subtotal - cupom.ajusteValor
                                            : cupom.subtotal + cupom.ajusteValor;
}

} // namespace bancada

#include "bancada/registro/CurrentCupom.h"

namespace bancada
{

Financial ItemLiquido(const ItemVendido& item)
{
    return item.bruto - item.desconto + item.acrescimo;
}

Financial ItemRateado(const CurrentCupom& cupom, const ItemVendido& item)
{
    const Financial liquido = ItemLiquido(item);
    return cupom.ajusteOperacao == DESCONTO ? liquido - item.rateio : liquido + item.rateio;
}

Financial CupomTotal(const CurrentCupom& cupom)
{
    if (!cupom.ajusteAplicado) {
        return cupom.subtotal;
    }
    return cupom.ajusteOperacao == DESCONTO ? cupom.subtotal - cupom.ajusteValor
                                            : cupom.subtotal + cupom.ajusteValor;
}

} // namespace bancada

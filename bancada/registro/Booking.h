// How what happens to an item moves the totalizers.
//
// A fiscal item moves the totalizer it is booked on (net), the discounts, surcharges and
// cancellations of its tax kind, and the grand total, which only grows: every gross item and every
// surcharge. So at any time the growth of the grand total equals
//     net totalizers + discounts + cancellations,
// the surcharges being inside both sides. A non-fiscal item moves its totalizer alone.
#pragma once

#include "bancada/registro/Memoria.h"

namespace bancada
{

void BookVenda(Memoria& memoria, const ItemVendido& item);
void BookDesconto(Memoria& memoria, const ItemVendido& item, const Financial& valor);
void BookAcrescimo(Memoria& memoria, const ItemVendido& item, const Financial& valor);

// A cancelled discount is taken out of the discounts; a cancelled surcharge goes to the
// cancellations, since the grand total holds it for good.
void BookCancelamentoDesconto(Memoria& memoria, const ItemVendido& item, const Financial& valor);
void BookCancelamentoAcrescimo(Memoria& memoria, const ItemVendido& item, const Financial& valor);

// Moves what the item comes to, `liquido`, from its totalizer to the cancellations. Its discounts
// and surcharges stay booked as such.
void BookCancelamentoItem(Memoria& memoria, const ItemVendido& item, const Financial& liquido);

} // namespace bancada

// What the receipt in memory comes to.
#pragma once

#include "bancada/registro/Memoria.h"

namespace bancada
{

// Gross total less the item's own discount plus its own surcharge.
Financial ItemLiquido(const ItemVendido& item);

// That with the item's share of the subtotal's adjustment.
Financial ItemRateado(const CurrentCupom& cupom, const ItemVendido& item);

// The subtotal with its adjustment.
Financial CupomTotal(const CurrentCupom& cupom);

} // namespace bancada

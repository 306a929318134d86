// What the receipt in memory comes to.
#pragma once

#include "bancada/registro/Memoria.h"

namespace bancada
{

// Gross total less the item's own discount plus its own surcharge.
Financial LiquidoDoItem(const ItemRegistrado& item);

// That with the item's share of the subtotal's adjustment.
Financial LiquidoRateado(const CupomAtual& cupom, const ItemRegistrado& item);

// The subtotal with its adjustment.
Financial TotalDoCupom(const CupomAtual& cupom);

} // namespace bancada

// Discounts and surcharges of the tape, now and then taken back.
#pragma once

#include "bancada/gerador/GeneratedCupom.h"
#include "bancada/gerador/Shop.h"

namespace bancada
{

// Adjusts the item `numero`, or the subtotal, of the receipt being written, by at most 10 %;
// nothing where it comes to less than 2.00, which is too little to take a percentage of.
void WriteAjusteItem(Shop& shop, GeneratedCupom& cupom, int numero);
void WriteAjusteSubtotal(Shop& shop, GeneratedCupom& cupom);

} // namespace bancada

// The items of a fiscal receipt of the tape.
#pragma once

#include "bancada/gerador/GeneratedCupom.h"
#include "bancada/gerador/Shop.h"

namespace bancada
{

// Sells a basket on the receipt being written, which has one item left at least. Some items are
// adjusted, some cancelled.
void WriteItens(Shop& shop, GeneratedCupom& cupom);

} // namespace bancada

// The payments of the tape.
#pragma once

#include "bancada/gerador/Shop.h"

#include <cstdint>

namespace bancada
{

// Pays a total, in cents, on the receipt being written; answers the means of the only payment, or
// of the card where there are two. What cash came in is counted in the till.
int WritePagamentos(Shop& shop, std::int64_t total);

// Pays it with the notes that a person would take out of the purse.
void WritePagamentoEmDinheiro(Shop& shop, std::int64_t total);

// Moves an amount of the receipt issued last from one means to another; a document.
void WriteEstorno(Shop& shop, int origem, int destino, std::int64_t valor);

} // namespace bancada

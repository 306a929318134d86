// The receipts of the tape.
#pragma once

#include "bancada/gerador/Shop.h"

namespace bancada
{

// A fiscal receipt, from its opening to what follows its closing: a cancellation, a reversal, a
// voucher.
void WriteCupomFiscal(Shop& shop);

// A non-fiscal receipt of one item, paid in cash.
void WriteCupomNaoFiscal(Shop& shop);

} // namespace bancada

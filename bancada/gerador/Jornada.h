// A fiscal day of the tape.
#pragma once

#include "bancada/gerador/Shop.h"

namespace bancada
{

// The day `number`, from 0, with so many fiscal receipts: readings, float, receipts, withdrawals,
// management report and Z reduction. Ends early when the tape cannot be written.
void WriteJornada(Shop& shop, int number, int cupons);

// When the register is switched on for the first time, in seconds since 1970: before the first day.
std::int64_t SwitchedOnAt();

} // namespace bancada

// How the fiscal counters move.
#pragma once

#include "bancada/registro/Memoria.h"

namespace bancada
{

// Counters have six digits: after the last number they start over at 1.
constexpr int LAST_CONTADOR = 999999;

// Adds 1 to a counter and answers it.
int AdvanceContador(Memoria& memoria, FISCALDATA_COUNTER_INDEX contador);

} // namespace bancada

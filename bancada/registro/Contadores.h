// How the fiscal counters move.
#pragma once

#include "bancada/registro/Memoria.h"

namespace bancada
{

// Adds 1 to a counter, which starts over at 1 after MAX_CONTADOR, and answers it.
int AdvanceContador(Memoria& memoria, FISCALDATA_COUNTER_INDEX contador);

} // namespace bancada

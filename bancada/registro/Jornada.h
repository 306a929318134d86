// The fiscal day: when it opens, when it is overdue, what time it took.
#pragma once

#include "bancada/registro/Memoria.h"
#include "bancada/registro/Recusa.h"

namespace bancada
{

RtcAbsoluteTime MeiaNoite(RtcAbsoluteTime instante);

// From `inicio` to `fim`; zero when the clock went back.
RtcRelativeTime Intervalo(RtcAbsoluteTime inicio, RtcAbsoluteTime fim);

// Whether a document that moves the day may be issued at `em`.
Recusa PodeMovimentarJornada(const Memoria& memoria, RtcAbsoluteTime em);

// Opens the day at its first document; without effect when it is open.
void MovimentaJornada(Memoria& memoria, RtcAbsoluteTime em);

} // namespace bancada

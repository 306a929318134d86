// The fiscal day: when it opens, when it is overdue, what time it took.
#pragma once

#include "bancada/registro/Memoria.h"
#include "bancada/registro/Refusal.h"

namespace bancada
{

RtcAbsoluteTime Midnight(RtcAbsoluteTime instant);

// From `begin` to `end`; zero when the clock went back.
RtcRelativeTime TimeBetween(RtcAbsoluteTime begin, RtcAbsoluteTime end);

// Whether a document that moves the day may be issued at `em`.
Refusal CheckJornada(const Memoria& memoria, RtcAbsoluteTime em);

// Opens the day at its first document; without effect when it is open.
void OpenJornada(Memoria& memoria, RtcAbsoluteTime em);

} // namespace bancada

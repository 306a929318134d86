// All the faults of a tape, of which nothing is run.
#pragma once

#include "bancada/tape/FaultSink.h"

#include <cstdint>

namespace bancada
{

class TapeReader;

// Reads the tape to its end, or until it is interrupted, as a run would read it: lines, commands,
// their fields and times. Hands every fault to `sink`, in the order of the lines; what a register
// would refuse is none. Answers how many lines hold a command or a fault. Throws Unusable if the
// tape cannot be read.
[[nodiscard]] std::int64_t LintTape(TapeReader& tape, const FaultSink& sink);

} // namespace bancada

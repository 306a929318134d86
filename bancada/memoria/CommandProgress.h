// How far the commands of a register have come.
#pragma once

#include "RtcClasses.h"
#include "bancada/tape/TapePosition.h"

#include <cstdint>
#include <string>

namespace bancada
{

// Commands that are executed are numbered from 1; the database carries the number of the last one
// whose transaction it holds. Commands that are refused and directives have none.
struct CommandProgress {
    std::int64_t steps = 0;     // states that the memory has held: one a command, at least
    std::int32_t sequence = 0;  // number of the last command
    std::int32_t confirmed = 0; // number of the last one known to be committed
    RtcAbsoluteTime clock;      // when the last command of the tape ended; unset before the first
    TapePosition tape;          // behind the last line that was carried out

    std::int64_t lost = 0; // commands whose rows were lost
    std::string lastLoss;  // place, name and reason of the last one
};

} // namespace bancada

// A run that ends because the power goes, and what the next one must find.
#pragma once

#include "tests/falhas/Jornada.h"

#include <string>
#include <vector>

namespace falhas
{

// A run until the power went.
struct Cut {
    bool went = false;                 // the run ended before
    std::vector<bool> acknowledged;    // by command
    std::string command = "the start"; // at which it went
};

// Runs the tape on a register whose database is open.
Cut RunUntilDark(Bancada& bancada, const SimulatedDisk& disk);

// A register that starts again on the damaged disk: it opens the database, finds what was
// acknowledged and, whole or not at all, the command that was at work, and logs another document.
void CheckAfter(const Image& image, bool powersafe, const Cut& cut);

// Whether that is what the database holds.
bool IsAllowed(const std::string& dump, const Cut& cut);

} // namespace falhas

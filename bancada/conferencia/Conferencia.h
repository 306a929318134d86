// The reconciliation of a logging database.
#pragma once

#include "bancada/conferencia/Finding.h"
#include "bancada/leitura/DatabaseReading.h"
#include "bancada/log/Losses.h"

#include <cstdint>

namespace bancada::conferencia
{

// The documents that were read.
struct RowCounts {
    std::int64_t cupons = 0;
    std::int64_t cuponsNf = 0;
    std::int64_t reducoes = 0;
};

// What was read and what was found.
struct CheckSummary {
    RowCounts rows;
    std::int64_t faults = 0;
    // Those of the faults that a lost row in the firmware log explains.
    std::int64_t explained = 0;
    std::int64_t notes = 0;
};

// Reads the whole database and hands every finding to `sink`. `losses` is what the firmware log
// names, null when there is no log: without it, a receipt paid in full that keeps its opening
// values is taken for an additional receipt; with it, only when the log names its closing.
// Throws Unusable for the database of another program, and when it turns out to be unreadable on
// the way or was written to meanwhile.
CheckSummary CheckDatabase(const leitura::DatabaseReading& database, const Losses* losses,
                           const FindingSink& sink);

} // namespace bancada::conferencia

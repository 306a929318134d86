// The verdict of `check` for the page of `show`.
#pragma once

#include "bancada/leitura/DatabaseReading.h"
#include "bancada/log/Losses.h"
#include "bancada/relatorio/Verdict.h"

namespace bancada
{

// Reconciles the database as `check` does. `losses` is what the firmware log names, null when there
// is none. A database that cannot be read to its end has the reason as its failure; throws Unusable
// for that of another program.
relatorio::Verdict ReadVerdict(const leitura::DatabaseReading& database, const Losses* losses);

} // namespace bancada

// The verdict of `check` for the page of `show`.
#pragma once

#include "bancada/leitura/DatabaseReading.h"
#include "bancada/log/Losses.h"
#include "bancada/relatorio/Verdict.h"

#include <deque>
#include <vector>

namespace bancada
{

// Reconciles the databases of one register, in their order, as `check` does, a verdict each; what
// does not continue from one to the next is a finding of the next. `losses` is what the firmware
// log names, null when there is none. A database that cannot be read to its end has the reason as
// its failure; throws Unusable for that of another program.
std::vector<relatorio::Verdict> ReadVerdicts(const std::deque<leitura::DatabaseReading>& databases,
                                             const Losses* losses);

} // namespace bancada

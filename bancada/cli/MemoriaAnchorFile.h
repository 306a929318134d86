// A memory file as an anchor of a reconciliation.
#pragma once

#include "bancada/conferencia/AncoraDaMemoria.h"
#include "bancada/leitura/DatabaseReading.h"

#include <string>

namespace bancada
{

// What the memory `path`, which is only read, says of the register: as it stood behind the last
// command that the database holds. Throws Unusable for a file that is missing or no memory.
conferencia::MemoriaAnchor ReadMemoriaAnchor(const std::string& path,
                                             const leitura::DatabaseReading& database);

} // namespace bancada

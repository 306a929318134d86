// Where the rows of one jornada stand.
#pragma once

#include "bancada/leitura/DatabaseReading.h"
#include "bancada/leitura/RowRange.h"

#include <cstdint>

namespace bancada::relatorio
{

// The rows to read of each table; all of them until it is told which.
struct JornadaRange {
    leitura::RowRange cuponsFiscais, cuponsNf, outros, reducoes, totalizadores, meios;
};

// Holds all that the jornada closed by the Z reduction `crz` needs, and at most the jornadas beside
// it: read in time that grows with them, not with the database. The rows come in the order of the
// numbers, as the register logs them; where those of the Z reductions do not rise from row to row,
// as where a number came twice, it is everything. A receipt that was moved to another place of its
// table may be outside: what moved it is for the reconciliation to find.
// Throws Unusable where the database cannot be read.
JornadaRange FindJornada(const leitura::DatabaseReading& database, std::int64_t crz);

} // namespace bancada::relatorio

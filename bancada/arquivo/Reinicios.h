// Restarts and interventions that no record tells of.
#pragma once

#include "bancada/arquivo/ArquivoLido.h"

#include <cstdint>
#include <set>
#include <vector>

namespace bancada::arquivo
{

struct Importador;

// The E09 of a file in the order of their counters, which go round after 999999: times may go back.
std::vector<Record> IntervencoesInOrder(const ArquivoLido& arquivo);
std::int64_t TimeOf(const Record& intervencao);

// By the number of the X reading that each prints.
struct Reinicios {
    std::set<std::int32_t> reinicios;
    std::set<std::int32_t> entradasL, saidasL; // of mode L
};

// A restart that no E09 tells of: its row was kept away by another of the same counter, which
// entering mode L makes. Two X readings behind one another may be entering and leaving it. What
// cannot be told is listed.
Reinicios FindReinicios(Importador& importing);

} // namespace bancada::arquivo

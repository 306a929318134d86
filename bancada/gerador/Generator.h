// Generates the tape of a grocer's register.
#pragma once

#include <cstdint>
#include <ostream>

namespace bancada
{

// How many receipts a day holds at most: with more, its commands, one a second, would not end
// before the next day begins.
constexpr int MAX_CUPONS_POR_JORNADA = 4000;
// The tape begins on 2024-01-01; the register's clock lasts for more than these.
constexpr int MAX_JORNADAS = 20000;

struct GeneratorOptions {
    int jornadas = 1; // 1 to MAX_JORNADAS
    // 0 to MAX_CUPONS_POR_JORNADA: fiscal receipts, cancelled ones included.
    int cuponsPorJornada = 60;
    std::uint64_t seed = 1;
};

// Writes the tape. The same options give the same bytes everywhere. The register runs it without
// refusing a command, and the engine rejects no statement of it. Stops early when `out` fails.
// REQUIRES: the options are within their bounds.
void GenerateTape(const GeneratorOptions& options, std::ostream& out);

} // namespace bancada

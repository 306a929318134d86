// The reconciliation of a logging database.
#pragma once

#include "bancada/conferencia/Achado.h"
#include "bancada/conferencia/BancoLeitura.h"
#include "bancada/log/Losses.h"

#include <cstdint>

namespace bancada
{

// What was read and what was found.
struct ResumoConferencia {
    std::int64_t cupons = 0;
    std::int64_t cuponsNf = 0;
    std::int64_t reducoes = 0;
    std::int64_t faltas = 0;
    // Those of the faults that a lost row in the firmware log explains.
    std::int64_t explicadas = 0;
    std::int64_t avisos = 0;
};

// Reads the whole database once and hands every finding to `destino`. `losses` is what the firmware
// log names, null when there is no log: without it, a receipt paid in full that keeps its opening
// values is taken for an additional receipt; with it, only when the log names its closing.
// Throws Unusable when the database turns out to be unreadable on the way.
ResumoConferencia Confere(const BancoLeitura& banco, const Losses* losses,
                          const DestinoAchados& destino);

} // namespace bancada

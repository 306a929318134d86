// The directive that sets the register's clock.
#pragma once

#include "bancada/Messages.h"
#include "bancada/registro/Refusal.h"
#include "bancada/tape/FaultSink.h"

namespace bancada
{

class Registro;
struct TapeCommand;

inline constexpr char ACERTA_RELOGIO[] = "acerta_relogio";
inline constexpr const char* ACERTA_RELOGIO_SUMMARY = TrLater(
    "sets the clock to `em`, forward or back, in an intervention mode: not a command of the "
    "register, it takes no time and logs nothing");

// Reads a line of the tape, its faults into `sink`; without one it has its instant.
void ReadAcertaRelogio(const TapeCommand& line, const FaultSink& sink);

// Carries a line of the tape out, unless the register refuses it; answers why. Throws TapeError.
// After it the line has its instant.
[[nodiscard]] Refusal ExecuteAcertaRelogio(const TapeCommand& line, Registro& registro);

} // namespace bancada

#include "bancada/comandos/AcertaRelogio.h"

#include "bancada/registro/Registro.h"
#include "bancada/tape/TapeFields.h"

namespace bancada
{

Refusal ExecuteAcertaRelogio(const TapeCommand& line, Registro& registro)
{
    if (!line.em) {
        throw TapeError(line.place, "acerta_relogio needs the field \"em\"");
    }
    if (line.fim) {
        throw TapeError(line.fimPlace, "acerta_relogio takes no time, and no field \"fim\"");
    }
    TapeFields(line).Finish();
    if (Refusal refusal = registro.CheckAcertaRelogio(*line.em)) {
        return refusal;
    }
    registro.AcertaRelogio(*line.em);
    return std::nullopt;
}

} // namespace bancada

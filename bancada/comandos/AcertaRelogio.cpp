#include "bancada/comandos/AcertaRelogio.h"

#include "bancada/Messages.h"
#include "bancada/registro/Registro.h"
#include "bancada/tape/TapeFields.h"

namespace bancada
{

void ReadAcertaRelogio(const TapeCommand& line, const FaultSink& sink)
{
    if (!line.em) {
        ReportFault(sink, line.place, Tr("acerta_relogio needs the field \"em\""));
    }
    if (line.fim) {
        ReportFault(sink, line.fimPlace, Tr("acerta_relogio takes no time, and no field \"fim\""));
    }
    TapeFields(line, sink).Finish();
}

Refusal ExecuteAcertaRelogio(const TapeCommand& line, Registro& registro)
{
    ReadAcertaRelogio(line, nullptr);
    if (Refusal refusal = registro.CheckAcertaRelogio(*line.em)) {
        return refusal;
    }
    registro.AcertaRelogio(*line.em);
    return std::nullopt;
}

} // namespace bancada

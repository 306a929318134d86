#include "bancada/registro/Jornada.h"

#include "bancada/Messages.h"
#include "bancada/registro/TextForms.h"

namespace bancada
{

namespace
{

constexpr UINT32 SECONDS_A_DAY = 86400;

} // namespace

RtcAbsoluteTime Midnight(RtcAbsoluteTime instant)
{
    return RtcAbsoluteTime(instant.s - instant.s % SECONDS_A_DAY);
}

RtcRelativeTime TimeBetween(RtcAbsoluteTime begin, RtcAbsoluteTime end)
{
    return RtcRelativeTime(end.s > begin.s ? end.s - begin.s : 0);
}

Refusal CheckJornada(const Memoria& memoria, RtcAbsoluteTime em)
{
    const Jornada& jornada = memoria.jornada;
    if (!jornada.aberta) {
        if (memoria.dataFechada.s != matlong[0] && Midnight(em).s <= memoria.dataFechada.s) {
            return Tr(
                "the day %1 was closed by its Redução Z: nothing is sold on that date any more",
                {DateToText(memoria.dataFechada)});
        }
        return std::nullopt;
    }
    if (em.s < jornada.inicio.s || em.s < jornada.data.s) {
        return Tr("the clock stands before the first document of the day %1",
                  {DateToText(jornada.data)});
    }
    if (em.s - jornada.data.s >= MAX_TEMPO_OPERACIONAL.s) {
        return Tr("the Redução Z of %1 is overdue: issue it before the next receipt",
                  {DateToText(jornada.data)});
    }
    return std::nullopt;
}

void OpenJornada(Memoria& memoria, RtcAbsoluteTime em)
{
    if (memoria.jornada.aberta) {
        return;
    }
    memoria.jornada = Jornada();
    memoria.jornada.aberta = true;
    memoria.jornada.data = Midnight(em);
    memoria.jornada.inicio = em;
}

} // namespace bancada

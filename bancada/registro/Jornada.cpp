#include "bancada/registro/Jornada.h"

#include "bancada/registro/Textos.h"

namespace bancada
{

namespace
{

constexpr UINT32 SEGUNDOS_DO_DIA = 86400;

} // namespace

RtcAbsoluteTime MeiaNoite(RtcAbsoluteTime instante)
{
    return RtcAbsoluteTime(instante.s - instante.s % SEGUNDOS_DO_DIA);
}

RtcRelativeTime Intervalo(RtcAbsoluteTime inicio, RtcAbsoluteTime fim)
{
    return RtcRelativeTime(fim.s > inicio.s ? fim.s - inicio.s : 0);
}

Recusa PodeMovimentarJornada(const Memoria& memoria, RtcAbsoluteTime em)
{
    const Jornada& jornada = memoria.jornada;
    if (!jornada.aberta) {
        if (memoria.dataFechada.s != matlong[0] && MeiaNoite(em).s <= memoria.dataFechada.s) {
            return "the day " + TextoData(memoria.dataFechada) +
                   " was closed by its Redução Z: nothing is sold on that date any more";
        }
        return std::nullopt;
    }
    if (em.s < jornada.inicio.s) {
        return "the clock stands before the first document of the day " + TextoData(jornada.data);
    }
    if (em.s - jornada.data.s >= MAX_TEMPO_OPERACIONAL.s) {
        return "the Redução Z of " + TextoData(jornada.data) +
               " is overdue: issue it before the next receipt";
    }
    return std::nullopt;
}

void MovimentaJornada(Memoria& memoria, RtcAbsoluteTime em)
{
    if (memoria.jornada.aberta) {
        return;
    }
    memoria.jornada = Jornada();
    memoria.jornada.aberta = true;
    memoria.jornada.data = MeiaNoite(em);
    memoria.jornada.inicio = em;
}

} // namespace bancada

// The clock: it does not go back by itself.
#include "bancada/Messages.h"
#include "bancada/registro/Jornada.h"
#include "bancada/registro/Registro.h"
#include "bancada/registro/TextForms.h"

#include <algorithm>

namespace bancada
{

Refusal Registro::CheckRelogio(RtcAbsoluteTime em) const
{
    if (em.s < m_memoria.relogio.s) {
        return Tr(
            "the clock stands at %1, when the last command ended, and does not go back by itself",
            {InstantToText(m_memoria.relogio)});
    }
    return std::nullopt;
}

void Registro::AdvanceRelogio(RtcAbsoluteTime fim)
{
    m_memoria.relogio = fim;
}

Refusal Registro::CheckAcertaRelogio(RtcAbsoluteTime) const
{
    if (m_memoria.modo == EModoIntervencao::NENHUM) {
        return Tr("the clock is set in an intervention mode: enter one first");
    }
    return std::nullopt;
}

void Registro::AcertaRelogio(RtcAbsoluteTime em)
{
    Jornada& jornada = m_memoria.jornada;
    if (jornada.aberta && m_memoria.relogio.s != matlong[0]) {
        // What passed since the day's first document stays what it is.
        const UINT32 passed = TimeBetween(jornada.inicio, m_memoria.relogio).s;
        jornada.inicio = RtcAbsoluteTime(std::max(em.s, passed + 1) - passed);
    }
    m_memoria.relogio = em;
}

} // namespace bancada

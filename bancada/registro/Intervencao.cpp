// Entering and leaving the intervention modes.
#include "bancada/Messages.h"
#include "bancada/registro/Checks.h"
#include "bancada/registro/Contadores.h"
#include "bancada/registro/Registro.h"

namespace bancada
{

Refusal Registro::CheckEntraIntervencao(EModoIntervencao, RtcAbsoluteTime) const
{
    if (Refusal refusal = CheckNothingOpen(m_memoria)) {
        return refusal;
    }
    return CheckNoIntervencao(m_memoria);
}

void Registro::EntraIntervencao(EModoIntervencao modo, RtcAbsoluteTime)
{
    m_memoria.modo = modo;
    if (modo == EModoIntervencao::MIL) {
        AdvanceContador(m_memoria, COUNTER_COO);
    }
}

Refusal Registro::CheckSaiIntervencao(EModoIntervencao modo, RtcAbsoluteTime) const
{
    if (m_memoria.modo != modo) {
        return Tr("the register is not in intervention mode %1",
                  {modo == EModoIntervencao::MIL ? "L" : "T"});
    }
    return std::nullopt;
}

void Registro::SaiIntervencao(EModoIntervencao modo, RtcAbsoluteTime)
{
    m_memoria.modo = EModoIntervencao::NENHUM;
    AdvanceContador(m_memoria, COUNTER_COO);
    if (modo == EModoIntervencao::MIT) {
        AdvanceContador(m_memoria, COUNTER_CRO);
    }
}

} // namespace bancada

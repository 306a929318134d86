// Entering and leaving the intervention modes.
#include "bancada/registro/Contadores.h"
#include "bancada/registro/Registro.h"
#include "bancada/registro/Regras.h"

namespace bancada
{

Recusa Registro::PodeEntraIntervencao(EModoIntervencao, RtcAbsoluteTime) const
{
    if (Recusa recusa = ConfereNadaAberto(m_memoria)) {
        return recusa;
    }
    return ConfereForaDeIntervencao(m_memoria);
}

void Registro::EntraIntervencao(EModoIntervencao modo, RtcAbsoluteTime)
{
    m_memoria.modo = modo;
    if (modo == EModoIntervencao::MIL) {
        AvancaContador(m_memoria, COUNTER_COO);
    }
}

Recusa Registro::PodeSaiIntervencao(EModoIntervencao modo, RtcAbsoluteTime) const
{
    if (m_memoria.modo != modo) {
        return std::string("the register is not in intervention mode ") +
               (modo == EModoIntervencao::MIL ? "L" : "T");
    }
    return std::nullopt;
}

void Registro::SaiIntervencao(EModoIntervencao modo, RtcAbsoluteTime)
{
    m_memoria.modo = EModoIntervencao::NENHUM;
    AvancaContador(m_memoria, COUNTER_COO);
    if (modo == EModoIntervencao::MIT) {
        AvancaContador(m_memoria, COUNTER_CRO);
    }
}

} // namespace bancada

// The Z reduction.
#include "bancada/registro/Checks.h"
#include "bancada/registro/Contadores.h"
#include "bancada/registro/Jornada.h"
#include "bancada/registro/Registro.h"

#include <algorithm>

namespace bancada
{

namespace
{

// Empties the day's values and keeps the programming, which outlives the day.
void ClearValores(BaseFiscal& base)
{
    for (std::size_t imposto = 0; imposto < BASES_DE_IMPOSTO; ++imposto) {
        base.totais[imposto].fill(Financial());
        base.descontos[imposto] = Financial();
        base.acrescimos[imposto] = Financial();
        base.cancelamentos[imposto] = Financial();
    }
}

void CloseJornada(Memoria& memoria, RtcAbsoluteTime em)
{
    const UINT32 today = Midnight(em).s;
    if (memoria.jornada.aberta) {
        memoria.dataFechada = memoria.jornada.data;
        memoria.jornada.aberta = false;
        memoria.jornada.fim = em;
    } else {
        memoria.dataFechada = RtcAbsoluteTime(std::max(memoria.dataFechada.s, today));
        memoria.jornada = Jornada();
    }
}

} // namespace

Refusal Registro::CheckReducaoZ(RtcAbsoluteTime) const
{
    if (Refusal refusal = CheckNothingOpen(m_memoria)) {
        return refusal;
    }
    return CheckNoIntervencao(m_memoria);
}

void Registro::ReducaoZ(RtcAbsoluteTime em)
{
    AdvanceContador(m_memoria, COUNTER_COO);
    AdvanceContador(m_memoria, COUNTER_CRZ);
    m_memoria.fiscalRZ = m_memoria.fiscal;
    m_memoria.fiscalRZ.vendaBruta = m_memoria.gt - m_memoria.gtUltimaRZ;
    m_memoria.naoFiscalRZ = m_memoria.naoFiscal;
    m_memoria.gtUltimaRZ = m_memoria.gt;
    ClearValores(m_memoria.fiscal);
    m_memoria.naoFiscal.totais.fill(Financial());
    CloseJornada(m_memoria, em);
}

} // namespace bancada

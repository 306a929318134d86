// The facade: payment means, totalizers and the fiscal day.
#include "bancada/registro/Jornada.h"
#include "bancada/registro/Registro.h"
#include "bancada/registro/TextForms.h"
#include "bancada/registro/Totalizadores.h"

#include <algorithm>

namespace bancada
{

namespace
{

bool Within(int index, int count)
{
    return index >= 0 && index < count;
}

const BaseFiscal* Base(const Memoria& memoria, int base, int taxBase)
{
    if (!Within(taxBase, BASES_DE_IMPOSTO)) {
        return nullptr;
    }
    if (base == BC_IND_FISCAL) {
        return &memoria.fiscal;
    }
    return base == BC_IND_FISCAL_ULTIMA_RZ ? &memoria.fiscalRZ : nullptr;
}

const BaseNaoFiscal* BaseNF(const Memoria& memoria, int base, int index)
{
    if (!Within(index, MAX_TOTALIZADORES_NF)) {
        return nullptr;
    }
    if (base == BC_IND_NAO_FISCAL) {
        return &memoria.naoFiscal;
    }
    return base == BC_IND_NAO_FISCAL_ULTIMA_RZ ? &memoria.naoFiscalRZ : nullptr;
}

Financial Imposto(const BaseFiscal& base, std::size_t taxBase, std::size_t posicao)
{
    return base.totais[taxBase][posicao].Times(BigInt(base.aliquota[taxBase][posicao]),
                                               BigInt(10000), 2, Rounding::TOWARD_ZERO);
}

} // namespace

int Registro::BaseFormasPagamento_GetNumeroDeFormasDePagamento()
{
    return MAX_MEIOS_PAGAMENTO;
}

char* Registro::BaseFormasPagamento_GetMeioPagamento(int index, char* out, int size)
{
    return CopyText(Within(index, MAX_MEIOS_PAGAMENTO)
                        ? m_memoria.meios[static_cast<std::size_t>(index)].descricao
                        : "",
                    out, size);
}

BOOL Registro::BaseFormasPagamento_GetMeioPagamentoProgramado(int index)
{
    return Within(index, MAX_MEIOS_PAGAMENTO) &&
                   !m_memoria.meios[static_cast<std::size_t>(index)].descricao.empty()
               ? TRUE
               : FALSE;
}

Financial Registro::BaseFormasPagamento_GetFPTotal(int index)
{
    return Within(index, MAX_MEIOS_PAGAMENTO)
               ? m_memoria.jornada.meios[static_cast<std::size_t>(index)]
               : Financial();
}

Financial Registro::BaseFormasPagamento_GetTrocoTotal()
{
    return m_memoria.jornada.troco;
}

Financial Registro::Totalizador_GetGT()
{
    return m_memoria.gt;
}

Financial Registro::Totalizador_GetGTIni(int ponto)
{
    return ponto == 0 ? m_memoria.gtInicial : Financial();
}

Financial Registro::Totalizador_GetVB(int base)
{
    if (base == BC_IND_FISCAL) {
        return m_memoria.gt - m_memoria.gtUltimaRZ;
    }
    return base == BC_IND_FISCAL_ULTIMA_RZ ? m_memoria.fiscalRZ.vendaBruta : Financial();
}

Financial Registro::Totalizador_GetTot(int base, int taxBase, int index)
{
    const BaseFiscal* fiscal = Base(m_memoria, base, taxBase);
    if (fiscal == nullptr || !Within(index, MAX_TOTALIZADORES)) {
        return Financial();
    }
    return fiscal->totais[static_cast<std::size_t>(taxBase)][static_cast<std::size_t>(index)];
}

Financial Registro::Totalizador_GetTotTrib(int base, int taxBase, int index)
{
    const BaseFiscal* fiscal = Base(m_memoria, base, taxBase);
    if (fiscal == nullptr || !Within(index, MAX_ALIQUOTAS)) {
        return Financial();
    }
    return Imposto(*fiscal, static_cast<std::size_t>(taxBase), static_cast<std::size_t>(index));
}

int Registro::Totalizador_GetTotPercTrib(int base, int taxBase, int index)
{
    const BaseFiscal* fiscal = Base(m_memoria, base, taxBase);
    if (fiscal == nullptr || !Within(index, MAX_ALIQUOTAS)) {
        return 0;
    }
    return fiscal->aliquota[static_cast<std::size_t>(taxBase)][static_cast<std::size_t>(index)];
}

BOOL Registro::Totalizador_GetTotProgramado(int base, int taxBase, int index)
{
    const BaseFiscal* fiscal = Base(m_memoria, base, taxBase);
    if (fiscal == nullptr || !Within(index, MAX_TOTALIZADORES)) {
        return FALSE;
    }
    return fiscal->programado[static_cast<std::size_t>(taxBase)][static_cast<std::size_t>(index)]
               ? TRUE
               : FALSE;
}

Financial Registro::Totalizador_GetSoma_Tot_VL(int base, int taxBase)
{
    Financial sum;
    if (const BaseFiscal* fiscal = Base(m_memoria, base, taxBase)) {
        for (const Financial& total : fiscal->totais[static_cast<std::size_t>(taxBase)]) {
            sum += total;
        }
    }
    return sum;
}

Financial Registro::Totalizador_GetSoma_Tot_Canc(int base, int taxBase)
{
    const BaseFiscal* fiscal = Base(m_memoria, base, taxBase);
    return fiscal ? fiscal->cancelamentos[static_cast<std::size_t>(taxBase)] : Financial();
}

Financial Registro::Totalizador_GetSoma_Tot_Desc(int base, int taxBase)
{
    const BaseFiscal* fiscal = Base(m_memoria, base, taxBase);
    return fiscal ? fiscal->descontos[static_cast<std::size_t>(taxBase)] : Financial();
}

Financial Registro::Totalizador_GetSoma_Tot_Acr(int base, int taxBase)
{
    const BaseFiscal* fiscal = Base(m_memoria, base, taxBase);
    return fiscal ? fiscal->acrescimos[static_cast<std::size_t>(taxBase)] : Financial();
}

Financial Registro::Totalizador_GetSoma_TotTrib(int base, int taxBase)
{
    Financial sum;
    if (const BaseFiscal* fiscal = Base(m_memoria, base, taxBase)) {
        for (std::size_t posicao = 0; posicao < MAX_ALIQUOTAS; ++posicao) {
            sum += Imposto(*fiscal, static_cast<std::size_t>(taxBase), posicao);
        }
    }
    return sum;
}

Financial Registro::Totalizador_GetTotalNF(int base, int index)
{
    const BaseNaoFiscal* naoFiscal = BaseNF(m_memoria, base, index);
    return naoFiscal ? naoFiscal->totais[static_cast<std::size_t>(index)] : Financial();
}

int Registro::Totalizador_GetTotNFProgramado(int base, int index)
{
    const BaseNaoFiscal* naoFiscal = BaseNF(m_memoria, base, index);
    return naoFiscal && !naoFiscal->nome[static_cast<std::size_t>(index)].empty() ? 1 : 0;
}

char* Registro::Totalizador_GetNomeNF(int base, int index, char* out, int size)
{
    const BaseNaoFiscal* naoFiscal = BaseNF(m_memoria, base, index);
    return CopyText(naoFiscal ? naoFiscal->nome[static_cast<std::size_t>(index)] : "", out, size);
}

int Registro::ResolveTotIndex(BASE_CONTABIL_FISCAL_BASE_IMPOSTO_INDEXES taxBase, char* code,
                              int number)
{
    const TotalizadorPlace place = FindTotalizador(code, number);
    return IsTotalizadorEspecial(code) && place.baseImposto == taxBase ? place.posicao : -1;
}

RtcAbsoluteTime Registro::Jornada_GetDataMovimento()
{
    return m_memoria.jornada.data;
}

RtcRelativeTime Registro::Jornada_GetTempoOperacional(RtcAbsoluteTime until)
{
    const Jornada& jornada = m_memoria.jornada;
    if (jornada.inicio.s == matlong[0]) {
        return RtcRelativeTime();
    }
    const bool fechada = jornada.fim.s != matlong[0];
    return TimeBetween(jornada.inicio,
                       fechada ? RtcAbsoluteTime(std::min(until.s, jornada.fim.s)) : until);
}

RtcRelativeTime Registro::Jornada_GetTempoEmitindoDocFiscal()
{
    return m_memoria.jornada.emitindo;
}

} // namespace bancada

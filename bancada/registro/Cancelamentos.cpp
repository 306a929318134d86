// Cancellation of an item, of the receipt in issue and of the receipt issued last.
#include "bancada/registro/Contadores.h"
#include "bancada/registro/CupomAtual.h"
#include "bancada/registro/Emissao.h"
#include "bancada/registro/Escrituracao.h"
#include "bancada/registro/Registro.h"
#include "bancada/registro/Regras.h"

#include <algorithm>

namespace bancada
{

namespace
{

// Moves what every item comes to into the cancellations and marks the receipt. Its items keep their
// values, as the record of what was cancelled.
void MarcaCancelado(Memoria& memoria)
{
    CupomAtual& cupom = memoria.cupom;
    for (const ItemRegistrado& item : cupom.itens) {
        if (!item.cancelado) {
            EscrituraCancelamentoItem(memoria, item, LiquidoRateado(cupom, item));
        }
    }
    cupom.situacao = ESituacaoCupom::CANCELADO;
    AvancaContador(memoria, cupom.tipo == CUPOM_FISCAL ? COUNTER_CFC : COUNTER_NFC);
}

} // namespace

Recusa Registro::PodeCancelaItem(int numeroItem, RtcAbsoluteTime) const
{
    if (Recusa recusa = ConfereCupomAberto(m_memoria)) {
        return recusa;
    }
    if (Recusa recusa = ConfereItensAbertos(m_memoria)) {
        return recusa;
    }
    return ConfereItem(m_memoria.cupom, numeroItem);
}

void Registro::CancelaItem(int numeroItem, RtcAbsoluteTime)
{
    CupomAtual& cupom = m_memoria.cupom;
    ItemRegistrado& item = cupom.itens[static_cast<std::size_t>(numeroItem) - 1];
    const Financial liquido = LiquidoDoItem(item);
    item.cancelado = true;
    --cupom.itensVivos;
    cupom.subtotal -= liquido;
    EscrituraCancelamentoItem(m_memoria, item, liquido);
}

Recusa Registro::PodeCancelaCupomEmEmissao(RtcAbsoluteTime) const
{
    return ConfereCupomAberto(m_memoria);
}

void Registro::CancelaCupomEmEmissao(RtcAbsoluteTime em)
{
    MarcaCancelado(m_memoria);
    ContaTempoDeEmissao(m_memoria, em);
    m_memoria.cupom.fechamento = em;
}

Recusa Registro::PodeCancelaCupom(int coo, RtcAbsoluteTime) const
{
    if (Recusa recusa = ConfereNadaAberto(m_memoria)) {
        return recusa;
    }
    if (Recusa recusa = ConfereForaDeIntervencao(m_memoria)) {
        return recusa;
    }
    const CupomAtual& cupom = m_memoria.cupom;
    if (coo != 0 && cupom.situacao != ESituacaoCupom::NENHUM && coo != cupom.coo) {
        return "only the receipt issued last can be cancelled: it is COO " +
               std::to_string(cupom.coo) + ", not " + std::to_string(coo);
    }
    if (Recusa recusa = ConfereUltimoCupom(m_memoria)) {
        return recusa;
    }
    if (std::any_of(cupom.pagamentos.begin(), cupom.pagamentos.end(),
                    [](const PagamentoRegistrado& pagamento) { return pagamento.ordemCCD != 0; })) {
        return "the receipt has a Comprovante de Crédito ou Débito: reverse it first";
    }
    return std::nullopt;
}

void Registro::CancelaCupom(int, RtcAbsoluteTime)
{
    const CupomAtual& cupom = m_memoria.cupom;
    for (const PagamentoRegistrado& pagamento : cupom.pagamentos) {
        m_memoria.jornada.meios[static_cast<std::size_t>(pagamento.meio)] -= pagamento.valor;
    }
    m_memoria.jornada.troco -= cupom.troco;
    MarcaCancelado(m_memoria);
    AvancaContador(m_memoria, COUNTER_COO);
    if (cupom.tipo == COMPROVANTE_NAO_FISCAL) {
        AvancaContador(m_memoria, COUNTER_GNF);
    }
}

} // namespace bancada

// Cancellation of an item, of the receipt in issue and of the receipt issued last.
#include "bancada/Messages.h"
#include "bancada/registro/Booking.h"
#include "bancada/registro/Checks.h"
#include "bancada/registro/Contadores.h"
#include "bancada/registro/CurrentCupom.h"
#include "bancada/registro/Emissao.h"
#include "bancada/registro/Registro.h"

#include <algorithm>

namespace bancada
{

namespace
{

// Moves what every item comes to into the cancellations and marks the receipt. Its items keep their
// values, as the record of what was cancelled.
void MarkCancelado(Memoria& memoria)
{
    CurrentCupom& cupom = memoria.cupom;
    for (const ItemVendido& item : cupom.itens) {
        if (!item.cancelado) {
            BookCancelamentoItem(memoria, item, ItemRateado(cupom, item));
        }
    }
    cupom.situacao = ESituacaoCupom::CANCELADO;
    AdvanceContador(memoria, cupom.tipo == CUPOM_FISCAL ? COUNTER_CFC : COUNTER_NFC);
}

} // namespace

Refusal Registro::CheckCancelaItem(int numeroItem, RtcAbsoluteTime) const
{
    if (Refusal refusal = CheckCupomOpen(m_memoria)) {
        return refusal;
    }
    if (Refusal refusal = CheckItensOpen(m_memoria)) {
        return refusal;
    }
    return CheckItem(m_memoria.cupom, numeroItem);
}

void Registro::CancelaItem(int numeroItem, RtcAbsoluteTime)
{
    CurrentCupom& cupom = m_memoria.cupom;
    ItemVendido& item = cupom.itens[static_cast<std::size_t>(numeroItem) - 1];
    const Financial liquido = ItemLiquido(item);
    item.cancelado = true;
    --cupom.itensVivos;
    cupom.subtotal -= liquido;
    BookCancelamentoItem(m_memoria, item, liquido);
}

Refusal Registro::CheckCancelaCupomEmEmissao(RtcAbsoluteTime) const
{
    return CheckCupomOpen(m_memoria);
}

void Registro::CancelaCupomEmEmissao(RtcAbsoluteTime fim)
{
    MarkCancelado(m_memoria);
    CountTempoDeEmissao(m_memoria, fim);
    m_memoria.cupom.fechamento = fim;
}

Refusal Registro::CheckCancelaCupom(int coo, RtcAbsoluteTime) const
{
    if (Refusal refusal = CheckNothingOpen(m_memoria)) {
        return refusal;
    }
    if (Refusal refusal = CheckNoIntervencao(m_memoria)) {
        return refusal;
    }
    const CurrentCupom& cupom = m_memoria.cupom;
    if (coo != 0 && cupom.situacao != ESituacaoCupom::NENHUM && coo != cupom.coo) {
        return Tr("only the receipt issued last can be cancelled: it is COO %1, not %2",
                  {std::to_string(cupom.coo), std::to_string(coo)});
    }
    if (Refusal refusal = CheckLastCupom(m_memoria)) {
        return refusal;
    }
    if (std::any_of(cupom.pagamentos.begin(), cupom.pagamentos.end(),
                    [](const PagamentoEfetuado& pagamento) { return pagamento.ordemCCD != 0; })) {
        return Tr("the receipt has a Comprovante de Crédito ou Débito: reverse it first");
    }
    return std::nullopt;
}

void Registro::CancelaCupom(int, RtcAbsoluteTime)
{
    const CurrentCupom& cupom = m_memoria.cupom;
    for (const PagamentoEfetuado& pagamento : cupom.pagamentos) {
        m_memoria.jornada.meios[static_cast<std::size_t>(pagamento.meio)] -= pagamento.valor;
    }
    m_memoria.jornada.troco -= cupom.troco;
    MarkCancelado(m_memoria);
    AdvanceContador(m_memoria, COUNTER_COO);
    if (cupom.tipo == COMPROVANTE_NAO_FISCAL) {
        AdvanceContador(m_memoria, COUNTER_GNF);
    }
}

} // namespace bancada

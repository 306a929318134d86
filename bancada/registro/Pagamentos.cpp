// Payments and their reversal.
#include "bancada/Messages.h"
#include "bancada/registro/Checks.h"
#include "bancada/registro/Contadores.h"
#include "bancada/registro/CurrentCupom.h"
#include "bancada/registro/Registro.h"
#include "bancada/registro/TextForms.h"

#include <algorithm>

namespace bancada
{

namespace
{

Refusal CheckRoomForPagamento(const CurrentCupom& cupom)
{
    if (cupom.pagamentos.size() >= MAX_PAGAMENTOS_CUPOM) {
        return Tr("the receipt already has %1 payments", {std::to_string(MAX_PAGAMENTOS_CUPOM)});
    }
    return std::nullopt;
}

// What was paid in a means and is not tied to a voucher.
Financial Reversivel(const CurrentCupom& cupom, int meio)
{
    Financial sum;
    for (const PagamentoEfetuado& pagamento : cupom.pagamentos) {
        if (pagamento.meio == meio && pagamento.ordemCCD == 0) {
            sum += pagamento.valor;
        }
    }
    return sum;
}

} // namespace

Refusal Registro::CheckEfetuaPagamento(int meio, Financial valor, RtcAbsoluteTime) const
{
    if (Refusal refusal = CheckCupomOpen(m_memoria)) {
        return refusal;
    }
    const CurrentCupom& cupom = m_memoria.cupom;
    if (cupom.itensVivos == 0) {
        return Tr("the receipt has no item");
    }
    if (Refusal refusal = CheckMeio(m_memoria, meio)) {
        return refusal;
    }
    if (Refusal refusal = CheckValor(TrLater("the payment"), valor, MaxPagamento())) {
        return refusal;
    }
    const Financial due = CupomTotal(cupom) - cupom.pago;
    if (due <= Financial()) {
        return Tr("the receipt is already paid");
    }
    if (valor > due && !GivesTroco(m_memoria, meio - 1)) {
        return Tr("Meio de Pagamento %1 gives no change: only %2 is due",
                  {std::to_string(meio), ValorToText(due)});
    }
    return CheckRoomForPagamento(cupom);
}

void Registro::EfetuaPagamento(int meio, Financial valor, RtcAbsoluteTime)
{
    CurrentCupom& cupom = m_memoria.cupom;
    PagamentoEfetuado pagamento;
    pagamento.meio = meio - 1;
    pagamento.valor = valor;
    cupom.pagamentos.push_back(pagamento);
    cupom.situacao = ESituacaoCupom::EM_PAGAMENTO;
    cupom.pago += valor;
    cupom.troco = std::max(cupom.pago - CupomTotal(cupom), Financial());
}

Refusal Registro::CheckEstornaMeioPagamento(int origem, int destino, Financial valor,
                                            RtcAbsoluteTime) const
{
    const CurrentCupom& cupom = m_memoria.cupom;
    if (!IsCupomOpen(m_memoria)) {
        if (Refusal refusal = CheckNothingOpen(m_memoria)) {
            return refusal;
        }
        if (Refusal refusal = CheckNoIntervencao(m_memoria)) {
            return refusal;
        }
        if (Refusal refusal = CheckLastCupom(m_memoria)) {
            return refusal;
        }
    }
    if (Refusal refusal = CheckMeio(m_memoria, origem)) {
        return refusal;
    }
    if (Refusal refusal = CheckMeio(m_memoria, destino)) {
        return refusal;
    }
    if (origem == destino) {
        return Tr("a payment is moved from one Meio de Pagamento to another");
    }
    if (Refusal refusal = CheckValor(TrLater("the amount"), valor, MaxPagamento())) {
        return refusal;
    }
    const Financial reversivel = Reversivel(cupom, origem - 1);
    if (valor > reversivel) {
        return Tr("only %1 of the receipt COO %2 can be moved from Meio de Pagamento %3",
                  {ValorToText(reversivel), std::to_string(cupom.coo), std::to_string(origem)});
    }
    // The change was given out of the means that give change: they must still cover it.
    Financial withTroco;
    for (const PagamentoEfetuado& pagamento : cupom.pagamentos) {
        if (GivesTroco(m_memoria, pagamento.meio)) {
            withTroco += pagamento.valor;
        }
    }
    if (GivesTroco(m_memoria, origem - 1) && !GivesTroco(m_memoria, destino - 1) &&
        withTroco - valor < cupom.troco) {
        return Tr(
            "the change of %1 was given out of the means that give change: they must keep as much",
            {ValorToText(cupom.troco)});
    }
    return CheckRoomForPagamento(cupom);
}

void Registro::EstornaMeioPagamento(int origem, int destino, Financial valor, RtcAbsoluteTime)
{
    CurrentCupom& cupom = m_memoria.cupom;
    Financial left = valor;
    for (PagamentoEfetuado& pagamento : cupom.pagamentos) {
        if (pagamento.meio != origem - 1 || pagamento.ordemCCD != 0) {
            continue;
        }
        const Financial share = std::min(left, pagamento.valor);
        pagamento.valor -= share;
        left -= share;
    }
    PagamentoEfetuado added;
    added.meio = destino - 1;
    added.valor = valor;
    cupom.pagamentos.push_back(added);

    if (cupom.situacao != ESituacaoCupom::FECHADO) {
        return; // the payments are booked when the receipt is closed
    }
    m_memoria.jornada.meios[static_cast<std::size_t>(origem) - 1] -= valor;
    m_memoria.jornada.meios[static_cast<std::size_t>(destino) - 1] += valor;
    AdvanceContador(m_memoria, COUNTER_COO);
    AdvanceContador(m_memoria, COUNTER_GNF);
}

} // namespace bancada

// Payments and their reversal.
#include "bancada/registro/Contadores.h"
#include "bancada/registro/CupomAtual.h"
#include "bancada/registro/Registro.h"
#include "bancada/registro/Regras.h"
#include "bancada/registro/Textos.h"

#include <algorithm>

namespace bancada
{

namespace
{

bool DaTroco(const Memoria& memoria, int meio)
{
    return memoria.meios[static_cast<std::size_t>(meio)].vinculacao != COM_CCD;
}

Recusa ConfereLugarParaPagamento(const CupomAtual& cupom)
{
    if (cupom.pagamentos.size() >= MAX_PAGAMENTOS_CUPOM) {
        return "the receipt already has " + std::to_string(MAX_PAGAMENTOS_CUPOM) + " payments";
    }
    return std::nullopt;
}

// What was paid in a means and is not tied to a voucher.
Financial Reversivel(const CupomAtual& cupom, int meio)
{
    Financial soma;
    for (const PagamentoRegistrado& pagamento : cupom.pagamentos) {
        if (pagamento.meio == meio && pagamento.ordemCCD == 0) {
            soma += pagamento.valor;
        }
    }
    return soma;
}

} // namespace

Recusa Registro::PodeEfetuaPagamento(int meio, Financial valor, RtcAbsoluteTime) const
{
    if (Recusa recusa = ConfereCupomAberto(m_memoria)) {
        return recusa;
    }
    const CupomAtual& cupom = m_memoria.cupom;
    if (cupom.itensVivos == 0) {
        return "the receipt has no item";
    }
    if (Recusa recusa = ConfereMeio(m_memoria, meio)) {
        return recusa;
    }
    if (Recusa recusa = ConfereValor("the payment", valor, MaximoDeUmPagamento())) {
        return recusa;
    }
    const Financial falta = TotalDoCupom(cupom) - cupom.pago;
    if (falta <= Financial()) {
        return "the receipt is already paid";
    }
    if (valor > falta && !DaTroco(m_memoria, meio - 1)) {
        return "Meio de Pagamento " + std::to_string(meio) + " gives no change: only " +
               TextoValor(falta) + " is due";
    }
    return ConfereLugarParaPagamento(cupom);
}

void Registro::EfetuaPagamento(int meio, Financial valor, RtcAbsoluteTime)
{
    CupomAtual& cupom = m_memoria.cupom;
    PagamentoRegistrado pagamento;
    pagamento.meio = meio - 1;
    pagamento.valor = valor;
    cupom.pagamentos.push_back(pagamento);
    cupom.situacao = ESituacaoCupom::EM_PAGAMENTO;
    cupom.pago += valor;
    cupom.troco = std::max(cupom.pago - TotalDoCupom(cupom), Financial());
}

Recusa Registro::PodeEstornaMeioPagamento(int origem, int destino, Financial valor,
                                          RtcAbsoluteTime) const
{
    const CupomAtual& cupom = m_memoria.cupom;
    if (!CupomAberto(m_memoria)) {
        if (Recusa recusa = ConfereNadaAberto(m_memoria)) {
            return recusa;
        }
        if (Recusa recusa = ConfereForaDeIntervencao(m_memoria)) {
            return recusa;
        }
        if (Recusa recusa = ConfereUltimoCupom(m_memoria)) {
            return recusa;
        }
    }
    if (Recusa recusa = ConfereMeio(m_memoria, origem)) {
        return recusa;
    }
    if (Recusa recusa = ConfereMeio(m_memoria, destino)) {
        return recusa;
    }
    if (origem == destino) {
        return "a payment is moved from one Meio de Pagamento to another";
    }
    if (Recusa recusa = ConfereValor("the amount", valor, MaximoDeUmPagamento())) {
        return recusa;
    }
    const Financial reversivel = Reversivel(cupom, origem - 1);
    if (valor > reversivel) {
        return "only " + TextoValor(reversivel) + " of the receipt COO " +
               std::to_string(cupom.coo) + " can be moved from Meio de Pagamento " +
               std::to_string(origem);
    }
    // The change was given out of the means that give change: they must still cover it.
    Financial comTroco;
    for (const PagamentoRegistrado& pagamento : cupom.pagamentos) {
        if (DaTroco(m_memoria, pagamento.meio)) {
            comTroco += pagamento.valor;
        }
    }
    if (DaTroco(m_memoria, origem - 1) && !DaTroco(m_memoria, destino - 1) &&
        comTroco - valor < cupom.troco) {
        return "the change of " + TextoValor(cupom.troco) +
               " was given out of the means that give change: they must keep as much";
    }
    return ConfereLugarParaPagamento(cupom);
}

void Registro::EstornaMeioPagamento(int origem, int destino, Financial valor, RtcAbsoluteTime)
{
    CupomAtual& cupom = m_memoria.cupom;
    Financial falta = valor;
    for (PagamentoRegistrado& pagamento : cupom.pagamentos) {
        if (pagamento.meio != origem - 1 || pagamento.ordemCCD != 0) {
            continue;
        }
        const Financial parte = std::min(falta, pagamento.valor);
        pagamento.valor -= parte;
        falta -= parte;
    }
    PagamentoRegistrado novo;
    novo.meio = destino - 1;
    novo.valor = valor;
    cupom.pagamentos.push_back(novo);

    if (cupom.situacao != ESituacaoCupom::FECHADO) {
        return; // the payments are booked when the receipt is closed
    }
    m_memoria.jornada.meios[static_cast<std::size_t>(origem) - 1] -= valor;
    m_memoria.jornada.meios[static_cast<std::size_t>(destino) - 1] += valor;
    AvancaContador(m_memoria, COUNTER_COO);
    AvancaContador(m_memoria, COUNTER_GNF);
}

} // namespace bancada

// The non-fiscal receipt, and the till's floats and withdrawals, which are receipts of one item.
#include "bancada/Messages.h"
#include "bancada/registro/Checks.h"
#include "bancada/registro/Emissao.h"
#include "bancada/registro/Registro.h"

#include <utility>

namespace bancada
{

namespace
{

ItemVendido MakeItemNaoFiscal(const Memoria& memoria, int totalizador, const Financial& valor)
{
    ItemVendido item;
    item.descricao = memoria.naoFiscal.nome[static_cast<std::size_t>(totalizador) - 1];
    item.numero = totalizador;
    item.quantidade = {1, 0};
    // Whole cents within MaxLancamento: checked before.
    item.valorUnitario = {valor.nr.ToInt64() / (Financial::SCALE / 100), 2};
    item.posicao = totalizador - 1;
    item.bruto = valor;
    return item;
}

// The position of the means that a float goes to when nobody says; -1 where none gives change.
int FindCashMeio(const Memoria& memoria)
{
    for (int posicao = 0; posicao < MAX_MEIOS_PAGAMENTO; ++posicao) {
        if (!memoria.meios[static_cast<std::size_t>(posicao)].descricao.empty() &&
            GivesTroco(memoria, posicao)) {
            return posicao;
        }
    }
    return -1;
}

} // namespace

Refusal Registro::CheckAbreCNF(const Consumidor& consumidor, RtcAbsoluteTime em) const
{
    if (Refusal refusal = CheckMovimento(m_memoria, em)) {
        return refusal;
    }
    return CheckConsumidor(consumidor);
}

void Registro::AbreCNF(const Consumidor& consumidor, RtcAbsoluteTime em)
{
    BeginCupom(m_memoria, COMPROVANTE_NAO_FISCAL, consumidor, em);
}

Refusal Registro::CheckVendeItemNF(int totalizador, Financial valor, RtcAbsoluteTime) const
{
    if (Refusal refusal = CheckCupomOpen(m_memoria, COMPROVANTE_NAO_FISCAL)) {
        return refusal;
    }
    if (Refusal refusal = CheckItensOpen(m_memoria)) {
        return refusal;
    }
    if (Refusal refusal = CheckRoomForItem(m_memoria.cupom)) {
        return refusal;
    }
    if (totalizador == NUMERO_NF_FUNDO_TROCO || totalizador == NUMERO_NF_SANGRIA) {
        return Tr("the non-fiscal totalizer %1 is reserved for the till's floats and withdrawals",
                  {std::to_string(totalizador)});
    }
    if (totalizador < 1 || totalizador > MAX_TOTALIZADORES_NF ||
        m_memoria.naoFiscal.nome[static_cast<std::size_t>(totalizador) - 1].empty()) {
        return Tr("the non-fiscal totalizer %1 is not programmed", {std::to_string(totalizador)});
    }
    return CheckValor(TrLater("the item's value"), valor, MaxLancamento());
}

void Registro::VendeItemNF(int totalizador, Financial valor, RtcAbsoluteTime)
{
    AddItem(m_memoria, MakeItemNaoFiscal(m_memoria, totalizador, valor));
}

Refusal Registro::CheckFechaCNF(RtcAbsoluteTime) const
{
    if (Refusal refusal = CheckCupomOpen(m_memoria, COMPROVANTE_NAO_FISCAL)) {
        return refusal;
    }
    return CheckPago(m_memoria.cupom);
}

void Registro::FechaCNF(RtcAbsoluteTime fim)
{
    FinishCupom(m_memoria, "", fim);
}

Refusal Registro::CheckMovimentaCaixa(ETipoOPNF operacao, Financial valor, RtcAbsoluteTime em,
                                      int meio) const
{
    if (Refusal refusal = CheckMovimento(m_memoria, em)) {
        return refusal;
    }
    if (meio != 0) {
        if (operacao != FUNDO_TROCO) {
            return Tr("a withdrawal is no payment: it has no Meio de Pagamento");
        }
        if (Refusal refusal = CheckMeio(m_memoria, meio)) {
            return refusal;
        }
        if (!GivesTroco(m_memoria, meio - 1)) {
            return Tr("Meio de Pagamento %1 gives no change: a float is not put in it",
                      {std::to_string(meio)});
        }
    }
    return CheckValor(TrLater("the amount"), valor, MaxLancamento());
}

void Registro::MovimentaCaixa(ETipoOPNF operacao, Financial valor, RtcAbsoluteTime em, int meio)
{
    BeginCupom(m_memoria, COMPROVANTE_NAO_FISCAL, Consumidor(), em);
    m_memoria.cupom.movimentoDeCaixa = true;
    const int totalizador = operacao == FUNDO_TROCO ? NUMERO_NF_FUNDO_TROCO : NUMERO_NF_SANGRIA;
    AddItem(m_memoria, MakeItemNaoFiscal(m_memoria, totalizador, valor));
    const int posicao = meio != 0 ? meio - 1 : FindCashMeio(m_memoria);
    if (operacao == FUNDO_TROCO && posicao >= 0) {
        PagamentoEfetuado pagamento;
        pagamento.meio = posicao;
        pagamento.valor = valor;
        m_memoria.cupom.pagamentos.push_back(pagamento);
        m_memoria.cupom.pago = valor;
    }
    FinishCupom(m_memoria, "", em);
}

} // namespace bancada

// The non-fiscal receipt, and the till's floats and withdrawals, which are receipts of one item.
#include "bancada/registro/Emissao.h"
#include "bancada/registro/Registro.h"
#include "bancada/registro/Regras.h"

#include <utility>

namespace bancada
{

namespace
{

ItemRegistrado ItemNaoFiscal(const Memoria& memoria, int totalizador, const Financial& valor)
{
    ItemRegistrado item;
    item.descricao = memoria.naoFiscal.nome[static_cast<std::size_t>(totalizador) - 1];
    item.numero = totalizador;
    item.quantidade = {1, 0};
    // Whole cents within MaximoDeUmLancamento: checked before.
    item.valorUnitario = {valor.nr.ToInt64() / (Financial::SCALE / 100), 2};
    item.posicao = totalizador - 1;
    item.bruto = valor;
    return item;
}

} // namespace

Recusa Registro::PodeAbreCNF(const Consumidor& consumidor, RtcAbsoluteTime em) const
{
    if (Recusa recusa = ConferePodeMovimentar(m_memoria, em)) {
        return recusa;
    }
    return ConfereConsumidor(consumidor);
}

void Registro::AbreCNF(const Consumidor& consumidor, RtcAbsoluteTime em)
{
    IniciaCupom(m_memoria, COMPROVANTE_NAO_FISCAL, consumidor, em);
}

Recusa Registro::PodeVendeItemNF(int totalizador, Financial valor, RtcAbsoluteTime) const
{
    if (Recusa recusa = ConfereCupomAberto(m_memoria, COMPROVANTE_NAO_FISCAL)) {
        return recusa;
    }
    if (Recusa recusa = ConfereItensAbertos(m_memoria)) {
        return recusa;
    }
    if (Recusa recusa = ConfereLugarParaItem(m_memoria.cupom)) {
        return recusa;
    }
    if (totalizador == NUMERO_NF_FUNDO_TROCO || totalizador == NUMERO_NF_SANGRIA) {
        return "the non-fiscal totalizer " + std::to_string(totalizador) +
               " is reserved for the till's floats and withdrawals";
    }
    if (totalizador < 1 || totalizador > MAX_TOTALIZADORES_NF ||
        m_memoria.naoFiscal.nome[static_cast<std::size_t>(totalizador) - 1].empty()) {
        return "the non-fiscal totalizer " + std::to_string(totalizador) + " is not programmed";
    }
    return ConfereValor("the item's value", valor, MaximoDeUmLancamento());
}

void Registro::VendeItemNF(int totalizador, Financial valor, RtcAbsoluteTime)
{
    AcrescentaItem(m_memoria, ItemNaoFiscal(m_memoria, totalizador, valor));
}

Recusa Registro::PodeFechaCNF(RtcAbsoluteTime) const
{
    if (Recusa recusa = ConfereCupomAberto(m_memoria, COMPROVANTE_NAO_FISCAL)) {
        return recusa;
    }
    return ConferePago(m_memoria.cupom);
}

void Registro::FechaCNF(RtcAbsoluteTime em)
{
    ConcluiCupom(m_memoria, "", em);
}

Recusa Registro::PodeMovimentaCaixa(ETipoOPNF, Financial valor, RtcAbsoluteTime em) const
{
    if (Recusa recusa = ConferePodeMovimentar(m_memoria, em)) {
        return recusa;
    }
    return ConfereValor("the amount", valor, MaximoDeUmLancamento());
}

void Registro::MovimentaCaixa(ETipoOPNF operacao, Financial valor, RtcAbsoluteTime em)
{
    IniciaCupom(m_memoria, COMPROVANTE_NAO_FISCAL, Consumidor(), em);
    m_memoria.cupom.movimentoDeCaixa = true;
    const int totalizador = operacao == FUNDO_TROCO ? NUMERO_NF_FUNDO_TROCO : NUMERO_NF_SANGRIA;
    AcrescentaItem(m_memoria, ItemNaoFiscal(m_memoria, totalizador, valor));
    ConcluiCupom(m_memoria, "", em);
}

} // namespace bancada

// Discounts and surcharges, on an item and on the subtotal, and their cancellation.
#include "bancada/registro/CupomAtual.h"
#include "bancada/registro/Escrituracao.h"
#include "bancada/registro/Rateio.h"
#include "bancada/registro/Registro.h"
#include "bancada/registro/Regras.h"

#include <vector>

namespace bancada
{

namespace
{

constexpr int CEM_POR_CENTO = 10000;  // hundredths of a percent
constexpr int MAX_PERCENTUAL = 99999; // 999.99 %

const char* Nome(EOperacao operacao)
{
    return operacao == DESCONTO ? "discount" : "surcharge";
}

// What the adjustment comes to on `base`. REQUIRES: ConfereAjuste accepts it, or it is by value.
Financial ValorDoAjuste(const Ajuste& ajuste, const Financial& base)
{
    if (ajuste.tipo == VALOR) {
        return Financial(ajuste.valor);
    }
    return base.Times(ajuste.valor, BigInt(CEM_POR_CENTO), 2, Rounding::TOWARD_ZERO);
}

Recusa ConfereAjuste(const Ajuste& ajuste, const Financial& base)
{
    if (ajuste.operacao != DESCONTO && ajuste.operacao != ACRESCIMO) {
        return "an adjustment is a discount or a surcharge";
    }
    if (ajuste.tipo != VALOR &&
        (ajuste.valor <= BigInt(0) || ajuste.valor > BigInt(MAX_PERCENTUAL))) {
        return "the percentage must be above zero and at most 999.99";
    }
    const Financial valor = ValorDoAjuste(ajuste, base);
    const std::string nome = std::string("the ") + Nome(ajuste.operacao);
    if (Recusa recusa = ConfereValor(nome.c_str(), valor, MaximoDeUmLancamento())) {
        return recusa;
    }
    if (ajuste.operacao == DESCONTO && valor >= base) {
        return nome + " must be smaller than what it is taken from";
    }
    return std::nullopt;
}

int NumeroDoItem(const CupomAtual& cupom, int numeroItem)
{
    return numeroItem == 0 ? static_cast<int>(cupom.itens.size()) : numeroItem;
}

const ItemRegistrado& Item(const CupomAtual& cupom, int numeroItem)
{
    return cupom.itens[static_cast<std::size_t>(numeroItem) - 1];
}

ItemRegistrado& Item(CupomAtual& cupom, int numeroItem)
{
    return cupom.itens[static_cast<std::size_t>(numeroItem) - 1];
}

} // namespace

Recusa Registro::PodeAjustaItem(const Ajuste& ajuste, int numeroItem, RtcAbsoluteTime) const
{
    if (Recusa recusa = ConfereCupomAberto(m_memoria)) {
        return recusa;
    }
    if (Recusa recusa = ConfereItensAbertos(m_memoria)) {
        return recusa;
    }
    const CupomAtual& cupom = m_memoria.cupom;
    const int numero = NumeroDoItem(cupom, numeroItem);
    if (Recusa recusa = ConfereItem(cupom, numero)) {
        return recusa;
    }
    const ItemRegistrado& item = Item(cupom, numero);
    const Financial& presente = ajuste.operacao == DESCONTO ? item.desconto : item.acrescimo;
    if (!presente.IsZero()) {
        return "item " + std::to_string(numero) + " already carries a " + Nome(ajuste.operacao);
    }
    return ConfereAjuste(ajuste, LiquidoDoItem(item));
}

void Registro::AjustaItem(const Ajuste& ajuste, int numeroItem, RtcAbsoluteTime)
{
    CupomAtual& cupom = m_memoria.cupom;
    ItemRegistrado& item = Item(cupom, NumeroDoItem(cupom, numeroItem));
    const Financial valor = ValorDoAjuste(ajuste, LiquidoDoItem(item));
    if (ajuste.operacao == DESCONTO) {
        item.desconto = valor;
        cupom.subtotal -= valor;
        EscrituraDesconto(m_memoria, item, valor);
    } else {
        item.acrescimo = valor;
        cupom.subtotal += valor;
        EscrituraAcrescimo(m_memoria, item, valor);
    }
}

Recusa Registro::PodeCancelaAjusteItem(EOperacao operacao, int numeroItem, RtcAbsoluteTime) const
{
    if (Recusa recusa = ConfereCupomAberto(m_memoria)) {
        return recusa;
    }
    if (Recusa recusa = ConfereItensAbertos(m_memoria)) {
        return recusa;
    }
    const CupomAtual& cupom = m_memoria.cupom;
    if (Recusa recusa = ConfereItem(cupom, numeroItem)) {
        return recusa;
    }
    const ItemRegistrado& item = Item(cupom, numeroItem);
    const Financial& presente = operacao == DESCONTO ? item.desconto : item.acrescimo;
    if (presente.IsZero()) {
        return "item " + std::to_string(numeroItem) + " carries no " + Nome(operacao);
    }
    // A discount taken after the surcharge may be more than the item without it.
    if (operacao == ACRESCIMO && item.desconto >= item.bruto) {
        return "without the surcharge the discount on item " + std::to_string(numeroItem) +
               " would not leave anything: cancel the discount first";
    }
    return std::nullopt;
}

void Registro::CancelaAjusteItem(EOperacao operacao, int numeroItem, RtcAbsoluteTime)
{
    CupomAtual& cupom = m_memoria.cupom;
    ItemRegistrado& item = Item(cupom, numeroItem);
    if (operacao == DESCONTO) {
        cupom.subtotal += item.desconto;
        EscrituraCancelamentoDesconto(m_memoria, item, item.desconto);
        item.desconto = Financial();
    } else {
        cupom.subtotal -= item.acrescimo;
        EscrituraCancelamentoAcrescimo(m_memoria, item, item.acrescimo);
        item.acrescimo = Financial();
    }
}

Recusa Registro::PodeAjustaSubtotal(const Ajuste& ajuste, RtcAbsoluteTime) const
{
    if (Recusa recusa = ConfereCupomAberto(m_memoria)) {
        return recusa;
    }
    if (Recusa recusa = ConfereItensAbertos(m_memoria)) {
        return recusa;
    }
    if (m_memoria.cupom.itensVivos == 0) {
        return "the receipt has no item";
    }
    return ConfereAjuste(ajuste, m_memoria.cupom.subtotal);
}

void Registro::AjustaSubtotal(const Ajuste& ajuste, RtcAbsoluteTime)
{
    CupomAtual& cupom = m_memoria.cupom;
    const Financial valor = ValorDoAjuste(ajuste, cupom.subtotal);
    std::vector<Financial> liquidos;
    liquidos.reserve(cupom.itens.size());
    for (const ItemRegistrado& item : cupom.itens) {
        liquidos.push_back(item.cancelado ? Financial() : LiquidoDoItem(item));
    }
    const std::vector<Financial> partes = RateiaAjuste(valor, liquidos);

    cupom.ajusteAplicado = true;
    cupom.ajusteOperacao = ajuste.operacao;
    cupom.ajusteValor = valor;
    cupom.ajusteCancelado = Financial();
    for (std::size_t i = 0; i < partes.size(); ++i) {
        ItemRegistrado& item = cupom.itens[i];
        item.rateio = partes[i];
        if (ajuste.operacao == DESCONTO) {
            EscrituraDesconto(m_memoria, item, item.rateio);
        } else {
            EscrituraAcrescimo(m_memoria, item, item.rateio);
        }
    }
}

Recusa Registro::PodeCancelaAjusteSubtotal(EOperacao operacao, RtcAbsoluteTime) const
{
    if (Recusa recusa = ConfereCupomAberto(m_memoria)) {
        return recusa;
    }
    const CupomAtual& cupom = m_memoria.cupom;
    if (!cupom.ajusteAplicado || cupom.ajusteOperacao != operacao) {
        return std::string("the subtotal carries no ") + Nome(operacao);
    }
    if (cupom.situacao == ESituacaoCupom::EM_PAGAMENTO) {
        return "the receipt is being paid: its items and its subtotal stand";
    }
    return std::nullopt;
}

void Registro::CancelaAjusteSubtotal(EOperacao operacao, RtcAbsoluteTime)
{
    CupomAtual& cupom = m_memoria.cupom;
    for (ItemRegistrado& item : cupom.itens) {
        if (operacao == DESCONTO) {
            EscrituraCancelamentoDesconto(m_memoria, item, item.rateio);
        } else {
            EscrituraCancelamentoAcrescimo(m_memoria, item, item.rateio);
        }
        item.rateio = Financial();
    }
    cupom.ajusteAplicado = false;
    cupom.ajusteCancelado = cupom.ajusteValor;
}

} // namespace bancada

// Discounts and surcharges, on an item and on the subtotal, and their cancellation.
#include "bancada/Messages.h"
#include "bancada/registro/Booking.h"
#include "bancada/registro/Checks.h"
#include "bancada/registro/CurrentCupom.h"
#include "bancada/registro/Rateio.h"
#include "bancada/registro/Registro.h"

#include <vector>

namespace bancada
{

namespace
{

constexpr int HUNDRED_PERCENT = 10000; // hundredths of a percent

// What the adjustment comes to on `base`. REQUIRES: CheckAjuste accepts it, or it is by value.
Financial AjusteValor(const Ajuste& ajuste, const Financial& base)
{
    if (ajuste.tipo == VALOR) {
        return Financial(ajuste.valor);
    }
    return base.Times(ajuste.valor, BigInt(HUNDRED_PERCENT), 2, Rounding::TOWARD_ZERO);
}

Refusal CheckAjuste(const Ajuste& ajuste, const Financial& base)
{
    if (ajuste.operacao != DESCONTO && ajuste.operacao != ACRESCIMO) {
        return Tr("an adjustment is a discount or a surcharge");
    }
    if (ajuste.tipo != VALOR &&
        (ajuste.valor <= BigInt(0) || ajuste.valor > BigInt(MAX_PERCENTUAL))) {
        return Tr("the percentage must be above zero and at most 999.99");
    }
    const Financial valor = AjusteValor(ajuste, base);
    const char* name =
        ajuste.operacao == DESCONTO ? TrLater("the discount") : TrLater("the surcharge");
    if (Refusal refusal = CheckValor(name, valor, MaxLancamento())) {
        return refusal;
    }
    if (ajuste.operacao == DESCONTO && valor >= base) {
        return Tr("the discount must be smaller than what it is taken from");
    }
    return std::nullopt;
}

int ItemNumber(const CurrentCupom& cupom, int numeroItem)
{
    return numeroItem == 0 ? static_cast<int>(cupom.itens.size()) : numeroItem;
}

const ItemVendido& Item(const CurrentCupom& cupom, int numeroItem)
{
    return cupom.itens[static_cast<std::size_t>(numeroItem) - 1];
}

ItemVendido& Item(CurrentCupom& cupom, int numeroItem)
{
    return cupom.itens[static_cast<std::size_t>(numeroItem) - 1];
}

} // namespace

Refusal Registro::CheckAjustaItem(const Ajuste& ajuste, int numeroItem, RtcAbsoluteTime) const
{
    if (Refusal refusal = CheckCupomOpen(m_memoria)) {
        return refusal;
    }
    if (Refusal refusal = CheckItensOpen(m_memoria)) {
        return refusal;
    }
    const CurrentCupom& cupom = m_memoria.cupom;
    const int numero = ItemNumber(cupom, numeroItem);
    if (Refusal refusal = CheckItem(cupom, numero)) {
        return refusal;
    }
    const ItemVendido& item = Item(cupom, numero);
    const Financial& present = ajuste.operacao == DESCONTO ? item.desconto : item.acrescimo;
    if (!present.IsZero()) {
        return Tr(ajuste.operacao == DESCONTO ? TrLater("item %1 already carries a discount")
                                              : TrLater("item %1 already carries a surcharge"),
                  {std::to_string(numero)});
    }
    return CheckAjuste(ajuste, ItemLiquido(item));
}

void Registro::AjustaItem(const Ajuste& ajuste, int numeroItem, RtcAbsoluteTime)
{
    CurrentCupom& cupom = m_memoria.cupom;
    ItemVendido& item = Item(cupom, ItemNumber(cupom, numeroItem));
    const Financial valor = AjusteValor(ajuste, ItemLiquido(item));
    if (ajuste.operacao == DESCONTO) {
        item.desconto = valor;
        cupom.subtotal -= valor;
        BookDesconto(m_memoria, item, valor);
    } else {
        item.acrescimo = valor;
        cupom.subtotal += valor;
        BookAcrescimo(m_memoria, item, valor);
    }
}

Refusal Registro::CheckCancelaAjusteItem(EOperacao operacao, int numeroItem, RtcAbsoluteTime) const
{
    if (Refusal refusal = CheckCupomOpen(m_memoria)) {
        return refusal;
    }
    if (Refusal refusal = CheckItensOpen(m_memoria)) {
        return refusal;
    }
    const CurrentCupom& cupom = m_memoria.cupom;
    if (Refusal refusal = CheckItem(cupom, numeroItem)) {
        return refusal;
    }
    const ItemVendido& item = Item(cupom, numeroItem);
    const Financial& present = operacao == DESCONTO ? item.desconto : item.acrescimo;
    if (present.IsZero()) {
        return Tr(operacao == DESCONTO ? TrLater("item %1 carries no discount")
                                       : TrLater("item %1 carries no surcharge"),
                  {std::to_string(numeroItem)});
    }
    // A discount taken after the surcharge may be more than the item without it.
    if (operacao == ACRESCIMO && item.desconto >= item.bruto) {
        return Tr(
            "without the surcharge the discount on item %1 would not leave anything: cancel the discount first",
            {std::to_string(numeroItem)});
    }
    return std::nullopt;
}

void Registro::CancelaAjusteItem(EOperacao operacao, int numeroItem, RtcAbsoluteTime)
{
    CurrentCupom& cupom = m_memoria.cupom;
    ItemVendido& item = Item(cupom, numeroItem);
    if (operacao == DESCONTO) {
        cupom.subtotal += item.desconto;
        BookCancelamentoDesconto(m_memoria, item, item.desconto);
        item.desconto = Financial();
    } else {
        cupom.subtotal -= item.acrescimo;
        BookCancelamentoAcrescimo(m_memoria, item, item.acrescimo);
        item.acrescimo = Financial();
    }
}

Refusal Registro::CheckAjustaSubtotal(const Ajuste& ajuste, RtcAbsoluteTime) const
{
    if (Refusal refusal = CheckCupomOpen(m_memoria)) {
        return refusal;
    }
    if (Refusal refusal = CheckItensOpen(m_memoria)) {
        return refusal;
    }
    if (m_memoria.cupom.itensVivos == 0) {
        return Tr("the receipt has no item");
    }
    return CheckAjuste(ajuste, m_memoria.cupom.subtotal);
}

void Registro::AjustaSubtotal(const Ajuste& ajuste, RtcAbsoluteTime)
{
    CurrentCupom& cupom = m_memoria.cupom;
    const Financial valor = AjusteValor(ajuste, cupom.subtotal);
    std::vector<Financial> liquidos;
    liquidos.reserve(cupom.itens.size());
    for (const ItemVendido& item : cupom.itens) {
        liquidos.push_back(item.cancelado ? Financial() : ItemLiquido(item));
    }
    const std::vector<Financial> shares = ApportionAjuste(valor, liquidos);

    cupom.ajusteAplicado = true;
    cupom.ajusteOperacao = ajuste.operacao;
    cupom.ajusteValor = valor;
    cupom.ajusteCancelado = Financial();
    for (std::size_t i = 0; i < shares.size(); ++i) {
        ItemVendido& item = cupom.itens[i];
        item.rateio = shares[i];
        if (ajuste.operacao == DESCONTO) {
            BookDesconto(m_memoria, item, item.rateio);
        } else {
            BookAcrescimo(m_memoria, item, item.rateio);
        }
    }
}

Refusal Registro::CheckCancelaAjusteSubtotal(EOperacao operacao, RtcAbsoluteTime) const
{
    if (Refusal refusal = CheckCupomOpen(m_memoria)) {
        return refusal;
    }
    const CurrentCupom& cupom = m_memoria.cupom;
    if (!cupom.ajusteAplicado || cupom.ajusteOperacao != operacao) {
        return operacao == DESCONTO ? Tr("the subtotal carries no discount")
                                    : Tr("the subtotal carries no surcharge");
    }
    if (cupom.situacao == ESituacaoCupom::EM_PAGAMENTO) {
        return Tr("the receipt is being paid: its items and its subtotal stand");
    }
    return std::nullopt;
}

void Registro::CancelaAjusteSubtotal(EOperacao operacao, RtcAbsoluteTime)
{
    CurrentCupom& cupom = m_memoria.cupom;
    for (ItemVendido& item : cupom.itens) {
        if (operacao == DESCONTO) {
            BookCancelamentoDesconto(m_memoria, item, item.rateio);
        } else {
            BookCancelamentoAcrescimo(m_memoria, item, item.rateio);
        }
        item.rateio = Financial();
    }
    cupom.ajusteAplicado = false;
    cupom.ajusteCancelado = cupom.ajusteValor;
}

} // namespace bancada

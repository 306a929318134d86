// The fiscal receipt: opening, items, closing.
#include "bancada/Messages.h"
#include "bancada/registro/Checks.h"
#include "bancada/registro/Emissao.h"
#include "bancada/registro/Registro.h"
#include "bancada/registro/Totalizadores.h"

#include <utility>

namespace bancada
{

namespace
{

std::int64_t PowerOfTen(int exponent)
{
    std::int64_t power = 1;
    for (int i = 0; i < exponent; ++i) {
        power *= 10;
    }
    return power;
}

Refusal CheckDecimal(const char* what, const Decimal& numero, int integerDigits)
{
    if (numero.decimals < 0 || numero.decimals > MAX_DECIMALS) {
        return Tr("%1 has more than %2 decimals", {Tr(what), std::to_string(MAX_DECIMALS)});
    }
    if (numero.unscaled <= 0) {
        return Tr("%1 must be above zero", {Tr(what)});
    }
    if (numero.unscaled >= PowerOfTen(integerDigits + numero.decimals)) {
        return Tr("%1 has more than %2 integer digits", {Tr(what), std::to_string(integerDigits)});
    }
    return std::nullopt;
}

Financial ItemBruto(const VendaItem& venda)
{
    const BigInt product = BigInt::FromInt64(venda.quantidade.unscaled) *
                           BigInt::FromInt64(venda.valorUnitario.unscaled) * BigInt(100);
    const std::int64_t scale = PowerOfTen(venda.quantidade.decimals + venda.valorUnitario.decimals);
    const BigInt cents = product.DividedBy(
        BigInt::FromInt64(scale), venda.arredonda ? Rounding::HALF_UP : Rounding::TOWARD_ZERO);
    return Financial(cents * BigInt(Financial::SCALE / 100));
}

} // namespace

Refusal Registro::CheckAbreCupom(const Consumidor& consumidor, RtcAbsoluteTime em) const
{
    if (Refusal refusal = CheckMovimento(m_memoria, em)) {
        return refusal;
    }
    return CheckConsumidor(consumidor);
}

void Registro::AbreCupom(const Consumidor& consumidor, RtcAbsoluteTime em)
{
    BeginCupom(m_memoria, CUPOM_FISCAL, consumidor, em);
}

Refusal Registro::CheckVendeItem(const VendaItem& venda, RtcAbsoluteTime) const
{
    if (Refusal refusal = CheckCupomOpen(m_memoria, CUPOM_FISCAL)) {
        return refusal;
    }
    if (Refusal refusal = CheckItensOpen(m_memoria)) {
        return refusal;
    }
    if (Refusal refusal = CheckRoomForItem(m_memoria.cupom)) {
        return refusal;
    }
    if (venda.codigo.empty() || venda.descricao.empty()) {
        return Tr("an item needs a code and a description");
    }
    const TotalizadorPlace place = FindTotalizador(venda.tributacao, venda.indice);
    if (!place.Exists()) {
        return Tr("there is no totalizer %1", {venda.tributacao + std::to_string(venda.indice)});
    }
    if (!m_memoria.fiscal.programado[static_cast<std::size_t>(place.baseImposto)]
                                    [static_cast<std::size_t>(place.posicao)]) {
        return Tr("the totalizer %1 is not programmed",
                  {venda.tributacao + std::to_string(venda.indice)});
    }
    if (Refusal refusal =
            CheckDecimal(TrLater("the quantity"), venda.quantidade, QUANTIDADE_INTEGER_DIGITS)) {
        return refusal;
    }
    if (Refusal refusal =
            CheckDecimal(TrLater("the unit price"), venda.valorUnitario, PRECO_INTEGER_DIGITS)) {
        return refusal;
    }
    return CheckValor(TrLater("the item's total"), ItemBruto(venda), MaxLancamento());
}

void Registro::VendeItem(const VendaItem& venda, RtcAbsoluteTime)
{
    const TotalizadorPlace place = FindTotalizador(venda.tributacao, venda.indice);
    ItemVendido item;
    item.codigo = venda.codigo;
    item.descricao = venda.descricao;
    item.unidade = venda.unidade;
    item.tributacao = venda.tributacao;
    item.numero = venda.indice;
    item.quantidade = venda.quantidade;
    item.valorUnitario = venda.valorUnitario;
    item.arredonda = venda.arredonda;
    item.baseImposto = place.baseImposto;
    item.posicao = place.posicao;
    item.bruto = ItemBruto(venda);
    AddItem(m_memoria, std::move(item));
}

Refusal Registro::CheckFechaCupom(const std::string&, RtcAbsoluteTime) const
{
    if (Refusal refusal = CheckCupomOpen(m_memoria, CUPOM_FISCAL)) {
        return refusal;
    }
    return CheckPago(m_memoria.cupom);
}

void Registro::FechaCupom(const std::string& mensagem, RtcAbsoluteTime fim)
{
    FinishCupom(m_memoria, mensagem, fim);
}

} // namespace bancada

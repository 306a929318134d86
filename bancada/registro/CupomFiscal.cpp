// The fiscal receipt: opening, items, closing.
#include "bancada/registro/Emissao.h"
#include "bancada/registro/Registro.h"
#include "bancada/registro/Regras.h"
#include "bancada/registro/Totalizadores.h"

#include <utility>

namespace bancada
{

namespace
{

constexpr int MAX_CASAS = 3;
constexpr int DIGITOS_INTEIROS_QUANTIDADE = 7;
constexpr int DIGITOS_INTEIROS_PRECO = 9;
// Their product in cents stays within BigInt: 10^(7+3) x 10^(9+3) x 100 < 2^95.

std::int64_t PotenciaDeDez(int expoente)
{
    std::int64_t potencia = 1;
    for (int i = 0; i < expoente; ++i) {
        potencia *= 10;
    }
    return potencia;
}

Recusa ConfereDecimal(const char* oQue, const Decimal& numero, int digitosInteiros)
{
    const std::string nome(oQue);
    if (numero.casas < 0 || numero.casas > MAX_CASAS) {
        return nome + " has more than " + std::to_string(MAX_CASAS) + " decimals";
    }
    if (numero.unscaled <= 0) {
        return nome + " must be above zero";
    }
    if (numero.unscaled >= PotenciaDeDez(digitosInteiros + numero.casas)) {
        return nome + " has more than " + std::to_string(digitosInteiros) + " integer digits";
    }
    return std::nullopt;
}

Financial TotalBruto(const VendaItem& venda)
{
    const BigInt produto = BigInt::FromInt64(venda.quantidade.unscaled) *
                           BigInt::FromInt64(venda.valorUnitario.unscaled) * BigInt(100);
    const std::int64_t escala = PotenciaDeDez(venda.quantidade.casas + venda.valorUnitario.casas);
    const BigInt centavos = produto.DividedBy(
        BigInt::FromInt64(escala), venda.arredonda ? Rounding::HALF_UP : Rounding::TOWARD_ZERO);
    return Financial(centavos * BigInt(Financial::SCALE / 100));
}

} // namespace

Recusa Registro::PodeAbreCupom(const Consumidor& consumidor, RtcAbsoluteTime em) const
{
    if (Recusa recusa = ConferePodeMovimentar(m_memoria, em)) {
        return recusa;
    }
    return ConfereConsumidor(consumidor);
}

void Registro::AbreCupom(const Consumidor& consumidor, RtcAbsoluteTime em)
{
    IniciaCupom(m_memoria, CUPOM_FISCAL, consumidor, em);
}

Recusa Registro::PodeVendeItem(const VendaItem& venda, RtcAbsoluteTime) const
{
    if (Recusa recusa = ConfereCupomAberto(m_memoria, CUPOM_FISCAL)) {
        return recusa;
    }
    if (Recusa recusa = ConfereItensAbertos(m_memoria)) {
        return recusa;
    }
    if (Recusa recusa = ConfereLugarParaItem(m_memoria.cupom)) {
        return recusa;
    }
    if (venda.codigo.empty() || venda.descricao.empty()) {
        return "an item needs a code and a description";
    }
    const LugarDoTotalizador lugar = LocalizaTotalizador(venda.tributacao, venda.indice);
    if (!lugar.Existe()) {
        return "there is no totalizer " + venda.tributacao + std::to_string(venda.indice);
    }
    if (!m_memoria.fiscal.programado[static_cast<std::size_t>(lugar.baseImposto)]
                                    [static_cast<std::size_t>(lugar.posicao)]) {
        return "the totalizer " + venda.tributacao + std::to_string(venda.indice) +
               " is not programmed";
    }
    if (Recusa recusa =
            ConfereDecimal("the quantity", venda.quantidade, DIGITOS_INTEIROS_QUANTIDADE)) {
        return recusa;
    }
    if (Recusa recusa =
            ConfereDecimal("the unit price", venda.valorUnitario, DIGITOS_INTEIROS_PRECO)) {
        return recusa;
    }
    return ConfereValor("the item's total", TotalBruto(venda), MaximoDeUmLancamento());
}

void Registro::VendeItem(const VendaItem& venda, RtcAbsoluteTime)
{
    const LugarDoTotalizador lugar = LocalizaTotalizador(venda.tributacao, venda.indice);
    ItemRegistrado item;
    item.codigo = venda.codigo;
    item.descricao = venda.descricao;
    item.unidade = venda.unidade;
    item.tributacao = venda.tributacao;
    item.numero = venda.indice;
    item.quantidade = venda.quantidade;
    item.valorUnitario = venda.valorUnitario;
    item.arredonda = venda.arredonda;
    item.baseImposto = lugar.baseImposto;
    item.posicao = lugar.posicao;
    item.bruto = TotalBruto(venda);
    AcrescentaItem(m_memoria, std::move(item));
}

Recusa Registro::PodeFechaCupom(const std::string&, RtcAbsoluteTime) const
{
    if (Recusa recusa = ConfereCupomAberto(m_memoria, CUPOM_FISCAL)) {
        return recusa;
    }
    return ConferePago(m_memoria.cupom);
}

void Registro::FechaCupom(const std::string& mensagem, RtcAbsoluteTime em)
{
    ConcluiCupom(m_memoria, mensagem, em);
}

} // namespace bancada

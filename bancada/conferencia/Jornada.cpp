#include "bancada/conferencia/Jornada.h"

#include "bancada/Messages.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Limits.h"

namespace bancada::conferencia
{

using leitura::Amount;

void AmountRange::Add(const Amount& least, const Amount& most)
{
    m_least = m_least + least;
    m_most = m_most + most;
}

bool AmountRange::Contains(const Amount& amount) const
{
    return IsAtMost(m_least, amount) && IsAtMost(amount, m_most);
}

std::string AmountRange::Text() const
{
    const std::string least = Money(m_least);
    const std::string most = Money(m_most);
    return least == most ? least : Tr("%1 to %2", {least, most});
}

namespace
{

constexpr int CENTS = 2;

// a * b / c cut towards zero, exact; not known where it does not fit. `c` is above zero.
Amount Cut(const Amount& a, const Amount& b, std::int64_t c)
{
    const bool known = a.IsKnown() && b.IsKnown() && c > 0;
    std::int64_t whole = 0;
    std::int64_t rest = 0;
    std::int64_t units = 0;
    if (!known || __builtin_mul_overflow(a.Units() / c, b.Units(), &whole) ||
        __builtin_mul_overflow(a.Units() % c, b.Units(), &rest) ||
        __builtin_add_overflow(whole, rest / c, &units)) {
        return {leitura::CellState::TOO_LARGE, "?", CENTS};
    }
    return {units, CENTS};
}

} // namespace

std::int64_t JornadaNumber(const leitura::Integer& crz)
{
    return crz.Value() == leitura::LAST_COUNTER + 1 ? 1 : crz.Value();
}

AmountRange Percentage(const Amount& base, const Amount& percent)
{
    constexpr std::int64_t HUNDREDTHS_IN_WHOLE = 10000;
    const Amount cut =
        Cut(base.WithDecimals(CENTS), percent.WithDecimals(CENTS), HUNDREDTHS_IN_WHOLE);
    AmountRange range;
    range.Add(cut, cut + Amount(1, CENTS));
    return range;
}

AmountRange WithShare(const Amount& item, const Amount& adjustment, const Amount& subtotal)
{
    const Amount share = Cut(item, adjustment, subtotal.Units());
    const Amount cent(adjustment.Units() < 0 ? -1 : 1, CENTS);
    AmountRange range;
    if (adjustment.Units() < 0) {
        range.Add(item + share + cent, item + share);
    } else {
        range.Add(item + share, item + share + cent);
    }
    return range;
}

bool IsAtMost(const Amount& a, const Amount& b)
{
    const Amount difference = b - a;
    return difference.IsKnown() && difference.Units() >= 0;
}

void Jornada::Add(const Jornada& other)
{
    vendas.Add(other.vendas);
    recebido.Add(other.recebido);
    naoFiscais = naoFiscais + other.naoFiscais;
    fundosDeTroco.insert(fundosDeTroco.end(), other.fundosDeTroco.begin(),
                         other.fundosDeTroco.end());
    for (const auto& [aliquota, range] : other.porAliquota) {
        porAliquota[aliquota].Add(range);
    }
    for (const auto& [indice, range] : other.porTotalizadorNf) {
        porTotalizadorNf[indice].Add(range);
    }
    bruto = bruto + other.bruto;
    descontos = descontos + other.descontos;
    acrescimos = acrescimos + other.acrescimos;
    acrescimoCancelado = acrescimoCancelado || other.acrescimoCancelado;
    AddMeios(other.meios);
}

void Jornada::AddCupom(std::int64_t coo, const std::string& hora, const CupomPlace& place)
{
    if (primeiraHora.empty() || hora < primeiraHora) {
        primeiraHora = hora;
        primeiroCoo = coo;
        primeiro = place;
    }
    if (ultimaHora.empty() || hora > ultimaHora) {
        ultimaHora = hora;
        ultimoCoo = coo;
        ultimo = place;
    }
}

void Jornada::AddMeios(const std::map<std::int64_t, Amount>& porMeio)
{
    for (const auto& [meio, valor] : porMeio) {
        meios[meio] = meios[meio] + valor;
    }
}

} // namespace bancada::conferencia

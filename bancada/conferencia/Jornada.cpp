#include "bancada/conferencia/Jornada.h"

#include "bancada/conferencia/Texts.h"

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
    return least == most ? least : least + " to " + most;
}

bool IsAtMost(const Amount& a, const Amount& b)
{
    const Amount difference = b - a;
    return difference.IsKnown() && difference.Units() >= 0;
}

void Jornada::AddCupom(std::int64_t coo, const std::string& hora)
{
    if (primeiraHora.empty() || hora < primeiraHora) {
        primeiraHora = hora;
        primeiroCoo = coo;
    }
    if (ultimaHora.empty() || hora > ultimaHora) {
        ultimaHora = hora;
        ultimoCoo = coo;
    }
}

void Jornada::AddMeios(const std::map<std::int64_t, Amount>& porMeio)
{
    for (const auto& [meio, valor] : porMeio) {
        meios[meio] = meios[meio] + valor;
    }
}

} // namespace bancada::conferencia

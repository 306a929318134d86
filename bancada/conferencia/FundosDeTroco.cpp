#include "bancada/conferencia/FundosDeTroco.h"

#include "bancada/conferencia/Jornada.h"

#include <algorithm>

namespace bancada::conferencia
{
namespace
{

using leitura::Amount;

// A day has one or two; with more than these, all are in one means.
constexpr std::size_t MOST_SHARED = 12;

// Whether some of the floats from `first` on come to the amount.
bool IsSumOf(const Amount& amount, const std::vector<Amount>& fundos, std::size_t first = 0)
{
    if (amount.IsZero()) {
        return true;
    }
    for (std::size_t i = first; i < fundos.size(); ++i) {
        if (IsAtMost(fundos[i], amount) && IsSumOf(amount - fundos[i], fundos, i + 1)) {
            return true;
        }
    }
    return false;
}

// Whether the means took in the floats beyond their payments, each with one of them.
bool AreShared(const MeiosDaReducao& meios, const std::vector<Amount>& fundos, const Amount& soma)
{
    Amount beyond;
    for (const auto& [meio, valores] : meios) {
        const Amount share = valores.acumulado - valores.pagamentos;
        if (!IsSumOf(share, fundos)) {
            return false;
        }
        beyond = beyond + share;
    }
    return IsSame(beyond, soma);
}

} // namespace

bool CountFundos(MeiosDaReducao& meios, const std::vector<Amount>& fundos)
{
    Amount soma;
    for (const Amount& fundo : fundos) {
        soma = soma + fundo;
    }
    if (!soma.IsKnown() || soma.IsZero()) {
        return false;
    }
    if (fundos.size() <= MOST_SHARED && AreShared(meios, fundos, soma)) {
        for (auto& [meio, valores] : meios) {
            valores.fundos = valores.acumulado - valores.pagamentos;
        }
        return true;
    }
    // Some means is wrong whichever way; the floats are with the one that they explain, if any.
    const auto cash = std::find_if(meios.begin(), meios.end(), [&soma](const auto& meio) {
        return IsSame(meio.second.acumulado, meio.second.pagamentos + soma);
    });
    if (cash == meios.end()) {
        return false;
    }
    cash->second.fundos = soma;
    return true;
}

} // namespace bancada::conferencia

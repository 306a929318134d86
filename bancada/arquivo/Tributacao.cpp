#include "bancada/arquivo/Tributacao.h"

#include "bancada/arquivo/Importador.h"

#include <algorithm>

namespace bancada::arquivo
{
namespace
{

constexpr std::size_t RATE_SIZE = 7; // xxTnnnn
constexpr std::string_view FIRST_RATE = "01";
constexpr std::string_view LAST_RATE = "30"; // a register has thirty of each tax

bool AreDigits(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool IsDetalhado(const ArquivoLido& arquivo, const Programacao& programacao, std::int64_t crz,
                 const std::string& totalizador, const Tributacao& tributacao)
{
    const DoDia doDia = TaxOfDay(arquivo, crz, totalizador);
    if (doDia != DoDia::NOT_TOLD) {
        return doDia == DoDia::ISSQN;
    }
    const auto icms = programacao.icms.find(tributacao.indice);
    if (icms != programacao.icms.end() && icms->second.count(*tributacao.taxa) != 0) {
        return false;
    }
    const auto issqn = programacao.issqn.find(tributacao.indice);
    return issqn != programacao.issqn.end() && issqn->second.count(*tributacao.taxa) != 0;
}

} // namespace

DoDia TaxOfDay(const ArquivoLido& arquivo, std::int64_t crz, const std::string& totalizador)
{
    if (crz == 0) {
        return DoDia::NOT_TOLD;
    }
    const std::string other = totalizador.substr(0, 2) + "S" + totalizador.substr(3);
    const bool icms = arquivo.Totalizador(crz, totalizador) != 0;
    const bool issqn = arquivo.Totalizador(crz, other) != 0;
    if (icms || issqn) {
        return icms && issqn ? DoDia::NOT_TOLD : icms ? DoDia::ICMS : DoDia::ISSQN;
    }
    // A rate at which something was sold stands until the reduction.
    const bool notIcms = arquivo.HasRate(crz, totalizador.substr(0, 3));
    const bool notIssqn = arquivo.HasRate(crz, other.substr(0, 3));
    return notIcms == notIssqn ? DoDia::NOT_TOLD : notIcms ? DoDia::ISSQN : DoDia::ICMS;
}

bool IsTributacao(std::string_view totalizador)
{
    if (totalizador.size() == RATE_SIZE) {
        const std::string_view indice = totalizador.substr(0, 2);
        return (totalizador[2] == 'T' || totalizador[2] == 'S') && AreDigits(indice) &&
               indice >= FIRST_RATE && indice <= LAST_RATE && AreDigits(totalizador.substr(3));
    }
    for (const std::string_view codigo : {"F", "I", "N", "FS", "IS", "NS"}) {
        if (totalizador.size() == codigo.size() + 1 &&
            totalizador.substr(0, codigo.size()) == codigo && totalizador.back() >= '1' &&
            totalizador.back() <= '3') {
            return true;
        }
    }
    return false;
}

Tributacao TributacaoOf(const ArquivoLido& arquivo, const Programacao& programacao,
                        std::int64_t crz, const CupomLido& cupom, const std::string& totalizador)
{
    Tributacao tributacao;
    if (totalizador.size() != RATE_SIZE) {
        tributacao.codigo = totalizador.substr(0, totalizador.size() - 1);
        tributacao.indice = totalizador.back() - '0';
        return tributacao;
    }
    tributacao.codigo = totalizador.substr(2, 1);
    tributacao.indice = std::stoll(totalizador.substr(0, 2));
    tributacao.taxa = std::stoll(totalizador.substr(3));
    const auto taken = cupom.detalhados.find(totalizador);
    if (tributacao.codigo == "T" &&
        (taken != cupom.detalhados.end()
             ? taken->second
             : IsDetalhado(arquivo, programacao, crz, totalizador, tributacao))) {
        tributacao.codigo = "S";
        tributacao.detalhado = true;
    }
    return tributacao;
}

} // namespace bancada::arquivo

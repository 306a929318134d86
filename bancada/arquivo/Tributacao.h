// What the totalizer of an item says of its taxation.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace bancada::arquivo
{

class ArquivoLido;
struct CupomLido;
struct Programacao;

struct Tributacao {
    std::string codigo;               // T, S, F, I, N, FS, IS, NS, as a command names it
    std::int64_t indice = 0;          // from 1
    std::optional<std::int64_t> taxa; // hundredths of a percent; F1 and so on have none
    bool detalhado = false;           // of ISSQN, with the letter of ICMS

    bool IsIssqn() const { return codigo.back() == 'S'; }
};

// Whether an item can be sold in it: a rate xxTnnnn or xxSnnnn with xx from 01 to 30,
// or F1 to NS3.
bool IsTributacao(std::string_view totalizador);

// What the Z reduction of a day tells of a rate with the letter T.
enum class DoDia {
    NOT_TOLD,
    ICMS,
    ISSQN
};

// Of a day by its Z reduction, 0 for none: which tax it names the rate for; where it names it for
// none, that of which it names no other rate of the number.
DoDia TaxOfDay(const ArquivoLido& arquivo, std::int64_t crz, const std::string& totalizador);

// A detailed command writes a rate of ISSQN with the letter T: the Z reduction of the day, 0 for
// none, tells which it is, or the programming where the totalizer came to nothing; what the receipt
// is taken for stands above both. REQUIRES: IsTributacao(totalizador).
Tributacao TributacaoOf(const ArquivoLido& arquivo, const Programacao& programacao,
                        std::int64_t crz, const CupomLido& cupom, const std::string& totalizador);

} // namespace bancada::arquivo

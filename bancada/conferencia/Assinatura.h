// The signature of a closed fiscal receipt, recomputed from its rows.
#pragma once

#include "bancada/conferencia/Pagamentos.h"
#include "bancada/leitura/Tables.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace bancada::conferencia
{

// A receipt as its rows have it.
struct SignedCupom {
    leitura::CupomFiscalRow cupom;
    std::vector<leitura::ItemCupomFiscalRow> itens;
    Pagamentos pagamentos;
    // CNPJ and serial number of its search key, "CNPJ-serial number".
    std::string prefix;
};

enum class Signed : std::uint8_t {
    // The rows are what was signed, at an instant of the window.
    FOUND,
    NOT_FOUND,
    // The rows do not tell what was signed: a consumer named anew by the closing, several
    // reversals, adjustments of items beneath an apportioned one, more than six rates.
    UNDECIDED
};

struct SignatureSearch {
    Signed result = Signed::UNDECIDED;
    std::int64_t fechamento = 0; // seconds since 1970, where it was found
};

// Seconds since 1970 of "yyyy-mm-dd hh:mm:ss"; nothing for any other text.
std::optional<std::int64_t> SecondsOf(const std::string& instant);

// How far a signature is searched.
enum class Reach : std::uint8_t {
    // The rows' own text alone, within the first minute: enough to know a register by its receipts.
    NEAR,
    // Everything, with a bounded number of digests.
    FAR
};

// No row holds the instant of the closing, which is signed: it is looked for from the opening to
// `until`, in seconds since 1970, both included. Where the loggers write a text otherwise than it
// was given (an apostrophe gone from an address, blanked in a closing message, turned into a
// backquote in a description; the letter of a rate of ISSQN), up to two such places are tried
// within ten minutes of the opening, and one behind them; rates of ISSQN together are one place.
SignatureSearch SearchSignature(const SignedCupom& documento, std::int64_t until, Reach reach);

} // namespace bancada::conferencia

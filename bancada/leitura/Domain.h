// What the loggers write into a column.
#pragma once

#include <cstdint>

namespace bancada::leitura
{

// Named where a table's columns are listed; the room itself reads whatever stands in a cell.
enum class Domain : std::uint8_t {
    TEXT,
    NAME,            // a text that is not empty
    COUNTER,         // a number that a document bears: 1 to LAST_COUNTER
    COUNTER_OR_ZERO, // a counter that may not have moved yet
    NEXT_COUNTER,    // a counter plus 1: also one past the last number
    ECF,             // 1: a database serves a single register
    ITEM,            // 1 to MAX_ITENS
    MEIO,            // 1 to MAX_MEIOS_PAGAMENTO
    MEIO_OR_TROCO,   // or one past the last, for the change
    TOTALIZADOR_NF,  // 1 to MAX_TOTALIZADORES_NF
    PARCELAS,        // 0 to 99
    CAIXA,           // 0 to 999
    CASAS,           // 0 to MAX_CASAS
    SECONDS,         // none below zero
    INSTANT,         // yyyy-mm-dd hh:mm:ss
    DAY,             // an instant at midnight
    FLAG,            // S or N
    KIND,            // V or P
    ROUNDING,        // A or T
    DOCUMENT_TYPE,   // LX, MF, CC, RG, NC, CN, RZ
    MODE,            // L or T
    MONEY,           // cents, none below zero
    MONEY_OF_ITEM,   // the same; written with three decimals where the price has three
    SIGNED_MONEY,    // cents: a second reversal of several payments goes below zero
    QUANTITY,        // up to MAX_CASAS decimals, above zero
    PERCENT,         // hundredths, 0 to 999.99
    TAX_CODE,        // 01T18.00, 03S05.00, F1, FS1
    SIGNATURE,       // Base64, or a blank
    UF,              // one of the 27 states
    CNPJ,            // 14 digits, the last two of them check digits
};

} // namespace bancada::leitura

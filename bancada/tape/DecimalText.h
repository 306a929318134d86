// Decimal texts of the tape.
#pragma once

#include "bancada/registro/Decimal.h"

#include <string_view>

namespace bancada
{

// Reads one or more digits and optionally a '.' and one or more decimals: no sign, no blank, no
// other form. REQUIRES: `maxDigits`, the most before the point, and `maxDecimals`, the most after
// it, are together at most 18. The decimals as written are kept. Answers false, and leaves `out`
// unchanged, for any other text.
[[nodiscard]] bool ParseDecimal(std::string_view text, int maxDigits, int maxDecimals,
                                Decimal& out);

} // namespace bancada

// A decimal number that remembers how it was written.
#pragma once

#include <cstdint>

namespace bancada
{

// The number unscaled / 10^decimals: 1.500 is {1500, 3} and 1.5 is {15, 1}. The decimals are part
// of what was commanded (a receipt prints the quantity as it was given), so they are not reduced.
struct Decimal {
    std::int64_t unscaled = 0;
    int decimals = 0; // 0 to 3 where the register takes one
};

} // namespace bancada

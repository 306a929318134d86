// What the fuzzers hold numbers against: the compiler's 128-bit integers, and decimal text by
// remainders of ten. Shares no code with the library.
#pragma once

#include "libs/BigInt.h"
#include "tests/fuzz/Hold.h"

#include <cstdint>
#include <string>

#ifdef __SIZEOF_INT128__

__extension__ using Wide = __int128;

// The value of the low 96 bits, as two's complement has it.
inline Wide Wrapped(Wide value)
{
    const Wide range = Wide{1} << 96;
    const Wide low = ((value % range) + range) % range;
    return low < range / 2 ? low : low - range;
}

inline Wide WideOf(const BigInt& value)
{
    return Wrapped((Wide{value.number[2]} << 64) + (Wide{value.number[1]} << 32) + value.number[0]);
}

inline std::string DecimalOf(Wide value)
{
    std::string text;
    for (Wide rest = value < 0 ? -value : value; text.empty() || rest != 0; rest /= 10) {
        text.insert(text.begin(), static_cast<char>('0' + static_cast<int>(rest % 10)));
    }
    return value < 0 ? "-" + text : text;
}

// A count of ten-thousandths with so many decimals, cut; whole digits by the thousand if so asked.
inline std::string MoneyOf(Wide count, int decimals, bool grouped, const std::string& mark)
{
    std::string digits = DecimalOf(count < 0 ? -count : count);
    if (digits.size() < 5) {
        digits.insert(0, 5 - digits.size(), '0');
    }
    std::string whole = digits.substr(0, digits.size() - 4);
    std::string fraction = digits.substr(digits.size() - 4) + std::string(64, '0');
    fraction.resize(static_cast<std::size_t>(decimals));
    const bool isZero = (whole + fraction).find_first_not_of('0') == std::string::npos;
    if (grouped) {
        for (int at = static_cast<int>(whole.size()) - 3; at > 0; at -= 3) {
            whole.insert(static_cast<std::size_t>(at), ".");
        }
    }
    return (count < 0 && !isZero ? "-" : "") + whole + mark + fraction;
}

#endif

// BigInt values by their words, and how a failing test shows them.
#pragma once

#include "libs/BigInt.h"
#include "libs/Financial.h"
#include "tests/libs/DecimalText.h"

#include <cstdio>
#include <cstdlib>
#include <ostream>
#include <string>

// Most significant word first, as one writes a number.
inline BigInt Words(UINT32 high, UINT32 middle, UINT32 low)
{
    BigInt value;
    value.number[0] = low;
    value.number[1] = middle;
    value.number[2] = high;
    return value;
}

// The least and the greatest value.
inline BigInt Min()
{
    return Words(0x80000000u, 0, 0);
}
inline BigInt Max()
{
    return Words(0x7FFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFFFu);
}

// What is left of a division cut toward zero.
inline BigInt Remainder(const BigInt& dividend, const BigInt& divisor)
{
    return dividend - dividend.DividedBy(divisor, Rounding::TOWARD_ZERO) * divisor;
}

// Of a text that is known to be good.
inline BigInt Int(const char* text)
{
    BigInt value;
    if (!FromText(text, value)) {
        std::abort();
    }
    return value;
}

inline Financial Money(const char* text)
{
    Financial value;
    if (!FromText(text, value)) {
        std::abort();
    }
    return value;
}

inline std::string TextOf(const BigInt& value)
{
    char text[BigInt::TEXT_SIZE];
    return ToText(value, text, BigInt::TEXT_SIZE);
}

// The words, not the decimals: those may be what fails.
inline void PrintTo(const BigInt& value, std::ostream* out)
{
    char text[32];
    std::snprintf(text, sizeof(text), "%08X %08X %08X", static_cast<unsigned>(value.number[2]),
                  static_cast<unsigned>(value.number[1]), static_cast<unsigned>(value.number[0]));
    *out << text;
}

inline void PrintTo(const Financial& value, std::ostream* out)
{
    PrintTo(value.nr, out);
}

// Decimal digits, for the sources that write numbers into arrays.
#pragma once

#include "libs/FirmwareTypes.h"

#include <cstring>

// The two digits of every number below 100: a pair is copied where two digits would be divided.
[[gnu::visibility("hidden")]] extern const char DIGIT_PAIRS[200];

// Writes both digits of `number`, which is below 100, at `out`.
inline void WritePair(char* out, UINT32 number)
{
    std::memcpy(out, &DIGIT_PAIRS[2 * number], 2);
}

// Writes the digits of `number` so that they end before `end`; answers the first.
char* WriteDigitsBefore(char* end, UINT32 number);

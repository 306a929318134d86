// Decimal digits, for the sources that write numbers into arrays.
#pragma once

#include "libs/FirmwareTypes.h"

#include <cstring>

// The two digits of every number below 100: a pair is copied where two digits would be divided.
inline constexpr char DIGIT_PAIRS[] = "00010203040506070809"
                                      "10111213141516171819"
                                      "20212223242526272829"
                                      "30313233343536373839"
                                      "40414243444546474849"
                                      "50515253545556575859"
                                      "60616263646566676869"
                                      "70717273747576777879"
                                      "80818283848586878889"
                                      "90919293949596979899";

// Writes both digits of `number`, which is below 100, at `out`.
inline void WritePair(char* out, UINT32 number)
{
    std::memcpy(out, &DIGIT_PAIRS[2 * number], 2);
}

// Writes the digits of `number` so that they end before `end`; answers the first.
inline char* WriteDigitsBefore(char* end, UINT32 number)
{
    while (number >= 100) {
        end -= 2;
        WritePair(end, number % 100);
        number /= 100;
    }
    if (number >= 10) {
        WritePair(end - 2, number);
        return end - 2;
    }
    *--end = static_cast<char>('0' + number);
    return end;
}

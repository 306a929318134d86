// The absolute value of a BigInt, for the sources of this folder that divide it or write its
// digits.
#pragma once

#include "libs/BigInt.h"
#include "libs/FirmwareTypes.h"

// An unsigned integer of 96 bits: wide enough for the magnitude of the least BigInt, 2^95.
struct Magnitude {
    UINT32 word[3]; // least significant first

    static Magnitude Of(const BigInt& value)
    {
        const BigInt positive = value.IsNegative() ? -value : value;
        return {{positive.number[0], positive.number[1], positive.number[2]}};
    }

    bool FitsOneWord() const { return (word[1] | word[2]) == 0; }
    bool IsZero() const { return (word[0] | word[1] | word[2]) == 0; }

    // Divides this magnitude by `divisor` and answers the remainder. The divisor is known to the
    // compiler and below 2^16, so that every step is a 32-bit division by a constant, a
    // multiplication: a 32-bit processor needs no division routine.
    template <UINT32 divisor>
    UINT32 CutBy()
    {
        static_assert(divisor > 0 && divisor < 0x10000u, "half a word is brought down at a time");
        if (FitsOneWord()) {
            const UINT32 remainder = word[0] % divisor;
            word[0] /= divisor;
            return remainder;
        }
        UINT32 remainder = word[2] % divisor;
        word[2] /= divisor;
        for (int i = 1; i >= 0; --i) {
            const UINT32 high = remainder << 16 | word[i] >> 16;
            const UINT32 low = high % divisor << 16 | (word[i] & 0xFFFFu);
            word[i] = high / divisor << 16 | low / divisor;
            remainder = low % divisor;
        }
        return remainder;
    }
};

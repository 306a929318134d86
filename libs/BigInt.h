// A signed integer of 96 bits.
#pragma once

#include "libs/FirmwareTypes.h"

#include <cstdint>

// How a quotient that is not a whole number is made one.
enum class Rounding {
    TOWARD_ZERO, // the fraction is cut
    HALF_UP,     // to the nearest; exactly half goes away from zero (2.5 -> 3, -2.5 -> -3)
};

// Range: -2^95 to 2^95 - 1. Sums, differences, products and negation wrap around modulo 2^96, as
// two's complement does; nothing here throws, allocates or keeps state.
class BigInt
{
  public:
    // Three words, least significant first, two's complement.
    UINT32 number[3];

    BigInt() : number{0, 0, 0} {}
    BigInt(int value);

    static BigInt FromInt64(std::int64_t value);

    bool IsZero() const { return (number[0] | number[1] | number[2]) == 0; }
    bool IsNegative() const { return (number[2] & 0x80000000u) != 0; }

    // REQUIRES: the value lies within an int64_t.
    std::int64_t ToInt64() const;

    BigInt operator-() const;
    BigInt& operator+=(const BigInt& other);
    BigInt& operator-=(const BigInt& other);
    BigInt& operator*=(const BigInt& other);

    // The quotient by `divisor`, made whole as `rounding` says. A division by zero gives zero;
    // -2^95 / -1 wraps around to -2^95.
    BigInt DividedBy(const BigInt& divisor, Rounding rounding) const;

    // Bytes of the longest decimal text of a value, sign and terminator included.
    static constexpr int TEXT_SIZE = 31;

    // Negative, zero or positive as `a` is less than, equal to or greater than `b`.
    static int Compare(const BigInt& a, const BigInt& b);
};

static_assert(sizeof(BigInt) == 12, "a BigInt is its three words");

inline BigInt operator+(BigInt a, const BigInt& b)
{
    return a += b;
}
inline BigInt operator-(BigInt a, const BigInt& b)
{
    return a -= b;
}
inline BigInt operator*(BigInt a, const BigInt& b)
{
    return a *= b;
}

inline bool operator==(const BigInt& a, const BigInt& b)
{
    return BigInt::Compare(a, b) == 0;
}
inline bool operator!=(const BigInt& a, const BigInt& b)
{
    return BigInt::Compare(a, b) != 0;
}
inline bool operator<(const BigInt& a, const BigInt& b)
{
    return BigInt::Compare(a, b) < 0;
}
inline bool operator<=(const BigInt& a, const BigInt& b)
{
    return BigInt::Compare(a, b) <= 0;
}
inline bool operator>(const BigInt& a, const BigInt& b)
{
    return BigInt::Compare(a, b) > 0;
}
inline bool operator>=(const BigInt& a, const BigInt& b)
{
    return BigInt::Compare(a, b) >= 0;
}

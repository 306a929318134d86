// Money.
#pragma once

#include "libs/BigInt.h"
#include "libs/FirmwareTypes.h"

#include <cstdint>

// The text styles of Financial::ToString; 1,234.56 with two decimals is written as shown.
enum FINANCIAL_STR_TIPO : std::int32_t {
    FIN_STR_DEFAULT = 0, // "1.234,56": grouped in thousands by '.', decimal comma
    FIN_STR_1 = 1,       // "1.234,56": the same form
    FIN_STR_2 = 2,       // "1234,56": not grouped, decimal comma
    FIN_STR_3 = 3,       // "1234.56": not grouped, decimal point
    FIN_STR_4 = 4,       // "123456": not grouped, no separator before the decimals
};

// A money value, counted in ten-thousandths of the currency unit: `nr` = 12345600 is 1234.56.
// The range is that of BigInt; arithmetic is exact and wraps around as BigInt's does.
class Financial
{
  public:
    BigInt nr;

    static constexpr int SCALE = 10000; // ten-thousandths in one unit
    static constexpr int DECIMALS = 4;  // decimals that `nr` holds

    Financial() {}
    // Takes `value` unchanged as the count of ten-thousandths.
    Financial(const BigInt& value) : nr(value) {}

    static Financial FromCents(std::int64_t cents);

    bool IsZero() const { return nr.IsZero(); }
    bool IsNegative() const { return nr.IsNegative(); }

    Financial operator-() const { return Financial(-nr); }
    Financial operator+(const Financial& other) const { return Financial(nr + other.nr); }
    Financial operator-(const Financial& other) const { return Financial(nr - other.nr); }
    Financial& operator+=(const Financial& other)
    {
        nr += other.nr;
        return *this;
    }
    Financial& operator-=(const Financial& other)
    {
        nr -= other.nr;
        return *this;
    }

    // This value times `factor`, divided by `divisor`, made a whole count of units of 10^-decimals
    // in one rounding (never twice). REQUIRES: 0 <= decimals <= DECIMALS, and this value times
    // `factor` within the range. A divisor of zero gives zero.
    Financial Times(const BigInt& factor, const BigInt& divisor, int decimals,
                    Rounding rounding) const;

    // This value with at most `decimals` decimals. REQUIRES: 0 <= decimals <= DECIMALS.
    Financial Rounded(int decimals, Rounding rounding) const;

    // Writes the value as text in the style `tipo` and answers `out`.
    //  - `decimals` is how many decimals are written: 0 asks for 2, as does a negative number;
    //    decimals beyond the four of `nr` are zeros. What `nr` holds beyond them is cut, never
    //    rounded.
    //  - A minus sign stands before a value that is below zero as written; a value that the cut
    //    leaves zero has none. There is always a digit before the decimals ("0,05").
    //  - At most `size` bytes are written, the terminator included: a text that does not fit is
    //    written as an empty text, and a `size` below 1 writes nothing.
    //  - The last argument is not used; callers pass 0.
    char* ToString(char* out, int size, FINANCIAL_STR_TIPO tipo, int decimals, short) const;
};

static_assert(sizeof(Financial) == sizeof(BigInt), "a Financial is its count and nothing else");

inline bool operator==(const Financial& a, const Financial& b)
{
    return a.nr == b.nr;
}
inline bool operator!=(const Financial& a, const Financial& b)
{
    return a.nr != b.nr;
}
inline bool operator<(const Financial& a, const Financial& b)
{
    return a.nr < b.nr;
}
inline bool operator<=(const Financial& a, const Financial& b)
{
    return a.nr <= b.nr;
}
inline bool operator>(const Financial& a, const Financial& b)
{
    return a.nr > b.nr;
}
inline bool operator>=(const Financial& a, const Financial& b)
{
    return a.nr >= b.nr;
}

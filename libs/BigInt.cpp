#include "libs/BigInt.h"

#include "libs/Magnitude.h"

namespace
{

constexpr int WORDS = 3;
constexpr int WORD_BITS = 32;

bool IsLess(const Magnitude& a, const Magnitude& b)
{
    for (int i = WORDS - 1; i >= 0; --i) {
        if (a.word[i] != b.word[i]) {
            return a.word[i] < b.word[i];
        }
    }
    return false;
}

// Subtracts `b` from `a`. REQUIRES: `b` is not greater.
void Subtract(Magnitude& a, const Magnitude& b)
{
    UINT32 borrow = 0;
    for (int i = 0; i < WORDS; ++i) {
        const std::uint64_t difference = std::uint64_t{a.word[i]} - b.word[i] - borrow;
        a.word[i] = static_cast<UINT32>(difference);
        borrow = static_cast<UINT32>(difference >> WORD_BITS) & 1u;
    }
}

// Doubles `value` and brings `bit` in at its low end.
void ShiftIn(Magnitude& value, UINT32 bit)
{
    for (UINT32& word : value.word) {
        const UINT32 out = word >> (WORD_BITS - 1);
        word = word << 1 | bit;
        bit = out;
    }
}

struct Division {
    Magnitude quotient;
    Magnitude remainder;
};

// REQUIRES: the divisor is not zero.
Division Divide(const Magnitude& dividend, const Magnitude& divisor)
{
    Division result = {};
    if (divisor.FitsOneWord()) {
        std::uint64_t remainder = 0;
        for (int i = WORDS - 1; i >= 0; --i) {
            const std::uint64_t part = remainder << WORD_BITS | dividend.word[i];
            result.quotient.word[i] = static_cast<UINT32>(part / divisor.word[0]);
            remainder = part % divisor.word[0];
        }
        result.remainder.word[0] = static_cast<UINT32>(remainder);
        return result;
    }
    // Bit by bit. The divisor is at least 2^32, so that the uppermost word as a whole is less than
    // it and gives no bit of the quotient. The remainder stays below the divisor, at most 2^95:
    // doubling it loses nothing.
    result.remainder.word[0] = dividend.word[WORDS - 1];
    for (int bit = (WORDS - 1) * WORD_BITS - 1; bit >= 0; --bit) {
        ShiftIn(result.remainder, dividend.word[bit / WORD_BITS] >> (bit % WORD_BITS) & 1u);
        const bool goesIn = !IsLess(result.remainder, divisor);
        if (goesIn) {
            Subtract(result.remainder, divisor);
        }
        ShiftIn(result.quotient, goesIn ? 1u : 0u);
    }
    return result;
}

BigInt Value(const Magnitude& magnitude)
{
    BigInt value;
    for (int i = 0; i < WORDS; ++i) {
        value.number[i] = magnitude.word[i];
    }
    return value;
}

} // namespace

BigInt::BigInt(int value) : number{static_cast<UINT32>(value), 0, 0}
{
    if (value < 0) {
        number[1] = number[2] = 0xFFFFFFFFu;
    }
}

BigInt BigInt::FromInt64(std::int64_t value)
{
    const std::uint64_t bits = static_cast<std::uint64_t>(value);
    BigInt result;
    result.number[0] = static_cast<UINT32>(bits);
    result.number[1] = static_cast<UINT32>(bits >> WORD_BITS);
    result.number[2] = value < 0 ? 0xFFFFFFFFu : 0;
    return result;
}

std::int64_t BigInt::ToInt64() const
{
    return static_cast<std::int64_t>(std::uint64_t{number[1]} << WORD_BITS | number[0]);
}

BigInt BigInt::operator-() const
{
    BigInt result;
    result -= *this;
    return result;
}

BigInt& BigInt::operator+=(const BigInt& other)
{
    std::uint64_t carry = 0;
    for (int i = 0; i < WORDS; ++i) {
        carry += std::uint64_t{number[i]} + other.number[i];
        number[i] = static_cast<UINT32>(carry);
        carry >>= WORD_BITS;
    }
    return *this;
}

BigInt& BigInt::operator-=(const BigInt& other)
{
    UINT32 borrow = 0;
    for (int i = 0; i < WORDS; ++i) {
        const std::uint64_t difference = std::uint64_t{number[i]} - other.number[i] - borrow;
        number[i] = static_cast<UINT32>(difference);
        borrow = static_cast<UINT32>(difference >> WORD_BITS) & 1u;
    }
    return *this;
}

BigInt& BigInt::operator*=(const BigInt& other)
{
    // The low 96 bits of a product are the same for signed and unsigned factors.
    BigInt product;
    for (int i = 0; i < WORDS; ++i) {
        std::uint64_t carry = 0;
        for (int j = 0; i + j < WORDS; ++j) {
            carry += std::uint64_t{number[i]} * other.number[j] + product.number[i + j];
            product.number[i + j] = static_cast<UINT32>(carry);
            carry >>= WORD_BITS;
        }
    }
    return *this = product;
}

BigInt BigInt::DividedBy(const BigInt& divisor, Rounding rounding) const
{
    if (divisor.IsZero()) {
        return BigInt();
    }
    const Magnitude by = Magnitude::Of(divisor);
    Division division = Divide(Magnitude::Of(*this), by);
    BigInt quotient = Value(division.quotient);
    if (rounding == Rounding::HALF_UP) {
        ShiftIn(division.remainder, 0);
        if (!IsLess(division.remainder, by)) {
            quotient += 1;
        }
    }
    return IsNegative() != divisor.IsNegative() ? -quotient : quotient;
}

int BigInt::Compare(const BigInt& a, const BigInt& b)
{
    if (a.IsNegative() != b.IsNegative()) {
        return a.IsNegative() ? -1 : 1;
    }
    // Of two values of one sign, the lesser in two's complement is the lesser as unsigned words.
    for (int i = WORDS - 1; i >= 0; --i) {
        if (a.number[i] != b.number[i]) {
            return a.number[i] < b.number[i] ? -1 : 1;
        }
    }
    return 0;
}

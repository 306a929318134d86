// BigInt against the compiler's integer of 128 bits, where the target has one; the known decimals
// of tests/libs/BigIntTest.cpp are compared on every target.
#ifdef __SIZEOF_INT128__

#include "libs/BigInt.h"

#include "tests/libs/RandomSeed.h"
#include "tests/libs/Values.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace
{

__extension__ typedef __int128 Wide;
__extension__ typedef unsigned __int128 UnsignedWide;

constexpr Wide LIMIT = Wide{1} << 95;

BigInt FromWide(Wide value)
{
    const UnsignedWide bits = static_cast<UnsignedWide>(value);
    return Words(static_cast<UINT32>(bits >> 64), static_cast<UINT32>(bits >> 32),
                 static_cast<UINT32>(bits));
}

// What is left of a value when it wraps around 96 bits.
Wide Wrapped(UnsignedWide bits)
{
    bits &= (UnsignedWide{1} << 96) - 1;
    const Wide value = static_cast<Wide>(bits);
    return value >= LIMIT ? value - (Wide{1} << 96) : value;
}

std::string DecimalOf(Wide value)
{
    if (value == 0) {
        return "0";
    }
    std::string digits;
    for (Wide rest = value < 0 ? -value : value; rest != 0; rest /= 10) {
        digits.insert(digits.begin(), static_cast<char>('0' + static_cast<int>(rest % 10)));
    }
    return value < 0 ? "-" + digits : digits;
}

Wide HalfUp(Wide dividend, Wide divisor)
{
    const Wide a = dividend < 0 ? -dividend : dividend;
    const Wide b = divisor < 0 ? -divisor : divisor;
    const Wide magnitude = (2 * a + b) / (2 * b);
    return (dividend < 0) == (divisor < 0) ? magnitude : -magnitude;
}

int Sign(int order)
{
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

// Answers the first operation that differs, or an empty text.
std::string DifferenceInArithmetic(Wide a, Wide b)
{
    const BigInt x = FromWide(a);
    const BigInt y = FromWide(b);
    const UnsignedWide ua = static_cast<UnsignedWide>(a);
    const UnsignedWide ub = static_cast<UnsignedWide>(b);
    if (x + y != FromWide(Wrapped(ua + ub))) {
        return "+";
    }
    if (x - y != FromWide(Wrapped(ua - ub))) {
        return "-";
    }
    if (x * y != FromWide(Wrapped(ua * ub))) {
        return "*";
    }
    if (Sign(BigInt::Compare(x, y)) != (a < b ? -1 : a > b ? 1 : 0)) {
        return "Compare";
    }
    if (b == 0) {
        return "";
    }
    if (x.DividedBy(y, Rounding::TOWARD_ZERO) != FromWide(a / b)) {
        return "DividedBy, TOWARD_ZERO";
    }
    if (x.DividedBy(y, Rounding::HALF_UP) != FromWide(HalfUp(a, b))) {
        return "DividedBy, HALF_UP";
    }
    if (Remainder(x, y) != FromWide(a % b)) {
        return "remainder";
    }
    return "";
}

std::string DifferenceInText(Wide value)
{
    const BigInt held = FromWide(value);
    const std::string decimal = DecimalOf(value);
    if (TextOf(held) != decimal) {
        return "ToText";
    }
    BigInt read(77);
    if (!FromText(decimal.c_str(), read) || read != held) {
        return "FromText";
    }
    const bool fits = value >= -(Wide{1} << 63) && value < (Wide{1} << 63);
    if (fits && held.ToInt64() != static_cast<std::int64_t>(value)) {
        return "ToInt64";
    }
    return "";
}

void AddWithNeighbours(std::vector<Wide>& values, Wide value)
{
    for (const Wide near : {value - 1, value, value + 1}) {
        for (const Wide signedValue : {near, -near}) {
            if (signedValue >= -LIMIT && signedValue < LIMIT) {
                values.push_back(signedValue);
            }
        }
    }
}

std::vector<Wide> PowersOfTen()
{
    std::vector<Wide> values;
    for (Wide power = 1; power < LIMIT; power *= 10) {
        AddWithNeighbours(values, power);
    }
    return values;
}

TEST(BigIntAgainstInt128, TextAtEveryPowerOfTwoAndTen)
{
    std::vector<Wide> values = PowersOfTen();
    for (int bit = 0; bit <= 95; ++bit) {
        AddWithNeighbours(values, Wide{1} << bit);
    }
    for (const Wide value : values) {
        EXPECT_EQ(DifferenceInText(value), "") << DecimalOf(value);
    }
}

TEST(BigIntAgainstInt128, ArithmeticOfEveryPairAtBoundaries)
{
    std::vector<Wide> values = PowersOfTen();
    // The carries from word to word, the halves of words, and both ends.
    for (const int bit : {1, 2, 15, 16, 31, 32, 33, 47, 48, 63, 64, 65, 79, 80, 93, 94, 95}) {
        AddWithNeighbours(values, Wide{1} << bit);
    }
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
    for (const Wide a : values) {
        for (const Wide b : values) {
            ASSERT_EQ(DifferenceInArithmetic(a, b), "") << DecimalOf(a) << " and " << DecimalOf(b);
        }
    }
}

TEST(BigIntAgainstInt128, RandomValuesOfEveryWidth)
{
    const std::uint32_t seed = RandomSeed();
    std::mt19937_64 random(seed);
    const auto value = [&random] {
        const UnsignedWide bits = static_cast<UnsignedWide>(random()) << 64 | random();
        return static_cast<Wide>(bits) >> (32 + random() % 96);
    };
    for (int i = 0; i < 20000; ++i) {
        const Wide a = value();
        const Wide b = value();
        ASSERT_EQ(DifferenceInText(a), "") << DecimalOf(a) << ", seed " << seed;
        ASSERT_EQ(DifferenceInArithmetic(a, b), "")
            << DecimalOf(a) << " and " << DecimalOf(b) << ", seed " << seed;
    }
}

} // namespace

#endif

#include "libs/BigInt.h"

#include "tests/libs/GuardedText.h"
#include "tests/libs/Values.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>

namespace
{

constexpr UINT32 ONES = 0xFFFFFFFFu;
constexpr UINT32 TOP = 0x80000000u;

const char MIN_TEXT[] = "-39614081257132168796771975168";
const char MAX_TEXT[] = "39614081257132168796771975167";

void ExpectWords(const BigInt& value, UINT32 high, UINT32 middle, UINT32 low)
{
    EXPECT_EQ(value.number[2], high);
    EXPECT_EQ(value.number[1], middle);
    EXPECT_EQ(value.number[0], low);
}

TEST(BigIntConstruction, DefaultIsZero)
{
    ExpectWords(BigInt(), 0, 0, 0);
}

TEST(BigIntConstruction, FromAnIntExtendsTheSign)
{
    ExpectWords(BigInt(0), 0, 0, 0);
    ExpectWords(BigInt(1), 0, 0, 1);
    ExpectWords(BigInt(-1), ONES, ONES, ONES);
    ExpectWords(BigInt(2147483647), 0, 0, 0x7FFFFFFFu);
    ExpectWords(BigInt(-2147483647), ONES, ONES, 0x80000001u);
    ExpectWords(BigInt(std::numeric_limits<std::int32_t>::min()), ONES, ONES, TOP);
}

TEST(BigIntConstruction, FromInt64ExtendsTheSign)
{
    ExpectWords(BigInt::FromInt64(0), 0, 0, 0);
    ExpectWords(BigInt::FromInt64(-1), ONES, ONES, ONES);
    ExpectWords(BigInt::FromInt64(4294967295), 0, 0, ONES);
    ExpectWords(BigInt::FromInt64(4294967296), 0, 1, 0);
    ExpectWords(BigInt::FromInt64(-4294967296), ONES, ONES, 0);
    ExpectWords(BigInt::FromInt64(-4294967297), ONES, 0xFFFFFFFEu, ONES);
    ExpectWords(BigInt::FromInt64(9223372036854775807), 0, 0x7FFFFFFFu, ONES);
    ExpectWords(BigInt::FromInt64(std::numeric_limits<std::int64_t>::min()), ONES, TOP, 0);
}

TEST(BigIntConstruction, Extremes)
{
    ExpectWords(Min(), TOP, 0, 0);
    ExpectWords(Max(), 0x7FFFFFFFu, ONES, ONES);
}

TEST(BigIntSign, ZeroAndNegative)
{
    EXPECT_TRUE(BigInt().IsZero());
    EXPECT_FALSE(Words(0, 0, 1).IsZero());
    EXPECT_FALSE(Words(0, 1, 0).IsZero());
    EXPECT_FALSE(Words(1, 0, 0).IsZero());
    EXPECT_FALSE(BigInt().IsNegative());
    EXPECT_FALSE(Max().IsNegative());
    EXPECT_FALSE(Words(0, TOP, TOP).IsNegative());
    EXPECT_TRUE(Min().IsNegative());
    EXPECT_TRUE(BigInt(-1).IsNegative());
}

TEST(BigIntInt64, GivesWhatItWasMadeOf)
{
    for (const std::int64_t value :
         {std::int64_t{0}, std::int64_t{1}, std::int64_t{-1}, std::int64_t{4294967295},
          std::int64_t{4294967296}, std::int64_t{-4294967296}, std::int64_t{-4294967297},
          std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min()}) {
        EXPECT_EQ(BigInt::FromInt64(value).ToInt64(), value);
    }
}

TEST(BigIntAddition, CarriesThroughTheWords)
{
    ExpectWords(Words(0, 0, ONES) + 1, 0, 1, 0);
    ExpectWords(Words(0, ONES, ONES) + 1, 1, 0, 0);
    ExpectWords(Words(0, ONES, ONES) + Words(0, ONES, ONES), 1, ONES, 0xFFFFFFFEu);
    ExpectWords(Words(0, ONES, 0) + Words(0, 1, 0), 1, 0, 0);
    ExpectWords(BigInt(-1) + 1, 0, 0, 0);
    ExpectWords(BigInt(-5) + 3, ONES, ONES, 0xFFFFFFFEu);
}

TEST(BigIntAddition, WrapsAround)
{
    EXPECT_EQ(Max() + 1, Min());
    EXPECT_EQ(Min() + Min(), BigInt(0));
    EXPECT_EQ(Max() + Max(), BigInt(-2));
}

TEST(BigIntSubtraction, BorrowsThroughTheWords)
{
    ExpectWords(Words(0, 1, 0) - 1, 0, 0, ONES);
    ExpectWords(Words(1, 0, 0) - 1, 0, ONES, ONES);
    ExpectWords(Words(1, 0, 0) - Words(0, ONES, ONES), 0, 0, 1);
    ExpectWords(Words(1, 0, 0) - Words(0, 0, ONES), 0, 0xFFFFFFFFu, 1);
    ExpectWords(BigInt(0) - 1, ONES, ONES, ONES);
    ExpectWords(BigInt(3) - 5, ONES, ONES, 0xFFFFFFFEu);
}

TEST(BigIntSubtraction, WrapsAround)
{
    EXPECT_EQ(Min() - 1, Max());
    EXPECT_EQ(BigInt(0) - Min(), Min());
}

TEST(BigIntNegation, TurnsTheSign)
{
    EXPECT_EQ(-BigInt(0), BigInt(0));
    EXPECT_EQ(-BigInt(1), BigInt(-1));
    EXPECT_EQ(-Words(0, 1, 0), Words(ONES, ONES, 0));
    EXPECT_EQ(-Words(1, 0, 0), Words(ONES, 0, 0));
    EXPECT_EQ(-Max(), Min() + 1);
}

TEST(BigIntNegation, OfTheLeastValueWrapsAround)
{
    EXPECT_EQ(-Min(), Min());
}

TEST(BigIntMultiplication, CarriesThroughTheWords)
{
    ExpectWords(Words(0, 0, ONES) * Words(0, 0, ONES), 0, 0xFFFFFFFEu, 1);
    ExpectWords(Words(0, ONES, ONES) * Words(0, 0, ONES), 0xFFFFFFFEu, ONES, 1);
    ExpectWords(Words(0, 0, 0x10000u) * Words(0, 0, 0x10000u), 0, 1, 0);
    ExpectWords(Words(0, 1, 0) * Words(0, 1, 0), 1, 0, 0);
    ExpectWords(Words(0, 0, 2) * Words(0x3FFFFFFFu, ONES, ONES), 0x7FFFFFFFu, ONES, 0xFFFFFFFEu);
}

TEST(BigIntMultiplication, KnownDecimals)
{
    EXPECT_EQ(TextOf(Int("12345678901234") * Int("987654321098")), "12193263113692168864434932");
    EXPECT_EQ(TextOf(Int("-12345678901234") * Int("987654321098")), "-12193263113692168864434932");
    EXPECT_EQ(TextOf(Int("12345678901234") * Int("-987654321098")), "-12193263113692168864434932");
    EXPECT_EQ(TextOf(Int("-12345678901234") * Int("-987654321098")), "12193263113692168864434932");
    EXPECT_EQ(TextOf(Max() * 0), "0");
    EXPECT_EQ(TextOf(Max() * 1), MAX_TEXT);
}

TEST(BigIntMultiplication, WrapsAround)
{
    EXPECT_EQ(TextOf(Int("123456789012345678901") * Int("987654321098765432")),
              "31349941616432588610625076440");
    EXPECT_EQ(TextOf(Int("-123456789012345678901") * Int("987654321098765432")),
              "-31349941616432588610625076440");
    EXPECT_EQ(Words(0, 0x10000u, 0) * Words(0, 0x10000u, 0), BigInt(0));
    EXPECT_EQ(Max() * Max(), BigInt(1));
    EXPECT_EQ(Min() * -1, Min());
}

TEST(BigIntArithmetic, AValueMayStandOnBothSides)
{
    BigInt value = Words(0, ONES, ONES);
    EXPECT_EQ(&(value += value), &value);
    ExpectWords(value, 1, ONES, 0xFFFFFFFEu);
    EXPECT_EQ(&(value -= value), &value);
    ExpectWords(value, 0, 0, 0);
    value = Words(0, 0, ONES);
    EXPECT_EQ(&(value *= value), &value);
    ExpectWords(value, 0, 0xFFFFFFFEu, 1);
}

struct RoundingCase {
    int dividend;
    int divisor;
    int towardZero;
    int halfUp;
    int remainder;
};

TEST(BigIntDivision, RoundsAsAskedForEverySign)
{
    const RoundingCase cases[] = {
        {0, 2, 0, 0, 0},    {0, -2, 0, 0, 0},     {1, 2, 0, 1, 1},     {-1, 2, 0, -1, -1},
        {1, -2, 0, -1, 1},  {-1, -2, 0, 1, -1},   {1, 3, 0, 0, 1},     {-1, 3, 0, 0, -1},
        {2, 3, 0, 1, 2},    {-2, 3, 0, -1, -2},   {3, 3, 1, 1, 0},     {-3, 3, -1, -1, 0},
        {5, 2, 2, 3, 1},    {-5, 2, -2, -3, -1},  {5, -2, -2, -3, 1},  {-5, -2, 2, 3, -1},
        {6, 4, 1, 2, 2},    {7, 4, 1, 2, 3},      {5, 4, 1, 1, 1},     {7, 1, 7, 7, 0},
        {7, -1, -7, -7, 0}, {49, 100, 0, 0, 49},  {50, 100, 0, 1, 50}, {51, 100, 0, 1, 51},
        {1, 1000, 0, 0, 1}, {-1, 1000, 0, 0, -1}, {100, 7, 14, 14, 2}, {101, 7, 14, 14, 3},
        {102, 7, 14, 15, 4}};
    for (const RoundingCase& c : cases) {
        SCOPED_TRACE(std::to_string(c.dividend) + " / " + std::to_string(c.divisor));
        const BigInt dividend(c.dividend);
        EXPECT_EQ(dividend.DividedBy(c.divisor, Rounding::TOWARD_ZERO), BigInt(c.towardZero));
        EXPECT_EQ(dividend.DividedBy(c.divisor, Rounding::HALF_UP), BigInt(c.halfUp));
        EXPECT_EQ(Remainder(dividend, c.divisor), BigInt(c.remainder));
    }
}

struct DivisionCase {
    const char* dividend;
    const char* divisor;
    const char* towardZero;
    const char* halfUp;
    const char* remainder;
};

TEST(BigIntDivision, KnownDecimals)
{
    const DivisionCase cases[] = {
        {MAX_TEXT, "1", MAX_TEXT, MAX_TEXT, "0"},
        {MAX_TEXT, "10000", "3961408125713216879677197", "3961408125713216879677198", "5167"},
        {"10000000000000000000000000000", "7", "1428571428571428571428571428",
         "1428571428571428571428571429", "4"},
        // One word: 2^32 - 1; two words: 2^32 and up.
        {"18446744073709551615", "4294967295", "4294967297", "4294967297", "0"},
        {"18446744073709551614", "4294967295", "4294967296", "4294967297", "4294967294"},
        {"4294967295", "4294967296", "0", "1", "4294967295"},
        {"2147483647", "4294967296", "0", "0", "2147483647"},
        {"2147483648", "4294967296", "0", "1", "2147483648"},
        {"4294967296", "4294967296", "1", "1", "0"},
        {MAX_TEXT, "4294967296", "9223372036854775807", "9223372036854775808", "4294967295"},
        {MAX_TEXT, "10000000000000000000", "3961408125", "3961408126", "7132168796771975167"},
        // Three words: 2^64 and up.
        {MAX_TEXT, "18446744073709551616", "2147483647", "2147483648", "18446744073709551615"},
        {MAX_TEXT, "18446744073709551617", "2147483647", "2147483648", "18446744071562067968"},
        {MAX_TEXT, "39614081257132168796771975166", "1", "1", "1"},
        {MAX_TEXT, "19807040628566084398385987583", "2", "2", "1"},
        {"19807040628566084398385987583", MAX_TEXT, "0", "0", "19807040628566084398385987583"},
        {"19807040628566084398385987584", MAX_TEXT, "0", "1", "19807040628566084398385987584"},
    };
    for (const DivisionCase& c : cases) {
        SCOPED_TRACE(std::string(c.dividend) + " / " + c.divisor);
        const BigInt dividend = Int(c.dividend);
        const BigInt divisor = Int(c.divisor);
        EXPECT_EQ(TextOf(dividend.DividedBy(divisor, Rounding::TOWARD_ZERO)), c.towardZero);
        EXPECT_EQ(TextOf(dividend.DividedBy(divisor, Rounding::HALF_UP)), c.halfUp);
        EXPECT_EQ(TextOf(Remainder(dividend, divisor)), c.remainder);
        // The signs only turn the signs.
        EXPECT_EQ((-dividend).DividedBy(divisor, Rounding::HALF_UP), -Int(c.halfUp));
        EXPECT_EQ(dividend.DividedBy(-divisor, Rounding::HALF_UP), -Int(c.halfUp));
        EXPECT_EQ((-dividend).DividedBy(-divisor, Rounding::HALF_UP), Int(c.halfUp));
        EXPECT_EQ(Remainder(-dividend, divisor), -Int(c.remainder));
        EXPECT_EQ(Remainder(dividend, -divisor), Int(c.remainder));
    }
}

TEST(BigIntDivision, OfAndByTheLeastValue)
{
    const BigInt min = Min();
    const BigInt max = Max();
    for (const Rounding rounding : {Rounding::TOWARD_ZERO, Rounding::HALF_UP}) {
        EXPECT_EQ(min.DividedBy(1, rounding), min);
        EXPECT_EQ(min.DividedBy(-1, rounding), min);
        EXPECT_EQ(min.DividedBy(min, rounding), BigInt(1));
        EXPECT_EQ(TextOf(min.DividedBy(2, rounding)), "-19807040628566084398385987584");
        EXPECT_EQ(TextOf(min.DividedBy(-2, rounding)), "19807040628566084398385987584");
    }
    EXPECT_EQ(max.DividedBy(min, Rounding::TOWARD_ZERO), BigInt(0));
    EXPECT_EQ(max.DividedBy(min, Rounding::HALF_UP), BigInt(-1));
    EXPECT_EQ(min.DividedBy(max, Rounding::TOWARD_ZERO), BigInt(-1));
    EXPECT_EQ(Remainder(min, max), BigInt(-1));
    EXPECT_EQ(Remainder(max, min), max);
    EXPECT_EQ(Remainder(min, -1), BigInt(0));
    EXPECT_EQ(Remainder(min, min), BigInt(0));
    EXPECT_EQ(Remainder(min, 10), BigInt(-8));
}

TEST(BigIntDivision, ByZeroGivesZero)
{
    for (const BigInt& value : {BigInt(0), BigInt(1), BigInt(-1), Max(), Min()}) {
        EXPECT_EQ(value.DividedBy(0, Rounding::TOWARD_ZERO), BigInt(0));
        EXPECT_EQ(value.DividedBy(0, Rounding::HALF_UP), BigInt(0));
    }
}

TEST(BigIntComparison, OrdersEveryPairOfAnAscendingList)
{
    const BigInt ascending[] = {
        Min(),
        Min() + 1,
        Words(ONES, 0, 0), // -2^64
        Words(ONES, 0, 1),
        Words(ONES, TOP, 0), // -2^63
        Words(ONES, ONES, 0),
        BigInt(-2147483647),
        BigInt(-2),
        BigInt(-1),
        BigInt(0),
        BigInt(1),
        BigInt(2),
        Words(0, 0, TOP),
        Words(0, 0, ONES),
        Words(0, 1, 0),
        Words(0, 1, ONES),
        Words(0, TOP, 0),
        Words(0, ONES, ONES),
        Words(1, 0, 0),
        Words(1, ONES, 0),
        Max() - 1,
        Max(),
    };
    const std::size_t count = sizeof(ascending) / sizeof(ascending[0]);
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t j = 0; j < count; ++j) {
            SCOPED_TRACE(std::to_string(i) + " and " + std::to_string(j));
            const BigInt& a = ascending[i];
            const BigInt& b = ascending[j];
            const int order = BigInt::Compare(a, b);
            EXPECT_EQ(order < 0, i < j);
            EXPECT_EQ(order > 0, i > j);
            EXPECT_EQ(a == b, i == j);
            EXPECT_EQ(a != b, i != j);
            EXPECT_EQ(a < b, i < j);
            EXPECT_EQ(a <= b, i <= j);
            EXPECT_EQ(a > b, i > j);
            EXPECT_EQ(a >= b, i >= j);
        }
    }
}

struct TextCase {
    const char* text;
    UINT32 high, middle, low;
};

TEST(BigIntText, KnownDecimalsBothWays)
{
    const TextCase cases[] = {
        {"0", 0, 0, 0},
        {"1", 0, 0, 1},
        {"-1", ONES, ONES, ONES},
        {"9", 0, 0, 9},
        {"10", 0, 0, 10},
        {"-10", ONES, ONES, 0xFFFFFFF6u},
        {"4294967295", 0, 0, ONES},
        {"4294967296", 0, 1, 0},
        {"-4294967296", ONES, ONES, 0},
        {"1000000000000000000", 0, 0x0DE0B6B3u, 0xA7640000u},
        {"9223372036854775807", 0, 0x7FFFFFFFu, ONES},
        {"9223372036854775808", 0, TOP, 0},
        {"-9223372036854775808", ONES, TOP, 0},
        {"-9223372036854775809", ONES, 0x7FFFFFFFu, ONES},
        {"18446744073709551615", 0, ONES, ONES},
        {"18446744073709551616", 1, 0, 0},
        {"-18446744073709551616", ONES, 0, 0},
        {"10000000000000000000000000000", 0x204FCE5Eu, 0x3E250261u, 0x10000000u},
        {"39614081257132168796771975166", 0x7FFFFFFFu, ONES, 0xFFFFFFFEu},
        {MAX_TEXT, 0x7FFFFFFFu, ONES, ONES},
        {"-39614081257132168796771975167", TOP, 0, 1},
        {MIN_TEXT, TOP, 0, 0},
    };
    for (const TextCase& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(TextOf(Words(c.high, c.middle, c.low)), c.text);
        BigInt read(77);
        EXPECT_TRUE(FromText(c.text, read));
        EXPECT_EQ(read, Words(c.high, c.middle, c.low));
    }
}

TEST(BigIntText, LeadingZerosAndANegativeZeroAreRead)
{
    BigInt read(77);
    EXPECT_TRUE(FromText("007", read));
    EXPECT_EQ(read, BigInt(7));
    EXPECT_TRUE(FromText("-0", read));
    EXPECT_EQ(read, BigInt(0));
    EXPECT_TRUE(FromText("-00012", read));
    EXPECT_EQ(read, BigInt(-12));
    EXPECT_TRUE(FromText((std::string(200, '0') + MAX_TEXT).c_str(), read));
    EXPECT_EQ(read, Max());
}

TEST(BigIntText, MalformedTextsAreRefusedAndLeaveTheValue)
{
    const char* const malformed[] = {"",     "-",   "--1", "+1",  " 1",  "1 ",  "1-", "-1-",
                                     "- 1",  "1.0", "1,0", "1a",  "a",   "0x1", "/",  ":",
                                     "12/3", "1:2", "-a",  "1\n", "\t1", "1e3", ".",  "\xB2"};
    for (const char* text : malformed) {
        SCOPED_TRACE(text);
        BigInt value(77);
        EXPECT_FALSE(FromText(text, value));
        EXPECT_EQ(value, BigInt(77));
    }
}

TEST(BigIntText, ValuesOutsideTheRangeAreRefusedAndLeaveTheValue)
{
    const std::string outside[] = {
        "39614081257132168796771975168",  // 2^95
        "-39614081257132168796771975169", // -2^95 - 1
        "39614081257132168796771975170",
        "79228162514264337593543950335", // 2^96 - 1
        "-79228162514264337593543950335",
        "79228162514264337593543950336", // 2^96
        "-79228162514264337593543950336",
        "79228162514264337593543950341",
        "-79228162514264337593543950341",
        "100000000000000000000000000000",
        "396140812571321687967719751670",
        std::string(200, '9'),
        "-" + std::string(200, '9'),
        // Wraps around to a small value on the way.
        "79228162514264337593543950336000000000000000000000000000000",
    };
    for (const std::string& text : outside) {
        SCOPED_TRACE(text);
        BigInt value(77);
        EXPECT_FALSE(FromText(text.c_str(), value));
        EXPECT_EQ(value, BigInt(77));
    }
}

void ExpectTextIn(int size, const BigInt& value, const char* expected)
{
    SCOPED_TRACE("size " + std::to_string(size));
    GuardedText text(size);
    EXPECT_EQ(ToText(value, text.Buffer(), size), text.Buffer());
    EXPECT_EQ(text.Text().substr(0, static_cast<std::size_t>(size)), expected);
    EXPECT_TRUE(text.GuardsAreWhole());
}

TEST(BigIntText, FitsExactlyOrIsEmpty)
{
    static_assert(BigInt::TEXT_SIZE == sizeof(MIN_TEXT), "the longest text and its terminator");
    ExpectTextIn(BigInt::TEXT_SIZE, Min(), MIN_TEXT);
    ExpectTextIn(BigInt::TEXT_SIZE - 1, Min(), "");
    ExpectTextIn(BigInt::TEXT_SIZE - 1, Max(), MAX_TEXT);
    ExpectTextIn(BigInt::TEXT_SIZE - 2, Max(), "");
    ExpectTextIn(4, -12, "-12");
    ExpectTextIn(3, -12, "");
    ExpectTextIn(3, 12, "12");
    ExpectTextIn(2, 12, "");
    ExpectTextIn(2, 0, "0");
    ExpectTextIn(1, 0, "");
    ExpectTextIn(500, 0, "0");
}

TEST(BigIntText, ASizeBelowOneWritesNothing)
{
    for (const int size : {0, -1, std::numeric_limits<int>::min()}) {
        GuardedText text(0);
        EXPECT_EQ(ToText(BigInt(5), text.Buffer(), size), text.Buffer());
        EXPECT_TRUE(text.GuardsAreWhole());
    }
}

} // namespace

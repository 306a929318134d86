#include "libs/Financial.h"

#include "tests/libs/Values.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>

namespace
{

static_assert(std::is_same<decltype(Financial::nr), BigInt>::value, "money is counted in a BigInt");

const BigInt MIN = Min();
const BigInt MAX = Max();

TEST(FinancialConstruction, DefaultIsZero)
{
    EXPECT_EQ(Financial().nr, BigInt(0));
    EXPECT_TRUE(Financial().IsZero());
    EXPECT_FALSE(Financial().IsNegative());
}

TEST(FinancialConstruction, TakesACountUnchanged)
{
    EXPECT_EQ(Financial(BigInt(12345600)).nr, BigInt(12345600));
    EXPECT_EQ(Financial(MIN).nr, MIN);
    EXPECT_EQ(Financial(MAX).nr, MAX);
}

TEST(FinancialConstruction, FromCentsIsAHundredTimesTheCount)
{
    EXPECT_EQ(Financial::FromCents(0).nr, BigInt(0));
    EXPECT_EQ(Financial::FromCents(1).nr, BigInt(100));
    EXPECT_EQ(Financial::FromCents(-1).nr, BigInt(-100));
    EXPECT_EQ(Financial::FromCents(123456).nr, BigInt(12345600));
    EXPECT_EQ(TextOf(Financial::FromCents(std::numeric_limits<std::int64_t>::max()).nr),
              "922337203685477580700");
    EXPECT_EQ(TextOf(Financial::FromCents(std::numeric_limits<std::int64_t>::min()).nr),
              "-922337203685477580800");
}

TEST(FinancialConstruction, AssignmentCopiesAndAnswersTheAssigned)
{
    Financial value;
    EXPECT_EQ(&(value = Financial(MAX)), &value);
    EXPECT_EQ(value.nr, MAX);
}

TEST(FinancialSign, ZeroAndNegative)
{
    EXPECT_FALSE(Financial(BigInt(1)).IsZero());
    EXPECT_FALSE(Financial(BigInt(1)).IsNegative());
    EXPECT_FALSE(Financial(BigInt(-1)).IsZero());
    EXPECT_TRUE(Financial(BigInt(-1)).IsNegative());
}

TEST(FinancialArithmetic, SumsDifferencesAndNegation)
{
    const Financial a = Money("10.25");
    const Financial b = Money("0.5");
    EXPECT_EQ((a + b).nr, BigInt(107500));
    EXPECT_EQ((a - b).nr, BigInt(97500));
    EXPECT_EQ((b - a).nr, BigInt(-97500));
    EXPECT_EQ((-a).nr, BigInt(-102500));
    EXPECT_EQ((a - a).nr, BigInt(0));
    EXPECT_EQ((Financial(MAX) + Financial(BigInt(1))).nr, MIN);

    Financial sum = a;
    EXPECT_EQ(&(sum += b), &sum);
    EXPECT_EQ(sum.nr, BigInt(107500));
    EXPECT_EQ(&(sum -= a), &sum);
    EXPECT_EQ(sum.nr, BigInt(5000));
}

TEST(FinancialComparison, OrdersByTheCount)
{
    const Financial less = Money("-0.0001");
    const Financial more = Money("0.0001");
    EXPECT_TRUE(less < more);
    EXPECT_FALSE(more < less);
    EXPECT_FALSE(less < less);
    EXPECT_TRUE(less <= more);
    EXPECT_TRUE(less <= less);
    EXPECT_FALSE(more <= less);
    EXPECT_TRUE(more > less);
    EXPECT_FALSE(less > more);
    EXPECT_FALSE(less > less);
    EXPECT_TRUE(more >= less);
    EXPECT_TRUE(more >= more);
    EXPECT_FALSE(less >= more);
    EXPECT_TRUE(less == less);
    EXPECT_FALSE(less == more);
    EXPECT_TRUE(less != more);
    EXPECT_FALSE(less != less);
}

TEST(FinancialFromText, ReadsUpToFourDecimals)
{
    const struct {
        const char* text;
        const char* count;
    } cases[] = {
        {"0", "0"},
        {"-0", "0"},
        {"-0.00", "0"},
        {"0.0000", "0"},
        {"1", "10000"},
        {"-1", "-10000"},
        {"0.5", "5000"},
        {"0.05", "500"},
        {"0.005", "50"},
        {"0.0005", "5"},
        {"-0.0001", "-1"},
        {"1234.56", "12345600"},
        {"9.9999", "99999"},
        {"0010.10", "101000"},
        {"000", "0"},
        {"429496.7295", "4294967295"},
        {"429496.7296", "4294967296"},
        {"3961408125713216879677197.5167", "39614081257132168796771975167"},
        {"-3961408125713216879677197.5168", "-39614081257132168796771975168"},
        {"3961408125713216879677197", "39614081257132168796771970000"},
        {"3961408125713216879677197.5", "39614081257132168796771975000"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        Financial value(BigInt(77));
        EXPECT_TRUE(FromText(c.text, value));
        EXPECT_EQ(TextOf(value.nr), c.count);
    }
}

TEST(FinancialFromText, LeadingZerosDoNotCount)
{
    Financial value;
    EXPECT_TRUE(FromText(("-" + std::string(300, '0') + "1.5").c_str(), value));
    EXPECT_EQ(value.nr, BigInt(-15000));
}

TEST(FinancialFromText, MalformedTextsAreRefusedAndLeaveTheValue)
{
    const char* const malformed[] = {
        "",        "-",       ".",   "-.",  ".5",  "-.5",  "1.",  "-1.",  "1..5",
        "1.5.",    "1.2.3",   "+1",  "--1", " 1",  "1 ",   "1,5", "1.-5", "1-",
        "1.5-",    "1.5 ",    "1a",  "a",   "1.a", "1.5a", "- 1", "1e2",  "1.00000",
        "0.12345", "1.000,5", "0x1", "/1",  "1:",  "1./",  "1.:"};
    for (const char* text : malformed) {
        SCOPED_TRACE(text);
        Financial value(BigInt(77));
        EXPECT_FALSE(FromText(text, value));
        EXPECT_EQ(value.nr, BigInt(77));
    }
}

TEST(FinancialFromText, ValuesOutsideTheRangeAreRefusedAndLeaveTheValue)
{
    const std::string outside[] = {
        "3961408125713216879677197.5168",
        "-3961408125713216879677197.5169",
        "3961408125713216879677198",
        "9999999999999999999999999.9999",
        "10000000000000000000000000",
        "-10000000000000000000000000",
        std::string(300, '9'),
        "-" + std::string(300, '1') + ".1",
    };
    for (const std::string& text : outside) {
        SCOPED_TRACE(text);
        Financial value(BigInt(77));
        EXPECT_FALSE(FromText(text.c_str(), value));
        EXPECT_EQ(value.nr, BigInt(77));
    }
}

TEST(FinancialRounded, ToEveryNumberOfDecimals)
{
    const struct {
        const char* value;
        int decimals;
        const char* towardZero;
        const char* halfUp;
    } cases[] = {
        {"1.2345", 4, "1.2345", "1.2345"},
        {"1.2345", 3, "1.234", "1.235"},
        {"1.2344", 3, "1.234", "1.234"},
        {"1.2345", 2, "1.23", "1.23"},
        {"1.2349", 2, "1.23", "1.23"},
        {"1.2350", 2, "1.23", "1.24"},
        {"1.2345", 1, "1.2", "1.2"},
        {"1.2499", 1, "1.2", "1.2"},
        {"1.25", 1, "1.2", "1.3"},
        {"1.4999", 0, "1", "1"},
        {"1.5", 0, "1", "2"},
        {"2.5", 0, "2", "3"},
        {"-1.2350", 2, "-1.23", "-1.24"},
        {"-1.2349", 2, "-1.23", "-1.23"},
        {"-0.5", 0, "0", "-1"},
        {"-0.4999", 0, "0", "0"},
        {"0.0049", 2, "0", "0"},
        {"0.0050", 2, "0", "0.01"},
        {"999.9999", 2, "999.99", "1000"},
        {"-999.9999", 3, "-999.999", "-1000"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.value) + " to " + std::to_string(c.decimals));
        EXPECT_EQ(Money(c.value).Rounded(c.decimals, Rounding::TOWARD_ZERO), Money(c.towardZero));
        EXPECT_EQ(Money(c.value).Rounded(c.decimals, Rounding::HALF_UP), Money(c.halfUp));
    }
}

struct TimesCase {
    const char* value;
    const char* factor;
    const char* divisor;
    int decimals;
    const char* towardZero;
    const char* halfUp;
};

TEST(FinancialTimes, RoundsToTheDecimals)
{
    const TimesCase cases[] = {
        // A unit price of three decimals times a quantity in thousandths.
        {"1.999", "1500", "1000", 2, "2.99", "3"},
        {"1.999", "1500", "1000", 4, "2.9985", "2.9985"},
        // 18.00 % and 7.50 %, in hundredths of a percent.
        {"10.01", "1800", "10000", 2, "1.80", "1.80"},
        {"0.20", "750", "10000", 2, "0.01", "0.02"},
        {"100", "1", "3", 0, "33", "33"},
        {"100", "1", "3", 1, "33.3", "33.3"},
        {"100", "1", "3", 2, "33.33", "33.33"},
        {"100", "1", "3", 3, "33.333", "33.333"},
        {"100", "1", "3", 4, "33.3333", "33.3333"},
        {"200", "1", "3", 0, "66", "67"},
        {"200", "1", "3", 1, "66.6", "66.7"},
        {"200", "1", "3", 2, "66.66", "66.67"},
        {"200", "1", "3", 3, "66.666", "66.667"},
        {"200", "1", "3", 4, "66.6666", "66.6667"},
        {"-200", "1", "3", 2, "-66.66", "-66.67"},
        {"200", "-1", "3", 2, "-66.66", "-66.67"},
        {"200", "1", "-3", 2, "-66.66", "-66.67"},
        {"-200", "-1", "-3", 4, "-66.6666", "-66.6667"},
        {"-200", "1", "-3", 4, "66.6666", "66.6667"},
        {"0", "5", "3", 2, "0", "0"},
        {"5", "0", "3", 2, "0", "0"},
    };
    for (const TimesCase& c : cases) {
        SCOPED_TRACE(std::string(c.value) + " * " + c.factor + " / " + c.divisor + " to " +
                     std::to_string(c.decimals));
        const Financial value = Money(c.value);
        const BigInt factor = Int(c.factor);
        const BigInt divisor = Int(c.divisor);
        EXPECT_EQ(value.Times(factor, divisor, c.decimals, Rounding::TOWARD_ZERO),
                  Money(c.towardZero));
        EXPECT_EQ(value.Times(factor, divisor, c.decimals, Rounding::HALF_UP), Money(c.halfUp));
    }
}

TEST(FinancialTimes, RoundsOnceAndNeverTwice)
{
    // 0.00495: rounded to four decimals first it would be 0.0050, and then 0.01.
    EXPECT_EQ(Money("0.0099").Times(1, 2, 2, Rounding::HALF_UP), Money("0"));
    EXPECT_EQ(Money("-0.0099").Times(1, 2, 2, Rounding::HALF_UP), Money("0"));
    // 0.49995
    EXPECT_EQ(Money("0.9999").Times(1, 2, 0, Rounding::HALF_UP), Money("0"));
    // 0.005 exactly, and a third of a ten-thousandth more or less.
    EXPECT_EQ(Money("0.01").Times(1, 2, 2, Rounding::HALF_UP), Money("0.01"));
    EXPECT_EQ(Money("0.0151").Times(1, 3, 2, Rounding::HALF_UP), Money("0.01"));
    EXPECT_EQ(Money("0.0149").Times(1, 3, 2, Rounding::HALF_UP), Money("0"));
    EXPECT_EQ(Money("-0.01").Times(1, 2, 2, Rounding::HALF_UP), Money("-0.01"));
}

TEST(FinancialTimes, ADivisorNearTheEndOfTheRangeIsExact)
{
    // 0.50005 with a divisor whose ten thousandfold is out of the range.
    EXPECT_EQ(Money("3500350000000000000000000.0000")
                  .Times(1, Int("7000000000000000000000000"), 0, Rounding::HALF_UP),
              Money("1"));
    EXPECT_EQ(Financial(MAX).Times(1, MAX, 4, Rounding::HALF_UP), Money("0.0001"));
    EXPECT_EQ(Financial(MAX).Times(1, MAX, 3, Rounding::HALF_UP), Money("0"));
    EXPECT_EQ(Financial(MIN).Times(1, 1, 4, Rounding::HALF_UP), Financial(MIN));
}

TEST(FinancialTimes, ADivisorOfZeroGivesZero)
{
    for (int decimals = 0; decimals <= 4; ++decimals) {
        EXPECT_TRUE(Money("10").Times(3, 0, decimals, Rounding::HALF_UP).IsZero());
    }
}

} // namespace

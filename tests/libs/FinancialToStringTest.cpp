#include "libs/Financial.h"

#include "tests/libs/GuardedText.h"
#include "tests/libs/RandomSeed.h"
#include "tests/libs/Values.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

namespace
{

const char MIN_TEXT[] = "-3961408125713216879677197.5168";
const char MAX_TEXT[] = "3961408125713216879677197.5167";

constexpr FINANCIAL_STR_TIPO EVERY_STYLE[] = {FIN_STR_DEFAULT, FIN_STR_1, FIN_STR_2, FIN_STR_3,
                                              FIN_STR_4};

std::string Written(const Financial& value, FINANCIAL_STR_TIPO style = FIN_STR_DEFAULT,
                    int decimals = 0)
{
    char text[500];
    EXPECT_EQ(value.ToString(text, 500, style, decimals, 0), text);
    return text;
}

std::string Written(const char* value, FINANCIAL_STR_TIPO style = FIN_STR_DEFAULT, int decimals = 0)
{
    return Written(Money(value), style, decimals);
}

TEST(FinancialToString, ZeroDecimalsAskForTwoAsDoesANegativeNumber)
{
    EXPECT_EQ(Written("1234.56", FIN_STR_DEFAULT, 0), "1.234,56");
    EXPECT_EQ(Written("1234.56", FIN_STR_DEFAULT, -1), "1.234,56");
    EXPECT_EQ(Written("1234.56", FIN_STR_DEFAULT, std::numeric_limits<int>::min()), "1.234,56");
}

TEST(FinancialToString, EveryNumberOfDecimalsIsCutAndNeverRounded)
{
    EXPECT_EQ(Written("1999.9999", FIN_STR_DEFAULT, 1), "1.999,9");
    EXPECT_EQ(Written("1999.9999", FIN_STR_DEFAULT, 2), "1.999,99");
    EXPECT_EQ(Written("1999.9999", FIN_STR_DEFAULT, 3), "1.999,999");
    EXPECT_EQ(Written("1999.9999", FIN_STR_DEFAULT, 4), "1.999,9999");
    EXPECT_EQ(Written("1999.9999", FIN_STR_DEFAULT, 5), "1.999,99990");
    EXPECT_EQ(Written("1999.9999", FIN_STR_DEFAULT, 6), "1.999,999900");
}

TEST(FinancialToString, EveryDecimalStandsInItsPlace)
{
    EXPECT_EQ(Written("5.1234", FIN_STR_DEFAULT, 1), "5,1");
    EXPECT_EQ(Written("5.1234", FIN_STR_DEFAULT, 2), "5,12");
    EXPECT_EQ(Written("5.1234", FIN_STR_DEFAULT, 3), "5,123");
    EXPECT_EQ(Written("5.1234", FIN_STR_DEFAULT, 4), "5,1234");
    EXPECT_EQ(Written("0.0001", FIN_STR_DEFAULT, 4), "0,0001");
    EXPECT_EQ(Written("0.0010", FIN_STR_DEFAULT, 4), "0,0010");
    EXPECT_EQ(Written("0.0100", FIN_STR_DEFAULT, 4), "0,0100");
    EXPECT_EQ(Written("0.1", FIN_STR_DEFAULT, 4), "0,1000");
}

TEST(FinancialToString, EveryStyle)
{
    EXPECT_EQ(Written("1234.56", FIN_STR_DEFAULT, 2), "1.234,56");
    EXPECT_EQ(Written("1234.56", FIN_STR_1, 2), "1.234,56");
    EXPECT_EQ(Written("1234.56", FIN_STR_2, 2), "1234,56");
    EXPECT_EQ(Written("1234.56", FIN_STR_3, 2), "1234.56");
    EXPECT_EQ(Written("1234.56", FIN_STR_4, 2), "123456");
    EXPECT_EQ(Written("-1234567.8901", FIN_STR_DEFAULT, 3), "-1.234.567,890");
    EXPECT_EQ(Written("-1234567.8901", FIN_STR_1, 3), "-1.234.567,890");
    EXPECT_EQ(Written("-1234567.8901", FIN_STR_2, 3), "-1234567,890");
    EXPECT_EQ(Written("-1234567.8901", FIN_STR_3, 3), "-1234567.890");
    EXPECT_EQ(Written("-1234567.8901", FIN_STR_4, 3), "-1234567890");
    EXPECT_EQ(Written("0.05", FIN_STR_4, 2), "005");
}

TEST(FinancialToString, ThereIsAlwaysADigitBeforeTheDecimals)
{
    EXPECT_EQ(Written("0"), "0,00");
    EXPECT_EQ(Written("0.05"), "0,05");
    EXPECT_EQ(Written("0.5"), "0,50");
    EXPECT_EQ(Written("-0.05"), "-0,05");
}

TEST(FinancialToString, AMinusSignStandsOnlyBeforeAValueBelowZeroAsWritten)
{
    EXPECT_EQ(Written("-0.0001"), "0,00");
    EXPECT_EQ(Written("-0.001"), "0,00");
    EXPECT_EQ(Written("-0.0099"), "0,00");
    EXPECT_EQ(Written("-0.0100"), "-0,01");
    EXPECT_EQ(Written("-0.0999", FIN_STR_DEFAULT, 1), "0,0");
    EXPECT_EQ(Written("-0.1", FIN_STR_DEFAULT, 1), "-0,1");
    EXPECT_EQ(Written("-0.0009", FIN_STR_DEFAULT, 3), "0,000");
    EXPECT_EQ(Written("-0.001", FIN_STR_DEFAULT, 3), "-0,001");
    EXPECT_EQ(Written("-0.0001", FIN_STR_DEFAULT, 4), "-0,0001");
    EXPECT_EQ(Written("-0.0001", FIN_STR_DEFAULT, 6), "-0,000100");
    EXPECT_EQ(Written("-1"), "-1,00");
    EXPECT_EQ(Written("-1.0001"), "-1,00");
    EXPECT_EQ(Written("-429496.7296"), "-429.496,72");
}

TEST(FinancialToString, GroupsAtEveryThousand)
{
    EXPECT_EQ(Written("9.99"), "9,99");
    EXPECT_EQ(Written("10"), "10,00");
    EXPECT_EQ(Written("99.99"), "99,99");
    EXPECT_EQ(Written("100"), "100,00");
    EXPECT_EQ(Written("999.99"), "999,99");
    EXPECT_EQ(Written("1000"), "1.000,00");
    EXPECT_EQ(Written("9999.99"), "9.999,99");
    EXPECT_EQ(Written("10000"), "10.000,00");
    EXPECT_EQ(Written("99999.99"), "99.999,99");
    EXPECT_EQ(Written("100000"), "100.000,00");
    EXPECT_EQ(Written("999999.99"), "999.999,99");
    EXPECT_EQ(Written("1000000"), "1.000.000,00");
    EXPECT_EQ(Written("1000001.01"), "1.000.001,01");
    EXPECT_EQ(Written("1010010"), "1.010.010,00");
    EXPECT_EQ(Written("999999999.99"), "999.999.999,99");
    EXPECT_EQ(Written("1000000000"), "1.000.000.000,00");
    EXPECT_EQ(Written("999999999999.99"), "999.999.999.999,99");
    EXPECT_EQ(Written("1000000000000"), "1.000.000.000.000,00");
    EXPECT_EQ(Written("1000000000000000"), "1.000.000.000.000.000,00");
    EXPECT_EQ(Written("1000000000000000000"), "1.000.000.000.000.000.000,00");
    EXPECT_EQ(Written("1000000000000000000000"), "1.000.000.000.000.000.000.000,00");
    EXPECT_EQ(Written("1000000000000000000000000"), "1.000.000.000.000.000.000.000.000,00");
}

// The count and the whole part beside what one and two words hold.
TEST(FinancialToString, AtTheLimitsOfTheWords)
{
    EXPECT_EQ(Written("429496.7295", FIN_STR_DEFAULT, 4), "429.496,7295");
    EXPECT_EQ(Written("429496.7296", FIN_STR_DEFAULT, 4), "429.496,7296");
    EXPECT_EQ(Written("429496.7297", FIN_STR_DEFAULT, 4), "429.496,7297");
    EXPECT_EQ(Written("4294967295"), "4.294.967.295,00");
    EXPECT_EQ(Written("4294967296"), "4.294.967.296,00");
    EXPECT_EQ(Written("922337203685477.5807", FIN_STR_DEFAULT, 4), "922.337.203.685.477,5807");
    EXPECT_EQ(Written("922337203685477.5808", FIN_STR_DEFAULT, 4), "922.337.203.685.477,5808");
    EXPECT_EQ(Written("1844674407370955.1615", FIN_STR_DEFAULT, 4), "1.844.674.407.370.955,1615");
    EXPECT_EQ(Written("1844674407370955.1616", FIN_STR_DEFAULT, 4), "1.844.674.407.370.955,1616");
    EXPECT_EQ(Written("18446744073709551615"), "18.446.744.073.709.551.615,00");
    EXPECT_EQ(Written("18446744073709551616"), "18.446.744.073.709.551.616,00");
}

TEST(FinancialToString, TheExtremes)
{
    EXPECT_EQ(Written(MAX_TEXT), "3.961.408.125.713.216.879.677.197,51");
    EXPECT_EQ(Written(MIN_TEXT), "-3.961.408.125.713.216.879.677.197,51");
    EXPECT_EQ(Written(MIN_TEXT, FIN_STR_1, 6), "-3.961.408.125.713.216.879.677.197,516800");
    EXPECT_EQ(Written(MIN_TEXT, FIN_STR_2, 4), "-3961408125713216879677197,5168");
    EXPECT_EQ(Written(MIN_TEXT, FIN_STR_3, 4), MIN_TEXT);
    EXPECT_EQ(Written(MIN_TEXT, FIN_STR_4, 4), "-39614081257132168796771975168");
}

void ExpectTextIn(int size, const char* value, FINANCIAL_STR_TIPO style, int decimals,
                  const std::string& expected)
{
    SCOPED_TRACE(std::string(value) + " in " + std::to_string(size));
    GuardedText text(size);
    EXPECT_EQ(Money(value).ToString(text.Buffer(), size, style, decimals, 0), text.Buffer());
    EXPECT_EQ(text.Text(), expected);
    EXPECT_TRUE(text.GuardsAreWhole());
}

TEST(FinancialToString, FitsExactlyOrIsEmpty)
{
    ExpectTextIn(5, "0", FIN_STR_DEFAULT, 0, "0,00");
    ExpectTextIn(4, "0", FIN_STR_DEFAULT, 0, "");
    ExpectTextIn(1, "0", FIN_STR_DEFAULT, 0, "");
    ExpectTextIn(9, "1234.56", FIN_STR_DEFAULT, 0, "1.234,56");
    ExpectTextIn(8, "1234.56", FIN_STR_DEFAULT, 0, "");
    ExpectTextIn(10, "-1234.56", FIN_STR_DEFAULT, 0, "-1.234,56");
    ExpectTextIn(9, "-1234.56", FIN_STR_DEFAULT, 0, "");
    ExpectTextIn(7, "1234.56", FIN_STR_4, 2, "123456");
    ExpectTextIn(6, "1234.56", FIN_STR_4, 2, "");
    ExpectTextIn(9, "1.5", FIN_STR_DEFAULT, 6, "1,500000");
    ExpectTextIn(8, "1.5", FIN_STR_DEFAULT, 6, "");
    ExpectTextIn(7, "1.5", FIN_STR_DEFAULT, 6, "");
    ExpectTextIn(42, MIN_TEXT, FIN_STR_DEFAULT, 6, "-3.961.408.125.713.216.879.677.197,516800");
    ExpectTextIn(41, MIN_TEXT, FIN_STR_DEFAULT, 6, "");
}

TEST(FinancialToString, ASizeBelowOneWritesNothing)
{
    for (const int size : {0, -1, std::numeric_limits<int>::min()}) {
        GuardedText text(0);
        EXPECT_EQ(Money("1.5").ToString(text.Buffer(), size, FIN_STR_DEFAULT, 2, 0), text.Buffer());
        EXPECT_TRUE(text.GuardsAreWhole());
    }
}

TEST(FinancialToString, ManyDecimalsAreZerosAsLongAsTheyFit)
{
    const std::string text = "1,2345" + std::string(396, '0');
    ExpectTextIn(403, "1.2345", FIN_STR_DEFAULT, 400, text);
    ExpectTextIn(402, "1.2345", FIN_STR_DEFAULT, 400, "");
    ExpectTextIn(500, "1.2345", FIN_STR_DEFAULT, 500, "");
    ExpectTextIn(500, "1.2345", FIN_STR_DEFAULT, std::numeric_limits<int>::max(), "");
    ExpectTextIn(1, "1.2345", FIN_STR_DEFAULT, std::numeric_limits<int>::max(), "");
}

// The required form, made from the count's decimal text by moving characters, with no arithmetic.
std::string FormOf(std::string count, FINANCIAL_STR_TIPO style, int decimals)
{
    const bool negative = count[0] == '-';
    count.erase(0, negative ? 1 : 0);
    if (count.size() < 5) {
        count.insert(0, 5 - count.size(), '0');
    }
    std::string whole = count.substr(0, count.size() - 4);
    std::string fraction = count.substr(count.size() - 4);
    fraction.resize(decimals <= 0 ? 2 : static_cast<std::size_t>(decimals), '0');
    const bool isZero = (whole + fraction).find_first_not_of('0') == std::string::npos;
    if (style == FIN_STR_DEFAULT || style == FIN_STR_1) {
        for (std::size_t left = whole.size(); left > 3; left -= 3) {
            whole.insert(left - 3, ".");
        }
    }
    const std::string mark = style == FIN_STR_4 ? "" : style == FIN_STR_3 ? "." : ",";
    return (negative && !isZero ? "-" : "") + whole + mark + fraction;
}

// In every style, with every number of decimals, in a buffer that it fills and in one that is one
// byte short.
void ExpectEveryForm(const std::string& count)
{
    const Financial value(Int(count.c_str()));
    for (const FINANCIAL_STR_TIPO style : EVERY_STYLE) {
        for (int decimals = -1; decimals <= 6; ++decimals) {
            const std::string expected = FormOf(count, style, decimals);
            const int size = static_cast<int>(expected.size()) + 1;
            char text[64];
            text[size] = '#';
            value.ToString(text, size, style, decimals, 0);
            ASSERT_EQ(text, expected) << count << ", style " << style << ", decimals " << decimals;
            ASSERT_EQ(text[size], '#');
            text[size - 1] = '#';
            value.ToString(text, size - 1, style, decimals, 0);
            ASSERT_STREQ(text, "") << count << ", style " << style << ", decimals " << decimals;
            ASSERT_EQ(text[size - 1], '#');
        }
    }
}

TEST(FinancialToString, EveryFormBesideThePowersOfTenAndTwo)
{
    BigInt power(1);
    for (int exponent = 0; exponent <= 28; ++exponent, power *= 10) {
        for (const BigInt& value : {power - 1, power, power + 1}) {
            ExpectEveryForm(TextOf(value));
            ExpectEveryForm(TextOf(-value));
        }
    }
    power = 1;
    for (int exponent = 0; exponent <= 94; ++exponent, power *= 2) {
        for (const BigInt& value : {power - 1, power, power + 1}) {
            ExpectEveryForm(TextOf(value));
            ExpectEveryForm(TextOf(-value));
        }
    }
    ExpectEveryForm(TextOf(Min()));
    ExpectEveryForm(TextOf(Max()));
}

TEST(FinancialToString, EveryFormOfEveryCountUpTo10001)
{
    for (int count = -10001; count <= 10001; ++count) {
        ExpectEveryForm(std::to_string(count));
    }
}

TEST(FinancialToString, EveryFormOfRandomCountsOfEveryLength)
{
    const std::uint32_t seed = RandomSeed();
    std::mt19937 random(seed);
    for (int i = 0; i < 5000; ++i) {
        std::string count = random() % 2 == 0 ? "-" : "";
        count += static_cast<char>('1' + random() % 9);
        for (std::size_t digits = random() % 28; digits > 0; --digits) {
            count += static_cast<char>('0' + random() % 10);
        }
        SCOPED_TRACE("seed " + std::to_string(seed));
        BigInt value;
        if (FromText(count.c_str(), value)) {
            ExpectEveryForm(count);
        }
    }
}

TEST(FinancialToString, AStyleThatIsNoneIsTheDefault)
{
    EXPECT_EQ(Written("-1234.56", static_cast<FINANCIAL_STR_TIPO>(7)), "-1.234,56");
}

} // namespace

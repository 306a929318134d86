// Decimal texts of the tape.
#include "bancada/tape/DecimalText.h"

#include <gtest/gtest.h>

using bancada::Decimal;
using bancada::ParseDecimal;

namespace
{

bool ReadsAs(const char* text, std::int64_t unscaled, int casas)
{
    Decimal out;
    return ParseDecimal(text, 12, 3, out) && out.unscaled == unscaled && out.decimals == casas;
}

TEST(TapeDecimal, TheDecimalsWrittenAreKept)
{
    EXPECT_TRUE(ReadsAs("0", 0, 0));
    EXPECT_TRUE(ReadsAs("0.000", 0, 3));
    EXPECT_TRUE(ReadsAs("1.5", 15, 1));
    EXPECT_TRUE(ReadsAs("1.500", 1500, 3));
    EXPECT_TRUE(ReadsAs("007", 7, 0));
    EXPECT_TRUE(ReadsAs("999999999999.999", 999999999999999, 3));
}

TEST(TapeDecimal, AnyOtherFormIsRefusedAndChangesNothing)
{
    for (const char* text : {"", ".", "1.", ".5", "-1", "+1", "1,5", " 1", "1 ", "1e3", "0x1",
                             "1.2.3", "1.2345", "1000000000000", "١"}) {
        Decimal out{42, 2};
        EXPECT_FALSE(ParseDecimal(text, 12, 3, out)) << text;
        EXPECT_EQ(out.unscaled, 42);
        EXPECT_EQ(out.decimals, 2);
    }
}

TEST(TapeDecimal, WithoutDecimalsThePointIsRefused)
{
    Decimal out;
    EXPECT_TRUE(ParseDecimal("12", 2, 0, out));
    EXPECT_FALSE(ParseDecimal("1.0", 2, 0, out));
    EXPECT_FALSE(ParseDecimal("123", 2, 0, out));
}

} // namespace

// The percentage that comes to an amount, cut to cents.
#include "bancada/arquivo/Percentual.h"

#include <cstdint>
#include <gtest/gtest.h>

namespace bancada::arquivo
{
namespace
{

TEST(PercentualTest, TheLeastThatComesToTheAmount)
{
    EXPECT_EQ(PercentualOf(1000, 100), 1000) << "10.00 %";
    EXPECT_EQ(PercentualOf(999, 99), 991);
    EXPECT_EQ(PercentualOf(300, 100), 3334);
    EXPECT_EQ(PercentualOf(10000, 1), 1) << "0.01 %";
    EXPECT_EQ(PercentualOf(19999, 1), 1);
}

TEST(PercentualTest, NoneWhereNoneComesToIt)
{
    EXPECT_EQ(PercentualOf(20000, 1), 0) << "0.01 % is 2 cents";
    EXPECT_EQ(PercentualOf(20000, 2), 1);
    EXPECT_EQ(PercentualOf(0, 1), 0);
    EXPECT_EQ(PercentualOf(-1, 1), 0);
    EXPECT_EQ(PercentualOf(100, 0), 0);
    EXPECT_EQ(PercentualOf(100, 999), 99900);
    EXPECT_EQ(PercentualOf(10000, 99999), 99999) << "the greatest";
    EXPECT_EQ(PercentualOf(10000, 100000), 0);
    EXPECT_EQ(PercentualOf(1, INT64_MAX), 0);
}

} // namespace
} // namespace bancada::arquivo

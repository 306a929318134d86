// The circle of the documents' counters.
#include "bancada/leitura/Counter.h"

#include <cstdint>
#include <gtest/gtest.h>

namespace bancada::leitura
{
namespace
{

TEST(Counter, StepsGoOnOverTheLastNumber)
{
    EXPECT_EQ(Steps(1, 1), 0);
    EXPECT_EQ(Steps(1, 2), 1);
    EXPECT_EQ(Steps(999999, 1), 1);
    EXPECT_EQ(Steps(2, 1), 999998);
    EXPECT_EQ(Steps(0, 999999), 0);
}

TEST(Counter, TheOneFromWhichTheOtherIsLessThanHalfATurnAheadComesFirst)
{
    EXPECT_TRUE(ComesBefore(1, 2));
    EXPECT_FALSE(ComesBefore(2, 1));
    EXPECT_FALSE(ComesBefore(7, 7));
    EXPECT_TRUE(ComesBefore(999999, 1));
    EXPECT_FALSE(ComesBefore(1, 999999));
    EXPECT_TRUE(ComesBefore(1, 500000));
    EXPECT_FALSE(ComesBefore(1, 500001));
    EXPECT_TRUE(ComesBefore(500001, 1));
}

TEST(Counter, AnyNumberOfARowHasItsPlace)
{
    EXPECT_EQ(Steps(INT64_MIN, INT64_MAX), (INT64_MAX % 999999 - INT64_MIN % 999999) % 999999);
    EXPECT_EQ(Steps(INT64_MAX, INT64_MIN),
              999999 - (INT64_MAX % 999999 - INT64_MIN % 999999) % 999999);
    EXPECT_TRUE(ComesBefore(INT64_MAX, INT64_MIN));
    EXPECT_FALSE(ComesBefore(INT64_MIN, INT64_MAX));
    EXPECT_TRUE(ComesBefore(INT64_MAX - 1, INT64_MAX));
    EXPECT_TRUE(ComesBefore(-1, 0));
}

} // namespace
} // namespace bancada::leitura

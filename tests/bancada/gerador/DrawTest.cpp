// The draws.
#include "bancada/gerador/Draw.h"

#include <gtest/gtest.h>

#include <set>

namespace bancada
{
namespace
{

TEST(GeradorDraw, DrawsAreThoseOfTheStandardEngine)
{
    // The standard fixes the 10,000th draw of std::mt19937_64 with its default seed.
    Draw draw(5489);
    for (int i = 1; i < 10000; ++i) {
        draw.Below(1000000000);
    }
    EXPECT_EQ(draw.Below(1000000000), 9981545732273789042U % 1000000000);
}

TEST(GeradorDraw, BoundsAreReachedAndKept)
{
    Draw draw(1);
    std::set<std::int64_t> seen;
    for (int i = 0; i < 1000; ++i) {
        seen.insert(draw.Between(-2, 2));
    }
    EXPECT_EQ(seen, (std::set<std::int64_t>{-2, -1, 0, 1, 2}));
    EXPECT_EQ(draw.Below(1), 0U);
    EXPECT_TRUE(draw.PerMille(1000));
    EXPECT_FALSE(draw.PerMille(0));
}

TEST(GeradorDraw, AWeightOfZeroIsNeverDrawn)
{
    Draw draw(1);
    std::size_t times[3] = {0, 0, 0};
    for (int i = 0; i < 3000; ++i) {
        ++times[draw.Weighted({1, 0, 2})];
    }
    EXPECT_EQ(times[1], 0U);
    EXPECT_GT(times[0], 800U);
    EXPECT_GT(times[2], 1800U);
}

} // namespace
} // namespace bancada

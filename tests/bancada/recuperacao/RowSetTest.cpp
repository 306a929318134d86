// Which rows of a table there are.
#include "bancada/recuperacao/RowSet.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace bancada::recuperacao
{
namespace
{

std::string Missing(const RowSet& set, std::int64_t first, std::int64_t last)
{
    std::string text;
    for (const RowRange& range : set.MissingOf({first, last})) {
        text += std::to_string(range.first) + "-" +
                (range.last == RowRange::NO_END ? "" : std::to_string(range.last)) + " ";
    }
    return text;
}

TEST(RowSet, TellsWhatIsMissing)
{
    RowSet set;
    EXPECT_EQ(Missing(set, 1, RowRange::NO_END), "1- ");
    for (const std::int64_t rowid : {5, 3, 4, 9, 4}) {
        set.Add(rowid);
    }
    EXPECT_EQ(set.Count(), 4);
    EXPECT_EQ(Missing(set, 1, RowRange::NO_END), "1-2 6-8 10- ");
    EXPECT_EQ(Missing(set, 3, 5), "");
    EXPECT_EQ(Missing(set, 4, 4), "");
    EXPECT_EQ(Missing(set, 2, 3), "2-2 ");
    EXPECT_EQ(Missing(set, 5, 6), "6-6 ");
    EXPECT_EQ(Missing(set, 6, 8), "6-8 ");
    EXPECT_EQ(Missing(set, 4, 9), "6-8 ");
    EXPECT_EQ(Missing(set, 10, 12), "10-12 ");
    for (std::int64_t rowid = 6; rowid <= 8; ++rowid) {
        set.Add(rowid);
    }
    EXPECT_EQ(Missing(set, 1, 12), "1-2 10-12 ");
}

TEST(RowSet, TellsWhetherItHasAnyOfARange)
{
    RowSet set;
    set.Add(5);
    set.Add(6);
    EXPECT_TRUE(set.HasAnyOf({5, 5}));
    EXPECT_TRUE(set.HasAnyOf({6, 9}));
    EXPECT_TRUE(set.HasAnyOf({1, 5}));
    EXPECT_FALSE(set.HasAnyOf({1, 4}));
    EXPECT_FALSE(set.HasAnyOf({7, 9}));
}

TEST(RowSet, TheFirstAndTheLastRowidHaveNoNeighbours)
{
    RowSet set;
    set.Add(std::numeric_limits<std::int64_t>::max());
    set.Add(std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(set.Count(), 2);
    EXPECT_EQ(Missing(set, 1, RowRange::NO_END), "1-" + std::to_string(RowRange::NO_END - 1) + " ");
}

} // namespace
} // namespace bancada::recuperacao

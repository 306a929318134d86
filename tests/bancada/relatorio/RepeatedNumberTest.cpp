// The rows of a number that came twice, told apart by their order.
#include "bancada/relatorio/RepeatedNumber.h"

#include <gmock/gmock.h>

namespace bancada::relatorio
{
namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

RowGroups GroupsOf(int groups, int rows)
{
    RowGroups made;
    for (int group = 0; group < groups; ++group) {
        for (int row = 0; row < rows; ++row) {
            made.Add(10 * group + row, row == 0);
        }
    }
    return made;
}

TEST(RepeatedNumber, AsManyGroupsAsDocuments)
{
    const RowGroups groups = GroupsOf(3, 2);
    EXPECT_THAT(groups.Of({0, 3}).rowids, ElementsAre(0, 1));
    EXPECT_THAT(groups.Of({1, 3}).rowids, ElementsAre(10, 11));
    EXPECT_THAT(groups.Of({2, 3}).rowids, ElementsAre(20, 21));
    EXPECT_FALSE(groups.Of({2, 3}).uncertain);
    EXPECT_FALSE(groups.Of({2, 3}).atFirst);
}

TEST(RepeatedNumber, NoRowsAreNobodys)
{
    const Share share = RowGroups().Of({1, 2});
    EXPECT_THAT(share.rowids, IsEmpty());
    EXPECT_FALSE(share.uncertain);
}

TEST(RepeatedNumber, FewRowsThatAreUncertainAreEveryones)
{
    // 333 rows of three documents are as many as one receipt can have.
    const RowGroups groups = GroupsOf(1, 333);
    for (int document = 0; document < 3; ++document) {
        const Share share = groups.Of({document, 3});
        EXPECT_EQ(share.rowids.size(), 333U);
        EXPECT_TRUE(share.uncertain);
        EXPECT_FALSE(share.atFirst);
    }
}

TEST(RepeatedNumber, ManyRowsThatAreUncertainAreTheFirstOnes)
{
    const RowGroups groups = GroupsOf(1, 334);
    EXPECT_EQ(groups.Of({0, 3}).rowids.size(), 334U);
    EXPECT_TRUE(groups.Of({0, 3}).uncertain);
    EXPECT_FALSE(groups.Of({0, 3}).atFirst);
    EXPECT_THAT(groups.Of({2, 3}).rowids, IsEmpty());
    EXPECT_TRUE(groups.Of({2, 3}).uncertain);
    EXPECT_TRUE(groups.Of({2, 3}).atFirst);
}

TEST(RepeatedNumber, APlaceIsThatOfTheRow)
{
    EXPECT_EQ(PlaceAmong({3, 5, 9}, 5).before, 1);
    EXPECT_EQ(PlaceAmong({3, 5, 9}, 5).all, 3);
    EXPECT_EQ(PlaceAmong({3, 5, 9}, 3).before, 0);
}

} // namespace
} // namespace bancada::relatorio

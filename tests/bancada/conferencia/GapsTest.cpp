// Numbers without a row, and what explains them.
#include "bancada/conferencia/Gaps.h"

#include <gtest/gtest.h>
#include <limits>

namespace bancada::conferencia
{
namespace
{

TEST(Following, GoesRoundAtSixDigits)
{
    EXPECT_EQ(Following(0, 1), 1);
    EXPECT_EQ(Following(1, 0), 1);
    EXPECT_EQ(Following(1, 1), 2);
    EXPECT_EQ(Following(999998, 1), 999999);
    EXPECT_EQ(Following(999999, 1), 1);
    EXPECT_EQ(Following(999999, 3), 3);
}

TEST(Following, AnyNumberOfARowHasASuccessor)
{
    for (const std::int64_t number : {std::numeric_limits<std::int64_t>::min(), std::int64_t{-1},
                                      std::numeric_limits<std::int64_t>::max()}) {
        const std::int64_t next = Following(number, 999998);
        EXPECT_GE(next, 1) << number;
        EXPECT_LE(next, 999999) << number;
    }
}

TEST(NumbersText, OfOneAndOfSeveral)
{
    EXPECT_EQ(NumbersText(17, 1), "17");
    EXPECT_EQ(NumbersText(17, 3), "17 to 19");
    EXPECT_EQ(NumbersText(999999, 2), "999999 to 1");
}

TEST(Gaps, OfNoneNothingIsKnown)
{
    Gaps gaps;
    EXPECT_TRUE(gaps.IsEmpty());
    EXPECT_FALSE(gaps.MayHoldEstorno());
    EXPECT_EQ(gaps.Where(1, Absent::ANOTHER), "");
    EXPECT_FALSE(gaps.TakeDecided());
    gaps.Consume(5, Absent::ANOTHER);
    EXPECT_TRUE(gaps.IsEmpty());
}

TEST(Gaps, AreDecidedOnceDocumentsOfBothKindsFollow)
{
    Gaps gaps;
    gaps.Add({5, 2, 0});
    gaps.Saw(true);
    EXPECT_FALSE(gaps.TakeDecided());
    gaps.Add({9, 1, 0});
    gaps.Saw(false);
    const std::optional<Gap> gap = gaps.TakeDecided();
    ASSERT_TRUE(gap);
    EXPECT_EQ(gap->first, 5);
    EXPECT_EQ(gap->count, 2);
    EXPECT_FALSE(gaps.TakeDecided());
    EXPECT_EQ(gaps.First().first, 9);
    EXPECT_FALSE(gaps.First().sawFiscal);
    EXPECT_TRUE(gaps.First().sawOutro);
    gaps.RemoveFirst();
    EXPECT_TRUE(gaps.IsEmpty());
}

TEST(Gaps, TheReversalOfAVoucherIsSoughtWhereItCanBe)
{
    Gaps gaps;
    gaps.Add({5, 2, 0});
    gaps.Add({9, 2, 2});
    EXPECT_TRUE(gaps.MayHoldEstorno());
    EXPECT_EQ(gaps.Where(1, Absent::ESTORNO_COMPROVANTE), " (COO 9)");
    EXPECT_EQ(gaps.Where(3, Absent::ANOTHER), " (COO 5 to 6)");
    gaps.Consume(1, Absent::ESTORNO_COMPROVANTE);
    EXPECT_EQ(gaps.Where(1, Absent::ESTORNO_COMPROVANTE), " (COO 10)");
    gaps.Consume(1, Absent::ESTORNO_COMPROVANTE);
    EXPECT_FALSE(gaps.MayHoldEstorno());
    EXPECT_EQ(gaps.First().count, 2);
}

TEST(Gaps, WhatIsKeptForACancellationIsTakenLast)
{
    Gaps gaps;
    gaps.Add({5, 2, 0, 1, 1});
    gaps.Add({9, 1, 0, 1, 0});
    EXPECT_EQ(gaps.Count(), 3);
    EXPECT_EQ(gaps.Where(2, Absent::ANOTHER), " (COO 5)");
    gaps.Consume(1, Absent::ANOTHER);
    EXPECT_EQ(gaps.First().kept, 1);
    EXPECT_EQ(gaps.Where(2, Absent::ANOTHER), " (COO 9)");
    gaps.Consume(1, Absent::ANOTHER);
    EXPECT_EQ(gaps.Where(2, Absent::ANOTHER), " (COO 6)");
    gaps.Consume(1, Absent::ANOTHER);
    EXPECT_TRUE(gaps.IsEmpty());
}

TEST(Gaps, AnotherDocumentTakesWhatNoReversalCanFirst)
{
    Gaps gaps;
    gaps.Add({5, 1, 1});
    gaps.Add({9, 3, 1});
    gaps.Consume(2, Absent::ANOTHER);
    EXPECT_EQ(gaps.First().first, 5);
    EXPECT_EQ(gaps.Where(9, Absent::ANOTHER), " (COO 5)"); // what is left may all be reversals
    gaps.Consume(2, Absent::ANOTHER);
    EXPECT_TRUE(gaps.IsEmpty());
}

} // namespace
} // namespace bancada::conferencia

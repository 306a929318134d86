// Which payment of the last receipt has a voucher, and what may be reversed then.
#include "bancada/arquivo/Comprovantes.h"

#include <gtest/gtest.h>

namespace bancada::arquivo
{
namespace
{

const std::vector<bool> ALL = {true, true, true};

class ComprovantesTest : public testing::Test
{
  protected:
    // A receipt paid 5.00 in the means 2 and 3.00 in the means 3.
    void SetUp() override
    {
        comprovantes.Pay(2, 500);
        comprovantes.Pay(3, 300);
    }

    Comprovantes comprovantes;
};

TEST_F(ComprovantesTest, TheFirstPaymentWithoutOneHasTheVoucher)
{
    EXPECT_FALSE(comprovantes.AnyOpen());
    EXPECT_EQ(comprovantes.Open(ALL, {}), 2);
    EXPECT_TRUE(comprovantes.AnyOpen());
    EXPECT_EQ(comprovantes.Open(ALL, {}), 3);
    EXPECT_EQ(comprovantes.Open(ALL, {}), 0);
}

TEST_F(ComprovantesTest, OnlyAMeansThatMayHasOne)
{
    EXPECT_EQ(comprovantes.Open({true, false, true}, {}), 3);
    EXPECT_EQ(comprovantes.Open({true, false, true}, {}), 0);
    EXPECT_EQ(comprovantes.Open({true, true, false}, {}), 2);
}

TEST_F(ComprovantesTest, TheVoucherLeavesWhatIsStillToBeReversed)
{
    EXPECT_EQ(comprovantes.Open(ALL, {{2, 1, 500}}), 3);
}

TEST_F(ComprovantesTest, TheFirstHasItWhereEveryOneTakesSomeOfIt)
{
    EXPECT_EQ(comprovantes.Open(ALL, {{2, 1, 1}, {3, 1, 1}}), 2);
}

// The second reversal takes what the first brought.
TEST_F(ComprovantesTest, ReversalsToComeAreMadeInTheirOrder)
{
    EXPECT_TRUE(comprovantes.AllowsAll({{3, 2, 300}, {2, 1, 800}}));
    EXPECT_FALSE(comprovantes.AllowsAll({{2, 1, 800}, {3, 2, 300}}));
    EXPECT_FALSE(comprovantes.AllowsAll({{2, 1, 300}, {2, 1, 300}}));
    EXPECT_EQ(comprovantes.Open(ALL, {{2, 3, 500}, {3, 1, 800}}), 2) << "no choice allows it";
}

// The register takes the first payment of a means, and another one as little as that.
TEST_F(ComprovantesTest, OfAMeansTheFirstPaymentHasIt)
{
    comprovantes.Clear();
    comprovantes.Pay(2, 100);
    comprovantes.Pay(2, 900);
    comprovantes.Pay(3, 200);
    EXPECT_EQ(comprovantes.Open(ALL, {{2, 1, 100}}), 2);
    EXPECT_FALSE(comprovantes.MayMove({2, 1, 901}));
    EXPECT_TRUE(comprovantes.MayMove({2, 1, 900}));
    EXPECT_EQ(comprovantes.Open(ALL, {{2, 1, 100}}), 3);
    comprovantes.Clear();
    comprovantes.Pay(2, 900);
    comprovantes.Pay(2, 100);
    comprovantes.Pay(3, 200);
    EXPECT_EQ(comprovantes.Open(ALL, {{2, 1, 900}}), 3) << "that of the second would allow it";
}

TEST_F(ComprovantesTest, APaymentThatWasReversedWholeHasNone)
{
    comprovantes.Move({2, 3, 500});
    EXPECT_EQ(comprovantes.Open(ALL, {}), 3);
    EXPECT_EQ(comprovantes.Open(ALL, {}), 3) << "the payment that the reversal made";
    EXPECT_EQ(comprovantes.Open(ALL, {}), 0);
}

TEST_F(ComprovantesTest, WhatHasAVoucherIsNotMoved)
{
    EXPECT_EQ(comprovantes.Open(ALL, {}), 2);
    EXPECT_FALSE(comprovantes.MayMove({2, 1, 1}));
    comprovantes.Pay(2, 50);
    EXPECT_TRUE(comprovantes.MayMove({2, 1, 50}));
    EXPECT_FALSE(comprovantes.MayMove({2, 1, 51}));
    comprovantes.Move({2, 3, 50});
    EXPECT_FALSE(comprovantes.MayMove({2, 1, 1}));
    comprovantes.Reverse();
    EXPECT_FALSE(comprovantes.AnyOpen());
    EXPECT_TRUE(comprovantes.MayMove({2, 1, 500}));
    EXPECT_FALSE(comprovantes.MayMove({2, 1, 501}));
}

TEST_F(ComprovantesTest, TheOneOpenedLastIsReversedFirst)
{
    EXPECT_EQ(comprovantes.Open({true, false, true}, {}), 3);
    EXPECT_EQ(comprovantes.Open(ALL, {}), 2);
    comprovantes.Reverse();
    EXPECT_TRUE(comprovantes.AnyOpen());
    EXPECT_TRUE(comprovantes.MayMove({2, 1, 500}));
    EXPECT_FALSE(comprovantes.MayMove({3, 1, 1}));
    comprovantes.Reverse();
    EXPECT_FALSE(comprovantes.AnyOpen());
    EXPECT_EQ(comprovantes.Open(ALL, {}), 2);
    EXPECT_EQ(comprovantes.Open(ALL, {}), 3);
    comprovantes.Reverse();
    EXPECT_TRUE(comprovantes.MayMove({3, 1, 300}));
    EXPECT_FALSE(comprovantes.MayMove({2, 1, 1}));
}

TEST_F(ComprovantesTest, AnotherReceiptHasNoneOfThem)
{
    EXPECT_EQ(comprovantes.Open(ALL, {}), 2);
    comprovantes.Clear();
    EXPECT_FALSE(comprovantes.AnyOpen());
    EXPECT_FALSE(comprovantes.MayMove({3, 1, 1}));
    EXPECT_EQ(comprovantes.Open(ALL, {}), 0);
}

} // namespace
} // namespace bancada::arquivo

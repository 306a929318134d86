// Payments that reversals made are told from those that were paid.
#include "bancada/arquivo/Estornos.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace bancada::arquivo
{
namespace
{

using Valores = std::vector<std::int64_t>;

PagamentoLido Pago(std::int64_t meio, std::int64_t valor, std::int64_t estornado = 0)
{
    return {meio, valor, estornado, meio == 1};
}

std::string Text(const std::optional<PagamentosLidos>& found)
{
    std::string text;
    if (found) {
        for (const EstornoLido& one : found->estornos) {
            text += std::to_string(one.origem) + ">" + std::to_string(one.destino) + " " +
                    std::to_string(one.valor) + ";";
        }
    }
    return text;
}

TEST(EstornosTest, NoneWhereNothingSaysSo)
{
    const auto found = FindEstornos({Pago(2, 300), Pago(1, 900)}, 1000, true, false);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->valores, (Valores{300, 900}));
    EXPECT_EQ(Text(found), "");
}

TEST(EstornosTest, OneLeavesItsAmountInThePaymentItTookFrom)
{
    const auto found =
        FindEstornos({Pago(2, 300, 120), Pago(1, 900), Pago(3, 120)}, 1000, true, false);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->valores, (Valores{300, 900}));
    EXPECT_EQ(Text(found), "2>3 120;");
}

TEST(EstornosTest, TwoFromOneMeansLeaveWhatTheFirstDidNotTake)
{
    // 3.00 less 1.20, then 0.50 of that.
    const auto found = FindEstornos({Pago(2, 180, 50), Pago(1, 900), Pago(3, 120), Pago(1, 50)},
                                    1000, true, false);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->valores, (Valores{300, 900}));
    EXPECT_EQ(Text(found), "2>3 120;2>1 50;");
}

TEST(EstornosTest, WhatAReversalMadeMayBeReversed)
{
    const auto found = FindEstornos(
        {Pago(2, 300, 120), Pago(1, 900), Pago(3, 120, 20), Pago(1, 20)}, 1000, true, false);
    ASSERT_TRUE(found);
    EXPECT_EQ(Text(found), "2>3 120;3>1 20;");
}

TEST(EstornosTest, OfACancelledReceiptWhatWasPaidBehindWhatWasDueWasReversed)
{
    const auto found =
        FindEstornos({Pago(2, 300, 300), Pago(1, 900, 900), Pago(3, 120, 120)}, 1200, true, true);
    ASSERT_TRUE(found);
    EXPECT_EQ(Text(found), "2>3 120;") << "the first means that has as much";
}

TEST(EstornosTest, ChangeStaysCoveredByWhatGivesChange)
{
    // 9.00 and 2.00 for 10.00: the 1.00 of change came out of the second means alone.
    const auto found =
        FindEstornos({Pago(2, 900, 900), Pago(1, 200, 200), Pago(3, 150, 150)}, 1000, true, true);
    ASSERT_TRUE(found);
    EXPECT_EQ(Text(found), "2>3 150;");
    const auto other =
        FindEstornos({Pago(1, 200, 200), Pago(2, 800, 800), Pago(3, 150, 150)}, 1000, true, true);
    EXPECT_EQ(Text(other), "1>3 150;") << "without change any will do";
}

TEST(EstornosTest, WhatDoesNotAddUpIsNotTold)
{
    EXPECT_FALSE(FindEstornos({Pago(2, 300, 77), Pago(1, 900)}, 1000, true, false))
        << "a reversal that added nothing";
    EXPECT_FALSE(FindEstornos({Pago(2, 300)}, 1000, true, false)) << "closed and not paid";
    EXPECT_TRUE(FindEstornos({Pago(2, 300)}, 1000, false, false)) << "still open";
    EXPECT_FALSE(FindEstornos({Pago(1, 1000), Pago(1, 10)}, 1000, true, false))
        << "nothing is paid behind what was due";
}

} // namespace
} // namespace bancada::arquivo

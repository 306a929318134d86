// What the receipts tell of a fiscal day.
#include "bancada/conferencia/Jornada.h"

#include <gtest/gtest.h>

namespace bancada::conferencia
{
namespace
{

using leitura::Amount;

const Amount UNKNOWN(leitura::CellState::OTHER_KIND, "x", 2);

TEST(AmountRange, HoldsItsBounds)
{
    AmountRange range;
    range.Add(Amount(500, 2));
    EXPECT_EQ(range.Text(), "5.00");
    range.Add(Amount(100, 2), Amount(200, 2));
    EXPECT_EQ(range.Text(), "6.00 to 7.00");
    EXPECT_FALSE(range.Contains(Amount(599, 2)));
    EXPECT_TRUE(range.Contains(Amount(600, 2)));
    EXPECT_TRUE(range.Contains(Amount(700, 2)));
    EXPECT_FALSE(range.Contains(Amount(701, 2)));
    EXPECT_FALSE(range.Contains(UNKNOWN));
}

TEST(AmountRange, OfWhatIsNotKnownHoldsNothing)
{
    AmountRange range;
    range.Add(Amount(0, 2), UNKNOWN);
    EXPECT_FALSE(range.Contains(Amount(0, 2)));
    EXPECT_EQ(range.Text(), "0.00 to ?");
}

TEST(IsAtMost, ComparesAcrossDecimals)
{
    EXPECT_TRUE(IsAtMost(Amount(1, 2), Amount(10, 3)));
    EXPECT_FALSE(IsAtMost(Amount(11, 3), Amount(1, 2)));
    EXPECT_TRUE(IsAtMost(Amount(-1, 2), Amount(0, 2)));
    EXPECT_FALSE(IsAtMost(UNKNOWN, Amount(1, 2)));
    EXPECT_FALSE(IsAtMost(Amount(1, 2), UNKNOWN));
}

TEST(Jornada, KnowsItsFirstAndItsLastReceipt)
{
    Jornada jornada;
    jornada.AddCupom(5, "2024-03-01 10:00:00", {"cupom_nf", 1});
    jornada.AddCupom(4, "2024-03-01 09:00:00", {"cupom_nf", 2});
    jornada.AddCupom(6, "2024-03-01 11:00:00", {"cupom_nf", 3});
    jornada.AddCupom(7, "2024-03-01 11:00:00", {"cupom_nf", 4});
    EXPECT_EQ(jornada.primeiroCoo, 4);
    EXPECT_EQ(jornada.primeiro.rowid, 2);
    EXPECT_EQ(jornada.ultimo.rowid, 3);
    EXPECT_EQ(jornada.primeiraHora, "2024-03-01 09:00:00");
    EXPECT_EQ(jornada.ultimoCoo, 6);
    EXPECT_EQ(jornada.ultimaHora, "2024-03-01 11:00:00");
}

TEST(Jornada, AddsWhatEachMeansTookIn)
{
    Jornada jornada;
    jornada.AddMeios({{1, Amount(100, 2)}, {2, Amount(5, 2)}});
    jornada.AddMeios({{1, Amount(1, 2)}});
    EXPECT_EQ(jornada.meios.at(1).Units(), 101);
    EXPECT_EQ(jornada.meios.at(2).Units(), 5);
}

} // namespace
} // namespace bancada::conferencia

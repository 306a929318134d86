#include "bancada/arquivo/Rateio.h"

#include <gtest/gtest.h>

namespace bancada::arquivo
{
namespace
{

using Cents = std::vector<std::int64_t>;

TEST(ArquivoRateioTest, CentsLeftOverGoToThoseThatLostMost)
{
    EXPECT_EQ(Apportion(100, {1000, 2000, 3000}), (Cents{17, 33, 50}));
    EXPECT_EQ(Apportion(1, {5, 5}), (Cents{1, 0})) << "of equals the first";
    EXPECT_EQ(Apportion(10, {0, 7, 3}), (Cents{0, 7, 3}));
    EXPECT_EQ(Apportion(10, {0, 0}), (Cents{0, 0}));
    EXPECT_EQ(Apportion(9999999999999, {9999999999999, 1}), (Cents{9999999999998, 1}))
        << "beyond 64 bits in between";
}

TEST(ArquivoRateioTest, SharesAreTakenOutAgain)
{
    // 1.00 off 10.00, 20.00 and 30.00, the last with 2.00 off by itself: 58.00 in all.
    const auto undone = UndoRateio(100, true, 5800, {{983, 1000}, {1965, 2000}, {2752, 3000}});
    ASSERT_TRUE(undone);
    EXPECT_EQ(*undone, (Cents{1000, 2000, 2800}));
    const auto surcharge = UndoRateio(100, false, 6000, {{1017, 1000}, {2033, 2000}, {3050, 3000}});
    ASSERT_TRUE(surcharge);
    EXPECT_EQ(*surcharge, (Cents{1000, 2000, 3000}));
}

// Every value within a cent of the guess is tried, above it and below it; as few items as can be
// have an adjustment of their own.
TEST(ArquivoRateioTest, ItemsOfTheirOwnAdjustmentsAreToldFromTheirShares)
{
    for (const std::int64_t first : {333, 350, 377}) {
        for (const std::int64_t second : {1201, 1234, 1277}) {
            for (const std::int64_t valor : {1, 17, 99, 101}) {
                const Cents own = {first, second, 2000, 55};
                std::int64_t subtotal = 0;
                for (const std::int64_t one : own) {
                    subtotal += one;
                }
                const Cents shares = Apportion(valor, own);
                std::vector<ItemRateado> itens;
                // The first two were brought down by themselves.
                const Cents limites = {400, 1300, 2000, 55};
                for (std::size_t i = 0; i < own.size(); ++i) {
                    itens.push_back({own[i] - shares[i], limites[i]});
                }
                const auto undone = UndoRateio(valor, true, subtotal, itens);
                ASSERT_TRUE(undone) << first << " " << second << " " << valor;
                const Cents again = Apportion(valor, *undone);
                for (std::size_t i = 0; i < own.size(); ++i) {
                    EXPECT_EQ((*undone)[i] - again[i], itens[i].liquido);
                }
                EXPECT_EQ((*undone)[2], 2000) << first << " " << second << " " << valor;
                EXPECT_EQ((*undone)[3], 55) << first << " " << second << " " << valor;
            }
        }
    }
}

TEST(ArquivoRateioTest, WhatIsNoShareIsNotFound)
{
    EXPECT_FALSE(UndoRateio(100, true, 6000, {{1000, 1000}, {2000, 2000}, {2900, 3000}}));
    EXPECT_FALSE(UndoRateio(100, true, 100, {{0, 100}}));
}

} // namespace
} // namespace bancada::arquivo

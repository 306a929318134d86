// The apportionment of a subtotal's adjustment.
#include "bancada/registro/Rateio.h"
#include "tests/bancada/registro/RegistroTest.h"
#include "tests/libs/RandomSeed.h"

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace bancada
{
namespace
{

std::vector<std::string> Shares(const char* ajuste, const std::vector<const char*>& liquidos)
{
    std::vector<Financial> valores;
    valores.reserve(liquidos.size());
    for (const char* liquido : liquidos) {
        valores.push_back(Money(liquido));
    }
    std::vector<std::string> texts;
    for (const Financial& share : ApportionAjuste(Money(ajuste), valores)) {
        texts.push_back(Text(share));
    }
    return texts;
}

using Texts = std::vector<std::string>;

TEST(RegistroRateio, ExactProportionsStayExact)
{
    EXPECT_EQ(Shares("10.00", {"30.00", "60.00", "10.00"}), (Texts{"3.00", "6.00", "1.00"}));
}

TEST(RegistroRateio, TheCentLeftOverGoesToTheLargestRemainder)
{
    // 0.1666.., 0.3333.., 0.5
    EXPECT_EQ(Shares("1.00", {"10.00", "20.00", "30.00"}), (Texts{"0.17", "0.33", "0.50"}));
    // 0.3636.., 0.6363..
    EXPECT_EQ(Shares("0.01", {"4.00", "7.00"}), (Texts{"0.00", "0.01"}));
}

TEST(RegistroRateio, OfEqualRemaindersTheFirstGoesFirst)
{
    EXPECT_EQ(Shares("1.00", {"5.00", "5.00", "5.00"}), (Texts{"0.34", "0.33", "0.33"}));
    EXPECT_EQ(Shares("0.02", {"5.00", "5.00", "5.00"}), (Texts{"0.01", "0.01", "0.00"}));
}

TEST(RegistroRateio, ACancelledItemGetsNothing)
{
    EXPECT_EQ(Shares("1.00", {"5.00", "0.00", "5.00"}), (Texts{"0.50", "0.00", "0.50"}));
    EXPECT_EQ(Shares("0.01", {"0.00", "0.00", "0.01"}), (Texts{"0.00", "0.00", "0.01"}));
}

TEST(RegistroRateio, NoItemGoesBelowZero)
{
    EXPECT_EQ(Shares("0.99", {"0.01", "0.98", "0.01"}), (Texts{"0.01", "0.97", "0.01"}));
    EXPECT_EQ(Shares("10.00", {"0.01", "9.99"}), (Texts{"0.01", "9.99"}));
}

TEST(RegistroRateio, ASurchargeMayBeMoreThanTheReceipt)
{
    EXPECT_EQ(Shares("100.00", {"0.01", "0.02"}), (Texts{"33.33", "66.67"}));
}

TEST(RegistroRateio, TheLargestAmountsStayExact)
{
    EXPECT_EQ(Shares("999999999.99", {"999999999.99", "999999999.99", "0.01"}),
              (Texts{"499999999.99", "499999999.99", "0.01"}));
}

// The properties, over random receipts of up to 999 items.
TEST(RegistroRateio, PropertiesOverRandomReceipts)
{
    const std::uint32_t seed = RandomSeed();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 engine(seed);
    const auto between = [&engine](std::int64_t low, std::int64_t high) {
        return std::uniform_int_distribution<std::int64_t>(low, high)(engine);
    };
    const std::int64_t highest[] = {1, 10, 999, 100000, 99999999};
    int withRemainder = 0;
    for (int round = 0; round < 300; ++round) {
        const std::int64_t count = round % 10 == 0 ? 999 : between(1, 60);
        const std::int64_t high = highest[between(0, 4)];
        std::vector<std::int64_t> cents;
        std::int64_t sum = 0;
        for (std::int64_t i = 0; i < count; ++i) {
            cents.push_back(between(0, 9) == 0 ? 0 : between(1, high));
            sum += cents.back();
        }
        if (sum == 0) {
            continue;
        }
        const std::int64_t ajuste = between(1, sum);
        std::vector<Financial> liquidos;
        liquidos.reserve(cents.size());
        for (const std::int64_t valor : cents) {
            liquidos.push_back(Financial::FromCents(valor));
        }

        const std::vector<Financial> shares =
            ApportionAjuste(Financial::FromCents(ajuste), liquidos);

        ASSERT_EQ(shares.size(), liquidos.size());
        std::int64_t sharesSum = 0;
        bool hasRemainder = false;
        for (std::size_t i = 0; i < shares.size(); ++i) {
            const std::int64_t share = shares[i].nr.ToInt64() / 100;
            ASSERT_EQ(Financial::FromCents(share), shares[i]) << "a share is whole cents";
            ASSERT_GE(share, 0);
            ASSERT_LE(share, cents[i]) << "an item would go below zero";
            if (cents[i] == 0) {
                ASSERT_EQ(share, 0);
            }
            // Less than a cent from the proportion: |share x sum - ajuste x cents| < sum.
            // 10^5 x 10^8 x 10^11 needs more than 64 bits.
            const BigInt deviation = BigInt::FromInt64(share) * BigInt::FromInt64(sum) -
                                     BigInt::FromInt64(ajuste) * BigInt::FromInt64(cents[i]);
            ASSERT_LT(deviation, BigInt::FromInt64(sum));
            ASSERT_GT(deviation, -BigInt::FromInt64(sum));
            hasRemainder = hasRemainder || deviation > BigInt(0);
            sharesSum += share;
        }
        ASSERT_EQ(sharesSum, ajuste);
        withRemainder += hasRemainder ? 1 : 0;
    }
    EXPECT_GT(withRemainder, 50) << "the draws hardly ever leave a residue to place";
}

} // namespace
} // namespace bancada

// The floats among the payment means of a Z.
#include "bancada/conferencia/FundosDeTroco.h"
#include "tests/bancada/conferencia/CheckedDatabase.h"

#include <gmock/gmock.h>

namespace bancada::conferencia_test
{
namespace
{

using conferencia::CountFundos;
using conferencia::MeiosDaReducao;
using leitura::Amount;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

Amount Cents(std::int64_t cents)
{
    return Amount(cents, 2);
}

// Means 1, 2, ... that took in so much beyond their payments of 10.00.
MeiosDaReducao Beyond(const std::vector<std::int64_t>& cents)
{
    MeiosDaReducao meios;
    std::int64_t meio = 0;
    for (const std::int64_t beyond : cents) {
        meios[++meio] = {Cents(1000 + beyond), Cents(1000), Amount()};
    }
    return meios;
}

// The floats that each means is counted with, in cents; empty where the Z counts none.
std::vector<std::int64_t> Counted(const std::vector<std::int64_t>& beyond,
                                  const std::vector<std::int64_t>& floats)
{
    MeiosDaReducao meios = Beyond(beyond);
    std::vector<Amount> fundos;
    for (const std::int64_t cents : floats) {
        fundos.push_back(Cents(cents));
    }
    std::vector<std::int64_t> counted;
    if (CountFundos(meios, fundos)) {
        for (const auto& [meio, valores] : meios) {
            counted.push_back(valores.fundos.WithDecimals(2).Units());
        }
    }
    return counted;
}

TEST(FundosDeTroco, AreCountedAllOrNone)
{
    EXPECT_THAT(Counted({100, 0}, {100}), ElementsAre(100, 0));
    EXPECT_THAT(Counted({0, 0}, {100}), IsEmpty());
    EXPECT_THAT(Counted({0, 0}, {}), IsEmpty());
    EXPECT_THAT(Counted({0, 150}, {100, 50}), ElementsAre(0, 150));
    EXPECT_THAT(Counted({100, 0}, {100, 50}), IsEmpty()); // one of the two
}

TEST(FundosDeTroco, MayBeInSeveralMeansEachAsAWhole)
{
    EXPECT_THAT(Counted({100, 50}, {50, 100}), ElementsAre(100, 50));
    EXPECT_THAT(Counted({150, 70, 0}, {50, 70, 100}), ElementsAre(150, 70, 0));
    EXPECT_THAT(Counted({60, 40}, {100}), IsEmpty());
    EXPECT_THAT(Counted({150, -50}, {100}), IsEmpty());
    EXPECT_THAT(Counted({99, 0}, {100}), IsEmpty());
}

TEST(FundosDeTroco, AreWithTheMeansThatTheyExplainWhereAnotherIsWrong)
{
    EXPECT_THAT(Counted({100, 1}, {100}), ElementsAre(100, 0));
    EXPECT_THAT(Counted({-1, 100}, {100}), ElementsAre(0, 100));
}

TEST(FundosDeTroco, ManyAreInOneMeans)
{
    const std::vector<std::int64_t> many(13, 10);
    EXPECT_THAT(Counted({0, 130}, many), ElementsAre(0, 130));
    EXPECT_THAT(Counted({60, 70}, many), IsEmpty());
    EXPECT_THAT(Counted({60, 60}, std::vector<std::int64_t>(12, 10)), ElementsAre(60, 60));
}

TEST(FundosDeTroco, AValueThatIsNoneIsNotCounted)
{
    MeiosDaReducao meios = Beyond({100});
    EXPECT_FALSE(CountFundos(meios, {Amount(leitura::CellState::NULL_VALUE, "x", 2)}));
    EXPECT_TRUE(meios[1].fundos.IsZero());
}

using CheckedFundos = CheckedDatabase;

// The days hold a float that their Z, one of before, does not count.
TEST_F(CheckedFundos, AZMayCountItsFloatWithAMeans)
{
    Execute(CLEAN_DAYS);
    EXPECT_THAT(Faults(), IsEmpty());
    Execute("UPDATE meio_pagamento_reducao SET valor_acumulado = 180 WHERE cont_crz = 1"
            " AND indice_meio_pagamento = 1");
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(CheckedFundos, TheMeansOfAZThatCountsItsFloatAreCheckedAsEver)
{
    Execute(CLEAN_DAYS);
    Execute("UPDATE meio_pagamento_reducao SET valor_acumulado = 180 WHERE cont_crz = 1"
            " AND indice_meio_pagamento = 1;"
            "UPDATE meio_pagamento_reducao SET valor_acumulado = 13.49 WHERE cont_crz = 1"
            " AND indice_meio_pagamento = 2");
    EXPECT_THAT(Faults(),
                ElementsAre("z-meio: CRZ 1 means 2: took in 13.49, payments 13.50",
                            "z-troco: CRZ 1: payment means 193.49 less change 26.52, valid "
                            "receipts 166.98"));
    Execute("UPDATE meio_pagamento_reducao SET valor_acumulado = 180.01 WHERE cont_crz = 1"
            " AND indice_meio_pagamento = 1;"
            "UPDATE meio_pagamento_reducao SET valor_acumulado = 13.50 WHERE cont_crz = 1"
            " AND indice_meio_pagamento = 2");
    EXPECT_THAT(Faults(), ElementsAre("z-meio: CRZ 1 means 1: took in 180.01, payments 80.00",
                                      "z-troco: CRZ 1: payment means 193.51 less change 26.52, "
                                      "valid receipts 66.98"));
}

} // namespace
} // namespace bancada::conferencia_test

// The numbers of fiscal receipts.
#include "tests/bancada/conferencia/SequenceFixture.h"

#include <gmock/gmock.h>

namespace bancada::conferencia_test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

using CcfSequenceTest = Sequence;

TEST_F(CcfSequenceTest, ANumberThatGoesBackIsToldAndTheNextFollowsTheOneBefore)
{
    AddFiscal(1, 7, 1);
    AddFiscal(2, 5, 2);
    EXPECT_THAT(Findings(), ElementsAre("ccf-repetido: CCF 5: COO 2 comes after CCF 7"));
    AddFiscal(3, 8, 3);
    EXPECT_THAT(Findings(), ElementsAre("ccf-repetido: CCF 5: COO 2 comes after CCF 7"));
}

TEST_F(CcfSequenceTest, ANumberThatComesAgainIsTold)
{
    AddFiscal(1, 7, 1);
    AddFiscal(2, 7, 2);
    EXPECT_THAT(Findings(), ElementsAre("ccf-repetido: CCF 7: COO 2 comes after CCF 7"));
}

TEST_F(CcfSequenceTest, TheNumberComesRoundAtSixDigits)
{
    AddFiscal(1, 999999, 1);
    AddFiscal(2, 1, 2);
    EXPECT_THAT(Findings(), IsEmpty());
}

TEST_F(CcfSequenceTest, NumbersThatAreMissingAreToldTogether)
{
    AddFiscal(1, 1, 1);
    AddFiscal(4, 4, 2);
    EXPECT_THAT(
        Findings(),
        ElementsAre("ccf-ausente: CCF 2 to 3: no fiscal receipt (COO 2 to 3) before COO 4"));
    Lose("INSERT INTO cupom_fiscal (cont_coo, cont_ccf) VALUES (2,2)");
    EXPECT_THAT(
        Findings(),
        ElementsAre("ccf-ausente: CCF 2 to 3: no fiscal receipt (COO 2 to 3) before COO 4"));
    Lose("INSERT INTO cupom_fiscal (cont_coo, cont_ccf) VALUES (3,3)");
    EXPECT_THAT(Findings(), ElementsAre("ccf-ausente: CCF 2 to 3: no fiscal receipt (COO 2 to 3) "
                                        "before COO 4 (explained)"));
}

} // namespace
} // namespace bancada::conferencia_test

// Non-fiscal numbers without a row, and what takes one without leaving a row.
#include "tests/bancada/conferencia/SequenceFixture.h"

#include <gmock/gmock.h>

namespace bancada::conferencia_test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

using GnfSequenceTest = Sequence;

TEST_F(GnfSequenceTest, LossesOfAllTheNumbersExplainThem)
{
    AddOutro(1, 1, "CN", 1);
    AddOutro(4, 4, "CN", 2);
    Lose("INSERT INTO pagamento_cupom (cont_gnf) VALUES (2)");
    EXPECT_THAT(Findings(), ElementsAre("gnf-ausente: GNF 2 to 3: no non-fiscal document (COO 2 to "
                                        "3) before COO 4"));
    Lose("INSERT INTO pagamento_cupom (cont_gnf) VALUES (3)");
    EXPECT_THAT(Findings(), ElementsAre("gnf-ausente: GNF 2 to 3: no non-fiscal document (COO 2 to "
                                        "3) before COO 4 (explained)"));
}

TEST_F(GnfSequenceTest, ReversalsOfPaymentsMayTakeTheNumbersBeforeTheFirstOneShown)
{
    AddFiscal(1, 1, 1);
    AddPagamento(1, 0);
    AddPagamento(1, 1);
    AddPagamento(1, 2);
    AddFiscal(4, 2, 2);
    AddOutro(5, 3, "CN", 3);
    EXPECT_THAT(Findings(), IsEmpty());
}

TEST_F(GnfSequenceTest, AReadingShowsTheReversalsBeforeTheFirstNumberShown)
{
    AddFiscal(1, 1, 1);
    AddPagamento(1, 0);
    AddPagamento(1, 1);
    AddOutro(3, 1, "LX", 2);
    EXPECT_THAT(Findings(), IsEmpty());
}

TEST_F(GnfSequenceTest, OnlyReversalsExplainWhatStandsBeforeTheFirstNumberShown)
{
    AddFiscal(1, 1, 1);
    AddPagamento(1, 0);
    AddPagamento(1, 1);
    AddFiscal(4, 2, 2);
    AddOutro(5, 3, "CN", 3);
    EXPECT_THAT(Findings(),
                ElementsAre("gnf-ausente: GNF 2: no non-fiscal document (COO 3) before COO 5"));
}

TEST_F(GnfSequenceTest, AReversalWithoutANumberBeforeTheFirstOneShownIsNone)
{
    AddFiscal(1, 1, 1);
    AddPagamento(1, 0);
    AddPagamento(1, 1);
    AddOutro(3, 3, "CN", 2);
    EXPECT_THAT(Findings(), ElementsAre("coo-ausente: COO 2: no document, and nothing logged that "
                                        "took the number"));
}

TEST_F(GnfSequenceTest, AtTheEndALaterDocumentThatShowsNoReversalDeniesIt)
{
    AddFiscal(1, 1, 1);
    AddOutro(2, 1, "CC", 2);
    AddOutro(4, 1, "LX", 3);
    EXPECT_THAT(Findings(), ElementsAre("coo-ausente: COO 3: no document, and nothing logged that "
                                        "took the number"));
}

TEST_F(GnfSequenceTest, AtTheEndEachReversalOfAPaymentTakesOneNumber)
{
    AddFiscal(1, 1, 1);
    AddPagamento(1, 0);
    AddPagamento(1, 1);
    AddFiscal(4, 2, 2);
    EXPECT_THAT(Findings(), ElementsAre("coo-ausente: COO 3: no document, and nothing logged that "
                                        "took the number"));
}

} // namespace
} // namespace bancada::conferencia_test

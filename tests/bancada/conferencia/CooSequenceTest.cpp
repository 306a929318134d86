// Document numbers without a row, and what takes one without leaving a row.
#include "tests/bancada/conferencia/SequenceFixture.h"

#include <gmock/gmock.h>

namespace bancada::conferencia_test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

using CooSequenceTest = Sequence;

TEST_F(CooSequenceTest, AReprintTakesOneNumberOnce)
{
    AddOutro(1, 0, "LX", 1);
    AddReimpressao(2);
    AddOutro(3, 0, "LX", 2);
    EXPECT_THAT(Findings(), IsEmpty());
    AddOutro(5, 0, "LX", 2);
    EXPECT_THAT(Findings(), ElementsAre("coo-ausente: COO 4: no document, and nothing logged that "
                                        "took the number"));
}

TEST_F(CooSequenceTest, ACancellationTakesOneNumberOnce)
{
    AddFiscal(1, 1, 1, true);
    AddOutro(3, 1, "CC", 2);
    EXPECT_THAT(Findings(), IsEmpty());
    AddOutro(5, 2, "CC", 3);
    EXPECT_THAT(Findings(), ElementsAre("coo-ausente: COO 4: no document, and nothing logged that "
                                        "took the number"));
}

// The payments are reversed first, then the voucher that one of them made.
TEST_F(CooSequenceTest, ACancellationMayComeBehindReversals)
{
    AddFiscal(1, 1, 1, true);
    AddPagamento(1, 0);
    AddPagamento(1, 1);
    AddPagamento(1, 2);
    AddOutro(4, 3, "CC", 2);
    AddOutro(7, 5, "CN", 3);
    AddFiscal(8, 2, 4);
    EXPECT_THAT(
        Findings(),
        ElementsAre("documento-sem-linha: GNF 4: reversal of a voucher (COO 5) before COO 7"));
}

TEST_F(CooSequenceTest, ACancellationBehindReversalsTakesOneNumberOnce)
{
    AddFiscal(1, 1, 1, true);
    AddPagamento(1, 0);
    AddPagamento(1, 1);
    AddOutro(3, 1, "LX", 2);
    AddOutro(5, 1, "LX", 3);
    AddOutro(7, 1, "LX", 4);
    AddFiscal(8, 2, 5);
    EXPECT_THAT(Findings(), ElementsAre("coo-ausente: COO 6: no document, and nothing logged that "
                                        "took the number"));
}

TEST_F(CooSequenceTest, EachCancellationTakesANumberOfItsOwn)
{
    AddFiscal(1, 1, 1, true);
    AddFiscal(3, 2, 2, true);
    AddFiscal(6, 3, 3);
    AddOutro(7, 0, "LX", 4);
    EXPECT_THAT(Findings(), ElementsAre("coo-ausente: COO 5: no document, and nothing logged that "
                                        "took the number"));
}

TEST_F(CooSequenceTest, ANonFiscalReceiptEndsTheTimeForACancellation)
{
    AddFiscal(1, 1, 1, true);
    AddOutro(2, 1, "CN", 2);
    AddOutro(4, 2, "CN", 3);
    EXPECT_THAT(Findings(),
                ElementsAre("cancelamento-ausente: COO 1: cancelled, and the next documents leave "
                            "no number for its cancellation",
                            "coo-ausente: COO 3: no document, and nothing logged that took the "
                            "number"));
}

// It may have been cancelled while it was issued, which takes none, or be an additional receipt.
TEST_F(CooSequenceTest, APaidReceiptWithoutASignatureTakesANumberOrNone)
{
    AddFiscal(1, 1, 1, true);
    Execute("UPDATE cupom_fiscal SET assinatura_documento = ' '");
    AddPagamento(1, 0);
    AddFiscal(2, 2, 2, true);
    Execute("UPDATE cupom_fiscal SET assinatura_documento = ' ' WHERE cont_coo = 2");
    AddPagamento(2, 0);
    AddFiscal(4, 3, 3);
    EXPECT_THAT(Findings(), IsEmpty());
    AddFiscal(6, 4, 4);
    EXPECT_THAT(Findings(), ElementsAre("coo-ausente: COO 5: no document, and nothing logged that "
                                        "took the number"));
}

TEST_F(CooSequenceTest, AReceiptCancelledUnpaidWhileIssuedTakesNoNumber)
{
    AddFiscal(1, 1, 1, true);
    Execute("UPDATE cupom_fiscal SET assinatura_documento = ' '");
    AddFiscal(3, 2, 2);
    EXPECT_THAT(Findings(), ElementsAre("coo-ausente: COO 2: no document, and nothing logged that "
                                        "took the number"));
}

TEST_F(CooSequenceTest, AReprintWithinTheSameSecondLeavesTheCancellationItsNumber)
{
    AddFiscal(1, 1, 1, true);
    AddFiscal(3, 2, 2);
    AddReimpressao(2);
    AddOutro(5, 0, "LX", 2);
    EXPECT_THAT(Findings(), IsEmpty());
}

TEST_F(CooSequenceTest, EachVoucherIsReversedOnce)
{
    AddFiscal(1, 1, 1);
    AddOutro(2, 1, "CC", 2);
    AddOutro(4, 2, "LX", 3);
    EXPECT_THAT(
        Findings(),
        ElementsAre("documento-sem-linha: GNF 2: reversal of a voucher (COO 3) before COO 4"));
    AddOutro(6, 3, "LX", 4);
    EXPECT_THAT(
        Findings(),
        ElementsAre("documento-sem-linha: GNF 2: reversal of a voucher (COO 3) before COO 4",
                    "gnf-ausente: GNF 3: no non-fiscal document (COO 5) before COO 6"));
}

TEST_F(CooSequenceTest, ANonFiscalReceiptEndsTheTimeForReversalsOfVouchers)
{
    AddFiscal(1, 1, 1);
    AddOutro(2, 1, "CC", 2);
    AddOutro(3, 2, "CN", 3);
    AddOutro(5, 3, "LX", 4);
    EXPECT_THAT(Findings(),
                ElementsAre("gnf-ausente: GNF 3: no non-fiscal document (COO 4) before COO 5"));
}

TEST_F(CooSequenceTest, LossesOfAllTheNumbersExplainThem)
{
    AddOutro(1, 0, "LX", 1);
    AddOutro(4, 0, "LX", 2);
    Lose("UPDATE outros_documentos SET x = 1 WHERE cont_coo = 2");
    EXPECT_THAT(Findings(), ElementsAre("coo-ausente: COO 2 to 3: no document, and nothing logged "
                                        "that took the number"));
    Lose("UPDATE outros_documentos SET x = 1 WHERE cont_coo = 3");
    EXPECT_THAT(Findings(), ElementsAre("coo-ausente: COO 2 to 3: no document, and nothing logged "
                                        "that took the number (explained)"));
}

} // namespace
} // namespace bancada::conferencia_test

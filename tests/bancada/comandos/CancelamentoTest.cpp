// Cancellation of an item and of receipts, from a tape line to the database.
#include "tests/bancada/comandos/ComandoTest.h"

#include <gmock/gmock.h>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ComandoCancelamento : public ProgrammedComandoTest
{
};

TEST_F(ComandoCancelamento, CancellingAnItemMarksIt)
{
    AbreCupomAndVende();
    Run(R"({"cmd":"cancela_item","item":1})");
    EXPECT_THAT(Rows("SELECT seq_item, id_cancelado FROM item_cupom_fiscal"),
                ElementsAre("1|S", "2|N"));
}

TEST_F(ComandoCancelamento, CancellingInIssueMarksTheReceipt)
{
    AbreCupomAndVende();
    Run(R"({"cmd":"cancela_cupom_em_emissao"})");
    EXPECT_THAT(Rows("SELECT cont_coo, id_cancelado FROM cupom_fiscal"), ElementsAre("1|S"));
}

TEST_F(ComandoCancelamento, CancellingTheReceiptIssuedLastNeedsNoNumber)
{
    EmiteCupom();
    Run(R"({"cmd":"cancela_cupom"})");
    EXPECT_THAT(Rows("SELECT cont_coo, id_cancelado FROM cupom_fiscal"), ElementsAre("1|S"));
    EXPECT_THAT(Rows("SELECT * FROM outros_documentos"), IsEmpty());
}

TEST_F(ComandoCancelamento, CancellingByNumber)
{
    EmiteCupom();
    EXPECT_EQ(Refused(R"({"cmd":"cancela_cupom","coo":7})"),
              "only the receipt issued last can be cancelled: it is COO 1, not 7");
    Run(R"({"cmd":"cancela_cupom","coo":1})");
    EXPECT_THAT(Rows("SELECT cont_coo, id_cancelado FROM cupom_fiscal"), ElementsAre("1|S"));
}

TEST_F(ComandoCancelamento, CancellingANonFiscalReceiptHasADocumentOfItsOwn)
{
    Run(R"({"cmd":"abre_cnf"})");
    Run(R"({"cmd":"vende_item_nf","totalizador":3,"valor":"15.00"})");
    Run(R"({"cmd":"efetua_pagamento","meio":1,"valor":"15.00"})");
    Run(R"({"cmd":"fecha_cupom_nf"})");
    Run(R"({"cmd":"cancela_cupom"})");
    EXPECT_THAT(Rows("SELECT cont_coo, id_cancelado FROM cupom_nf"), ElementsAre("1|S"));
    EXPECT_THAT(Rows(DOCUMENTOS), ElementsAre("1|1|0|0|1|CN", "2|2|0|0|1|NC"));
}

} // namespace

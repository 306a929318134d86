// The counters of the documents.
#include "tests/bancada/conferencia/PlantedFault.h"

#include <gmock/gmock.h>

namespace bancada::conferencia_test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

const PlantedFaults PLANTED({
    {"ReadingWithoutRow",
     "DELETE FROM outros_documentos WHERE cont_coo = 2",
     {"linha-ausente: outros_documentos: no row 2, and rows are never deleted",
      "coo-ausente: COO 2: no document, and nothing logged that took the number",
      "intervencao: CRO 1: no X reading of 2024-03-01 08:01:00"}},
    {"ReprintWithoutRow",
     "DELETE FROM fita_detalhe",
     {"coo-ausente: COO 12: no document, and nothing logged that took the number"}},
    {"CancellationOfAReceiptNotCancelled",
     "UPDATE cupom_fiscal SET id_cancelado = 'N' WHERE cont_coo = 7",
     {"z-aliquota: CRZ 1 01T18.00: 26.10, valid items 48.10 to 48.11",
      "z-vendas: CRZ 1: net tax totalizers 36.98, valid fiscal receipts 58.98",
      "z-meio: CRZ 1 means 1: took in 80.00, payments 102.00",
      "z-troco: CRZ 1: payment means 93.50 less change 26.52, valid receipts 88.98",
      "coo-ausente: COO 8: no document, and nothing logged that took the number"}},
    {"SeveralDocumentsWithoutRows",
     "UPDATE outros_documentos SET cont_coo = cont_coo + 3 WHERE cont_coo = 20;"
     "UPDATE reducao_z SET cont_coo = 23 WHERE cont_coo = 20;"
     "UPDATE cupom_fiscal SET cont_coo = 24 WHERE cont_coo = 21;"
     "UPDATE item_cupom_fiscal SET cont_coo = 24 WHERE cont_coo = 21",
     {"coo-ausente: COO 20 to 22: no document, and nothing logged that took the "
      "number"}},
    {"DocumentTwice",
     "INSERT INTO outros_documentos VALUES"
     " (20,1,9,1,1,2,'2024-03-02 18:00:00','2024-03-02 18:00:00','LX')",
     {"coo-repetido: COO 20: comes after COO 21"},
     {"cupom-adicional: COO 11: paid 10.00, closing never written",
      "documento-sem-linha: GNF 3: reversal of a voucher (COO 6) before COO 10",
      "relogio-atrasado: COO 20: of 2024-03-02 18:00:00, after COO 21 of 2024-03-03 08:00:00",
      "coo-reutilizado: COO 20: 2 other documents share the number: their ends cannot be told "
      "apart"}},
    {"DocumentGoesBack",
     "INSERT INTO outros_documentos VALUES"
     " (12,1,9,1,1,2,'2024-03-02 19:00:00','2024-03-02 19:00:00','LX')",
     {"coo-repetido: COO 12: comes after COO 21",
      "ordem: COO 12: of 2024-03-02 19:00:00, after COO 21 of 2024-03-03 08:00:00"}},
    {"FiscalReceiptWithoutRow",
     "DELETE FROM cupom_fiscal WHERE cont_coo = 4",
     {"linha-ausente: cupom_fiscal: no row 2, and rows are never deleted",
      "z-aliquota: CRZ 1 01S05.00: 5.40, valid items 0.00",
      "z-aliquota: CRZ 1 01T18.00: 26.10, valid items 18.00",
      "z-registrado: CRZ 1: gross sales 68.48, items of the day 48.48",
      "z-registrado: CRZ 1: discounts 2.50, items of the day 0.00",
      "z-vendas: CRZ 1: net tax totalizers 36.98, valid fiscal receipts 23.48",
      "z-meio: CRZ 1 means 2: took in 13.50, payments 0.00",
      "z-troco: CRZ 1: payment means 93.50 less change 26.52, valid receipts 53.48",
      "ccf-ausente: CCF 2: no fiscal receipt (COO 4) before COO 7",
      "item-sem-cupom: COO 4: 3 items without their receipt",
      "pagamento-sem-cupom: COO 4: 1 payments without their receipt"}},
    {"FiscalReceiptNumberTwice",
     "UPDATE cupom_fiscal SET cont_ccf = 5 WHERE cont_coo = 15",
     {"ccf-repetido: CCF 5: COO 15 comes after CCF 5",
      "ccf-ausente: CCF 6: no fiscal receipt before COO 21"}},
    {"FiscalReceiptNumberGoesBack",
     "UPDATE cupom_fiscal SET cont_ccf = 3 WHERE cont_coo = 15",
     {"ccf-repetido: CCF 3: COO 15 comes after CCF 5",
      "ccf-ausente: CCF 6: no fiscal receipt before COO 21"}},
    {"NonFiscalDocumentWithoutRow",
     "DELETE FROM outros_documentos WHERE cont_coo = 19",
     {"linha-ausente: outros_documentos: no row 9, and rows are never deleted",
      "gnf-ausente: GNF 9: no non-fiscal document (COO 19) before COO 20"}},
    {"ReversalWithoutItsVoucher",
     "UPDATE outros_documentos SET id_tipo_documento = 'RG' WHERE cont_coo = 5",
     {"contador-documento: COO 5: CDC 1, where 0 is due",
      "contador-documento: COO 5: GRG 0, where 1 is due",
      "gnf-ausente: GNF 3: no non-fiscal document (COO 6) before COO 10"},
     {"cupom-adicional: COO 11: paid 10.00, closing never written"}},
    {"NonFiscalNumberTwice",
     "UPDATE outros_documentos SET cont_gnf = 8 WHERE cont_coo = 19",
     {"gnf-repetido: GNF 8: COO 19 comes after GNF 8",
      "gnf-ausente: GNF 9: no non-fiscal document before COO 20"}},
    {"DocumentUnderAnotherReduction",
     "UPDATE outros_documentos SET cont_crz = 2 WHERE cont_coo = 17",
     {"crz-documento: COO 17: filed under CRZ 2, the last Z is CRZ 1",
      "documento-difere: COO 17: filed under CRZ 2, its receipt under CRZ 2"}},
    {"VoucherReversal", "SELECT 1", {}},
});

INSTANTIATE_TEST_SUITE_P(CheckSequencias, Planted,
                         testing::ValuesIn(PLANTED.Begin(), PLANTED.End()), NameOf);

class CheckSequencias : public CheckedDatabase
{
};

TEST_F(CheckSequencias, TheReversalOfAVoucherAtTheEndMayBeOne)
{
    Execute(CLEAN_DAYS);
    Execute("DELETE FROM outros_documentos WHERE cont_coo > 5;"
            "DELETE FROM cupom_nf WHERE cont_coo > 5; DELETE FROM item_cupom_nf WHERE cont_coo > 5;"
            "DELETE FROM reducao_z; DELETE FROM totalizador_reducao;"
            "DELETE FROM meio_pagamento_reducao; DELETE FROM cupom_fiscal WHERE cont_coo > 7;"
            "DELETE FROM item_cupom_fiscal WHERE cont_coo > 7;"
            "DELETE FROM pagamento_cupom WHERE cont_coo > 7;");
    EXPECT_THAT(Faults(), IsEmpty());
    EXPECT_THAT(
        notes, ElementsAre("documento-sem-linha: COO 6: may be the reversal of a voucher; no later "
                           "document tells"));
}

TEST_F(CheckSequencias, NumbersComeRoundAtSixDigits)
{
    Execute(CLEAN_DAYS);
    Execute("UPDATE outros_documentos SET cont_coo = (cont_coo + 999990) % 999999 + 1;"
            "UPDATE cupom_fiscal SET cont_coo = (cont_coo + 999990) % 999999 + 1;"
            "UPDATE cupom_nf SET cont_coo = (cont_coo + 999990) % 999999 + 1;"
            "UPDATE item_cupom_fiscal SET cont_coo = (cont_coo + 999990) % 999999 + 1;"
            "UPDATE item_cupom_nf SET cont_coo = (cont_coo + 999990) % 999999 + 1;"
            "UPDATE pagamento_cupom SET cont_coo = (cont_coo + 999990) % 999999 + 1;"
            "UPDATE reducao_z SET cont_coo = (cont_coo + 999990) % 999999 + 1;"
            "UPDATE cupom_fiscal SET cont_ccf = (cont_ccf + 999994) % 999999 + 1;");
    EXPECT_THAT(Faults(), IsEmpty());
}

} // namespace
} // namespace bancada::conferencia_test

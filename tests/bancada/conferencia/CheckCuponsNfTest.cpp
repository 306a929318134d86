// Non-fiscal receipts against their items and payments.
#include "tests/bancada/conferencia/PlantedFault.h"

namespace bancada::conferencia_test
{
namespace
{

const PlantedFaults PLANTED({
    {"FirstNonFiscalItemsWithoutRows",
     "UPDATE item_cupom_nf SET seq_item = 3 WHERE cont_coo = 10",
     {"item-ausente: COO 10: no row of item 1 to 2"}},
    {"NonFiscalReceiptLeftOpen",
     "UPDATE cupom_nf SET valor_subtotal = 0, valor_total_cupom = 0 WHERE cont_coo = 10",
     {"nf-aberto: COO 10: never closed, live items 30.00",
      "z-nao-fiscais: CRZ 1: non-fiscal totalizers 210.00, valid non-fiscal "
      "receipts 180.00",
      "z-troco: CRZ 1: payment means 93.50 less change 26.52, valid receipts 36.98"}},
    {"NonFiscalReceiptWithoutATotal",
     "UPDATE cupom_nf SET valor_total_cupom = 0 WHERE cont_coo = 10",
     {"nf-total: COO 10: total 0.00, subtotal 30.00 less 0.00 plus 0.00",
      "z-nao-fiscais: CRZ 1: non-fiscal totalizers 210.00, valid non-fiscal "
      "receipts 180.00",
      "z-troco: CRZ 1: payment means 93.50 less change 26.52, valid receipts 36.98"}},
    {"NonFiscalReceiptWithoutASubtotal",
     "UPDATE cupom_nf SET valor_subtotal = 0 WHERE cont_coo = 10",
     {"nf-total: COO 10: total 30.00, subtotal 0.00 less 0.00 plus 0.00",
      "nf-itens: COO 10: live items 30.00, subtotal 0.00"}},
    {"NonFiscalTotalIsNotSubtotal",
     "UPDATE cupom_nf SET valor_total_cupom = 29.00 WHERE cont_coo = 10",
     {"nf-total: COO 10: total 29.00, subtotal 30.00 less 0.00 plus 0.00",
      "z-nao-fiscais: CRZ 1: non-fiscal totalizers 210.00, valid non-fiscal "
      "receipts 209.00",
      "z-troco: CRZ 1: payment means 93.50 less change 26.52, valid receipts 65.98"}},
    {"NonFiscalItemsDoNotAddUp",
     "DELETE FROM item_cupom_nf WHERE cont_coo = 13",
     {"linha-ausente: item_cupom_nf: no row 3, and rows are never deleted",
      "nf-itens: COO 13: live items 0.00, subtotal 80.00",
      "z-troco: CRZ 1: payment means 93.50 less change 26.52, valid receipts 146.98",
      "z-nao-fiscais: CRZ 1 SANGRIA: 80.00, valid non-fiscal items 0.00"}},
    {"NonFiscalReceiptNotPaid",
     "DELETE FROM pagamento_cupom WHERE cont_coo = 10",
     {"linha-ausente: pagamento_cupom: no row 4, and rows are never deleted",
      "nf-pagamentos: COO 10: payments 0.00, total 30.00",
      "z-meio: CRZ 1 means 1: took in 80.00, payments 30.00"}},
    {"NonFiscalItemNetIsWrong",
     "UPDATE item_cupom_nf SET valor_total = 31.00 WHERE cont_coo = 10",
     {"item-nf-total: COO 10 item 1: net value 30.00, value and adjustments 29.00"}},
});

INSTANTIATE_TEST_SUITE_P(CheckCuponsNf, Planted, testing::ValuesIn(PLANTED.Begin(), PLANTED.End()),
                         NameOf);

} // namespace
} // namespace bancada::conferencia_test

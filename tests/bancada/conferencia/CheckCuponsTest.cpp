// Fiscal receipts against their items and payments.
#include "tests/bancada/conferencia/PlantedFault.h"

#include <gmock/gmock.h>

namespace bancada::conferencia_test
{
namespace
{

using testing::IsEmpty;

const PlantedFaults PLANTED({
    {"ItemWithoutRow",
     "DELETE FROM item_cupom_fiscal WHERE cont_coo = 4 AND seq_item = 2",
     {"linha-ausente: item_cupom_fiscal: no row 4, and rows are never deleted",
      "item-ausente: COO 4: no row of item 2"}},
    {"ReceiptLeftOpen",
     "DELETE FROM pagamento_cupom WHERE cont_coo = 11",
     {"linha-ausente: pagamento_cupom: no row 5, and rows are never deleted",
      "cupom-aberto: COO 11: never closed, paid 0.00 of 8.00"},
     {"documento-sem-linha: GNF 3: reversal of a voucher (COO 6) before COO 10"}},
    {"ReceiptHalfPaid",
     "UPDATE pagamento_cupom SET valor_pagamento = 7.99 WHERE cont_coo = 11",
     {"cupom-aberto: COO 11: never closed, paid 7.99 of 8.00"},
     {"documento-sem-linha: GNF 3: reversal of a voucher (COO 6) before COO 10"}},
    {"AdditionalReceipt", "SELECT 1", {}},
    {"TotalIsNotSubtotalWithAdjustment",
     "UPDATE cupom_fiscal SET valor_desconto = 1.49 WHERE cont_coo = 4",
     {"percentual: COO 4: discount 1.49, 10.00 % come to 1.50 to 1.51",
      "cupom-total: COO 4: total 13.50, subtotal 15.00 less 1.49 plus 0.00"}},
    {"ItemsDoNotAddUp",
     "UPDATE item_cupom_fiscal SET valor_unitario = 5.01, valor_total = 10.02"
     " WHERE cont_coo = 3 AND seq_item = 1",
     {"cupom-itens: COO 3: live items 15.50, subtotal 15.48, total 15.48",
      "z-aliquota: CRZ 1 01T18.00: 26.10, valid items 26.12",
      "z-registrado: CRZ 1: gross sales 68.48, items of the day 68.50"}},
    {"CancelledItemCountsAsLive",
     "UPDATE item_cupom_fiscal SET id_cancelado = 'N' WHERE cont_coo = 4",
     {"cupom-itens: COO 4: live items 17.50, subtotal 15.00, total 13.50",
      "z-aliquota: CRZ 1 01S05.00: 5.40, valid items 4.93 to 4.94",
      "z-aliquota: CRZ 1 01T18.00: 26.10, valid items 29.05 to 29.07",
      "z-registrado: CRZ 1: discounts 2.50, items of the day 4.00"}},
    {"PaymentsAreNotTheTotal",
     "UPDATE cupom_fiscal SET valor_troco = 4.51 WHERE cont_coo = 3",
     {"cupom-pagamentos: COO 3: payments 20.00 less change 4.51, total 15.48"}},
    {"ItemTotalIsRoundedInsteadOfCut",
     "UPDATE item_cupom_fiscal SET valor_total = 5.49 WHERE cont_coo = 3 AND seq_item = 2",
     {"item-total: COO 3 item 2: total 5.49, quantity by price and adjustments 5.48",
      "cupom-itens: COO 3: live items 15.49, subtotal 15.48, total 15.48",
      "z-aliquota: CRZ 1 F1: 5.48, valid items 5.49"}},
});

INSTANTIATE_TEST_SUITE_P(CheckCupons, Planted, testing::ValuesIn(PLANTED.Begin(), PLANTED.End()),
                         NameOf);

class CheckCupons : public CheckedDatabase
{
};

TEST_F(CheckCupons, AReceiptWithoutApportionmentAddsUpToItsSubtotal)
{
    Execute(CLEAN_DAYS);
    Execute("UPDATE item_cupom_fiscal SET valor_desconto = 1.00, valor_total = 9.00"
            " WHERE cont_coo = 4 AND seq_item = 1;"
            "UPDATE item_cupom_fiscal SET valor_desconto = 0, valor_total = 6.00"
            " WHERE cont_coo = 4 AND seq_item = 3");
    EXPECT_THAT(Faults(), IsEmpty());
}

} // namespace
} // namespace bancada::conferencia_test

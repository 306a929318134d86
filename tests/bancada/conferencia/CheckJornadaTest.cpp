// A Z reduction against the receipts of its day.
#include "tests/bancada/conferencia/PlantedFault.h"

namespace bancada::conferencia_test
{
namespace
{

const PlantedFaults PLANTED({
    {"ReductionWithoutChange",
     "DELETE FROM meio_pagamento_reducao WHERE descricao_meio_pagamento = 'TROCO'",
     {"linha-ausente: meio_pagamento_reducao: no row 3, and rows are never deleted",
      "reducao-incompleta: CRZ 1: no row of the change",
      "reducao-incompleta: CRZ 2: no row of the change"}},
    {"ReceiptAfterItsReduction",
     "UPDATE cupom_fiscal SET data_hora_emissao = '2024-03-01 18:00:01' WHERE cont_coo = 11",
     {"cupom-fora-do-dia: COO 11: issued 2024-03-01 18:00:01, after CRZ 1 of 2024-03-01 18:00:00",
      "ordem: COO 13: of 2024-03-01 17:00:00, after COO 11 of 2024-03-01 18:00:01",
      "coo-ausente: COO 12: no document, and nothing logged that took the number"}},
    {"ReceiptBeforeThePreviousReduction",
     "UPDATE cupom_fiscal SET cont_crz = 2 WHERE cont_coo = 4",
     {"z-aliquota: CRZ 1 01S05.00: 5.40, valid items 0.00",
      "z-aliquota: CRZ 1 01T18.00: 26.10, valid items 18.00",
      "z-registrado: CRZ 1: gross sales 68.48, items of the day 48.48",
      "z-registrado: CRZ 1: discounts 2.50, items of the day 0.00",
      "z-vendas: CRZ 1: net tax totalizers 36.98, valid fiscal receipts 23.48",
      "z-meio: CRZ 1 means 2: took in 13.50, payments 0.00",
      "z-troco: CRZ 1: payment means 93.50 less change 26.52, valid receipts 53.48",
      "z-aliquota: CRZ 2 01S05.00: 0.00, valid items 5.40",
      "z-aliquota: CRZ 2 01T18.00: 7.00, valid items 15.10",
      "z-registrado: CRZ 2: gross sales 7.00, items of the day 27.00",
      "z-registrado: CRZ 2: discounts 0.00, items of the day 2.50",
      "z-vendas: CRZ 2: net tax totalizers 7.00, valid fiscal receipts 20.50",
      "cupom-fora-do-dia: COO 4: issued 2024-03-01 09:00:00, filed under CRZ 2, before the Z of 2024-03-01 18:00:00",
      "z-data: CRZ 2: day of 2024-03-02, first receipt COO 4 of 2024-03-01 09:00:00",
      "z-meio: CRZ 2 means 2: took in 7.00, payments 20.50",
      "z-troco: CRZ 2: payment means 7.00 less change 0.00, valid receipts 20.50",
      "cupom-fora-do-dia: COO 4: filed under CRZ 2, the next Z is CRZ 1"}},
    {"MeansIsNotItsPayments",
     "UPDATE meio_pagamento_reducao SET valor_acumulado = 13.49 WHERE cont_crz = 1"
     " AND indice_meio_pagamento = 2",
     {"z-meio: CRZ 1 means 2: took in 13.49, payments 13.50",
      "z-troco: CRZ 1: payment means 93.49 less change 26.52, valid receipts 66.98"}},
    {"PaymentInAMeansWithoutRow",
     "UPDATE pagamento_cupom SET indice_meio_pagamento = 9 WHERE cont_coo = 4",
     {"z-meio: CRZ 1 means 2: took in 13.50, payments 0.00",
      "z-meio: CRZ 1 means 9: took in 0.00, payments 13.50"}},
    {"ChangeIsWrong",
     "UPDATE meio_pagamento_reducao SET valor_acumulado = 26.53 WHERE cont_crz = 1"
     " AND descricao_meio_pagamento = 'TROCO'",
     {"z-troco: CRZ 1: payment means 93.50 less change 26.53, valid receipts 66.98"}},
    // The receipt that is left open may have taken in any of what the means hold.
    {"FloatsAmongMeansThatCannotBeTold",
     "UPDATE pagamento_cupom SET valor_pagamento = 7.99 WHERE cont_coo = 11;"
     "UPDATE meio_pagamento_reducao SET valor_acumulado = 180.00 WHERE cont_crz = 1"
     " AND indice_meio_pagamento = 1",
     {"cupom-aberto: COO 11: never closed, paid 7.99 of 8.00"},
     {"documento-sem-linha: GNF 3: reversal of a voucher (COO 6) before COO 10"}},
    {"FloatsAndACentAmongMeansThatCannotBeTold",
     "UPDATE pagamento_cupom SET valor_pagamento = 7.99 WHERE cont_coo = 11;"
     "UPDATE meio_pagamento_reducao SET valor_acumulado = 180.01 WHERE cont_crz = 1"
     " AND indice_meio_pagamento = 1",
     {"cupom-aberto: COO 11: never closed, paid 7.99 of 8.00",
      "z-troco: CRZ 1: payment means 193.51 less change 26.52, valid receipts 58.98 to 66.98"},
     {"documento-sem-linha: GNF 3: reversal of a voucher (COO 6) before COO 10"}},
    {"DayOfAnotherDate",
     "UPDATE reducao_z SET data_movimento = '2024-03-03 00:00:00' WHERE cont_crz = 2",
     {"z-data: CRZ 2: day of 2024-03-03, first receipt COO 15 of 2024-03-02 "
      "08:00:00"}},
});

INSTANTIATE_TEST_SUITE_P(CheckJornada, Planted, testing::ValuesIn(PLANTED.Begin(), PLANTED.End()),
                         NameOf);

} // namespace
} // namespace bancada::conferencia_test

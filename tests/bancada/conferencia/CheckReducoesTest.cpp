// Z reductions one after the other, and days and rows without theirs.
#include "tests/bancada/conferencia/PlantedFault.h"

namespace bancada::conferencia_test
{
namespace
{

const PlantedFaults PLANTED({
    {"ReductionWithoutRow",
     "UPDATE reducao_z SET cont_crz = 3 WHERE cont_crz = 2;"
     "UPDATE totalizador_reducao SET cont_crz = 3 WHERE cont_crz = 2;"
     "UPDATE meio_pagamento_reducao SET cont_crz = 3 WHERE cont_crz = 2",
     {"crz-ausente: CRZ 2: 1 without a row before CRZ 3",
      "z-aliquota: CRZ 3 01T18.00: 7.00, valid items 9.00",
      "z-registrado: CRZ 3: gross sales 7.00, items of the day 9.00",
      "z-vendas: CRZ 3: net tax totalizers 7.00, valid fiscal receipts 0.00",
      "cupom-fora-do-dia: COO 21: issued 2024-03-03 08:00:00, after CRZ 3 of 2024-03-02 18:00:00",
      "z-data: CRZ 3: day of 2024-03-02, first receipt COO 21 of 2024-03-03 08:00:00",
      "z-meio: CRZ 3 means 2: took in 7.00, payments 0.00",
      "z-troco: CRZ 3: payment means 7.00 less change 0.00, valid receipts 0.00",
      "cupom-sem-reducao: CRZ 2: receipts from COO 15 to COO 17 and no Z",
      "documento-difere: COO 20: filed under CRZ 2, CRZ 3 under CRZ 3"}},
    {"ReductionTwice",
     "INSERT INTO reducao_z SELECT * FROM reducao_z WHERE cont_crz = 2",
     {"crz-repetido: CRZ 2: comes after CRZ 2"}},
    {"TotalizersWithoutReduction",
     "DELETE FROM reducao_z WHERE cont_crz = 2",
     {"totalizador-sem-reducao: CRZ 2: 12 totalizers", "meio-sem-reducao: CRZ 2: 2 payment means",
      "cupom-sem-reducao: CRZ 2: receipts from COO 15 to COO 17 and no Z",
      "documento-sem-reducao: COO 20: 1 document rows without their Z reduction"}},
    {"MeansWithoutReduction",
     "DELETE FROM reducao_z WHERE cont_crz = 2",
     {"totalizador-sem-reducao: CRZ 2: 12 totalizers", "meio-sem-reducao: CRZ 2: 2 payment means",
      "cupom-sem-reducao: CRZ 2: receipts from COO 15 to COO 17 and no Z",
      "documento-sem-reducao: COO 20: 1 document rows without their Z reduction"}},
    {"DayWithoutReduction",
     "DELETE FROM reducao_z WHERE cont_crz = 2",
     {"totalizador-sem-reducao: CRZ 2: 12 totalizers", "meio-sem-reducao: CRZ 2: 2 payment means",
      "cupom-sem-reducao: CRZ 2: receipts from COO 15 to COO 17 and no Z",
      "documento-sem-reducao: COO 20: 1 document rows without their Z reduction"}},
    {"GrandTotalDidNotGrow",
     "UPDATE reducao_z SET valor_gt = 75.47 WHERE cont_crz = 2",
     {"z-gt: CRZ 2: grand total from 68.48 to 75.47, gross sales 7.00"}},
    {"TimesNotCrossed",
     "UPDATE reducao_z SET tempo_operacional = 36000, tempo_emitindo_doc = 300 WHERE cont_crz = 1",
     {"z-tempos: CRZ 1: issuing documents 36000 s, operating 300 s"}},
});

INSTANTIATE_TEST_SUITE_P(CheckReducoes, Planted, testing::ValuesIn(PLANTED.Begin(), PLANTED.End()),
                         NameOf);

} // namespace
} // namespace bancada::conferencia_test

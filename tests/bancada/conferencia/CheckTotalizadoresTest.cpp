// A Z reduction against its totalizers, and these against the receipts of the day.
#include "tests/bancada/conferencia/PlantedFault.h"

namespace bancada::conferencia_test
{
namespace
{

const PlantedFaults PLANTED({
    {"ReductionWithoutFixedRow",
     "DELETE FROM totalizador_reducao WHERE totalizador = 'Can-S'",
     {"linha-ausente: totalizador_reducao: no row 9, and rows are never deleted",
      "linha-ausente: totalizador_reducao: no row 21, and rows are never deleted",
      "reducao-incompleta: CRZ 1: no totalizer row Can-S",
      "reducao-incompleta: CRZ 2: no totalizer row Can-S"}},
    {"TotalizersDoNotAddUp",
     "UPDATE totalizador_reducao SET valor_base_calculo = 26.11 WHERE cont_crz = 1"
     " AND totalizador = '01T18.00'",
     {"z-totalizadores: CRZ 1: base of ICMS 31.58, its rows 31.59",
      "z-aliquota: CRZ 1 01T18.00: 26.11, valid items 26.10"}},
    {"TaxDoesNotAddUp",
     "UPDATE reducao_z SET valor_iss = 0.28 WHERE cont_crz = 1",
     {"z-totalizadores: CRZ 1: tax of ISSQN 0.28, its rows 0.27"}},
    {"FixedTotalizerIsNotItsSum",
     "UPDATE reducao_z SET valor_acres_icms = 2.01 WHERE cont_crz = 1",
     {"z-totalizadores: CRZ 1: AT 2.01, its rows 2.00",
      "z-registrado: CRZ 1: surcharges 2.01, items of the day 2.00"}},
    {"GrossSalesAreNotTheirParts",
     "UPDATE reducao_z SET valor_vb = 68.47 WHERE cont_crz = 1",
     {"z-gt: CRZ 1: grand total 68.48, gross sales 68.47 of the first Z",
      "z-vb: CRZ 1: gross sales 68.47, net totalizers, discounts and cancellations 68.48",
      "z-registrado: CRZ 1: gross sales 68.47, items of the day 68.48"}},
    {"SalesAreNotTheReceipts",
     "UPDATE cupom_fiscal SET id_cancelado = 'S' WHERE cont_coo = 4",
     {"z-aliquota: CRZ 1 01S05.00: 5.40, valid items 0.00",
      "z-aliquota: CRZ 1 01T18.00: 26.10, valid items 18.00",
      "z-vendas: CRZ 1: net tax totalizers 36.98, valid fiscal receipts 23.48",
      "z-meio: CRZ 1 means 2: took in 13.50, payments 0.00",
      "z-troco: CRZ 1: payment means 93.50 less change 26.52, valid receipts 53.48",
      "gnf-ausente: GNF 3: no non-fiscal document (COO 6) before COO 10"},
     {"cupom-adicional: COO 11: paid 10.00, closing never written"}},
    {"NonFiscalTotalizersAreNotTheReceipts",
     "UPDATE totalizador_reducao SET valor_base_calculo = 79.00 WHERE cont_crz = 1"
     " AND totalizador = 'SANGRIA'",
     {"z-nao-fiscais: CRZ 1: non-fiscal totalizers 209.00, valid non-fiscal receipts 210.00",
      "z-nao-fiscais: CRZ 1 SANGRIA: 79.00, valid non-fiscal items 80.00"}},
});

INSTANTIATE_TEST_SUITE_P(CheckTotalizadores, Planted,
                         testing::ValuesIn(PLANTED.Begin(), PLANTED.End()), NameOf);

} // namespace
} // namespace bancada::conferencia_test

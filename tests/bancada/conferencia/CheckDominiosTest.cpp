// Every value by itself, and the rows' own numbers.
#include "tests/bancada/conferencia/PlantedFault.h"

namespace bancada::conferencia_test
{
namespace
{

const PlantedFaults PLANTED({
    {"TextInANumber",
     "UPDATE item_cupom_fiscal SET casas_decimais_valor = 'x' WHERE cont_coo = 11",
     {"valor-invalido: item_cupom_fiscal row 8: casas_decimais_valor holds x, where a number from 0 to 4 is due"}},
    {"NothingInAText",
     "UPDATE item_cupom_fiscal SET descricao = NULL WHERE cont_coo = 11",
     {"valor-invalido: item_cupom_fiscal row 8: descricao holds NULL, where a text is due"}},
    {"FlagThatIsNone",
     "UPDATE meio_pagamento SET id_vinculacao_ccd = 'X' WHERE num_indice = 1",
     {"valor-invalido: meio_pagamento row 1: id_vinculacao_ccd holds X, where S or N is due"}},
    {"RowDeleted",
     "DELETE FROM meio_pagamento WHERE num_indice = 1",
     {"linha-ausente: meio_pagamento: no row 1, and rows are never deleted",
      "z-nome: CRZ 2: means 1 DINHEIRO, which is not programmed"}},
    {"RowsExchanged",
     "UPDATE item_cupom_nf SET rowid = 9 WHERE cont_coo = 1;"
     "UPDATE item_cupom_nf SET rowid = 1 WHERE cont_coo = 10;"
     "UPDATE item_cupom_nf SET rowid = 2 WHERE cont_coo = 1",
     {"ordem: item_cupom_nf row 2: cont_coo 1 comes after 10"}},
    {"RowOfACurrency",
     "INSERT INTO moeda VALUES (1, '2024-03-01 08:00:00', 'R$')",
     {"linha-alheia: moeda: 1 rows, where there is at most 0"}},
    {"VersionGone",
     "DELETE FROM versao_sb",
     {"programacao: versao_sb: no version of a register that has its identity"}},
});

INSTANTIATE_TEST_SUITE_P(CheckDominios, Planted, testing::ValuesIn(PLANTED.Begin(), PLANTED.End()),
                         NameOf);

} // namespace
} // namespace bancada::conferencia_test

// Every value by itself, and the rows' own numbers.
#include "bancada/leitura/Tables.h"
#include "tests/bancada/conferencia/PlantedFault.h"

#include <algorithm>

namespace bancada::conferencia_test
{
namespace
{

const PlantedFaults PLANTED({
    {"TextInANumber",
     "UPDATE item_cupom_fiscal SET casas_decimais_valor = 'x' WHERE cont_coo = 11",
     {"valor-invalido: item_cupom_fiscal row 8: casas_decimais_valor holds x, where a number from 0 to 3 is due"}},
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
    {"NameThatIsEmpty",
     "UPDATE totalizador_nao_fiscal SET descricao = ''",
     {"valor-invalido: totalizador_nao_fiscal row 1: descricao holds , where a text that is not empty is due"}},
    {"TypeOfRegisterLongerThanItsCommandTakes",
     "UPDATE dados_ecf SET tipo = 'ECF-PDV1'",
     {"valor-invalido: dados_ecf row 1: tipo holds ECF-PDV1, where a text of at most 7 bytes is due"}},
    {"TypeOfRegisterAsItWasProgrammed", "UPDATE dados_ecf SET tipo = 'CAIXA 7'", {}},
    {"VersionThatIsEmpty", "UPDATE versao_sb SET versao = ''", {}},
    {"TextLongerThanItsCommandTakes",
     "UPDATE meio_pagamento SET descricao = 'CARTAO CREDITO 1' WHERE num_indice = 2",
     {"valor-invalido: meio_pagamento row 2: descricao holds CARTAO CREDITO 1, where a text of at most 15 bytes is due"}},
    {"NothingWhereTheSchemaHasADefault",
     "UPDATE item_cupom_nf SET perc_desconto = NULL WHERE cont_coo = 10",
     {"valor-invalido: item_cupom_nf row 2: perc_desconto holds NULL, where a percentage from 0 to 999.99 is due"}},
    {"RegistrationsWithoutTheCnpj",
     "UPDATE dados_usuario SET ie = '1', im = '2'",
     {"programacao: dados_usuario: ie is not NULL, cnpj is",
      "programacao: dados_usuario: im is not NULL, cnpj is"}},
    {"CnpjWithoutItsRegistrations",
     "UPDATE dados_usuario SET cnpj = '11222333000181', ie = '1'",
     {"programacao: dados_usuario: im is NULL, cnpj is not",
      "programacao: dados_usuario: uf is NULL, cnpj is not"}},
    {"RestartsThatNoDocumentKnows",
     "UPDATE dados_usuario SET cont_cro = 3",
     {"programacao: dados_usuario: CRO 3, the documents know 1 to 2"}},
    {"RestartsBeforeTheFirst",
     "UPDATE dados_usuario SET cont_cro = 0",
     {"programacao: dados_usuario: CRO 0, the documents know 1 to 2"}},
    {"TotalizersGone",
     "DELETE FROM totalizador_nao_fiscal",
     {"programacao: totalizador_nao_fiscal: 2 totalizers with the till's, the last Z has 3",
      "programacao: totalizador_nao_fiscal: totalizer 3 is not programmed, and receipts booked on it"}},
    {"TotalizerOfAnotherNumber",
     "UPDATE totalizador_nao_fiscal SET num_indice = 4",
     {"programacao: totalizador_nao_fiscal: totalizer 3 is not programmed, and receipts booked on it",
      "z-nao-fiscais: CRZ 1 DOACAO: 30.00, valid non-fiscal items 0.00",
      "z-nao-fiscais: CRZ 1 number 3: 0.00, valid non-fiscal items 30.00"}},
    {"VersionGone",
     "DELETE FROM versao_sb",
     {"programacao: versao_sb: no version of a register that has its identity"}},
});

INSTANTIATE_TEST_SUITE_P(CheckDominios, Planted, testing::ValuesIn(PLANTED.Begin(), PLANTED.End()),
                         NameOf);

class CheckTexts : public CheckedDatabase
{
};

// Every bounded text holds as many bytes as its bound says, and no more.
TEST_F(CheckTexts, HoldWhatTheirCommandsHaveRoomFor)
{
    Execute(CLEAN_DAYS);
    int bounded = 0;
    leitura::ForEachTable([&](const auto& table) {
        for (const auto& column : table.Columns()) {
            if (column.most == 0) {
                continue;
            }
            ++bounded;
            const auto isTold = [&](std::int64_t bytes) {
                Execute("UPDATE " + table.Name() + " SET " + column.name + " = printf('%0" +
                        std::to_string(bytes) + "d', 1) WHERE rowid = 1");
                const std::string due = table.Name() + " row 1: " + column.name + " holds ";
                const std::string text =
                    ", where a text of at most " + std::to_string(column.most) + " bytes is due";
                const std::vector<std::string> told = Faults();
                return std::any_of(told.begin(), told.end(), [&](const std::string& fault) {
                    return fault.find(due) != std::string::npos &&
                           fault.find(text) != std::string::npos;
                });
            };
            EXPECT_FALSE(isTold(column.most)) << table.Name() << '.' << column.name;
            EXPECT_TRUE(isTold(column.most + 1)) << table.Name() << '.' << column.name;
        }
    });
    EXPECT_EQ(bounded, 21);
}

} // namespace
} // namespace bancada::conferencia_test

// Where findings stand: document, table, row, column, what is expected there and what was found.
#include "tests/bancada/conferencia/CheckedDatabase.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace bancada::conferencia_test
{
namespace
{

using testing::ElementsAre;

class Places : public CheckedDatabase
{
  protected:
    // The faults of these kinds in the clean days so changed, each as
    // "kind: key [COO n CRZ n] table row column: expected, found".
    std::vector<std::string> Of(const std::vector<std::string>& kinds, const std::string& change)
    {
        Execute(CLEAN_DAYS);
        Execute(change);
        std::vector<std::string> lines;
        const leitura::DatabaseReading database(Path());
        conferencia::CheckDatabase(database, nullptr, [&](const conferencia::Finding& finding) {
            const std::string kind = conferencia::InfoOf(finding.kind).name;
            const conferencia::Place& place = finding.place;
            if (std::find(kinds.begin(), kinds.end(), kind) != kinds.end()) {
                lines.push_back(kind + ": " + finding.key + " [COO " +
                                std::to_string(finding.subject.coo) + " CRZ " +
                                std::to_string(finding.subject.crz) + "] " + place.table + ' ' +
                                std::to_string(place.row) + ' ' + place.column + ": " +
                                place.expected + ", " + place.found);
            }
        });
        return lines;
    }
};

TEST_F(Places, OfRowsWithoutTheirReceipt)
{
    EXPECT_THAT(
        Of({"item-sem-cupom", "pagamento-sem-cupom"},
           "DELETE FROM cupom_fiscal WHERE cont_coo = 4"),
        ElementsAre("item-sem-cupom: COO 4 [COO 4 CRZ 0] item_cupom_fiscal 3 cont_coo: , 4",
                    "pagamento-sem-cupom: COO 4 [COO 4 CRZ 0] pagamento_cupom 2 cont_coo: , 4"));
}

TEST_F(Places, OfNonFiscalRowsWithoutTheirReceipt)
{
    EXPECT_THAT(
        Of({"item-nf-sem-cupom", "pagamento-sem-cupom", "documento-sem-nf"},
           "DELETE FROM cupom_nf WHERE cont_coo = 10"),
        ElementsAre("item-nf-sem-cupom: COO 10 [COO 10 CRZ 0] item_cupom_nf 2 cont_coo: , 10",
                    "pagamento-sem-cupom: COO 10 [COO 10 CRZ 0] pagamento_cupom 4 cont_coo: , 10",
                    "documento-sem-nf: COO 10 [COO 10 CRZ 0] outros_documentos 4 cont_coo: , 10"));
}

TEST_F(Places, OfWhatHasNoDocumentRow)
{
    EXPECT_THAT(
        Of({"nf-sem-documento", "reducao-sem-documento"},
           "DELETE FROM outros_documentos WHERE cont_coo IN (10, 20)"),
        ElementsAre("nf-sem-documento: COO 10 [COO 10 CRZ 0] cupom_nf 2 cont_coo: , 10",
                    "reducao-sem-documento: COO 20 [COO 20 CRZ 0] reducao_z 2 cont_coo: , 20"));
}

TEST_F(Places, OfWhatHasNoReduction)
{
    EXPECT_THAT(
        Of({"totalizador-sem-reducao", "meio-sem-reducao", "documento-sem-reducao",
            "cupom-sem-reducao"},
           "DELETE FROM reducao_z WHERE cont_crz = 2"),
        ElementsAre(
            "totalizador-sem-reducao: CRZ 2 [COO 0 CRZ 2] totalizador_reducao 13 cont_crz: , 2",
            "meio-sem-reducao: CRZ 2 [COO 0 CRZ 2] meio_pagamento_reducao 4 cont_crz: , 2",
            "cupom-sem-reducao: CRZ 2 [COO 0 CRZ 2]  0 : , ",
            "documento-sem-reducao: COO 20 [COO 20 CRZ 0] outros_documentos 10 cont_coo: , 20"));
}

TEST_F(Places, OfNumbersThatGoBack)
{
    EXPECT_THAT(
        Of({"coo-repetido", "ccf-repetido", "gnf-repetido"},
           "UPDATE cupom_fiscal SET cont_ccf = 3 WHERE cont_coo = 15;"
           "UPDATE outros_documentos SET cont_gnf = 8 WHERE cont_coo = 19;"
           "INSERT INTO outros_documentos VALUES"
           " (12,1,9,1,1,2,'2024-03-02 19:00:00','2024-03-02 19:00:00','LX')"),
        ElementsAre("ccf-repetido: CCF 3 [COO 15 CRZ 0] cupom_fiscal 6 cont_ccf: 6, 3",
                    "gnf-repetido: GNF 8 [COO 19 CRZ 0] outros_documentos 9 cont_gnf: 9, 8",
                    "coo-repetido: COO 12 [COO 12 CRZ 0] outros_documentos 11 cont_coo: 22, 12"));
}

TEST_F(Places, OfACancellationWithoutANumber)
{
    EXPECT_THAT(
        Of({"cancelamento-ausente"},
           "UPDATE cupom_fiscal SET id_cancelado = 'S' WHERE cont_coo = 3"),
        ElementsAre("cancelamento-ausente: COO 3 [COO 3 CRZ 0] cupom_fiscal 1 id_cancelado: N, S"));
}

TEST_F(Places, OfTheCountersThatADocumentShows)
{
    EXPECT_THAT(
        Of({"contador-documento", "crz-documento"},
           "UPDATE outros_documentos SET cont_cdc = 3 WHERE cont_coo = 13;"
           "UPDATE outros_documentos SET cont_grg = 4 WHERE cont_coo = 17;"
           "UPDATE outros_documentos SET cont_crz = 2 WHERE cont_coo = 18"),
        ElementsAre(
            "contador-documento: COO 14 [COO 14 CRZ 0] outros_documentos 6 cont_cdc: 3, 1",
            "crz-documento: COO 18 [COO 18 CRZ 0] outros_documentos 8 cont_crz: 1, 2",
            "contador-documento: COO 18 [COO 18 CRZ 0] outros_documentos 8 cont_grg: 4, 0"));
}

TEST_F(Places, OfReductionsThatDoNotFollow)
{
    EXPECT_THAT(Of({"crz-repetido", "crz-ausente", "z-gt"},
                   "UPDATE reducao_z SET valor_gt = 75.47 WHERE cont_crz = 2;"
                   "INSERT INTO reducao_z SELECT * FROM reducao_z WHERE cont_crz = 1;"
                   "UPDATE reducao_z SET cont_crz = 9 WHERE rowid = 3;"
                   "INSERT INTO reducao_z SELECT * FROM reducao_z WHERE cont_crz = 1"),
                ElementsAre("z-gt: CRZ 2 [COO 20 CRZ 2] reducao_z 2 valor_gt: 75.48, 75.47",
                            "crz-ausente: CRZ 3 [COO 0 CRZ 3]  0 : , ",
                            "crz-repetido: CRZ 1 [COO 14 CRZ 1] reducao_z 4 cont_crz: 10, 1"));
}

TEST_F(Places, OfARegisterWithoutItsIdentity)
{
    EXPECT_THAT(Of({"programacao"}, "DELETE FROM dados_ecf"),
                ElementsAre("programacao: dados_ecf [COO 0 CRZ 0] dados_ecf 0 : 1 row, 0 rows"));
}

TEST_F(Places, OfAReceiptLeftOpen)
{
    EXPECT_THAT(
        Of({"cupom-aberto"},
           "UPDATE pagamento_cupom SET valor_pagamento = 7.99 WHERE cont_coo = 11"),
        ElementsAre(
            "cupom-aberto: COO 11 [COO 11 CRZ 0] cupom_fiscal 5 assinatura_documento: a signature,  "));
}

TEST_F(Places, OfANonFiscalReceiptLeftOpen)
{
    EXPECT_THAT(
        Of({"nf-aberto"},
           "UPDATE cupom_nf SET valor_subtotal = 0, valor_total_cupom = 0 WHERE cont_coo = 10"),
        ElementsAre("nf-aberto: COO 10 [COO 10 CRZ 0] cupom_nf 2 valor_total_cupom: 30.00, 0.00"));
}

TEST_F(Places, OfAReceiptOfAnotherDay)
{
    EXPECT_THAT(
        Of({"cupom-fora-do-dia"},
           "UPDATE cupom_fiscal SET cont_crz = 4 WHERE cont_coo = 21;"
           "UPDATE cupom_fiscal SET data_hora_emissao = '2024-03-01 18:00:01' WHERE"
           " cont_coo = 11;"
           "UPDATE cupom_fiscal SET cont_crz = 2 WHERE cont_coo = 4"),
        ElementsAre(
            "cupom-fora-do-dia: COO 11 [COO 11 CRZ 0] cupom_fiscal 5 data_hora_emissao: none after 2024-03-01 18:00:00, 2024-03-01 18:00:01",
            "cupom-fora-do-dia: COO 4 [COO 4 CRZ 0] cupom_fiscal 2 data_hora_emissao: none before 2024-03-01 18:00:00, 2024-03-01 09:00:00",
            "cupom-fora-do-dia: COO 4 [COO 4 CRZ 0] cupom_fiscal 2 cont_crz: 1, 2",
            "cupom-fora-do-dia: COO 21 [COO 21 CRZ 0] cupom_fiscal 7 cont_crz: 3, 4"));
}

} // namespace
} // namespace bancada::conferencia_test

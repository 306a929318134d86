// Documents by their number, of one number that came twice, of rows that are lost.
#include <string>

#include <gmock/gmock.h>

#include "tests/bancada/relatorio/ShowTest.h"
#include "tests/support/EngineSteps.h"

namespace bancada::show_test
{
namespace
{

using ::testing::HasSubstr;
using ::testing::Not;

class DocumentoReaderShow : public Sample
{
  protected:
    void SetUp() override
    {
        Sample::SetUp();
        WriteSample();
    }
};

TEST_F(DocumentoReaderShow, ACooThatCameTwiceShowsBothWithTheirOwnRows)
{
    Write("INSERT INTO cupom_fiscal VALUES (102, 900, 40, '2028-01-02 10:00:00', '', '', ',',"
          " 'c2ln', 3, 3, 'V', 0, 'V', 0, 0, 0, ' ', 'N', 'N', 0, 0, ' ', ' ');"
          "INSERT INTO item_cupom_fiscal VALUES (1, 102, '9', 'Segunda volta', 1, 'F1', 'UN', 3,"
          " 'V', 0, 'V', 0, 0, 3, 0, 2, 'T', 'N', 0, 0);"
          "INSERT INTO pagamento_cupom VALUES (102, 77, 3, 1, '', 3, 'N', 0);");
    ShowCoo(102);
    const std::size_t second = text.find("02/01/2028 10:00:00");
    ASSERT_NE(second, std::string::npos);
    const std::string first = text.substr(0, second);
    const std::string secondPaper = text.substr(second);
    EXPECT_THAT(first, HasSubstr("15/03/2024 09:12:44       CCF:000051"));
    EXPECT_THAT(first, HasSubstr("004 556 Gás de cozinha\n"));
    EXPECT_THAT(first, HasSubstr("Dinheiro                                   30,00\n"));
    EXPECT_THAT(first, Not(HasSubstr("Segunda volta")));
    EXPECT_THAT(secondPaper, HasSubstr("001 9 Segunda volta\n"));
    EXPECT_THAT(secondPaper, HasSubstr("Cheque                                      3,00\n"));
    EXPECT_THAT(secondPaper, Not(HasSubstr("Dinheiro")));
    EXPECT_THAT(text, Not(HasSubstr("INCERTOS")));
}

TEST_F(DocumentoReaderShow, ANonFiscalReceiptThatSharesACooHasItsOwnPayments)
{
    Write("INSERT INTO cupom_nf VALUES (102, 40, 77, 1, '2028-01-02 10:00:00', 4, 4, 'V', 0, 'V',"
          " 0, 0, 'N', '', '', 0, 0);"
          "INSERT INTO item_cupom_nf VALUES (1, 102, 3, 4, 4, 'V', 0, 'V', 0, 0, 'N', 0, 0);"
          "INSERT INTO pagamento_cupom VALUES (102, 77, 4, 1, '', 3, 'N', 0);");
    ShowCoo(102);
    const std::size_t second = text.find("02/01/2028 10:00:00");
    ASSERT_NE(second, std::string::npos);
    EXPECT_THAT(text.substr(0, second), Not(HasSubstr("Cheque")));
    EXPECT_THAT(text.substr(second), HasSubstr("Cheque                                      4,00"));
    EXPECT_THAT(text.substr(second), Not(HasSubstr("Dinheiro")));
}

TEST_F(DocumentoReaderShow, RowsThatCannotBeToldApartAreSaidToBe)
{
    // The second receipt sold nothing, so that one run of items has two receipts to go to.
    Write("INSERT INTO cupom_fiscal VALUES (102, 900, 40, '2028-01-02 10:00:00', '', '', ',',"
          " ' ', 0, 0, 'V', 0, 'V', 0, 0, 0, ' ', 'S', 'N', 0, 0, ' ', ' ');");
    ShowCoo(102);
    const std::size_t second = text.find("02/01/2028 10:00:00");
    ASSERT_NE(second, std::string::npos);
    for (const std::string& papel : {text.substr(0, second), text.substr(second)}) {
        EXPECT_THAT(papel, HasSubstr("*** COO REPETIDO: LINHAS INCERTAS ***\n"));
        EXPECT_THAT(papel, HasSubstr("004 556 Gás de cozinha\n"));
    }
}

TEST_F(DocumentoReaderShow, AReceiptWhoseOpeningIsLostShowsWhatIsThere)
{
    Write("DELETE FROM cupom_fiscal WHERE cont_coo = 105");
    ShowCoo(105);
    EXPECT_EQ(result, SHOWN);
    EXPECT_THAT(text, HasSubstr("*** ABERTURA NÃO REGISTRADA ***\n"));
    EXPECT_THAT(text, HasSubstr("001 900 Forno elétrico\n"));
    EXPECT_THAT(text, HasSubstr("SOMA DOS ITENS R$                       1.240,00\n"));
    EXPECT_THAT(text, HasSubstr("Cheque                                    240,00\n"));
}

TEST_F(DocumentoReaderShow, ANonFiscalReceiptWhoseOpeningIsLostKeepsItsTimes)
{
    Write("DELETE FROM cupom_nf WHERE cont_coo = 108");
    ShowCoo(108);
    EXPECT_THAT(text, HasSubstr("15/03/2024 18:10:00       GNF:000004  COO:000108\n"));
    EXPECT_THAT(text, HasSubstr("*** ABERTURA NÃO REGISTRADA ***\n"));
    EXPECT_THAT(text, HasSubstr("001 Recarga de celular                     20,00\n"));
}

TEST_F(DocumentoReaderShow, ManyUncertainRowsStandUnderTheFirstDocumentAlone)
{
    std::string receipts;
    for (int i = 0; i < 300; ++i) {
        receipts += "INSERT INTO cupom_fiscal VALUES (102, 900, 40, '2028-01-02 10:00:00', '', '',"
                    " ',', ' ', 0, 0, 'V', 0, 'V', 0, 0, 0, ' ', 'S', 'N', 0, 0, ' ', ' ');";
    }
    Write(receipts);
    ShowCoo(102);
    const std::size_t second = text.find("02/01/2028 10:00:00");
    ASSERT_NE(second, std::string::npos);
    EXPECT_THAT(text.substr(0, second), HasSubstr("004 556 Gás de cozinha\n"));
    EXPECT_THAT(text.substr(0, second), HasSubstr("*** COO REPETIDO: LINHAS INCERTAS ***\n"));
    EXPECT_THAT(text.substr(0, second), Not(HasSubstr("VER O PRIMEIRO")));
    EXPECT_THAT(text.substr(second), Not(HasSubstr("Gás de cozinha")));
    EXPECT_THAT(text.substr(second), HasSubstr("*** COO REPETIDO: LINHAS INCERTAS ***\n"));
    EXPECT_THAT(text.substr(second), HasSubstr("*** VER O PRIMEIRO DOCUMENTO DESTE COO ***\n"));
}

class OneCooShow : public Sample
{
  protected:
    // So many receipts of each kind with their rows, and Z reductions, that all bear one number;
    // with `uncertain` the items do not say whose they are.
    void WriteRepeated(int times, bool uncertain)
    {
        Write("DELETE FROM cupom_fiscal; DELETE FROM item_cupom_fiscal; DELETE FROM cupom_nf;"
              "DELETE FROM item_cupom_nf; DELETE FROM outros_documentos; DELETE FROM reducao_z;"
              "DELETE FROM totalizador_reducao; DELETE FROM pagamento_cupom;"
              "CREATE TEMP TABLE vez AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1"
              " FROM n WHERE i < " +
              std::to_string(times) +
              ") SELECT i, datetime('2024-01-01', '+' || i || ' seconds') AS em FROM n;"
              "INSERT INTO cupom_fiscal (cont_coo, cont_crz, data_hora_emissao, valor_total,"
              " id_cancelado) SELECT 7, 2, em, 3, 'S' FROM vez;"
              "INSERT INTO item_cupom_fiscal (seq_item, cont_coo, descricao, valor_total) SELECT " +
              (uncertain ? "i" : "1") +
              ", 7, 'Item', 3 FROM vez;"
              "INSERT INTO pagamento_cupom SELECT 7, i, 3, 1, '', 1, 'N', 0 FROM vez;"
              "INSERT INTO cupom_nf (cont_coo, cont_crz, cont_gnf, data_hora_emissao)"
              " SELECT 7, 2, " +
              (uncertain ? "1" : "1000000 + i") +
              ", em FROM vez;"
              "INSERT INTO item_cupom_nf (seq_item, cont_coo, valor_total) SELECT 1, 7, 3 FROM vez;"
              "INSERT INTO pagamento_cupom SELECT 7, 1000000 + i, 3, 1, '', 1, 'N', 0 FROM vez;"
              "INSERT INTO outros_documentos SELECT 7, 1, 1, 0, 0, 1, em, em, tipo FROM vez,"
              " (SELECT 'CN' AS tipo UNION SELECT 'RZ');"
              "INSERT INTO reducao_z (cont_crz, cont_coo, data_hora_emissao) SELECT 1, 7, em"
              " FROM vez;"
              "INSERT INTO totalizador_reducao SELECT 1, " +
              (uncertain ? "'T1'" : "'Can-S'") + ", 3, 'S', 0 FROM vez; DROP TABLE temp.vez");
    }

    struct Cost {
        double steps;
        double bytes;
    };
    Cost CostOf(const ShowOptions& options, int times, bool uncertain)
    {
        WriteRepeated(times, uncertain);
        const EngineSteps steps;
        RunShow(options);
        EXPECT_EQ(result, SHOWN) << error;
        return {static_cast<double>(steps.Taken()), static_cast<double>(text.size())};
    }

    // What the second doubling adds, to what the first one does: 2 where the cost is linear.
    void ExpectLinear(const ShowOptions& options)
    {
        for (const bool uncertain : {false, true}) {
            const Cost once = CostOf(options, 50, uncertain);
            const Cost twice = CostOf(options, 100, uncertain);
            const Cost fourfold = CostOf(options, 200, uncertain);
            EXPECT_LT(fourfold.steps - twice.steps, 2.1 * (twice.steps - once.steps)) << uncertain;
            EXPECT_LT(fourfold.bytes - twice.bytes, 2.1 * (twice.bytes - once.bytes)) << uncertain;
        }
    }
};

TEST_F(OneCooShow, TheListGrowsWithTheRows)
{
    ExpectLinear({});
}

TEST_F(OneCooShow, ThePageGrowsWithTheRows)
{
    ShowOptions options;
    options.html = true;
    ExpectLinear(options);
}

TEST_F(OneCooShow, ItsDocumentsGrowWithTheRows)
{
    ShowOptions options;
    options.coo = 7;
    ExpectLinear(options);
}

TEST_F(OneCooShow, ItsReductionsGrowWithTheRows)
{
    ShowOptions options;
    options.crz = 1;
    ExpectLinear(options);
}

} // namespace
} // namespace bancada::show_test

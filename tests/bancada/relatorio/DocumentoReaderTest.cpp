// Documents by their number, of one number that came twice, of rows that are lost.
#include <string>

#include <gmock/gmock.h>

#include "tests/bancada/relatorio/ShowTest.h"

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

} // namespace
} // namespace bancada::show_test

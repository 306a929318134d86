// Receipts and other documents as on paper.
#include <string>

#include <gmock/gmock.h>

#include "tests/bancada/show_Amostra.h"

namespace bancada::show_test
{
namespace
{

using ::testing::HasSubstr;
using ::testing::Not;

class ShowCupom : public Amostra
{
  protected:
    void SetUp() override
    {
        Amostra::SetUp();
        GravaAmostra();
    }
};

TEST_F(ShowCupom, FiscalReceiptWholePaper)
{
    MostraCoo(102);
    EXPECT_EQ(resultado, SHOWN);
    EXPECT_EQ(erro, "");
    EXPECT_EQ(texto, R"(              Mercearia Bom Preço
      Bom Preço Comércio de Alimentos Ltda
  Rua das Flores, 100, Centro, São Paulo - SP
CNPJ: 12.345.678/0001-95
IE: 110.042.490.114
IM: 1234567
------------------------------------------------
15/03/2024 09:12:44       CCF:000051  COO:000102
                  CUPOM FISCAL
CNPJ/CPF consumidor: 123.456.789-09
NOME: José da Conceição
END: Av. Brasil, 1
------------------------------------------------
ITEM CÓDIGO DESCRIÇÃO
    QTD UN x VL UNIT(R$)  ST         VL ITEM(R$)
------------------------------------------------
001 7891000315507 Leite integral longa vida 1
litro
    2 UN x 4,99  01T18.00                   9,98
    DESCONTO 10,50%                        -1,05
    VALOR LÍQUIDO                           8,93
002 2000001 Maçã gala
    1,235 kg x 9,90  02T07.00              12,22
    ACRÉSCIMO                              +0,50
    VALOR LÍQUIDO                          12,72
003 555 Pilha
    1 UN x 7,50  F1                         7,50
    *** ITEM CANCELADO ***                 -7,50
004 556 Gás de cozinha
    2 UN x 4,605  N1                        9,21
    ACRÉSCIMO CANCELADO 1,00
------------------------------------------------
SUBTOTAL R$                                30,86
DESCONTO 5,00%                             -1,54
TOTAL R$                                   29,32
Dinheiro                                   30,00
TROCO R$                                    0,68
------------------------------------------------
CNPJ/CPF consumidor: 123.456.789-09
Obrigado pela preferência, volte sempre!
PDV Exemplo 2.1
ASSINATURA:
kX9mVb0cQ1nq6fYJ2yZk0r1mQ8yT5u7wA3sD4fG5hJ0=
------------------------------------------------
BANCADA REF-1 ECF-IF
VERSÃO: 01.00.00                        ECF: 003
FAB: BN0000000000000000001
          ESPELHO DO BANCO DE REGISTRO
                SEM VALOR FISCAL
)");
}

TEST_F(ShowCupom, CancelledReceiptIsMarked)
{
    MostraCoo(103);
    EXPECT_THAT(texto, HasSubstr("               *** CANCELADO ***\n"));
    EXPECT_THAT(texto, HasSubstr("               C A N C E L A D O\n"));
    EXPECT_THAT(texto, Not(HasSubstr("FECHAMENTO")));
}

TEST_F(ShowCupom, AReceiptWhoseClosingWasRejectedSaysSo)
{
    MostraCoo(104);
    EXPECT_THAT(texto, HasSubstr("TOTAL R$                                    0,00\n"
                                 "SOMA DOS ITENS R$                          32,10\n"
                                 "Dinheiro                                   32,10\n"
                                 "       *** FECHAMENTO NÃO REGISTRADO ***\n"));
}

TEST_F(ShowCupom, ApportionedDiscountInstalmentsAndReversal)
{
    MostraCoo(105);
    EXPECT_THAT(texto, HasSubstr("SUBTOTAL R$                             1.250,00\n"
                                 "DESCONTO (RATEADO NOS ITENS)              -10,00\n"
                                 "TOTAL R$                                1.240,00\n"
                                 "Cartão de crédito                       1.240,00\n"
                                 "    3 PARCELAS\n"
                                 "    NSU 004512\n"
                                 "    ESTORNADO                            -240,00\n"
                                 "Cheque                                    240,00\n"
                                 "    banco 001\n"
                                 "SOMA R$                                 1.240,00\n"));
    EXPECT_THAT(texto, HasSubstr("CNPJ/CPF consumidor: 12.345.678/0001-95\n"));
    EXPECT_THAT(texto, HasSubstr("CHAVE: CHAVE-105\n"));
}

TEST_F(ShowCupom, NonFiscalReceiptWithAPercentageWhoseTypeStaysV)
{
    MostraCoo(108);
    EXPECT_THAT(texto, HasSubstr("15/03/2024 18:10:00       GNF:000004  COO:000108\n"
                                 "             COMPROVANTE NÃO FISCAL\n"
                                 "               *** CANCELADO ***\n"
                                 "CNPJ/CPF consumidor: 987.654.321-00\n"
                                 "NOME: Ana Lúcia\n"
                                 "------------------------------------------------\n"
                                 "001 Recarga de celular                     20,00\n"
                                 "------------------------------------------------\n"
                                 "SUBTOTAL R$                                20,00\n"
                                 "DESCONTO 5,00%                             -1,00\n"
                                 "TOTAL R$                                   19,00\n"));
}

TEST_F(ShowCupom, AStalePercentageOfANonFiscalReceiptIsNotShown)
{
    // Five percent first, then two reais by value: the percentage stays in the row.
    Grava("UPDATE cupom_nf SET valor_desconto = 2, valor_total_cupom = 18 WHERE cont_coo = 108");
    MostraCoo(108);
    EXPECT_THAT(texto, HasSubstr("DESCONTO                                   -2,00\n"));
}

TEST_F(ShowCupom, FloatAndWithdrawalNeedNoProgrammedName)
{
    MostraCoo(101);
    EXPECT_THAT(texto, HasSubstr("001 FUNDO DE TROCO                        100,00\n"));
    MostraCoo(110);
    EXPECT_THAT(texto, HasSubstr("001 SANGRIA                                50,00\n"));
}

TEST_F(ShowCupom, UnprogrammedNamesAreNumbers)
{
    Grava("DELETE FROM meio_pagamento; DELETE FROM totalizador_nao_fiscal");
    MostraCoo(108);
    EXPECT_THAT(texto, HasSubstr("001 TOTALIZADOR 03                         20,00\n"));
    EXPECT_THAT(texto, HasSubstr("MEIO DE PAGAMENTO 01                       19,00\n"));
}

TEST_F(ShowCupom, OtherDocuments)
{
    MostraCoo(106);
    EXPECT_THAT(texto, HasSubstr("15/03/2024 17:31:00                   COO:000106\n"
                                 "         COMPROVANTE CRÉDITO OU DÉBITO\n"
                                 "FIM                          15/03/2024 17:31:20\n"));
    EXPECT_THAT(texto, HasSubstr("CDC                                         0001\n"));
    MostraCoo(107);
    EXPECT_THAT(texto, HasSubstr("RELATÓRIO GERENCIAL\n"));
    MostraCoo(109);
    EXPECT_THAT(texto, HasSubstr("CANCELAMENTO DE NÃO FISCAL\n"));
    MostraCoo(112);
    EXPECT_THAT(texto, HasSubstr("LEITURA X\n"));
}

TEST_F(ShowCupom, AReductionByItsCoo)
{
    MostraCoo(111);
    EXPECT_THAT(texto, HasSubstr("REDUÇÃO Z\n"));
    EXPECT_THAT(texto, HasSubstr("VENDA BRUTA DIÁRIA                      1.330,96\n"));
}

TEST_F(ShowCupom, ACooThatCameTwiceShowsBothWithTheirOwnRows)
{
    Grava("INSERT INTO cupom_fiscal VALUES (102, 900, 40, '2028-01-02 10:00:00', '', '', ',',"
          " 'c2ln', 3, 3, 'V', 0, 'V', 0, 0, 0, ' ', 'N', 'N', 0, 0, ' ', ' ');"
          "INSERT INTO item_cupom_fiscal VALUES (1, 102, '9', 'Segunda volta', 1, 'F1', 'UN', 3,"
          " 'V', 0, 'V', 0, 0, 3, 0, 2, 'T', 'N', 0, 0);"
          "INSERT INTO pagamento_cupom VALUES (102, 77, 3, 1, '', 3, 'N', 0);");
    MostraCoo(102);
    const std::size_t segundo = texto.find("02/01/2028 10:00:00");
    ASSERT_NE(segundo, std::string::npos);
    const std::string primeira = texto.substr(0, segundo);
    const std::string segunda = texto.substr(segundo);
    EXPECT_THAT(primeira, HasSubstr("15/03/2024 09:12:44       CCF:000051"));
    EXPECT_THAT(primeira, HasSubstr("004 556 Gás de cozinha\n"));
    EXPECT_THAT(primeira, HasSubstr("Dinheiro                                   30,00\n"));
    EXPECT_THAT(primeira, Not(HasSubstr("Segunda volta")));
    EXPECT_THAT(segunda, HasSubstr("001 9 Segunda volta\n"));
    EXPECT_THAT(segunda, HasSubstr("Cheque                                      3,00\n"));
    EXPECT_THAT(segunda, Not(HasSubstr("Dinheiro")));
    EXPECT_THAT(texto, Not(HasSubstr("INCERTOS")));
}

TEST_F(ShowCupom, ANonFiscalReceiptThatSharesACooHasItsOwnPayments)
{
    Grava("INSERT INTO cupom_nf VALUES (102, 40, 77, 1, '2028-01-02 10:00:00', 4, 4, 'V', 0, 'V',"
          " 0, 0, 'N', '', '', 0, 0);"
          "INSERT INTO item_cupom_nf VALUES (1, 102, 3, 4, 4, 'V', 0, 'V', 0, 0, 'N', 0, 0);"
          "INSERT INTO pagamento_cupom VALUES (102, 77, 4, 1, '', 3, 'N', 0);");
    MostraCoo(102);
    const std::size_t segundo = texto.find("02/01/2028 10:00:00");
    ASSERT_NE(segundo, std::string::npos);
    EXPECT_THAT(texto.substr(0, segundo), Not(HasSubstr("Cheque")));
    EXPECT_THAT(texto.substr(segundo),
                HasSubstr("Cheque                                      4,00"));
    EXPECT_THAT(texto.substr(segundo), Not(HasSubstr("Dinheiro")));
}

TEST_F(ShowCupom, RowsThatCannotBeToldApartAreSaidToBe)
{
    // The second receipt sold nothing, so that one run of items has two receipts to go to.
    Grava("INSERT INTO cupom_fiscal VALUES (102, 900, 40, '2028-01-02 10:00:00', '', '', ',',"
          " ' ', 0, 0, 'V', 0, 'V', 0, 0, 0, ' ', 'S', 'N', 0, 0, ' ', ' ');");
    MostraCoo(102);
    const std::size_t segundo = texto.find("02/01/2028 10:00:00");
    ASSERT_NE(segundo, std::string::npos);
    for (const std::string& papel : {texto.substr(0, segundo), texto.substr(segundo)}) {
        EXPECT_THAT(papel, HasSubstr("*** COO REPETIDO: LINHAS INCERTAS ***\n"));
        EXPECT_THAT(papel, HasSubstr("004 556 Gás de cozinha\n"));
    }
}

TEST_F(ShowCupom, AReceiptWhoseOpeningIsLostShowsWhatIsThere)
{
    Grava("DELETE FROM cupom_fiscal WHERE cont_coo = 105");
    MostraCoo(105);
    EXPECT_EQ(resultado, SHOWN);
    EXPECT_THAT(texto, HasSubstr("*** ABERTURA NÃO REGISTRADA ***\n"));
    EXPECT_THAT(texto, HasSubstr("001 900 Forno elétrico\n"));
    EXPECT_THAT(texto, HasSubstr("SOMA DOS ITENS R$                       1.240,00\n"));
    EXPECT_THAT(texto, HasSubstr("Cheque                                    240,00\n"));
}

TEST_F(ShowCupom, ANonFiscalReceiptWhoseOpeningIsLostKeepsItsTimes)
{
    Grava("DELETE FROM cupom_nf WHERE cont_coo = 108");
    MostraCoo(108);
    EXPECT_THAT(texto, HasSubstr("15/03/2024 18:10:00       GNF:000004  COO:000108\n"));
    EXPECT_THAT(texto, HasSubstr("*** ABERTURA NÃO REGISTRADA ***\n"));
    EXPECT_THAT(texto, HasSubstr("001 Recarga de celular                     20,00\n"));
}

TEST_F(ShowCupom, ATotalOfThreeDecimalsKeepsThem)
{
    Grava("UPDATE item_cupom_fiscal SET valor_total = 9.215 WHERE cont_coo = 102 AND seq_item = 4");
    MostraCoo(102);
    EXPECT_THAT(texto, HasSubstr("    2 UN x 4,605  N1                       9,215\n"));
}

TEST_F(ShowCupom, QuantityAndUnitPriceHaveTheDecimalsOfTheirSale)
{
    Grava("UPDATE item_cupom_fiscal SET quantidade = 12.48, casas_decimais_quantidade = 3,"
          " valor_unitario = 4.6, casas_decimais_valor = 3 WHERE cont_coo = 102 AND seq_item = 2");
    MostraCoo(102);
    EXPECT_THAT(texto, HasSubstr("    12,480 kg x 4,600  02T07.00 "));
    // Never fewer than the value has.
    Grava("UPDATE item_cupom_fiscal SET casas_decimais_quantidade = -7,"
          " casas_decimais_valor = 2 WHERE cont_coo = 102 AND seq_item = 4");
    MostraCoo(102);
    EXPECT_THAT(texto, HasSubstr("    2 UN x 4,605  N1 "));
}

TEST_F(ShowCupom, AnAmountThatIsNoNumberIsAQuestionMark)
{
    Grava("UPDATE cupom_fiscal SET valor_total = 'abc' WHERE cont_coo = 102");
    MostraCoo(102);
    EXPECT_EQ(resultado, SHOWN);
    EXPECT_THAT(texto, HasSubstr("TOTAL R$                                       ?\n"));
}

TEST_F(ShowCupom, TerminalControlsInTextsAreDisarmed)
{
    Grava("UPDATE item_cupom_fiscal SET descricao = 'a' || char(27) || '[2J' WHERE cont_coo = 102");
    MostraCoo(102);
    EXPECT_THAT(texto, Not(HasSubstr("\x1B")));
    EXPECT_THAT(texto, HasSubstr("001 7891000315507 a\xEF\xBF\xBD[2J\n"));
}

TEST_F(ShowCupom, ACooThatIsNotThere)
{
    MostraCoo(999);
    EXPECT_EQ(resultado, NOT_THERE);
    EXPECT_EQ(texto, "");
    EXPECT_EQ(erro, Banco() + ": no document has the COO 999\n");
}

} // namespace
} // namespace bancada::show_test

// Receipts and other documents as on paper.
#include <string>

#include <gmock/gmock.h>

#include "tests/bancada/relatorio/ShowTest.h"

namespace bancada::show_test
{
namespace
{

using ::testing::HasSubstr;
using ::testing::Not;

class DocumentoPrint : public Sample
{
  protected:
    void SetUp() override
    {
        Sample::SetUp();
        WriteSample();
    }
};

TEST_F(DocumentoPrint, FiscalReceiptWholePaper)
{
    ShowCoo(102);
    EXPECT_EQ(result, SHOWN);
    EXPECT_EQ(error, "");
    EXPECT_EQ(text, R"(              Mercearia Bom Preço
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

TEST_F(DocumentoPrint, CancelledReceiptIsMarked)
{
    ShowCoo(103);
    EXPECT_THAT(text, HasSubstr("               *** CANCELADO ***\n"));
    EXPECT_THAT(text, HasSubstr("               C A N C E L A D O\n"));
    EXPECT_THAT(text, Not(HasSubstr("FECHAMENTO")));
}

TEST_F(DocumentoPrint, AReceiptWhoseClosingWasRejectedSaysSo)
{
    ShowCoo(104);
    EXPECT_THAT(text, HasSubstr("TOTAL R$                                    0,00\n"
                                "SOMA DOS ITENS R$                          32,10\n"
                                "Dinheiro                                   32,10\n"
                                "       *** FECHAMENTO NÃO REGISTRADO ***\n"));
}

TEST_F(DocumentoPrint, ApportionedDiscountInstalmentsAndReversal)
{
    ShowCoo(105);
    EXPECT_THAT(text, HasSubstr("SUBTOTAL R$                             1.250,00\n"
                                "DESCONTO (RATEADO NOS ITENS)              -10,00\n"
                                "TOTAL R$                                1.240,00\n"
                                "Cartão de crédito                       1.240,00\n"
                                "    3 PARCELAS\n"
                                "    NSU 004512\n"
                                "    ESTORNADO                            -240,00\n"
                                "Cheque                                    240,00\n"
                                "    banco 001\n"
                                "SOMA R$                                 1.240,00\n"));
    EXPECT_THAT(text, HasSubstr("CNPJ/CPF consumidor: 12.345.678/0001-95\n"));
    EXPECT_THAT(text, HasSubstr("CHAVE: CHAVE-105\n"));
}

TEST_F(DocumentoPrint, NonFiscalReceiptWithAPercentageWhoseTypeStaysV)
{
    ShowCoo(108);
    EXPECT_THAT(text, HasSubstr("15/03/2024 18:10:00       GNF:000004  COO:000108\n"
                                "             COMPROVANTE NÃO FISCAL\n"
                                "               *** CANCELADO ***\n"
                                "FIM                          15/03/2024 18:11:00\n"
                                "CNPJ/CPF consumidor: 987.654.321-00\n"
                                "NOME: Ana Lúcia\n"
                                "------------------------------------------------\n"
                                "001 Recarga de celular                     20,00\n"
                                "------------------------------------------------\n"
                                "SUBTOTAL R$                                20,00\n"
                                "DESCONTO 5,00%                             -1,00\n"
                                "TOTAL R$                                   19,00\n"));
}

TEST_F(DocumentoPrint, AStalePercentageOfANonFiscalReceiptIsNotShown)
{
    // Five percent first, then two reais by value: the percentage stays in the row.
    Write("UPDATE cupom_nf SET valor_desconto = 2, valor_total_cupom = 18 WHERE cont_coo = 108");
    ShowCoo(108);
    EXPECT_THAT(text, HasSubstr("DESCONTO                                   -2,00\n"));
}

TEST_F(DocumentoPrint, FloatAndWithdrawalNeedNoProgrammedName)
{
    ShowCoo(101);
    EXPECT_THAT(text, HasSubstr("001 FUNDO DE TROCO                        100,00\n"));
    ShowCoo(110);
    EXPECT_THAT(text, HasSubstr("001 SANGRIA                                50,00\n"));
}

TEST_F(DocumentoPrint, UnprogrammedNamesAreNumbers)
{
    Write("DELETE FROM meio_pagamento; DELETE FROM totalizador_nao_fiscal");
    ShowCoo(108);
    EXPECT_THAT(text, HasSubstr("001 TOTALIZADOR 03                         20,00\n"));
    EXPECT_THAT(text, HasSubstr("MEIO DE PAGAMENTO 01                       19,00\n"));
}

// Its document's row has the end; the row of a Z of the same number, or of another document, not.
TEST_F(DocumentoPrint, TheEndOfAReductionStandsWithItsDocument)
{
    ShowCoo(111);
    EXPECT_THAT(text, Not(HasSubstr("FIM")));
    Write("UPDATE outros_documentos SET data_hora_fim_emissao = '2024-03-15 22:10:41'"
          " WHERE cont_coo = 111;"
          "INSERT INTO outros_documentos SELECT cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc,"
          " cont_crz, '2022-01-01 09:00:00', '2022-01-01 09:00:05', 'RZ' FROM outros_documentos"
          " WHERE cont_coo = 111");
    ShowCoo(111);
    EXPECT_THAT(text, HasSubstr("REDUÇÃO Z\n"
                                "FIM                          15/03/2024 22:10:41\n"));
}

TEST_F(DocumentoPrint, OtherDocuments)
{
    ShowCoo(106);
    EXPECT_THAT(text, HasSubstr("15/03/2024 17:31:00                   COO:000106\n"
                                "         COMPROVANTE CRÉDITO OU DÉBITO\n"
                                "FIM                          15/03/2024 17:31:20\n"));
    EXPECT_THAT(text, HasSubstr("CDC                                         0001\n"));
    ShowCoo(107);
    EXPECT_THAT(text, HasSubstr("RELATÓRIO GERENCIAL\n"));
    ShowCoo(109);
    EXPECT_THAT(text, HasSubstr("CANCELAMENTO DE NÃO FISCAL\n"));
    ShowCoo(112);
    EXPECT_THAT(text, HasSubstr("LEITURA X\n"));
}

TEST_F(DocumentoPrint, AReductionByItsCoo)
{
    ShowCoo(111);
    EXPECT_THAT(text, HasSubstr("REDUÇÃO Z\n"));
    EXPECT_THAT(text, HasSubstr("VENDA BRUTA DIÁRIA                      1.330,96\n"));
}

TEST_F(DocumentoPrint, ATotalOfThreeDecimalsKeepsThem)
{
    Write("UPDATE item_cupom_fiscal SET valor_total = 9.215 WHERE cont_coo = 102 AND seq_item = 4");
    ShowCoo(102);
    EXPECT_THAT(text, HasSubstr("    2 UN x 4,605  N1                       9,215\n"));
}

TEST_F(DocumentoPrint, QuantityAndUnitPriceHaveTheDecimalsOfTheirSale)
{
    Write("UPDATE item_cupom_fiscal SET quantidade = 12.48, casas_decimais_quantidade = 3,"
          " valor_unitario = 4.6, casas_decimais_valor = 3 WHERE cont_coo = 102 AND seq_item = 2");
    ShowCoo(102);
    EXPECT_THAT(text, HasSubstr("    12,480 kg x 4,600  02T07.00 "));
    // Never fewer than the value has.
    Write("UPDATE item_cupom_fiscal SET casas_decimais_quantidade = -7,"
          " casas_decimais_valor = 2 WHERE cont_coo = 102 AND seq_item = 4");
    ShowCoo(102);
    EXPECT_THAT(text, HasSubstr("    2 UN x 4,605  N1 "));
}

TEST_F(DocumentoPrint, WhatIsNoNumberIsPrintedAsItStands)
{
    Write(
        "UPDATE cupom_fiscal SET valor_total = 'abc', valor_subtotal = NULL,"
        " valor_troco = 9223372036854775807, cont_ccf = 'x' || char(0) || char(27),"
        " id_cancelado = NULL, nome_consumidor = NULL WHERE cont_coo = 102;"
        "UPDATE item_cupom_fiscal SET valor_total = x'00FF' WHERE seq_item = 1 AND cont_coo = 102");
    ShowCoo(102);
    EXPECT_EQ(result, SHOWN);
    EXPECT_THAT(text, HasSubstr("TOTAL R$                                     abc\n"));
    EXPECT_THAT(text, HasSubstr("SUBTOTAL R$                                 NULL\n"));
    EXPECT_THAT(text, HasSubstr("TROCO R$                     9223372036854775807\n"));
    EXPECT_THAT(text, HasSubstr("CCF:x\xEF\xBF\xBD\xEF\xBF\xBD  COO:000102\n"));
    EXPECT_THAT(text, HasSubstr("           *** CANCELADO: NULL ***\n"));
    EXPECT_THAT(text, HasSubstr("NOME: NULL\n"));
    EXPECT_THAT(text, HasSubstr("    VALOR LÍQUIDO                        X'00FF'\n"));
}

TEST_F(DocumentoPrint, TerminalControlsInTextsAreDisarmed)
{
    Write("UPDATE item_cupom_fiscal SET descricao = 'a' || char(27) || '[2J' WHERE cont_coo = 102");
    ShowCoo(102);
    EXPECT_THAT(text, Not(HasSubstr("\x1B")));
    EXPECT_THAT(text, HasSubstr("001 7891000315507 a\xEF\xBF\xBD[2J\n"));
}

TEST_F(DocumentoPrint, AReductionWithItsTimesUncrossed)
{
    ShowCrz(1);
    EXPECT_EQ(result, SHOWN);
    const std::size_t inicio = text.find("15/03/2024 22:10:03");
    ASSERT_NE(inicio, std::string::npos);
    EXPECT_EQ(text.substr(inicio), R"(15/03/2024 22:10:03                   COO:000111
                   REDUÇÃO Z
          MOVIMENTO DO DIA: 15/03/2024
------------------------------------------------
Contador de Reduções Z (CRZ)                0001
Contador de Reinícios (CRO)                  001
Contador de Não Fiscais (GNF)             000006
------------------------------------------------
TOTALIZADOR GERAL                       1.330,96
VENDA BRUTA DIÁRIA                      1.330,96
------------------------------------------------
ICMS
  Base de cálculo                       1.052,75
  Imposto                                 188,90
  Descontos                                10,59
  Acréscimos                                0,50
  Cancelamentos                            15,50
ISSQN
  Base de cálculo                         248,00
  Imposto                                  12,40
  Descontos                                 2,00
  Acréscimos                                0,00
  Cancelamentos                             0,00
------------------------------------------------
             TOTALIZADORES FISCAIS
01T18.00                                1.033,03
    Imposto                               185,94
02T07.00                                   12,72
    Imposto                                 0,89
03S05.00                                  248,00
    Imposto                                12,40
F1                                          0,00
N1                                          9,21
DT                                         10,59
DS                                          2,00
AT                                          0,50
AS                                          0,00
Can-T                                      15,50
Can-S                                       0,00
------------------------------------------------
           TOTALIZADORES NÃO FISCAIS
FUNDO DE TROCO                            100,00
SANGRIA                                    50,00
------------------------------------------------
               MEIOS DE PAGAMENTO
01 Dinheiro                                62,10
02 Cartão de crédito                    1.000,00
03 Cheque                                 240,00
21 TROCO                                    0,68
------------------------------------------------
Tempo operacional                       14:09:58
Tempo emitindo documentos fiscais       00:30:34
------------------------------------------------
BANCADA REF-1 ECF-IF
VERSÃO: 01.00.00                        ECF: 003
FAB: BN0000000000000000001
          ESPELHO DO BANCO DE REGISTRO
                SEM VALOR FISCAL
)");
}

} // namespace
} // namespace bancada::show_test

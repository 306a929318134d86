// The losses of a firmware log: which findings they are and which they explain.
#include "bancada/conferencia/LossIndex.h"

#include "tests/bancada/conferencia/CheckedDatabase.h"

#include <gmock/gmock.h>

namespace bancada::conferencia_test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class LossIndexTest : public CheckedDatabase
{
};

void AddRejected(Losses& losses, int command, const std::string& error,
                 const std::string& statement)
{
    losses.rejected.push_back({1, "2024-03-01 08:00:00", command, error, statement});
}

const char CURRENCY[] = "INSERT INTO moeda (num_ecf, data_hora_gravacao, simbolo_moeda) VALUES "
                        "(1,2024-03-01 08:00:00'R$')";
const char ADDITIONAL[] =
    "UPDATE cupom_fiscal SET assinatura_documento = 'c2ln', valor_subtotal = 8.00, valor_total = "
    "8.00, valor_troco = 2.00, texto_suplementar = 'Obrigado', texto_complementar = '', chave_cupom "
    "= '1' id_cupom_adicional = 'S' WHERE cont_coo = 11";

TEST_F(LossIndexTest, TheClosingOfAnAdditionalReceiptAndACurrencyAreNoFaults)
{
    Execute(CLEAN_DAYS);
    Losses losses;
    AddRejected(losses, 5, "near \"id_cupom_adicional\": syntax error", ADDITIONAL);
    AddRejected(losses, 98, "near \"08\": syntax error", CURRENCY);
    Check(&losses);
    EXPECT_THAT(faults, IsEmpty());
    EXPECT_THAT(
        notes,
        ElementsAre("perda-prevista: cupom_fiscal cont_coo 11: UPDATE of cupom_fiscal by "
                    "command 5 was rejected: near \"id_cupom_adicional\": syntax error",
                    "perda-prevista: moeda ?: INSERT of moeda by command 98 was rejected: "
                    "near \"08\": syntax error",
                    "cupom-adicional: COO 11: paid 10.00, closing rejected as that of an "
                    "additional receipt",
                    "documento-sem-linha: GNF 3: reversal of a voucher (COO 6) before COO 10"));
}

TEST_F(LossIndexTest, WithALogAClosingThatItDoesNotNameWasNone)
{
    Execute(CLEAN_DAYS);
    const Losses losses;
    EXPECT_THAT(Faults(&losses), ElementsAre("cupom-aberto: COO 11: paid 10.00, closing neither in "
                                             "the row nor in the log"));
}

TEST_F(LossIndexTest, ALostItemExplainsWhatItLeaves)
{
    Execute(CLEAN_DAYS);
    Execute("DELETE FROM item_cupom_fiscal WHERE cont_coo = 3 AND seq_item = 1;"
            "UPDATE item_cupom_fiscal SET rowid = rowid - 1");
    Losses losses;
    AddRejected(losses, 5, "syntax error", ADDITIONAL);
    AddRejected(losses, 157, "near \"AGUA\": syntax error",
                "INSERT INTO item_cupom_fiscal (seq_item, cont_coo, cod_item, descricao) VALUES "
                "(1,3,'789','PAO D'AGUA')");
    EXPECT_THAT(
        Faults(&losses),
        ElementsAre(
            "linha-perdida: item_cupom_fiscal cont_coo 3, seq_item 1: INSERT of "
            "item_cupom_fiscal by command 157 was rejected: near \"AGUA\": syntax error",
            "item-ausente: COO 3: no row of item 1 (explained)",
            "cupom-itens: COO 3: live items 5.48, subtotal 15.48, total 15.48 (explained)"));
    EXPECT_EQ(summary.faults, 3);
    EXPECT_EQ(summary.explained, 2);
}

TEST_F(LossIndexTest, ALostReceiptExplainsItsDay)
{
    Execute(CLEAN_DAYS);
    Execute("DELETE FROM cupom_fiscal WHERE cont_coo = 4;"
            "UPDATE cupom_fiscal SET rowid = rowid - 1 WHERE rowid > 1");
    Losses losses;
    AddRejected(losses, 5, "syntax error", ADDITIONAL);
    AddRejected(losses, 1, "near \"AGUA\": syntax error",
                "INSERT INTO cupom_fiscal (cont_coo, cont_ccf, cont_crz, data_hora_emissao, "
                "cpf_cnpj_consumidor, nome_consumidor, chave_cupom) VALUES (4,2,1,'2024-03-01 "
                "09:00:00','','JOANA D'ARC',' ')");
    EXPECT_THAT(
        Faults(&losses),
        ElementsAre("linha-perdida: cupom_fiscal cont_coo 4, cont_ccf 2, cont_crz 1: INSERT of "
                    "cupom_fiscal by command 1 was rejected: near \"AGUA\": syntax error",
                    "z-aliquota: CRZ 1 01S05.00: 5.40, valid items 0.00 (explained)",
                    "z-aliquota: CRZ 1 01T18.00: 26.10, valid items 18.00 (explained)",
                    "z-registrado: CRZ 1: gross sales 68.48, items of the day 48.48 (explained)",
                    "z-registrado: CRZ 1: discounts 2.50, items of the day 0.00 (explained)",
                    "z-vendas: CRZ 1: net tax totalizers 36.98, valid fiscal receipts 23.48 "
                    "(explained)",
                    "z-meio: CRZ 1 means 2: took in 13.50, payments 0.00 (explained)",
                    "z-troco: CRZ 1: payment means 93.50 less change 26.52, valid receipts 53.48 "
                    "(explained)",
                    "ccf-ausente: CCF 2: no fiscal receipt (COO 4) before COO 7 (explained)",
                    "item-sem-cupom: COO 4: 3 items without their receipt (explained)",
                    "pagamento-sem-cupom: COO 4: 1 payments without their receipt (explained)"));
}

TEST_F(LossIndexTest, SoDoesALostNonFiscalReceipt)
{
    Execute(CLEAN_DAYS);
    Execute("DELETE FROM cupom_nf WHERE cont_coo = 10;"
            "UPDATE cupom_nf SET rowid = rowid - 1 WHERE rowid > 2");
    Losses losses;
    AddRejected(losses, 5, "syntax error", ADDITIONAL);
    AddRejected(losses, 62, "near \"AGUA\": syntax error",
                "INSERT INTO cupom_nf (cont_coo, cont_crz, cont_gnf, num_ecf, data_hora_emissao, "
                "nome_consumidor) VALUES (10,1,4,1,'2024-03-01 11:00:00','JOANA D'AGUA')");
    EXPECT_THAT(
        Faults(&losses),
        ElementsAre(
            "linha-perdida: cupom_nf cont_coo 10, cont_gnf 4, cont_crz 1: INSERT of cupom_nf by command 62 was rejected: near \"AGUA\": syntax error",
            "z-nao-fiscais: CRZ 1: non-fiscal totalizers 210.00, valid non-fiscal receipts 180.00 (explained)",
            "z-meio: CRZ 1 means 1: took in 80.00, payments 30.00 (explained)",
            "z-troco: CRZ 1: payment means 93.50 less change 26.52, valid receipts 36.98 (explained)",
            "item-nf-sem-cupom: COO 10: 1 items without their receipt (explained)",
            "pagamento-sem-cupom: COO 10: 1 payments without their receipt (explained)",
            "documento-sem-nf: COO 10: 1 document rows without their non-fiscal receipt (explained)",
            "z-nao-fiscais: CRZ 1 DOACAO: 30.00, valid non-fiscal items 0.00 (explained)"));
}

// The payment of COO 10 that holds an apostrophe is in its Z and has no row.
const char LOST_PAYMENT[] =
    "INSERT INTO pagamento_cupom (cont_coo, cont_gnf, valor_pagamento, num_parcelas, "
    "info_adicional, indice_meio_pagamento, id_estornado, valor_estornado) VALUES "
    "(10,4,7.00,1,'D'AGUA, 1',1,'N',0)";
const char WITH_LOST_PAYMENT[] =
    "UPDATE meio_pagamento_reducao SET valor_acumulado = 87.00 WHERE cont_crz = 1 AND"
    " indice_meio_pagamento = 1;"
    "UPDATE meio_pagamento_reducao SET valor_acumulado = 33.52 WHERE cont_crz = 1 AND"
    " indice_meio_pagamento = 21";
const char LOST_PAYMENT_TOLD[] =
    "linha-perdida: pagamento_cupom cont_coo 10, cont_gnf 4, indice_meio_pagamento 1: INSERT of "
    "pagamento_cupom by command 4 was rejected: syntax error";

TEST_F(LossIndexTest, ALostPaymentExplainsItsAmount)
{
    Execute(CLEAN_DAYS);
    Execute(WITH_LOST_PAYMENT);
    Losses losses;
    AddRejected(losses, 5, "syntax error", ADDITIONAL);
    AddRejected(losses, 4, "syntax error", LOST_PAYMENT);
    EXPECT_THAT(Faults(&losses),
                ElementsAre(LOST_PAYMENT_TOLD, "z-meio: CRZ 1 means 1: took in 87.00, payments "
                                               "80.00 (explained)"));
}

// What a text of the row holds is none of its values.
TEST_F(LossIndexTest, ALaterTextIsNoPartOfTheAmounts)
{
    Losses losses;
    AddRejected(losses, 4, "syntax error",
                "INSERT INTO pagamento_cupom (cont_coo, cont_gnf, valor_pagamento, num_parcelas, "
                "info_adicional, indice_meio_pagamento, id_estornado, valor_estornado) VALUES "
                "(10,4,7.00,1,'D'AGUA,12,3',1,'N',0)");
    AddRejected(losses, 5, "syntax error",
                "INSERT INTO item_cupom_fiscal (seq_item, cont_coo, cod_item, descricao, "
                "quantidade, aliquota, un_medida, valor_unitario, tipo_acrescimo, "
                "valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, "
                "valor_total, casas_decimais_quantidade, casas_decimais_valor, "
                "id_arred_trunc_valor, id_cancelado, perc_acrescimo, perc_desconto) VALUES "
                "(2,10,'7','D'AGUA,12,'01T07.00','12',1.375,'F1','UN',3.99,'V',0,'V',0,0,5.48,3,2,"
                "'T','N',0,0)");
    const conferencia::LossIndex index(losses);
    const conferencia::LostRows& lost = index.Of(10);
    ASSERT_EQ(lost.pagamentos.size(), 1U);
    EXPECT_EQ(lost.pagamentos[0].meio, 1);
    EXPECT_EQ(lost.pagamentos[0].valor.Units(), 700);
    ASSERT_EQ(lost.itens.size(), 1U);
    EXPECT_EQ(lost.itens[0].aliquota, "F1");
    EXPECT_EQ(lost.itens[0].total.Units(), 548);
    EXPECT_THAT(index.Coos(), ElementsAre(10));
    EXPECT_FALSE(index.IsVagueCoo(10));
}

// Five reais of COO 3: its item, its total, its payment.
TEST_F(LossIndexTest, WhatItDoesNotAccountForIsNotExplained)
{
    Execute(CLEAN_DAYS);
    Execute(WITH_LOST_PAYMENT);
    Execute("UPDATE item_cupom_fiscal SET valor_unitario = 2.50, valor_total = 5.00"
            " WHERE cont_coo = 3 AND seq_item = 1;"
            "UPDATE cupom_fiscal SET valor_subtotal = 10.48, valor_total = 10.48"
            " WHERE cont_coo = 3;"
            "UPDATE pagamento_cupom SET valor_pagamento = 15.00 WHERE cont_coo = 3");
    Losses losses;
    AddRejected(losses, 5, "syntax error", ADDITIONAL);
    AddRejected(losses, 4, "syntax error", LOST_PAYMENT);
    EXPECT_THAT(
        Faults(&losses),
        ElementsAre(LOST_PAYMENT_TOLD, "z-aliquota: CRZ 1 01T18.00: 26.10, valid items 21.10",
                    "z-registrado: CRZ 1: gross sales 68.48, items of the day 63.48",
                    "z-vendas: CRZ 1: net tax totalizers 36.98, valid fiscal receipts 31.98",
                    "z-meio: CRZ 1 means 1: took in 87.00, payments 75.00; with the lost rows: "
                    "took in 87.00, payments 82.00",
                    "z-troco: CRZ 1: payment means 100.50 less change 33.52, valid receipts "
                    "61.98"));
    EXPECT_EQ(summary.explained, 0);
}

TEST_F(LossIndexTest, SoItIsWithALostItem)
{
    Execute(CLEAN_DAYS);
    Execute("DELETE FROM item_cupom_fiscal WHERE cont_coo = 3 AND seq_item = 2;"
            "UPDATE item_cupom_fiscal SET rowid = rowid - 1 WHERE rowid > 2");
    Losses losses;
    AddRejected(losses, 5, "syntax error", ADDITIONAL);
    AddRejected(losses, 157, "near \"AGUA\": syntax error",
                "INSERT INTO item_cupom_fiscal (seq_item, cont_coo, cod_item, descricao, "
                "quantidade, aliquota, un_medida, valor_unitario, tipo_acrescimo, "
                "valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, "
                "valor_total, casas_decimais_quantidade, casas_decimais_valor, "
                "id_arred_trunc_valor, id_cancelado, perc_acrescimo, perc_desconto) VALUES "
                "(2,3,'7','COPO D'AGUA, 2',1.375,'F1','UN',3.99,'V',0,'V',0,0,5.48,3,2,'T','N',0,"
                "0)");
    const char told[] = "linha-perdida: item_cupom_fiscal cont_coo 3, seq_item 2: INSERT of "
                        "item_cupom_fiscal by command 157 was rejected: near \"AGUA\": syntax "
                        "error";
    EXPECT_THAT(
        Faults(&losses),
        ElementsAre(told,
                    "cupom-itens: COO 3: live items 10.00, subtotal 15.48, total 15.48 (explained)",
                    "z-aliquota: CRZ 1 F1: 5.48, valid items 0.00 (explained)",
                    "z-registrado: CRZ 1: gross sales 68.48, items of the day 63.00 (explained)"));
    Execute("UPDATE item_cupom_fiscal SET valor_unitario = 4.50, valor_total = 9.00"
            " WHERE cont_coo = 3 AND seq_item = 1");
    EXPECT_THAT(
        Faults(&losses),
        ElementsAre(told,
                    "cupom-itens: COO 3: live items 9.00, subtotal 15.48, total 15.48; with the "
                    "lost rows: live items 14.48, subtotal 15.48, total 15.48",
                    "z-aliquota: CRZ 1 01T18.00: 26.10, valid items 25.10",
                    "z-aliquota: CRZ 1 F1: 5.48, valid items 0.00 (explained)",
                    "z-registrado: CRZ 1: gross sales 68.48, items of the day 62.00; with the "
                    "lost rows: gross sales 68.48, items of the day 67.48"));
}

// A statement that does not tell its amounts may account for any.
TEST_F(LossIndexTest, AStatementWithoutAmountsExplainsItsDay)
{
    Execute(CLEAN_DAYS);
    Execute("UPDATE item_cupom_fiscal SET valor_unitario = 4.50, valor_total = 9.00"
            " WHERE cont_coo = 3 AND seq_item = 1");
    Losses losses;
    AddRejected(losses, 5, "syntax error", ADDITIONAL);
    AddRejected(losses, 3, "syntax error", "UPDATE item_cupom_fiscal SET x WHERE cont_coo = 3");
    Check(&losses);
    EXPECT_EQ(summary.faults, summary.explained + 1);
}

TEST_F(LossIndexTest, ALostRowOfAnotherDocumentExplainsNothing)
{
    Execute(CLEAN_DAYS);
    Execute("UPDATE cupom_fiscal SET valor_troco = 4.51 WHERE cont_coo = 3");
    Losses losses;
    AddRejected(losses, 5, "syntax error", ADDITIONAL);
    AddRejected(losses, 4, "syntax error",
                "INSERT INTO pagamento_cupom (cont_coo, cont_gnf) VALUES (15,'D'AGUA')");
    EXPECT_THAT(
        Faults(&losses),
        ElementsAre("linha-perdida: pagamento_cupom cont_coo 15: INSERT of pagamento_cupom by "
                    "command 4 was rejected: syntax error",
                    "cupom-pagamentos: COO 3: payments 20.00 less change 4.51, total 15.48"));
}

TEST_F(LossIndexTest, ALostCommandIsAFault)
{
    Execute(CLEAN_DAYS);
    Losses losses;
    AddRejected(losses, 5, "syntax error", ADDITIONAL);
    losses.lost.push_back({1, "2024-03-01 09:00:00", "disk I/O error"});
    EXPECT_THAT(Faults(&losses), ElementsAre("comando-perdido: 2024-03-01 09:00:00: the rows of a "
                                             "command are lost: disk I/O error"));
}

// What becomes of a rejected statement of COO 7: an amount that is known, or any.
struct LostOf7 {
    bool vague;
    leitura::Amount itens, pagamentos;
};

LostOf7 Lost(const std::string& statement)
{
    Losses losses;
    AddRejected(losses, 1, "syntax error", statement);
    const conferencia::LossIndex index(losses);
    EXPECT_TRUE(index.HasCoo(7)) << statement;
    EXPECT_EQ(index.Of(7).IsEmpty(), index.IsVagueCoo(7)) << statement;
    return {index.IsVagueCoo(7), index.Of(7).Itens(), index.Of(7).Pagamentos()};
}

std::string LostItemOf7(const std::string& code, const std::string& total,
                        const std::string& end = ")")
{
    return "INSERT INTO item_cupom_fiscal (seq_item, cont_coo, cod_item) VALUES "
           "(1,7,'c','d'e',1," +
           code + ",'UN',1,'V',0,'V',0,0," + total + ",2,2,'T','N',0,0" + end;
}

std::string LostPagamentoOf7(const std::string& valor, const std::string& meio)
{
    return "INSERT INTO pagamento_cupom (cont_coo, cont_ccf, valor_pagamento) VALUES (7,1," +
           valor + ",'a','b'," + meio + ",1,'N')";
}

TEST_F(LossIndexTest, AnItemTellsItsTotalWhereItsTextsLeaveItInItsPlace)
{
    EXPECT_EQ(Lost(LostItemOf7("'01T18.00'", "12.50")).itens.Units(), 1250);
    EXPECT_EQ(Lost(LostItemOf7("'01T18.00'", "12.500")).itens.Units(), 1250);
    EXPECT_EQ(Lost(LostItemOf7("'F1'", "12")).itens.Units(), 1200);
    for (const char* total : {"", "1x.00", "12.5000", "1234567890123456", "-1.00"}) {
        EXPECT_TRUE(Lost(LostItemOf7("'F1'", total)).vague) << total;
    }
    for (const char* code : {"'F9'", "F1", "'F1", "F1'", "''", ""}) {
        EXPECT_TRUE(Lost(LostItemOf7(code, "1.00")).vague) << code;
    }
    EXPECT_TRUE(Lost(LostItemOf7("'F1'", "1.00", "")).vague) << "cut short";
    EXPECT_TRUE(Lost("INSERT INTO item_cupom_fiscal (seq_item, cont_coo) VALUES (1,7)").vague);
}

TEST_F(LossIndexTest, APaymentTellsItsValue)
{
    EXPECT_EQ(Lost(LostPagamentoOf7("3.00", "2")).pagamentos.Units(), 300);
    EXPECT_TRUE(Lost(LostPagamentoOf7("x", "2")).vague);
    EXPECT_TRUE(Lost(LostPagamentoOf7("3.00", "'2'")).vague);
    EXPECT_TRUE(Lost("INSERT INTO pagamento_cupom (cont_coo, cont_ccf) VALUES (7,1)").vague);
}

} // namespace
} // namespace bancada::conferencia_test

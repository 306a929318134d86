// The rejected statements of a firmware log: which row each should have written, and what it
// explains.
#include "tests/bancada/check_Banco.h"

#include <gmock/gmock.h>

namespace bancada
{
namespace
{

using testing::AnyOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

std::string Linha(const std::string& sql)
{
    const Perda perda = LeStatement(sql);
    return perda.operacao + " " + perda.tabela + " " + perda.Chave();
}

TEST(LeStatement, KeysBeforeAText)
{
    EXPECT_EQ(
        Linha("INSERT INTO item_cupom_fiscal (seq_item, cont_coo, cod_item, descricao) VALUES "
              "(2,120,'789','PAO D'AGUA')"),
        "INSERT item_cupom_fiscal cont_coo 120, seq_item 2");
}

TEST(LeStatement, KeysBehindATextWithCommasAndApostrophes)
{
    EXPECT_EQ(
        Linha("INSERT INTO pagamento_cupom (cont_coo, cont_gnf, valor_pagamento, num_parcelas,"
              " info_adicional, indice_meio_pagamento, id_estornado, valor_estornado) VALUES "
              "(120,7,10.50,2,'D'AGUA, 3, 4',3,'N',0)"),
        "INSERT pagamento_cupom cont_coo 120, cont_gnf 7, indice_meio_pagamento 3");
}

TEST(LeStatement, NoBlankBeforeTheColumns)
{
    EXPECT_EQ(Linha("INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, "
                    "id_fiscal, valor_imposto) VALUES('D'AGUA',9,0.00,'N',0)"),
              "INSERT totalizador_reducao cont_crz 9");
}

TEST(LeStatement, AStatementCutShort)
{
    EXPECT_EQ(Linha("INSERT INTO cupom_fiscal (cont_coo, cont_ccf, cont_crz, data_hora_emissao) "
                    "VALUES (120,45,1"),
              "INSERT cupom_fiscal cont_coo 120, cont_ccf 45");
    EXPECT_EQ(Linha("INSERT INTO cupom_fiscal"), "INSERT cupom_fiscal ?");
    EXPECT_EQ(Linha("UPDATE cupom_fiscal SET assinatura_documento = 'x"), "UPDATE cupom_fiscal ?");
}

TEST(LeStatement, TheConditionOfAnUpdate)
{
    EXPECT_EQ(Linha("UPDATE item_cupom_fiscal SET id_cancelado = 'S' where cont_coo = '123' and "
                    "seq_item = '2'"),
              "UPDATE item_cupom_fiscal cont_coo 123, seq_item 2");
    EXPECT_EQ(Linha("UPDATE pagamento_cupom SET valor_estornado = 1.00 WHERE cont_coo = 5 AND "
                    "indice_meio_pagamento = 2"),
              "UPDATE pagamento_cupom cont_coo 5, indice_meio_pagamento 2");
    EXPECT_EQ(Linha("UPDATE totalizador_nao_fiscal SET descricao='x WHERE num_indice=4' WHERE "
                    "num_indice=5"),
              "UPDATE totalizador_nao_fiscal num_indice 5");
}

TEST(LeStatement, AnyOtherText)
{
    EXPECT_EQ(Linha(""), "  ?");
    EXPECT_EQ(Linha("DROP TABLE cupom_fiscal"), "  ?");
}

const char CURRENCY[] = "INSERT INTO moeda (num_ecf, data_hora_gravacao, simbolo_moeda) VALUES "
                        "(1,2024-03-01 08:00:00'R$')";
const char ADDITIONAL[] =
    "UPDATE cupom_fiscal SET assinatura_documento = 'c2ln', valor_subtotal = 8.00, valor_total = "
    "8.00, valor_troco = 2.00, texto_suplementar = 'Obrigado', texto_complementar = '', chave_cupom "
    "= '1' id_cupom_adicional = 'S' WHERE cont_coo = 11";

TEST_F(BancoConferido, TheClosingOfAnAdditionalReceiptAndACurrencyAreNoFaults)
{
    Escreve(DIAS_LIMPOS);
    Perdas perdas;
    perdas.Rejeitado(5, "near \"id_cupom_adicional\": syntax error", ADDITIONAL);
    perdas.Rejeitado(98, "near \"08\": syntax error", CURRENCY);
    EXPECT_THAT(Confere(&perdas), IsEmpty());
    EXPECT_THAT(Confere(&perdas, "perda-prevista"),
                ElementsAre("perda-prevista: cupom_fiscal cont_coo 11: UPDATE of cupom_fiscal by "
                            "command 5 was rejected: near \"id_cupom_adicional\": syntax error",
                            "perda-prevista: moeda ?: INSERT of moeda by command 98 was rejected: "
                            "near \"08\": syntax error"));
}

TEST_F(BancoConferido, WithALogAClosingThatItDoesNotNameWasNone)
{
    Escreve(DIAS_LIMPOS);
    const Perdas perdas;
    EXPECT_THAT(Confere(&perdas),
                ElementsAre("cupom-aberto: COO 11: paid 10.00, closing neither in "
                            "the row nor in the log"));
}

TEST_F(BancoConferido, ALostItemExplainsWhatItLeaves)
{
    Escreve(DIAS_LIMPOS);
    Escreve("DELETE FROM item_cupom_fiscal WHERE cont_coo = 3 AND seq_item = 1");
    Perdas perdas;
    perdas.Rejeitado(5, "syntax error", ADDITIONAL);
    perdas.Rejeitado(
        157, "near \"AGUA\": syntax error",
        "INSERT INTO item_cupom_fiscal (seq_item, cont_coo, cod_item, descricao) VALUES "
        "(1,3,'789','PAO D'AGUA')");
    EXPECT_THAT(
        Confere(&perdas),
        ElementsAre(
            "linha-perdida: item_cupom_fiscal cont_coo 3, seq_item 1: INSERT of "
            "item_cupom_fiscal by command 157 was rejected: near \"AGUA\": syntax error",
            "item-ausente: COO 3: no row of item 1 (explained)",
            "cupom-itens: COO 3: live items 5.48, subtotal 15.48, total 15.48 (explained)"));
    EXPECT_EQ(m_resumo.faltas, 3);
    EXPECT_EQ(m_resumo.explicadas, 2);
}

TEST_F(BancoConferido, ALostReceiptExplainsItsDay)
{
    Escreve(DIAS_LIMPOS);
    Escreve("DELETE FROM cupom_fiscal WHERE cont_coo = 4");
    Perdas perdas;
    perdas.Rejeitado(5, "syntax error", ADDITIONAL);
    perdas.Rejeitado(1, "near \"AGUA\": syntax error",
                     "INSERT INTO cupom_fiscal (cont_coo, cont_ccf, cont_crz, data_hora_emissao, "
                     "cpf_cnpj_consumidor, nome_consumidor, chave_cupom) VALUES (4,2,1,'2024-03-01 "
                     "09:00:00','','JOANA D'ARC',' ')");
    const std::vector<std::string> achados = Confere(&perdas);
    EXPECT_THAT(achados, Each(AnyOf(StartsWith("linha-perdida: "), EndsWith(" (explained)"))));
    EXPECT_THAT(achados, Contains(StartsWith("z-vendas: CRZ 1: ")));
    EXPECT_THAT(achados, Contains(StartsWith("ccf-ausente: CCF 2: ")));
    EXPECT_THAT(achados, Not(Contains(StartsWith("coo-ausente"))));
}

TEST_F(BancoConferido, ALostRowOfAnotherDocumentExplainsNothing)
{
    Escreve(DIAS_LIMPOS);
    Escreve("UPDATE cupom_fiscal SET valor_troco = 4.51 WHERE cont_coo = 3");
    Perdas perdas;
    perdas.Rejeitado(5, "syntax error", ADDITIONAL);
    perdas.Rejeitado(4, "syntax error",
                     "INSERT INTO pagamento_cupom (cont_coo, cont_gnf) VALUES (15,'D'AGUA')");
    EXPECT_THAT(
        Confere(&perdas, "cupom-pagamentos"),
        ElementsAre("cupom-pagamentos: COO 3: payments 20.00 less change 4.51, total 15.48"));
}

TEST_F(BancoConferido, ALostCommandIsAFault)
{
    Escreve(DIAS_LIMPOS);
    Perdas perdas;
    perdas.Rejeitado(5, "syntax error", ADDITIONAL);
    perdas.ComandoPerdido("2024-03-01 09:00:00", "disk I/O error");
    EXPECT_THAT(Confere(&perdas), ElementsAre("comando-perdido: 2024-03-01 09:00:00: the rows of a "
                                              "command are lost: disk I/O error"));
}

} // namespace
} // namespace bancada

// The row that a rejected statement should have written, read out of the statement.
#include "bancada/log/RejectedRow.h"

#include <gtest/gtest.h>
#include <string>

using namespace bancada;

namespace
{

std::string Row(const std::string& sql)
{
    const RejectedRow row = ReadRejectedRow(sql);
    return row.operation + " " + row.table + " " + row.KeyText();
}

TEST(RejectedRowTest, KeysBeforeAText)
{
    EXPECT_EQ(Row("INSERT INTO item_cupom_fiscal (seq_item, cont_coo, cod_item, descricao) VALUES "
                  "(2,120,'789','PAO D'AGUA')"),
              "INSERT item_cupom_fiscal cont_coo 120, seq_item 2");
}

TEST(RejectedRowTest, KeysBehindATextWithCommasAndApostrophes)
{
    EXPECT_EQ(Row("INSERT INTO pagamento_cupom (cont_coo, cont_gnf, valor_pagamento, num_parcelas,"
                  " info_adicional, indice_meio_pagamento, id_estornado, valor_estornado) VALUES "
                  "(120,7,10.50,2,'D'AGUA, 3, 4',3,'N',0)"),
              "INSERT pagamento_cupom cont_coo 120, cont_gnf 7, indice_meio_pagamento 3");
}

// Values count from both ends: a comma in a text that stands between them moves none of the others.
TEST(RejectedRowTest, ATextThatLooksLikeValues)
{
    EXPECT_EQ(Row("INSERT INTO pagamento_cupom (cont_coo, cont_gnf, valor_pagamento, num_parcelas,"
                  " info_adicional, indice_meio_pagamento, id_estornado, valor_estornado) VALUES "
                  "(120,7,10.50,2,'AUT,12,34',3,'N',0)"),
              "INSERT pagamento_cupom cont_coo 120, cont_gnf 7, indice_meio_pagamento 3");
    EXPECT_EQ(Row("INSERT INTO item_cupom_fiscal (seq_item, cont_coo, cod_item, descricao) VALUES "
                  "(2,120,'7,12,9','PAO,12,')"),
              "INSERT item_cupom_fiscal cont_coo 120, seq_item 2");
}

TEST(RejectedRowTest, NoBlankBeforeTheColumns)
{
    EXPECT_EQ(Row("INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, "
                  "id_fiscal, valor_imposto) VALUES('D'AGUA',9,0.00,'N',0)"),
              "INSERT totalizador_reducao cont_crz 9");
}

TEST(RejectedRowTest, AStatementCutShort)
{
    EXPECT_EQ(Row("INSERT INTO cupom_fiscal (cont_coo, cont_ccf, cont_crz, data_hora_emissao) "
                  "VALUES (120,45,1"),
              "INSERT cupom_fiscal cont_coo 120, cont_ccf 45");
    EXPECT_EQ(Row("INSERT INTO cupom_fiscal"), "INSERT cupom_fiscal ?");
    EXPECT_EQ(Row("UPDATE cupom_fiscal SET assinatura_documento = 'x"), "UPDATE cupom_fiscal ?");
}

TEST(RejectedRowTest, TheConditionOfAnUpdate)
{
    EXPECT_EQ(Row("UPDATE item_cupom_fiscal SET id_cancelado = 'S' where cont_coo = '123' and "
                  "seq_item = '2'"),
              "UPDATE item_cupom_fiscal cont_coo 123, seq_item 2");
    EXPECT_EQ(Row("UPDATE pagamento_cupom SET valor_estornado = 1.00 WHERE cont_coo = 5 AND "
                  "indice_meio_pagamento = 2"),
              "UPDATE pagamento_cupom cont_coo 5, indice_meio_pagamento 2");
    EXPECT_EQ(Row("UPDATE totalizador_nao_fiscal SET descricao='x WHERE num_indice=4' WHERE "
                  "num_indice=5"),
              "UPDATE totalizador_nao_fiscal num_indice 5");
}

TEST(RejectedRowTest, AnyOtherText)
{
    EXPECT_EQ(Row(""), "  ?");
    EXPECT_EQ(Row("DROP TABLE cupom_fiscal"), "  ?");
}

TEST(RejectedRowTest, WhatIsAlwaysRejected)
{
    EXPECT_TRUE(ReadRejectedRow("INSERT INTO moeda (num_ecf, data_hora_gravacao, simbolo_moeda) "
                                "VALUES (1,2024-03-01 08:00:00'R$')")
                    .expected);
    const std::string closing = "UPDATE cupom_fiscal SET chave_cupom = '1'";
    const std::string receipt = " id_cupom_adicional = 'S' WHERE cont_coo = 11";
    EXPECT_TRUE(ReadRejectedRow(closing + receipt).expected);
    EXPECT_FALSE(ReadRejectedRow(closing + "," + receipt).expected);
    EXPECT_FALSE(ReadRejectedRow("UPDATE moeda SET simbolo_moeda = 'R$'").expected);
    EXPECT_FALSE(ReadRejectedRow("UPDATE cupom_nf SET chave_cupom = '1'" + receipt).expected);
}

TEST(RejectedRowTest, AValueThatIsNoNumberIsNoKey)
{
    const RejectedRow row = ReadRejectedRow("UPDATE cupom_fiscal SET x = 1 WHERE cont_coo = 4x");
    EXPECT_EQ(row.Value("cont_coo"), std::nullopt);
    EXPECT_EQ(ReadRejectedRow("UPDATE cupom_fiscal SET x = 1 WHERE cont_coo = 4").Value("cont_coo"),
              4);
    // Longer than any counter: 19 digits might not fit.
    EXPECT_EQ(Row("UPDATE t SET x = 1 WHERE cont_coo = 999999999999999999"),
              "UPDATE t cont_coo 999999999999999999");
    EXPECT_EQ(Row("UPDATE t SET x = 1 WHERE cont_coo = 1000000000000000000"), "UPDATE t ?");
}

} // namespace

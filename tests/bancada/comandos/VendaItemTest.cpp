// Sale of an item, from a tape line to the database.
#include "tests/bancada/comandos/ComandoTest.h"

#include <gmock/gmock.h>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ComandoVendaItem : public ProgrammedComandoTest
{
};

TEST_F(ComandoVendaItem, PlainSaleKeepsTheDecimalsAsWritten)
{
    Run(R"({"cmd":"abre_cupom"})");
    Run(R"({"cmd":"vende_item","codigo":"7","descricao":"PAO D'OURO","quantidade":"1.500",)"
        R"("unidade":"KG","valor_unitario":"5.99","tributacao":"T","indice":1})");
    Run(R"({"cmd":"vende_item","codigo":"8","descricao":"AZEITE","quantidade":"2",)"
        R"("valor_unitario":"3.335","tributacao":"F","indice":1,"arredonda":true})");
    EXPECT_THAT(Rows("SELECT seq_item, cont_coo, cod_item, descricao, quantidade, aliquota, "
                     "un_medida, valor_unitario, valor_total, casas_decimais_quantidade, "
                     "casas_decimais_valor, id_arred_trunc_valor FROM item_cupom_fiscal"),
                ElementsAre("1|1|7|PAO D`OURO|1.5|01T18.00|KG|5.99|8.98|3|2|T",
                            "2|1|8|AZEITE|2|F1|UN|3.335|6.67|0|3|A"));
}

TEST_F(ComandoVendaItem, DetailedSaleWritesAServiceRateWithTheLetterT)
{
    Run(R"({"cmd":"abre_cupom"})");
    Run(R"({"cmd":"vende_item_detalhado","codigo":"9","descricao":"CONSERTO","quantidade":"1",)"
        R"("valor_unitario":"50.00","tributacao":"S","indice":2})");
    EXPECT_THAT(Rows("SELECT seq_item, descricao, aliquota, valor_total FROM item_cupom_fiscal"),
                ElementsAre("1|CONSERTO|02T05.00|50"));
}

TEST_F(ComandoVendaItem, DetailedSaleWithAnApostropheLosesItsRowAndSellsAllTheSame)
{
    Run(R"({"cmd":"abre_cupom"})");
    Run(R"({"cmd":"vende_item_detalhado","codigo":"9","descricao":"GELEIA D'AMORA",)"
        R"("quantidade":"1","valor_unitario":"50.00","tributacao":"T","indice":1})");
    EXPECT_THAT(Rows("SELECT * FROM item_cupom_fiscal"), IsEmpty());
    EXPECT_EQ(database.Counts().statementsRejected, 1);
    EXPECT_EQ(registro.GetMemoria().cupom.itens.size(), 1u);
}

} // namespace

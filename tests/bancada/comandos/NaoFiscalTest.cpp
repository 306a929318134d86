// Non-fiscal receipts, withdrawals and floats, from a tape line to the database.
#include "tests/bancada/comandos/ComandoTest.h"

#include <gmock/gmock.h>

namespace
{

using ::testing::ElementsAre;

class ComandoNaoFiscal : public ProgrammedComandoTest
{
};

TEST_F(ComandoNaoFiscal, NonFiscalReceipt)
{
    Run(R"({"cmd":"abre_cnf","cpf_cnpj":"52998224725","nome":"MARIA"})");
    Run(R"({"cmd":"vende_item_nf","totalizador":3,"valor":"15.00"})");
    Run(R"({"cmd":"efetua_pagamento","meio":1,"valor":"20.00"})");
    Run(R"({"cmd":"fecha_cupom_nf"})");
    EXPECT_THAT(Rows("SELECT cont_coo, cont_crz, cont_gnf, data_hora_emissao, valor_subtotal, "
                     "valor_total_cupom, nome_consumidor, cpf_cnpj_consumidor FROM cupom_nf"),
                ElementsAre("1|1|1|2024-03-04 08:00:06|15|15|MARIA|52998224725"));
    EXPECT_THAT(Rows("SELECT seq_item, cont_coo, indice_totalizador_nf, valor_total, "
                     "valor_total_liquido FROM item_cupom_nf"),
                ElementsAre("1|1|3|15|15"));
    EXPECT_THAT(Rows("SELECT cont_coo, cont_gnf, valor_pagamento FROM pagamento_cupom"),
                ElementsAre("1|1|20"));
    EXPECT_THAT(Rows("SELECT cont_coo, data_hora_inicio_emissao, data_hora_fim_emissao, "
                     "id_tipo_documento FROM outros_documentos"),
                ElementsAre("1|2024-03-04 08:00:06|2024-03-04 08:00:09|CN"));
}

TEST_F(ComandoNaoFiscal, AdjustmentsAndCancellationsOnANonFiscalReceipt)
{
    Run(R"({"cmd":"abre_cnf"})");
    Run(R"({"cmd":"vende_item_nf","totalizador":3,"valor":"15.00"})");
    Run(R"({"cmd":"vende_item_nf","totalizador":3,"valor":"40.00"})");
    Run(R"({"cmd":"vende_item_nf","totalizador":3,"valor":"7.00"})");
    Run(R"({"cmd":"efetua_desc_acres_item","operacao":"desconto","tipo":"percentual",)"
        R"("valor":"10","item":1})");
    Run(R"({"cmd":"efetua_desc_acres_item","operacao":"acrescimo","tipo":"valor",)"
        R"("valor":"2.00","item":2})");
    Run(R"({"cmd":"cancela_desc_acres_item","operacao":"acrescimo","item":2})");
    Run(R"({"cmd":"cancela_item","item":3})");
    Run(R"({"cmd":"efetua_desc_acres_subtotal","operacao":"acrescimo","tipo":"valor",)"
        R"("valor":"3.00"})");
    Run(R"({"cmd":"cancela_desc_acres_subtotal","operacao":"acrescimo"})");
    Run(R"({"cmd":"cancela_cupom_em_emissao"})");
    EXPECT_THAT(Rows("SELECT seq_item, valor_total, valor_total_liquido, perc_desconto, "
                     "valor_desconto, valor_acrescimo, valor_canc_acrescimo, id_cancelado "
                     "FROM item_cupom_nf"),
                ElementsAre("1|15|13.5|10|1.5|0|0|N", "2|40|40|0|0|0|2|N", "3|7|7|0|0|0|0|S"));
    EXPECT_THAT(Rows("SELECT valor_acrescimo, valor_canc_acrescimo, id_cancelado FROM cupom_nf"),
                ElementsAre("0|3|S"));
}

TEST_F(ComandoNaoFiscal, FloatAndWithdrawal)
{
    Run(R"({"cmd":"sangria","operacao":"fundo_troco","valor":"100.00"})");
    EXPECT_THAT(Rows("SELECT count(*) FROM pagamento_cupom"), ElementsAre("0")); // as required
    EXPECT_EQ(Refused(R"({"cmd":"sangria","operacao":"fundo_troco","valor":"1.00","meio":2})"),
              "Meio de Pagamento 2 gives no change: a float is not put in it");
    Run(R"({"cmd":"sangria","operacao":"sangria","valor":"30.50"})");
    EXPECT_THAT(Rows("SELECT cont_coo, cont_gnf, valor_subtotal, valor_total_cupom FROM cupom_nf"),
                ElementsAre("1|1|100|100", "2|2|30.5|30.5"));
    EXPECT_THAT(Rows("SELECT seq_item, cont_coo, indice_totalizador_nf, valor_total_liquido, "
                     "tipo_desconto FROM item_cupom_nf"),
                ElementsAre("1|1|1|100|NULL", "1|2|2|30.5|NULL"));
    EXPECT_THAT(Rows(DOCUMENTOS), ElementsAre("1|1|0|0|1|CN", "2|2|0|0|1|CN"));
}

} // namespace

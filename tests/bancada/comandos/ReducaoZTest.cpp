// The Z reduction, from a tape line to the database.
#include "tests/bancada/comandos/ComandoTest.h"

#include <gmock/gmock.h>

namespace
{

using ::testing::ElementsAre;

class ComandoReducaoZ : public ProgrammedComandoTest
{
};

TEST_F(ComandoReducaoZ, ZReduction)
{
    EmiteCupom();
    Run(R"({"cmd":"reducao_z"})");
    EXPECT_THAT(Rows("SELECT cont_crz, data_movimento, cont_coo, cont_cro, valor_gt, valor_vb, "
                     "valor_base_icms, valor_icms FROM reducao_z"),
                ElementsAre("1|2024-03-04 00:00:00|2|0|28.98|28.98|28.98|5.21"));
    EXPECT_THAT(Rows("SELECT totalizador, valor_base_calculo, id_fiscal, valor_imposto FROM "
                     "totalizador_reducao"),
                ElementsAre("01T18.00|28.98|S|5.21", "02S05.00|0|S|0", "F1|0|S|0", "DT|0|S|0",
                            "DS|0|S|0", "AT|0|S|0", "AS|0|S|0", "Can-T|0|S|0", "Can-S|0|S|0",
                            "FUNDO DE TROCO|0|N|0", "SANGRIA|0|N|0", "RECARGA|0|N|0"));
    EXPECT_THAT(Rows("SELECT indice_meio_pagamento, descricao_meio_pagamento, valor_acumulado "
                     "FROM meio_pagamento_reducao"),
                ElementsAre("1|DINHEIRO|30", "2|CARTAO|0", "21|TROCO|1.02"));
    EXPECT_THAT(Rows(DOCUMENTOS), ElementsAre("2|0|0|0|1|RZ"));
}

} // namespace

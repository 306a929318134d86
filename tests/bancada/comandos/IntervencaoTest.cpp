// The intervention modes, from a tape line to the database.
#include "tests/bancada/comandos/ComandoTest.h"

#include <gmock/gmock.h>

namespace
{

using ::testing::ElementsAre;

class ComandoIntervencao : public ProgrammedComandoTest
{
};

TEST_F(ComandoIntervencao, InterventionModeL)
{
    Run(R"({"cmd":"entrada_mil_interno"})");
    Run(R"({"cmd":"saida_mil_interno"})");
    EXPECT_THAT(Rows("SELECT cont_cro, data_hora_intervencao, id_tipo_intervencao FROM "
                     "intervencao"),
                ElementsAre("0|2024-03-04 08:00:06|L"));
    EXPECT_THAT(Rows(DOCUMENTOS), ElementsAre("1|0|0|0|1|LX", "2|0|0|0|1|LX"));
    EXPECT_EQ(registro.Contador_Get(COUNTER_CRO), 0);
}

TEST_F(ComandoIntervencao, InterventionModeTIsARestartOfOperation)
{
    Run(R"({"cmd":"entrada_mit_interno"})");
    Run(R"({"cmd":"saida_mit_interno"})");
    EXPECT_THAT(Rows("SELECT cont_cro, id_tipo_intervencao FROM intervencao"), ElementsAre("0|T"));
    EXPECT_THAT(Rows(DOCUMENTOS), ElementsAre("1|0|0|0|1|LX"));
    EXPECT_EQ(registro.Contador_Get(COUNTER_CRO), 1);
}

} // namespace

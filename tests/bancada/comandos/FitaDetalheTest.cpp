// Reprints, from a tape line to the database.
#include "tests/bancada/comandos/ComandoTest.h"

#include <gmock/gmock.h>

namespace
{

using ::testing::ElementsAre;

class ComandoFitaDetalhe : public ProgrammedComandoTest
{
};

TEST_F(ComandoFitaDetalhe, EveryReprintHasItsOwnNumber)
{
    EmiteCupom();
    Run(R"({"cmd":"reimprime_mfd","coo_inicial":1,"coo_final":1})");
    Run(R"({"cmd":"reimprime_mfd","coo_inicial":1,"coo_final":2})");
    EXPECT_THAT(Rows("SELECT cont_cfd, data_hora_emissao, coo_inicial, coo_final FROM "
                     "fita_detalhe"),
                ElementsAre("1|2024-03-04 08:00:11|1|1", "2|2024-03-04 08:00:12|1|2"));
    EXPECT_EQ(registro.Contador_Get(COUNTER_CFD), 2);
}

} // namespace

// Programming of the register's identity, from a tape line to the database.
#include "tests/bancada/comandos/ComandoTest.h"

#include <gmock/gmock.h>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ComandoIdentidade : public ProgrammedComandoTest
{
};

TEST_F(ComandoIdentidade, RegisterIdentityAndTillNumber)
{
    Run(R"({"cmd":"programa_sequencia_ecf","numero":2})");
    Run(R"({"cmd":"programa_nr_serie","marca":"BANCADA","modelo":"R1","tipo":"ECF-IF",)"
        R"("num_serie":"BN01"})");
    Run(R"({"cmd":"programa_sequencia_ecf","numero":5})");
    EXPECT_THAT(Rows("SELECT num_ecf, num_serie, marca, modelo, tipo, num_caixa FROM dados_ecf"),
                ElementsAre("1|BN01|BANCADA|R1|ECF-IF|5"));
    EXPECT_THAT(Rows("SELECT num_ecf, versao FROM versao_sb"), ElementsAre("1|01.00.00"));
}

TEST_F(ComandoIdentidade, CurrencyStatementIsAlwaysRejected)
{
    Run(R"({"cmd":"programa_moeda","simbolo":"R$"})");
    EXPECT_THAT(Rows("SELECT * FROM moeda"), IsEmpty());
    EXPECT_EQ(database.Counts().statementsRejected, 1);
    EXPECT_EQ(registro.GetMemoria().ecf.simboloMoeda, "R$");
}

} // namespace

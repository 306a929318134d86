// Readings, from a tape line to the database.
#include "tests/bancada/comandos/ComandoTest.h"

#include <gmock/gmock.h>

namespace
{

using ::testing::ElementsAre;

class ComandoLeitura : public ProgrammedComandoTest
{
};

TEST_F(ComandoLeitura, ReadingsTakeANumberUnlessTheyGoToAFile)
{
    Run(R"({"cmd":"leitura_x"})");
    Run(R"({"cmd":"leitura_x","midia":"arquivo"})");
    Run(R"({"cmd":"leitura_x","midia":"arquivo_dll"})");
    Run(R"({"cmd":"leitura_mf"})");
    EXPECT_THAT(Rows(DOCUMENTOS), ElementsAre("1|0|0|0|1|LX", "2|0|0|0|1|LX", "3|0|0|0|1|MF"));
}

} // namespace

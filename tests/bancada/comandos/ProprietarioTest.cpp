// Programming of the register's owner, from a tape line to the database.
#include "tests/bancada/comandos/ComandoTest.h"

#include <gmock/gmock.h>

namespace
{

using ::testing::ElementsAre;

class ComandoProprietario : public ProgrammedComandoTest
{
};

TEST_F(ComandoProprietario, OwnerIsOneRow)
{
    Run(R"({"cmd":"programa_usuario","razao_social":"FLOR LTDA","nome_fantasia":"FLOR",)"
        R"("endereco":"RUA A, 1"})");
    Run(R"({"cmd":"programa_cnpj_ie_im","cnpj":"11222333000181","ie":"12","im":"34","uf":"SP"})");
    EXPECT_THAT(Rows("SELECT seq_usuario, endereco, nome_fantasia, razao_social, cnpj, ie, im, "
                     "uf, data_hora_gravacao, cont_cro, valor_gt FROM dados_usuario"),
                ElementsAre("1|RUA A, 1|FLOR|FLOR LTDA|11222333000181|12|34|SP|"
                            "2024-03-04 08:00:06|0|0"));
}

TEST_F(ComandoProprietario, WrongCheckDigitsAreRefused)
{
    EXPECT_EQ(Refused(R"({"cmd":"programa_cnpj_ie_im","cnpj":"11222333000182","ie":"","im":"",)"
                      R"("uf":"SP"})"),
              "the CNPJ 11222333000182 is wrong");
}

} // namespace

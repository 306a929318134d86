// Opening of a fiscal receipt, from a tape line to the database.
#include "tests/bancada/comandos/ComandoTest.h"

#include <gmock/gmock.h>

namespace
{

using ::testing::ElementsAre;

class ComandoAberturaCupom : public ProgrammedComandoTest
{
};

TEST_F(ComandoAberturaCupom, OpeningWritesTheReceiptAndItsConsumer)
{
    Run(R"({"cmd":"abre_cupom","cpf_cnpj":"52998224725","nome":"MARIA","endereco":"RUA D'AGUA"})");
    EXPECT_THAT(Rows("SELECT cont_coo, cont_ccf, cont_crz, data_hora_emissao, cpf_cnpj_consumidor, "
                     "nome_consumidor, endereco_consumidor, id_cancelado FROM cupom_fiscal"),
                ElementsAre("1|1|1|2024-03-04 08:00:06|52998224725|MARIA|RUA DAGUA,|N"));
}

TEST_F(ComandoAberturaCupom, AConsumerWithWrongCheckDigitsIsRefused)
{
    EXPECT_EQ(Refused(R"({"cmd":"abre_cupom","cpf_cnpj":"52998224726"})"),
              "the CPF 52998224726 is wrong");
}

} // namespace

// Vouchers and management reports, from a tape line to the database.
#include "tests/bancada/comandos/ComandoTest.h"

#include <gmock/gmock.h>

namespace
{

using ::testing::ElementsAre;

class ComandoComprovante : public ProgrammedComandoTest
{
};

TEST_F(ComandoComprovante, VoucherAndItsReversal)
{
    AbreCupomAndVende();
    Run(R"({"cmd":"efetua_pagamento","meio":2,"valor":"28.98"})");
    Run(R"({"cmd":"fecha_cupom"})");
    EXPECT_EQ(Refused(R"({"cmd":"abre_ccd","meio":2,"coo":9})"),
              "document 9 is not the receipt issued last, which is 1");
    Run(R"({"cmd":"abre_ccd","meio":2,"coo":1})");
    Run(R"({"cmd":"fecha_ccd_gerencial"})");
    Run(R"({"cmd":"abre_estorno_ccd"})");
    Run(R"({"cmd":"fecha_ccd_gerencial"})");
    EXPECT_THAT(Rows(DOCUMENTOS), ElementsAre("2|1|0|1|1|CC"));
    EXPECT_THAT(Rows("SELECT data_hora_inicio_emissao, data_hora_fim_emissao "
                     "FROM outros_documentos"),
                ElementsAre("2024-03-04 08:00:12|2024-03-04 08:00:13"));
    EXPECT_EQ(registro.Contador_Get(COUNTER_COO), 3);
}

TEST_F(ComandoComprovante, ManagementReport)
{
    Run(R"({"cmd":"abre_gerencial"})");
    Run(R"({"cmd":"fecha_ccd_gerencial"})");
    EXPECT_THAT(Rows(DOCUMENTOS), ElementsAre("1|1|1|0|1|RG"));
}

} // namespace

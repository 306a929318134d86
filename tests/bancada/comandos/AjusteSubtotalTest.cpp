// Discounts and surcharges on the subtotal, from a tape line to the database.
#include "tests/bancada/comandos/ComandoTest.h"

#include <gmock/gmock.h>

namespace
{

using ::testing::ElementsAre;

class ComandoAjusteSubtotal : public ProgrammedComandoTest
{
};

TEST_F(ComandoAjusteSubtotal, SubtotalAdjustmentAndItsCancellation)
{
    AbreCupomAndVende();
    Run(R"({"cmd":"efetua_desc_acres_subtotal","operacao":"acrescimo","tipo":"percentual",)"
        R"("valor":"10"})");
    const char* const cupom = "SELECT tipo_acrescimo, perc_acrescimo, valor_acrescimo, "
                              "valor_canc_acrescimo FROM cupom_fiscal";
    EXPECT_THAT(Rows(cupom), ElementsAre("P|10|2.89|0"));
    Run(R"({"cmd":"cancela_desc_acres_subtotal","operacao":"acrescimo"})");
    EXPECT_THAT(Rows(cupom), ElementsAre("P|10|0|2.89"));
}

} // namespace

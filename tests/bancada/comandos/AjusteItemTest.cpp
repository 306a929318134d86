// Discounts and surcharges on an item, from a tape line to the database.
#include "tests/bancada/comandos/ComandoTest.h"

#include <gmock/gmock.h>

namespace
{

using ::testing::ElementsAre;

class ComandoAjusteItem : public ProgrammedComandoTest
{
};

TEST_F(ComandoAjusteItem, ItemAdjustmentsAndTheirCancellation)
{
    AbreCupomAndVende();
    Run(R"({"cmd":"efetua_desc_acres_item","operacao":"desconto","tipo":"percentual",)"
        R"("valor":"10.50"})");
    Run(R"({"cmd":"efetua_desc_acres_item","operacao":"acrescimo","tipo":"valor",)"
        R"("valor":"1.00","item":1})");
    const char* const itens =
        "SELECT seq_item, tipo_desconto, perc_desconto, valor_desconto, tipo_acrescimo, "
        "valor_acrescimo, valor_canc_acrescimo, valor_total FROM item_cupom_fiscal";
    // 10.50 % of 8.98 is 0.9429, truncated.
    EXPECT_THAT(Rows(itens), ElementsAre("1|V|0|0|V|1|0|21", "2|P|10.5|0.94|V|0|0|8.04"));
    Run(R"({"cmd":"cancela_desc_acres_item","operacao":"desconto","item":2})");
    Run(R"({"cmd":"cancela_desc_acres_item","operacao":"acrescimo","item":1})");
    EXPECT_THAT(Rows(itens), ElementsAre("1|V|0|0|V|0|1|20", "2|P|10.5|0|V|0|0|8.98"));
}

} // namespace

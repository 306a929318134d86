// Payments and their reversal, from a tape line to the database.
#include "tests/bancada/comandos/ComandoTest.h"

#include <gmock/gmock.h>

namespace
{

using ::testing::ElementsAre;

class ComandoPagamento : public ProgrammedComandoTest
{
};

TEST_F(ComandoPagamento, PaymentsCarryInstalmentsAndInformation)
{
    AbreCupomAndVende();
    Run(R"({"cmd":"efetua_pagamento","meio":2,"valor":"20.00","parcelas":3,"info":"NSU 7"})");
    Run(R"({"cmd":"efetua_pagamento","meio":1,"valor":"10"})");
    EXPECT_THAT(Rows("SELECT cont_coo, cont_gnf, valor_pagamento, num_parcelas, info_adicional, "
                     "indice_meio_pagamento, id_estornado, valor_estornado FROM pagamento_cupom"),
                ElementsAre("1|0|20|3|NSU 7|2|N|0", "1|0|10|1||1|N|0"));
}

TEST_F(ComandoPagamento, ReversingAPaymentMarksItAndAddsTheOther)
{
    AbreCupomAndVende();
    Run(R"({"cmd":"efetua_pagamento","meio":2,"valor":"20.00"})");
    Run(R"({"cmd":"estorna_meio_pagamento","origem":2,"destino":1,"valor":"20.00",)"
        R"("parcelas":2,"info":"TROCA"})");
    EXPECT_THAT(Rows("SELECT valor_pagamento, num_parcelas, info_adicional, "
                     "indice_meio_pagamento, id_estornado, valor_estornado FROM pagamento_cupom"),
                ElementsAre("20|1||2|S|20", "20|2|TROCA|1|N|0"));
}

} // namespace

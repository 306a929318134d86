// Entering and leaving the intervention modes.
#include "tests/bancada/registro/RegistroTest.h"

namespace bancada
{
namespace
{

class RegistroIntervencao : public RegistroTest
{
};

TEST_F(RegistroIntervencao, ModeLPrintsAReadingEnteringAndLeaving)
{
    registro.EntraIntervencao(EModoIntervencao::MIL, Now());
    EXPECT_EQ(Contador(COUNTER_COO), 1);
    EXPECT_EQ(Reason(registro.CheckAbreCupom({}, Now())),
              "the register is in intervention mode L: leave it first");
    EXPECT_EQ(Reason(registro.CheckSaiIntervencao(EModoIntervencao::MIT, Now())),
              "the register is not in intervention mode T");
    ExpectAccepted(registro.CheckLeituraX(IMPRESSAO, Now()));
    ExpectAccepted(registro.CheckSaiIntervencao(EModoIntervencao::MIL, Now()));
    registro.SaiIntervencao(EModoIntervencao::MIL, Now());
    EXPECT_EQ(Contador(COUNTER_COO), 2);
    EXPECT_EQ(Contador(COUNTER_CRO), 0);
}

TEST_F(RegistroIntervencao, LeavingModeTIsARestartOfOperation)
{
    registro.EntraIntervencao(EModoIntervencao::MIT, Now());
    EXPECT_EQ(Contador(COUNTER_COO), 0);
    EXPECT_EQ(Contador(COUNTER_CRO), 0);
    EXPECT_EQ(Reason(registro.CheckEntraIntervencao(EModoIntervencao::MIL, Now())),
              "the register is in intervention mode T: leave it first");
    EXPECT_EQ(Reason(registro.CheckReducaoZ(Now())),
              "the register is in intervention mode T: leave it first");
    EXPECT_EQ(Reason(registro.CheckAbreGerencial(Now())),
              "the register is in intervention mode T: leave it first");
    registro.SaiIntervencao(EModoIntervencao::MIT, Now());
    EXPECT_EQ(Contador(COUNTER_COO), 1);
    EXPECT_EQ(Contador(COUNTER_CRO), 1);
    EXPECT_EQ(Reason(registro.CheckSaiIntervencao(EModoIntervencao::MIL, Now())),
              "the register is not in intervention mode L");
}

TEST_F(RegistroIntervencao, InterventionIsRefusedWhileAReceiptIsOpen)
{
    AbreCupom();
    EXPECT_EQ(Reason(registro.CheckEntraIntervencao(EModoIntervencao::MIT, Now())),
              "a Cupom Fiscal is open: COO 1");
}

} // namespace
} // namespace bancada

// The register's settings and its state as a whole.
#include "tests/bancada/registro/RegistroTest.h"

namespace bancada
{
namespace
{

class RegistroWhole : public RegistroTest
{
};

TEST_F(RegistroWhole, SettingsOfTheBench)
{
    EXPECT_FALSE(registro.GetRatearSubtotal());
    registro.SetRatearSubtotal(true);
    EXPECT_TRUE(registro.GetRatearSubtotal());
    char text[16];
    EXPECT_STREQ(registro.DadosECF_GetVersaoSB(text, sizeof text), "01.00.00");
    registro.SetVersaoSB("01.00.02");
    EXPECT_STREQ(registro.DadosECF_GetVersaoSB(text, sizeof text), "01.00.02");
}

TEST_F(RegistroWhole, StateCanBeTakenOutAndPutBack)
{
    AbreCupom();
    VendeItem("10.00");
    Registro other(registro.GetMemoria());
    other.EfetuaPagamento(DINHEIRO, Money("10.00"), Now());
    other.FechaCupom("", Now());
    EXPECT_EQ(Text(other.BaseFormasPagamento_GetFPTotal(0)), "10.00");
    EXPECT_EQ(Meio(DINHEIRO), "0.00");
}

} // namespace
} // namespace bancada

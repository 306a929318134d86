// The clock, and what setting it does to the open day.
#include "tests/bancada/registro/RegistroTest.h"

namespace bancada
{
namespace
{

using RegistroRelogio = RegistroTest;

TEST_F(RegistroRelogio, NothingStartsBeforeTheLastCommandEnded)
{
    EXPECT_FALSE(registro.CheckRelogio(RtcAbsoluteTime(1))); // none was executed yet
    registro.AdvanceRelogio(RtcAbsoluteTime(NINE));
    EXPECT_EQ(registro.CheckRelogio(RtcAbsoluteTime(NINE - 1)),
              "the clock stands at 2024-03-04 09:00:00, when the last command ended, and does not "
              "go back by itself");
    EXPECT_FALSE(registro.CheckRelogio(RtcAbsoluteTime(NINE)));
    EXPECT_FALSE(registro.CheckRelogio(RtcAbsoluteTime(NINE + 1)));
}

TEST_F(RegistroRelogio, IsSetInAnInterventionModeAlone)
{
    registro.AdvanceRelogio(RtcAbsoluteTime(NINE));
    EXPECT_EQ(registro.CheckAcertaRelogio(RtcAbsoluteTime(NINE + 1)),
              "the clock is set in an intervention mode: enter one first");
    for (const EModoIntervencao modo : {EModoIntervencao::MIL, EModoIntervencao::MIT}) {
        registro.EntraIntervencao(modo, RtcAbsoluteTime(NINE));
        EXPECT_FALSE(registro.CheckAcertaRelogio(RtcAbsoluteTime(NINE - AN_HOUR)));
        registro.AcertaRelogio(RtcAbsoluteTime(NINE - AN_HOUR));
        EXPECT_FALSE(registro.CheckRelogio(RtcAbsoluteTime(NINE - AN_HOUR)));
        EXPECT_TRUE(registro.CheckRelogio(RtcAbsoluteTime(NINE - AN_HOUR - 1)));
        registro.AcertaRelogio(RtcAbsoluteTime(NINE));
        EXPECT_TRUE(registro.CheckRelogio(RtcAbsoluteTime(NINE - 1)));
        registro.SaiIntervencao(modo, RtcAbsoluteTime(NINE));
    }
}

TEST_F(RegistroRelogio, TheOpenDayIsAsOldAsBefore)
{
    for (const UINT32 set : {NINE - AN_HOUR, NINE + 5 * AN_HOUR, NINE + 60}) {
        Registro aDay = registro;
        aDay.AbreCupom({}, RtcAbsoluteTime(NINE));
        aDay.CancelaCupomEmEmissao(RtcAbsoluteTime(NINE + 30));
        aDay.AdvanceRelogio(RtcAbsoluteTime(NINE + 60));
        aDay.AcertaRelogio(RtcAbsoluteTime(set));
        EXPECT_EQ(aDay.Jornada_GetTempoOperacional(RtcAbsoluteTime(set)).s, 60U);
        EXPECT_EQ(aDay.Jornada_GetDataMovimento().s, MIDNIGHT);
        EXPECT_FALSE(aDay.CheckAbreCupom({}, RtcAbsoluteTime(set)));
    }
}

TEST_F(RegistroRelogio, NothingIsSoldBeforeTheDateOfTheOpenDay)
{
    registro.AbreCupom({}, RtcAbsoluteTime(MIDNIGHT + 5));
    registro.CancelaCupomEmEmissao(RtcAbsoluteTime(MIDNIGHT + 6));
    registro.AdvanceRelogio(RtcAbsoluteTime(MIDNIGHT + 6));
    registro.AcertaRelogio(RtcAbsoluteTime(MIDNIGHT - 10));
    EXPECT_EQ(registro.CheckAbreCupom({}, RtcAbsoluteTime(MIDNIGHT - 1)),
              "the clock stands before the first document of the day 2024-03-04");
    EXPECT_FALSE(registro.CheckAbreCupom({}, RtcAbsoluteTime(MIDNIGHT)));
}

TEST_F(RegistroRelogio, TheFirstSecondOfAllIsAnInstantToo)
{
    registro.AbreCupom({}, RtcAbsoluteTime(NINE));
    registro.CancelaCupomEmEmissao(RtcAbsoluteTime(NINE));
    registro.AdvanceRelogio(RtcAbsoluteTime(NINE + AN_HOUR));
    registro.AcertaRelogio(RtcAbsoluteTime(1));
    EXPECT_EQ(registro.GetMemoria().jornada.inicio.s, 1U);
}

} // namespace
} // namespace bancada

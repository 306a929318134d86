// The fiscal day and the Z reduction.
#include "tests/bancada/registro/RegistroTest.h"

namespace bancada
{
namespace
{

class RegistroJornada : public RegistroTest
{
  protected:
    std::string Date()
    {
        char text[16];
        return registro.Jornada_GetDataMovimento().ToStrDate("yyyy-mm-dd", text);
    }
    bool HasNoDate() { return registro.Jornada_GetDataMovimento().s == matlong[0]; }
};

TEST_F(RegistroJornada, IsUnsetBeforeTheFirstDocumentThatMovesIt)
{
    EXPECT_TRUE(HasNoDate());
    registro.LeituraX(IMPRESSAO, Now());
    registro.LeituraMF(Now());
    registro.AbreGerencial(Now());
    registro.FechaCCDGerencial(Now());
    EXPECT_TRUE(HasNoDate());
    EXPECT_EQ(registro.Jornada_GetTempoOperacional(RtcAbsoluteTime(now)).s, 0u);
    AbreCupom();
    EXPECT_EQ(Date(), "2024-03-04");
}

TEST_F(RegistroJornada, ANonFiscalReceiptAndAMovementOfTheTillOpenItToo)
{
    MovimentaCaixa(FUNDO_TROCO, "100.00");
    EXPECT_EQ(Date(), "2024-03-04");
    ReducaoZ();
    now += A_DAY;
    AbreCNF();
    EXPECT_EQ(Date(), "2024-03-05");
}

TEST_F(RegistroJornada, KeepsTheDateOfItsFirstDocumentPastMidnight)
{
    now = MIDNIGHT + 23 * AN_HOUR;
    EmiteCupom("1.00");
    now = MIDNIGHT + A_DAY + AN_HOUR;
    EmiteCupom("1.00");
    EXPECT_EQ(Date(), "2024-03-04");
}

TEST_F(RegistroJornada, OverdueTwentySixHoursAfterItsMidnight)
{
    EmiteCupom("1.00");
    now = MIDNIGHT + 26 * AN_HOUR - 1;
    ExpectAccepted(registro.CheckAbreCupom({}, RtcAbsoluteTime(now)));
    now = MIDNIGHT + 26 * AN_HOUR;
    const std::string reason = "the Redução Z of 2024-03-04 is overdue: issue it before the next "
                               "receipt";
    EXPECT_EQ(Reason(registro.CheckAbreCupom({}, Now())), reason);
    EXPECT_EQ(Reason(registro.CheckAbreCNF({}, Now())), reason);
    EXPECT_EQ(Reason(registro.CheckMovimentaCaixa(SANGRIA, Money("1.00"), Now())), reason);
    ReducaoZ();
    ExpectAccepted(registro.CheckAbreCupom({}, Now()));
}

TEST_F(RegistroJornada, AReceiptOpenWhenTheDayFallsDueCanBeFinished)
{
    AbreCupom();
    now = MIDNIGHT + 27 * AN_HOUR;
    VendeItem("1.00");
    EfetuaPagamento(DINHEIRO, "1.00");
    FechaCupom();
    ReducaoZ();
}

TEST_F(RegistroJornada, AfterTheZNothingIsSoldOnItsDate)
{
    EmiteCupom("1.00");
    ReducaoZ();
    const std::string reason = "the day 2024-03-04 was closed by its Redução Z: nothing is sold on "
                               "that date any more";
    EXPECT_EQ(Reason(registro.CheckAbreCupom({}, Now())), reason);
    EXPECT_EQ(Reason(registro.CheckAbreCNF({}, RtcAbsoluteTime(MIDNIGHT + A_DAY - 1))), reason);
    EXPECT_EQ(Reason(registro.CheckAbreCNF({}, RtcAbsoluteTime(MIDNIGHT + A_DAY))), "");
}

TEST_F(RegistroJornada, ALateZClosesTheDayItBelongsTo)
{
    EmiteCupom("1.00");
    now = MIDNIGHT + A_DAY + 8 * AN_HOUR;
    ReducaoZ();
    EXPECT_EQ(Date(), "2024-03-04");
    EmiteCupom("2.00");
    EXPECT_EQ(Date(), "2024-03-05");
}

TEST_F(RegistroJornada, AZWithoutMovementHasNoDateAndClosesItsOwn)
{
    ReducaoZ();
    EXPECT_TRUE(HasNoDate());
    EXPECT_EQ(Contador(COUNTER_CRZ), 1);
    EXPECT_EQ(Reason(registro.CheckAbreCupom({}, Now())),
              "the day 2024-03-04 was closed by its Redução Z: nothing is sold on that date any "
              "more");
    now += A_DAY;
    EmiteCupom("5.00");
    ReducaoZ();
    now += A_DAY;
    ReducaoZ();
    EXPECT_TRUE(HasNoDate());
    EXPECT_EQ(Meio(DINHEIRO), "0.00");
    EXPECT_EQ(Text(registro.Totalizador_GetVB(BC_IND_FISCAL_ULTIMA_RZ)), "0.00");
    EXPECT_EQ(registro.Jornada_GetTempoEmitindoDocFiscal().s, 0u);
}

TEST_F(RegistroJornada, TheClockCannotGoBehindTheDaysFirstDocument)
{
    EmiteCupom("1.00");
    EXPECT_EQ(Reason(registro.CheckAbreCupom({}, RtcAbsoluteTime(NINE - 1))),
              "the clock stands before the first document of the day 2024-03-04");
}

TEST_F(RegistroJornada, TimesAreThoseOfTheDayAndStayAfterTheZ)
{
    AbreCupom(); // 09:00:00
    VendeItem("1.00");
    EfetuaPagamento(DINHEIRO, "1.00");
    now = NINE + 30;
    FechaCupom(); // 30 s
    now = NINE + 100;
    AbreCupom();
    now = NINE + 112;
    CancelaCupomEmEmissao(); // 12 s
    now = NINE + 200;
    AbreCNF(); // not a fiscal receipt
    VendeItemNF(3, "1.00");
    EfetuaPagamento(DINHEIRO, "1.00");
    now = NINE + 250;
    FechaCNF();
    EXPECT_EQ(registro.Jornada_GetTempoEmitindoDocFiscal().s, 42u);
    EXPECT_EQ(registro.Jornada_GetTempoOperacional(RtcAbsoluteTime(NINE + 300)).s, 300u);
    now = NINE + 3600;
    ReducaoZ();
    EXPECT_EQ(registro.Jornada_GetTempoEmitindoDocFiscal().s, 42u);
    EXPECT_EQ(registro.Jornada_GetTempoOperacional(RtcAbsoluteTime(NINE + 3600)).s, 3600u);
    EXPECT_EQ(registro.Jornada_GetTempoOperacional(RtcAbsoluteTime(NINE + 9999)).s, 3600u);
    EXPECT_EQ(registro.Jornada_GetTempoOperacional(RtcAbsoluteTime(NINE - 1)).s, 0u);
}

} // namespace
} // namespace bancada

// The fiscal day and the Z reduction.
#include "tests/bancada/RegistroTeste.h"

namespace bancada
{
namespace
{

class RegistroJornada : public RegistroTeste
{
  protected:
    std::string Data()
    {
        char texto[16];
        return registro.Jornada_GetDataMovimento().ToStrDate("yyyy-mm-dd", texto);
    }
    bool SemData() { return registro.Jornada_GetDataMovimento().s == matlong[0]; }
};

TEST_F(RegistroJornada, IsUnsetBeforeTheFirstDocumentThatMovesIt)
{
    EXPECT_TRUE(SemData());
    registro.LeituraX(IMPRESSAO, Agora());
    registro.LeituraMF(Agora());
    registro.AbreGerencial(Agora());
    registro.FechaCCDGerencial(Agora());
    EXPECT_TRUE(SemData());
    EXPECT_EQ(registro.Jornada_GetTempoOperacional(RtcAbsoluteTime(agora)).s, 0u);
    AbreCupom();
    EXPECT_EQ(Data(), "2024-03-04");
}

TEST_F(RegistroJornada, ANonFiscalReceiptAndAMovementOfTheTillOpenItToo)
{
    MovimentaCaixa(FUNDO_TROCO, "100.00");
    EXPECT_EQ(Data(), "2024-03-04");
    ReducaoZ();
    agora += DIA;
    AbreCNF();
    EXPECT_EQ(Data(), "2024-03-05");
}

TEST_F(RegistroJornada, KeepsTheDateOfItsFirstDocumentPastMidnight)
{
    agora = MEIA_NOITE + 23 * HORA;
    Cupom1("1.00");
    agora = MEIA_NOITE + DIA + HORA;
    Cupom1("1.00");
    EXPECT_EQ(Data(), "2024-03-04");
}

TEST_F(RegistroJornada, OverdueTwentySixHoursAfterItsMidnight)
{
    Cupom1("1.00");
    agora = MEIA_NOITE + 26 * HORA - 1;
    Accept(registro.CheckAbreCupom({}, RtcAbsoluteTime(agora)));
    agora = MEIA_NOITE + 26 * HORA;
    const std::string motivo = "the Redução Z of 2024-03-04 is overdue: issue it before the next "
                               "receipt";
    EXPECT_EQ(Motivo(registro.CheckAbreCupom({}, Agora())), motivo);
    EXPECT_EQ(Motivo(registro.CheckAbreCNF({}, Agora())), motivo);
    EXPECT_EQ(Motivo(registro.CheckMovimentaCaixa(SANGRIA, Dinheiro("1.00"), Agora())), motivo);
    ReducaoZ();
    Accept(registro.CheckAbreCupom({}, Agora()));
}

TEST_F(RegistroJornada, AReceiptOpenWhenTheDayFallsDueCanBeFinished)
{
    AbreCupom();
    agora = MEIA_NOITE + 27 * HORA;
    Vende("1.00");
    Paga(DINHEIRO, "1.00");
    FechaCupom();
    ReducaoZ();
}

TEST_F(RegistroJornada, AfterTheZNothingIsSoldOnItsDate)
{
    Cupom1("1.00");
    ReducaoZ();
    const std::string motivo = "the day 2024-03-04 was closed by its Redução Z: nothing is sold on "
                               "that date any more";
    EXPECT_EQ(Motivo(registro.CheckAbreCupom({}, Agora())), motivo);
    EXPECT_EQ(Motivo(registro.CheckAbreCNF({}, RtcAbsoluteTime(MEIA_NOITE + DIA - 1))), motivo);
    EXPECT_EQ(Motivo(registro.CheckAbreCNF({}, RtcAbsoluteTime(MEIA_NOITE + DIA))), "");
}

TEST_F(RegistroJornada, ALateZClosesTheDayItBelongsTo)
{
    Cupom1("1.00");
    agora = MEIA_NOITE + DIA + 8 * HORA;
    ReducaoZ();
    EXPECT_EQ(Data(), "2024-03-04");
    Cupom1("2.00");
    EXPECT_EQ(Data(), "2024-03-05");
}

TEST_F(RegistroJornada, AZWithoutMovementHasNoDateAndClosesItsOwn)
{
    ReducaoZ();
    EXPECT_TRUE(SemData());
    EXPECT_EQ(Contador(COUNTER_CRZ), 1);
    EXPECT_EQ(Motivo(registro.CheckAbreCupom({}, Agora())),
              "the day 2024-03-04 was closed by its Redução Z: nothing is sold on that date any "
              "more");
    agora += DIA;
    Cupom1("5.00");
    ReducaoZ();
    agora += DIA;
    ReducaoZ();
    EXPECT_TRUE(SemData());
    EXPECT_EQ(Meio(DINHEIRO), "0.00");
    EXPECT_EQ(Texto(registro.Totalizador_GetVB(BC_IND_FISCAL_ULTIMA_RZ)), "0.00");
    EXPECT_EQ(registro.Jornada_GetTempoEmitindoDocFiscal().s, 0u);
}

TEST_F(RegistroJornada, TheClockCannotGoBehindTheDaysFirstDocument)
{
    Cupom1("1.00");
    EXPECT_EQ(Motivo(registro.CheckAbreCupom({}, RtcAbsoluteTime(NOVE_HORAS - 1))),
              "the clock stands before the first document of the day 2024-03-04");
}

TEST_F(RegistroJornada, TimesAreThoseOfTheDayAndStayAfterTheZ)
{
    AbreCupom(); // 09:00:00
    Vende("1.00");
    Paga(DINHEIRO, "1.00");
    agora = NOVE_HORAS + 30;
    FechaCupom(); // 30 s
    agora = NOVE_HORAS + 100;
    AbreCupom();
    agora = NOVE_HORAS + 112;
    CancelaCupomEmEmissao(); // 12 s
    agora = NOVE_HORAS + 200;
    AbreCNF(); // not a fiscal receipt
    VendeNF(3, "1.00");
    Paga(DINHEIRO, "1.00");
    agora = NOVE_HORAS + 250;
    FechaCNF();
    EXPECT_EQ(registro.Jornada_GetTempoEmitindoDocFiscal().s, 42u);
    EXPECT_EQ(registro.Jornada_GetTempoOperacional(RtcAbsoluteTime(NOVE_HORAS + 300)).s, 300u);
    agora = NOVE_HORAS + 3600;
    ReducaoZ();
    EXPECT_EQ(registro.Jornada_GetTempoEmitindoDocFiscal().s, 42u);
    EXPECT_EQ(registro.Jornada_GetTempoOperacional(RtcAbsoluteTime(NOVE_HORAS + 3600)).s, 3600u);
    EXPECT_EQ(registro.Jornada_GetTempoOperacional(RtcAbsoluteTime(NOVE_HORAS + 9999)).s, 3600u);
    EXPECT_EQ(registro.Jornada_GetTempoOperacional(RtcAbsoluteTime(NOVE_HORAS - 1)).s, 0u);
}

TEST_F(RegistroJornada, ZMovesTheLiveBasesAndEmptiesThem)
{
    AbreCupom();
    Vende("10.00", "1", "T", 1);
    Vende("20.00", "1", "S", 1);
    Vende("3.00", "1", "F", 1);
    Vende("4.00", "1", "T", 2);
    AjustaItem(PorValor(DESCONTO, "1.00"), 1);
    AjustaItem(PorValor(ACRESCIMO, "2.00"), 2);
    CancelaItem(4);
    Paga(DINHEIRO, "50.00");
    FechaCupom();
    AbreCNF();
    VendeNF(3, "7.00");
    Paga(CHEQUE, "7.00");
    FechaCNF();
    EXPECT_EQ(Texto(registro.Totalizador_GetVB(BC_IND_FISCAL)), "39.00");
    ReducaoZ();

    EXPECT_EQ(Contador(COUNTER_COO), 3);
    EXPECT_EQ(Contador(COUNTER_CRZ), 1);
    EXPECT_EQ(Texto(registro.Totalizador_GetTot(2, 0, 0)), "9.00");
    EXPECT_EQ(Texto(registro.Totalizador_GetTot(2, 1, 0)), "22.00");
    EXPECT_EQ(Texto(registro.Totalizador_GetTot(2, 0, 30)), "3.00");
    EXPECT_EQ(Texto(registro.Totalizador_GetSoma_Tot_VL(2, 0)), "12.00");
    EXPECT_EQ(Texto(registro.Totalizador_GetSoma_Tot_VL(2, 1)), "22.00");
    EXPECT_EQ(Texto(registro.Totalizador_GetSoma_Tot_Desc(2, 0)), "1.00");
    EXPECT_EQ(Texto(registro.Totalizador_GetSoma_Tot_Acr(2, 1)), "2.00");
    EXPECT_EQ(Texto(registro.Totalizador_GetSoma_Tot_Canc(2, 0)), "4.00");
    EXPECT_EQ(Texto(registro.Totalizador_GetTotTrib(2, 0, 0)), "1.62");
    EXPECT_EQ(Texto(registro.Totalizador_GetSoma_TotTrib(2, 1)), "1.10");
    EXPECT_EQ(Texto(registro.Totalizador_GetVB(BC_IND_FISCAL_ULTIMA_RZ)), "39.00");
    EXPECT_EQ(Texto(registro.Totalizador_GetTotalNF(3, 2)), "7.00");
    EXPECT_EQ(GT(), "39.00");
    EXPECT_EQ(Meio(DINHEIRO), "50.00");
    EXPECT_EQ(Meio(CHEQUE), "7.00");
    EXPECT_EQ(Troco(), "16.00");

    EXPECT_EQ(TotalT(1), "0.00");
    EXPECT_EQ(TotalS(1), "0.00");
    EXPECT_EQ(TotalNF(3), "0.00");
    EXPECT_EQ(Descontos(), "0.00");
    EXPECT_EQ(Acrescimos(1), "0.00");
    EXPECT_EQ(Cancelamentos(), "0.00");
    EXPECT_EQ(Texto(registro.Totalizador_GetVB(BC_IND_FISCAL)), "0.00");
    EXPECT_EQ(registro.Totalizador_GetTotPercTrib(0, 0, 0), 1800);
    EXPECT_EQ(registro.Totalizador_GetTotPercTrib(2, 0, 0), 1800);
    EXPECT_EQ(registro.Totalizador_GetTotProgramado(2, 0, 30), 1);
    EXPECT_EQ(registro.Totalizador_GetTotProgramado(2, 0, 2), 0);

    agora += DIA;
    AbreCupom();
    EXPECT_EQ(Meio(DINHEIRO), "0.00");
    EXPECT_EQ(Troco(), "0.00");
    Vende("1.00");
    EXPECT_EQ(Texto(registro.Totalizador_GetVB(BC_IND_FISCAL)), "1.00");
    EXPECT_EQ(Texto(registro.Totalizador_GetVB(BC_IND_FISCAL_ULTIMA_RZ)), "39.00");
}

TEST_F(RegistroJornada, TaxIsTruncatedToCents)
{
    Cupom1("0.99"); // 18 % of it is 0.1782
    EXPECT_EQ(Texto(registro.Totalizador_GetTotTrib(0, 0, 0)), "0.17");
    EXPECT_EQ(Texto(registro.Totalizador_GetSoma_TotTrib(0, 0)), "0.17");
    EXPECT_EQ(Texto(registro.Totalizador_GetTotTrib(0, 0, 30)), "0.00");
}

TEST_F(RegistroJornada, ZIsRefusedWhileADocumentIsOpen)
{
    AbreCupom();
    EXPECT_EQ(Motivo(registro.CheckReducaoZ(Agora())), "a Cupom Fiscal is open: COO 1");
    CancelaCupomEmEmissao();
    AbreCNF();
    EXPECT_EQ(Motivo(registro.CheckReducaoZ(Agora())), "a Comprovante Não Fiscal is open: COO 2");
    CancelaCupomEmEmissao();
    registro.AbreGerencial(Agora());
    EXPECT_EQ(Motivo(registro.CheckReducaoZ(Agora())), "a Relatório Gerencial is open");
    FechaCCDGerencial();
    ReducaoZ();
}

} // namespace
} // namespace bancada

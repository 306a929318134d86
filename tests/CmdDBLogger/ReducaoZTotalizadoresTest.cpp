// The totalizer rows of a Z reduction.
#include "tests/CmdDBLogger/ReducaoZTest.h"

namespace
{

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ReducaoZTotalizadores : public ReducaoZTest
{
  protected:
    // The statements between the reduction's own and the six fixed ones.
    std::vector<std::string> BeforeTheFixedOnes() const
    {
        return StatementsFrom(1, Statements().size() - 9);
    }

    // Those between the six fixed ones and the change's, with no other rows before them.
    std::vector<std::string> BehindTheFixedOnes() const
    {
        return StatementsFrom(7, Statements().size() - 9);
    }

    // The calls that begin with a text, in order.
    std::vector<std::string> Calls(const std::string& begin) const
    {
        std::vector<std::string> calls;
        for (const std::string& call : fiscal.calls) {
            if (call.rfind(begin, 0) == 0) {
                calls.push_back(call);
            }
        }
        return calls;
    }

    // The code that a rate's row carries in position 0 of a tax base.
    std::string CodeOf(int taxBase, int rate)
    {
        Execute("DELETE FROM totalizador_reducao");
        Programa(taxBase, 0, rate, "1.00", "0.00");
        Reduz();
        return Rows("SELECT totalizador FROM totalizador_reducao").front();
    }
};

TEST_F(ReducaoZTotalizadores, OneRateIsOneRowBeforeTheFixedOnes)
{
    Programa(0, 0, 1700, "1234.56", "209.87");
    Reduz();
    EXPECT_EQ(Statements().size(), 10u);
    EXPECT_THAT(
        BeforeTheFixedOnes(),
        ElementsAre(
            "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'01T17.00',1234.56,'S',209.87)"));
    EXPECT_EQ(
        Statements()[2],
        "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('DT',12,0.00,'S',0)");
    EXPECT_THAT(Rows("SELECT * FROM totalizador_reducao LIMIT 1"),
                ElementsAre("12|01T17.00|1234.56|S|209.87"));
}

TEST_F(ReducaoZTotalizadores, RateOfServicesCarriesAnS)
{
    Programa(1, 4, 500, "10.00", "0.50");
    Reduz();
    EXPECT_THAT(
        BeforeTheFixedOnes(),
        ElementsAre(
            "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'05S05.00',10.00,'S',0.50)"));
}

TEST_F(ReducaoZTotalizadores, GapsInTheRatesLeaveGapsInTheCodes)
{
    Programa(0, 0, 1800, "1.00", "0.18");
    Programa(0, 2, 725, "2.00", "0.14");
    Programa(0, 29, 0, "-3.00", "0.00");
    Reduz();
    EXPECT_THAT(
        BeforeTheFixedOnes(),
        ElementsAre(
            "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'01T18.00',1.00,'S',0.18)",
            "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'03T07.25',2.00,'S',0.14)",
            "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(12,'30T00.00',-3.00,'S',0.00)"));
}

TEST_F(ReducaoZTotalizadores, RatesAreWrittenInTwoAndTwoDigitsAtLeast)
{
    EXPECT_EQ(CodeOf(0, 0), "01T00.00");
    EXPECT_EQ(CodeOf(0, 5), "01T00.05");
    EXPECT_EQ(CodeOf(0, 99), "01T00.99");
    EXPECT_EQ(CodeOf(0, 100), "01T01.00");
    EXPECT_EQ(CodeOf(0, 725), "01T07.25");
    EXPECT_EQ(CodeOf(0, 1800), "01T18.00");
    EXPECT_EQ(CodeOf(0, 9999), "01T99.99");
    EXPECT_EQ(CodeOf(0, 10000), "01T100.00");
}

TEST_F(ReducaoZTotalizadores, NegativeRateIsWrittenAsItsQuotientAndItsRemainder)
{
    EXPECT_EQ(CodeOf(0, -725), "01T-7.-25");
    EXPECT_EQ(CodeOf(0, -5), "01T00.-5");
    EXPECT_EQ(CodeOf(0, -100), "01T-1.00");
    Forget();
    fiscal.numbers["Totalizador_GetTotProgramado(2,0,0)"] = 0;
    EXPECT_EQ(CodeOf(1, -1810), "01S-18.-10");
}

TEST_F(ReducaoZTotalizadores, RateWhoseFlagIsNegativeIsWritten)
{
    Programa(0, 0, 1800, "1.00", "0.18");
    Programa(1, 0, 500, "1.00", "0.05");
    fiscal.numbers["Totalizador_GetTotProgramado(2,0,0)"] = -1;
    fiscal.numbers["Totalizador_GetTotProgramado(2,1,0)"] = -1;
    Reduz();
    EXPECT_EQ(Statements().size(), 11u);
}

TEST_F(ReducaoZTotalizadores, RateThatIsNotProgrammedIsNotRead)
{
    Reduz();
    EXPECT_EQ(Statements().size(), 9u);
    EXPECT_EQ(fiscal.CallsOf("Totalizador_GetTotPercTrib("), 0);
    EXPECT_EQ(fiscal.CallsOf("Totalizador_GetTot("), 0);
}

TEST_F(ReducaoZTotalizadores, ThirtyPositionsOfEachTaxBaseAreAsked)
{
    Reduz();
    const std::vector<std::string> asked = Calls("Totalizador_GetTotProgramado(");
    ASSERT_EQ(asked.size(), 78u);
    for (int position = 0; position < 30; ++position) {
        const auto at = static_cast<std::size_t>(position);
        EXPECT_EQ(asked[at], "Totalizador_GetTotProgramado(2,0," + std::to_string(position) + ")");
        EXPECT_EQ(asked[30 + at],
                  "Totalizador_GetTotProgramado(2,1," + std::to_string(position) + ")");
    }
    for (std::size_t at = 60; at < 69; ++at) {
        EXPECT_EQ(asked[at], "Totalizador_GetTotProgramado(2,0,99)");
    }
    for (std::size_t at = 69; at < 78; ++at) {
        EXPECT_EQ(asked[at], "Totalizador_GetTotProgramado(2,1,99)");
    }
}

TEST_F(ReducaoZTotalizadores, SpecialTotalizersAreResolvedByNumberThenByCode)
{
    Reduz();
    EXPECT_THAT(
        Calls("ResolveTotIndex("),
        ElementsAre("ResolveTotIndex(0,F,1)", "ResolveTotIndex(0,I,1)", "ResolveTotIndex(0,N,1)",
                    "ResolveTotIndex(0,F,2)", "ResolveTotIndex(0,I,2)", "ResolveTotIndex(0,N,2)",
                    "ResolveTotIndex(0,F,3)", "ResolveTotIndex(0,I,3)", "ResolveTotIndex(0,N,3)",
                    "ResolveTotIndex(1,FS,1)", "ResolveTotIndex(1,IS,1)", "ResolveTotIndex(1,NS,1)",
                    "ResolveTotIndex(1,FS,2)", "ResolveTotIndex(1,IS,2)", "ResolveTotIndex(1,NS,2)",
                    "ResolveTotIndex(1,FS,3)", "ResolveTotIndex(1,IS,3)",
                    "ResolveTotIndex(1,NS,3)"));
}

TEST_F(ReducaoZTotalizadores, SpecialTotalizerThatIsNotProgrammedHasNoRowButItsFellowsDo)
{
    fiscal.numbers["ResolveTotIndex(0,F,2)"] = 40;
    fiscal.numbers["ResolveTotIndex(0,I,2)"] = 41;
    fiscal.numbers["ResolveTotIndex(0,N,2)"] = 42;
    fiscal.numbers["ResolveTotIndex(1,NS,3)"] = 43;
    ProgramaEspecial(0, 40, "1.11");
    fiscal.numbers["Totalizador_GetTotProgramado(2,0,41)"] = 0;
    ProgramaEspecial(0, 42, "1000.33");
    ProgramaEspecial(1, 43, "4.44");
    Reduz();
    EXPECT_THAT(
        BeforeTheFixedOnes(),
        ElementsAre(
            "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('F2',12,1.11,'S',0)",
            "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('N2',12,1000.33,'S',0)",
            "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('NS3',12,4.44,'S',0)"));
    EXPECT_EQ(fiscal.CallsOf("Totalizador_GetTotTrib("), 0);
    EXPECT_EQ(fiscal.CallsOf("Totalizador_GetTotPercTrib("), 0);
}

TEST_F(ReducaoZTotalizadores, ResolvedPositionIsPassedOnUnchecked)
{
    fiscal.numbers["ResolveTotIndex(0,I,3)"] = -1;
    fiscal.numbers["ResolveTotIndex(1,FS,1)"] = 1000000;
    ProgramaEspecial(0, -1, "1.00");
    fiscal.numbers["Totalizador_GetTotProgramado(2,1,1000000)"] = 0;
    Reduz();
    EXPECT_THAT(fiscal.calls, Contains("Totalizador_GetTotProgramado(2,0,-1)"));
    EXPECT_THAT(fiscal.calls, Contains("Totalizador_GetTotProgramado(2,1,1000000)"));
    EXPECT_THAT(
        BeforeTheFixedOnes(),
        ElementsAre(
            "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('I3',12,1.00,'S',0)"));
}

TEST_F(ReducaoZTotalizadores, SpecialTotalizerWhoseFlagIsNegativeIsWritten)
{
    fiscal.numbers["ResolveTotIndex(0,F,1)"] = 40;
    fiscal.numbers["Totalizador_GetTotProgramado(2,0,40)"] = -1;
    fiscal.money["Totalizador_GetTot(2,0,40)"] = Money("0");
    Reduz();
    EXPECT_EQ(
        Statements()[1],
        "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('F1',12,0.00,'S',0)");
}

TEST_F(ReducaoZTotalizadores, FixedRowsCarryTheSumsOfTheirTaxBase)
{
    fiscal.money["Totalizador_GetSoma_Tot_Desc(2,0)"] = Money("1001.01");
    fiscal.money["Totalizador_GetSoma_Tot_Desc(2,1)"] = Money("2.02");
    fiscal.money["Totalizador_GetSoma_Tot_Acr(2,0)"] = Money("3.03");
    fiscal.money["Totalizador_GetSoma_Tot_Acr(2,1)"] = Money("-4.04");
    fiscal.money["Totalizador_GetSoma_Tot_Canc(2,0)"] = Money("5.05");
    fiscal.money["Totalizador_GetSoma_Tot_Canc(2,1)"] = Money("6.06");
    Reduz();
    EXPECT_THAT(
        StatementsFrom(1, 6),
        ElementsAre(
            "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('DT',12,1001.01,'S',0)",
            "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('DS',12,2.02,'S',0)",
            "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('AT',12,3.03,'S',0)",
            "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('AS',12,-4.04,'S',0)",
            "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('Can-T',12,5.05,'S',0)",
            "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('Can-S',12,6.06,'S',0)"));
}

TEST_F(ReducaoZTotalizadores, NonFiscalTotalizersFollowTheFixedRowsWithAnN)
{
    ProgramaNaoFiscal(0, 1, "Recebimento", "1500.50");
    ProgramaNaoFiscal(38, 2, "", "-0.01");
    Reduz();
    EXPECT_THAT(
        BehindTheFixedOnes(),
        ElementsAre(
            "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('Recebimento',12,1500.50,'N',0)",
            "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('',12,-0.01,'N',0)"));
    EXPECT_THAT(Rows("SELECT * FROM totalizador_reducao WHERE id_fiscal = 'N'"),
                ElementsAre("12|Recebimento|1500.5|N|0", "12||-0.01|N|0"));
    EXPECT_EQ(fiscal.CallsOf("Totalizador_GetTotNFProgramado("), 39);
    EXPECT_THAT(fiscal.calls, Contains("Totalizador_GetNomeNF(3,0,500)"));
}

TEST_F(ReducaoZTotalizadores, NonFiscalTotalizerWhoseFlagIsNotPositiveHasNoRow)
{
    fiscal.numbers["Totalizador_GetTotNFProgramado(3,1)"] = -1;
    fiscal.numbers["Totalizador_GetTotNFProgramado(3,2)"] = 0;
    Reduz();
    EXPECT_EQ(Statements().size(), 9u);
    EXPECT_EQ(fiscal.CallsOf("Totalizador_GetNomeNF("), 0);
    EXPECT_EQ(fiscal.CallsOf("Totalizador_GetTotalNF("), 0);
}

TEST_F(ReducaoZTotalizadores, NameWithAnApostropheLosesItsRowAlone)
{
    ProgramaNaoFiscal(0, 1, "D'AGUA", "1.00");
    ProgramaNaoFiscal(1, 1, "Gas", "2.00");
    Reduz();
    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'21', Erro:'near \"AGUA\": syntax error'",
            "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('D'AGUA',12,1.00,'N',0)"));
    EXPECT_EQ(Statements().size(), 11u);
    EXPECT_THAT(Rows("SELECT totalizador FROM totalizador_reducao WHERE id_fiscal = 'N'"),
                ElementsAre("Gas"));
    EXPECT_THAT(Rows("SELECT id_tipo_documento FROM outros_documentos"), ElementsAre("RZ"));
}

TEST_F(ReducaoZTotalizadores, NameThatFillsItsArrayIsWrittenWhole)
{
    for (const std::size_t size : {498u, 499u}) {
        const std::string name(size, 'n');
        ProgramaNaoFiscal(0, 1, name, "1.00");
        Reduz();
        EXPECT_THAT(
            BehindTheFixedOnes(),
            ElementsAre(
                "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('" +
                name + "',12,1.00,'N',0)"));
        EXPECT_THAT(LogEntries(), IsEmpty());
    }
}

TEST_F(ReducaoZTotalizadores, ShorterNameLeavesNothingOfTheOneBefore)
{
    ProgramaNaoFiscal(0, 1, "A long name", "1.00");
    ProgramaNaoFiscal(1, 1, "B", "2.00");
    Reduz();
    EXPECT_EQ(
        Statements()[8],
        "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('B',12,2.00,'N',0)");
}

} // namespace

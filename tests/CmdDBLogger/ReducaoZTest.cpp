// The Z reduction: its row, the order of a day with nothing programmed, its failures.
#include "tests/CmdDBLogger/ReducaoZTest.h"

namespace
{

using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;

class ReducaoZ : public ReducaoZTest
{
  protected:
    std::string Row()
    {
        Reduz();
        return Statements()[0];
    }
};

TEST_F(ReducaoZ, DayWithNothingProgrammedIsEightStatementsAndItsDocument)
{
    Reduz();

    EXPECT_THAT(
        Statements(),
        ElementsAre(
            "INSERT INTO reducao_z (cont_crz, num_ecf, data_hora_emissao, data_movimento, cont_coo, cont_gnf, cont_cro, valor_gt, valor_vb, valor_base_icms, valor_icms, valor_desc_icms, valor_acres_icms, valor_canc_icms, valor_base_iss, valor_iss, valor_desc_iss, valor_acres_iss, valor_canc_iss, tempo_operacional, tempo_emitindo_doc) VALUES (12,1,'2026-03-02 08:15:30','2026-03-02 00:00:00',321,45,3,0.00,0.00,0.00,0.00,0.00,0.00,0.00,0.00,0.00,0.00,0.00,0.00,0,0)",
            "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('DT',12,0.00,'S',0)",
            "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('DS',12,0.00,'S',0)",
            "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('AT',12,0.00,'S',0)",
            "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('AS',12,0.00,'S',0)",
            "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('Can-T',12,0.00,'S',0)",
            "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('Can-S',12,0.00,'S',0)",
            "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(1,12,'TROCO',0.00)",
            "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (321,1,45,6,7,12,'2026-03-02 08:15:30','2026-03-02 08:15:30','RZ')"));
    EXPECT_THAT(LogEntries(), IsEmpty());
    EXPECT_THAT(Rows("SELECT * FROM totalizador_reducao"),
                ElementsAre("12|DT|0|S|0", "12|DS|0|S|0", "12|AT|0|S|0", "12|AS|0|S|0",
                            "12|Can-T|0|S|0", "12|Can-S|0|S|0"));
    EXPECT_THAT(Rows("SELECT * FROM meio_pagamento_reducao"), ElementsAre("1|12|TROCO|0"));
    EXPECT_THAT(Rows("SELECT * FROM outros_documentos"),
                ElementsAre("321|1|45|6|7|12|2026-03-02 08:15:30|2026-03-02 08:15:30|RZ"));
}

TEST_F(ReducaoZ, RowCarriesTheSumsOfTheClosedDayAndTheTimesCrossed)
{
    fiscal.seconds["Jornada_GetDataMovimento()"] = Instant("2026-03-01 13:45:00").s;
    fiscal.seconds["Jornada_GetTempoEmitindoDocFiscal()"] = 601;
    fiscal.seconds["Jornada_GetTempoOperacional(2026-03-02 08:15:30)"] = 36002;
    fiscal.money["Totalizador_GetGT()"] = Money("1234567.01");
    fiscal.money["Totalizador_GetVB(2)"] = Money("2000.02");
    fiscal.money["Totalizador_GetSoma_Tot_VL(2,0)"] = Money("1000.03");
    fiscal.money["Totalizador_GetSoma_TotTrib(2,0)"] = Money("100.04");
    fiscal.money["Totalizador_GetSoma_Tot_Desc(2,0)"] = Money("10.05");
    fiscal.money["Totalizador_GetSoma_Tot_Acr(2,0)"] = Money("20.06");
    fiscal.money["Totalizador_GetSoma_Tot_Canc(2,0)"] = Money("30.07");
    fiscal.money["Totalizador_GetSoma_Tot_VL(2,1)"] = Money("900.08");
    fiscal.money["Totalizador_GetSoma_TotTrib(2,1)"] = Money("90.09");
    fiscal.money["Totalizador_GetSoma_Tot_Desc(2,1)"] = Money("40.10");
    fiscal.money["Totalizador_GetSoma_Tot_Acr(2,1)"] = Money("50.11");
    fiscal.money["Totalizador_GetSoma_Tot_Canc(2,1)"] = Money("-60.12");

    EXPECT_EQ(
        Row(),
        "INSERT INTO reducao_z (cont_crz, num_ecf, data_hora_emissao, data_movimento, cont_coo, cont_gnf, cont_cro, valor_gt, valor_vb, valor_base_icms, valor_icms, valor_desc_icms, valor_acres_icms, valor_canc_icms, valor_base_iss, valor_iss, valor_desc_iss, valor_acres_iss, valor_canc_iss, tempo_operacional, tempo_emitindo_doc) VALUES (12,1,'2026-03-02 08:15:30','2026-03-01 00:00:00',321,45,3,1234567.01,2000.02,1000.03,100.04,10.05,20.06,30.07,900.08,90.09,40.10,50.11,-60.12,601,36002)");
    EXPECT_THAT(
        Rows("SELECT * FROM reducao_z"),
        ElementsAre(
            "12|1|2026-03-02 08:15:30|2026-03-01 00:00:00|321|45|3|1234567.01|2000.02|1000.03|100.04|10.05|20.06|30.07|900.08|90.09|40.1|50.11|-60.12|601|36002"));
    EXPECT_THAT(Rows("SELECT tempo_operacional, tempo_emitindo_doc FROM reducao_z"),
                ElementsAre("601|36002"));
}

TEST_F(ReducaoZ, FiscalDayThatIsSetIsAskedTwiceAndWrittenAtMidnight)
{
    fiscal.seconds["Jornada_GetDataMovimento()"] = Instant("2026-02-28 23:59:59").s;
    Reduz();
    EXPECT_EQ(fiscal.CallsOf("Jornada_GetDataMovimento()"), 2);
    EXPECT_THAT(Rows("SELECT data_movimento FROM reducao_z"), ElementsAre("2026-02-28 00:00:00"));
}

TEST_F(ReducaoZ, FiscalDayThatIsUnsetIsAskedOnceAndIsTheReductionsOwn)
{
    command.m_dtExecStart = Instant("2026-03-02 23:59:59");
    fiscal.seconds["Jornada_GetTempoOperacional(2026-03-02 23:59:59)"] = 0;
    Reduz();
    EXPECT_EQ(fiscal.CallsOf("Jornada_GetDataMovimento()"), 1);
    EXPECT_THAT(Rows("SELECT data_hora_emissao, data_movimento FROM reducao_z"),
                ElementsAre("2026-03-02 23:59:59|2026-03-02 00:00:00"));
}

TEST_F(ReducaoZ, FirstSecondAfterTheMarkerIsADay)
{
    fiscal.seconds["Jornada_GetDataMovimento()"] = 1;
    Reduz();
    EXPECT_THAT(Rows("SELECT data_movimento FROM reducao_z"), ElementsAre("1970-01-01 00:00:00"));
}

// A span is unsigned and is printed as a signed number.
TEST_F(ReducaoZ, SpansOfTwoToThe31AndMoreArePrintedNegative)
{
    const struct {
        UINT32 issuing, operating;
        const char* text;
    } cases[] = {
        {2147483647u, 2147483648u, "2147483647|-2147483648"},
        {2147483649u, 4294967294u, "-2147483647|-2"},
        {4294967295u, 0u, "-1|0"},
    };
    for (const auto& spans : cases) {
        Execute("DELETE FROM reducao_z");
        fiscal.seconds["Jornada_GetTempoEmitindoDocFiscal()"] = spans.issuing;
        fiscal.seconds["Jornada_GetTempoOperacional(2026-03-02 08:15:30)"] = spans.operating;
        Reduz();
        EXPECT_THAT(Rows("SELECT tempo_operacional, tempo_emitindo_doc FROM reducao_z"),
                    ElementsAre(spans.text));
    }
}

TEST_F(ReducaoZ, EachTimeIsAskedOnce)
{
    Reduz();
    EXPECT_EQ(fiscal.CallsOf("Jornada_GetTempoEmitindoDocFiscal()"), 1);
    EXPECT_EQ(fiscal.CallsOf("Jornada_GetTempoOperacional("), 1);
    EXPECT_THAT(fiscal.calls, Contains("Jornada_GetTempoOperacional(2026-03-02 08:15:30)"));
}

// Every question of a day with one row of each kind, in order.
TEST_F(ReducaoZ, QuestionsFollowTheValuesOfTheRows)
{
    fiscal.seconds["Jornada_GetDataMovimento()"] = Instant("2026-03-01 13:45:00").s;
    Programa(0, 1, 1800, "1.00", "0.18");
    Programa(1, 29, 500, "1.00", "0.05");
    fiscal.numbers["ResolveTotIndex(0,N,1)"] = 40;
    ProgramaEspecial(0, 40, "1.00");
    fiscal.numbers["ResolveTotIndex(1,FS,3)"] = 41;
    ProgramaEspecial(1, 41, "1.00");
    ProgramaNaoFiscal(38, 1, "NF", "1.00");
    fiscal.numbers["BaseFormasPagamento_GetNumeroDeFormasDePagamento()"] = 2;
    fiscal.numbers["BaseFormasPagamento_GetMeioPagamentoProgramado(0)"] = 0;
    ProgramaMeio(1, "Cheque", "1.00");
    Reduz();

    std::vector<std::string> expected;
    const auto ask = [&](const std::vector<std::string>& questions) {
        expected.insert(expected.end(), questions.begin(), questions.end());
    };
    // Whether the totalizers of a base at the positions up to, not including, `end` are programmed.
    const auto askFor = [&](const std::string& question, int begin, int end) {
        for (int position = begin; position < end; ++position) {
            ask({question + std::to_string(position) + ")"});
        }
    };
    // A special totalizer that is resolved to a position where none is programmed.
    const auto askForNone = [&](const std::string& base, const std::vector<std::string>& codes) {
        for (const std::string& code : codes) {
            ask({"ResolveTotIndex(" + base + "," + code + ")",
                 "Totalizador_GetTotProgramado(2," + base + ",99)"});
        }
    };
    // The row of the reduction.
    ask({"Contador_Get(COUNTER_CRZ)",
         "Jornada_GetDataMovimento()",
         "Jornada_GetDataMovimento()",
         "Contador_Get(COUNTER_COO)",
         "Contador_Get(COUNTER_GNF)",
         "Contador_Get(COUNTER_CRO)",
         "Totalizador_GetGT()",
         "Totalizador_GetVB(2)",
         "Totalizador_GetSoma_Tot_VL(2,0)",
         "Totalizador_GetSoma_TotTrib(2,0)",
         "Totalizador_GetSoma_Tot_Desc(2,0)",
         "Totalizador_GetSoma_Tot_Acr(2,0)",
         "Totalizador_GetSoma_Tot_Canc(2,0)",
         "Totalizador_GetSoma_Tot_VL(2,1)",
         "Totalizador_GetSoma_TotTrib(2,1)",
         "Totalizador_GetSoma_Tot_Desc(2,1)",
         "Totalizador_GetSoma_Tot_Acr(2,1)",
         "Totalizador_GetSoma_Tot_Canc(2,1)",
         "Jornada_GetTempoEmitindoDocFiscal()",
         "Jornada_GetTempoOperacional(2026-03-02 08:15:30)"});
    // The tax rates.
    askFor("Totalizador_GetTotProgramado(2,0,", 0, 2);
    ask({"Contador_Get(COUNTER_CRZ)", "Totalizador_GetTotPercTrib(2,0,1)",
         "Totalizador_GetTot(2,0,1)", "Totalizador_GetTotTrib(2,0,1)"});
    askFor("Totalizador_GetTotProgramado(2,0,", 2, 30);
    askFor("Totalizador_GetTotProgramado(2,1,", 0, 30);
    ask({"Contador_Get(COUNTER_CRZ)", "Totalizador_GetTotPercTrib(2,1,29)",
         "Totalizador_GetTot(2,1,29)", "Totalizador_GetTotTrib(2,1,29)"});
    // The special totalizers.
    askForNone("0", {"F,1", "I,1"});
    ask({"ResolveTotIndex(0,N,1)", "Totalizador_GetTotProgramado(2,0,40)",
         "Contador_Get(COUNTER_CRZ)", "Totalizador_GetTot(2,0,40)"});
    askForNone("0", {"F,2", "I,2", "N,2", "F,3", "I,3", "N,3"});
    askForNone("1", {"FS,1", "IS,1", "NS,1", "FS,2", "IS,2", "NS,2"});
    ask({"ResolveTotIndex(1,FS,3)", "Totalizador_GetTotProgramado(2,1,41)",
         "Contador_Get(COUNTER_CRZ)", "Totalizador_GetTot(2,1,41)"});
    askForNone("1", {"IS,3", "NS,3"});
    // Discounts, surcharges and cancellations.
    ask({"Contador_Get(COUNTER_CRZ)", "Totalizador_GetSoma_Tot_Desc(2,0)",
         "Contador_Get(COUNTER_CRZ)", "Totalizador_GetSoma_Tot_Desc(2,1)",
         "Contador_Get(COUNTER_CRZ)", "Totalizador_GetSoma_Tot_Acr(2,0)",
         "Contador_Get(COUNTER_CRZ)", "Totalizador_GetSoma_Tot_Acr(2,1)",
         "Contador_Get(COUNTER_CRZ)", "Totalizador_GetSoma_Tot_Canc(2,0)",
         "Contador_Get(COUNTER_CRZ)", "Totalizador_GetSoma_Tot_Canc(2,1)"});
    // The non-fiscal totalizers.
    askFor("Totalizador_GetTotNFProgramado(3,", 0, 39);
    ask({"Totalizador_GetNomeNF(3,38,500)", "Contador_Get(COUNTER_CRZ)",
         "Totalizador_GetTotalNF(3,38)"});
    // The payment means and the change.
    ask({"BaseFormasPagamento_GetNumeroDeFormasDePagamento()",
         "BaseFormasPagamento_GetMeioPagamentoProgramado(0)",
         "BaseFormasPagamento_GetMeioPagamentoProgramado(1)", "Contador_Get(COUNTER_CRZ)",
         "BaseFormasPagamento_GetMeioPagamento(1,500)", "BaseFormasPagamento_GetFPTotal(1)",
         "Contador_Get(COUNTER_CRZ)", "BaseFormasPagamento_GetTrocoTotal()"});
    // The document.
    ask({"Contador_Get(COUNTER_COO)", "Contador_Get(COUNTER_GNF)", "Contador_Get(COUNTER_GRG)",
         "Contador_Get(COUNTER_CDC)", "Contador_Get(COUNTER_CRZ)"});
    EXPECT_THAT(fiscal.calls, ::testing::ElementsAreArray(expected));
}

TEST_F(ReducaoZ, OnlyTotalsOfTheClosedDayAreRead)
{
    Programa(0, 0, 1800, "1.00", "0.18");
    Programa(1, 0, 500, "1.00", "0.05");
    ProgramaNaoFiscal(0, 1, "NF", "1.00");
    Reduz();
    std::vector<std::string> totals;
    for (const std::string& call : fiscal.calls) {
        if (call.rfind("Totalizador_", 0) == 0) {
            totals.push_back(call);
        }
    }
    EXPECT_THAT(
        totals,
        Each(MatchesRegex(
            "Totalizador_Get(GT\\(\\)|VB\\(2\\)|Soma_.*\\(2,.*|Tot[PT]?[a-zA-Z]*\\(2,.*|Tot.*NF.*\\(3,.*|TotalNF\\(3,.*|NomeNF\\(3,.*)")));
}

TEST_F(ReducaoZ, EveryMoneyTextIsAskedForInTheSameWay)
{
    Programa(0, 0, 1800, "1.00", "0.18");
    ProgramaEspecial(0, 30, "1.00");
    ProgramaNaoFiscal(0, 1, "NF", "1.00");
    fiscal.numbers["ResolveTotIndex(0,F,1)"] = 30;
    fiscal.numbers["BaseFormasPagamento_GetNumeroDeFormasDePagamento()"] = 1;
    ProgramaMeio(0, "Dinheiro", "1.00");
    Reduz();
    EXPECT_EQ(MoneyRequests().size(), 12u + 2 + 1 + 6 + 1 + 2);
    EXPECT_THAT(MoneyRequests(), Each("500,0,0,0"));
}

TEST_F(ReducaoZ, EndOfTheReductionIsWrittenWhenItIsKnown)
{
    command.m_dtExecEnd = Instant("2026-03-02 08:15:59");
    Reduz();
    EXPECT_EQ(
        Statements().back(),
        "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (321,1,45,6,7,12,'2026-03-02 08:15:30','2026-03-02 08:15:59','RZ')");
}

TEST_F(ReducaoZ, WithoutTablesEveryStatementIsLoggedAndTheRestGoesOn)
{
    DropTables();
    Reduz();
    EXPECT_EQ(Statements().size(), 9u);
    ASSERT_EQ(LogEntries().size(), 18u);
    EXPECT_EQ(
        LogEntries()[2],
        "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'21', Erro:'no such table: totalizador_reducao'");
    EXPECT_EQ(
        LogEntries()[3],
        "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('DT',12,0.00,'S',0)");
}

TEST_F(ReducaoZ, ExecutionThatReportsZeroEndsItAtOnce)
{
    for (int passed = 0; passed < 9; ++passed) {
        Forget();
        RejectNextExecutions(1, passed);
        EXPECT_EQ(command.DBLogger(db), 0) << passed;
        EXPECT_EQ(Statements().size(), static_cast<std::size_t>(passed) + 1);
    }
    EXPECT_THAT(Rows("SELECT count(*) FROM outros_documentos"), ElementsAre("1"));
}

TEST_F(ReducaoZ, ExecutionThatReportsAnythingElseGoesOn)
{
    ReportNextExecutions(2, 8);
    EXPECT_EQ(command.DBLogger(db), TRUE);
    EXPECT_EQ(Statements().size(), 9u);
}

} // namespace

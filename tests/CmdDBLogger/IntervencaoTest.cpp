// Technical interventions: entering the modes L and T.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/DelegatingTest.h"
#include "tests/CmdDBLogger/LoggerTest.h"
#include "tests/CmdDBLogger/ScriptedCount.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Intervencao : public LoggerTest
{
  protected:
    Intervencao()
    {
        fiscal.SetCounter(COUNTER_COO, 1234);
        fiscal.SetCounter(COUNTER_GNF, 56);
        fiscal.SetCounter(COUNTER_GRG, 7);
        fiscal.SetCounter(COUNTER_CDC, 8);
        fiscal.SetCounter(COUNTER_CRZ, 9);
        fiscal.SetCounter(COUNTER_CRO, 2);
        fiscal.numbers["Cupom_GetQuantidadeDeItens()"] = 7;
    }

    template <class CommandClass>
    BOOL Enter(const std::string& start = "2026-03-02 08:15:30")
    {
        Forget();
        auto command = NewCommand<CommandClass>();
        command.m_dtExecStart = Instant(start);
        command.m_dtExecEnd = Instant("2026-03-02 23:00:00");
        const BOOL result = command.DBLogger(db);
        EXPECT_EQ(OpenQueries(), 0);
        return result;
    }
    BOOL EnterL() { return Enter<CmdEntradaMILInterno>(); }
    BOOL EnterT() { return Enter<CmdEntradaMITInterno>(); }
};

TEST_F(Intervencao, EnteringLIsAnInterventionAndADocument)
{
    EXPECT_EQ(EnterL(), TRUE);

    EXPECT_THAT(
        Statements(),
        ElementsAre(
            "INSERT INTO intervencao (cont_cro, num_ecf, data_hora_intervencao, id_tipo_intervencao, id_perda_dados_mt) VALUES (2,1,'2026-03-02 08:15:30','L','N')",
            "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (1234,1,56,7,8,9,'2026-03-02 08:15:30','2026-03-02 23:00:00','LX')"));
    EXPECT_THAT(LogEntries(), IsEmpty());
    ASSERT_EQ(Queries().size(), 1u);
    EXPECT_EQ(Queries()[0].text, "SELECT count(*) FROM intervencao WHERE cont_cro = 2");
    EXPECT_EQ(Queries()[0].bytes, 52);
    EXPECT_THAT(Rows("SELECT * FROM intervencao"), ElementsAre("2|1|2026-03-02 08:15:30|L|N"));
    EXPECT_THAT(Rows("SELECT * FROM outros_documentos"),
                ElementsAre("1234|1|56|7|8|9|2026-03-02 08:15:30|2026-03-02 23:00:00|LX"));
}

TEST_F(Intervencao, EnteringTIsAnInterventionAndNoDocument)
{
    EXPECT_EQ(EnterT(), TRUE);

    EXPECT_EQ(
        Statement(),
        "INSERT INTO intervencao (cont_cro, num_ecf, data_hora_intervencao, id_tipo_intervencao, id_perda_dados_mt) VALUES (2,1,'2026-03-02 08:15:30','T','N')");
    EXPECT_THAT(LogEntries(), IsEmpty());
    ASSERT_EQ(Queries().size(), 1u);
    EXPECT_EQ(Queries()[0].text, "SELECT count(*) FROM intervencao WHERE cont_cro = 2");
    EXPECT_THAT(Rows("SELECT * FROM intervencao"), ElementsAre("2|1|2026-03-02 08:15:30|T|N"));
    EXPECT_THAT(Rows("SELECT * FROM outros_documentos"), IsEmpty());
}

TEST_F(Intervencao, InterventionThatIsWrittenReadsTheRestartsTwiceAndAsksTheItems)
{
    EnterT();
    EXPECT_THAT(fiscal.calls,
                ElementsAre("Contador_Get(COUNTER_CRO)", "Cupom_GetQuantidadeDeItens()",
                            "Contador_Get(COUNTER_CRO)"));

    fiscal.SetCounter(COUNTER_CRO, 3);
    EnterL();
    EXPECT_THAT(fiscal.calls,
                ElementsAre("Contador_Get(COUNTER_CRO)", "Cupom_GetQuantidadeDeItens()",
                            "Contador_Get(COUNTER_CRO)", "Contador_Get(COUNTER_COO)",
                            "Contador_Get(COUNTER_GNF)", "Contador_Get(COUNTER_GRG)",
                            "Contador_Get(COUNTER_CDC)", "Contador_Get(COUNTER_CRZ)"));
}

TEST_F(Intervencao, SecondEntryOfLUnderTheSameRestartIsADocumentAlone)
{
    EnterL();
    EXPECT_EQ(EnterL(), TRUE);
    EXPECT_EQ(
        Statement(),
        "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (1234,1,56,7,8,9,'2026-03-02 08:15:30','2026-03-02 23:00:00','LX')");
    EXPECT_EQ(fiscal.CallsOf("Contador_Get(COUNTER_CRO)"), 1);
    EXPECT_EQ(fiscal.CallsOf("Cupom_GetQuantidadeDeItens()"), 0);
    EXPECT_THAT(Rows("SELECT count(*) FROM intervencao"), ElementsAre("1"));
    EXPECT_THAT(Rows("SELECT count(*) FROM outros_documentos"), ElementsAre("2"));
}

TEST_F(Intervencao, SecondEntryOfTUnderTheSameRestartWritesNothing)
{
    EnterT();
    EXPECT_EQ(EnterT(), 1);
    EXPECT_THAT(Statements(), IsEmpty());
    EXPECT_THAT(fiscal.calls, ElementsAre("Contador_Get(COUNTER_CRO)"));
}

TEST_F(Intervencao, WhicheverComesFirstWritesTheIntervention)
{
    EnterL();
    EXPECT_EQ(EnterT(), 1);
    EXPECT_THAT(Statements(), IsEmpty());

    fiscal.SetCounter(COUNTER_CRO, 3);
    EnterT();
    EXPECT_EQ(EnterL(), TRUE);
    EXPECT_EQ(Statements().size(), 1u);
    EXPECT_THAT(Rows("SELECT cont_cro, id_tipo_intervencao FROM intervencao"),
                ElementsAre("2|L", "3|T"));
}

TEST_F(Intervencao, NextRestartIsANewIntervention)
{
    EnterT();
    fiscal.SetCounter(COUNTER_CRO, 3);
    EXPECT_EQ(EnterT(), TRUE);
    EXPECT_THAT(Rows("SELECT cont_cro FROM intervencao"), ElementsAre("2", "3"));
}

TEST_F(Intervencao, InstantIsTheCommandsStart)
{
    Enter<CmdEntradaMITInterno>("2024-02-29 23:59:59");
    fiscal.SetCounter(COUNTER_CRO, 3);
    Enter<CmdEntradaMILInterno>("2024-03-01 00:00:00");
    EXPECT_THAT(Rows("SELECT data_hora_intervencao FROM intervencao"),
                ElementsAre("2024-02-29 23:59:59", "2024-03-01 00:00:00"));
}

TEST_F(Intervencao, CountThatCannotBePreparedLetsTheInsertBeTried)
{
    Execute("DROP TABLE intervencao");

    EXPECT_EQ(EnterT(), TRUE);
    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'267', Erro:'no such table: intervencao'",
            "INSERT INTO intervencao (cont_cro, num_ecf, data_hora_intervencao, id_tipo_intervencao, id_perda_dados_mt) VALUES (2,1,'2026-03-02 08:15:30','T','N')"));

    EXPECT_EQ(EnterL(), TRUE);
    EXPECT_EQ(Statements().size(), 2u);
    EXPECT_EQ(LogEntries().size(), 2u);
    EXPECT_THAT(Rows("SELECT id_tipo_documento FROM outros_documentos"), ElementsAre("LX"));
}

TEST_F(Intervencao, WithoutTablesEveryStatementIsLogged)
{
    DropTables();
    EXPECT_EQ(EnterL(), TRUE);
    EXPECT_EQ(LogEntries().size(), 4u);
    EXPECT_EQ(EnterT(), TRUE);
    EXPECT_EQ(LogEntries().size(), 2u);
}

TEST_F(Intervencao, CountWithoutATextAndAFailedStepCountAsNoRow)
{
    ScriptedCount count(db);
    count.AnswerNull();
    count.FailStep();
    count.AnswerText("x");
    for (const char* rows : {"1", "2", "3"}) {
        EXPECT_EQ(EnterT(), TRUE);
        EXPECT_THAT(Rows("SELECT sum(1) FROM intervencao"), ElementsAre(rows));
    }
    count.AnswerNull();
    count.FailStep();
    for (const char* rows : {"4", "5"}) {
        EXPECT_EQ(EnterL(), TRUE);
        EXPECT_THAT(Rows("SELECT sum(1) FROM intervencao"), ElementsAre(rows));
    }
    EXPECT_EQ(count.Left(), 0u);
}

TEST_F(Intervencao, CountIsWhatItsTextBeginsWith)
{
    ScriptedCount count(db);
    for (const char* text : {"-1", "12x"}) {
        count.AnswerText(text);
        EXPECT_EQ(EnterT(), 1) << text;
        EXPECT_THAT(Statements(), IsEmpty());
        count.AnswerText(text);
        EXPECT_EQ(EnterL(), TRUE) << text;
        EXPECT_EQ(Statements().size(), 1u);
    }
}

TEST_F(Intervencao, InsertThatReportsZeroEndsTheEntry)
{
    auto l = NewCommand<CmdEntradaMILInterno>();
    RejectNextExecutions(1);
    EXPECT_EQ(l.DBLogger(db), 0);
    EXPECT_EQ(Statements().size(), 1u);

    fiscal.SetCounter(COUNTER_CRO, 3);
    auto t = NewCommand<CmdEntradaMITInterno>();
    RejectNextExecutions(1);
    EXPECT_EQ(t.DBLogger(db), 0);
}

TEST_F(Intervencao, InsertThatReportsAnythingElseGoesOn)
{
    auto command = NewCommand<CmdEntradaMILInterno>();
    ReportNextExecutions(2, 1);
    EXPECT_EQ(command.DBLogger(db), TRUE);
    EXPECT_EQ(Statements().size(), 2u);
}

TEST_F(Intervencao, AnswerOfLIsThatOfItsDocument)
{
    auto command = NewCommand<CmdEntradaMILInterno>();
    RejectNextExecutions(1, 1);
    EXPECT_EQ(command.DBLogger(db), 0);
    RejectNextExecutions(1);
    EXPECT_EQ(command.DBLogger(db), 0);
    EXPECT_EQ(Statements().size(), 3u);
}

class SaidaDeIntervencao : public DelegatingTest
{
};

TEST_F(SaidaDeIntervencao, LeavingInterventionLIsADocumentLX)
{
    EXPECT_EQ(
        Logged<CmdSaidaMILInterno>(insertQuestions),
        "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (1234,1,56,7,8,9,'2026-03-02 08:15:30','2026-03-02 08:16:01','LX')");
}

TEST_F(SaidaDeIntervencao, LeavingInterventionTIsADocumentLX)
{
    EXPECT_EQ(
        Logged<CmdSaidaMITInterno>(insertQuestions),
        "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (1234,1,56,7,8,9,'2026-03-02 08:15:30','2026-03-02 08:16:01','LX')");
}

} // namespace

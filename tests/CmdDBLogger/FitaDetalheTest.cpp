// A reprint from the detail tape.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/LoggerTest.h"
#include "tests/CmdDBLogger/ScriptedCount.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FitaDetalhe : public LoggerTest
{
  protected:
    FitaDetalhe() { fiscal.SetCounter(COUNTER_CFD, 5); }

    BOOL Reprint(int first, int last)
    {
        Forget();
        auto command = NewCommand<CmdReimprimeMFD>();
        command.m_iCooInicial = first;
        command.m_iCooFinal = last;
        const BOOL result = command.DBLogger(db);
        EXPECT_EQ(OpenQueries(), 0);
        return result;
    }
};

TEST_F(FitaDetalhe, ReprintIsCountedAndWrittenUnderTheNextNumber)
{
    EXPECT_EQ(Reprint(100, 250), TRUE);

    EXPECT_EQ(
        Statement(),
        "INSERT INTO fita_detalhe (cont_cfd, num_ecf, data_hora_emissao, coo_inicial, coo_final) VALUES (6,1,'2026-03-02 08:15:30',100,250)");
    ASSERT_EQ(Queries().size(), 1u);
    EXPECT_EQ(Queries()[0].text, "SELECT count(*) FROM fita_detalhe WHERE cont_cfd = 6");
    EXPECT_EQ(Queries()[0].bytes, 53);
    EXPECT_THAT(fiscal.calls,
                ElementsAre("Contador_Get(COUNTER_CFD)", "Contador_Get(COUNTER_CFD)"));
    EXPECT_THAT(LogEntries(), IsEmpty());
    EXPECT_THAT(Rows("SELECT * FROM fita_detalhe"), ElementsAre("6|1|2026-03-02 08:15:30|100|250"));
}

TEST_F(FitaDetalhe, NoDocumentIsWritten)
{
    Reprint(100, 250);
    EXPECT_THAT(Rows("SELECT * FROM outros_documentos"), IsEmpty());
}

TEST_F(FitaDetalhe, SameReprintTwiceIsOneRow)
{
    Reprint(100, 250);
    EXPECT_EQ(Reprint(100, 250), 1);
    EXPECT_THAT(Statements(), IsEmpty());
    EXPECT_THAT(fiscal.calls, ElementsAre("Contador_Get(COUNTER_CFD)"));
    EXPECT_THAT(Rows("SELECT count(*) FROM fita_detalhe"), ElementsAre("1"));
}

TEST_F(FitaDetalhe, RowOfTheCountersOwnNumberIsAnotherReprints)
{
    Execute("INSERT INTO fita_detalhe VALUES (5,1,'2026-03-01 10:00:00',1,9)");
    EXPECT_EQ(Reprint(100, 250), TRUE);
    EXPECT_THAT(Rows("SELECT cont_cfd FROM fita_detalhe"), ElementsAre("5", "6"));
}

TEST_F(FitaDetalhe, FirstReprintIsNumberOne)
{
    fiscal.SetCounter(COUNTER_CFD, 0);
    Reprint(7, 7);
    EXPECT_EQ(
        Statement(),
        "INSERT INTO fita_detalhe (cont_cfd, num_ecf, data_hora_emissao, coo_inicial, coo_final) VALUES (1,1,'2026-03-02 08:15:30',7,7)");
    EXPECT_EQ(Queries()[0].text, "SELECT count(*) FROM fita_detalhe WHERE cont_cfd = 1");
}

TEST_F(FitaDetalhe, RangeIsWrittenAsItIs)
{
    Reprint(-1, 2147483647);
    EXPECT_EQ(
        Statement(),
        "INSERT INTO fita_detalhe (cont_cfd, num_ecf, data_hora_emissao, coo_inicial, coo_final) VALUES (6,1,'2026-03-02 08:15:30',-1,2147483647)");
}

TEST_F(FitaDetalhe, CountThatCannotBePreparedLetsTheInsertBeTried)
{
    Execute("DROP TABLE fita_detalhe");
    EXPECT_EQ(Reprint(100, 250), TRUE);
    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'100', Erro:'no such table: fita_detalhe'",
            "INSERT INTO fita_detalhe (cont_cfd, num_ecf, data_hora_emissao, coo_inicial, coo_final) VALUES (6,1,'2026-03-02 08:15:30',100,250)"));
}

TEST_F(FitaDetalhe, CountWithoutATextAndAFailedStepCountAsNoRow)
{
    ScriptedCount count(db);
    count.AnswerNull();
    count.FailStep();
    Reprint(1, 2);
    Reprint(3, 4);
    EXPECT_EQ(count.Left(), 0u);
    EXPECT_THAT(Rows("SELECT coo_inicial FROM fita_detalhe"), ElementsAre("1", "3"));
}

TEST_F(FitaDetalhe, NegativeCountIsACount)
{
    ScriptedCount count(db);
    count.AnswerText("-1");
    EXPECT_EQ(Reprint(1, 2), 1);
    EXPECT_THAT(Statements(), IsEmpty());
}

TEST_F(FitaDetalhe, AnswerIsThatOfTheInsert)
{
    RejectNextExecutions(1);
    EXPECT_EQ(Reprint(1, 2), 0);
}

} // namespace

// The programming of a non-fiscal totalizer.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/LoggerTest.h"
#include "tests/CmdDBLogger/ScriptedCount.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class TotalizadorNaoFiscal : public LoggerTest
{
  protected:
    // What the logger leaves open is released behind each test.
    void TearDown() override
    {
        LoggerTest::TearDown();
        ReleaseOpenQueries();
    }

    BOOL Program(int index, const std::string& description)
    {
        Forget();
        auto command = NewCommand<CmdInsereRegOpeNF>();
        command.m_iIndice = index;
        SetText(command.m_sDescricao, description);
        return command.DBLogger(db);
    }
};

TEST_F(TotalizadorNaoFiscal, NewIndexIsInserted)
{
    EXPECT_EQ(Program(5, "Gas"), TRUE);

    EXPECT_EQ(Statement(),
              "INSERT INTO totalizador_nao_fiscal (num_indice, descricao) VALUES (5,'Gas')");
    ASSERT_EQ(Queries().size(), 1u);
    EXPECT_EQ(Queries()[0].text,
              "SELECT count(*) FROM totalizador_nao_fiscal WHERE num_indice = 5");
    EXPECT_EQ(Queries()[0].bytes, 65);
    EXPECT_THAT(LogEntries(), IsEmpty());
    EXPECT_THAT(fiscal.calls, IsEmpty());
    EXPECT_THAT(Rows("SELECT * FROM totalizador_nao_fiscal"), ElementsAre("5|Gas"));
}

TEST_F(TotalizadorNaoFiscal, IndexProgrammedAgainIsUpdated)
{
    Program(5, "Gas");
    EXPECT_EQ(Program(5, "Agua"), TRUE);

    EXPECT_EQ(Statement(), "UPDATE totalizador_nao_fiscal SET descricao='Agua' WHERE num_indice=5");
    EXPECT_THAT(Rows("SELECT * FROM totalizador_nao_fiscal"), ElementsAre("5|Agua"));
}

TEST_F(TotalizadorNaoFiscal, EveryProgrammingLeavesItsCountOpen)
{
    Program(5, "Gas");
    EXPECT_EQ(OpenQueries(), 1);
    Program(5, "Agua");
    EXPECT_EQ(OpenQueries(), 2);
    Program(6, "Luz");
    EXPECT_EQ(OpenQueries(), 3);
    EXPECT_THAT(Rows("SELECT * FROM totalizador_nao_fiscal"), ElementsAre("5|Agua", "6|Luz"));
}

TEST_F(TotalizadorNaoFiscal, OpenCountDoesNotHinderTheCallersTransaction)
{
    Execute("BEGIN");
    Program(5, "Gas");
    Execute("COMMIT");
    EXPECT_EQ(OpenQueries(), 1);
    EXPECT_THAT(Rows("SELECT * FROM totalizador_nao_fiscal"), ElementsAre("5|Gas"));
}

TEST_F(TotalizadorNaoFiscal, NegativeIndexAndEmptyDescriptionAreWrittenAsTheyAre)
{
    Program(-5, "");
    EXPECT_EQ(Queries()[0].text,
              "SELECT count(*) FROM totalizador_nao_fiscal WHERE num_indice = -5");
    EXPECT_EQ(Statement(),
              "INSERT INTO totalizador_nao_fiscal (num_indice, descricao) VALUES (-5,'')");
    Program(-5, "");
    EXPECT_EQ(Statement(), "UPDATE totalizador_nao_fiscal SET descricao='' WHERE num_indice=-5");
}

TEST_F(TotalizadorNaoFiscal, DescriptionThatFillsItsFieldIsWrittenWhole)
{
    Program(5, "ABCDEFGHIJKLMNOPQRST");
    EXPECT_EQ(
        Statement(),
        "INSERT INTO totalizador_nao_fiscal (num_indice, descricao) VALUES (5,'ABCDEFGHIJKLMNOPQRST')");
}

TEST_F(TotalizadorNaoFiscal, DescriptionWithoutATerminatorEndsWithItsField)
{
    auto command = NewCommand<CmdInsereRegOpeNF>();
    command.m_iIndice = 5;
    FillWithoutTerminator(command.m_sDescricao, "ABCDEFGHIJKLMNOPQRSTU");
    command.DBLogger(db);
    EXPECT_EQ(
        Statement(),
        "INSERT INTO totalizador_nao_fiscal (num_indice, descricao) VALUES (5,'ABCDEFGHIJKLMNOPQRSTU')");
    Forget();
    command.DBLogger(db);
    EXPECT_EQ(
        Statement(),
        "UPDATE totalizador_nao_fiscal SET descricao='ABCDEFGHIJKLMNOPQRSTU' WHERE num_indice=5");
}

TEST_F(TotalizadorNaoFiscal, DescriptionWithAnApostropheIsLostAndLogged)
{
    EXPECT_EQ(Program(5, "D'AGUA"), TRUE);
    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'85', Erro:'near \"AGUA\": syntax error'",
            "INSERT INTO totalizador_nao_fiscal (num_indice, descricao) VALUES (5,'D'AGUA')"));

    Program(5, "Agua");
    EXPECT_EQ(Program(5, "D'AGUA"), TRUE);
    EXPECT_EQ(LogEntries()[1],
              "UPDATE totalizador_nao_fiscal SET descricao='D'AGUA' WHERE num_indice=5");
    EXPECT_THAT(Rows("SELECT * FROM totalizador_nao_fiscal"), ElementsAre("5|Agua"));
}

TEST_F(TotalizadorNaoFiscal, CountThatCannotBePreparedLetsTheInsertBeTried)
{
    DropTables();
    EXPECT_EQ(Program(5, "Gas"), TRUE);
    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'85', Erro:'no such table: totalizador_nao_fiscal'",
            "INSERT INTO totalizador_nao_fiscal (num_indice, descricao) VALUES (5,'Gas')"));
    EXPECT_EQ(OpenQueries(), 0);
}

TEST_F(TotalizadorNaoFiscal, CountWithoutATextAndAFailedStepCountAsNoRow)
{
    ScriptedCount count(db);
    count.AnswerNull();
    count.FailStep();
    Program(5, "A");
    Program(5, "B");
    EXPECT_THAT(Rows("SELECT * FROM totalizador_nao_fiscal"), ElementsAre("5|A", "5|B"));
    EXPECT_EQ(OpenQueries(), 2);
    ReleaseOpenQueries();
}

TEST_F(TotalizadorNaoFiscal, NegativeCountIsACount)
{
    ScriptedCount count(db);
    count.AnswerText("-1");
    Program(5, "A");
    EXPECT_EQ(Statement(), "UPDATE totalizador_nao_fiscal SET descricao='A' WHERE num_indice=5");
    ReleaseOpenQueries();
}

TEST_F(TotalizadorNaoFiscal, SeveralRowsOfAnIndexAreAllUpdated)
{
    Execute("INSERT INTO totalizador_nao_fiscal VALUES (5,'A'), (5,'B'), (6,'C')");
    Program(5, "D");
    EXPECT_THAT(Rows("SELECT * FROM totalizador_nao_fiscal"), ElementsAre("5|D", "5|D", "6|C"));
}

TEST_F(TotalizadorNaoFiscal, AnswerIsThatOfTheExecution)
{
    RejectNextExecutions(2);
    EXPECT_EQ(Program(5, "A"), 0);
    EXPECT_EQ(Program(5, "B"), 0);
}

} // namespace

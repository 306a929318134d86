// The currency symbol, whose statement is required to be one that the engine rejects.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/LoggerTest.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Moeda : public LoggerTest
{
  protected:
    BOOL Program(const std::string& symbol)
    {
        Forget();
        auto command = NewCommand<CmdProgramaMoeda>();
        SetText(command.m_sSimboloMoeda, symbol);
        return command.DBLogger(db);
    }
};

TEST_F(Moeda, InstantStandsBareAndTheStatementIsRejected)
{
    EXPECT_EQ(Program("R$"), 1);

    EXPECT_THAT(
        Statements(),
        ElementsAre(
            "INSERT INTO moeda (num_ecf, data_hora_gravacao, simbolo_moeda) VALUES (1,2026-03-02 08:15:30'R$')"));
    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'98', Erro:'near \"08\": syntax error'",
            "INSERT INTO moeda (num_ecf, data_hora_gravacao, simbolo_moeda) VALUES (1,2026-03-02 08:15:30'R$')"));
    EXPECT_THAT(fiscal.calls, IsEmpty());
    EXPECT_THAT(Queries(), IsEmpty());
    EXPECT_THAT(Rows("SELECT * FROM moeda"), IsEmpty());
}

TEST_F(Moeda, EveryProgrammingIsRejectedWithTwoEntries)
{
    for (const char* symbol : {"", "R$", "US$ ", "'", "X)--"}) {
        EXPECT_EQ(Program(symbol), 1) << symbol;
        EXPECT_EQ(
            Statement(),
            "INSERT INTO moeda (num_ecf, data_hora_gravacao, simbolo_moeda) VALUES (1,2026-03-02 08:15:30'" +
                std::string(symbol) + "')");
        ASSERT_EQ(LogEntries().size(), 2u) << symbol;
        EXPECT_EQ(LogEntries()[1], Statement());
    }
    EXPECT_THAT(Rows("SELECT * FROM moeda"), IsEmpty());
}

TEST_F(Moeda, RowsOfOtherWritersStay)
{
    Execute("INSERT INTO moeda VALUES (1,'2020-01-01 00:00:00','Cz$')");
    Program("R$");
    EXPECT_THAT(Rows("SELECT * FROM moeda"), ElementsAre("1|2020-01-01 00:00:00|Cz$"));
}

TEST_F(Moeda, SymbolWithoutATerminatorEndsWithItsField)
{
    auto command = NewCommand<CmdProgramaMoeda>();
    FillWithoutTerminator(command.m_sSimboloMoeda, "ABCDE");
    command.DBLogger(db);
    EXPECT_EQ(
        Statement(),
        "INSERT INTO moeda (num_ecf, data_hora_gravacao, simbolo_moeda) VALUES (1,2026-03-02 08:15:30'ABCDE')");
}

TEST_F(Moeda, AnswerIsThatOfTheExecution)
{
    RejectNextExecutions(1);
    EXPECT_EQ(Program("R$"), 0);
}

} // namespace

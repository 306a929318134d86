// The pipeline of a command.
#include "bancada/comandos/Executor.h"
#include "bancada/tape/FieldVisitor.h"
#include "tests/bancada/comandos/ComandoTest.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace
{

using ::testing::ElementsAre;

// Writes down what is asked of it, and refuses where it is told to.
class Spy final : public CmdLeituraMF, public bancada::ComandoBancada
{
  public:
    Command& GetCommand() override { return *this; }
    void Fields(bancada::FieldVisitor&) override {}

    BOOL InitCheck(CommandDataFisco*) override { return Note("InitCheck"); }
    BOOL FiscalCheck() override { return Note("FiscalCheck"); }
    BOOL Fiscal() override { return Note("Fiscal"); }
    BOOL Print() override { return Note("Print"); }
    BOOL DBLogger(sqlite3* db) override
    {
        endInLogger = m_dtExecEnd;
        inTransaction = sqlite3_get_autocommit(db) == 0;
        return Note("DBLogger");
    }
    BOOL FiscalPostPrint() override { return Note("FiscalPostPrint"); }
    BOOL Log() override { return Note("Log"); }
    BOOL FillReply(BYTE) override { return Note("FillReply"); }

    std::vector<std::string> steps;
    std::string refuseIn;
    RtcAbsoluteTime endInLogger{1};
    bool inTransaction = false;

  private:
    BOOL Note(const char* step)
    {
        steps.emplace_back(step);
        if (step != refuseIn) {
            return TRUE;
        }
        refusal = std::string("refused in ") + step;
        return FALSE;
    }
};

class ComandoExecutor : public ComandoTest
{
  protected:
    bancada::Executor executor{registro, database};
};

TEST_F(ComandoExecutor, RunsTheStepsInTheOrderOfTheirSlots)
{
    Spy spy;
    const bancada::Outcome outcome = executor.Execute(spy, RtcAbsoluteTime(EIGHT));
    EXPECT_TRUE(outcome.executed);
    EXPECT_TRUE(outcome.kept);
    EXPECT_FALSE(outcome.refusal);
    EXPECT_THAT(spy.steps, ElementsAre("InitCheck", "FiscalCheck", "Fiscal", "Print", "DBLogger",
                                       "FiscalPostPrint", "Log", "FillReply"));
}

TEST_F(ComandoExecutor, LoggerRunsInsideATransactionWithItsEndStillUnset)
{
    Spy spy;
    EXPECT_TRUE(executor.Execute(spy, RtcAbsoluteTime(EIGHT)).executed);
    EXPECT_TRUE(spy.inTransaction);
    EXPECT_TRUE(sqlite3_get_autocommit(database.Handle()) != 0);
    EXPECT_EQ(spy.endInLogger.s, matlong[0]);
    EXPECT_EQ(spy.m_dtExecStart.s, EIGHT);
    EXPECT_EQ(spy.m_dtExecEnd.s, EIGHT + 1);
    EXPECT_EQ(spy.FDController, &registro);
    EXPECT_EQ(spy.m_eStatusCmd, CMD_END_EXEC_OK);
}

TEST_F(ComandoExecutor, ACommandKeepsTheEndThatItWasGiven)
{
    Spy spy;
    EXPECT_TRUE(executor.Execute(spy, RtcAbsoluteTime(EIGHT), RtcAbsoluteTime(EIGHT + 9)).executed);
    EXPECT_EQ(spy.endInLogger.s, EIGHT + 9);
    EXPECT_EQ(spy.m_dtExecStart.s, EIGHT);
    EXPECT_EQ(spy.m_dtExecEnd.s, EIGHT + 9);
    Spy atOnce;
    EXPECT_TRUE(
        executor.Execute(atOnce, RtcAbsoluteTime(EIGHT + 9), RtcAbsoluteTime(EIGHT + 9)).executed);
    EXPECT_EQ(atOnce.endInLogger.s, EIGHT + 9);
    EXPECT_EQ(atOnce.m_dtExecEnd.s, EIGHT + 9);
}

TEST_F(ComandoExecutor, RefusalEndsThePipelineBeforeAnyEffect)
{
    for (const char* step : {"InitCheck", "FiscalCheck"}) {
        Spy spy;
        spy.refuseIn = step;
        const bancada::Outcome outcome = executor.Execute(spy, RtcAbsoluteTime(EIGHT));
        EXPECT_FALSE(outcome.executed);
        EXPECT_EQ(outcome.refusal, std::string("refused in ") + step);
        EXPECT_EQ(spy.steps.back(), step);
        EXPECT_EQ(spy.m_eStatusCmd, CMD_NAK);
    }
}

TEST_F(ComandoExecutor, InterventionsAreRaisedByTheFirmwareTheRestComesFromTheHost)
{
    std::vector<std::string> internal;
    for (const bancada::CatalogueEntry& item : bancada::Catalogue()) {
        if (item.make(registro)->Origin() == CMD_INTERNO) {
            internal.emplace_back(item.name);
        }
    }
    EXPECT_THAT(internal, ElementsAre("entrada_mil_interno", "saida_mil_interno",
                                      "saida_mit_interno", "entrada_mit_interno"));
}

TEST_F(ComandoExecutor, StatementsThatALoggerLeavesOpenAreReleased)
{
    // The totalizer's logger never finalizes its counting query.
    const auto command = Read(R"({"cmd":"insere_reg_ope_nf","indice":3,"descricao":"RECARGA"})");
    Command& comando = command->GetCommand();
    comando.FDController = &registro;
    const auto open = [&] {
        int count = 0;
        for (sqlite3_stmt* s = sqlite3_next_stmt(database.Handle(), nullptr); s != nullptr;
             s = sqlite3_next_stmt(database.Handle(), s)) {
            ++count;
        }
        return count;
    };
    const int ofTheOwner = open(); // which it keeps from command to command
    database.BeginCommand();
    EXPECT_EQ(open(), ofTheOwner);
    comando.DBLogger(database.Handle());
    EXPECT_EQ(open(), ofTheOwner + 1);
    EXPECT_TRUE(database.CommitCommand());
    EXPECT_EQ(open(), ofTheOwner);

    Run(R"({"cmd":"insere_reg_ope_nf","indice":4,"descricao":"LUZ"})");
    EXPECT_EQ(open(), ofTheOwner);
}

} // namespace

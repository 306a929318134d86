// A command's transaction: kept whole, or lost whole and told.
#include "tests/LogDatabase/LogDatabaseTest.h"

namespace
{

class Transaction : public LogDatabaseTest
{
  protected:
    void SetUp() override { ASSERT_EQ(Open(), LogFault::NONE) << database.Text(); }
};

TEST_F(Transaction, KeepsACommandWhole)
{
    EXPECT_TRUE(database.Begin());
    Insert(1);
    EXPECT_EQ(Rows(), "");
    Insert(2);
    const LogOutcome outcome = database.Commit();
    EXPECT_EQ(outcome.state, LogState::KEPT);
    EXPECT_EQ(outcome.fault, LogFault::NONE);
    EXPECT_STREQ(outcome.text, "");
    EXPECT_EQ(Rows(), "1 2");
    EXPECT_EQ(Entries(), std::vector<std::string>());
}

TEST_F(Transaction, AStatementRefusedForItselfCostsItsOwnRow)
{
    EXPECT_EQ(Command({"INSERT INTO versao_sb VALUES (1, 'v')", "INSERT INTO versao_sb VALUES ('",
                       "DELETE FROM versao_sb", "INSERT INTO versao_sb VALUES (2, 'v')"})
                  .state,
              LogState::KEPT);
    EXPECT_EQ(Rows(), "1 2");
    EXPECT_EQ(CountEntries("rejected"), 2);
    EXPECT_EQ(CountEntries("LogDatabase"), 0);
}

// A query after a statement that could not be prepared is a statement of its own.
TEST_F(Transaction, ACountAfterARejectedStatementIsAnswered)
{
    database.Begin();
    Insert(1);
    Execute("INSERT INTO versao_sb (none) VALUES (1)");
    sqlite3_stmt* count = nullptr;
    ASSERT_EQ(sqlite3_prepare_v2(database.Handle(), "SELECT count(*) FROM versao_sb", -1, &count,
                                 nullptr),
              SQLITE_OK)
        << sqlite3_errmsg(database.Handle());
    EXPECT_EQ(sqlite3_step(count), SQLITE_ROW);
    EXPECT_EQ(sqlite3_column_int(count, 0), 1);
    // Left open, as some loggers do.
    EXPECT_EQ(database.Commit().state, LogState::KEPT);
    EXPECT_EQ(Rows(), "1");
}

TEST_F(Transaction, ATransactionThatTheEngineRolledBackLosesItsCommandWhole)
{
    database.Begin();
    Insert(1);
    sqlite3_progress_handler(
        database.Handle(), 1, [](void*) { return 1; }, nullptr);
    Insert(2);
    sqlite3_progress_handler(database.Handle(), 0, nullptr, nullptr);
    ASSERT_NE(sqlite3_get_autocommit(database.Handle()), 0) << "the trap did not spring";
    Insert(3);
    const LogOutcome outcome = database.Commit();
    EXPECT_EQ(outcome.state, LogState::LOST);
    EXPECT_EQ(outcome.fault, LogFault::INTERRUPTED);
    EXPECT_STREQ(outcome.text, "interrupted");
    EXPECT_EQ(Rows(), "");
    EXPECT_EQ(Entries(),
              (std::vector<std::string>{"rejected: INSERT INTO versao_sb VALUES (2, 'v')",
                                        "LogDatabase: the rows of this command are lost: "
                                        "interrupted",
                                        "rejected: INSERT INTO versao_sb VALUES (3, 'v')"}));
    EXPECT_EQ(Command({"INSERT INTO versao_sb VALUES (5, 'v')"}).state, LogState::KEPT);
    EXPECT_EQ(Rows(), "5");
}

TEST_F(Transaction, ALockThatStaysIsWaitedForOnceAndTold)
{
    Other other(Path());
    other.Run("BEGIN IMMEDIATE");
    const LogOutcome outcome = Command({"INSERT INTO versao_sb VALUES (1, 'v')"});
    EXPECT_EQ(outcome.state, LogState::NOT_BEGUN);
    EXPECT_EQ(outcome.fault, LogFault::LOCKED);
    EXPECT_STREQ(outcome.text, "database is locked");
    EXPECT_EQ(CountEntries("LogDatabase: the rows of this command are lost: database is locked"),
              1);
    other.Run("ROLLBACK");
    EXPECT_EQ(Command({"INSERT INTO versao_sb VALUES (3, 'v')"}).state, LogState::KEPT);
    EXPECT_EQ(Rows(), "3");
}

TEST_F(Transaction, ACommandThatLogsNothingLosesNothing)
{
    Other other(Path());
    other.Run("BEGIN IMMEDIATE");
    EXPECT_EQ(Command({}).state, LogState::KEPT);
    EXPECT_EQ(Entries(), std::vector<std::string>());
}

TEST_F(Transaction, OutsideACommandNothingIsWritten)
{
    Insert(1);
    EXPECT_EQ(CountEntries("rejected"), 1);
    EXPECT_EQ(Rows(), "");
    EXPECT_EQ(database.Commit().state, LogState::KEPT);
    EXPECT_EQ(Rows(), "");
}

TEST_F(Transaction, TheNumberIsThatOfTheLastCommandThatIsKept)
{
    EXPECT_EQ(NumberedCommand(1, 1).state, LogState::KEPT);
    EXPECT_EQ(database.CommandNumber(), 1);
    EXPECT_EQ(Rows("PRAGMA user_version"), "1");
    {
        Other other(Path());
        other.Run("BEGIN IMMEDIATE");
        EXPECT_EQ(NumberedCommand(2, 2).state, LogState::NOT_BEGUN);
    }
    EXPECT_EQ(database.CommandNumber(), 1);
    EXPECT_EQ(NumberedCommand(3, 3).state, LogState::KEPT);
    EXPECT_EQ(Rows("PRAGMA user_version"), "3");
    EXPECT_EQ(Rows(), "1 3");
}

// A run that was stopped, and goes on after another one has done its commands.
TEST_F(Transaction, AnotherWriterIsSeenInTheTransaction)
{
    EXPECT_EQ(NumberedCommand(1, 1).state, LogState::KEPT);
    LogDatabase second;
    ASSERT_EQ(second.Open(Path().c_str(), Brief()), LogFault::NONE);
    second.Begin();
    sqlite3_exec(second.Handle(), "INSERT INTO versao_sb VALUES (2, 'second')", nullptr, nullptr,
                 nullptr);
    second.NumberCommand(2);
    EXPECT_EQ(second.Commit().state, LogState::KEPT);

    const LogOutcome outcome = NumberedCommand(2, 2);
    EXPECT_EQ(outcome.state, LogState::LOST);
    EXPECT_EQ(outcome.fault, LogFault::WRONG_NUMBER);
    EXPECT_STREQ(outcome.text,
                 "another program has written to the database: it is at command 2, not 1");
    EXPECT_EQ(Rows("SELECT versao FROM versao_sb"), "v second");
}

TEST_F(Transaction, TheLogIsSyncedBeforeACommitAndAfterALossIsTold)
{
    static std::vector<std::string> calls;
    calls.clear();
    LogDatabaseOptions options = Brief();
    options.context = &database;
    options.syncLog = [](void* context) {
        auto& owner = *static_cast<LogDatabase*>(context);
        calls.push_back(sqlite3_get_autocommit(owner.Handle()) == 0 ? "within" : "after");
    };
    ASSERT_EQ(Open(options), LogFault::NONE);
    EXPECT_EQ(Command({"INSERT INTO versao_sb VALUES (1, 'v')"}).state, LogState::KEPT);
    EXPECT_EQ(calls, std::vector<std::string>{"within"});

    // A loss that is known before COMMIT, of which there is none then.
    calls.clear();
    Other other(Path());
    other.Run("BEGIN IMMEDIATE");
    EXPECT_EQ(Command({"INSERT INTO versao_sb VALUES (1, 'v')"}).state, LogState::NOT_BEGUN);
    EXPECT_EQ(calls, std::vector<std::string>{"after"});
    other.Run("ROLLBACK");

    // One that COMMIT itself reports.
    calls.clear();
    database.Begin();
    Insert(2);
    sqlite3_commit_hook(
        database.Handle(), [](void*) { return 1; }, nullptr);
    EXPECT_EQ(database.Commit().state, LogState::LOST);
    sqlite3_commit_hook(database.Handle(), nullptr, nullptr);
    EXPECT_EQ(calls, (std::vector<std::string>{"within", "after"}));
    EXPECT_EQ(Rows(), "1");
}

} // namespace

// A command's transaction: kept whole, or lost whole and told.
#include "tests/LogDatabase/LogDatabaseTest.h"
#include "tests/support/Interrupted.h"

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

TEST_F(Transaction, ACommandThatNobodyEndedIsRolledBackByTheNext)
{
    EXPECT_TRUE(database.Begin());
    Insert(1);
    EXPECT_EQ(Command({"INSERT INTO versao_sb VALUES (2, 'v')"}).state, LogState::KEPT);
    EXPECT_EQ(Rows(), "2");
}

TEST_F(Transaction, AStatementThatRollsBackForItselfLosesTheCommandWhole)
{
    EXPECT_EQ(Command({"INSERT INTO versao_sb (rowid, num_ecf) VALUES (1, 1)"}).state,
              LogState::KEPT);
    const LogOutcome outcome =
        Command({"INSERT INTO versao_sb VALUES (2, 'v')",
                 "INSERT OR ROLLBACK INTO versao_sb (rowid, num_ecf) VALUES (1, 3)"});
    EXPECT_EQ(outcome.state, LogState::LOST);
    EXPECT_EQ(outcome.fault, LogFault::ROLLED_BACK);
    EXPECT_STREQ(outcome.text, "the engine has rolled its transaction back");
    EXPECT_EQ(Rows(), "1");
}

// The statement's own result comes once more when it is released, and is told once.
TEST_F(Transaction, AStatementLeftOpenAfterItsFailureLosesTheCommandOnce)
{
    database.Begin();
    Insert(1);
    test_support::LeaveInterrupted(database.Handle());
    EXPECT_EQ(database.Commit().fault, LogFault::INTERRUPTED);
    EXPECT_EQ(Entries(), std::vector<std::string>{std::string(LOST_COMMAND_ENTRY) + "interrupted"});
    EXPECT_EQ(Rows(), "");
}

class RefusedCommit : public Transaction
{
  protected:
    // The engine makes a rollback of each commit that it refuses.
    void Refuse(bool refuses)
    {
        sqlite3_commit_hook(database.Handle(), OnCommit, &m_refuses);
        m_refuses = refuses;
    }

  private:
    static int OnCommit(void* refuses) { return *static_cast<bool*>(refuses) ? 1 : 0; }

    bool m_refuses = false;
};

TEST_F(RefusedCommit, OfANumberedCommandWithoutStatementsIsALoss)
{
    EXPECT_EQ(NumberedCommand(4, 1).state, LogState::KEPT);
    database.Begin();
    database.NumberCommand(5);
    Refuse(true);
    EXPECT_EQ(database.Commit().state, LogState::LOST);
    Refuse(false);
    EXPECT_EQ(Rows("PRAGMA user_version"), "4");
    EXPECT_EQ(NumberedCommand(5, 2).state, LogState::KEPT);
    EXPECT_EQ(Rows(), "1 2");
}

// A commit that failed may be in the file all the same; any other number is somebody else's.
TEST_F(RefusedCommit, ThatReachedTheFileAllTheSameIsGoneOnFromAndNoOther)
{
    EXPECT_EQ(NumberedCommand(4, 1).state, LogState::KEPT);
    Refuse(true);
    EXPECT_EQ(NumberedCommand(5, 2).state, LogState::LOST);
    Refuse(false);
    Plain("PRAGMA user_version = 9");
    EXPECT_EQ(NumberedCommand(6, 3).fault, LogFault::WRONG_NUMBER);
    Plain("PRAGMA user_version = 5");
    EXPECT_EQ(NumberedCommand(6, 4).state, LogState::KEPT);
    EXPECT_EQ(Rows(), "1 4");
}

TEST_F(RefusedCommit, OfADatabaseInMemoryCostsThatCommand)
{
    ASSERT_EQ(database.Open(":memory:"), LogFault::NONE);
    Refuse(true);
    EXPECT_EQ(NumberedCommand(1, 1).state, LogState::LOST);
    Refuse(false);
    EXPECT_EQ(NumberedCommand(1, 2).state, LogState::KEPT);
}

// A watchdog of the caller's that interrupts the statement of that text, and looks on.
struct Watchdog {
    LogDatabase* database;
    std::string sql;
    bool sawOwn = false;

    static int OnProgress(void* self)
    {
        auto& watchdog = *static_cast<Watchdog*>(self);
        sqlite3* db = watchdog.database->Handle();
        watchdog.sawOwn = watchdog.sawOwn || watchdog.database->IsAtWork();
        for (sqlite3_stmt* one = sqlite3_next_stmt(db, nullptr); one != nullptr;
             one = sqlite3_next_stmt(db, one)) {
            if (sqlite3_stmt_busy(one) != 0 && watchdog.sql == sqlite3_sql(one)) {
                return 1;
            }
        }
        return 0;
    }
};

TEST_F(Transaction, ANumberThatCannotBeReadLosesTheCommand)
{
    EXPECT_EQ(NumberedCommand(1, 1).state, LogState::KEPT);
    Watchdog watchdog{&database, "PRAGMA user_version"};
    sqlite3_progress_handler(database.Handle(), 1, Watchdog::OnProgress, &watchdog);
    const LogOutcome outcome = NumberedCommand(2, 2);
    sqlite3_progress_handler(database.Handle(), 0, nullptr, nullptr);
    EXPECT_EQ(outcome.state, LogState::LOST);
    EXPECT_EQ(outcome.fault, LogFault::INTERRUPTED);
    EXPECT_TRUE(watchdog.sawOwn);
    EXPECT_FALSE(database.IsAtWork());
    EXPECT_EQ(NumberedCommand(2, 3).state, LogState::KEPT);
    EXPECT_EQ(Rows(), "1 3");
}

TEST_F(Transaction, WithinACommandTheDatabaseDoesNotRest)
{
    database.Begin();
    Insert(1);
    EXPECT_EQ(database.Rest(), LogFault::NONE);
    EXPECT_EQ(database.Commit().state, LogState::KEPT);
    EXPECT_GT(database.LogBytes(), 0);
    EXPECT_EQ(database.Rest(), LogFault::NONE);
    EXPECT_EQ(database.LogBytes(), 0);
}

TEST_F(LogDatabaseTest, ACommandOfADatabaseWithoutANameSaysWhyItWasNotBegun)
{
    EXPECT_STREQ(Command({"INSERT INTO versao_sb VALUES (1, 'v')"}).text, "no database is open");
    EXPECT_EQ(database.Open(nullptr), LogFault::CANNOT_OPEN);
    const LogOutcome outcome = Command({"INSERT INTO versao_sb VALUES (1, 'v')"});
    EXPECT_EQ(outcome.state, LogState::NOT_BEGUN);
    EXPECT_EQ(outcome.fault, LogFault::CANNOT_OPEN);
    EXPECT_STREQ(outcome.text, "it has no name");
}

} // namespace

// Opening: what is made, what is refused, and what stays as it was.
#include "LogDatabase/EngineLog.h"
#include "tests/LogDatabase/FailingLayer.h"
#include "tests/LogDatabase/LogDatabaseTest.h"

#include <algorithm>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace
{

namespace fs = std::filesystem;

class Opening : public LogDatabaseTest
{
  protected:
    void MakeLoggingDatabase()
    {
        ASSERT_EQ(Open(), LogFault::NONE) << database.Text();
        ASSERT_EQ(Command({"INSERT INTO versao_sb VALUES (1, 'v')"}).state, LogState::KEPT);
        database.Close();
    }

    // Leaves the database as a power cut leaves it within a transaction that repeats `sql` until
    // some of it is in the file, the old content in a hot journal.
    void Interrupt(const std::string& sql, const std::string& before = "SELECT 1") const
    {
        std::string content;
        std::string journal;
        {
            Other writer(Path());
            writer.Run(before + "; PRAGMA cache_size = 1; BEGIN");
            for (int i = 0; i < 50; ++i) {
                writer.Run(sql);
            }
            content = folder.Read("db");
            journal = folder.Read("db-journal");
        }
        ASSERT_FALSE(journal.empty());
        ASSERT_NE(folder.Read("db"), content);
        folder.Write("db", content);
        folder.Write("db-journal", journal);
    }

    // Every file of the folder by name, with its content.
    std::vector<std::string> Files() const
    {
        std::vector<std::string> files;
        for (const auto& entry : fs::directory_iterator(fs::path(Path()).parent_path())) {
            const std::string name = entry.path().filename().string();
            files.push_back(name + ":" + (entry.is_directory() ? "" : folder.Read(name)));
        }
        std::sort(files.begin(), files.end());
        return files;
    }

    // Refused, with the file and all beside it as they were, and commands going on.
    void ExpectRefused(LogFault fault, const std::string& text,
                       const LogDatabaseOptions& options = Brief())
    {
        const std::vector<std::string> before = Files();
        EXPECT_EQ(Open(options), fault) << database.Text();
        EXPECT_EQ(database.Text(), text);
        EXPECT_FALSE(database.IsOpen());
        EXPECT_EQ(Files(), before);

        Entries().clear();
        const LogOutcome outcome = Command({"INSERT INTO versao_sb VALUES (9, 'v')"});
        EXPECT_EQ(outcome.state, LogState::NOT_BEGUN);
        EXPECT_EQ(outcome.fault, fault);
        EXPECT_EQ(outcome.text, text);
        EXPECT_EQ(Entries(),
                  (std::vector<std::string>{"rejected: INSERT INTO versao_sb VALUES (9, 'v')",
                                            LOST_COMMAND_ENTRY + text}));
        EXPECT_EQ(Files(), before);
        database.Close();
    }
};

TEST_F(Opening, MakesAMissingFileWithTheSchemaAndItsVersion)
{
    ASSERT_EQ(Open(), LogFault::NONE) << database.Text();
    EXPECT_STREQ(database.Text(), "");
    EXPECT_TRUE(database.HasWriteAheadLog());
    EXPECT_EQ(Rows("SELECT count(*) FROM sqlite_schema WHERE type = 'table'"), "17");
    EXPECT_EQ(Rows("PRAGMA application_id"), std::to_string(0x45434601));
    EXPECT_EQ(Rows("PRAGMA user_version"), "0");
    EXPECT_EQ(Rows("PRAGMA journal_mode"), "wal");
    EXPECT_EQ(Entries(), std::vector<std::string>());
}

TEST_F(Opening, AddsToWhatIsThere)
{
    MakeLoggingDatabase();
    ASSERT_EQ(Open(), LogFault::NONE);
    EXPECT_EQ(Command({"INSERT INTO versao_sb VALUES (2, 'v')"}).state, LogState::KEPT);
    EXPECT_EQ(Rows(), "1 2");
}

TEST_F(Opening, MakesADatabaseInMemory)
{
    ASSERT_EQ(database.Open(":memory:", Brief()), LogFault::NONE);
    EXPECT_EQ(Command({"INSERT INTO versao_sb VALUES (2, 'v')"}).state, LogState::KEPT);
    EXPECT_EQ(Entries(), std::vector<std::string>());
}

TEST_F(Opening, RefusesAFileWithoutAName)
{
    EXPECT_EQ(database.Open("", Brief()), LogFault::CANNOT_OPEN);
    EXPECT_STREQ(database.Text(), "it has no name");
    EXPECT_EQ(database.Open(nullptr, Brief()), LogFault::CANNOT_OPEN);
    EXPECT_EQ(database.Open(std::string(5000, 'x').c_str(), Brief()), LogFault::CANNOT_OPEN);
    EXPECT_STREQ(database.Text(), "its name is too long");
}

TEST_F(Opening, RefusesAFolder)
{
    fs::create_directory(Path());
    ExpectRefused(LogFault::CANNOT_OPEN, "unable to open database file (Is a directory)");
}

TEST_F(Opening, RefusesAFileInAFolderThatIsNotThere)
{
    EXPECT_EQ(database.Open(folder.File("none/db").c_str(), Brief()), LogFault::CANNOT_OPEN);
    EXPECT_STREQ(database.Text(), "unable to open database file (No such file or directory)");
}

TEST_F(Opening, RefusesAFileThatIsNoDatabase)
{
    folder.Write("db", std::string(5000, 'x'));
    ExpectRefused(LogFault::NOT_A_DATABASE, "file is not a database");
    folder.Write("db-wal", std::string(5000, 'y'));
    ExpectRefused(LogFault::NOT_A_DATABASE, "file is not a database");
}

TEST_F(Opening, RefusesADatabaseOfAnotherApplication)
{
    Plain("PRAGMA application_id = 77; CREATE TABLE notes (text)");
    ExpectRefused(LogFault::NOT_A_LOG,
                  "it is a database of another application (application_id 77)");
}

TEST_F(Opening, RefusesADatabaseWithoutTheTables)
{
    Plain("CREATE TABLE notes (text)");
    ExpectRefused(LogFault::NOT_A_LOG,
                  "it is not a logging database: it has no column cupom_fiscal.cont_coo");
}

// Opened by the engine, it would be recovered and its log copied into it.
TEST_F(Opening, LeavesTheLogOfAnotherApplicationWhereItIs)
{
    Plain("PRAGMA journal_mode = WAL; CREATE TABLE notes (text)");
    std::string content;
    std::string log;
    {
        Other writer(Path());
        writer.Run("INSERT INTO notes VALUES ('kept')");
        content = folder.Read("db");
        log = folder.Read("db-wal");
    }
    ASSERT_FALSE(log.empty());
    folder.Write("db", content);
    folder.Write("db-wal", log);
    ExpectRefused(LogFault::NOT_A_LOG,
                  "it is not a logging database: it has no column cupom_fiscal.cont_coo");
    EXPECT_EQ(Rows("SELECT text FROM notes"), "kept");
}

TEST_F(Opening, LeavesTheJournalOfAnotherApplicationWhereItIs)
{
    Plain("CREATE TABLE notes (text); INSERT INTO notes VALUES ('kept')");
    Interrupt("INSERT INTO notes VALUES ('" + std::string(3000, 'x') + "')");
    ExpectRefused(LogFault::NOT_A_LOG,
                  "it is not a logging database: it has no column cupom_fiscal.cont_coo");
    EXPECT_EQ(Rows("SELECT text FROM notes"), "kept");
}

// A hot journal of one's own: what it would roll back decides, and nobody but an opening that is
// not refused carries it out.
TEST_F(Opening, LeavesTheJournalOfADatabaseThatCarriesTheWrongNumber)
{
    MakeLoggingDatabase();
    Plain("PRAGMA journal_mode = DELETE");
    Plain("PRAGMA user_version = 7");
    Interrupt("PRAGMA user_version = 8; INSERT INTO versao_sb VALUES (2, '" +
              std::string(3000, 'x') + "')");
    LogDatabaseOptions options = Brief();
    options.accepts = [](void*, std::int32_t number) { return number == 8; };
    ExpectRefused(LogFault::WRONG_NUMBER, "it carries command number 7", options);

    options.accepts = [](void*, std::int32_t number) { return number == 7; };
    ASSERT_EQ(Open(options), LogFault::NONE) << database.Text();
    EXPECT_EQ(database.CommandNumber(), 7);
    EXPECT_EQ(Rows(), "1");
}

TEST_F(Opening, LeavesTheJournalOfADatabaseThatHoldsRows)
{
    LogDatabaseOptions options = Brief();
    options.onlyEmpty = true;
    MakeLoggingDatabase();
    Plain("PRAGMA journal_mode = DELETE");
    Interrupt("DELETE FROM versao_sb; INSERT INTO z VALUES ('" + std::string(3000, 'x') + "')",
              "CREATE TABLE z (text)");
    ExpectRefused(LogFault::HOLDS_ROWS, "it already holds rows (table versao_sb)", options);
    EXPECT_EQ(Rows(), "1");
}

// By what stands in the file it is of no version; by what the journal has, of one that is too new.
TEST_F(Opening, LeavesTheJournalOfANewerDatabase)
{
    MakeLoggingDatabase();
    Plain("PRAGMA journal_mode = DELETE");
    Plain("PRAGMA application_id = " + std::to_string(0x45434602));
    Interrupt("PRAGMA application_id = 0; INSERT INTO versao_sb VALUES (2, '" +
              std::string(3000, 'x') + "')");
    ExpectRefused(LogFault::NEWER,
                  "its schema is of version 2, and this program knows those up to 1");
}

// An empty file beside a log has lost its content; whoever refuses it must not lose the log too.
TEST_F(Opening, LeavesTheLogOfAnEmptyFileWhereItIsWhenItsNumberIsWrong)
{
    LogDatabaseOptions options = Brief();
    options.accepts = [](void*, std::int32_t number) { return number == 7; };
    folder.Write("db", "");
    folder.Write("db-wal", std::string(5000, 'y'));
    ExpectRefused(LogFault::WRONG_NUMBER, "it carries command number 0", options);
}

TEST_F(Opening, RefusesANumberThatTheCallerDoesNotExpect)
{
    LogDatabaseOptions options = Brief();
    options.accepts = [](void*, std::int32_t number) { return number == 7; };
    MakeLoggingDatabase();
    ExpectRefused(LogFault::WRONG_NUMBER, "it carries command number 0", options);
    Plain("PRAGMA user_version = 7");
    EXPECT_EQ(Open(options), LogFault::NONE);
    EXPECT_EQ(database.CommandNumber(), 7);
}

TEST_F(Opening, RefusesRowsWhereAnEmptyDatabaseWasAskedFor)
{
    LogDatabaseOptions options = Brief();
    options.onlyEmpty = true;
    ASSERT_EQ(Open(options), LogFault::NONE);
    database.Close();
    ASSERT_EQ(Open(options), LogFault::NONE);
    database.Close();
    MakeLoggingDatabase();
    ExpectRefused(LogFault::HOLDS_ROWS, "it already holds rows (table versao_sb)", options);
}

TEST_F(Opening, RefusesADamagedDatabase)
{
    MakeLoggingDatabase();
    std::string content = folder.Read("db");
    ASSERT_GT(content.size(), 200U);
    std::fill(content.begin() + 100, content.begin() + 200, '\x5A'); // the schema's first page
    folder.Write("db", content);
    ExpectRefused(LogFault::DAMAGED, "database disk image is malformed");
}

TEST_F(Opening, RefusesALockedDatabase)
{
    MakeLoggingDatabase();
    Plain("PRAGMA journal_mode = DELETE");
    Other other(Path());
    other.Run("BEGIN EXCLUSIVE");
    ExpectRefused(LogFault::LOCKED, "database is locked");
    ASSERT_EQ(Open(), LogFault::LOCKED);
    other.Run("ROLLBACK");
    // What may pass is tried again by each command.
    EXPECT_EQ(Command({"INSERT INTO versao_sb VALUES (2, 'v')"}).state, LogState::KEPT);
    EXPECT_EQ(Rows(), "1 2");
}

TEST_F(Opening, OpensAFileThatCanOnlyBeReadForReading)
{
    if (geteuid() == 0) {
        GTEST_SKIP() << "root may write everything";
    }
    MakeLoggingDatabase();
    Plain("PRAGMA journal_mode = DELETE");
    chmod(Path().c_str(), 0444);
    const std::string before = folder.Read("db");
    EXPECT_EQ(Open(), LogFault::READ_ONLY);
    EXPECT_STREQ(database.Text(), "attempt to write a readonly database");
    EXPECT_TRUE(database.IsOpen());
    const LogOutcome outcome = Command({"INSERT INTO versao_sb VALUES (2, 'v')"});
    EXPECT_EQ(outcome.state, LogState::NOT_BEGUN);
    EXPECT_EQ(outcome.fault, LogFault::READ_ONLY);
    EXPECT_EQ(folder.Read("db"), before);
    chmod(Path().c_str(), 0644);
    EXPECT_EQ(Command({"INSERT INTO versao_sb VALUES (3, 'v')"}).state, LogState::KEPT);
    EXPECT_EQ(Rows(), "1 3");
}

// The name goes to the engine as it is, whatever it means elsewhere.
TEST_F(Opening, TakesANameOfAnyCharacters)
{
    for (const std::string name : {"Z9 a%41?b#c&d=e", "caf\xC3\xA9:~_.-", "A-Z[{}]'\"|"}) {
        ASSERT_EQ(database.Open(folder.File(name).c_str(), Brief()), LogFault::NONE)
            << name << ": " << database.Text();
        EXPECT_EQ(Command({"INSERT INTO versao_sb VALUES (1, 'v')"}).state, LogState::KEPT) << name;
        database.Close();
        EXPECT_TRUE(folder.Has(name)) << name;
        // It is looked at before it is opened, and found to hold a row.
        LogDatabaseOptions options = Brief();
        options.onlyEmpty = true;
        EXPECT_EQ(database.Open(folder.File(name).c_str(), options), LogFault::HOLDS_ROWS) << name;
    }
}

TEST_F(Opening, RefusesANameThatIsTooLong)
{
    for (const std::size_t length : {511U, 512U, 5000U}) {
        const std::string name(length, '%');
        EXPECT_EQ(database.Open(name.c_str(), Brief()), LogFault::CANNOT_OPEN) << length;
        EXPECT_STRNE(database.Text(), "");
    }
    EXPECT_STREQ(database.Text(), "its name is too long");
}

// Whoever holds the old file keeps a command from beginning; the one that bears its name now is
// empty, and no register's.
TEST_F(Opening, AFileThatWasEmptiedInUseIsNotBegunAnew)
{
    ASSERT_EQ(Open(), LogFault::NONE);
    EXPECT_EQ(Command({"INSERT INTO versao_sb VALUES (1, 'v')"}).state, LogState::KEPT);
    Other other(Path());
    other.Run("BEGIN IMMEDIATE");
    fs::rename(Path(), folder.File("elsewhere"));
    folder.Write("db", "");
    const LogOutcome outcome = Command({"INSERT INTO versao_sb VALUES (2, 'v')"});
    EXPECT_EQ(outcome.state, LogState::NOT_BEGUN);
    EXPECT_EQ(outcome.fault, LogFault::NOT_A_LOG);
    EXPECT_STREQ(outcome.text, "it was emptied while it was in use");
    EXPECT_EQ(folder.Read("db"), "");
}

TEST_F(Opening, CanBeDoneAgain)
{
    for (int i = 1; i <= 3; ++i) {
        ASSERT_EQ(Open(), LogFault::NONE);
        EXPECT_EQ(Command({"INSERT INTO versao_sb VALUES (" + std::to_string(i) + ", 'v')"}).state,
                  LogState::KEPT);
    }
    EXPECT_EQ(Rows(), "1 2 3");
}

TEST_F(Opening, AnObjectThatWasNeverOpenedRefusesWhatRunsOnIt)
{
    database.Begin();
    EXPECT_EQ(database.Handle(), nullptr);
    Insert(1);
    EXPECT_EQ(Entries(),
              std::vector<std::string>{"rejected: INSERT INTO versao_sb VALUES (1, 'v')"});
    EXPECT_EQ(database.Commit().state, LogState::NOT_BEGUN);
}

// The engine has a word for a connection that is closed twice, or used after that.
TEST_F(Opening, ItsEndLeavesTheEngineNothingToSay)
{
    const std::int64_t records = log_database::EngineLog().records;
    MakeLoggingDatabase();
    EXPECT_EQ(log_database::EngineLog().records, records);
    database.Close();
    EXPECT_EQ(log_database::EngineLog().records, records);
}

// One that the layer could not open, or not begin a command on, for a reason that may pass.
class Passing : public Opening, public testing::WithParamInterface<std::pair<int, LogFault>>
{
  protected:
    Passing() { options.vfs = FailingLayer::NAME; }
    ~Passing() override { database.Close(); }

    FailingLayer layer;
    LogDatabaseOptions options = Brief();
};

TEST_P(Passing, AnOpeningIsTriedAgainByTheNextCommand)
{
    MakeLoggingDatabase();
    layer.open = GetParam().first;
    EXPECT_EQ(Open(options), GetParam().second);
    EXPECT_FALSE(database.IsOpen());
    EXPECT_EQ(Command({"INSERT INTO versao_sb VALUES (2, 'v')"}).fault, GetParam().second);
    layer.open = SQLITE_OK;
    EXPECT_EQ(Command({"INSERT INTO versao_sb VALUES (3, 'v')"}).state, LogState::KEPT);
    EXPECT_EQ(Rows(), "1 3");
}

INSTANTIATE_TEST_SUITE_P(Faults, Passing,
                         testing::Values(std::pair(SQLITE_CANTOPEN, LogFault::CANNOT_OPEN),
                                         std::pair(SQLITE_BUSY, LogFault::LOCKED),
                                         std::pair(SQLITE_READONLY, LogFault::READ_ONLY),
                                         std::pair(SQLITE_FULL, LogFault::FULL),
                                         std::pair(SQLITE_NOMEM, LogFault::NO_MEMORY),
                                         std::pair(SQLITE_IOERR, LogFault::DISK)));

class LockRefused : public Passing
{
};

TEST_P(LockRefused, ThenTheConnectionIsOpenedAnewBeforeTheCommandIsLost)
{
    ASSERT_EQ(Open(options), LogFault::NONE) << database.Text();
    layer.sharedLock = GetParam().first;
    layer.sharedLocks = 1;
    EXPECT_EQ(Command({"INSERT INTO versao_sb VALUES (1, 'v')"}).state, LogState::KEPT);
    EXPECT_EQ(layer.sharedLocks, 0);
    EXPECT_EQ(CountEntries("LogDatabase: the connection was opened anew"), 1);
    EXPECT_EQ(Rows(), "1");
}

INSTANTIATE_TEST_SUITE_P(Faults, LockRefused,
                         testing::Values(std::pair(SQLITE_CANTOPEN, LogFault::CANNOT_OPEN),
                                         std::pair(SQLITE_READONLY, LogFault::READ_ONLY),
                                         std::pair(SQLITE_IOERR, LogFault::DISK)));

} // namespace

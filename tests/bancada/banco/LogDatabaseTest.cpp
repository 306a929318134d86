// The logging database: what reaches it, what does not, and what is told of it.
#include "bancada/banco/LogDatabase.h"

#include "FiscalCommands.h"
#include "bancada/Unusable.h"
#include "bancada/banco/Sql.h"
#include "bancada/log/FirmwareDuty.h"
#include "bancada/log/FirmwareLog.h"
#include "tests/support/Files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <memory>
#include <sqlite3.h>
#include <string>
#include <unistd.h>
#include <vector>

using namespace bancada;
using test_support::TempFolder;

namespace
{

using bancada::LogDatabase; // the bench's, not the library's that it holds

using Handle = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;

Handle OpenPlain(const std::string& path)
{
    sqlite3* db = nullptr;
    EXPECT_EQ(sqlite3_open(path.c_str(), &db), SQLITE_OK);
    return Handle(db, sqlite3_close);
}

void ExecutePlain(sqlite3* db, const std::string& sql)
{
    ASSERT_EQ(sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(db);
}

class LogDatabaseTest : public testing::Test
{
  protected:
    std::string Path() const { return folder.File("db"); }

    void Open(bool append = false)
    {
        LogDatabase::Options options;
        options.append = append;
        options.busyTimeoutMs = 20;
        database.reset();
        database = std::make_unique<LogDatabase>(Path(), log, options);
    }

    std::string WhyUnusable(bool append = false)
    {
        try {
            Open(append);
        } catch (const Unusable& error) {
            return error.what();
        }
        return "usable";
    }

    // As a logger does.
    void Execute(const std::string& sql)
    {
        CmdAbreCupom command;
        command.DBLoggerExecuteSQL(database->Handle(), sql.c_str());
    }

    void Insert(int value)
    {
        Execute("INSERT INTO versao_sb VALUES (" + std::to_string(value) + ", 'v')");
    }

    // The command's statements, each as a logger does; answers whether it was kept.
    bool Command(const std::vector<std::string>& statements)
    {
        database->BeginCommand();
        for (const std::string& sql : statements) {
            Execute(sql);
        }
        return database->CommitCommand();
    }

    // Prepared on the handle and not released.
    int Statements() const
    {
        int count = 0;
        for (sqlite3_stmt* one = sqlite3_next_stmt(database->Handle(), nullptr); one != nullptr;
             one = sqlite3_next_stmt(database->Handle(), one)) {
            ++count;
        }
        return count;
    }

    // The first column of `sql`, by a connection of its own, joined by blanks.
    std::string Rows(const std::string& sql = "SELECT num_ecf FROM versao_sb ORDER BY rowid")
    {
        const Handle db = OpenPlain(Path());
        Query query(db.get(), sql.c_str());
        std::string rows;
        while (query.Next()) {
            rows += (rows.empty() ? "" : " ") + query.Text(0);
        }
        EXPECT_FALSE(query.Failed()) << sqlite3_errmsg(db.get());
        return rows;
    }

    std::string Log() const { return folder.Read("log"); }

    bool LogHas(const std::string& text) const { return Log().find(text) != std::string::npos; }

    TempFolder folder;
    FirmwareLog log{folder.File("log")};
    FirmwareDuty duty{log};
    std::unique_ptr<LogDatabase> database;
};

TEST_F(LogDatabaseTest, AMissingFileIsMadeWithTheSchema)
{
    Open();
    EXPECT_EQ(Rows("SELECT count(*) FROM sqlite_schema WHERE type = 'table'"), "17");
    EXPECT_EQ(Rows("PRAGMA journal_mode"), "wal");
}

TEST_F(LogDatabaseTest, ASyncStandsAtEveryCommit)
{
    Open();
    // PRAGMA is none of the module's business, so the setting is asked behind the authorizer.
    sqlite3_set_authorizer(database->Handle(), nullptr, nullptr);
    Query synchronous(database->Handle(), "PRAGMA synchronous");
    ASSERT_TRUE(synchronous.Next());
    EXPECT_EQ(synchronous.Integer(0), 2); // FULL
}

TEST_F(LogDatabaseTest, ACommandsRowsAreKeptTogether)
{
    Open();
    database->BeginCommand();
    Insert(1);
    EXPECT_EQ(Rows(), "");
    Insert(2);
    EXPECT_TRUE(database->CommitCommand());
    EXPECT_EQ(Rows(), "1 2");
}

TEST_F(LogDatabaseTest, AStatementRefusedForItselfCostsItsOwnRow)
{
    Open();
    EXPECT_TRUE(
        Command({"INSERT INTO versao_sb VALUES (1, 'v')", "INSERT INTO versao_sb VALUES ('a'b')",
                 "INSERT INTO versao_sb (none) VALUES (1)", "INSERT INTO none VALUES (1)",
                 "INSERT INTO dados_ecf (num_ecf) VALUES (1)",
                 "INSERT INTO dados_ecf (num_ecf) VALUES (1)",   // its key
                 "INSERT INTO dados_ecf (num_ecf) VALUES ('x')", // its type
                 "DELETE FROM versao_sb", "INSERT INTO versao_sb VALUES (2, 'v')"}));
    EXPECT_EQ(Rows(), "1 2");
    EXPECT_EQ(Rows("SELECT count(*) FROM dados_ecf"), "1");
    EXPECT_EQ(database->Counts().statementsExecuted, 3);
    EXPECT_EQ(database->Counts().statementsRejected, 6);
    EXPECT_EQ(database->Counts().statementsUndone, 0);
    EXPECT_EQ(database->Counts().commandsLost, 0);
    EXPECT_EQ(database->LastLoss(), "");
}

TEST_F(LogDatabaseTest, RowsAreCountedByTable)
{
    Open();
    EXPECT_TRUE(Command(
        {"INSERT INTO versao_sb VALUES (1, 'v')", "INSERT INTO versao_sb VALUES (2, 'v')",
         "UPDATE versao_sb SET versao = 'w'", "UPDATE versao_sb SET versao = 'x' WHERE num_ecf = 9",
         "INSERT INTO moeda (num_ecf) VALUES (1)"}));
    const auto& rows = database->Counts().rows;
    EXPECT_EQ(rows.at("versao_sb").inserted, 2);
    EXPECT_EQ(rows.at("versao_sb").updated, 2);
    EXPECT_EQ(rows.at("moeda").inserted, 1);
    EXPECT_EQ(rows.at("cupom_nf").inserted, 0);
    EXPECT_EQ(database->Counts().statementsExecuted, 5);
}

TEST_F(LogDatabaseTest, ARejectedTwinOfAnAcceptedStatementDoesNotUncountIt)
{
    Open();
    const std::string twin = "INSERT INTO dados_ecf (num_ecf) VALUES (1)";
    EXPECT_TRUE(Command({twin, twin}));
    EXPECT_EQ(database->Counts().statementsExecuted, 1);
    EXPECT_EQ(database->Counts().statementsRejected, 1);
    EXPECT_EQ(database->Counts().rows.at("dados_ecf").inserted, 1);
}

TEST_F(LogDatabaseTest, AStatementLeftOpenIsReleased)
{
    Open();
    EXPECT_TRUE(Command({"INSERT INTO versao_sb VALUES (1, 'v')"}));
    const int own = Statements();
    database->BeginCommand();
    sqlite3_stmt* left = nullptr;
    ASSERT_EQ(sqlite3_prepare_v2(database->Handle(), "SELECT count(*) FROM versao_sb", -1, &left,
                                 nullptr),
              SQLITE_OK);
    ASSERT_EQ(sqlite3_step(left), SQLITE_ROW);
    Insert(2);
    EXPECT_TRUE(database->CommitCommand());
    EXPECT_EQ(Statements(), own);
    EXPECT_EQ(Rows(), "1 2");
}

// The trap: an interrupted statement makes the engine roll the whole transaction back without a
// word, and the statements that follow would be committed one by one.
TEST_F(LogDatabaseTest, ATransactionThatTheEngineRolledBackLosesItsCommandWhole)
{
    Open();
    database->BeginCommand();
    Insert(1);
    sqlite3_progress_handler(
        database->Handle(), 1, [](void*) { return 1; }, nullptr);
    Insert(2);
    sqlite3_progress_handler(database->Handle(), 0, nullptr, nullptr);
    ASSERT_NE(sqlite3_get_autocommit(database->Handle()), 0) << "the trap did not spring";
    Insert(3);
    Insert(4);
    EXPECT_EQ(Rows(), "");
    EXPECT_FALSE(database->CommitCommand());
    EXPECT_EQ(database->LastLoss(), "interrupted");
    EXPECT_EQ(Rows(), "");
    EXPECT_NE(sqlite3_get_autocommit(database->Handle()), 0);
    EXPECT_EQ(database->Counts().commandsLost, 1);
    EXPECT_EQ(database->Counts().statementsUndone, 1);
    EXPECT_EQ(database->Counts().statementsRejected, 3);
    EXPECT_EQ(database->Counts().rows.at("versao_sb").inserted, 0);
    EXPECT_TRUE(LogHas("\tLogDatabase: the rows of this command are lost: interrupted\n"));
    EXPECT_TRUE(LogHas("Erro:'not authorized'"));

    EXPECT_TRUE(Command({"INSERT INTO versao_sb VALUES (5, 'v')"}));
    EXPECT_EQ(Rows(), "5");
    EXPECT_EQ(database->LastLoss(), "");
}

TEST_F(LogDatabaseTest, AFailureOfTheLastStatementLosesItsCommandToo)
{
    Open();
    database->BeginCommand();
    Insert(1);
    sqlite3_progress_handler(
        database->Handle(), 1, [](void*) { return 1; }, nullptr);
    Insert(2);
    sqlite3_progress_handler(database->Handle(), 0, nullptr, nullptr);
    EXPECT_FALSE(database->CommitCommand());
    EXPECT_EQ(Rows(), "");
}

TEST_F(LogDatabaseTest, AFullDatabaseLosesTheCommandThatDoesNotFit)
{
    Open();
    sqlite3_set_authorizer(database->Handle(), nullptr, nullptr);
    std::string pages;
    {
        Query count(database->Handle(), "PRAGMA page_count");
        ASSERT_TRUE(count.Next());
        pages = count.Text(0);
    }
    ExecutePlain(database->Handle(), "PRAGMA max_page_count = " + pages);
    // The limit is the connection's and PRAGMA none of the module's business, so the rest goes on
    // without the authorizer; what the engine itself refuses is enough here.
    const std::string big = "INSERT INTO versao_sb VALUES (2, '" + std::string(7000, 'x') + "')";
    EXPECT_FALSE(Command({"INSERT INTO versao_sb VALUES (1, 'v')", big, big, big}));
    EXPECT_EQ(database->LastLoss(), "database or disk is full");
    EXPECT_EQ(Rows(), "");
    EXPECT_TRUE(Command({"INSERT INTO versao_sb VALUES (3, 'v')"}));
    EXPECT_EQ(Rows(), "3");
}

TEST_F(LogDatabaseTest, ALockedDatabaseLosesCommandsAndTheRegisterGoesOn)
{
    Open();
    const Handle other = OpenPlain(Path());
    ExecutePlain(other.get(), "BEGIN IMMEDIATE");
    EXPECT_FALSE(Command(
        {"INSERT INTO versao_sb VALUES (1, 'v')", "INSERT INTO versao_sb VALUES (2, 'v')"}));
    EXPECT_EQ(database->LastLoss(), "database is locked");
    EXPECT_EQ(database->Counts().statementsRejected, 2);
    EXPECT_EQ(database->Counts().commandsLost, 1);
    ExecutePlain(other.get(), "ROLLBACK");
    EXPECT_TRUE(Command({"INSERT INTO versao_sb VALUES (3, 'v')"}));
    EXPECT_EQ(Rows(), "3");
    EXPECT_TRUE(LogHas("LogDatabase: the rows of this command are lost: database is locked"));
}

TEST_F(LogDatabaseTest, ACommandThatLogsNothingLosesNothing)
{
    Open();
    const Handle other = OpenPlain(Path());
    ExecutePlain(other.get(), "BEGIN IMMEDIATE");
    EXPECT_TRUE(Command({}));
    EXPECT_EQ(database->Counts().commandsLost, 0);
    EXPECT_EQ(database->LastLoss(), "");
    EXPECT_EQ(Log(), "");
}

TEST_F(LogDatabaseTest, ADatabaseDamagedMidRunLosesCommandsAndTheRegisterGoesOn)
{
    Open();
    EXPECT_TRUE(Command({"INSERT INTO versao_sb VALUES (1, 'v')"}));
    database.reset(); // folds the log into the file
    Open(true);
    const int file = open(Path().c_str(), O_RDWR);
    const std::string noise(4096, '\x5A');
    for (int page = 1; page < 30; ++page) {
        ASSERT_EQ(pwrite(file, noise.data(), noise.size(), page * 4096), 4096);
    }
    close(file);
    EXPECT_FALSE(Command(
        {"INSERT INTO versao_sb VALUES (2, 'v')", "INSERT INTO moeda (num_ecf) VALUES (1)"}));
    EXPECT_EQ(database->LastLoss(), "database disk image is malformed");
    EXPECT_EQ(database->Counts().commandsLost, 1);
}

TEST_F(LogDatabaseTest, RowsThatAreThereAreKeptFromStrangers)
{
    Open();
    EXPECT_TRUE(Command({"INSERT INTO versao_sb VALUES (1, 'v')"}));
    database.reset();
    EXPECT_EQ(WhyUnusable(),
              "cannot use the database " + Path() +
                  ": it already holds rows (table versao_sb); --append adds to them");
    EXPECT_EQ(WhyUnusable(true), "usable");
    EXPECT_TRUE(Command({"INSERT INTO versao_sb VALUES (2, 'v')"}));
    EXPECT_EQ(Rows(), "1 2");
}

TEST_F(LogDatabaseTest, AnEmptyLoggingDatabaseIsTaken)
{
    Open();
    database.reset();
    EXPECT_EQ(WhyUnusable(), "usable");
}

TEST_F(LogDatabaseTest, ADatabaseOfAnotherProgramStaysAsItWas)
{
    ExecutePlain(OpenPlain(Path()).get(), "CREATE TABLE notes (text)");
    const std::string before = folder.Read("db");
    EXPECT_EQ(WhyUnusable(true), "cannot use the database " + Path() +
                                     ": it is not a logging database: it has no column "
                                     "cupom_fiscal.cont_coo");
    EXPECT_EQ(folder.Read("db"), before);
}

TEST_F(LogDatabaseTest, AColumnThatIsMissingIsNamed)
{
    Open();
    database.reset();
    ExecutePlain(OpenPlain(Path()).get(), "ALTER TABLE item_cupom_nf DROP COLUMN perc_desconto");
    EXPECT_EQ(WhyUnusable(), "cannot use the database " + Path() +
                                 ": it is not a logging database: it has no column "
                                 "item_cupom_nf.perc_desconto");
}

TEST_F(LogDatabaseTest, ADatabaseWithTriggersIsRefused)
{
    Open();
    database.reset();
    ExecutePlain(OpenPlain(Path()).get(),
                 "CREATE TRIGGER spy AFTER INSERT ON moeda BEGIN DELETE FROM versao_sb; END");
    EXPECT_EQ(WhyUnusable(), "cannot use the database " + Path() +
                                 ": it is not a logging database: it has the trigger spy");
}

TEST_F(LogDatabaseTest, WhatIsNoDatabaseStaysAsItWas)
{
    folder.Write("db", std::string(5000, 'x'));
    EXPECT_EQ(WhyUnusable(), "cannot use the database " + Path() + ": file is not a database");
    EXPECT_EQ(folder.Read("db"), std::string(5000, 'x'));
}

TEST_F(LogDatabaseTest, AMissingFolderIsTold)
{
    try {
        LogDatabase refused(folder.File("none/db"), log);
        FAIL();
    } catch (const Unusable& error) {
        EXPECT_EQ(error.what(), "cannot use the database " + folder.File("none/db") +
                                    ": unable to open database file (No such file or directory)");
    }
}

TEST_F(LogDatabaseTest, OutsideACommandNothingIsWritten)
{
    Open();
    Insert(1);
    EXPECT_EQ(Rows(), "");
    EXPECT_TRUE(LogHas("Erro:'not authorized'"));
    Query count(database->Handle(), "SELECT count(*) FROM versao_sb");
    EXPECT_TRUE(count.Next());
}

// What a text may try once it has closed its apostrophe: the statement is refused and the rows that
// were there stay as they were.
class LogDatabaseRefuses : public LogDatabaseTest, public testing::WithParamInterface<const char*>
{
};

TEST_P(LogDatabaseRefuses, Statement)
{
    Open();
    EXPECT_TRUE(Command({"INSERT INTO versao_sb VALUES (1, 'v')"}));
    EXPECT_TRUE(Command({GetParam()}));
    EXPECT_GE(database->Counts().statementsRejected, 1) << GetParam();
    EXPECT_EQ(Rows(), "1");
    EXPECT_EQ(Rows("SELECT versao FROM versao_sb"), "v");
    EXPECT_EQ(Rows("SELECT count(*) FROM sqlite_schema WHERE type = 'table'"), "17");
    EXPECT_TRUE(Command({"INSERT INTO moeda (num_ecf) VALUES (1)"}));
    EXPECT_EQ(Rows("SELECT count(*) FROM moeda"), "1");
}

INSTANTIATE_TEST_SUITE_P(
    Hostile, LogDatabaseRefuses,
    testing::Values("DELETE FROM versao_sb", "DROP TABLE versao_sb", "CREATE TABLE x (y)",
                    "CREATE TEMP TABLE x (y)", "ALTER TABLE versao_sb RENAME TO x",
                    "CREATE INDEX i ON versao_sb (versao)", "CREATE VIEW w AS SELECT 1",
                    "CREATE TRIGGER t AFTER INSERT ON moeda BEGIN DELETE FROM versao_sb; END",
                    "ATTACH ':memory:' AS other", "DETACH main", "PRAGMA synchronous = OFF",
                    "PRAGMA writable_schema = ON", "VACUUM", "REINDEX", "ANALYZE", "COMMIT",
                    "ROLLBACK", "BEGIN", "SAVEPOINT s", "EXPLAIN DELETE FROM versao_sb",
                    "UPDATE sqlite_schema SET sql = ''",
                    "INSERT INTO sqlite_schema VALUES (1,1,1,1,1)", "SELECT load_extension('x')",
                    "SELECT * FROM sqlite_schema",
                    "INSERT INTO versao_sb SELECT num_ecf, versao FROM versao_sb",
                    "INSERT INTO versao_sb VALUES (2, (SELECT versao FROM versao_sb))",
                    "INSERT INTO versao_sb VALUES (2, 'x'), (3, 'y')",
                    "UPDATE versao_sb SET versao = (SELECT num_ecf FROM moeda)",
                    "UPDATE versao_sb SET versao = upper(versao)",
                    "INSERT INTO versao_sb VALUES (2, randomblob(1000000000))",
                    "INSERT INTO versao_sb VALUES (2, \"text\")",
                    "WITH RECURSIVE n(i) AS (VALUES (1) UNION ALL SELECT i FROM n) "
                    "INSERT INTO versao_sb SELECT i, 'x' FROM n"));

} // namespace

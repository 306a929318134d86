// A program that has used the engine before its first LogDatabase: a test program of its own, for
// what the engine takes only before its first use it takes once a process.
#include "LogDatabase/LogDatabase.h"
#include "MfdServices/GravaLog.h"
#include "tests/support/Files.h"
#include "tests/support/Interrupted.h"
#include "tests/support/Rows.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <string>
#include <vector>

namespace
{

std::vector<std::string>& Entries()
{
    static std::vector<std::string> entries;
    return entries;
}

constexpr char TOO_LATE[] =
    "LogDatabase: the engine was in use before PrepareEngine: some failures cannot be seen";

LogOutcome InsertOne(LogDatabase& database)
{
    database.Begin();
    sqlite3_exec(database.Handle(), "INSERT INTO versao_sb VALUES (1, 'v')", nullptr, nullptr,
                 nullptr);
    return database.Commit();
}

TEST(PrepareEngine, TheOpeningSaysThatItCameTooLateAndTheCommandsAreKept)
{
    ASSERT_EQ(sqlite3_initialize(), SQLITE_OK);
    EXPECT_FALSE(LogDatabase::PrepareEngine());

    const test_support::TempFolder folder;
    LogDatabase database;
    ASSERT_EQ(database.Open(folder.File("db").c_str()), LogFault::NONE);
    EXPECT_STREQ(database.Text(), TOO_LATE);
    EXPECT_EQ(Entries(), std::vector<std::string>());
    EXPECT_EQ(InsertOne(database).state, LogState::KEPT);
    EXPECT_EQ(InsertOne(database).state, LogState::KEPT);
    EXPECT_EQ(Entries(), std::vector<std::string>{TOO_LATE});
    EXPECT_EQ(test_support::Rows(folder.File("db"), "SELECT count(*) FROM versao_sb"),
              std::vector<std::string>{"2"});

    // The word of a statement that failed is its own alone, where another has ended well since.
    database.Begin();
    test_support::LeaveInterrupted(database.Handle());
    sqlite3_exec(database.Handle(), "INSERT INTO versao_sb VALUES (1, 'v')", nullptr, nullptr,
                 nullptr);
    const LogOutcome outcome = database.Commit();
    EXPECT_EQ(outcome.state, LogState::LOST);
    EXPECT_EQ(outcome.fault, LogFault::INTERRUPTED);
    EXPECT_EQ(test_support::Rows(folder.File("db"), "SELECT count(*) FROM versao_sb"),
              std::vector<std::string>{"2"});

    // A refusal has its own reason.
    EXPECT_EQ(database.Open("/"), LogFault::CANNOT_OPEN);
    EXPECT_STRNE(database.Text(), TOO_LATE);

    // The engine ended, it is not too late any more.
    database.Close();
    ASSERT_EQ(sqlite3_shutdown(), SQLITE_OK);
    EXPECT_TRUE(LogDatabase::PrepareEngine());
    ASSERT_EQ(database.Open(folder.File("db").c_str()), LogFault::NONE);
    EXPECT_STREQ(database.Text(), "");
    // The statistics of memory are off.
    EXPECT_EQ(sqlite3_memory_used(), 0);
}

} // namespace

void Vindral_GravaLog(char* text)
{
    Entries().emplace_back(text);
}

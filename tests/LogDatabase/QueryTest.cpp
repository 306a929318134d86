#include "LogDatabase/Query.h"

#include "LogDatabase/Fault.h"
#include "LogDatabase/Schema.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include "tests/support/Files.h"

namespace
{

using namespace log_database;

TEST(Query, NullIsAnEmptyText)
{
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(":memory:", &db), SQLITE_OK);
    {
        Query query(db, "SELECT NULL, 'v', 7");
        ASSERT_TRUE(query.Next());
        EXPECT_STREQ(query.Text(0), "");
        EXPECT_STREQ(query.Text(1), "v");
        EXPECT_EQ(query.Integer(2), 7);
        EXPECT_FALSE(query.Next());
        EXPECT_EQ(query.Result(), SQLITE_DONE);
        EXPECT_FALSE(query.Next());
    }
    sqlite3_close(db);
}

// A failure of which the engine says nothing is one all the same.
TEST(FaultOfEngine, IsNeverNone)
{
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(":memory:", &db), SQLITE_OK);
    Reason reason;
    EXPECT_EQ(FaultOfEngine(db, reason), LogFault::OTHER);
    EXPECT_STREQ(reason.text, "not an error");
    sqlite3_close(db);
}

TEST(CheckColumns, OfAFileThatIsNoDatabaseSaysSo)
{
    const test_support::TempFolder folder;
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(folder.Write("db", std::string(2000, 'x')).c_str(), &db), SQLITE_OK);
    Reason reason;
    EXPECT_EQ(CheckColumns(db, LOG_COLUMNS, 1, SCHEMA_VERSION, reason), LogFault::NOT_A_DATABASE);
    EXPECT_STREQ(reason.text, "file is not a database");
    sqlite3_close(db);
}

} // namespace

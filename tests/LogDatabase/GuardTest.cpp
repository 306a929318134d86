// What a statement may ask for, and who is told of it.
#include "tests/LogDatabase/LogDatabaseTest.h"

namespace
{

class Guard : public LogDatabaseTest
{
  protected:
    void SetUp() override { ASSERT_EQ(Open(), LogFault::NONE); }

    // Whether the statement, within a command, is refused; the command is kept all the same.
    bool IsRefused(const std::string& sql)
    {
        database.Begin();
        const int result = sqlite3_exec(database.Handle(), sql.c_str(), nullptr, nullptr, nullptr);
        EXPECT_EQ(database.Commit().state, LogState::KEPT) << sql;
        return result != SQLITE_OK;
    }
};

TEST_F(Guard, AQueryWithinAStatementIsRefused)
{
    EXPECT_FALSE(IsRefused("SELECT count(*) FROM versao_sb WHERE num_ecf = 1"));
    EXPECT_TRUE(IsRefused("SELECT count(*) FROM versao_sb WHERE num_ecf IN"
                          " (SELECT num_ecf FROM versao_sb)"));
    EXPECT_TRUE(IsRefused("INSERT INTO versao_sb SELECT 1, 'v'"));
    EXPECT_TRUE(IsRefused("UPDATE versao_sb SET num_ecf = (SELECT 1)"));
    EXPECT_EQ(Rows(), "");
    // The next statement is one of its own again.
    EXPECT_FALSE(IsRefused("SELECT count(*) FROM versao_sb"));
}

TEST_F(Guard, ARowKeepsItsNumber)
{
    EXPECT_EQ(Command({"INSERT INTO versao_sb VALUES (1, 'v')"}).state, LogState::KEPT);
    EXPECT_TRUE(IsRefused("UPDATE versao_sb SET rowid = 5"));
    EXPECT_FALSE(IsRefused("UPDATE versao_sb SET num_ecf = 2"));
    EXPECT_EQ(Rows("SELECT rowid FROM versao_sb"), "1");
    EXPECT_EQ(Rows(), "2");
}

TEST_F(Guard, AnotherDatabaseOfTheConnectionIsRefused)
{
    EXPECT_TRUE(IsRefused("SELECT count(*) FROM temp.sqlite_schema"));
    EXPECT_TRUE(IsRefused("CREATE TEMP TABLE t (a)"));
    EXPECT_TRUE(IsRefused("ATTACH ':memory:' AS other"));
}

struct Told {
    std::vector<sqlite3*> connected;
    int preparing = 0;
    std::vector<std::string> starting;
};

TEST_F(LogDatabaseTest, TheCallerIsToldOfTheConnectionAndOfEachStatementThatIsNotTheOwners)
{
    Told told;
    LogDatabaseOptions options = Brief();
    options.context = &told;
    options.connected = [](void* context, sqlite3* db) {
        static_cast<Told*>(context)->connected.push_back(db);
    };
    options.preparing = [](void* context) { ++static_cast<Told*>(context)->preparing; };
    options.starting = [](void* context, sqlite3_stmt* statement) {
        static_cast<Told*>(context)->starting.emplace_back(sqlite3_sql(statement));
    };
    ASSERT_EQ(Open(options), LogFault::NONE);
    EXPECT_EQ(told.connected, std::vector<sqlite3*>{database.Handle()});
    EXPECT_EQ(told.preparing, 0);
    const std::string insert = "INSERT INTO versao_sb VALUES (1, 'v')";
    EXPECT_EQ(Command({insert, "DROP TABLE versao_sb"}).state, LogState::KEPT);
    EXPECT_EQ(told.starting, std::vector<std::string>{insert});
    EXPECT_GE(told.preparing, 2);
    EXPECT_EQ(told.connected.size(), 1U);
}

TEST_F(Guard, NoTableButTheLoggingTablesIsWrittenTo)
{
    EXPECT_TRUE(IsRefused("INSERT INTO sqlite_schema (name) VALUES ('t')"));
    EXPECT_TRUE(IsRefused("SELECT count(*) FROM sqlite_schema"));
}

// Queries of more than one SELECT are for who looks, between the commands; what is named within a
// statement is not.
TEST_F(Guard, BetweenTheCommandsQueriesAreFree)
{
    const auto answers = [&](const char* sql) {
        return sqlite3_exec(database.Handle(), sql, nullptr, nullptr, nullptr) == SQLITE_OK;
    };
    EXPECT_TRUE(answers("SELECT count(*) FROM versao_sb WHERE num_ecf IN"
                        " (SELECT num_ecf FROM versao_sb)"));
    EXPECT_FALSE(answers("INSERT INTO versao_sb VALUES (1, 'v')"));
    // After a command that was lost as well.
    sqlite3_commit_hook(
        database.Handle(), [](void*) { return 1; }, nullptr);
    EXPECT_EQ(Command({"INSERT INTO versao_sb VALUES (1, 'v')"}).state, LogState::LOST);
    EXPECT_TRUE(answers("SELECT count(*) FROM versao_sb"));
    EXPECT_EQ(Rows(), "");
}

// What a statement names for itself is no logging table.
TEST_F(Guard, AQueryOfAnInnerNameIsRefused)
{
    EXPECT_NE(sqlite3_exec(database.Handle(),
                           "WITH c AS (SELECT DISTINCT num_ecf FROM versao_sb) SELECT c.num_ecf "
                           "FROM c",
                           nullptr, nullptr, nullptr),
              SQLITE_OK);
}

} // namespace

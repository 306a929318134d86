// The write-ahead log, and what is done while it cannot be had.
#include "tests/LogDatabase/LogDatabaseTest.h"

namespace
{

class Journal : public LogDatabaseTest
{
  protected:
    // A logging database that is in no write-ahead mode, as another program may leave it.
    void MakeWithRollbackJournal()
    {
        ASSERT_EQ(Open(), LogFault::NONE);
        database.Close();
        ASSERT_EQ(Other(Path()).Run("PRAGMA journal_mode = DELETE"), "delete");
    }
    std::string Synchronous() const
    {
        std::string value;
        sqlite3_set_authorizer(database.Handle(), nullptr, nullptr);
        sqlite3_exec(
            database.Handle(), "PRAGMA synchronous",
            [](void* out, int, char** values, char**) {
                *static_cast<std::string*>(out) = values[0];
                return 0;
            },
            &value, nullptr);
        return value;
    }
};

TEST_F(Journal, IsTheWriteAheadLogSyncedAtEveryCommit)
{
    ASSERT_EQ(Open(), LogFault::NONE);
    EXPECT_TRUE(database.HasWriteAheadLog());
    EXPECT_EQ(Synchronous(), "2"); // FULL
}

TEST_F(Journal, AReaderAtTheStartDelaysItAndNoCommandIsWithoutASecondSyncUntilThen)
{
    MakeWithRollbackJournal();
    {
        Other reader(Path());
        reader.Run("BEGIN");
        reader.Run("SELECT count(*) FROM versao_sb");
        ASSERT_EQ(Open(), LogFault::NONE) << database.Text();
        EXPECT_FALSE(database.HasWriteAheadLog());
        EXPECT_EQ(Synchronous(), "3"); // EXTRA
        EXPECT_TRUE(Entries().empty());
        database.Begin();
        EXPECT_EQ(Entries(),
                  std::vector<std::string>{"LogDatabase: no write-ahead log: database is locked"});
        database.Commit();
        database.Begin();
        EXPECT_EQ(Entries().size(), 1U) << "told once, and nothing is lost";
        database.Commit();
    }
    EXPECT_EQ(Command({"INSERT INTO versao_sb VALUES (1, 'v')"}).state, LogState::KEPT);
    EXPECT_TRUE(database.HasWriteAheadLog());
    EXPECT_EQ(Synchronous(), "2");
    database.Begin();
    database.Commit();
    EXPECT_EQ(Entries().back(), "LogDatabase: the write-ahead log is in use again");
    EXPECT_EQ(Rows("PRAGMA journal_mode"), "wal");
}

} // namespace

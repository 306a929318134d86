// The write-ahead log, and what is done while it cannot be had.
#include "tests/LogDatabase/FailingLayer.h"
#include "tests/LogDatabase/LogDatabaseTest.h"

#include <filesystem>

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

// The engine remembers the mode that it was to set, whether it could or not: until it has read the
// one that the file has, which may fail too.
TEST_F(Journal, WhatIsSaidOfItIsNeverMoreThanTheFileSaysWhicheverCallsFailed)
{
    int without = 0;
    for (int sizesLost = 0; sizesLost < 6; ++sizesLost) {
        for (int FailingLayer::*left : {&FailingLayer::writesLeft, &FailingLayer::syncsLeft}) {
            for (int at = 1;; ++at) {
                SCOPED_TRACE("call " + std::to_string(at) + ", then " + std::to_string(sizesLost));
                database.Close();
                std::filesystem::remove(Path());
                MakeWithRollbackJournal();
                FailingLayer layer;
                layer.*left = at;
                layer.sizesLostBehind = sizesLost;
                LogDatabaseOptions options = Brief();
                options.vfs = FailingLayer::NAME;
                const LogFault fault = Open(options);
                const bool failed = layer.*left == 0;
                layer.*left = 0;
                layer.sizesLost = 0;
                if (fault == LogFault::NONE) {
                    const bool is = Other(Path()).Run("PRAGMA journal_mode") == "wal";
                    EXPECT_TRUE(is || !database.HasWriteAheadLog());
                    EXPECT_TRUE(is == database.HasWriteAheadLog() || sizesLost > 0);
                    EXPECT_EQ(Synchronous(), database.HasWriteAheadLog() ? "2" : "3");
                    without += is ? 0 : 1;
                    EXPECT_EQ(NumberedCommand(1, 1).state, LogState::KEPT);
                    EXPECT_TRUE(database.HasWriteAheadLog()) << "set by the next command";
                } else {
                    EXPECT_GT(sizesLost, 0) << database.Text();
                }
                database.Close();
                if (!failed) {
                    break;
                }
            }
        }
    }
    EXPECT_GT(without, 1);
}

} // namespace

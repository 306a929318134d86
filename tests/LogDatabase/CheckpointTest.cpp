// The write-ahead log: how it grows, and how it comes back.
#include "tests/LogDatabase/LogDatabaseTest.h"

#include <atomic>
#include <chrono>
#include <filesystem>
#include <thread>

namespace
{

// Of a new database.
const int PAGE_BYTES = LogDatabaseOptions().pageSize;

class Checkpoint : public LogDatabaseTest
{
  protected:
    std::int64_t FileBytes() const
    {
        return static_cast<std::int64_t>(std::filesystem::file_size(Path() + "-wal"));
    }
    void Commands(int count)
    {
        for (int i = 0; i < count; ++i) {
            ASSERT_EQ(Command({"INSERT INTO versao_sb VALUES (1, 'v')"}).state, LogState::KEPT);
        }
    }
    static LogDatabaseOptions Small()
    {
        LogDatabaseOptions options = Brief();
        options.checkpointBytes = 20 * PAGE_BYTES;
        options.tellLogBytes = 60 * PAGE_BYTES;
        return options;
    }
};

TEST_F(Checkpoint, TheSizeOfTheLogIsKnown)
{
    ASSERT_EQ(Open(), LogFault::NONE);
    Commands(5);
    EXPECT_EQ(database.LogBytes(), FileBytes());
    EXPECT_GT(database.LogBytes(), 5 * PAGE_BYTES);
}

TEST_F(Checkpoint, RestBringsTheLogBackAndTheNextCommandsUseItsRoom)
{
    ASSERT_EQ(Open(), LogFault::NONE);
    Commands(50);
    const std::int64_t grown = FileBytes();
    EXPECT_EQ(database.Rest(), LogFault::NONE);
    EXPECT_EQ(database.LogBytes(), 0);
    Commands(20);
    EXPECT_EQ(FileBytes(), grown);
    EXPECT_LT(database.LogBytes(), grown);
}

TEST_F(Checkpoint, WithoutARestTheLogStaysWithinItsBound)
{
    ASSERT_EQ(Open(Small()), LogFault::NONE);
    Commands(500);
    EXPECT_LT(FileBytes(), 30 * PAGE_BYTES);
}

TEST_F(Checkpoint, AReaderThatStaysMakesItGrowAndLetsItBackAfterwards)
{
    ASSERT_EQ(Open(Small()), LogFault::NONE);
    Commands(1);
    {
        Other reader(Path());
        reader.Run("BEGIN");
        EXPECT_EQ(reader.Run("SELECT count(*) FROM versao_sb"), "1");
        Commands(100);
        EXPECT_EQ(database.LogBytes(), FileBytes());
        EXPECT_GT(database.LogBytes(), 100 * PAGE_BYTES);
        EXPECT_EQ(CountEntries("LogDatabase: the write-ahead log has "), 1) << "told once";
        EXPECT_EQ(database.Rest(), LogFault::LOCKED);
        EXPECT_EQ(reader.Run("SELECT count(*) FROM versao_sb"), "1");
    }
    EXPECT_EQ(database.Rest(), LogFault::NONE);
    Commands(2);
    EXPECT_LT(FileBytes(), 30 * PAGE_BYTES) << "the room is given back";
    EXPECT_EQ(Rows("SELECT count(*) FROM versao_sb"), "103");
}

// Wherever the two bounds stand to each other, and each time that it happens.
TEST_F(Checkpoint, EachReaderThatStaysIsToldOnceAlsoBelowTheBound)
{
    LogDatabaseOptions options = Small();
    options.tellLogBytes = 10 * PAGE_BYTES; // less than checkpointBytes
    ASSERT_EQ(Open(options), LogFault::NONE);
    Commands(100);
    EXPECT_EQ(CountEntries("LogDatabase: the write-ahead log has "), 0) << "nobody reads";
    for (int round = 1; round <= 3; ++round) {
        {
            Other reader(Path());
            reader.Run("BEGIN");
            reader.Run("SELECT count(*) FROM versao_sb");
            Commands(50);
            EXPECT_EQ(CountEntries("LogDatabase: the write-ahead log has "), round);
        }
        // By a rest, or by what a commit copies.
        if (round == 1) {
            EXPECT_EQ(database.Rest(), LogFault::NONE);
        }
        Commands(50);
        EXPECT_EQ(CountEntries("LogDatabase: the write-ahead log has "), round);
    }
}

TEST_F(Checkpoint, TheSizeIsKnownOfADatabaseOfOtherPages)
{
    LogDatabaseOptions options = Brief();
    options.pageSize = 4096;
    ASSERT_EQ(Open(options), LogFault::NONE);
    // One of before keeps its pages.
    ASSERT_EQ(Open(), LogFault::NONE);
    EXPECT_EQ(Rows("PRAGMA page_size"), "4096");
    Commands(5);
    EXPECT_EQ(database.LogBytes(), FileBytes());
    EXPECT_GT(database.LogBytes(), 5 * 4096);
    EXPECT_EQ(database.Rest(), LogFault::NONE);
    EXPECT_EQ(Rows("PRAGMA page_size"), "4096");
}

TEST_F(Checkpoint, TheOutcomeHasTheSizeOfTheLog)
{
    ASSERT_EQ(Open(), LogFault::NONE);
    const LogOutcome outcome = Command({"INSERT INTO versao_sb VALUES (1, 'v')"});
    EXPECT_EQ(outcome.logBytes, FileBytes());
    EXPECT_GT(outcome.logBytes, 0);
}

// Two readers, of which one at least always has a snapshot: the log is never without one that
// needs it, and only Rest can let new ones read the database itself.
TEST_F(Checkpoint, OverlappingReadersThatComeAndGoDoNotLetItGrow)
{
    LogDatabaseOptions options = Small();
    options.busyTimeoutMs = 60000; // more than any snapshot below takes
    ASSERT_EQ(Open(options), LogFault::NONE);
    Commands(1);
    std::atomic<bool> ends{false};
    std::atomic<int> snapshots{0};
    std::thread readers([&] {
        Other even(Path());
        Other odd(Path());
        even.Run("BEGIN");
        even.Run("SELECT count(*) FROM versao_sb");
        for (int i = 0; !ends; ++i) {
            Other& next = i % 2 == 0 ? odd : even;
            Other& last = i % 2 == 0 ? even : odd;
            next.Run("BEGIN");
            next.Run("SELECT count(*) FROM versao_sb");
            ++snapshots;
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
            last.Run("COMMIT");
        }
    });
    std::int64_t most = 0;
    for (int round = 0; round < 6; ++round) {
        Commands(20);
        most = std::max(most, FileBytes());
        EXPECT_EQ(database.Rest(), LogFault::NONE) << round;
    }
    ends = true;
    readers.join();
    EXPECT_GT(snapshots, 6);
    EXPECT_LT(most, 50 * PAGE_BYTES) << "of 120 commands";
    EXPECT_EQ(Rows("SELECT count(*) FROM versao_sb"), "121");
}

} // namespace

// The write-ahead log: how it grows, and how it comes back.
#include "tests/LogDatabase/LogDatabaseTest.h"

#include <filesystem>

namespace
{

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
        options.checkpointBytes = 20 * 4096;
        options.tellLogBytes = 60 * 4096;
        return options;
    }
};

TEST_F(Checkpoint, TheSizeOfTheLogIsKnown)
{
    ASSERT_EQ(Open(), LogFault::NONE);
    Commands(5);
    EXPECT_EQ(database.LogBytes(), FileBytes());
    EXPECT_GT(database.LogBytes(), 5 * 4096);
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
    EXPECT_LT(FileBytes(), 30 * 4096);
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
        EXPECT_GT(database.LogBytes(), 100 * 4096);
        EXPECT_EQ(CountEntries("LogDatabase: the write-ahead log has "), 1) << "told once";
        EXPECT_EQ(database.Rest(), LogFault::LOCKED);
        EXPECT_EQ(reader.Run("SELECT count(*) FROM versao_sb"), "1");
    }
    EXPECT_EQ(database.Rest(), LogFault::NONE);
    Commands(2);
    EXPECT_LT(FileBytes(), 30 * 4096) << "the room is given back";
    EXPECT_EQ(Rows("SELECT count(*) FROM versao_sb"), "103");
}

} // namespace

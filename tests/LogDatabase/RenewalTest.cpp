// A database that is set aside, and the new one in its place.
#include "tests/LogDatabase/LogDatabaseTest.h"

#include <cstdio>
#include <filesystem>

namespace
{

class Renewal : public LogDatabaseTest
{
  protected:
    std::string Aside() const { return folder.File("db.2024"); }
    std::string AsideRows() const
    {
        return Other(Aside()).Run("SELECT group_concat(num_ecf, ' ') FROM versao_sb");
    }
};

TEST_F(Renewal, InGoodOrderTheOldOneIsWholeAndTheNewOneEmpty)
{
    ASSERT_EQ(Open(), LogFault::NONE);
    EXPECT_EQ(NumberedCommand(1, 1).state, LogState::KEPT);
    EXPECT_EQ(database.BeginAnew(Aside().c_str()), LogFault::NONE) << database.Text();
    EXPECT_EQ(Entries(), std::vector<std::string>{"LogDatabase: the database is set aside as " +
                                                  Aside() + ": a new one begins"});
    EXPECT_EQ(database.CommandNumber(), 0);
    EXPECT_EQ(NumberedCommand(2, 2).state, LogState::KEPT);
    EXPECT_EQ(Rows(), "2");
    EXPECT_FALSE(folder.Has("db.2024-wal"));
    EXPECT_FALSE(folder.Has("db.2024-sync"));
    EXPECT_EQ(AsideRows(), "1");
}

TEST_F(Renewal, ADamagedOneIsSetAsideWithItsLogAndCommandsAreKeptAgain)
{
    folder.Write("db", std::string(5000, 'x'));
    folder.Write("db-wal", "its log");
    ASSERT_EQ(Open(), LogFault::NOT_A_DATABASE);
    EXPECT_EQ(database.BeginAnew(Aside().c_str()), LogFault::NONE) << database.Text();
    EXPECT_EQ(Entries(), std::vector<std::string>{"LogDatabase: the database is set aside as " +
                                                  Aside() + ": file is not a database"});
    EXPECT_EQ(folder.Read("db.2024"), std::string(5000, 'x'));
    EXPECT_EQ(folder.Read("db.2024-wal"), "its log");
    EXPECT_EQ(Command({"INSERT INTO versao_sb VALUES (1, 'v')"}).state, LogState::KEPT);
    EXPECT_EQ(Rows(), "1");
}

TEST_F(Renewal, WithinACommandNothingIsSetAside)
{
    ASSERT_EQ(Open(), LogFault::NONE);
    database.Begin();
    EXPECT_EQ(database.BeginAnew(Aside().c_str()), LogFault::CANNOT_OPEN);
    EXPECT_STREQ(database.Text(), "there is no file to set aside");
    Insert(1);
    EXPECT_EQ(database.Commit().state, LogState::KEPT);
    EXPECT_FALSE(folder.Has("db.2024"));
    EXPECT_EQ(Rows(), "1");
}

TEST_F(Renewal, ANameThatIsNoneChangesNothing)
{
    ASSERT_EQ(Open(), LogFault::NONE);
    EXPECT_EQ(NumberedCommand(1, 1).state, LogState::KEPT);
    const std::string tooLong(5000, 'x');
    for (const char* name : {static_cast<const char*>(nullptr), "", tooLong.c_str()}) {
        EXPECT_EQ(database.BeginAnew(name), LogFault::CANNOT_OPEN);
        EXPECT_STREQ(database.Text(), "it has no name to be set aside under");
        EXPECT_EQ(NumberedCommand(database.CommandNumber() + 1, 2).state, LogState::KEPT);
    }
    EXPECT_EQ(Rows(), "1 2 2 2");
}

// The names are there, but a power cut could undo them: whoever calls is told.
TEST_F(Renewal, AFolderThatCannotBeSyncedIsTold)
{
    ASSERT_EQ(Open(), LogFault::NONE);
    EXPECT_EQ(NumberedCommand(1, 1).state, LogState::KEPT);
    // In the place of the file whose removal syncs the folder.
    std::filesystem::create_directories(folder.File("db.2024-sync") + "/there");
    EXPECT_EQ(database.BeginAnew(Aside().c_str()), LogFault::DISK);
    EXPECT_STREQ(database.Text(), "cannot sync the folder");
    EXPECT_EQ(AsideRows(), "1");
}

TEST_F(Renewal, NothingIsWrittenOver)
{
    folder.Write("db.2024", "another year");
    ASSERT_EQ(Open(), LogFault::NONE);
    EXPECT_EQ(NumberedCommand(1, 1).state, LogState::KEPT);
    EXPECT_EQ(database.BeginAnew(Aside().c_str()), LogFault::CANNOT_OPEN);
    EXPECT_EQ(database.Text(), Aside() + " is there already");
    EXPECT_EQ(folder.Read("db.2024"), "another year");
    // The old one goes on.
    EXPECT_EQ(NumberedCommand(2, 2).state, LogState::KEPT);
    EXPECT_EQ(Rows(), "1 2");
}

TEST_F(Renewal, AReaderThatNeedsTheLogIsNotLeftWithoutIt)
{
    ASSERT_EQ(Open(), LogFault::NONE);
    EXPECT_EQ(NumberedCommand(1, 1).state, LogState::KEPT);
    Other reader(Path());
    reader.Run("BEGIN");
    reader.Run("SELECT count(*) FROM versao_sb");
    EXPECT_EQ(NumberedCommand(2, 2).state, LogState::KEPT);
    EXPECT_EQ(database.BeginAnew(Aside().c_str()), LogFault::LOCKED);
    EXPECT_FALSE(folder.Has("db.2024"));
    EXPECT_EQ(NumberedCommand(3, 3).state, LogState::KEPT);
    EXPECT_EQ(Rows(), "1 2 3");
}

// The power went after the log had its new name, and before the database had.
TEST_F(Renewal, WhatWasCutShortIsFinishedByTheSameCall)
{
    folder.Write("db", std::string(5000, 'x'));
    folder.Write("db.2024-wal", "its log");
    ASSERT_EQ(Open(), LogFault::NOT_A_DATABASE);
    EXPECT_EQ(database.BeginAnew(Aside().c_str()), LogFault::NONE) << database.Text();
    EXPECT_EQ(folder.Read("db.2024"), std::string(5000, 'x'));
    EXPECT_EQ(folder.Read("db.2024-wal"), "its log");
    EXPECT_EQ(Rows(), "");
}

TEST_F(Renewal, AMoveThatFailsChangesNothing)
{
    LogDatabaseOptions options = Brief();
    options.moveFile = [](void*, const char*, const char*) { return false; };
    ASSERT_EQ(Open(options), LogFault::NONE);
    EXPECT_EQ(NumberedCommand(1, 1).state, LogState::KEPT);
    EXPECT_EQ(database.BeginAnew(Aside().c_str()), LogFault::DISK);
    EXPECT_EQ(NumberedCommand(2, 2).state, LogState::KEPT);
    EXPECT_EQ(Rows(), "1 2");
}

TEST_F(Renewal, WithoutAFileThereIsNothingToSetAside)
{
    EXPECT_EQ(database.BeginAnew(Aside().c_str()), LogFault::CANNOT_OPEN);
    ASSERT_EQ(database.Open(":memory:", Brief()), LogFault::NONE);
    EXPECT_EQ(database.BeginAnew(Aside().c_str()), LogFault::CANNOT_OPEN);
}

} // namespace

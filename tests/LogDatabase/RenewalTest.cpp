// A database that is set aside, and the new one in its place.
#include "tests/LogDatabase/FailingLayer.h"
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

// The names are there, but a power cut could undo them: whoever calls is told, and nothing new is
// begun until they are safe.
TEST_F(Renewal, AFolderThatCannotBeSyncedIsToldAndTriedAgain)
{
    ASSERT_EQ(Open(), LogFault::NONE);
    EXPECT_EQ(NumberedCommand(1, 1).state, LogState::KEPT);
    // In the place of every file whose removal syncs the folder.
    std::filesystem::create_directories(folder.File("db.2024-sync") + "/there");
    for (int i = 1; i <= 9; ++i) {
        std::filesystem::create_directories(folder.File("db.2024-sync") + std::to_string(i) +
                                            "/there");
    }
    EXPECT_EQ(database.BeginAnew(Aside().c_str()), LogFault::DISK);
    EXPECT_STREQ(database.Text(), "cannot sync the folder");
    EXPECT_FALSE(database.IsOpen());
    EXPECT_EQ(AsideRows(), "1");
    EXPECT_EQ(NumberedCommand(2, 2).fault, LogFault::DISK);
    EXPECT_FALSE(folder.Has("db"));

    std::filesystem::remove_all(folder.File("db.2024-sync7"));
    EXPECT_EQ(NumberedCommand(3, 3).state, LogState::KEPT);
    EXPECT_EQ(Rows(), "3");
    EXPECT_EQ(AsideRows(), "1");
    EXPECT_FALSE(folder.Has("db-aside"));
    EXPECT_FALSE(folder.Has("db.2024-sync7"));
}

TEST_F(Renewal, AFolderThatCannotBeWrittenToLeavesTheOldOneInUse)
{
    ASSERT_EQ(Open(), LogFault::NONE);
    EXPECT_EQ(NumberedCommand(1, 1).state, LogState::KEPT);
    // In the place of the file that says where it goes.
    std::filesystem::create_directories(folder.File("db-aside") + "/there");
    EXPECT_EQ(database.BeginAnew(Aside().c_str()), LogFault::DISK);
    EXPECT_STREQ(database.Text(), "cannot write where it is set aside");
    EXPECT_TRUE(database.IsOpen());
    EXPECT_EQ(NumberedCommand(2, 2).state, LogState::KEPT);
    EXPECT_EQ(Rows(), "1 2");
    EXPECT_FALSE(folder.Has("db.2024"));
}

TEST_F(Renewal, AFileThatIsNamedAsOneThatSyncsTheFolderIsLeftAlone)
{
    ASSERT_EQ(Open(), LogFault::NONE);
    EXPECT_EQ(NumberedCommand(1, 1).state, LogState::KEPT);
    folder.Write("db.2024-sync", "mine");
    folder.Write("db.2024-sync1", "");
    folder.Write("db-aside-sync", "mine too");
    EXPECT_EQ(database.BeginAnew(Aside().c_str()), LogFault::NONE) << database.Text();
    EXPECT_EQ(folder.Read("db.2024-sync"), "mine");
    EXPECT_EQ(folder.Read("db.2024-sync1"), "");
    EXPECT_EQ(folder.Read("db-aside-sync"), "mine too");
    EXPECT_FALSE(folder.Has("db.2024-sync2"));
    EXPECT_FALSE(folder.Has("db-aside"));
}

// The reason is the file's, not that of an attempt to set it aside that came to nothing.
TEST_F(Renewal, TheEntryHasTheReasonOfTheOpening)
{
    folder.Write("db", std::string(5000, 'x'));
    ASSERT_EQ(Open(), LogFault::NOT_A_DATABASE);
    EXPECT_EQ(database.BeginAnew(""), LogFault::CANNOT_OPEN);
    EXPECT_EQ(Entries(), std::vector<std::string>());
    EXPECT_EQ(database.BeginAnew(Aside().c_str()), LogFault::NONE) << database.Text();
    EXPECT_EQ(Entries(), std::vector<std::string>{"LogDatabase: the database is set aside as " +
                                                  Aside() + ": file is not a database"});
}

TEST_F(Renewal, TheEntryIsThereAndSyncedBeforeAnythingIsMoved)
{
    static bool moved = false;
    static std::size_t synced = 0;
    static std::size_t syncedWhenMoved = 0;
    moved = false;
    synced = syncedWhenMoved = 0;
    LogDatabaseOptions options = Brief();
    options.syncLog = [](void*) { synced = Entries().size(); };
    options.moveFile = [](void*, const char* from, const char* to) {
        syncedWhenMoved = synced;
        moved = std::rename(from, to) == 0;
        // A new one cannot be made there.
        return moved && std::filesystem::create_directory(from);
    };
    folder.Write("db", std::string(5000, 'x'));
    ASSERT_EQ(Open(options), LogFault::NOT_A_DATABASE);
    EXPECT_EQ(database.BeginAnew(Aside().c_str()), LogFault::CANNOT_OPEN);
    EXPECT_STREQ(database.Text(), "unable to open database file (Is a directory)");
    EXPECT_TRUE(moved);
    EXPECT_EQ(syncedWhenMoved, 1U);
    EXPECT_EQ(Entries().size(), 1U);
    EXPECT_EQ(folder.Read("db.2024"), std::string(5000, 'x'));
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

// The power went after the database had its new name, and before its log had.
TEST_F(Renewal, WhatWasCutShortIsFinishedByTheNextOpening)
{
    folder.Write("db-aside", "set aside as " + Aside() + "\n");
    folder.Write("db.2024", std::string(5000, 'x'));
    folder.Write("db-wal", "its log");
    ASSERT_EQ(Open(), LogFault::NONE) << database.Text();
    EXPECT_EQ(folder.Read("db.2024"), std::string(5000, 'x'));
    EXPECT_EQ(folder.Read("db.2024-wal"), "its log");
    EXPECT_FALSE(folder.Has("db-aside"));
    EXPECT_EQ(Rows(), "");
}

TEST_F(Renewal, WhatWasCutShortIsFinishedByTheSameCallToo)
{
    LogDatabaseOptions options = Brief();
    static int moves = 0;
    moves = 0;
    options.moveFile = [](void*, const char* from, const char* to) {
        return ++moves != 2 && std::rename(from, to) == 0;
    };
    folder.Write("db", std::string(5000, 'x'));
    folder.Write("db-wal", "its log");
    ASSERT_EQ(Open(options), LogFault::NOT_A_DATABASE);
    EXPECT_EQ(database.BeginAnew(Aside().c_str()), LogFault::DISK);
    EXPECT_EQ(database.Text(), "cannot move it to " + Aside() + "-wal");
    EXPECT_FALSE(folder.Has("db"));
    EXPECT_TRUE(folder.Has("db-wal"));
    EXPECT_EQ(database.BeginAnew(Aside().c_str()), LogFault::NONE) << database.Text();
    EXPECT_EQ(folder.Read("db.2024"), std::string(5000, 'x'));
    EXPECT_EQ(folder.Read("db.2024-wal"), "its log");
    EXPECT_EQ(Entries().size(), 1U);
    EXPECT_EQ(Rows(), "");
}

// Whoever opens it next is not told to move what was left where it is.
TEST_F(Renewal, ADatabaseThatCannotBeMovedGoesOnAndSaysNoMoreWhereItGoes)
{
    LogDatabaseOptions options = Brief();
    options.moveFile = [](void*, const char*, const char*) { return false; };
    ASSERT_EQ(Open(options), LogFault::NONE);
    EXPECT_EQ(NumberedCommand(1, 1).state, LogState::KEPT);
    EXPECT_EQ(database.BeginAnew(Aside().c_str()), LogFault::DISK);
    EXPECT_EQ(database.Text(), "cannot move it to " + Aside());
    EXPECT_FALSE(folder.Has("db-aside"));
    EXPECT_EQ(NumberedCommand(2, 2).state, LogState::KEPT);
    EXPECT_EQ(Rows(), "1 2");
}

// The power went while it was written where the database goes: nothing was moved.
TEST_F(Renewal, AnIntentThatIsNotWholeMovesNothing)
{
    ASSERT_EQ(Open(), LogFault::NONE);
    EXPECT_EQ(NumberedCommand(1, 1).state, LogState::KEPT);
    for (const std::string& intent :
         {"set aside as " + Aside(), std::string("set aside as \n"), std::string("\n"),
          "set aside as " + Aside() + "\nde\n", Aside() + "\n", std::string(5000, '\n'),
          std::string(1, '\0')}) {
        folder.Write("db-aside", intent);
        ASSERT_EQ(Open(), LogFault::NONE) << database.Text();
        EXPECT_EQ(Rows(), "1");
        EXPECT_EQ(folder.Read("db-aside"), intent);
    }
    EXPECT_FALSE(folder.Has("db.2024"));
    EXPECT_EQ(database.BeginAnew(Aside().c_str()), LogFault::NONE) << database.Text();
    EXPECT_EQ(AsideRows(), "1");
    EXPECT_FALSE(folder.Has("db-aside"));
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

// What was cut short must be finished first, or its files would be mixed with those set aside now.
TEST_F(Renewal, OneThatCannotBeFinishedKeepsTheNextFromBeginning)
{
    folder.Write("db", std::string(5000, 'x'));
    folder.Write("db-aside", "set aside as " + Aside() + "\n");
    folder.Write("db.2024", "there already");
    ASSERT_EQ(Open(), LogFault::CANNOT_OPEN);
    const std::string refusal = Aside() + " is there already";
    EXPECT_EQ(database.Text(), refusal);
    EXPECT_EQ(database.BeginAnew(folder.File("db.other").c_str()), LogFault::CANNOT_OPEN);
    EXPECT_EQ(database.Text(), refusal);
    EXPECT_EQ(folder.Read("db"), std::string(5000, 'x'));
    EXPECT_FALSE(folder.Has("db.other"));
}

class RenewalOnAFailingLayer : public Renewal
{
  protected:
    void SetUp() override
    {
        LogDatabaseOptions options = Brief();
        options.vfs = FailingLayer::NAME;
        ASSERT_EQ(Open(options), LogFault::NONE) << database.Text();
        ASSERT_EQ(NumberedCommand(1, 1).state, LogState::KEPT);
    }
    ~RenewalOnAFailingLayer() override { database.Close(); }

    FailingLayer layer;
};

TEST_F(RenewalOnAFailingLayer, ALogThatCannotBeCopiedGoesWithItsDatabase)
{
    layer.sharedLock = SQLITE_IOERR_LOCK;
    layer.sharedLocks = 1;
    EXPECT_EQ(database.BeginAnew(Aside().c_str()), LogFault::NONE) << database.Text();
    EXPECT_EQ(layer.sharedLocks, 0);
    EXPECT_EQ(Entries(), std::vector<std::string>{"LogDatabase: the database is set aside as " +
                                                  Aside() + ": disk I/O error"});
    EXPECT_TRUE(folder.Has("db.2024-wal"));
    EXPECT_EQ(AsideRows(), "1");
    EXPECT_EQ(NumberedCommand(2, 2).state, LogState::KEPT);
    EXPECT_EQ(Rows(), "2");
}

// As long as what says where it went cannot be deleted, nothing new is begun: it would be moved.
TEST_F(RenewalOnAFailingLayer, WhatSaysWhereItWentIsGoneBeforeANewOneBegins)
{
    layer.undeletable = "-aside";
    EXPECT_EQ(database.BeginAnew(Aside().c_str()), LogFault::DISK);
    EXPECT_STREQ(database.Text(), "cannot sync the folder");
    EXPECT_EQ(NumberedCommand(2, 2).fault, LogFault::DISK);
    EXPECT_FALSE(folder.Has("db"));
    layer.undeletable = nullptr;
    EXPECT_EQ(NumberedCommand(3, 3).state, LogState::KEPT);
    EXPECT_EQ(Rows(), "3");
    EXPECT_EQ(AsideRows(), "1");
}

} // namespace

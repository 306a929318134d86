// The files of a database, on a file layer that does not do what it is asked.
#include "LogDatabase/Files.h"

#include "tests/LogDatabase/FailingLayer.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <string>

namespace
{

using namespace log_database;

class Files : public testing::Test
{
  protected:
    Files() : path(folder.Write("f", "content")) {}

    // What ReadFile reads of it.
    std::string Content(const char* vfs, std::size_t room = 100) const
    {
        char text[100] = "before";
        ReadFile(path.c_str(), text, room, vfs);
        return text;
    }

    // Nothing can be done, and nothing is changed.
    void ExpectNothing(const char* vfs) const
    {
        EXPECT_FALSE(FileExists(path.c_str(), vfs));
        EXPECT_EQ(Content(vfs), "");
        EXPECT_FALSE(WriteFile(path.c_str(), "other", vfs));
        EXPECT_FALSE(DeleteFile(path.c_str(), vfs));
        EXPECT_FALSE(SyncFolderOf(path.c_str(), vfs));
        EXPECT_EQ(folder.Read("f"), "content");
    }

    test_support::TempFolder folder;
    std::string path;
};

TEST_F(Files, AreReadWrittenAndDeleted)
{
    EXPECT_TRUE(FileExists(path.c_str(), nullptr));
    EXPECT_EQ(Content(nullptr), "content");
    EXPECT_EQ(Content(nullptr, 8), "content");
    EXPECT_EQ(Content(nullptr, 7), "");
    EXPECT_TRUE(WriteFile(path.c_str(), "new", nullptr));
    EXPECT_EQ(folder.Read("f"), "new");
    EXPECT_TRUE(SyncFolderOf(path.c_str(), nullptr));
    EXPECT_FALSE(folder.Has("f-sync"));
    EXPECT_TRUE(DeleteFile(path.c_str(), nullptr));
    EXPECT_FALSE(FileExists(path.c_str(), nullptr));
    EXPECT_FALSE(folder.Has("f"));
}

TEST_F(Files, OfALayerThatIsNotThereCannotBeUsed)
{
    ExpectNothing("no such layer");
}

TEST_F(Files, WithoutAFullNameCannotBeUsed)
{
    FailingLayer layer;
    layer.fullPathname = SQLITE_CANTOPEN;
    ExpectNothing(FailingLayer::NAME);
}

TEST_F(Files, OfWhichTheLayerCannotSayWhetherTheyAreThereAreNot)
{
    FailingLayer layer;
    layer.access = SQLITE_IOERR_ACCESS;
    EXPECT_FALSE(FileExists(path.c_str(), FailingLayer::NAME));
}

TEST_F(Files, ThatNeedMoreMemoryThanThereIsAreNotOpened)
{
    FailingLayer layer;
    layer.NeedBytesAFile(1025);
    EXPECT_EQ(Content(FailingLayer::NAME), "");
    EXPECT_FALSE(WriteFile(path.c_str(), "other", FailingLayer::NAME));
    EXPECT_EQ(folder.Read("f"), "content");
    layer.NeedBytesAFile(1024);
    EXPECT_EQ(Content(FailingLayer::NAME), "content");
}

TEST_F(Files, WhoseSizeCannotBeToldAreEmpty)
{
    FailingLayer layer;
    layer.fileSize = SQLITE_IOERR_FSTAT;
    EXPECT_EQ(Content(FailingLayer::NAME), "");
    EXPECT_EQ(layer.CountOpen(), 0U);
}

TEST_F(Files, ThatCannotBeOpenedAreClosedWhereTheLayerAsksForIt)
{
    FailingLayer layer;
    layer.open = SQLITE_IOERR;
    layer.opensAllTheSame = true;
    EXPECT_EQ(Content(FailingLayer::NAME), "");
    EXPECT_EQ(layer.CountOpen(), 0U);
    EXPECT_FALSE(SyncFolderOf(path.c_str(), FailingLayer::NAME));
    EXPECT_EQ(layer.CountOpen(), 0U);
}

} // namespace

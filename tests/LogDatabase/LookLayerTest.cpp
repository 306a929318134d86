// The layer through which a file is looked at, call by call.
#include "LogDatabase/LookLayer.h"

#include "tests/LogDatabase/FailingLayer.h"
#include "tests/support/Files.h"
#include "tests/support/Rows.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace
{

using namespace log_database;

// A file opened through the layer of that name.
class Opened
{
  public:
    Opened(const LookLayer& layer, const char* name, int flags)
        : m_vfs(sqlite3_vfs_find(layer.Name())),
          m_memory(static_cast<std::size_t>(m_vfs->szOsFile) / sizeof(sqlite3_int64) + 1),
          result(m_vfs->xOpen(m_vfs, name, File(), flags, nullptr))
    {
    }
    ~Opened()
    {
        if (File()->pMethods != nullptr) {
            File()->pMethods->xClose(File());
        }
    }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;

    sqlite3_file* File() { return reinterpret_cast<sqlite3_file*>(m_memory.data()); }
    const sqlite3_io_methods& Methods() { return *File()->pMethods; }
    int Write(const std::string& text, sqlite3_int64 at)
    {
        return Methods().xWrite(File(), text.data(), static_cast<int>(text.size()), at);
    }
    // So many bytes from the beginning, and a point for each that is 0.
    std::string Read(int length, int due)
    {
        std::string text(static_cast<std::size_t>(length), 'x');
        EXPECT_EQ(Methods().xRead(File(), text.data(), length, 0), due);
        for (char& one : text) {
            one = one == '\0' ? '.' : one;
        }
        return text;
    }
    sqlite3_int64 Size()
    {
        sqlite3_int64 size = -1;
        EXPECT_EQ(Methods().xFileSize(File(), &size), SQLITE_OK);
        return size;
    }

  private:
    sqlite3_vfs* m_vfs;
    std::vector<sqlite3_int64> m_memory;

  public:
    const int result;
};

class Layer : public testing::Test
{
  protected:
    static constexpr int DATABASE = SQLITE_OPEN_READWRITE | SQLITE_OPEN_MAIN_DB;
    static constexpr int JOURNAL =
        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_MAIN_JOURNAL;

    test_support::TempFolder folder;
    FailingLayer below;
};

TEST_F(Layer, WhatIsWrittenIsReadAgainAndNotInTheFile)
{
    const std::string path = folder.Write("db", "content");
    const LookLayer look(FailingLayer::NAME);
    Opened file(look, path.c_str(), DATABASE);
    ASSERT_EQ(file.result, SQLITE_OK);
    EXPECT_EQ(file.Size(), 7);
    EXPECT_EQ(file.Write("XY", 1), SQLITE_OK);
    EXPECT_EQ(file.Write("Z", 9), SQLITE_OK);
    EXPECT_EQ(file.Size(), 10);
    EXPECT_EQ(file.Read(10, SQLITE_OK), "cXYtent..Z");
    EXPECT_EQ(file.Read(12, SQLITE_IOERR_SHORT_READ), "cXYtent..Z..");
    EXPECT_EQ(file.Methods().xTruncate(file.File(), 3), SQLITE_OK);
    EXPECT_EQ(file.Read(5, SQLITE_IOERR_SHORT_READ), "cXY..");
    EXPECT_EQ(folder.Read("db"), "content");
}

TEST_F(Layer, AFileWhoseSizeCannotBeToldIsNeitherReadNorWritten)
{
    const std::string path = folder.Write("db", "content");
    const LookLayer look(FailingLayer::NAME);
    Opened file(look, path.c_str(), DATABASE);
    ASSERT_EQ(file.result, SQLITE_OK);
    below.fileSize = SQLITE_IOERR_FSTAT;
    EXPECT_EQ(file.Write("XY", 1), SQLITE_IOERR_FSTAT);
    char byte = 0;
    EXPECT_EQ(file.Methods().xRead(file.File(), &byte, 1, 0), SQLITE_IOERR_FSTAT);
    below.fileSize = SQLITE_OK;
    EXPECT_EQ(file.Read(7, SQLITE_OK), "content");
}

TEST_F(Layer, AFileThatIsNotThereIsAnEmptyOneAndNoneIsMade)
{
    const LookLayer look(FailingLayer::NAME);
    const std::string path = folder.File("db-journal");
    Opened named(look, path.c_str(), JOURNAL);
    Opened nameless(look, nullptr, SQLITE_OPEN_READWRITE | SQLITE_OPEN_TEMP_DB);
    for (Opened* file : {&named, &nameless}) {
        ASSERT_EQ(file->result, SQLITE_OK);
        EXPECT_EQ(file->Size(), 0);
        EXPECT_EQ(file->Read(2, SQLITE_IOERR_SHORT_READ), "..");
        EXPECT_EQ(file->Write("ab", 0), SQLITE_OK);
        EXPECT_EQ(file->Read(2, SQLITE_OK), "ab");
        EXPECT_EQ(file->Methods().iVersion, 1);
    }
    EXPECT_FALSE(folder.Has("db-journal"));
    EXPECT_EQ(below.CountOpen(), 0U);
}

TEST_F(Layer, AFileThatCannotBeOpenedOrAskedForIsNoEmptyOne)
{
    const std::string path = folder.Write("db-journal", "content");
    const LookLayer look(FailingLayer::NAME);
    below.access = SQLITE_IOERR_ACCESS;
    EXPECT_EQ(Opened(look, path.c_str(), JOURNAL).result, SQLITE_IOERR_ACCESS);
    below.access = SQLITE_OK;
    below.open = SQLITE_CANTOPEN;
    EXPECT_EQ(Opened(look, path.c_str(), JOURNAL).result, SQLITE_CANTOPEN);
    below.opensAllTheSame = true;
    folder.Write("db", "content"); // whose permissions a journal has
    EXPECT_EQ(Opened(look, path.c_str(), JOURNAL).result, SQLITE_CANTOPEN);
    EXPECT_EQ(below.CountOpen(), 0U);
}

TEST_F(Layer, AJournalThatWasDeletedIsGoneForTheEngineAlone)
{
    const std::string journal = folder.Write("db-journal", "content");
    const std::string log = folder.Write("db-wal", "content");
    const std::string brief = folder.Write("d", "content");
    const LookLayer look(FailingLayer::NAME);
    sqlite3_vfs* vfs = sqlite3_vfs_find(look.Name());
    const auto exists = [&](const std::string& path) {
        int there = -1;
        EXPECT_EQ(vfs->xAccess(vfs, path.c_str(), SQLITE_ACCESS_EXISTS, &there), SQLITE_OK);
        return there;
    };
    EXPECT_EQ(vfs->xDelete(vfs, log.c_str(), 0), SQLITE_OK);
    EXPECT_EQ(exists(journal), 1);
    EXPECT_EQ(vfs->xDelete(vfs, "d", 0), SQLITE_OK);
    EXPECT_EQ(exists(journal), 1);
    EXPECT_EQ(vfs->xDelete(vfs, journal.c_str(), 0), SQLITE_OK);
    EXPECT_EQ(vfs->xDelete(vfs, journal.c_str(), 0), SQLITE_OK);
    EXPECT_EQ(exists(journal), 0);
    EXPECT_EQ(exists(log), 1);
    EXPECT_EQ(exists(brief), 1);
    EXPECT_EQ(folder.Read("db-journal"), "content");
    EXPECT_EQ(folder.Read("db-wal"), "content");
}

TEST_F(Layer, TimeAndChanceAreThoseOfTheLayerBelow)
{
    const LookLayer look(FailingLayer::NAME);
    sqlite3_vfs* vfs = sqlite3_vfs_find(look.Name());
    sqlite3_vfs* real = sqlite3_vfs_find(nullptr);
    double direct = 0;
    double through = 0;
    EXPECT_EQ(real->xCurrentTime(real, &direct), SQLITE_OK);
    EXPECT_EQ(vfs->xCurrentTime(vfs, &through), SQLITE_OK);
    EXPECT_NEAR(through, direct, 0.01);
    std::string bytes(32, '\0');
    EXPECT_EQ(vfs->xRandomness(vfs, 32, bytes.data()), 32);
    EXPECT_NE(bytes, std::string(32, '\0'));
}

TEST_F(Layer, OfALayerThatIsNotThereIsNone)
{
    const LookLayer look("no such layer");
    EXPECT_EQ(sqlite3_vfs_find(look.Name()), nullptr);
}

} // namespace

// A database that can only be read, whoever runs the tests.
#include "tests/LogDatabase/LogDatabaseTest.h"

namespace
{

// The engine's own file layer, but that the database can only be read.
class ReadOnlyFiles
{
  public:
    ReadOnlyFiles()
    {
        Real() = sqlite3_vfs_find(nullptr);
        m_vfs = *Real();
        m_vfs.zName = NAME;
        m_vfs.pNext = nullptr;
        m_vfs.xOpen = Open;
        sqlite3_vfs_register(&m_vfs, 0);
    }
    ~ReadOnlyFiles() { sqlite3_vfs_unregister(&m_vfs); }
    ReadOnlyFiles(const ReadOnlyFiles&) = delete;
    ReadOnlyFiles& operator=(const ReadOnlyFiles&) = delete;

    static constexpr char NAME[] = "read-only";

  private:
    static sqlite3_vfs*& Real()
    {
        static sqlite3_vfs* real = nullptr;
        return real;
    }
    static int Open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* out)
    {
        if ((flags & SQLITE_OPEN_MAIN_DB) != 0) {
            flags &= ~(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
            flags |= SQLITE_OPEN_READONLY;
        }
        return Real()->xOpen(Real(), name, file, flags, out);
    }

    sqlite3_vfs m_vfs = {};
};

class ReadOnly : public LogDatabaseTest
{
  protected:
    ReadOnly() { options.vfs = ReadOnlyFiles::NAME; }

    ReadOnlyFiles files;
    LogDatabaseOptions options = Brief();
};

TEST_F(ReadOnly, ADatabaseIsOpenForReadingAndNoCommandBegins)
{
    ASSERT_EQ(Open(), LogFault::NONE);
    EXPECT_EQ(NumberedCommand(3, 1).state, LogState::KEPT);
    database.Close();
    Plain("PRAGMA journal_mode = DELETE");
    EXPECT_EQ(Open(options), LogFault::READ_ONLY);
    EXPECT_STREQ(database.Text(), "attempt to write a readonly database");
    EXPECT_TRUE(database.IsOpen());
    EXPECT_EQ(database.CommandNumber(), 3);
    const LogOutcome outcome = Command({"INSERT INTO versao_sb VALUES (2, 'v')"});
    EXPECT_EQ(outcome.state, LogState::NOT_BEGUN);
    EXPECT_EQ(outcome.fault, LogFault::READ_ONLY);
    EXPECT_STREQ(outcome.text, "attempt to write a readonly database");
    database.Close();
    EXPECT_EQ(Rows(), "1");
}

TEST_F(ReadOnly, AnEmptyFileIsOfNoUse)
{
    folder.Write("db", "");
    EXPECT_EQ(Open(options), LogFault::READ_ONLY);
    EXPECT_EQ(folder.Read("db"), "");
}

TEST_F(ReadOnly, AnOlderVersionIsReadAndNotUpgraded)
{
    ASSERT_EQ(Open(), LogFault::NONE);
    EXPECT_EQ(Command({"INSERT INTO versao_sb VALUES (1, 'v')"}).state, LogState::KEPT);
    database.Close();
    Plain("PRAGMA application_id = 0");
    Plain("PRAGMA journal_mode = DELETE");
    EXPECT_EQ(Open(options), LogFault::READ_ONLY);
    database.Close();
    EXPECT_EQ(Rows("PRAGMA application_id"), "0");
}

} // namespace

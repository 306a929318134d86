// One run at a time writes a file.
#include "bancada/cli/FileLock.h"

#include "bancada/Unusable.h"
#include "tests/support/Files.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>

using bancada::FileLock;
using bancada::Unusable;

namespace
{

class FileLockTest : public testing::Test
{
  protected:
    // Why "db" cannot be locked; empty if it can.
    std::string Refusal(const std::string& name = "db") const
    {
        try {
            const FileLock lock(folder.File(name), "the database db");
            lock.Require();
        } catch (const Unusable& error) {
            return error.what();
        }
        return "";
    }

    test_support::TempFolder folder;
};

TEST_F(FileLockTest, ASecondOneIsRefusedUntilTheFirstEnds)
{
    auto first = std::make_unique<FileLock>(folder.File("db"), "the database db");
    EXPECT_NO_THROW(first->Require());
    EXPECT_TRUE(folder.Has("db.lock"));
    EXPECT_EQ(Refusal(),
              "the database db is in use by another run, which holds " + folder.File("db.lock"));
    EXPECT_TRUE(folder.Has("db.lock"));
    first.reset();
    EXPECT_FALSE(folder.Has("db.lock"));
    EXPECT_EQ(Refusal(), "");
    EXPECT_FALSE(folder.Has("db.lock"));
}

TEST_F(FileLockTest, ALockThatAKilledRunLeftIsTakenOver)
{
    folder.Write("db.lock", "");
    EXPECT_EQ(Refusal(), "");
    EXPECT_FALSE(folder.Has("db.lock"));
}

TEST_F(FileLockTest, AFileThatIsNoLockIsLeftAlone)
{
    folder.Write("db.lock", "mine");
    EXPECT_EQ(Refusal(), "the database db cannot be locked: " + folder.File("db.lock") +
                             " exists already and is no lock of this program");
    EXPECT_EQ(folder.Read("db.lock"), "mine");
    std::filesystem::create_directory(folder.File("x.lock"));
    EXPECT_NE(Refusal("x"), "");
    folder.Write("target", "");
    std::filesystem::create_symlink("target", folder.File("y.lock"));
    EXPECT_NE(Refusal("y"), "");
    EXPECT_TRUE(folder.Has("target"));
}

TEST_F(FileLockTest, WhereNoneCanBeMadeRequireSaysWhy)
{
    EXPECT_EQ(Refusal("missing/db"), ""); // there is nothing to lock
    folder.Write("none", "");
    const FileLock lock(folder.File("none/db"), "the database db");
    try {
        lock.Require();
        FAIL();
    } catch (const Unusable& error) {
        EXPECT_EQ(error.what(), "the database db cannot be locked: " + folder.File("none/db.lock") +
                                    ": Not a directory");
    }
}

} // namespace

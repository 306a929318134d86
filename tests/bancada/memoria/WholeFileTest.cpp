// Files read and replaced whole.
#include "bancada/memoria/WholeFile.h"

#include "bancada/Unusable.h"
#include "tests/support/Files.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>

using namespace bancada;

namespace
{

namespace fs = std::filesystem;

class WholeFileTest : public testing::Test
{
  protected:
    mode_t Mode(const std::string& name) const
    {
        struct stat status = {};
        EXPECT_EQ(stat(folder.File(name).c_str(), &status), 0);
        return status.st_mode & 07777;
    }

    test_support::TempFolder folder;
};

TEST_F(WholeFileTest, AFileIsMadeAndReplaced)
{
    EXPECT_FALSE(ReadWholeFile(folder.File("a"), 10).has_value());
    ReplaceFile(folder.File("a"), "one");
    EXPECT_EQ(ReadWholeFile(folder.File("a"), 10), "one");
    ReplaceFile(folder.File("a"), "");
    EXPECT_EQ(ReadWholeFile(folder.File("a"), 10), "");
    EXPECT_FALSE(folder.Has("a.tmp"));
}

TEST_F(WholeFileTest, ALongerFileIsRefused)
{
    folder.Write("a", "12345");
    EXPECT_EQ(ReadWholeFile(folder.File("a"), 5), "12345");
    EXPECT_THROW(static_cast<void>(ReadWholeFile(folder.File("a"), 4)), Unusable);
}

TEST_F(WholeFileTest, PermissionsStay)
{
    const mode_t mask = umask(022);
    ReplaceFile(folder.File("a"), "one");
    EXPECT_EQ(Mode("a"), 0644U);
    for (const mode_t mode : {0600U, 0666U, 0640U, 0400U}) {
        ASSERT_EQ(chmod(folder.File("a").c_str(), mode), 0);
        ReplaceFile(folder.File("a"), "two");
        EXPECT_EQ(Mode("a"), mode);
    }
    umask(mask);
}

TEST_F(WholeFileTest, WhatACrashLeftBesideItIsReplacedWhateverItIs)
{
    folder.Write("other", "kept");
    fs::create_symlink("other", folder.File("a.tmp"));
    ReplaceFile(folder.File("a"), "one");
    EXPECT_EQ(folder.Read("a"), "one");
    EXPECT_FALSE(fs::is_symlink(folder.File("a")));
    EXPECT_EQ(folder.Read("other"), "kept");
}

TEST_F(WholeFileTest, LinksAreFollowedToAFileThatIsYetToBeMade)
{
    fs::create_directory(folder.File("d"));
    fs::create_symlink("d/b", folder.File("a"));
    fs::create_symlink("c", folder.File("d/b"));
    EXPECT_EQ(FollowLinks(folder.File("a")), folder.File("d/c"));
    folder.Write("d/c", "");
    EXPECT_EQ(FollowLinks(folder.File("a")), fs::canonical(folder.File("d/c")));
    fs::create_symlink(folder.File("d/none"), folder.File("absolute"));
    EXPECT_EQ(FollowLinks(folder.File("absolute")), folder.File("d/none"));
    EXPECT_EQ(FollowLinks("none"), "none");
    EXPECT_EQ(FollowLinks(""), "");
}

TEST_F(WholeFileTest, LinksInACircleAreNoFile)
{
    fs::create_symlink("b", folder.File("a"));
    fs::create_symlink("a", folder.File("b"));
    EXPECT_THROW(static_cast<void>(ReadWholeFile(FollowLinks(folder.File("a")), 10)), Unusable);
}

} // namespace

// A file made beside its place.
#include "bancada/cli/FreshFile.h"

#include "bancada/Unusable.h"
#include "tests/bancada/cli/FolderState.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using bancada::FreshFile;
using bancada::Unusable;
using bancada_test::StateOf;

namespace
{

namespace fs = std::filesystem;

class FreshFileTest : public testing::Test
{
  protected:
    static void Fill(const FreshFile& file, const std::string& text)
    {
        std::ofstream(file.Path(), std::ios::binary) << text;
    }

    mode_t ModeOf(const std::string& name) const
    {
        struct stat status = {};
        EXPECT_EQ(stat(folder.File(name).c_str(), &status), 0);
        return status.st_mode & 07777U;
    }

    test_support::TempFolder folder;
};

TEST_F(FreshFileTest, TheOldFileStaysUntilTheNewOneIsWhole)
{
    folder.Write("page", "old");
    FreshFile file(folder.File("page"));
    EXPECT_EQ(fs::path(file.Path()).parent_path(), fs::path(folder.File("page")).parent_path());
    Fill(file, "new");
    EXPECT_EQ(folder.Read("page"), "old");
    file.Replace();
    EXPECT_EQ(folder.Read("page"), "new");
    EXPECT_EQ(StateOf(folder).size(), 1U);
}

TEST_F(FreshFileTest, OneThatIsNeverWholeLeavesNothing)
{
    folder.Write("page", "old");
    const auto before = StateOf(folder);
    {
        const FreshFile file(folder.File("page"));
        const FreshFile another(folder.File("another"));
        Fill(file, "half");
        EXPECT_NE(file.Path(), another.Path());
        EXPECT_EQ(StateOf(folder).size(), 3U);
    }
    EXPECT_EQ(StateOf(folder), before);
}

TEST_F(FreshFileTest, PermissionsAndLinksStay)
{
    folder.Write("page", "old");
    fs::create_symlink("page", folder.File("link"));
    fs::create_symlink("yet", folder.File("dangling"));
    chmod(folder.File("page").c_str(), 0640);
    FreshFile file(folder.File("link"));
    Fill(file, "new");
    file.Replace();
    FreshFile other(folder.File("dangling"));
    Fill(other, "made");
    other.Replace();
    EXPECT_EQ(folder.Read("page"), "new");
    EXPECT_EQ(ModeOf("page"), 0640U);
    EXPECT_EQ(StateOf(folder)["link"], "-> page");
    EXPECT_EQ(folder.Read("yet"), "made");
    EXPECT_EQ(StateOf(folder)["dangling"], "-> yet");
}

TEST_F(FreshFileTest, ANewFileHasTheModeThatTheProcessGives)
{
    const mode_t before = umask(027);
    FreshFile file(folder.File("page"));
    umask(before);
    file.Replace();
    EXPECT_EQ(ModeOf("page"), 0640U);
}

TEST_F(FreshFileTest, WhatHasComeMeanwhileIsNotReplacedByOneThatMustBeNew)
{
    FreshFile file(folder.File("copy"));
    Fill(file, "new");
    folder.Write("copy", "another's");
    try {
        file.PlaceAnew();
        FAIL();
    } catch (const Unusable& error) {
        EXPECT_EQ(error.what(), folder.File("copy") + " exists already");
    }
    EXPECT_EQ(folder.Read("copy"), "another's");
    fs::remove(folder.File("copy"));
    file.PlaceAnew();
    EXPECT_EQ(folder.Read("copy"), "new");
}

TEST_F(FreshFileTest, AfterThePlacingNothingIsLeftBeside)
{
    {
        FreshFile file(folder.File("copy"));
        Fill(file, "new");
        file.PlaceAnew();
    }
    EXPECT_EQ(StateOf(folder).size(), 1U);
    EXPECT_EQ(folder.Read("copy"), "new");
}

TEST_F(FreshFileTest, AFolderThatIsMissingAndOneThatHasTheName)
{
    try {
        const FreshFile file(folder.File("none/page"));
        FAIL();
    } catch (const Unusable& error) {
        EXPECT_EQ(error.what(), folder.File("none/page") + ": cannot be written");
    }
    fs::create_directory(folder.File("page"));
    FreshFile file(folder.File("page"));
    EXPECT_THROW(file.Replace(), Unusable);
    EXPECT_THROW(file.PlaceAnew(), Unusable);
}

TEST_F(FreshFileTest, ASignalThatEndsTheProgramRemovesTheFile)
{
    folder.Write("page", "old");
    const auto before = StateOf(folder);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const pid_t child = fork();
        if (child == 0) {
            std::signal(signal, SIG_DFL);
            const FreshFile file(folder.File("page"));
            if (access(file.Path().c_str(), F_OK) == 0) {
                std::raise(signal);
            }
            _exit(1);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << signal;
        EXPECT_EQ(StateOf(folder), before) << signal;
    }
}

TEST_F(FreshFileTest, ASignalThatIsIgnoredStaysSo)
{
    const auto before = std::signal(SIGHUP, SIG_IGN);
    {
        const FreshFile file(folder.File("page"));
        std::raise(SIGHUP);
        EXPECT_TRUE(fs::exists(file.Path()));
    }
    EXPECT_EQ(std::signal(SIGHUP, before), SIG_IGN);
}

} // namespace

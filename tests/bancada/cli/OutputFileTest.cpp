// The file that a subcommand writes.
#include "bancada/cli/OutputFile.h"

#include "bancada/Unusable.h"
#include "tests/bancada/cli/FolderState.h"

#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using bancada::OutputFile;
using bancada::Unusable;
using bancada_test::StateOf;

namespace
{

class OutputFileTest : public testing::Test
{
  protected:
    // What becomes of "content" written to the place: empty where it is there, else why not.
    static std::string Write(const std::string& place)
    {
        try {
            OutputFile file(place);
            file.Stream() << "content";
            file.Commit();
        } catch (const Unusable& error) {
            return error.what();
        }
        return "";
    }

    test_support::TempFolder folder;
};

TEST_F(OutputFileTest, StandsAtItsPlaceWhenItIsCommitted)
{
    folder.Write("page", "old");
    {
        OutputFile file(folder.File("page"));
        file.Stream() << "half of it" << std::flush;
        EXPECT_EQ(folder.Read("page"), "old");
    }
    EXPECT_EQ(folder.Read("page"), "old");
    EXPECT_EQ(StateOf(folder).size(), 1U);
    EXPECT_EQ(Write(folder.File("page")), "");
    EXPECT_EQ(folder.Read("page"), "content");
    EXPECT_EQ(StateOf(folder).size(), 1U);
}

TEST_F(OutputFileTest, AHyphenIsStandardOutput)
{
    testing::internal::CaptureStdout();
    EXPECT_EQ(Write("-"), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "content");
    EXPECT_FALSE(std::filesystem::exists("-"));
}

TEST_F(OutputFileTest, AFullDeviceIsTold)
{
    EXPECT_EQ(Write("/dev/full"), "/dev/full: cannot be written");
    EXPECT_EQ(Write("/dev/null"), "");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST_F(OutputFileTest, APipeIsWrittenAsItIs)
{
    const std::string pipe = folder.File("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE(reader, 0);
    EXPECT_EQ(Write(pipe), "");
    char text[16] = {};
    EXPECT_EQ(read(reader, text, sizeof text), 7);
    EXPECT_STREQ(text, "content");
    close(reader);
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
}

TEST_F(OutputFileTest, APlaceThatCannotBeWritten)
{
    EXPECT_EQ(Write(folder.File("no/such/folder")),
              folder.File("no/such/folder") + ": cannot be written");
    EXPECT_EQ(Write(folder.File(".")), folder.File(".") + ": cannot be written");
    EXPECT_EQ(StateOf(folder).size(), 0U);
}

TEST_F(OutputFileTest, AWriteThatFailedLeavesTheOldFile)
{
    folder.Write("page", "old");
    OutputFile file(folder.File("page"));
    file.Stream() << "new";
    file.Stream().setstate(std::ios::badbit);
    EXPECT_THROW(file.Commit(), Unusable);
    EXPECT_EQ(folder.Read("page"), "old");
}

} // namespace

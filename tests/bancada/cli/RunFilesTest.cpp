// The files of a run, which must not be taken for one another.
#include "bancada/cli/RunFiles.h"

#include "bancada/Unusable.h"
#include "tests/bancada/cli/RunFixture.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

using namespace bancada_test;
using bancada::CheckRunFiles;
using bancada::RunFiles;
using bancada::Unusable;

namespace
{

namespace fs = std::filesystem;

class RunFilesTest : public RunFixture
{
  protected:
    // Why files of these names, in the folder, are refused; empty if they are not. An empty name
    // is none.
    std::string Refusal(const std::string& tape, const std::string& database,
                        const std::string& log, const std::string& memory) const
    {
        RunFiles files;
        files.tape = folder.File(tape);
        files.database = folder.File(database);
        files.log = log.empty() ? "" : folder.File(log);
        files.memory = memory.empty() ? "" : folder.File(memory);
        try {
            static_cast<void>(CheckRunFiles(files));
        } catch (const Unusable& error) {
            return error.what();
        }
        return "";
    }
};

TEST_F(RunFilesTest, FilesApartAreTaken)
{
    EXPECT_EQ(Refusal("t", "d", "l", "m"), "");
    EXPECT_EQ(Refusal("t", "d", "", ""), "");
    // What looks like a derived name of a file that has none of that kind.
    EXPECT_EQ(Refusal("t", "t.tmp", "t-wal", "t.lock"), "");
    EXPECT_EQ(Refusal("m.log", "d", "d.tmp", "m"), "");
}

TEST_F(RunFilesTest, NoTwoAreOne)
{
    for (const auto& [tape, database, log, memory] :
         {std::tuple{"x", "x", "l", "m"}, std::tuple{"x", "d", "x", "m"},
          std::tuple{"x", "d", "l", "x"}, std::tuple{"t", "x", "x", "m"},
          std::tuple{"t", "x", "l", "x"}, std::tuple{"t", "d", "x", "x"}}) {
        EXPECT_EQ(Refusal(tape, database, log, memory),
                  folder.File("x") + " cannot be two of tape, database, firmware log and memory");
    }
    EXPECT_NE(Refusal("t", "d", "", "d.log"), ""); // the log's own name
}

TEST_F(RunFilesTest, NoneIsWhatAnotherNeedsBesideIt)
{
    EXPECT_EQ(Refusal("t", "reg.tmp", "l", "reg"),
              "the database " + folder.File("reg.tmp") + " and the memory " + folder.File("reg") +
                  " cannot both use " + folder.File("reg.tmp"));
    EXPECT_NE(Refusal("m.tmp", "d", "l", "m"), "");
    EXPECT_NE(Refusal("m.journal", "d", "l", "m"), "");
    EXPECT_NE(Refusal("t", "m.journal", "l", "m"), "");
    EXPECT_NE(Refusal("t", "d", "m.journal", "m"), "");
    EXPECT_NE(Refusal("t", "d", "m.tmp", "m"), "");
    for (const char* suffix : {"-wal", "-shm", "-journal", "-aside", ".lock"}) {
        const std::string derived = std::string("d") + suffix;
        EXPECT_NE(Refusal(derived, "d", "l", "m"), "") << derived;
        EXPECT_NE(Refusal("t", "d", derived, "m"), "") << derived;
        EXPECT_NE(Refusal("t", "d", "l", derived), "") << derived;
    }
    EXPECT_NE(Refusal("t", "m.lock", "l", "m"), "");
    EXPECT_NE(Refusal("t", "a", "l", "a-wal"), "");
}

TEST_F(RunFilesTest, LinksAreNoDisguise)
{
    fs::create_symlink("reg.tmp", folder.File("link")); // to a file that is yet to be made
    EXPECT_NE(Refusal("t", "link", "l", "reg"), "");
    folder.Write("t", "");
    fs::create_symlink("t", folder.File("memory"));
    EXPECT_NE(Refusal("t", "d", "l", "memory"), "");
    fs::create_hard_link(folder.File("t"), folder.File("hard"));
    EXPECT_NE(Refusal("t", "d", "hard", "m"), "");
    // What a memory needs stands beside the file that the link names.
    fs::create_directory(folder.File("sub"));
    fs::create_symlink("sub/m", folder.File("m"));
    EXPECT_NE(Refusal("sub/m.tmp", "d", "l", "m"), "");
    EXPECT_EQ(Refusal("m.tmp", "d", "l", "m"), "");
    EXPECT_NE(Refusal("sub/../t", "d", "t", "m"), "");
}

TEST_F(RunFilesTest, ADatabaseWithoutANameOrAFileIsRefused)
{
    folder.Write("tape", PROGRAMMING);
    ProgramResult result = Run("run tape --db ''");
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "ecf-bancada: the database needs a name: of one without nothing is "
                          "kept\n");
    EXPECT_EQ(result.out, "");
    result = Run("run tape --db :memory: --memory m");
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "ecf-bancada: the memory m belongs to a database that is kept, and "
                          ":memory: is not\n");
    EXPECT_FALSE(folder.Has("m"));
    EXPECT_EQ(Run("run tape --db :memory: --log log").exitCode, 0);
}

TEST_F(RunFilesTest, ADatabaseIsAFileAlsoWhereItsNameLooksLikeAnAddress)
{
    folder.Write("tape", PROGRAMMING);
    EXPECT_EQ(Run("run tape --db 'file:db?mode=memory'").exitCode, 0);
    EXPECT_TRUE(folder.Has("file:db?mode=memory"));
    EXPECT_EQ(Run("run tape --db file:reg.tmp --memory file:reg").exitCode, 2);
}

TEST_F(RunFilesTest, DerivedNamesDestroyNothing)
{
    ASSERT_EQ(RunTape(PROGRAMMING + RECEIPT).exitCode, 0);
    fs::rename(folder.File("db"), folder.File("reg.tmp"));
    const std::string database = folder.Read("reg.tmp");
    EXPECT_EQ(Run("run tape --db reg.tmp --memory reg --append").exitCode, 2);
    EXPECT_EQ(folder.Read("reg.tmp"), database);
    EXPECT_FALSE(folder.Has("reg"));

    folder.Write("m.tmp", PROGRAMMING);
    EXPECT_EQ(Run("run m.tmp --db other --memory m").exitCode, 2);
    EXPECT_EQ(folder.Read("m.tmp"), PROGRAMMING);
    EXPECT_EQ(Run("run - --db other --memory m <m.tmp").exitCode, 2);
    EXPECT_EQ(folder.Read("m.tmp"), PROGRAMMING);
    EXPECT_FALSE(folder.Has("other"));
}

// Two runs through two hard links would have a lock and a log each.
TEST_F(RunFilesTest, ADatabaseThatAnotherHardLinkNamesIsRefused)
{
    ASSERT_EQ(RunTape(PROGRAMMING + RECEIPT).exitCode, 0);
    fs::create_hard_link(folder.File("db"), folder.File("db2"));
    fs::create_symlink("db2", folder.File("link"));
    const std::string database = folder.Read("db");
    for (const std::string name : {"db", "db2", "link"}) {
        const ProgramResult result = Run("run tape --append --db " + name);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(result.err, "ecf-bancada: the database " + name +
                                  " has another name too, by a hard link: what is written under "
                                  "one is not safe from a run under the other; copy it\n");
        EXPECT_EQ(folder.Read("db"), database);
    }
    fs::remove(folder.File("db2"));
    EXPECT_EQ(Run("run tape --append --db db").exitCode, 0);
}

} // namespace

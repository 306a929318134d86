// No subcommand writes where it reads.
#include "bancada/cli/UsedFiles.h"

#include "bancada/Unusable.h"
#include "tests/bancada/cli/FolderState.h"
#include "tests/bancada/cli/RunFixture.h"

#include <filesystem>
#include <gmock/gmock.h>

using namespace bancada_test;
using bancada::EvidenceDatabase;
using bancada::RequireApart;
using bancada::Unusable;
using bancada::UsedFile;
using testing::HasSubstr;

namespace
{

namespace fs = std::filesystem;

// A folder with evidence in it: a database with its log, as a register that was killed leaves them,
// the firmware log, the tape, and links to some of them.
class Evidence : public RunFixture
{
  protected:
    void SetUp() override
    {
        folder.Write("tape", PROGRAMMING + RECEIPT);
        const ProgramResult killed =
            RunShell(folder, "mkfifo pipe; : >replies; " + ProgramInShell() +
                                 " run - --db db --log log --replies <pipe >replies & register=$!; "
                                 "exec 3>pipe; cat tape >&3; "
                                 "while [ $(wc -l <replies) -lt 6 ]; do sleep 0.02; done; "
                                 "kill -9 $register; wait $register; exec 3>&-; rm pipe replies");
        ASSERT_EQ(killed.exitCode, 0) << killed.err;
        fs::create_symlink("db", folder.File("symlink"));
        fs::create_hard_link(folder.File("db"), folder.File("hardlink"));
        fs::create_hard_link(folder.File("db-wal"), folder.File("hard-wal"));
        fs::create_symlink("log", folder.File("log-link"));
        fs::create_symlink("db-journal", folder.File("dangling"));
        fs::create_directory(folder.File("sub"));
        ASSERT_GT(fs::file_size(folder.File("db-wal")), 0U);
    }

    // Runs the program with these arguments and holds that it refuses, saying so, and that the
    // folder is as it was.
    void ExpectRefused(const std::string& arguments, const std::string& why)
    {
        const auto before = StateOf(folder);
        const ProgramResult result = Run(arguments);
        EXPECT_EQ(result.exitCode, 2) << arguments;
        EXPECT_EQ(result.out, "") << arguments;
        EXPECT_EQ(result.err, "ecf-bancada: " + why + "\n") << arguments;
        EXPECT_EQ(StateOf(folder), before) << arguments;
    }

    void ExpectRefusedOnStandardOutput(const std::string& arguments)
    {
        const auto before = StateOf(folder);
        const ProgramResult result = Run(arguments);
        EXPECT_EQ(result.exitCode, 2) << arguments;
        EXPECT_THAT(result.err, HasSubstr("standard output cannot be written")) << arguments;
        EXPECT_EQ(StateOf(folder), before) << arguments;
    }
};

TEST_F(Evidence, ThePageOfShowIsNoneOfWhatIsRead)
{
    for (const char* page : {"db", "./db", "symlink", "hardlink"}) {
        ExpectRefused("show db --html " + std::string(page),
                      std::string(page) + " cannot be written: it is the database db");
        ExpectRefused("show symlink --html " + std::string(page),
                      std::string(page) + " cannot be written: it is the database symlink");
    }
    for (const char* page :
         {"db-wal", "db-shm", "db-journal", "db.lock", "db.log", "hard-wal", "dangling"}) {
        ExpectRefused("show db --html " + std::string(page),
                      std::string(page) + " cannot be written: it belongs to the database db");
    }
    for (const char* page : {"log", "log-link", "sub/../log"}) {
        ExpectRefused("show db --log log --html " + std::string(page),
                      std::string(page) + " cannot be written: it is the firmware log log");
    }
    ExpectRefused("show db --log missing --html missing",
                  "missing cannot be written: it is the firmware log missing");
}

TEST_F(Evidence, StandardOutputIsNoneOfWhatIsRead)
{
    for (const char* command :
         {"show db --log log", "check db --log log", "check symlink --log log-link --json",
          "show db --html - --log log"}) {
        for (const char* name : {"db", "db-wal", "log"}) {
            ExpectRefusedOnStandardOutput(std::string(command) + " >>" + name);
        }
    }
    EXPECT_EQ(Run("check db >>symlink").err,
              "ecf-bancada: standard output cannot be written: it is the database db\n");
    EXPECT_EQ(Run("check db >>hard-wal").err,
              "ecf-bancada: standard output cannot be written: it belongs to the database db\n");
}

TEST_F(Evidence, ARunDoesNotReplyIntoItsTape)
{
    const auto before = StateOf(folder);
    EXPECT_EQ(Run("run tape --db new --replies >>tape").exitCode, 2);
    EXPECT_EQ(Run("run - --db new --replies <tape >>tape").exitCode, 2);
    EXPECT_EQ(StateOf(folder), before);
    // The log may go where the summary goes.
    EXPECT_EQ(Run("run tape --db new --log /dev/stdout >>both").exitCode, 0);
}

TEST_F(Evidence, WhatIsReadStaysAsItIs)
{
    const auto before = StateOf(folder);
    for (const char* command :
         {"show db", "show symlink --log log", "show db --coo 1", "show db --json",
          "show db --html -", "check db", "check db --log log --json"}) {
        const ProgramResult result = Run(command);
        EXPECT_NE(result.exitCode, 2) << command << result.err;
        EXPECT_NE(result.out, "") << command;
        EXPECT_EQ(StateOf(folder), before) << command;
    }
}

TEST_F(Evidence, AFailedRunLeavesTheOldPage)
{
    folder.Write("page", "old");
    folder.Write("noise", std::string(5000, 'x'));
    const auto before = StateOf(folder);
    EXPECT_EQ(Run("show noise --html page").exitCode, 2);
    EXPECT_EQ(Run("show missing --html page").exitCode, 2);
    EXPECT_EQ(Run("show db --crz 9 --html page").exitCode, 1);
    EXPECT_EQ(Run("show db --log missing --html page").exitCode, 2);
    EXPECT_EQ(
        RunShell(folder, "ulimit -f 4; " + ProgramInShell() + " show db --html page").exitCode, 2);
    EXPECT_EQ(StateOf(folder), before);
    EXPECT_EQ(Run("show db --html page").exitCode, 0);
    EXPECT_THAT(folder.Read("page"), HasSubstr("</html>"));
    EXPECT_EQ(StateOf(folder).size(), before.size());
}

TEST_F(Evidence, APageThatIsWrittenToStandardOutputIsTheSame)
{
    EXPECT_EQ(Run("show db --html page").exitCode, 0);
    EXPECT_EQ(Run("show db --html -").out, folder.Read("page"));
}

TEST_F(Evidence, FilesApartAreTaken)
{
    const UsedFile database = EvidenceDatabase(folder.File("db"));
    for (const char* output : {"page", "db2", "log2", "db-wal2", "new/page"}) {
        EXPECT_NO_THROW(RequireApart(folder.File(output), {database})) << output;
    }
    EXPECT_NO_THROW(RequireApart("-", {database}));
    EXPECT_NO_THROW(RequireApart("", {database}));
    EXPECT_THROW(RequireApart(folder.File("log"), {database, {folder.File("log-link"), "log"}}),
                 Unusable);
}

} // namespace

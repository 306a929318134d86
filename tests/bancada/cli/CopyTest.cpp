// ecf-bancada copy as a user calls it.
#include "bancada/Sha256.h"
#include "tests/bancada/cli/FolderState.h"
#include "tests/bancada/cli/RunFixture.h"

#include <filesystem>
#include <gmock/gmock.h>

using namespace bancada_test;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{

namespace fs = std::filesystem;

class CopyCommand : public RunFixture
{
  protected:
    void SetUp() override { ASSERT_EQ(RunTape(PROGRAMMING + RECEIPT).exitCode, 0); }

    // The command is refused with this reason, and the folder is as it was.
    void ExpectRefused(const std::string& arguments, const std::string& why)
    {
        const auto before = StateOf(folder);
        const ProgramResult result = Run("copy " + arguments);
        EXPECT_EQ(result.exitCode, 2) << arguments;
        EXPECT_EQ(result.out, "") << arguments;
        EXPECT_EQ(result.err, "ecf-bancada: " + why + "\n") << arguments;
        EXPECT_EQ(StateOf(folder), before) << arguments;
    }
};

TEST_F(CopyCommand, TellsWhatWasCopied)
{
    auto state = StateOf(folder);
    const ProgramResult result = Run("copy db copy");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    const std::string copy = folder.Read("copy");
    EXPECT_EQ(result.out,
              "read:      the file alone: there was no write-ahead log beside it\n"
              "compared:  " +
                  Rows("SELECT (SELECT count(*) FROM cupom_fiscal) + (SELECT count(*) FROM"
                       " item_cupom_fiscal) + (SELECT count(*) FROM pagamento_cupom) +"
                       " (SELECT count(*) FROM meio_pagamento)") +
                  " rows of " + Rows("SELECT count(*) FROM sqlite_schema WHERE type = 'table'") +
                  " tables, all the same\n"
                  "integrity: ok\n"
                  "bytes:     " +
                  std::to_string(copy.size()) + "\nSHA-256:   " + bancada::Sha256Hex(copy) + "\n");
    state["copy"] = bancada::Sha256Hex(copy);
    EXPECT_EQ(StateOf(folder), state);
    EXPECT_EQ(Run("check copy").exitCode, Run("check db").exitCode);
    EXPECT_EQ(Run("show copy").out, Run("show db").out);
}

TEST_F(CopyCommand, GoesToStandardOutput)
{
    EXPECT_EQ(Run("copy db copy").exitCode, 0);
    const auto before = StateOf(folder);
    const ProgramResult result = Run("copy db -");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(result.out == folder.Read("copy"));
    EXPECT_THAT(result.err, HasSubstr("SHA-256:   " + bancada::Sha256Hex(result.out) + "\n"));
    EXPECT_EQ(StateOf(folder), before);
    EXPECT_EQ(Run("copy db - >>db").exitCode, 2);
    EXPECT_EQ(StateOf(folder), before);
}

TEST_F(CopyCommand, TakesTheNameOfNothing)
{
    folder.Write("there", "something");
    folder.Write("new-wal", "a log that nobody misses");
    folder.Write("new2-journal", "");
    fs::create_symlink("nowhere", folder.File("link"));
    fs::create_directory(folder.File("folder"));
    ExpectRefused("db there", "there exists already");
    ExpectRefused("db link", "link exists already");
    ExpectRefused("db folder", "folder exists already");
    ExpectRefused("db db", "db cannot be written: it is the database db");
    ExpectRefused("db db-wal", "db-wal cannot be written: it belongs to the database db");
    ExpectRefused("db db.log", "db.log cannot be written: it belongs to the database db");
    ExpectRefused("db none/copy", "none/copy: cannot be written");
    ExpectRefused("db ''", "the database to be made needs a name");
    ExpectRefused("none copy", "none: no such file");
    ExpectRefused("tape copy", "tape: file is not a database");
    for (const char* name : {"new", "new2"}) {
        const ProgramResult result = Run(std::string("copy db ") + name);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_THAT(result.err, HasSubstr("exists already, and would be taken for a part of "));
        EXPECT_FALSE(folder.Has(name));
    }
}

TEST_F(CopyCommand, ADamagedDatabaseIsCopiedAndTold)
{
    std::string damaged = folder.Read("db");
    const std::size_t page = std::stoul(Rows("SELECT rootpage FROM sqlite_schema WHERE name ="
                                             " 'item_cupom_fiscal'"));
    const std::size_t size = std::stoul(Rows("PRAGMA page_size"));
    damaged.replace((page - 1) * size, size, size, '\xFF');
    folder.Write("damaged", damaged);
    const ProgramResult result = Run("copy damaged copy");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, HasSubstr("integrity: the database is damaged\n"));
    EXPECT_THAT(result.err, StartsWith("damaged: "));
    EXPECT_THAT(result.err, HasSubstr("damaged: the table item_cupom_fiscal, behind row 0: "));
    EXPECT_TRUE(folder.Has("copy"));
}

TEST_F(CopyCommand, AnInterruptedOrImpossibleCopyLeavesNothing)
{
    const auto before = StateOf(folder);
    EXPECT_EQ(RunShell(folder, "ulimit -f 8; " + ProgramInShell() + " copy db copy").exitCode, 2);
    EXPECT_EQ(StateOf(folder), before);
    EXPECT_EQ(Run("copy db - >/dev/full").exitCode, 2);
    EXPECT_EQ(StateOf(folder), before);
}

} // namespace

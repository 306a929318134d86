// ecf-bancada recover as a user calls it.
#include "tests/bancada/cli/FolderState.h"
#include "tests/bancada/cli/RunFixture.h"

#include <gmock/gmock.h>

using namespace bancada_test;
using testing::HasSubstr;

namespace
{

class RecoverCommand : public RunFixture
{
  protected:
    void SetUp() override { ASSERT_EQ(RunTape(PROGRAMMING + RECEIPT).exitCode, 0); }

    // The database "db" with the first page of a table erased, as "damaged".
    std::size_t Damage(const std::string& table)
    {
        std::string bytes = folder.Read("db");
        const std::size_t page =
            std::stoul(Rows("SELECT rootpage FROM sqlite_schema WHERE name = '" + table + "'"));
        const std::size_t size = std::stoul(Rows("PRAGMA page_size"));
        bytes.replace((page - 1) * size, size, size, '\0');
        folder.Write("damaged", bytes);
        return page;
    }
};

TEST_F(RecoverCommand, AnIntactDatabaseIsTheSameAgain)
{
    const auto before = StateOf(folder);
    const ProgramResult result = Run("recover db new");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, HasSubstr("\nitem_cupom_fiscal: 1 row\n"));
    EXPECT_THAT(result.out, HasSubstr("\nmoeda: 0 rows\n"));
    EXPECT_THAT(result.out, HasSubstr("\nnothing is missing\n"));
    EXPECT_EQ(Run("show new").out, Run("show db").out);
    auto after = StateOf(folder);
    after.erase("new");
    EXPECT_EQ(after, before);
}

TEST_F(RecoverCommand, WhatIsMissingIsListed)
{
    const std::size_t page = Damage("item_cupom_fiscal");
    const auto before = StateOf(folder);
    const ProgramResult result = Run("recover damaged new");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, HasSubstr("\nitem_cupom_fiscal: 0 rows\n"
                                      "  missing: rows from 1 on, nobody can tell how many\n"));
    EXPECT_THAT(result.out, HasSubstr("\ncupom_fiscal: 1 row\n"));
    EXPECT_THAT(result.out, HasSubstr("\npage " + std::to_string(page) +
                                      " of item_cupom_fiscal: is damaged\n"));
    EXPECT_THAT(result.out, HasSubstr("\nsomething is missing\n"));
    auto after = StateOf(folder);
    EXPECT_EQ(after.erase("new"), 1U);
    EXPECT_EQ(after, before);
    // The new one can be read, and judged.
    EXPECT_EQ(Run("show new").exitCode, 0);
    EXPECT_EQ(Run("check new").exitCode, 1);
}

TEST_F(RecoverCommand, GoesToStandardOutput)
{
    Damage("item_cupom_fiscal");
    EXPECT_EQ(Run("recover damaged new").exitCode, 1);
    const auto before = StateOf(folder);
    const ProgramResult result = Run("recover damaged -");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(result.out == folder.Read("new"));
    EXPECT_THAT(result.err, HasSubstr("something is missing\n"));
    EXPECT_EQ(StateOf(folder), before);
}

TEST_F(RecoverCommand, HarmsNothing)
{
    folder.Write("there", "something");
    folder.Write("noise", std::string(9000, 'x'));
    const auto before = StateOf(folder);
    for (const char* arguments : {"db db", "db db-wal", "db there", "db none/new", "noise new",
                                  "none new", "tape new", "db ''", "db - >>db"}) {
        EXPECT_EQ(Run("recover " + std::string(arguments)).exitCode, 2) << arguments;
        EXPECT_EQ(StateOf(folder), before) << arguments;
    }
    EXPECT_EQ(Run("recover noise new").err, "ecf-bancada: noise: holds no page of a database\n");
}

} // namespace

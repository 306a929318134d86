#include "tests/bancada/cli/RunFixture.h"

#include <gtest/gtest.h>
#include <string>

namespace
{

using bancada_test::ProgramResult;

class ImportTest : public bancada_test::RunFixture
{
};

TEST_F(ImportTest, ExportOfWhatItMadeIsTheSameFile)
{
    ASSERT_EQ(RunTape(bancada_test::PROGRAMMING + bancada_test::RECEIPT, "--memory m").exitCode, 0);
    ASSERT_EQ(Run("export db --output f --memory m").exitCode, 0);
    const ProgramResult import = Run("import f --tape t2 --memory m2 --facts x2");
    EXPECT_EQ(import.exitCode, 0) << import.err;
    EXPECT_EQ(import.out, "");
    ASSERT_EQ(Run("run t2 --db db2 --memory m2 --strict").exitCode, 0);
    ASSERT_EQ(Run("export db2 --output f2 --memory m2 --facts x2").exitCode, 0);
    const ProgramResult compare = Run("compare f f2");
    EXPECT_EQ(compare.exitCode, 0) << compare.out;
}

TEST_F(ImportTest, AFileThatIsNoneMakesNothing)
{
    folder.Write("f", "E16 too short\n");
    const ProgramResult result = Run("import f --tape t2 --memory m2 --facts x2");
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "ecf-bancada: f:1: E16 has 90 positions, not 13\n");
    for (const char* name : {"t2", "m2", "x2"}) {
        EXPECT_FALSE(folder.Has(name)) << name;
    }
    EXPECT_EQ(Run("import f --tape f --memory m2 --facts x2").exitCode, 2);
    EXPECT_EQ(Run("import f --tape t2 --memory t2 --facts x2").exitCode, 2);
    EXPECT_EQ(Run("import f --tape t2 --memory m2 --facts m2").exitCode, 2);
    EXPECT_EQ(folder.Read("f"), "E16 too short\n");
}

} // namespace

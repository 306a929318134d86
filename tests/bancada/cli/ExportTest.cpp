#include "tests/bancada/cli/RunFixture.h"

#include <gtest/gtest.h>
#include <string>

namespace
{

using bancada_test::ProgramResult;

class ExportTest : public bancada_test::RunFixture
{
  protected:
    void SetUp() override
    {
        ASSERT_EQ(RunTape(bancada_test::PROGRAMMING + bancada_test::RECEIPT, "--memory m").exitCode,
                  0);
    }
};

TEST_F(ExportTest, WritesAFileOrStandardOutput)
{
    const ProgramResult file = Run("export db --output f --memory m");
    EXPECT_EQ(file.exitCode, 0);
    EXPECT_EQ(file.out, "");
    EXPECT_NE(file.err.find("neutral: E12"), 0U);
    EXPECT_NE(file.err.find("left out: EAD: the signature is made with the maker's key (1)\n"),
              std::string::npos);
    const std::string content = folder.Read("f");
    EXPECT_EQ(content.substr(0, 3), "E01");
    EXPECT_EQ(content.substr(166, 2), "\r\n");
    const ProgramResult standard = Run("export db --output - --memory m");
    EXPECT_EQ(standard.out, content);
    EXPECT_EQ(standard.err, file.err);
    const ProgramResult lf = Run("export db --output - --line-end lf --memory m");
    EXPECT_EQ(lf.out.find('\r'), std::string::npos);
    EXPECT_EQ(Run("compare f f").exitCode, 0);
}

TEST_F(ExportTest, TakesACommandAndARange)
{
    const ProgramResult mf = Run("export db --output - --command MF");
    EXPECT_EQ(mf.exitCode, 0);
    EXPECT_EQ(mf.out.find("\nE14"), std::string::npos);
    EXPECT_NE(Run("export db --output - --crz 1-2").out.find("\nE14"), std::string::npos);
    EXPECT_EQ(Run("export db --output - --crz 2").out.find("\nE14"), std::string::npos);
    EXPECT_NE(Run("export db --output - --from 2026-03-02 --to 2026-03-02").out.find("\nE14"),
              std::string::npos);
    EXPECT_EQ(Run("export db --output - --from 2026-03-03").out.find("\nE14"), std::string::npos);
}

TEST_F(ExportTest, RefusesWhatItCannotTake)
{
    for (const char* arguments :
         {"export db", "export --output f", "export db --output f --command ABC",
          "export db --output f --crz 0-2", "export db --output f --crz 1-1000000",
          "export db --output f --crz x", "export db --output f --crz 3-2",
          "export db --output f --from 2026-02-29", "export db --output f --to 2026-00-10",
          "export db --output f --from 2026-3-2",
          "export db --output f --from 2026-03-03 --to 2026-03-02",
          "export db --output f --crz 1-2 --from 2026-03-02", "export none --output f",
          "export db --output f --facts none", "export db --output f --memory none",
          "export m --output f"}) {
        const ProgramResult result = Run(arguments);
        EXPECT_EQ(result.exitCode, 2) << arguments;
        EXPECT_FALSE(folder.Has("f")) << arguments;
    }
}

TEST_F(ExportTest, NeverWritesWhereItReads)
{
    const std::string before = folder.Read("db");
    EXPECT_EQ(Run("export db --output db").exitCode, 2);
    EXPECT_EQ(Run("export db --output m --memory m").exitCode, 2);
    EXPECT_EQ(folder.Read("db"), before);
    folder.Write("f", "old");
    folder.Write("facts", "{}");
    EXPECT_EQ(Run("export db --output f --facts facts").exitCode, 2);
    EXPECT_EQ(folder.Read("f"), "old") << "a file that cannot be made whole stays";
}

} // namespace

// ecf-bancada generate: a tape that the register runs to its end into a database that checks clean.
#include "bancada/cli/Subcommands.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iostream>

namespace bancada
{
namespace
{

using testing::HasSubstr;
using testing::IsEmpty;

class GenerateTest : public testing::TestWithParam<std::uint64_t>
{
  protected:
    GenerateTest()
    {
        m_folder = testing::TempDir() + "generate_XXXXXX";
        EXPECT_NE(mkdtemp(m_folder.data()), nullptr);
    }
    ~GenerateTest() override { std::filesystem::remove_all(m_folder); }

    // Runs a subcommand; answers its exit code. Its output goes to m_out.
    int Execute(std::vector<std::string> arguments)
    {
        int exitCode = EXIT_OK;
        CLI::App app;
        AddRun(app, exitCode);
        AddCheck(app, exitCode);
        AddGenerate(app, exitCode);
        std::reverse(arguments.begin(), arguments.end());
        testing::internal::CaptureStdout();
        try {
            app.parse(arguments);
        } catch (const CLI::ParseError&) {
            exitCode = EXIT_UNUSABLE;
        }
        std::cout.flush();
        m_out = testing::internal::GetCapturedStdout();
        return exitCode;
    }

    std::string m_folder, m_out;
};

TEST_P(GenerateTest, TheTapeRunsToItsEndAndChecksClean)
{
    ASSERT_EQ(Execute({"generate", "--days", "3", "--receipts", "25", "--seed",
                       std::to_string(GetParam())}),
              0);
    const std::string tape = m_folder + "/fita.jsonl";
    std::ofstream(tape) << m_out;
    // --strict: not one refusal, not one rejected statement.
    ASSERT_EQ(
        Execute({"run", tape, "--db", m_folder + "/db", "--log", m_folder + "/log", "--strict"}), 0)
        << m_out;
    EXPECT_EQ(Execute({"check", m_folder + "/db", "--log", m_folder + "/log"}), 0) << m_out;
    EXPECT_THAT(m_out, HasSubstr("75 fiscal receipts, "));
    EXPECT_THAT(m_out, HasSubstr(" 3 Z reductions: 0 findings, "));
}

INSTANTIATE_TEST_SUITE_P(Seed, GenerateTest, testing::Values(0, 1, 18446744073709551615U));

TEST_F(GenerateTest, OptionsOutOfTheirRange)
{
    EXPECT_EQ(Execute({"generate", "--days", "0", "--receipts", "5", "--seed", "1"}), 2);
    EXPECT_EQ(Execute({"generate", "--days", "20001", "--receipts", "5", "--seed", "1"}), 2);
    EXPECT_EQ(Execute({"generate", "--days", "1", "--receipts", "4001", "--seed", "1"}), 2);
    EXPECT_EQ(Execute({"generate", "--days", "1", "--receipts", "-1", "--seed", "1"}), 2);
    EXPECT_EQ(Execute({"generate", "--days", "1", "--receipts", "5", "--seed", "x"}), 2);
    EXPECT_EQ(Execute({"generate", "--days", "1", "--receipts", "5"}), 2);
    EXPECT_THAT(m_out, IsEmpty());
}

} // namespace
} // namespace bancada

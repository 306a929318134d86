#include "tests/bancada/BancadaProgram.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>

namespace
{

using bancada_test::ProgramResult;
using bancada_test::RunBancada;
using bancada_test::TempFolder;

const std::string COMMON = "E16BN0100240300000017   MODELO              ";
const std::string COUNTERS = "010000020000000000000000000000"; // usuario, coo and four of zero
const std::string E16 = COMMON + COUNTERS + "LX20240301080000\r\n";
const std::string E16_OTHER = COMMON + COUNTERS + "MF20240301080000\r\n";

TEST(CompareTest, SaysTheSame)
{
    const TempFolder folder;
    folder.Write("a", E16);
    folder.Write("b", E16);
    const ProgramResult result = RunBancada(folder, "compare a b");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "E16: 1 and 1 records, 1 equal, 0 different, 0 only in the first, 0 only "
                          "in the second, 0 at another place\nThe files are the same.\n");
}

TEST(CompareTest, SaysWhatDiffersAndEndsWithOne)
{
    const TempFolder folder;
    folder.Write("a", E16);
    folder.Write("b", E16_OTHER);
    folder.Write("none", "");
    const ProgramResult result = RunBancada(folder, "compare a b");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(
        result.out,
        "E16 usuario 01 coo 000002: simbolo (positions 75-76) \"LX\" and \"MF\": line 1 of the "
        "first, line 1 of the second\n"
        "E16: 1 and 1 records, 0 equal, 1 different, 0 only in the first, 0 only in the "
        "second, 0 at another place\nThe files differ.\n");
    EXPECT_EQ(RunBancada(folder, "compare a none").exitCode, 1);
    EXPECT_NE(
        RunBancada(folder, "compare none b")
            .out.find("E16 usuario 01 coo 000002: only in the second file: line 1 of the second\n"),
        std::string::npos);
}

// What could is no text of a legal audit file.
TEST(CompareTest, NoTextSteersTheTerminal)
{
    const TempFolder folder;
    folder.Write("b", E16_OTHER);
    for (const char* steers : {"\x1b[", "\xC2\x9B"}) {
        std::string one = E16;
        folder.Write("a", one.replace(74, 2, steers));
        const ProgramResult result = RunBancada(folder, "compare a b");
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err.find("ecf-bancada: a:1: E16, simbolo (positions 75-76): "), 0U);
        EXPECT_EQ(result.err.find_first_of("\x1b\x9B"), std::string::npos);
    }
}

TEST(CompareTest, SaysTheSameAsJson)
{
    const TempFolder folder;
    folder.Write("a", E16);
    folder.Write("b", E16_OTHER);
    const ProgramResult result = RunBancada(folder, "compare a b --json");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(nlohmann::json::parse(result.out), nlohmann::json::parse(R"({
        "differences": [{"kind": "field", "type": "E16", "key": "usuario 01 coo 000002",
                         "field": "simbolo", "positions": [75, 76], "first": "LX", "second": "MF",
                         "first_line": 1, "second_line": 1}],
        "types": [{"type": "E16", "first": 1, "second": 1, "equal": 0, "different": 1,
                   "only_first": 0, "only_second": 0, "order": 0}],
        "differs": true})"));
    const ProgramResult same = RunBancada(folder, "compare a a --json");
    EXPECT_EQ(same.exitCode, 0);
    EXPECT_EQ(nlohmann::json::parse(same.out)["differs"], false);
    EXPECT_TRUE(nlohmann::json::parse(same.out)["differences"].empty());
}

TEST(CompareTest, AFileThatIsNoneEndsWithTwo)
{
    const TempFolder folder;
    folder.Write("a", E16);
    folder.Write("b", "E16 too short\n");
    const ProgramResult result = RunBancada(folder, "compare a b");
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "ecf-bancada: b:1: E16 has 90 positions, not 13\n");
    EXPECT_EQ(RunBancada(folder, "compare a missing").exitCode, 2);
    EXPECT_EQ(RunBancada(folder, "compare a a >>a").exitCode, 2);
    EXPECT_EQ(folder.Read("a"), E16) << "an output that is an input";
}

} // namespace

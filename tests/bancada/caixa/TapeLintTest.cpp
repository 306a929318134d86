// The faults of a tape, all of them.
#include "bancada/caixa/TapeLint.h"
#include "bancada/tape/TapeReader.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace
{

using test_support::TempFolder;

class TapeLintTest : public testing::Test
{
  protected:
    // "line:column: message" of each.
    std::vector<std::string> Faults(const std::string& tape)
    {
        bancada::TapeReader reader(folder.Write("t", tape));
        std::vector<std::string> faults;
        lines = bancada::LintTape(reader, [&](const bancada::TapeError& fault) {
            faults.push_back(std::string(fault.what()).substr(folder.File("t").size() + 1));
        });
        return faults;
    }

    using Told = std::vector<std::string>;
    TempFolder folder;
    std::int64_t lines = 0;
};

TEST_F(TapeLintTest, ATapeThatRunsHasNone)
{
    for (const char* name : {"mercearia.jsonl", "oficina.jsonl", "primeira_semana.jsonl"}) {
        bancada::TapeReader reader(std::string(ECF_SOURCE_DIR "/examples/") + name);
        EXPECT_GT(bancada::LintTape(
                      reader, [](const bancada::TapeError& fault) { FAIL() << fault.what(); }),
                  100)
            << name;
    }
}

TEST_F(TapeLintTest, DirectivesHaveFieldsToo)
{
    EXPECT_EQ(Faults(R"({"cmd":"configura","ratear_subtotal":1,"em":"2026-03-02 08:00:00","x":1}
{"cmd":"acerta_relogio","fim":"2026-03-02 08:00:00","x":1}
{"cmd":"cancela_aberto","x":1}
)"),
              (Told{"1:40: configura takes no time, and no field \"em\"",
                    "1:38: field \"ratear_subtotal\": true or false is due, not an integer",
                    "1:67: configura has no field \"x\"; its fields are ratear_subtotal, "
                    "aplicativo, versao_sb",
                    "2:1: acerta_relogio needs the field \"em\"",
                    "2:25: acerta_relogio takes no time, and no field \"fim\"",
                    "2:53: acerta_relogio has no field \"x\"; it has none of its own",
                    "3:25: cancela_aberto has no field \"x\"; it has none of its own"}));
    EXPECT_EQ(lines, 3);
}

TEST_F(TapeLintTest, TheFirstCommandNeedsItsTimeOnce)
{
    const std::string first = "the first command of a tape needs the field \"em\"";
    const std::string x = "{\"cmd\":\"leitura_x\"}\n";
    EXPECT_EQ(Faults(x + x), Told{"1:1: " + first});
    EXPECT_EQ(Faults("{\"cmd\":\"configura\"}\n{\"cmd\":\"cancela_aberto\"}\n" + x + x),
              Told{"3:1: " + first});
    EXPECT_EQ(Faults("{\"cmd\":\"acerta_relogio\",\"em\":\"2026-03-02 08:00:00\"}\n" + x), Told{});
    // Of a line that cannot be read, nobody knows when it was.
    EXPECT_EQ(Faults("?\n" + x).size(), 1U);
    EXPECT_EQ(Faults("{\"cmd\":\"leitura_x\",\"em\":1}\n" + x).size(), 1U);
}

TEST_F(TapeLintTest, EndsBeforeStartsAreFaultsOnEveryLine)
{
    const std::string line =
        "{\"cmd\":\"leitura_x\",\"em\":\"2026-03-02 08:00:00\",\"fim\":\"2026-03-02 07:59:59\"}\n";
    EXPECT_EQ(Faults(line + line),
              (Told{"1:47: field \"fim\": the command ends before it starts",
                    "2:47: field \"fim\": the command ends before it starts"}));
}

} // namespace

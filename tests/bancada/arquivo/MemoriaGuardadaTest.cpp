// What is taken of a memory file, and what is said of one that is none.
#include "bancada/arquivo/MemoriaGuardada.h"

#include "bancada/Unusable.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>
#include <string>

namespace bancada::arquivo
{
namespace
{

class MemoriaGuardadaTest : public testing::Test
{
  protected:
    MemoriaGuardada Read(const std::string& content, std::int64_t number = 0) const
    {
        return ReadMemoriaGuardada(folder.Write("m", content), number);
    }
    static std::string Of(const std::string& registro)
    {
        return R"({"formato":"ecf-bancada memoria","versao":2,"registro":)" + registro + "}";
    }
    // What is said behind the path; empty where the file is taken.
    std::string Refusal(const std::string& content, std::int64_t number = 0) const
    {
        try {
            static_cast<void>(Read(content, number));
        } catch (const Unusable& unusable) {
            const std::string text = unusable.what();
            const std::string path = folder.File("m") + ": ";
            return text.rfind(path, 0) == 0 ? text.substr(path.size()) : text;
        }
        return "";
    }

    test_support::TempFolder folder;
};

TEST_F(MemoriaGuardadaTest, AFileThatIsNoMemoryIsRefused)
{
    EXPECT_EQ(Refusal("[]"), "is no memory file");
    EXPECT_EQ(Refusal("{}"), "is no memory file");
    EXPECT_EQ(Refusal(R"({"formato":"ecf-bancada diario"})"), "is no memory file");
    EXPECT_EQ(Refusal(R"({"formato":7})"), "is no memory file");
    EXPECT_EQ(Refusal("{").rfind("is no JSON: ", 0), 0U);
    EXPECT_EQ(Refusal(Of("{}")), "");
}

TEST_F(MemoriaGuardadaTest, TheGrandTotalIsAnAmountOfSixteenDigitsAndTwoDecimals)
{
    const auto gt = [](const std::string& text) { return Of(R"({"gt":")" + text + R"("})"); };
    EXPECT_EQ(Read(Of("{}")).gt, 0);
    EXPECT_EQ(Read(gt("")).gt, 0);
    EXPECT_EQ(Read(gt("7")).gt, 700);
    EXPECT_EQ(Read(gt("7.")).gt, 700);
    EXPECT_EQ(Read(gt("7.5")).gt, 750);
    EXPECT_EQ(Read(gt("9999999999999999.99")).gt, 999999999999999999);
    for (const char* none :
         {"99999999999999999.00", ".50", "1.234", "1,00", "-1.00", "1.0x", "x"}) {
        EXPECT_EQ(Refusal(gt(none)), "registro.gt: an amount is due") << none;
    }
}

TEST_F(MemoriaGuardadaTest, TheStateIsThatOfTheDatabasesNumber)
{
    const std::string both =
        R"({"formato":"ecf-bancada memoria","registro":{"gt":"2.00"},"execucao":{"sequencia":5},)"
        R"("antes":{"registro":{"gt":"1.00"},"execucao":{"sequencia":4}}})";
    EXPECT_EQ(Read(both, 5).gt, 200);
    EXPECT_EQ(Read(both, 4).gt, 100);
    EXPECT_EQ(Refusal(both, 3), "does not belong to the database: it has come to command 5, the "
                                "database to 3");
    const std::string beforeSaysNothing =
        R"({"formato":"ecf-bancada memoria","execucao":{"sequencia":5},"antes":{"registro":{}}})";
    EXPECT_EQ(Refusal(beforeSaysNothing, 4), "does not belong to the database: it has come to "
                                             "command 5, the database to 4");
}

TEST_F(MemoriaGuardadaTest, WhatIsNotThereIsNothing)
{
    const MemoriaGuardada memoria =
        Read(Of(R"({"contadores":{"coo":7,"crz":"8"},"ecf":{"versao_sb":"01.00.00"},)"
                R"("nao_fiscal":{"totalizadores":{"1":{"nome":"SUPRIMENTO"},"2":{"nome":3}}}})"));
    EXPECT_EQ(memoria.contadores, (std::map<std::string, std::int64_t>{{"coo", 7}, {"crz", 0}}));
    EXPECT_EQ(memoria.naoFiscais,
              (std::map<std::int64_t, std::string>{{1, "SUPRIMENTO"}, {2, ""}}));
    EXPECT_EQ(memoria.versaoSb, "01.00.00");
    EXPECT_EQ(memoria.gt, 0);
}

TEST_F(MemoriaGuardadaTest, AJournalBesideItIsNamed)
{
    folder.Write("m.journal", "");
    EXPECT_EQ(Refusal(Of("{}")),
              "a run that did not end in good order left its journal beside it: the next run with "
              "this memory puts both together");
}

} // namespace
} // namespace bancada::arquivo

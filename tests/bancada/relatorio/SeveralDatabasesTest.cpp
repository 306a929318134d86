// Several databases of one register, shown one after the other.
#include "tests/bancada/BegunAnew.h"
#include "tests/bancada/relatorio/ShowTest.h"

#include <gmock/gmock.h>
#include <map>
#include <string>
#include <vector>

namespace bancada::show_test
{
namespace
{

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

class SeveralDatabases : public Sample
{
  protected:
    void SetUp() override
    {
        Sample::SetUp();
        databases = bancada_test::RunAndBeginAnew(m_registers, "oficina", 2);
        ASSERT_THAT(databases, SizeIs(3));
        all.databases = databases;
    }

    // What is shown of each alone, under its name, with `between` before all but the first.
    std::string EachAlone(ShowOptions options, const std::string& between)
    {
        std::string each;
        for (const std::string& database : databases) {
            options.databases = {database};
            RunShow(options);
            if (result == SHOWN) {
                each += (each.empty() ? "" : between) + database + ":\n" + text;
            }
        }
        return each;
    }

    std::map<std::string, std::string> Pages()
    {
        const leitura::DatabaseReading first(databases[0]);
        const leitura::DatabaseReading second(databases[1]);
        const leitura::DatabaseReading third(databases[2]);
        std::map<std::string, std::string> pages;
        ShowPages({{&first, nullptr}, {&second, nullptr}, {&third, nullptr}}, all,
                  [&](const std::string& name, const std::string& content) {
                      EXPECT_EQ(pages.count(name), 0U) << name;
                      pages[name] = content;
                  });
        return pages;
    }

    std::vector<std::string> databases;
    ShowOptions all;

  private:
    test_support::TempFolder m_registers;
};

TEST_F(SeveralDatabases, TheListHasEachUnderItsName)
{
    const std::string each = EachAlone({}, "\n");
    RunShow(all);
    EXPECT_EQ(result, SHOWN);
    EXPECT_EQ(text, each);
    EXPECT_THAT(text, StartsWith(databases[0] + ":\nZ 0001  day "));
    EXPECT_THAT(text, HasSubstr("\n\n" + databases[1] + ":\nZ 0002  day "));
    EXPECT_THAT(text, HasSubstr("\n\n" + databases[2] + ":\nZ 0003  day "));
}

TEST_F(SeveralDatabases, ADocumentIsFoundWhereverItIsAndSaysWhere)
{
    for (const char* second : {"2", "1"}) {
        all.crz = std::stoll(second);
        all.coo.reset();
        const std::string& database = databases[static_cast<std::size_t>(*all.crz) - 1];
        RunShow(all);
        EXPECT_EQ(result, SHOWN);
        EXPECT_THAT(text, StartsWith(database + ":\n"));
        EXPECT_THAT(text, HasSubstr("REDUÇÃO Z"));
        const nlohmann::json reducoes = ShowJson(all)["reducoes"];
        ASSERT_THAT(reducoes, SizeIs(1));
        EXPECT_EQ(reducoes[0]["arquivo"], database);

        all.coo = reducoes[0]["coo"].get<std::int64_t>() - 1;
        all.crz.reset();
        RunShow(all);
        EXPECT_EQ(result, SHOWN);
        EXPECT_THAT(text, StartsWith(database + ":\n"));
        const nlohmann::json documentos = ShowJson(all)["documentos"];
        ASSERT_THAT(documentos, SizeIs(1));
        EXPECT_EQ(documentos[0]["arquivo"], database);
    }
}

// A number that stands in two of them is shown twice.
TEST_F(SeveralDatabases, ANumberOfTwoOfThemIsShownOfBoth)
{
    all.databases = {databases[1], databases[1]};
    all.crz = 2;
    RunShow(all);
    ShowOptions one;
    one.databases = {databases[1]};
    one.crz = 2;
    const std::string both = text;
    RunShow(one);
    EXPECT_EQ(both, databases[1] + ":\n" + text + "\n" + databases[1] + ":\n" + text);
}

TEST_F(SeveralDatabases, WhatIsInNoneOfThemIsTold)
{
    const std::string names = databases[0] + ", " + databases[1] + ", " + databases[2];
    all.coo = 999;
    RunShow(all);
    EXPECT_EQ(result, NOT_THERE);
    EXPECT_EQ(error, names + ": no document has the COO 999\n");
    all.coo.reset();
    all.crz = 999;
    RunShow(all);
    EXPECT_EQ(error, names + ": there is no Z reduction 999\n");
    all.html = true;
    RunShow(all);
    EXPECT_EQ(error, names + ": there is no day of the Z reduction 999\n");
}

TEST_F(SeveralDatabases, JsonHasThemInTheirOrder)
{
    const nlohmann::json bancos = ShowJson(all)["bancos"];
    ASSERT_THAT(bancos, SizeIs(3));
    for (std::size_t i = 0; i < databases.size(); ++i) {
        EXPECT_EQ(bancos[i]["arquivo"], databases[i]);
        ShowOptions one;
        one.databases = {databases[i]};
        EXPECT_EQ(bancos[i]["dias"], ShowJson(one)["dias"]);
    }
}

TEST_F(SeveralDatabases, OnePageHasTheDaysOfAllAndTheirSums)
{
    all.html = true;
    RunShow(all);
    EXPECT_THAT(text, HasSubstr("<p class=\"fraco\">CNPJ "));
    EXPECT_THAT(text, HasSubstr(" · loja-1.db, loja-2.db, loja.db</p>"));
    EXPECT_THAT(text, HasSubstr("<b>16</b><span>fiscal receipts"));
    const std::size_t first = text.find("<h3>loja-1.db</h3>\n<details class=\"dia\" data-crz=\"1\""
                                        " open>");
    const std::size_t second = text.find("<h3>loja-2.db</h3>\n<details class=\"dia\""
                                         " data-crz=\"2\">");
    const std::size_t third = text.find("<h3>loja.db</h3>\n<details class=\"dia\" data-crz=\"3\">");
    EXPECT_LT(first, second);
    EXPECT_LT(second, third);
    EXPECT_NE(third, std::string::npos);
    // A section of what was looked at for each.
    EXPECT_THAT(text, HasSubstr("<tr><th>File</th><td>loja-2.db</td></tr>"));
    all.crz = 2;
    RunShow(all);
    EXPECT_THAT(text, HasSubstr("data-crz=\"2\" open>"));
    EXPECT_THAT(text, Not(HasSubstr("data-crz=\"1\"")));
}

TEST_F(SeveralDatabases, FilesOfOneNameAreToldByTheirPaths)
{
    std::filesystem::create_directory(File("other"));
    std::filesystem::copy_file(databases[2], File("other/loja.db"));
    all.databases = {databases[2], File("other/loja.db")};
    all.html = true;
    RunShow(all);
    EXPECT_THAT(text, HasSubstr("<h3>" + databases[2] + "</h3>"));
    EXPECT_THAT(text, HasSubstr("<h3>" + File("other/loja.db") + "</h3>"));
}

TEST_F(SeveralDatabases, TheFolderHasTheDaysOfAll)
{
    const auto pages = Pages();
    ASSERT_EQ(pages.size(), 4U);
    const std::string& overview = pages.at("index.html");
    EXPECT_THAT(overview, HasSubstr("<b>3</b><span>days</span>"));
    EXPECT_THAT(overview, HasSubstr("<th>Day</th><th>File</th>"));
    EXPECT_THAT(overview, HasSubstr("</a></td><td>loja-2.db</td>"));
    EXPECT_THAT(pages.at("dia-00001.html"), HasSubstr(" · loja-1.db</p>"));
    EXPECT_THAT(pages.at("dia-00002.html"), HasSubstr(" · loja-2.db</p>"));
    EXPECT_THAT(pages.at("dia-00003.html"), HasSubstr(" · loja.db</p>"));
    EXPECT_THAT(pages.at("dia-00002.html"), HasSubstr("<a href=\"dia-00001.html\">Page before</a>"
                                                      "<a href=\"dia-00003.html\">Next page</a>"));
}

} // namespace
} // namespace bancada::show_test

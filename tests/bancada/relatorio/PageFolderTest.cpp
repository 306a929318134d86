// The folder of pages: its bound, its links, its sums.
#include "bancada/relatorio/PageFolder.h"

#include <map>
#include <string>

#include <gmock/gmock.h>

#include "tests/bancada/relatorio/ShowTest.h"

namespace bancada::show_test
{
namespace
{

using ::testing::HasSubstr;
using ::testing::Not;

class PageFolderShow : public Sample
{
  protected:
    std::map<std::string, std::string> Pages(const relatorio::Verdict* verdict = nullptr)
    {
        ShowOptions options;
        options.databases = {Database()};
        const leitura::DatabaseReading database(Database());
        std::map<std::string, std::string> pages;
        ShowPages({{&database, verdict}}, options,
                  [&](const std::string& name, const std::string& content) {
                      EXPECT_EQ(pages.count(name), 0U) << name;
                      EXPECT_LE(content.size(), relatorio::MAX_PAGE_BYTES) << name;
                      pages[name] = content;
                  });
        return pages;
    }

    // Every link leads to a page that is there, and every page but the overview has one to it.
    static void ExpectLinked(const std::map<std::string, std::string>& pages)
    {
        std::map<std::string, int> linked;
        const std::string begin = "href=\"";
        for (const auto& [name, content] : pages) {
            for (std::size_t i = content.find(begin); i != std::string::npos;
                 i = content.find(begin, i + 1)) {
                const std::size_t from = i + begin.size();
                const std::string to = content.substr(from, content.find('"', from) - from);
                if (to.front() != '#') {
                    EXPECT_EQ(pages.count(to), 1U) << name << " leads to " << to;
                    ++linked[to];
                }
            }
        }
        for (const auto& page : pages) {
            EXPECT_GT(linked[page.first], 0) << page.first;
        }
    }

    static std::string Receipts(int number, const std::string& months)
    {
        return "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
               std::to_string(number) +
               ") INSERT INTO cupom_fiscal (cont_coo, cont_crz, data_hora_emissao, valor_total,"
               " id_cancelado, texto_suplementar) SELECT i, " +
               months;
    }
};

TEST_F(PageFolderShow, AnOverviewAndAPageADay)
{
    WriteSample();
    const auto pages = Pages();
    EXPECT_EQ(pages.size(), 3U);
    ExpectLinked(pages);
    const std::string& overview = pages.at("index.html");
    EXPECT_THAT(overview, HasSubstr("<b>2</b><span>days</span>"));
    EXPECT_THAT(overview, HasSubstr("<b>R$ 1.274,32</b>"));
    // 102, 104 and 105; 103 and the non-fiscal 109 are cancelled.
    EXPECT_THAT(overview, HasSubstr("<tr><td><a href=\"dia-00001.html\" data-de=\"101\" "
                                    "data-ate=\"111\">Z 0001, 15/03/2024</a></td>"
                                    "<td class=\"num\">1.330,96</td><td class=\"num\">3</td>"
                                    "<td class=\"num\">1.269,32</td>"));
    EXPECT_THAT(overview, HasSubstr("not closed</td><td class=\"num\">1</td>"
                                    "<td class=\"num\">5,00</td>"));
    EXPECT_THAT(overview, HasSubstr("<tr><td>2024-03</td><td class=\"num\">4</td>"
                                    "<td class=\"num\">1.274,32</td>"));
    EXPECT_THAT(pages.at("dia-00001.html"), HasSubstr("data-coo=\"102\""));
    EXPECT_THAT(pages.at("dia-00001.html"), Not(HasSubstr("data-coo=\"113\"")));
    EXPECT_THAT(pages.at("dia-00002.html"), HasSubstr("data-coo=\"113\""));
}

TEST_F(PageFolderShow, FindingsStandBesideTheirDays)
{
    WriteSample();
    relatorio::Verdict verdict;
    verdict.faults = 3;
    verdict.byCoo[113] = 2;
    verdict.byCrz[2] = 1;
    const auto pages = Pages(&verdict);
    EXPECT_THAT(pages.at("index.html"), HasSubstr("<b>3</b><span>findings of check</span>"));
    EXPECT_THAT(pages.at("index.html"),
                HasSubstr("not closed</td><td class=\"num\">1</td><td class=\"num\">5,00</td>"
                          "<td class=\"num\">0</td><td class=\"num\">0</td>"
                          "<td class=\"num\">3</td>"));
    EXPECT_THAT(pages.at("dia-00002.html"), HasSubstr("achados\">2 findings</span>"));
}

TEST_F(PageFolderShow, ADayThatIsTooLongIsSplit)
{
    // 3,000 receipts of about 2,000 bytes.
    Write(Receipts(3000, "1, datetime('2024-01-01', '+' || i || ' seconds'), 1, 'N',"
                         " printf('%.*c', 1500, 'x') FROM n"));
    const auto pages = Pages();
    ExpectLinked(pages);
    ASSERT_GE(pages.size(), 5U);
    int documents = 0;
    for (const auto& [name, content] : pages) {
        for (std::size_t i = content.find("class=\"doc\""); i != std::string::npos;
             i = content.find("class=\"doc\"", i + 1)) {
            ++documents;
        }
    }
    EXPECT_EQ(documents, 3000);
    EXPECT_THAT(pages.at("index.html"), HasSubstr("\">part 2</a>"));
    EXPECT_THAT(pages.at("dia-00001-2.html"), HasSubstr("href=\"dia-00001.html\""));
    EXPECT_THAT(pages.at("dia-00001-2.html"), HasSubstr("href=\"dia-00001-3.html\""));
}

TEST_F(PageFolderShow, ADocumentThatIsTooLongIsNamed)
{
    Write(Receipts(2, "1, datetime('2024-01-01', '+' || i || ' seconds'), 1, 'N',"
                      " CASE i WHEN 2 THEN printf('%.*c', 2000000, 'x') END FROM n"));
    const auto pages = Pages();
    EXPECT_THAT(pages.at("dia-00001.html"), HasSubstr("data-coo=\"1\""));
    EXPECT_THAT(pages.at("dia-00001.html"),
                HasSubstr("The document COO 000002 is too long for a page"));
}

TEST_F(PageFolderShow, ManyDaysHavePagesOfMonths)
{
    Write(Receipts(1200, "i, datetime('2024-01-01', '+' || i || ' days'), 1, 'N', ' ' FROM n"));
    const auto pages = Pages();
    ExpectLinked(pages);
    EXPECT_EQ(pages.count("mes-2024-01.html"), 1U);
    EXPECT_EQ(pages.count("mes-2027-04.html"), 1U);
    EXPECT_THAT(pages.at("index.html"), Not(HasSubstr("data-de=\"")));
    EXPECT_THAT(pages.at("mes-2024-02.html"), HasSubstr("href=\"dia-00031.html\""));
}

TEST_F(PageFolderShow, OfAnEmptyDatabase)
{
    Write("");
    const auto pages = Pages();
    EXPECT_EQ(pages.size(), 1U);
    EXPECT_THAT(pages.at("index.html"), HasSubstr("<b>0</b><span>days</span>"));
}

} // namespace
} // namespace bancada::show_test

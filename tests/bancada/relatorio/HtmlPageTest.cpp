// The HTML page, as text; tests/bancada/show_page.py opens it in a browser.
#include <string>

#include <gmock/gmock.h>

#include "tests/bancada/relatorio/ShowTest.h"

namespace bancada::show_test
{
namespace
{

using ::testing::HasSubstr;
using ::testing::Not;

class HtmlPage : public Sample
{
  protected:
    // Writes the page and keeps it in `page`.
    void WritePage(ShowOptions options = {})
    {
        options.html = true;
        RunShow(options);
        page = text;
    }

    std::string page;
};

TEST_F(HtmlPage, HoldsTheSumsOfWhatIsNotCancelled)
{
    WriteSample();
    WritePage();
    EXPECT_EQ(result, SHOWN) << error;
    EXPECT_THAT(page, HasSubstr("<b>R$ 1.274,32</b>"));
    EXPECT_THAT(page, HasSubstr("<td>17 h</td><td class=\"num\">1</td>"
                                "<td class=\"num\">1.240,00</td>"));
    // 30.00 + 32.10 + 5.00; the cancelled non-fiscal receipt's 19.00 is not in it.
    EXPECT_THAT(page, HasSubstr("<td>Dinheiro</td><td class=\"num\">3</td>"
                                "<td class=\"num\">67,10</td>"));
    // What was moved to the cheque is not in it.
    EXPECT_THAT(page, HasSubstr("<td>Cartão de crédito</td><td class=\"num\">1</td>"
                                "<td class=\"num\">1.000,00</td>"));
    EXPECT_THAT(page, HasSubstr("Change of R$ 0,68"));
}

TEST_F(HtmlPage, CountsAndListsRejectedStatementsAndLostCommands)
{
    WriteSample();
    std::ofstream(File("firmware.log"))
        << "2024-03-15 11:05:40\tDBLoggerExecuteSQL: Erro executando SQL Code. Comando:'12', "
           "Erro:'no such table: <x>'\n"
        << "2024-03-15 11:05:40\tUPDATE <x> SET y\n"
        << "2024-03-15 11:06:00\tLogDatabase: the rows of this command are lost: <full>\n"
        << "2024-03-15 11:06:10\tLogDatabase: the rows of this command are lost: locked\n";
    ShowOptions options;
    options.log = File("firmware.log");
    WritePage(options);
    EXPECT_THAT(page, HasSubstr("<b>1</b><span>rejected statements</span>"));
    EXPECT_THAT(page, HasSubstr("<b>2</b><span>lost commands</span>"));
    EXPECT_THAT(page,
                HasSubstr("<b>15/03/2024 11:05:40</b> command 12, statement rejected, log line 1: "
                          "<span class=\"marca\">no such table: &lt;x&gt;</span></p>"
                          "<pre>UPDATE &lt;x&gt; SET y</pre>"));
    EXPECT_THAT(page, HasSubstr("<b>15/03/2024 11:06:00</b> command lost, log line 3: "
                                "<span class=\"marca\">&lt;full&gt;</span></p>"));
}

TEST_F(HtmlPage, OfOneDayHoldsThatDayAlone)
{
    WriteSample();
    ShowOptions options;
    options.crz = 2;
    WritePage(options);
    EXPECT_THAT(page, HasSubstr("data-coo=\"113\""));
    EXPECT_THAT(page, HasSubstr("data-coo=\"112\""));
    EXPECT_THAT(page, Not(HasSubstr("data-coo=\"102\"")));
    EXPECT_THAT(page, HasSubstr("<b>R$ 5,00</b>"));
    EXPECT_THAT(page, Not(HasSubstr("1.240,00")));
}

TEST_F(HtmlPage, OfADayThatIsNotThereIsNotWritten)
{
    WriteSample();
    ShowOptions options;
    options.crz = 9;
    WritePage(options);
    EXPECT_EQ(result, NOT_THERE);
    EXPECT_EQ(error, Database() + ": there is no day of the Z reduction 9\n");
    EXPECT_EQ(page, "");
}

// Every text column of every table, and the log, with a text that breaks out of elements, quoted
// attributes, the title, the style and the script.
TEST_F(HtmlPage, NoTextOfTheDatabaseIsMarkup)
{
    WriteSample();
    const std::string hostile =
        "</title></style></script></pre><script>alert(1)</script>"
        "<img src=x onerror=alert(1)>\" onload=\"alert(1)' onload='alert(1)";
    std::string sql;
    for (const auto& [table, column] : LogSchemaColumns()) {
        const bool key = column.rfind("cont_", 0) == 0 || column.rfind("num_ecf", 0) == 0 ||
                         column.rfind("seq_", 0) == 0 || column.rfind("num_indice", 0) == 0 ||
                         column.rfind("indice_", 0) == 0;
        if (!key) {
            sql += "UPDATE " + table + " SET " + column + " = '";
            for (const char c : hostile) {
                sql += c == '\'' ? "''" : std::string(1, c);
            }
            sql += "';";
        }
    }
    Write(sql);
    std::ofstream(File("firmware.log"))
        << "2024-03-15 11:05:40\tDBLoggerExecuteSQL: Erro executando SQL Code. Comando:'12', Erro:'"
        << hostile << "'\n2024-03-15 11:05:40\t" << hostile << '\n';
    ShowOptions options;
    options.log = File("firmware.log");
    WritePage(options);
    ASSERT_EQ(result, SHOWN) << error;
    EXPECT_THAT(page, HasSubstr("&lt;script&gt;alert(1)"));
    EXPECT_THAT(page, Not(HasSubstr("<script>alert")));
    EXPECT_THAT(page, Not(HasSubstr("<img")));
    EXPECT_THAT(page, Not(HasSubstr("\" onload")));
    EXPECT_THAT(page, Not(HasSubstr("' onload")));
    const auto times = [this](const std::string& part) {
        int n = 0;
        for (std::size_t i = page.find(part); i != std::string::npos; i = page.find(part, i + 1)) {
            ++n;
        }
        return n;
    };
    EXPECT_EQ(times("<script>"), 1);
    EXPECT_EQ(times("</script>"), 1);
    EXPECT_EQ(times("</style>"), 1);
    EXPECT_EQ(times("</title>"), times("<title>"));
}

TEST_F(HtmlPage, NeedsNothingFromElsewhere)
{
    WriteSample();
    WritePage();
    for (const char* address : {"http:", "https:", "src=", "@import", "url(", "<link"}) {
        const std::string own = page.substr(0, page.find("data-coo=\"113\""));
        EXPECT_THAT(own, Not(HasSubstr(address))) << address;
    }
}

TEST_F(HtmlPage, WhatCannotBeReadIsToldAndShownAsItStands)
{
    WriteSample();
    WritePage();
    EXPECT_THAT(page, Not(HasSubstr("in no sum")));
    Write("UPDATE cupom_fiscal SET valor_total = NULL WHERE cont_coo = 105;"
          "UPDATE cupom_fiscal SET data_hora_emissao = 'x' WHERE cont_coo = 102;"
          "UPDATE pagamento_cupom SET valor_pagamento = 'abc' WHERE cont_coo = 105;"
          "UPDATE item_cupom_fiscal SET valor_total = NULL WHERE cont_coo = 105");
    WritePage();
    EXPECT_THAT(page, HasSubstr("2 receipts whose hour or total cannot be read are in no sum"));
    EXPECT_THAT(page, HasSubstr("2 payments whose amount cannot be read are in no sum"));
    const std::size_t begin = page.find("data-coo=\"105\"");
    const std::string cupom = page.substr(begin, page.find("</pre>", begin) - begin);
    EXPECT_THAT(cupom, HasSubstr("<span class=\"valor num\">NULL</span>"));
    EXPECT_THAT(cupom, HasSubstr("NULL\n"));
    EXPECT_THAT(cupom, HasSubstr("abc\n"));
    EXPECT_THAT(cupom, Not(HasSubstr(" 0,00")));
}

TEST_F(HtmlPage, WithoutAVerdictItSaysSo)
{
    WriteSample();
    WritePage();
    EXPECT_THAT(page, HasSubstr("Not checked: "));
}

TEST_F(HtmlPage, CarriesTheVerdictThatItIsGiven)
{
    WriteSample();
    relatorio::Verdict verdict;
    verdict.sha256 = "0123abcd";
    verdict.range = "COO 1 to <2>";
    verdict.faults = 3;
    verdict.explained = 1;
    verdict.notes = 1;
    verdict.findings = {{"KIND<", "COO 102", "a < b", false, true}};
    verdict.byCoo[102] = 2;
    verdict.byCrz[1] = 1;
    ShowOptions options;
    options.databases = {Database()};
    options.html = true;
    options.version = "program 9.9";
    const auto pageWith = [&](const relatorio::Verdict& given) {
        const leitura::DatabaseReading database(Database());
        std::ostringstream out;
        std::ostringstream errors;
        EXPECT_TRUE(Show({{&database, &given}}, options, out, errors));
        return out.str();
    };
    const std::string found = pageWith(verdict);
    EXPECT_THAT(found, HasSubstr("check found 3 findings, 2 of them not explained"));
    EXPECT_THAT(found, HasSubstr("<b>3</b><span>findings of check</span>"));
    EXPECT_THAT(found, HasSubstr("<td>0123abcd</td>"));
    EXPECT_THAT(found, HasSubstr("<td>COO 1 to &lt;2&gt;</td>"));
    EXPECT_THAT(found, HasSubstr("<td>program 9.9</td>"));
    EXPECT_THAT(found, HasSubstr("<b>KIND&lt;</b> COO 102: a &lt; b "
                                 "<span class=\"fraco\">A lost row in the log explains it."));
    EXPECT_THAT(found, HasSubstr("3 more are counted and not listed"));
    EXPECT_THAT(found, HasSubstr("<span class=\"marca achados\">2 findings</span>"));
    EXPECT_THAT(found, HasSubstr("<span class=\"marca achados\">1 finding</span>"));
    EXPECT_THAT(pageWith({}), HasSubstr("check found nothing to object to in the rows."));
    relatorio::Verdict failed;
    failed.failure = "disk <gone>";
    EXPECT_THAT(pageWith(failed), HasSubstr("did not come to its end: disk &lt;gone&gt;"));
    EXPECT_THAT(pageWith(failed), Not(HasSubstr("findings of check")));
}

TEST_F(HtmlPage, OfAnEmptyDatabase)
{
    Write("");
    WritePage();
    EXPECT_EQ(result, SHOWN);
    EXPECT_THAT(page, HasSubstr("<title>registro.db</title>"));
    EXPECT_THAT(page, HasSubstr("No documents."));
    EXPECT_THAT(page, HasSubstr("No payments."));
    EXPECT_THAT(page, HasSubstr("No firmware log was given."));
}

// A register may fill its names up with blanks to the width of their fields.
TEST_F(HtmlPage, PaddedNamesHeadThePageWithoutTheirPadding)
{
    WriteSample();
    Write("UPDATE dados_usuario SET nome_fantasia = printf('%-40s', 'MERCADO DO ZE'),"
          " endereco = printf('%-120s', 'RUA UM, 1'), razao_social = printf('%-40s', ''),"
          " uf = 'SP'");
    WritePage();
    EXPECT_THAT(page, HasSubstr("<title>MERCADO DO ZE</title>"));
    EXPECT_THAT(page, HasSubstr("<h1>MERCADO DO ZE</h1>"));
    EXPECT_THAT(page, HasSubstr("\n                 RUA UM, 1 - SP\n"));
}

} // namespace
} // namespace bancada::show_test

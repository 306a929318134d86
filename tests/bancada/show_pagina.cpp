// The HTML page, as text; tests/bancada/show_page.py opens it in a browser.
#include <string>

#include <gmock/gmock.h>

#include "tests/bancada/show_Amostra.h"

namespace bancada::show_test
{
namespace
{

using ::testing::HasSubstr;
using ::testing::Not;

class ShowPagina : public Amostra
{
  protected:
    // Writes the page and keeps it in `pagina`.
    void Escreve(ShowOptions options = {})
    {
        options.html = Caminho("pagina.html");
        Mostra(options);
        if (resultado == SHOWN) {
            pagina = Le(options.html);
        }
    }

    std::string pagina;
};

TEST_F(ShowPagina, HoldsTheSumsOfWhatIsNotCancelled)
{
    GravaAmostra();
    Escreve();
    EXPECT_EQ(resultado, SHOWN) << erro;
    EXPECT_THAT(pagina, HasSubstr("<b>R$ 1.274,32</b>"));
    EXPECT_THAT(pagina, HasSubstr("<td>17 h</td><td class=\"num\">1</td>"
                                  "<td class=\"num\">1.240,00</td>"));
    // 30.00 + 32.10 + 5.00; the cancelled non-fiscal receipt's 19.00 is not in it.
    EXPECT_THAT(pagina, HasSubstr("<td>Dinheiro</td><td class=\"num\">3</td>"
                                  "<td class=\"num\">67,10</td>"));
    // What was moved to the cheque is not in it.
    EXPECT_THAT(pagina, HasSubstr("<td>Cartão de crédito</td><td class=\"num\">1</td>"
                                  "<td class=\"num\">1.000,00</td>"));
    EXPECT_THAT(pagina, HasSubstr("Change of R$ 0,68"));
}

TEST_F(ShowPagina, CountsAndListsRejectedStatementsAndLostCommands)
{
    GravaAmostra();
    std::ofstream(Caminho("firmware.log"))
        << "2024-03-15 11:05:40\tDBLoggerExecuteSQL: Erro executando SQL Code. Comando:'12', "
           "Erro:'no such table: <x>'\n"
        << "2024-03-15 11:05:40\tUPDATE <x> SET y\n"
        << "2024-03-15 11:06:00\tLogDatabase: the rows of this command are lost: <full>\n"
        << "2024-03-15 11:06:10\tLogDatabase: the rows of this command are lost: locked\n";
    ShowOptions options;
    options.log = Caminho("firmware.log");
    Escreve(options);
    EXPECT_THAT(pagina, HasSubstr("<b>1</b><span>rejected statements</span>"));
    EXPECT_THAT(pagina, HasSubstr("<b>2</b><span>lost commands</span>"));
    EXPECT_THAT(pagina,
                HasSubstr("<b>15/03/2024 11:05:40</b> command 12, statement rejected, log line 1: "
                          "<span class=\"marca\">no such table: &lt;x&gt;</span></p>"
                          "<pre>UPDATE &lt;x&gt; SET y</pre>"));
    EXPECT_THAT(pagina, HasSubstr("<b>15/03/2024 11:06:00</b> command lost, log line 3: "
                                  "<span class=\"marca\">&lt;full&gt;</span></p>"));
}

TEST_F(ShowPagina, OfOneDayHoldsThatDayAlone)
{
    GravaAmostra();
    ShowOptions options;
    options.crz = 2;
    Escreve(options);
    EXPECT_THAT(pagina, HasSubstr("data-coo=\"113\""));
    EXPECT_THAT(pagina, HasSubstr("data-coo=\"112\""));
    EXPECT_THAT(pagina, Not(HasSubstr("data-coo=\"102\"")));
    EXPECT_THAT(pagina, HasSubstr("<b>R$ 5,00</b>"));
    EXPECT_THAT(pagina, Not(HasSubstr("1.240,00")));
}

TEST_F(ShowPagina, OfADayThatIsNotThereIsNotWritten)
{
    GravaAmostra();
    ShowOptions options;
    options.crz = 9;
    Escreve(options);
    EXPECT_EQ(resultado, NOT_THERE);
    EXPECT_EQ(erro, Banco() + ": there is no day of the Z reduction 9\n");
    EXPECT_FALSE(std::filesystem::exists(Caminho("pagina.html")));
}

// Every text column of every table, and the log, with a text that breaks out of elements, quoted
// attributes, the title, the style and the script.
TEST_F(ShowPagina, NoTextOfTheDatabaseIsMarkup)
{
    GravaAmostra();
    const std::string hostil = "</title></style></script></pre><script>alert(1)</script>"
                               "<img src=x onerror=alert(1)>\" onload=\"alert(1)' onload='alert(1)";
    std::string sql;
    for (const auto& [tabela, coluna] : LogSchemaColumns()) {
        const bool chave = coluna.rfind("cont_", 0) == 0 || coluna.rfind("num_ecf", 0) == 0 ||
                           coluna.rfind("seq_", 0) == 0 || coluna.rfind("num_indice", 0) == 0 ||
                           coluna.rfind("indice_", 0) == 0;
        if (!chave) {
            sql += "UPDATE " + tabela + " SET " + coluna + " = '";
            for (const char c : hostil) {
                sql += c == '\'' ? "''" : std::string(1, c);
            }
            sql += "';";
        }
    }
    Grava(sql);
    std::ofstream(Caminho("firmware.log"))
        << "2024-03-15 11:05:40\tDBLoggerExecuteSQL: Erro executando SQL Code. Comando:'12', Erro:'"
        << hostil << "'\n2024-03-15 11:05:40\t" << hostil << '\n';
    ShowOptions options;
    options.log = Caminho("firmware.log");
    Escreve(options);
    ASSERT_EQ(resultado, SHOWN) << erro;
    EXPECT_THAT(pagina, HasSubstr("&lt;script&gt;alert(1)"));
    EXPECT_THAT(pagina, Not(HasSubstr("<script>alert")));
    EXPECT_THAT(pagina, Not(HasSubstr("<img")));
    EXPECT_THAT(pagina, Not(HasSubstr("\" onload")));
    EXPECT_THAT(pagina, Not(HasSubstr("' onload")));
    const auto vezes = [this](const std::string& trecho) {
        int n = 0;
        for (std::size_t i = pagina.find(trecho); i != std::string::npos;
             i = pagina.find(trecho, i + 1)) {
            ++n;
        }
        return n;
    };
    EXPECT_EQ(vezes("<script>"), 1);
    EXPECT_EQ(vezes("</script>"), 1);
    EXPECT_EQ(vezes("</style>"), 1);
    EXPECT_EQ(vezes("</title>"), vezes("<title>"));
}

TEST_F(ShowPagina, NeedsNothingFromElsewhere)
{
    GravaAmostra();
    Escreve();
    for (const char* endereco : {"http:", "https:", "src=", "@import", "url(", "<link"}) {
        const std::string proprio = pagina.substr(0, pagina.find("data-coo=\"113\""));
        EXPECT_THAT(proprio, Not(HasSubstr(endereco))) << endereco;
    }
}

TEST_F(ShowPagina, OfAnEmptyDatabase)
{
    Grava("");
    Escreve();
    EXPECT_EQ(resultado, SHOWN);
    EXPECT_THAT(pagina, HasSubstr("<title>registro.db</title>"));
    EXPECT_THAT(pagina, HasSubstr("No documents."));
    EXPECT_THAT(pagina, HasSubstr("No payments."));
    EXPECT_THAT(pagina, HasSubstr("No firmware log was given."));
}

} // namespace
} // namespace bancada::show_test

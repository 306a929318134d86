// Totals by day, by tax code and by payment means: as a list, for programs, on the pages.
#include <string>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "tests/bancada/relatorio/ShowTest.h"

namespace bancada::show_test
{
namespace
{

using ::testing::HasSubstr;
using ::testing::Not;
using Json = nlohmann::json;

class Totais : public Sample
{
  protected:
    static ShowOptions Options()
    {
        ShowOptions options;
        options.totais = true;
        return options;
    }
};

TEST_F(Totais, AsAList)
{
    WriteSample();
    RunShow(Options());
    EXPECT_EQ(text, "By day                      Receipts   Cancelled  Unreadable          Sold, R$"
                    "   Gross sales, R$\n"
                    "Z 0001  15/03/2024                 3           2           0          1.269,32"
                    "          1.330,96\n"
                    "Z 0002  16/03/2024                 1           0           0              5,00"
                    "        not closed\n"
                    "\n"
                    "By tax code                    Items                R$\n"
                    "01T18.00                           3          1.005,93\n"
                    "02T07.00                           1             12,72\n"
                    "03S05.00                           1            248,00\n"
                    "N1                                 1              9,21\n"
                    "In no item                                       -1,54\n"
                    "\n"
                    "By payment means            Payments                R$\n"
                    "Dinheiro                           3             67,10\n"
                    "Cartão de crédito                  1          1.000,00\n"
                    "Cheque                             1            240,00\n"
                    "Change of R$ 0,68 is not taken off.\n");
}

TEST_F(Totais, ForPrograms)
{
    WriteSample();
    EXPECT_EQ(ShowJson(Options()), Json::parse(R"({
        "dias": [
            {"crz": 1, "movimento": "2024-03-15", "vb": "1330.96", "cupons": 3,
             "vendido": "1269.32", "cancelados": 2, "ilegiveis": 0},
            {"crz": 2, "movimento": "2024-03-16 07:58:00", "vb": null, "cupons": 1,
             "vendido": "5.00", "cancelados": 0, "ilegiveis": 0}],
        "aliquotas": [{"aliquota": "01T18.00", "itens": 3, "valor": "1005.93"},
                      {"aliquota": "02T07.00", "itens": 1, "valor": "12.72"},
                      {"aliquota": "03S05.00", "itens": 1, "valor": "248.00"},
                      {"aliquota": "N1", "itens": 1, "valor": "9.21"}],
        "fora_dos_itens": "-1.54", "valores_ilegiveis": 0,
        "meios_pagamento": [
            {"indice": 1, "nome": "Dinheiro", "pagamentos": 3, "valor": "67.10"},
            {"indice": 2, "nome": "Cartão de crédito", "pagamentos": 1, "valor": "1000.00"},
            {"indice": 3, "nome": "Cheque", "pagamentos": 1, "valor": "240.00"}],
        "pagamentos_ilegiveis": 0, "troco": "0.68"})"));
}

TEST_F(Totais, OfSeveralDatabasesAreSums)
{
    WriteSample();
    ShowOptions options = Options();
    options.databases = {Database(), Database()};
    const Json totais = ShowJson(options);
    EXPECT_EQ(totais["dias"].size(), 4U);
    ASSERT_EQ(totais["aliquotas"].size(), 4U);
    EXPECT_EQ(totais["aliquotas"][0],
              Json::parse(R"({"aliquota": "01T18.00", "itens": 6, "valor": "2011.86"})"));
    EXPECT_EQ(totais["fora_dos_itens"], "-3.08");
    EXPECT_EQ(totais["meios_pagamento"][0]["valor"], "134.20");
    EXPECT_EQ(totais["troco"], "1.36");
}

TEST_F(Totais, ATaxCodeThatOneDatabaseAloneHasKeepsItsPlace)
{
    WriteSample();
    std::filesystem::copy_file(Database(), File("segundo.db"));
    Write("UPDATE item_cupom_fiscal SET aliquota = 'F1' WHERE cont_coo = 102");
    ShowOptions options = Options();
    options.databases = {File("segundo.db"), Database()};
    std::string codes;
    const Json totais = ShowJson(options);
    for (const Json& one : totais["aliquotas"]) {
        codes += one["aliquota"].get<std::string>() + " ";
    }
    EXPECT_EQ(codes, "01T18.00 02T07.00 03S05.00 F1 N1 ");
}

TEST_F(Totais, WhatCannotBeReadIsInNoSumAndCounted)
{
    WriteSample();
    Write("UPDATE cupom_fiscal SET valor_total = 'x' WHERE cont_coo = 105;"
          "UPDATE item_cupom_fiscal SET valor_total = NULL WHERE cont_coo = 113;"
          "UPDATE pagamento_cupom SET valor_pagamento = 'y' WHERE cont_coo = 113");
    RunShow(Options());
    EXPECT_THAT(text, HasSubstr("Z 0001  15/03/2024                 2           2           1"
                                "             29,32"));
    EXPECT_THAT(text, HasSubstr("01T18.00                           2          1.000,93\n"));
    EXPECT_THAT(text, HasSubstr("2 amounts that cannot be read are in no sum here\n"));
    EXPECT_THAT(text, HasSubstr("1 payment whose amount cannot be read is in no sum here\n"));
}

TEST_F(Totais, SeveralPaymentsThatCannotBeReadAndAnItemWithoutATaxCode)
{
    WriteSample();
    Write("UPDATE pagamento_cupom SET valor_pagamento = 'y' WHERE cont_coo IN (105, 113);"
          "UPDATE item_cupom_fiscal SET aliquota = '' WHERE cont_coo = 113");
    RunShow(Options());
    EXPECT_THAT(text, HasSubstr(" payments whose amount cannot be read are in no sum here\n"));
    EXPECT_THAT(text, HasSubstr("\n(no tax code) "));
}

TEST_F(Totais, RowsThatThreeDocumentsShowAlikeCountOnce)
{
    WriteSample();
    Write("INSERT INTO cupom_fiscal SELECT * FROM cupom_fiscal WHERE cont_coo = 113;"
          "INSERT INTO cupom_fiscal SELECT * FROM cupom_fiscal WHERE cont_coo = 113 LIMIT 1");
    const Json totais = ShowJson(Options());
    EXPECT_EQ(totais["dias"][1]["cupons"], 3);
    EXPECT_EQ(totais["aliquotas"][0]["valor"], "1005.93");
    EXPECT_EQ(totais["meios_pagamento"][0]["valor"], "67.10");
}

TEST_F(Totais, RowsThatTwoDocumentsShowAlikeCountOnce)
{
    WriteSample();
    // A second receipt of the number whose items do not begin anew: nobody knows whose they are.
    Write("INSERT INTO cupom_fiscal SELECT * FROM cupom_fiscal WHERE cont_coo = 113");
    const Json totais = ShowJson(Options());
    EXPECT_EQ(totais["dias"][1]["cupons"], 2);
    EXPECT_EQ(totais["aliquotas"][0]["valor"], "1005.93");
    EXPECT_EQ(totais["meios_pagamento"][0]["valor"], "67.10");
}

TEST_F(Totais, OnThePage)
{
    WriteSample();
    ShowOptions options;
    options.html = true;
    RunShow(options);
    EXPECT_THAT(text, HasSubstr("<td>01T18.00</td><td class=\"num\">3</td>"
                                "<td class=\"num\">1.005,93</td>"));
    EXPECT_THAT(text, HasSubstr("<td>In no item</td><td></td><td class=\"num\">-1,54</td>"));
    EXPECT_THAT(text, HasSubstr("<td>Z 0001, 15/03/2024</td><td class=\"num\">3</td>"
                                "<td class=\"num\">1.269,32</td><td class=\"num\">2</td>"
                                "<td class=\"num\">0</td><td class=\"num\">1.330,96</td>"));
    EXPECT_THAT(text, HasSubstr("<td class=\"num\">0</td><td class=\"num\">not closed</td>"));
    options.crz = 2;
    RunShow(options);
    EXPECT_THAT(text, Not(HasSubstr("<td>Z 0001, 15/03/2024</td>")));
    EXPECT_THAT(text, HasSubstr("<td>01T18.00</td><td class=\"num\">1</td>"
                                "<td class=\"num\">5,00</td>"));
}

TEST_F(Totais, OnThePageTheyAreOfWhatIsShown)
{
    WriteSample();
    ShowOptions options;
    options.html = true;
    options.filtro.consumidor = "conceição";
    RunShow(options);
    EXPECT_THAT(text, HasSubstr("Of these documents alone, figures and days: consumer conceição."));
    EXPECT_THAT(text, HasSubstr("<b>R$ 29,32</b>"));
    EXPECT_THAT(text, HasSubstr("<td>09 h</td><td class=\"num\">1</td>"));
    EXPECT_THAT(text, Not(HasSubstr("<td>17 h</td>")));
    EXPECT_THAT(text, HasSubstr("<td>Dinheiro</td><td class=\"num\">1</td>"
                                "<td class=\"num\">30,00</td>"));
    EXPECT_THAT(text, HasSubstr("Change of R$ 0,68 is not taken off."));
    EXPECT_THAT(text, HasSubstr("data-coo=\"102\""));
    EXPECT_THAT(text, Not(HasSubstr("data-coo=\"105\"")));
}

TEST_F(Totais, InTheFolderToo)
{
    WriteSample();
    const leitura::DatabaseReading database(Database());
    std::string overview;
    ShowOptions options;
    options.filtro.desde = "2024-03-16";
    ShowPages({{&database, nullptr}}, options,
              [&](const std::string& name, const std::string& content) {
                  overview = name == "index.html" ? content : overview;
              });
    EXPECT_THAT(overview, HasSubstr("figures and days: from 16/03/2024 on."));
    EXPECT_THAT(overview, HasSubstr("<td>01T18.00</td><td class=\"num\">1</td>"
                                    "<td class=\"num\">5,00</td>"));
    EXPECT_THAT(overview, Not(HasSubstr("Z 0001")));
    EXPECT_THAT(overview, Not(HasSubstr("<td>Cheque</td>")));
}

} // namespace
} // namespace bancada::show_test

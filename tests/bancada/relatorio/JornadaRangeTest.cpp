// The page of one day: all of it, without reading the rest.
#include <string>

#include <gmock/gmock.h>

#include "tests/bancada/relatorio/ShowTest.h"
#include "tests/support/EngineSteps.h"

namespace bancada::show_test
{
namespace
{

using ::testing::HasSubstr;
using ::testing::Not;

class JornadaRangeShow : public Sample
{
  protected:
    // So many days of two receipts, a non-fiscal one, a reading and a Z reduction.
    void WriteDays(int days)
    {
        Write("DELETE FROM cupom_fiscal; DELETE FROM item_cupom_fiscal; DELETE FROM cupom_nf;"
              "DELETE FROM outros_documentos; DELETE FROM reducao_z;"
              "DELETE FROM totalizador_reducao; DELETE FROM meio_pagamento_reducao;"
              "DELETE FROM pagamento_cupom;"
              "CREATE TEMP TABLE dia AS WITH RECURSIVE n(z) AS (SELECT 1 UNION ALL SELECT z + 1"
              " FROM n WHERE z < " +
              std::to_string(days) +
              ") SELECT z, 10 * z AS coo, date('2001-01-01', '+' || z || ' days') AS dia FROM n;"
              "INSERT INTO outros_documentos SELECT coo, 1, 1, 0, 0, max(z - 1, 1),"
              " dia || ' 08:00:00', dia || ' 08:00:00', 'LX' FROM dia;"
              "INSERT INTO cupom_fiscal (cont_coo, cont_crz, data_hora_emissao, valor_total,"
              " id_cancelado, valor_troco) SELECT coo + 1 + n, z, dia || ' 09:0' || n || ':00',"
              " 10, 'N', 1 FROM dia, (SELECT 0 AS n UNION SELECT 1) ORDER BY z, n;"
              "INSERT INTO item_cupom_fiscal (seq_item, cont_coo, descricao, valor_total)"
              " SELECT 1, cont_coo, 'Item of ' || cont_coo, 10 FROM cupom_fiscal;"
              "INSERT INTO pagamento_cupom SELECT cont_coo, cont_coo, 10, 1, '', 1, 'N', 0"
              " FROM cupom_fiscal;"
              "INSERT INTO cupom_nf (cont_coo, cont_crz, data_hora_emissao)"
              " SELECT coo + 3, z, dia || ' 10:00:00' FROM dia;"
              "INSERT INTO reducao_z (cont_crz, cont_coo, data_hora_emissao, data_movimento)"
              " SELECT z, coo + 4, dia || ' 22:00:00', dia || ' 00:00:00' FROM dia;"
              "INSERT INTO totalizador_reducao SELECT z, 'T' || z || n, 20, 'S', 0"
              " FROM dia, (SELECT 0 AS n UNION SELECT 1) ORDER BY z, n;"
              "INSERT INTO meio_pagamento_reducao SELECT 1, z, 'MEIO DO DIA ' || z, 20 FROM dia;"
              "DROP TABLE temp.dia");
    }

    std::string PageOf(std::optional<std::int64_t> crz)
    {
        ShowOptions options;
        options.crz = crz;
        options.html = true;
        RunShow(options);
        EXPECT_EQ(result, SHOWN) << error;
        return text;
    }

    // A day as the page has it.
    static std::string DayIn(const std::string& page, std::int64_t crz)
    {
        const std::string begin = "data-crz=\"" + std::to_string(crz) + "\"";
        const std::size_t at = page.find(begin);
        if (at == std::string::npos) {
            return {};
        }
        // The first day of a page is open.
        const std::size_t heading = page.find("<summary>", at);
        const std::size_t next = page.find("data-crz=", at + 1);
        const std::size_t end =
            page.rfind("</details>", std::min(next, page.find("</section>", at)));
        return page.substr(heading, end - heading);
    }
};

TEST_F(JornadaRangeShow, EveryDayIsThatOfTheWholePage)
{
    WriteDays(9);
    const std::string whole = PageOf({});
    for (std::int64_t crz = 1; crz <= 9; ++crz) {
        const std::string page = PageOf(crz);
        EXPECT_EQ(DayIn(page, crz), DayIn(whole, crz)) << crz;
        EXPECT_THAT(DayIn(page, crz), HasSubstr("Item of " + std::to_string(10 * crz + 2)));
        EXPECT_THAT(DayIn(page, crz), HasSubstr("MEIO DO DIA " + std::to_string(crz)));
        EXPECT_THAT(page, HasSubstr("<b>2</b><span>fiscal receipts"));
        EXPECT_THAT(page, HasSubstr("Change of R$ 2,00"));
    }
}

TEST_F(JornadaRangeShow, TheOpenDayIsThere)
{
    WriteDays(5);
    Write("DELETE FROM reducao_z WHERE cont_crz = 5");
    EXPECT_THAT(PageOf(5), HasSubstr("<span>not closed</span>"));
    EXPECT_THAT(text, HasSubstr("Item of 52"));
}

TEST_F(JornadaRangeShow, WhereReductionsDoNotRiseNothingIsLeftOut)
{
    WriteDays(5);
    // The numbers begin anew, and the second day of number 3 is there too.
    Write("INSERT INTO reducao_z (cont_crz, cont_coo, data_hora_emissao, data_movimento)"
          " VALUES (3, 904, '2031-01-03 22:00:00', '2031-01-03 00:00:00');"
          "INSERT INTO cupom_fiscal (cont_coo, cont_crz, data_hora_emissao, valor_total,"
          " id_cancelado) VALUES (901, 3, '2031-01-03 09:00:00', 10, 'N');");
    const std::string page = PageOf(3);
    EXPECT_THAT(page, HasSubstr("data-coo=\"31\""));
    EXPECT_THAT(page, HasSubstr("data-coo=\"901\""));
    EXPECT_THAT(page, HasSubstr("<b>3</b><span>fiscal receipts"));
    EXPECT_THAT(page, Not(HasSubstr("data-coo=\"41\"")));
}

TEST_F(JornadaRangeShow, ADayCostsWhatItHoldsAndNotWhatIsBesideIt)
{
    const auto stepsAmong = [&](int days) {
        WriteDays(days);
        const EngineSteps steps;
        PageOf(5);
        return steps.Taken();
    };
    const std::int64_t few = stepsAmong(50);
    // Four steps for each Z reduction that is looked at to see that the numbers rise, and a few
    // halvings.
    EXPECT_LT(stepsAmong(1600), few + 1550 * 5 + 1000);
}

} // namespace
} // namespace bancada::show_test

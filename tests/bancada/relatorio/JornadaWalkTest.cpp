// The order of the documents, and the jornada of each.
#include <string>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "tests/bancada/relatorio/ShowTest.h"

namespace bancada::show_test
{
namespace
{

using ::testing::HasSubstr;
using Json = nlohmann::json;

using JornadaWalkShow = Sample;

TEST_F(JornadaWalkShow, WithinOneSecondTheNumbersDecideAcrossTheirWrap)
{
    const char* const instant = "'2024-03-15 10:00:00'";
    Write(std::string("INSERT INTO outros_documentos VALUES (1, 1, 1, 0, 0, 5, ") + instant + ", " +
          instant + ", 'LX');" +
          "INSERT INTO cupom_fiscal (cont_coo, cont_crz, data_hora_emissao) VALUES (999999, 6, " +
          instant + "), (2, 6, " + instant + ");");
    const Json json = ShowJson();
    ASSERT_EQ(json["dias"].size(), 1U);
    EXPECT_EQ(json["dias"][0]["crz"], 6);
    const Json& documentos = json["dias"][0]["documentos"];
    ASSERT_EQ(documentos.size(), 3U);
    EXPECT_EQ(documentos[0]["coo"], 999999);
    EXPECT_EQ(documentos[1]["coo"], 1);
    EXPECT_EQ(documentos[2]["coo"], 2);
}

TEST_F(JornadaWalkShow, ADayNumberThatCameTwiceIsNotClosedByTheOldReduction)
{
    Write("INSERT INTO reducao_z (cont_crz, cont_coo, data_hora_emissao, valor_vb)"
          " VALUES (7, 10, '2001-01-01 22:00:00', 1), (7, 30, '2028-01-01 22:00:00', 2);"
          "INSERT INTO cupom_fiscal (cont_coo, cont_crz, data_hora_emissao)"
          " VALUES (9, 7, '2001-01-01 08:00:00'), (29, 7, '2028-01-01 08:00:00'),"
          " (31, 8, '2028-01-02 08:00:00')");
    const Json json = ShowJson();
    // Nothing lies between the two days of one number, so that they stand as one.
    ASSERT_EQ(json["dias"].size(), 2U);
    EXPECT_EQ(json["dias"][0]["reducao"]["vb"], "1.00");
    EXPECT_EQ(json["dias"][1]["reducao"], nullptr);
}

TEST_F(JornadaWalkShow, DocumentsWhoseOwnRowIsLostAreListedFromTheOther)
{
    WriteSample();
    Write("DELETE FROM cupom_nf WHERE cont_coo = 108; DELETE FROM reducao_z;"
          "DELETE FROM outros_documentos WHERE cont_coo = 101");
    RunShow({});
    EXPECT_THAT(text, HasSubstr("  000101  15/03/2024 08:00:05  COMPROVANTE NÃO FISCAL"));
    EXPECT_THAT(text, HasSubstr("  000108  15/03/2024 18:10:00  COMPROVANTE NÃO FISCAL         "
                                "GNF 000004\n"));
    EXPECT_THAT(text, HasSubstr("  000111  15/03/2024 22:10:03  REDUÇÃO Z                      "
                                "GNF 000006\n"));
    EXPECT_THAT(text, HasSubstr("Z 0001  not closed\n"));
}

} // namespace
} // namespace bancada::show_test

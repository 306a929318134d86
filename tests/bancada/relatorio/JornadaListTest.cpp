// The list of jornadas and documents.
#include <string>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "tests/bancada/relatorio/ShowTest.h"

namespace bancada::show_test
{
namespace
{

using ::testing::EndsWith;
using Json = nlohmann::json;

using JornadaList = Sample;

TEST_F(JornadaList, DaysAndDocumentsInTheOrderOfTheirIssue)
{
    WriteSample();
    RunShow({});
    EXPECT_EQ(result, SHOWN);
    EXPECT_EQ(
        text,
        "Z 0001  day 15/03/2024  closed 15/03/2024 22:10:03  gross sales 1.330,96"
        "  grand total 1.330,96\n"
        "  000101  15/03/2024 08:00:05  COMPROVANTE NÃO FISCAL         GNF 000001          100,00\n"
        "  000102  15/03/2024 09:12:44  CUPOM FISCAL                   CCF 000051           29,32\n"
        "  000103  15/03/2024 09:40:00  CUPOM FISCAL                   CCF 000052            0,00"
        "  CANCELADO\n"
        "  000104  15/03/2024 11:05:10  CUPOM FISCAL                   CCF 000053            0,00"
        "  no closing\n"
        "  000105  15/03/2024 17:30:00  CUPOM FISCAL                   CCF 000054        1.240,00\n"
        "  000106  15/03/2024 17:31:00  COMPROVANTE CRÉDITO OU DÉBITO  GNF 000002\n"
        "  000107  15/03/2024 18:00:00  RELATÓRIO GERENCIAL            GNF 000003\n"
        "  000108  15/03/2024 18:10:00  COMPROVANTE NÃO FISCAL         GNF 000004           19,00"
        "  CANCELADO\n"
        "  000109  15/03/2024 18:15:00  CANCELAMENTO DE NÃO FISCAL     GNF 000005\n"
        "  000110  15/03/2024 21:00:00  COMPROVANTE NÃO FISCAL         GNF 000006           50,00\n"
        "  000111  15/03/2024 22:10:03  REDUÇÃO Z                      GNF 000006        1.330,96\n"
        "\n"
        "Z 0002  not closed\n"
        "  000112  16/03/2024 07:58:00  LEITURA X                      GNF 000006\n"
        "  000113  16/03/2024 08:20:30  CUPOM FISCAL                   CCF 000055            5,00\n");
}

TEST_F(JornadaList, AnEmptyDatabaseHasNoDocuments)
{
    Write("");
    RunShow({});
    EXPECT_EQ(result, SHOWN);
    EXPECT_EQ(text, "No documents.\n");
    EXPECT_EQ(ShowJson(), Json::parse(R"({"dias": []})"));
}

TEST_F(JornadaList, LossesFollowTheListWhenALogIsGiven)
{
    WriteSample();
    std::ofstream(File("firmware.log"))
        << "2024-03-15 11:05:40\tDBLoggerExecuteSQL: Erro executando SQL Code. Comando:'12', "
           "Erro:'near \"id_cupom_adicional\": syntax error'\n"
        << "2024-03-15 11:05:40\tUPDATE cupom_fiscal SET x\n"
        << "2024-03-15 11:06:00\tLogDatabase: the rows of this command are lost: database is "
           "locked\n";
    ShowOptions options;
    options.log = File("firmware.log");
    RunShow(options);
    EXPECT_THAT(text, EndsWith("\nRejected statements: 1\n"
                               "  15/03/2024 11:05:40  command 12: near \"id_cupom_adicional\": "
                               "syntax error\n    UPDATE cupom_fiscal SET x\n"
                               "Lost commands: 1\n"
                               "  15/03/2024 11:06:00  database is locked\n"));
    const Json json = ShowJson(options);
    EXPECT_EQ(json["instrucoes_rejeitadas"], Json::parse(R"([{"linha": 1,
        "instante": "2024-03-15 11:05:40", "comando": 12,
        "erro": "near \"id_cupom_adicional\": syntax error", "sql": "UPDATE cupom_fiscal SET x"}])"));
    EXPECT_EQ(json["comandos_perdidos"], Json::parse(R"([{"linha": 3,
        "instante": "2024-03-15 11:06:00", "motivo": "database is locked"}])"));
}

} // namespace
} // namespace bancada::show_test

// What programs read.
#include <string>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "tests/bancada/relatorio/ShowTest.h"

namespace bancada::show_test
{
namespace
{

using Json = nlohmann::json;

using JsonShow = Sample;

TEST_F(JsonShow, JsonOfAReceipt)
{
    WriteSample();
    ShowOptions options;
    options.coo = 102;
    const Json json = ShowJson(options);
    EXPECT_EQ(result, SHOWN);
    ASSERT_EQ(json["documentos"].size(), 1U);
    const Json& cupom = json["documentos"][0];
    EXPECT_EQ(cupom["tipo"], "cupom_fiscal");
    EXPECT_EQ(cupom["ccf"], 51);
    EXPECT_EQ(cupom["total"], "29.32");
    EXPECT_EQ(cupom["nome"], "José da Conceição");
    EXPECT_EQ(cupom["endereco"], "Av. Brasil, 1");
    ASSERT_EQ(cupom["itens"].size(), 4U);
    EXPECT_EQ(cupom["itens"][0], Json::parse(R"({
        "item": 1, "codigo": "7891000315507", "descricao": "Leite integral longa vida 1 litro",
        "quantidade": "2", "unidade": "UN", "valor_unitario": "4.99", "aliquota": "01T18.00",
        "arredonda_trunca": "T", "valor_bruto": "9.98",
        "desconto": {"tipo": "P", "percentual": "10.50", "valor": "1.05"},
        "acrescimo": {"tipo": "V", "percentual": "0.00", "valor": "0.00"},
        "acrescimo_cancelado": "0.00", "valor_liquido": "8.93", "cancelado": false})"));
    EXPECT_EQ(cupom["itens"][2]["cancelado"], true);
    EXPECT_EQ(cupom["pagamentos"][0]["valor"], "30.00");
    EXPECT_EQ(cupom["troco"], "0.68");
}

TEST_F(JsonShow, JsonOfAReductionNamesTheTimesByTheirMeaning)
{
    WriteSample();
    ShowOptions options;
    options.crz = 1;
    const Json json = ShowJson(options);
    EXPECT_EQ(json["reducoes"][0]["segundos_operacional"], 50998);
    EXPECT_EQ(json["reducoes"][0]["segundos_emitindo_documentos"], 1834);
    EXPECT_EQ(json["reducoes"][0]["vb"], "1330.96");
    EXPECT_EQ(json["reducoes"][0]["fim"], "2024-03-15 22:10:03");
}

TEST_F(JsonShow, JsonStaysJsonWhateverTheBytes)
{
    WriteSample();
    Write("UPDATE cupom_fiscal SET nome_consumidor = CAST(x'70E36F0122' AS TEXT),"
          " valor_total = 'abc' WHERE cont_coo = 102");
    ShowOptions options;
    options.coo = 102;
    const Json json = ShowJson(options);
    EXPECT_EQ(json["documentos"][0]["nome"], "p\xEF\xBF\xBDo\x01\"");
    EXPECT_EQ(json["documentos"][0]["total"], nullptr);
}

} // namespace
} // namespace bancada::show_test

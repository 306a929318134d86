// What programs read.
#include <sstream>
#include <string>
#include <vector>

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

// In the order in which programs are told that they stand.
TEST_F(JsonShow, TheListHasEachDocumentOnALineOfItsOwn)
{
    WriteSample();
    ShowJson();
    std::vector<std::string> lines;
    std::istringstream all(text);
    for (std::string line; std::getline(all, line);) {
        if (line.find("\"coo\":101,") != std::string::npos ||
            line.find("\"coo\":102,") != std::string::npos) {
            lines.push_back(line);
        }
    }
    EXPECT_THAT(
        lines,
        testing::ElementsAre(
            R"({"tipo":"comprovante_nf","coo":101,"crz":1,"inicio":"2024-03-15 08:00:05",)"
            R"("documento":"CN","gnf":1,"fim":"2024-03-15 08:00:05","cancelado":false,)"
            R"("cpf_cnpj":"","nome":"","subtotal":"100.00",)"
            R"("desconto":{"tipo":"V","percentual":"0.00","valor":"0.00"},)"
            R"("acrescimo":{"tipo":"V","percentual":"0.00","valor":"0.00"},)"
            R"("acrescimo_cancelado":"0.00","total":"100.00"},)",
            R"({"tipo":"cupom_fiscal","coo":102,"crz":1,"inicio":"2024-03-15 09:12:44","ccf":51,)"
            R"("cancelado":false,"cpf_cnpj":"12345678909","nome":"José da Conceição",)"
            R"("subtotal":"30.86","desconto":{"tipo":"V","percentual":"5.00","valor":"1.54"},)"
            R"("acrescimo":{"tipo":"V","percentual":"0.00","valor":"0.00"},)"
            R"("acrescimo_cancelado":"0.00","total":"29.32","endereco":"Av. Brasil, 1",)"
            R"("troco":"0.68","mensagem":"CNPJ/CPF consumidor: 123.456.789-09\n)"
            R"(Obrigado pela preferência, volte sempre!","aplicativo":"PDV Exemplo 2.1",)"
            R"("chave":" ","assinatura":"kX9mVb0cQ1nq6fYJ2yZk0r1mQ8yT5u7wA3sD4fG5hJ0=",)"
            R"("adicional":false},)"));
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

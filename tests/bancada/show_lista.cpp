// Days and documents: the list, the Z reduction, what programs read.
#include <string>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "tests/bancada/show_Amostra.h"

namespace bancada::show_test
{
namespace
{

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using Json = nlohmann::json;

class ShowLista : public Amostra
{
  protected:
    Json MostraJson(ShowOptions options = {})
    {
        options.json = true;
        Mostra(options);
        return Json::parse(texto);
    }
};

TEST_F(ShowLista, DaysAndDocumentsInTheOrderOfTheirIssue)
{
    GravaAmostra();
    Mostra({});
    EXPECT_EQ(resultado, SHOWN);
    EXPECT_EQ(
        texto,
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

TEST_F(ShowLista, WithinOneSecondTheNumbersDecideAcrossTheirWrap)
{
    const char* const instante = "'2024-03-15 10:00:00'";
    Grava(std::string("INSERT INTO outros_documentos VALUES (1, 1, 1, 0, 0, 5, ") + instante +
          ", " + instante + ", 'LX');" +
          "INSERT INTO cupom_fiscal (cont_coo, cont_crz, data_hora_emissao) VALUES (999999, 6, " +
          instante + "), (2, 6, " + instante + ");");
    const Json json = MostraJson();
    ASSERT_EQ(json["dias"].size(), 1U);
    EXPECT_EQ(json["dias"][0]["crz"], 6);
    const Json& documentos = json["dias"][0]["documentos"];
    ASSERT_EQ(documentos.size(), 3U);
    EXPECT_EQ(documentos[0]["coo"], 999999);
    EXPECT_EQ(documentos[1]["coo"], 1);
    EXPECT_EQ(documentos[2]["coo"], 2);
}

TEST_F(ShowLista, ADayNumberThatCameTwiceIsNotClosedByTheOldReduction)
{
    Grava("INSERT INTO reducao_z (cont_crz, cont_coo, data_hora_emissao, valor_vb)"
          " VALUES (7, 10, '2001-01-01 22:00:00', 1), (7, 30, '2028-01-01 22:00:00', 2);"
          "INSERT INTO cupom_fiscal (cont_coo, cont_crz, data_hora_emissao)"
          " VALUES (9, 7, '2001-01-01 08:00:00'), (29, 7, '2028-01-01 08:00:00'),"
          " (31, 8, '2028-01-02 08:00:00')");
    const Json json = MostraJson();
    // Nothing lies between the two days of one number, so that they stand as one.
    ASSERT_EQ(json["dias"].size(), 2U);
    EXPECT_EQ(json["dias"][0]["reducao"]["vb"], "1.00");
    EXPECT_EQ(json["dias"][1]["reducao"], nullptr);
}

TEST_F(ShowLista, DocumentsWhoseOwnRowIsLostAreListedFromTheOther)
{
    GravaAmostra();
    Grava("DELETE FROM cupom_nf WHERE cont_coo = 108; DELETE FROM reducao_z;"
          "DELETE FROM outros_documentos WHERE cont_coo = 101");
    Mostra({});
    EXPECT_THAT(texto, HasSubstr("  000101  15/03/2024 08:00:05  COMPROVANTE NÃO FISCAL"));
    EXPECT_THAT(texto, HasSubstr("  000108  15/03/2024 18:10:00  COMPROVANTE NÃO FISCAL         "
                                 "GNF 000004\n"));
    EXPECT_THAT(texto, HasSubstr("  000111  15/03/2024 22:10:03  REDUÇÃO Z                      "
                                 "GNF 000006\n"));
    EXPECT_THAT(texto, HasSubstr("Z 0001  not closed\n"));
}

TEST_F(ShowLista, AnEmptyDatabaseHasNoDocuments)
{
    Grava("");
    Mostra({});
    EXPECT_EQ(resultado, SHOWN);
    EXPECT_EQ(texto, "No documents.\n");
    EXPECT_EQ(MostraJson(), Json::parse(R"({"dias": []})"));
}

TEST_F(ShowLista, AReductionWithItsTimesUncrossed)
{
    GravaAmostra();
    MostraCrz(1);
    EXPECT_EQ(resultado, SHOWN);
    const std::size_t inicio = texto.find("15/03/2024 22:10:03");
    ASSERT_NE(inicio, std::string::npos);
    EXPECT_EQ(texto.substr(inicio), R"(15/03/2024 22:10:03                   COO:000111
                   REDUÇÃO Z
          MOVIMENTO DO DIA: 15/03/2024
------------------------------------------------
Contador de Reduções Z (CRZ)                0001
Contador de Reinícios (CRO)                  001
Contador de Não Fiscais (GNF)             000006
------------------------------------------------
TOTALIZADOR GERAL                       1.330,96
VENDA BRUTA DIÁRIA                      1.330,96
------------------------------------------------
ICMS
  Base de cálculo                       1.052,75
  Imposto                                 188,90
  Descontos                                10,59
  Acréscimos                                0,50
  Cancelamentos                            15,50
ISSQN
  Base de cálculo                         248,00
  Imposto                                  12,40
  Descontos                                 2,00
  Acréscimos                                0,00
  Cancelamentos                             0,00
------------------------------------------------
             TOTALIZADORES FISCAIS
01T18.00                                1.033,03
    Imposto                               185,94
02T07.00                                   12,72
    Imposto                                 0,89
03S05.00                                  248,00
    Imposto                                12,40
F1                                          0,00
N1                                          9,21
DT                                         10,59
DS                                          2,00
AT                                          0,50
AS                                          0,00
Can-T                                      15,50
Can-S                                       0,00
------------------------------------------------
           TOTALIZADORES NÃO FISCAIS
FUNDO DE TROCO                            100,00
SANGRIA                                    50,00
------------------------------------------------
               MEIOS DE PAGAMENTO
01 Dinheiro                                62,10
02 Cartão de crédito                    1.000,00
03 Cheque                                 240,00
21 TROCO                                    0,68
------------------------------------------------
Tempo operacional                       14:09:58
Tempo emitindo documentos fiscais       00:30:34
------------------------------------------------
BANCADA REF-1 ECF-IF
VERSÃO: 01.00.00                        ECF: 003
FAB: BN0000000000000000001
          ESPELHO DO BANCO DE REGISTRO
                SEM VALOR FISCAL
)");
}

TEST_F(ShowLista, ReductionsOfOneNumberHaveTheirOwnRows)
{
    GravaAmostra();
    Grava("INSERT INTO reducao_z (cont_crz, cont_coo, data_hora_emissao, valor_vb)"
          " VALUES (1, 500, '2050-01-01 22:00:00', 3);"
          "INSERT INTO totalizador_reducao VALUES (1, '01T18.00', 3, 'S', 0.54),"
          " (1, 'Can-S', 0, 'S', 0);"
          "INSERT INTO meio_pagamento_reducao VALUES (21, 1, 'TROCO', 0.25);");
    ShowOptions options;
    options.crz = 1;
    const Json json = MostraJson(options);
    ASSERT_EQ(json["reducoes"].size(), 2U);
    EXPECT_EQ(json["reducoes"][0]["totalizadores"].size(), 13U);
    EXPECT_EQ(json["reducoes"][0]["meios_pagamento"].size(), 4U);
    EXPECT_EQ(json["reducoes"][1]["totalizadores"].size(), 2U);
    EXPECT_EQ(json["reducoes"][1]["totalizadores"][0]["valor"], "3.00");
    EXPECT_EQ(json["reducoes"][1]["meios_pagamento"][0]["valor"], "0.25");
}

TEST_F(ShowLista, AReductionThatIsNotThere)
{
    GravaAmostra();
    MostraCrz(9);
    EXPECT_EQ(resultado, NOT_THERE);
    EXPECT_EQ(erro, Banco() + ": there is no Z reduction 9\n");
    MostraCrz(2);
    EXPECT_EQ(resultado, NOT_THERE);
    EXPECT_EQ(erro, Banco() + ": there is no Z reduction 2 (1 receipts wait for it)\n");
    EXPECT_EQ(texto, "");
}

TEST_F(ShowLista, JsonOfAReceipt)
{
    GravaAmostra();
    ShowOptions options;
    options.coo = 102;
    const Json json = MostraJson(options);
    EXPECT_EQ(resultado, SHOWN);
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

TEST_F(ShowLista, JsonOfAReductionNamesTheTimesByTheirMeaning)
{
    GravaAmostra();
    ShowOptions options;
    options.crz = 1;
    const Json json = MostraJson(options);
    EXPECT_EQ(json["reducoes"][0]["segundos_operacional"], 50998);
    EXPECT_EQ(json["reducoes"][0]["segundos_emitindo_documentos"], 1834);
    EXPECT_EQ(json["reducoes"][0]["vb"], "1330.96");
}

TEST_F(ShowLista, JsonStaysJsonWhateverTheBytes)
{
    GravaAmostra();
    Grava("UPDATE cupom_fiscal SET nome_consumidor = CAST(x'70E36F0122' AS TEXT),"
          " valor_total = 'abc' WHERE cont_coo = 102");
    ShowOptions options;
    options.coo = 102;
    const Json json = MostraJson(options);
    EXPECT_EQ(json["documentos"][0]["nome"], "p\xEF\xBF\xBDo\x01\"");
    EXPECT_EQ(json["documentos"][0]["total"], nullptr);
}

TEST_F(ShowLista, LossesFollowTheListWhenALogIsGiven)
{
    GravaAmostra();
    std::ofstream(Caminho("firmware.log"))
        << "2024-03-15 11:05:40\tDBLoggerExecuteSQL: Erro executando SQL Code. Comando:'12', "
           "Erro:'near \"id_cupom_adicional\": syntax error'\n"
        << "2024-03-15 11:05:40\tUPDATE cupom_fiscal SET x\n"
        << "2024-03-15 11:06:00\tLogDatabase: the rows of this command are lost: database is "
           "locked\n";
    ShowOptions options;
    options.log = Caminho("firmware.log");
    Mostra(options);
    EXPECT_THAT(texto, EndsWith("\nRejected statements: 1\n"
                                "  15/03/2024 11:05:40  command 12: near \"id_cupom_adicional\": "
                                "syntax error\n    UPDATE cupom_fiscal SET x\n"
                                "Lost commands: 1\n"
                                "  15/03/2024 11:06:00  database is locked\n"));
    const Json json = MostraJson(options);
    EXPECT_EQ(json["instrucoes_rejeitadas"], Json::parse(R"([{"linha": 1,
        "instante": "2024-03-15 11:05:40", "comando": 12,
        "erro": "near \"id_cupom_adicional\": syntax error", "sql": "UPDATE cupom_fiscal SET x"}])"));
    EXPECT_EQ(json["comandos_perdidos"], Json::parse(R"([{"linha": 3,
        "instante": "2024-03-15 11:06:00", "motivo": "database is locked"}])"));
}

} // namespace
} // namespace bancada::show_test

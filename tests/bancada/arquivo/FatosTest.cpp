#include "bancada/arquivo/Fatos.h"

#include "bancada/Unusable.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>
#include <string>

namespace bancada::arquivo
{
namespace
{

class FatosTest : public testing::Test
{
  protected:
    Fatos Read(const std::string& fields)
    {
        return ReadFatos(folder.Write("facts", R"({"formato": "ecf-bancada fatos", "versao": 1)" +
                                                   fields + "}"));
    }

    std::string Fault(const std::string& fields)
    {
        try {
            Read(fields);
        } catch (const Unusable& error) {
            const std::string path = folder.File("facts");
            const std::string text = error.what();
            return text.substr(0, path.size()) == path ? text.substr(path.size()) : text;
        }
        return "";
    }

    test_support::TempFolder folder;
};

const char* const EVERYTHING = R"(,
 "extracao": "2024-04-01 10:11:12",
 "biblioteca": "02.03.04",
 "software": {"versao": "01.00.02", "data_hora": "2023-05-06 07:08:09"},
 "versoes_software": [{"versao": "01.00.00", "data_hora": "2020-01-02"}],
 "prestadores": [{"numero": 2, "data_hora": "2021-02-03 04:05:06", "cnpj": "11222333000181", "ie": "9", "vendas": 77}],
 "proprietarios_anteriores": [{"usuario": 3, "data_hora": "2019-01-02 03:04:05", "cnpj": "11222333000182", "ie": "8", "cro": 4, "gt": 999}],
 "cifras_gt": [{"cnpj": "11222333000183", "data_hora": "2018-01-02 03:04:05", "simbolo": "ABCDEFGHIJ"}],
 "moedas": [{"cnpj": "11222333000184", "data_hora": "2017-01-02 03:04:05", "simbolo": "R$"}],
 "memorias_detalhe": [{"cnpj": "11222333000185", "numero_serie": "MFD7"}],
 "intervencoes": [{"cro": 6, "data_hora": "2016-01-02 03:04:05", "perda_dados": true}],
 "contadores": {"cvc": 12},
 "desconto_issqn": true,
 "nome_fundo_troco": "SUPRIMENTO",
 "nome_sangria": "RETIRADA",
 "meio_fundo_troco": "DINHEIRO",
 "ordens": {"17": "A"},
 "assinatura": "00FF")";

TEST_F(FatosTest, EveryFieldIsReadAndWritten)
{
    const Fatos fatos = Read(EVERYTHING);
    EXPECT_EQ(fatos.extracao, "2024-04-01 10:11:12");
    EXPECT_EQ(fatos.biblioteca, "02.03.04");
    EXPECT_EQ(fatos.software->versao, "01.00.02");
    EXPECT_EQ(fatos.versoesSoftware.at(0).dataHora, "2020-01-02");
    EXPECT_EQ(fatos.prestadores.at(0).vendas, 77);
    EXPECT_EQ(fatos.proprietarios.at(0).gt, 999);
    EXPECT_EQ(fatos.cifras.at(0).simbolo, "ABCDEFGHIJ");
    EXPECT_EQ(fatos.moedas.at(0).cnpj, "11222333000184");
    EXPECT_EQ(fatos.memorias.at(0).numeroSerie, "MFD7");
    EXPECT_TRUE(fatos.intervencoes.at(0).perdaDados);
    EXPECT_EQ(fatos.contadores.at("cvc"), 12);
    EXPECT_EQ(fatos.descontoIssqn, true);
    EXPECT_EQ(fatos.fundoTroco, "SUPRIMENTO");
    EXPECT_EQ(fatos.sangria, "RETIRADA");
    EXPECT_EQ(fatos.meioFundoTroco, "DINHEIRO");
    EXPECT_EQ(fatos.ordens.at(17), "A");
    EXPECT_EQ(fatos.assinatura, "00FF");

    folder.Write("again", FatosText(fatos));
    EXPECT_EQ(FatosText(ReadFatos(folder.File("again"))), FatosText(fatos));
    EXPECT_NE(FatosText(fatos), FatosText(Fatos()));
}

TEST_F(FatosTest, EveryFieldMayBeMissing)
{
    const Fatos fatos = Read("");
    EXPECT_FALSE(fatos.extracao);
    EXPECT_TRUE(fatos.intervencoes.empty());
    EXPECT_EQ(FatosText(fatos),
              "{\n    \"formato\": \"ecf-bancada fatos\",\n    \"versao\": 1\n}\n");
}

TEST_F(FatosTest, SaysTheFieldThatIsWrong)
{
    EXPECT_EQ(Fault(", \"extracao\": 1"), ".extracao: a text is due");
    EXPECT_EQ(Fault(", \"desconto_issqn\": \"S\""), ".desconto_issqn: true or false is due");
    EXPECT_EQ(Fault(", \"prestadores\": {}"), ".prestadores: a list is due");
    EXPECT_EQ(Fault(", \"prestadores\": [{\"numero\": -1}]"),
              ".prestadores[1].numero: a whole number is due");
    EXPECT_EQ(Fault(", \"prestadores\": [{}, 1]"), ".prestadores[2]: an object is due");
    EXPECT_EQ(Fault(", \"software\": {\"version\": \"1\"}"),
              ".software: there is no field \"version\"");
    EXPECT_EQ(Fault(", \"ordens\": {\"x\": \"A\"}"), ".ordens: numbers of documents are due");
    EXPECT_EQ(Fault(", \"contadores\": {\"cvc\": 1000000000000000000}"),
              ".contadores.cvc: a whole number is due");
    EXPECT_EQ(Fault(", \"nome\": \"\""), ": there is no field \"nome\"");
}

TEST_F(FatosTest, SaysWhatIsNoFactsFile)
{
    folder.Write("facts", R"({"formato": "ecf-bancada memoria", "versao": 1})");
    EXPECT_THROW(static_cast<void>(ReadFatos(folder.File("facts"))), Unusable);
    folder.Write("facts", "not JSON");
    EXPECT_THROW(static_cast<void>(ReadFatos(folder.File("facts"))), Unusable);
    EXPECT_THROW(static_cast<void>(ReadFatos(folder.File("missing"))), Unusable);
    EXPECT_THROW(static_cast<void>(ReadFatos(folder.File("."))), Unusable);
}

} // namespace
} // namespace bancada::arquivo

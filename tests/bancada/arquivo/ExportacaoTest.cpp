// Hand-written databases, and the file that each must yield.
#include "bancada/arquivo/Exportacao.h"

#include "bancada/Unusable.h"
#include "tests/bancada/leitura/Sample.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace bancada::arquivo
{
namespace
{

// Two days, their values all different: a percentage's discount that stays V, a cancelled receipt,
// a discount and a surcharge together, an ISSQN rate with the letter T, a total with three
// decimals, texts that are cut, a reduction after midnight, a reversal in part and a whole one, a
// float without payment, an orphan.
constexpr char DAYS[] = R"sql(
INSERT INTO dados_ecf VALUES (1,'SER-9','MARCA-1','MOD-2','ECF-IF',42);
INSERT INTO versao_sb VALUES (1,'01.02.03');
INSERT INTO dados_usuario VALUES (1,'RUA A, 5','FANTASIA','RAZÃO LTDA','11222333000181','IE-4','IM-5','SP','2023-01-02 03:04:05',2,111);
INSERT INTO intervencao VALUES (3,1,'2024-03-01 07:08:09','T','N'), (4,1,'2024-03-01 07:10:00','L','N');
INSERT INTO fita_detalhe VALUES (12,1,'2024-03-01 13:00:00',3,4);
INSERT INTO meio_pagamento VALUES (1,1,'DINHEIRO','N'), (2,1,'CARTAO','S');
INSERT INTO totalizador_nao_fiscal VALUES (1,'FUNDO'), (2,'SANGRIA'), (3,'DOACAO');
INSERT INTO outros_documentos VALUES
 (3,1,2,4,5,6,'2024-03-01 08:00:00','2024-03-01 08:00:00','CN'),
 (5,1,2,4,5,6,'2024-03-01 08:01:00','2024-03-01 08:01:00','LX'),
 (7,1,3,4,6,6,'2024-03-01 09:06:00','2024-03-01 09:06:30','CC'),
 (8,1,4,5,6,6,'2024-03-01 09:07:00','2024-03-01 09:07:30','RG'),
 (10,1,5,5,6,6,'2024-03-01 11:00:00','2024-03-01 11:00:30','CN'),
 (11,1,6,5,6,6,'2024-03-01 11:01:00','2024-03-01 11:01:00','NC'),
 (12,1,6,5,6,6,'2024-03-01 12:00:00','2024-03-01 12:00:00','MF'),
 (13,1,6,5,6,7,'2024-03-02 00:05:00','2024-03-02 00:05:10','RZ'),
 (20,1,9,5,6,8,'2024-03-02 20:00:00','2024-03-02 20:00:03','RZ');
INSERT INTO cupom_fiscal (cont_coo, cont_ccf, cont_crz, data_hora_emissao, cpf_cnpj_consumidor, nome_consumidor, endereco_consumidor,
  valor_subtotal, valor_total, tipo_desconto, valor_desconto, tipo_acrescimo, valor_acrescimo, valor_canc_acrescimo, valor_troco, id_cancelado, id_cupom_adicional) VALUES
 (6,4,7,'2024-03-01 08:10:00','529.982.247-25','João da Silva','RUA,',30.00,28.50,'V',1.50,'V',0,0.77,0,'N','N'),
 (9,5,7,'2024-03-01 10:00:00','11222333000181','',',',20.00,22.00,'V',0,'P',2.00,0,0,'S','N'),
 (14,6,8,'2024-03-02 08:00:00','','',',',25.00,24.50,'V',1.00,'V',0.50,0,0,'N','N');
INSERT INTO item_cupom_fiscal VALUES
 (1,6,'789','AÇÚCAR 1KG',1.5,'01T18.00','KG',2.999,'V',0.22,'P',0.11,0.33,4.508,3,3,'T','N',0,2.5),
 (2,6,'790','XXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXX',2,'F1','CAIXA',12.50,'V',0,'V',0,0,25.00,0,2,'A','S',0,0),
 (1,9,'791','CARNE',0.5,'03T05.00','UN',2.0,'V',0,'V',0,0,0.01,1,1,'T','N',0,0),
 (1,14,'792','SAL',1,'NS3','UN',25.00,'V',0,'V',0,0,25.00,0,2,'T','N',0,0),
 (1,77,'793','NINGUEM',1,'F1','UN',25.00,'V',0,'V',0,0,25.00,0,2,'T','N',0,0);
INSERT INTO pagamento_cupom VALUES
 (6,2,20.00,1,'',1,'N',0), (6,2,8.50,1,'',2,'S',3.00), (9,4,22.00,1,'',2,'N',0),
 (10,5,30.00,1,'',1,'N',0), (14,6,24.50,1,'',2,'S',24.50), (78,6,1.00,1,'',2,'N',0);
INSERT INTO cupom_nf VALUES
 (3,7,2,1,'2024-03-01 08:00:00',100.00,100.00,'V',0,'V',0,0,'N','','',0,0),
 (10,7,5,1,'2024-03-01 11:00:00',32.00,30.00,'V',0,'V',2.00,0.05,'S','MARIA','123',0,0);
INSERT INTO item_cupom_nf VALUES
 (1,3,1,100.00,100.00,NULL,0,NULL,0,0,'N',0,0), (1,10,3,32.00,32.01,'V',0.02,'V',0.01,0.04,'N',0,0);
INSERT INTO reducao_z VALUES
 (7,1,'2024-03-02 00:05:00','2024-03-01 00:00:00',13,6,4,1005.00,555.55,31.58,4.69,1.90,2.00,29.00,5.40,0.27,0.60,0.00,0.00,300,36000),
 (8,1,'2024-03-02 20:00:00','2024-03-02 00:00:00',20,9,4,1030.00,25.00,7,1,0,0,0,0,0,0,0,0,60,36000);
INSERT INTO totalizador_reducao (cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES
 (7,'01T18.00',26.11,'S',4.69), (7,'02T07.00',0,'S',0), (7,'F1',5.48,'S',0), (7,'Can-T',29.00,'S',0),
 (7,'FUNDO',100.00,'N',0), (7,'SANGRIA',0,'N',0), (7,'DOACAO',30.00,'N',0), (8,'05S02.00',0.01,'S',0);
INSERT INTO meio_pagamento_reducao VALUES (21,7,'TROCO',4.52), (1,7,'DINHEIRO',80.00), (2,7,'CARTAO',13.50);
)sql";

// Laid out apart from the program.
// clang-format off
const std::vector<std::string> EXPECTED = {
    "E01SER-9                ECF-IF MARCA-1             MOD-2               01.02.03  0000000000000004211222333000181TDM00000700000820240301202403029.9.9   AC1704 01.00.00",
    "E02SER-9                MOD-2               11222333000181IE-4          RAZAO LTDA                              RUA A, 5                                                                                                                2023010203040500000200000000000010300001",
    "E07SER-9                MOD-2               01.02.03  00000000",
    "E09SER-9                MOD-2               00000420240301070809N",
    "E10SER-9                MOD-2               0000122024030100000300000411222333000181",
    "E11SER-9                MOD-2               00000800000400002000000900000600000000000000000500000000001200000000000010300000000000000000",
    "E12SER-9                MOD-2               01000007000013000004202403012024030200050000000000055555 ",
    "E12SER-9                MOD-2               01000008000020000004202403022024030220000000000000002500 ",
    "E13SER-9                MOD-2               0100000701T18000000000002611",
    "E13SER-9                MOD-2               01000007F1     0000000000548",
    "E13SER-9                MOD-2               01000007Can-T  0000000002900",
    "E13SER-9                MOD-2               0100000805S02000000000000001",
    "E14SER-9                MOD-2               0100000400000620240301000000000030000000000000150V0000000000000V00000000002850N0000000000077DJoao da Silva                           00052998224725",
    "E14SER-9                MOD-2               0100000500000920240301000000000020000000000000000V0000000000200P00000000002200S0000000000000A                                        11222333000181",
    "E14SER-9                MOD-2               0100000600001420240302000000000025000000000000100V0000000000050V00000000002450N0000000000000                                         00000000000000",
    "E15SER-9                MOD-2               01000006000004001789           ACUCAR 1KG                                                                                          0001500KG 0000299900000011000000220000000000045001T1800N000000000000000000000000000000033T33",
    "E15SER-9                MOD-2               01000006000004002790           XXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXX0000002CAI00001250000000000000000000000000002500F1     S000000000000000000000000000000000A02",
    "E15SER-9                MOD-2               01000009000005001791           CARNE                                                                                               0000005UN 0000002000000000000000000000000000000103T0500S000000000000000000000000000000000T11",
    "E15SER-9                MOD-2               01000014000006001792           SAL                                                                                                 0000001UN 00002500000000000000000000000000002500NS3    N000000000000000000000000000000000T02",
    "E16SER-9                MOD-2               010000030000020000000000000000CN20240301080000",
    "E16SER-9                MOD-2               010000050000000000000000000000LX20240301080100",
    "E16SER-9                MOD-2               010000070000030000000006000000CC20240301090630",
    "E16SER-9                MOD-2               010000080000040000050000000000RG20240301090730",
    "E16SER-9                MOD-2               010000100000050000000000000000CN20240301110030",
    "E16SER-9                MOD-2               010000110000060000000000000000NC20240301110100",
    "E16SER-9                MOD-2               010000120000000000000000000000MF20240301120000",
    "E16SER-9                MOD-2               010000130000000000000000000007RZ20240302000510",
    "E16SER-9                MOD-2               010000200000000000000000000008RZ20240302200003",
    "E17SER-9                MOD-2               01000007FUNDO          0000000010000",
    "E17SER-9                MOD-2               01000007SANGRIA        0000000000000",
    "E17SER-9                MOD-2               01000007DOACAO         0000000003000",
    "E18SER-9                MOD-2               01000007DINHEIRO       0000000008000",
    "E18SER-9                MOD-2               01000007CARTAO         0000000001350",
    "E18SER-9                MOD-2               01000007TROCO          0000000000452",
    "E19SER-9                MOD-2               0100000300000220240301000000000100000000000000000V0000000000000V00000000010000N0000000000000                                         00000000000000",
    "E19SER-9                MOD-2               0100001000000520240301000000000032000000000000200V0000000000000V00000000003000S0000000000005DMARIA                                   00000000000123",
    "E20SER-9                MOD-2               01000003000002001FUNDO          0000000010000000000000000000000000000000000000010000N0000000000000",
    "E20SER-9                MOD-2               01000010000005001DOACAO         0000000003200000000000000100000000000020000000003201S0000000000004",
    "E21SER-9                MOD-2               01000006000004000000DINHEIRO       0000000002000N0000000000000",
    "E21SER-9                MOD-2               01000006000004000000CARTAO         0000000000850P0000000000300",
    "E21SER-9                MOD-2               01000009000005000000CARTAO         0000000002200S0000000002200",
    "E21SER-9                MOD-2               01000010000000000005DINHEIRO       0000000003000S0000000003000",
    "E21SER-9                MOD-2               01000014000006000000CARTAO         0000000002450S0000000002450",
};
// clang-format on

class ExportacaoTest : public leitura_test::Sample
{
  protected:
    ExportacaoTest()
    {
        options.database = Path();
        options.library = "9.9.9";
        options.lineEnd = LineEnd::LF;
    }

    std::vector<std::string> Lines()
    {
        std::ostringstream out;
        std::ostringstream told;
        Export(options, out, told);
        notes = told.str();
        std::vector<std::string> lines;
        std::istringstream in(out.str());
        for (std::string line; std::getline(in, line);) {
            lines.push_back(line);
        }
        return lines;
    }

    // Of the file's records, those of a type.
    std::vector<std::string> Lines(const std::string& type)
    {
        std::vector<std::string> lines;
        for (const std::string& line : Lines()) {
            if (line.substr(0, 3) == type) {
                lines.push_back(line);
            }
        }
        return lines;
    }

    // The types in their order, each once, and the COO of the E16.
    std::string Types()
    {
        std::string types;
        for (const std::string& line : Lines()) {
            if (types.empty() || types.substr(types.size() - 2) != line.substr(1, 2)) {
                types += (types.empty() ? "" : " ") + line.substr(1, 2);
            }
        }
        return types;
    }

    // Positions of all lines of a type, from 1.
    std::string Positions(const std::string& type, std::size_t first, std::size_t last)
    {
        std::string all;
        for (const std::string& line : Lines(type)) {
            all += (all.empty() ? "" : " ") + line.substr(first - 1, last - first + 1);
        }
        return all;
    }

    std::string Fault()
    {
        try {
            Lines();
        } catch (const Unusable& error) {
            const std::string text = error.what();
            return text.substr(0, Path().size()) == Path() ? text.substr(Path().size()) : text;
        }
        return "";
    }

    ExportOptions options;
    std::string notes;
};

TEST_F(ExportacaoTest, EveryRowStandsAtItsPositions)
{
    Execute(DAYS);
    EXPECT_EQ(Lines(), EXPECTED);
    options.lineEnd = LineEnd::CRLF;
    const std::vector<std::string> crlf = Lines();
    ASSERT_EQ(crlf.size(), EXPECTED.size());
    for (std::size_t i = 0; i < crlf.size(); ++i) {
        EXPECT_EQ(crlf[i], EXPECTED[i] + "\r");
    }
}

TEST_F(ExportacaoTest, WhatNoRowTellsIsListedByRecordAndField)
{
    Execute(DAYS);
    Lines();
    EXPECT_EQ(notes,
              "neutral: E01 data_sb, hora_sb: versao_sb has no date (1 record)\n"
              "neutral: E07 data: versao_sb has no date (1 record)\n"
              "neutral: E11 cbp: the module does not log it (1 record)\n"
              "neutral: E11 cmv: the module does not log it (1 record)\n"
              "neutral: E11 cvc: the module does not log it (1 record)\n"
              "neutral: E11 data_extracao, hora_extracao: no source (1 record)\n"
              "neutral: E11 the other counters and gt: those of the last rows; what was printed "
              "after them without a row is not counted (1 record)\n"
              "neutral: E12 desconto_issqn: no column tells it (2 records)\n"
              "neutral: E14 ordem: of a discount and a surcharge, no column tells which was first "
              "(1 record)\n"
              "left out: E03: no row tells whether there is one (1)\n"
              "left out: E04: no row tells whether there is one (1)\n"
              "left out: E05: no row tells whether there is one (1)\n"
              "left out: E06: no row tells whether there is one (1)\n"
              "left out: E08: no row tells whether there is one (1)\n"
              "left out: E15: rows of item_cupom_fiscal without a receipt (1)\n"
              "left out: E21: payments of floats: no row tells their means (1)\n"
              "left out: E21: rows of pagamento_cupom without a receipt (1)\n"
              "left out: EAD: the signature is made with the maker's key (1)\n");
}

TEST_F(ExportacaoTest, TheFactsTellIt)
{
    Execute(DAYS);
    options.facts = Folder().Write("facts", R"({"formato": "ecf-bancada fatos", "versao": 1,
        "extracao": "2024-04-05 06:07:08", "biblioteca": "LIB 7",
        "software": {"versao": "01.02.04", "data_hora": "2023-09-08 07:06:05"},
        "versoes_software": [{"versao": "01.02.03", "data_hora": "2022-01-02"},
                             {"versao": "01.02.04", "data_hora": "2023-09-08"}],
        "prestadores": [{"numero": 2, "data_hora": "2021-02-03 04:05:06", "cnpj": "33", "ie": "I3", "vendas": 77}],
        "proprietarios_anteriores": [{"usuario": 3, "data_hora": "2019-01-02 03:04:05", "cnpj": "44", "ie": "I4", "cro": 4, "gt": 999}],
        "cifras_gt": [{"cnpj": "55", "data_hora": "2018-01-02 03:04:05", "simbolo": "ABCDEFGHIJ"}],
        "moedas": [{"cnpj": "66", "data_hora": "2017-01-02 03:04:05", "simbolo": "R$"}],
        "memorias_detalhe": [{"cnpj": "77", "numero_serie": "MFD7"}],
        "intervencoes": [{"cro": 2, "data_hora": "2016-01-02 03:04:05", "perda_dados": true}],
        "contadores": {"cvc": 12, "cbp": 13, "cmv": 14}, "desconto_issqn": true,
        "meio_fundo_troco": "DINHEIRO", "ordens": {"14": "A"}, "assinatura": "00FF"})");
    EXPECT_EQ(Positions("E01", 72, 95), "01.02.04  20230908070605");
    EXPECT_EQ(Positions("E01", 144, 151), "LIB 7   ");
    EXPECT_EQ(Positions("E03", 45, 106),
              "022021020304050600000000000033I3            000000000000000077");
    EXPECT_EQ(Positions("E04", 45, 112),
              "032019010203040500000000000044I4            000004000000000000000999");
    EXPECT_EQ(Positions("E05", 45, 82), "0000000000005520180102030405ABCDEFGHIJ");
    EXPECT_EQ(Positions("E06", 45, 76), "0000000000006620170102030405R$  ");
    EXPECT_EQ(Positions("E07", 45, 62), "01.02.03  20220102 01.02.04  20230908");
    EXPECT_EQ(Positions("E08", 45, 78), "00000000000077MFD7                ");
    EXPECT_EQ(Positions("E09", 45, 65), "00000220160102030405S 00000420240301070809N");
    EXPECT_EQ(Positions("E11", 75, 86), "000012000013");
    EXPECT_EQ(Positions("E11", 93, 98), "000014");
    EXPECT_EQ(Positions("E11", 123, 136), "20240405060708");
    EXPECT_EQ(Positions("E12", 101, 101), "S S");
    EXPECT_EQ(Positions("E14", 137, 137), "D A A");
    EXPECT_EQ(Positions("E21", 47, 106).substr(0, 60),
              "000003000000000002DINHEIRO       0000000010000N0000000000000");
    EXPECT_EQ(Lines("EAD"), (std::vector<std::string>{"EAD00FF" + std::string(252, ' ')}));
    EXPECT_EQ(notes, "neutral: E11 the other counters and gt: those of the last rows; what was "
                     "printed after them without a row is not counted (1 record)\n"
                     "left out: E15: rows of item_cupom_fiscal without a receipt (1)\n"
                     "left out: E21: rows of pagamento_cupom without a receipt (1)\n");
}

// Four digits are all the room that there is.
TEST_F(ExportacaoTest, OfALongerCdcTheLastDigitsStandAndAreListed)
{
    Execute(DAYS);
    Execute("UPDATE outros_documentos SET cont_cdc = 9999 WHERE id_tipo_documento = 'CC'");
    EXPECT_NE(Positions("E16", 65, 68).find("9999"), std::string::npos);
    EXPECT_EQ(notes.find("E16 cdc"), std::string::npos) << notes;
    Execute("UPDATE outros_documentos SET cont_cdc = 120034 WHERE id_tipo_documento = 'CC'");
    EXPECT_NE(Positions("E16", 65, 68).find("0034"), std::string::npos);
    EXPECT_NE(notes.find("neutral: E16 cdc: the last four digits of a longer number (1 record)\n"),
              std::string::npos)
        << notes;
}

// By number or CNPJ, then by date and time, whatever their order in the facts file.
TEST_F(ExportacaoTest, FactsStandInTheOrderOfTheirKeys)
{
    Execute(DAYS);
    options.facts = Folder().Write("facts", R"({"formato": "ecf-bancada fatos", "versao": 1,
        "prestadores": [{"numero": 10, "data_hora": "2021-01-01 00:00:00", "cnpj": "1", "ie": "", "vendas": 0},
                        {"numero": 9, "data_hora": "2022-01-01 00:00:00", "cnpj": "2", "ie": "", "vendas": 0},
                        {"numero": 9, "data_hora": "2021-01-01 00:00:00", "cnpj": "3", "ie": "", "vendas": 0}],
        "proprietarios_anteriores": [{"usuario": 2, "data_hora": "2019-01-01 00:00:00", "cnpj": "4", "ie": "", "cro": 0, "gt": 0},
                                     {"usuario": 2, "data_hora": "2019-01-01 00:00:00", "cnpj": "3", "ie": "", "cro": 0, "gt": 0},
                                     {"usuario": 1, "data_hora": "2020-01-01 00:00:00", "cnpj": "5", "ie": "", "cro": 0, "gt": 0}],
        "cifras_gt": [{"cnpj": "100", "data_hora": "2018-01-01 00:00:00", "simbolo": "ABCDEFGHIJ"},
                      {"cnpj": "99", "data_hora": "2019-01-01 00:00:00", "simbolo": "BCDEFGHIJA"},
                      {"cnpj": "0.099", "data_hora": "2018-01-01 00:00:00", "simbolo": "CDEFGHIJAB"}],
        "moedas": [{"cnpj": "2", "data_hora": "2017-01-01 00:00:00", "simbolo": "R$"},
                   {"cnpj": "1", "data_hora": "2018-01-01 00:00:00", "simbolo": "CR$"}],
        "memorias_detalhe": [{"cnpj": "7", "numero_serie": "B"}, {"cnpj": "7", "numero_serie": "A"},
                             {"cnpj": "6", "numero_serie": "C"}],
        "intervencoes": [{"cro": 11, "data_hora": "2016-01-02 00:00:00", "perda_dados": false},
                         {"cro": 11, "data_hora": "2016-01-01 00:00:00", "perda_dados": false},
                         {"cro": 10, "data_hora": "2016-01-03 00:00:00", "perda_dados": false}],
        "versoes_software": [{"versao": "2", "data_hora": ""}, {"versao": "1", "data_hora": ""}]})");
    EXPECT_EQ(Positions("E03", 45, 54), "0920210101 0920220101 1020210101");
    EXPECT_EQ(Positions("E04", 45, 74),
              "012020010100000000000000000005 022019010100000000000000000003 "
              "022019010100000000000000000004");
    EXPECT_EQ(Positions("E07", 45, 45), "0 1 2");
    EXPECT_EQ(Positions("E09", 49, 58), "0420240301 1020160103 1120160101 1120160102");
    EXPECT_EQ(Positions("E05", 73, 73), "C B A");
    EXPECT_EQ(Positions("E06", 73, 75), "CR$ R$ ");
    EXPECT_EQ(Positions("E08", 59, 59), "C A B");
}

TEST_F(ExportacaoTest, TheMemoryTellsCountersAndGrandTotal)
{
    Execute(std::string(DAYS) + "PRAGMA user_version = 5; DELETE FROM totalizador_nao_fiscal;");
    options.memory = Folder().Write("memory", R"({"formato": "ecf-bancada memoria", "versao": 1,
        "registro": {"contadores": {"crz": 1, "cro": 2, "coo": 3, "gnf": 4, "ccf": 5, "grg": 6, "cfd": 7},
                     "gt": "12345.6", "ecf": {"versao_sb": "02.00.00"},
                     "nao_fiscal": {"totalizadores": {"1": {"nome": "SUPRIMENTO"}}}},
        "execucao": {"sequencia": 5}})");
    EXPECT_EQ(Positions("E11", 45, 122), "000001000002000003000004000005000000000000000006000000"
                                         "000007000000000001234560");
    EXPECT_EQ(Positions("E02", 253, 270), "000000000001234560");
    EXPECT_EQ(Positions("E01", 72, 81), "02.00.00  ");
    EXPECT_EQ(Positions("E20", 62, 76), "SUPRIMENTO                     ");
    EXPECT_NE(notes.find("neutral: E20 nome: totalizer 3 was not programmed by a logged command (1 "
                         "record)\n"),
              std::string::npos);
    Execute("PRAGMA user_version = 6");
    EXPECT_NE(Fault().find("does not belong to the database: it has come to command 5, the "
                           "database to 6"),
              std::string::npos);
}

TEST_F(ExportacaoTest, AMemoryWithTheStateBeforeACommandIsReadByTheDatabasesNumber)
{
    Execute(std::string(DAYS) + "PRAGMA user_version = 4;");
    options.memory = Folder().Write("memory", R"({"formato": "ecf-bancada memoria", "versao": 1,
        "registro": {"gt": "2.00"}, "execucao": {"sequencia": 5},
        "antes": {"registro": {"gt": "1.00"}, "execucao": {"sequencia": 4}}})");
    EXPECT_EQ(Positions("E11", 105, 122), "000000000000000100");
    Execute("PRAGMA user_version = 5");
    EXPECT_EQ(Positions("E11", 105, 122), "000000000000000200");
}

TEST_F(ExportacaoTest, AMemoryWithAJournalBesideItIsRefused)
{
    Execute(DAYS);
    options.memory = Folder().Write("memory", R"({"formato": "ecf-bancada memoria", "versao": 2})");
    EXPECT_EQ(Fault(), "");
    Folder().Write("memory.journal", "");
    EXPECT_NE(Fault().find("memory: a run that did not end in good order left its journal"),
              std::string::npos);
}

TEST_F(ExportacaoTest, TheCommandChoosesTheTypes)
{
    Execute(DAYS);
    EXPECT_EQ(Types(), "01 02 07 09 10 11 12 13 14 15 16 17 18 19 20 21");
    options.comando = Comando::MF;
    EXPECT_EQ(Types(), "01 02 07 09 10 11 12 13");
    EXPECT_EQ(Positions("E01", 113, 115), "MF ");
    options.comando = Comando::MFD;
    EXPECT_EQ(Types(), "01 02 14 15 16 17 18 19 20 21");
    EXPECT_EQ(Positions("E01", 113, 115), "MFD");
    options.comando = Comando::RZ;
    EXPECT_EQ(Types(), "01 02 14 15 16");
    EXPECT_EQ(Positions("E01", 113, 115), "RZ ");
}

TEST_F(ExportacaoTest, ARangeIsOfWholeDays)
{
    Execute(std::string(DAYS) +
            "INSERT INTO outros_documentos VALUES (21,1,9,5,6,8,'2024-03-04 07:00:00','2024-03-04 "
            "07:00:00','LX'); INSERT INTO fita_detalhe VALUES (13,1,'2024-03-04 13:00:00',3,4);");
    options.from = "2024-03-01";
    options.to = "2024-03-01";
    EXPECT_EQ(Positions("E12", 47, 52), "000007");
    EXPECT_EQ(Positions("E13", 47, 52), "000007 000007 000007");
    EXPECT_EQ(Positions("E14", 47, 52), "000004 000005");
    EXPECT_EQ(Positions("E16", 47, 52), "000003 000005 000007 000008 000010 000011 000012 000013")
        << "the reduction after midnight belongs to its day";
    EXPECT_EQ(Positions("E21", 47, 52), "000006 000006 000009 000010");
    EXPECT_EQ(Positions("E01", 116, 143), "0000070000072024030120240301");
    EXPECT_EQ(Positions("E10", 45, 50), "000012");
    options.from = "2024-03-02";
    options.to = "";
    EXPECT_EQ(Positions("E14", 47, 52), "000006");
    EXPECT_EQ(Positions("E16", 47, 52), "000020 000021") << "the open day";
    EXPECT_EQ(Positions("E10", 45, 50), "000013");
    options.to = "2024-03-03";
    EXPECT_EQ(Positions("E16", 47, 52), "000020");
    options.from = options.to = "";
    options.crz = {8, 8};
    EXPECT_EQ(Positions("E12", 47, 52), "000008");
    EXPECT_EQ(Positions("E14", 47, 52), "000006");
    EXPECT_EQ(Positions("E16", 47, 52), "000020");
    EXPECT_EQ(Positions("E01", 116, 143), "0000080000082024030220240302");
    options.crz = {9, 9};
    EXPECT_EQ(Positions("E16", 47, 52), "000021");
    EXPECT_EQ(Positions("E01", 116, 143), "0000000000000000000000000000");
    options.crz = {999999, 7};
    EXPECT_EQ(Positions("E12", 47, 52), "000007") << "a range past the last number";
}

TEST_F(ExportacaoTest, ARecordThatDoesNotFitNamesTheRow)
{
    Execute(std::string(DAYS) + "UPDATE meio_pagamento_reducao SET descricao_meio_pagamento = "
                                "'SIXTEEN LETTERS!' WHERE indice_meio_pagamento = 2;");
    EXPECT_EQ(Fault(), ": meio_pagamento_reducao, row 3: E18, nome (positions 53-67): \"SIXTEEN "
                       "LETTERS!\" does not fit");
    Execute("UPDATE cupom_fiscal SET valor_total = 1.005 WHERE cont_coo = 9");
    EXPECT_EQ(Fault(), ": cupom_fiscal, row 2: E14, total (positions 109-122): the row's number is "
                       "not exact to 2 decimals");
    Execute("UPDATE cupom_fiscal SET valor_total = -1 WHERE cont_coo = 9");
    EXPECT_EQ(Fault(), ": cupom_fiscal, row 2: E14, total (positions 109-122): it is below zero: "
                       "-100");
    Execute("UPDATE cupom_fiscal SET cont_ccf = NULL WHERE cont_coo = 9");
    EXPECT_EQ(Fault(), ": cupom_fiscal, row 2: cont_ccf is no number of a document: NULL");
}

TEST_F(ExportacaoTest, ANumberThatStandsTwiceIsRefusedWhereRowsHangOnIt)
{
    Execute(std::string(DAYS) +
            "INSERT INTO cupom_fiscal SELECT * FROM cupom_fiscal WHERE "
            "cont_coo = 14; UPDATE cupom_fiscal SET cont_ccf = 7 WHERE rowid = 4;");
    EXPECT_EQ(Fault(), ": cupom_fiscal, row 3: the COO 14 stands twice: whose its items and "
                       "payments are is told by no row");
    options.crz = {7, 7};
    EXPECT_EQ(Fault(), "") << "of another day";
}

TEST_F(ExportacaoTest, TheGrandTotalGrowsByWhatWasRegisteredSince)
{
    // Rows of the day that is open: 2 x 10.005 rounded is 20.01 and cut 0.5 x 3.01 is 1.50, with
    // 0.30 of surcharge, 0.20 of a cancelled one; the receipt's own surcharge is 1.00.
    const std::string open = R"sql(
INSERT INTO cupom_fiscal (cont_coo, cont_ccf, cont_crz, data_hora_emissao, cpf_cnpj_consumidor, nome_consumidor, valor_subtotal, valor_total,
  tipo_desconto, valor_desconto, tipo_acrescimo, valor_acrescimo, valor_canc_acrescimo, id_cancelado) VALUES
 (22,7,9,'2024-03-03 08:00:00','','',22.01,23.01,'V',0,'V',1.00,0.05,'N');
INSERT INTO item_cupom_fiscal VALUES
 (1,22,'1','A',2,'F1','UN',10.005,'V',0,'V',0,0,20.010,0,3,'A','N',0,0),
 (2,22,'2','B',0.5,'F1','UN',3.01,'V',0.30,'V',0,0.20,1.80,1,2,'T','N',0,0),
 (3,22,'3','C',1,'F1','UN',4.00,'V',0,'V',0,0,4.00,0,2,'T','S',0,0);
)sql";
    Execute(DAYS + open);
    EXPECT_EQ(Positions("E11", 105, 122), "000000000000105706")
        << "1030.00 and 20.01 + 1.50 + 0.30 + 0.20 + 4.00, 1.00 and 0.05 of the receipt";
    // The closing shared the receipt's surcharge among the items: it stands in theirs.
    Execute("UPDATE item_cupom_fiscal SET valor_acrescimo = 0.92, valor_total = 20.93 WHERE "
            "cont_coo = 22 AND seq_item = 1; UPDATE item_cupom_fiscal SET valor_acrescimo = 0.38, "
            "valor_total = 1.88 WHERE cont_coo = 22 AND seq_item = 2; UPDATE cupom_fiscal SET "
            "valor_total = 22.81, valor_subtotal = 21.81 WHERE cont_coo = 22");
    EXPECT_EQ(Positions("E11", 105, 122), "000000000000105706");
    Execute("DELETE FROM reducao_z");
    EXPECT_EQ(Positions("E11", 45, 50), "000000");
}

TEST_F(ExportacaoTest, AnEmptyDatabaseIsToldAsOne)
{
    Execute("");
    EXPECT_EQ(Types(), "01 11");
    EXPECT_NE(notes.find("left out: E02: dados_usuario has no row (1)\n"), std::string::npos);
}

TEST_F(ExportacaoTest, NothingOfTheDatabasesFolderChanges)
{
    Execute(DAYS);
    const auto before = Files();
    Lines();
    EXPECT_EQ(Files(), before);
    Folder().Write("registro.db", "no database");
    EXPECT_NE(Fault(), "");
}

} // namespace
} // namespace bancada::arquivo

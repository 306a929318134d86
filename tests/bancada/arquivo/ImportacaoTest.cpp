// Files written by hand, for what no tape of the bench makes, and the lines that they become.
#include "bancada/arquivo/Importacao.h"

#include "bancada/Unusable.h"
#include "tests/bancada/arquivo/Identificacao.h"
#include "tests/support/Files.h"

#include <fstream>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

namespace bancada::arquivo
{
namespace
{

using arquivo_test::E01;

// The register has no serial number, letter or model.
const std::string COMMON(41, ' ');

std::string E16(const std::string& coo, const std::string& gnf, const std::string& simbolo,
                const std::string& end)
{
    return "E16" + COMMON + "01" + coo + gnf + "0000000000000000" + simbolo + end + "\n";
}

std::string E09(const std::string& cro, const std::string& instant)
{
    return "E09" + COMMON + cro + instant + "S\n";
}

class ImportacaoTest : public testing::Test
{
  protected:
    // The tape's lines, without those that clear the way.
    std::vector<std::string> Lines(const std::string& content)
    {
        folder.Write("f", E01 + content);
        std::ostringstream tape;
        std::ostringstream notes;
        result = Import(folder.File("f"), tape, notes);
        told = notes.str();
        std::vector<std::string> lines;
        std::istringstream in(tape.str());
        for (std::string line; std::getline(in, line);) {
            if (line.find("cancela_aberto") == std::string::npos) {
                lines.push_back(line);
            }
        }
        return lines;
    }

    test_support::TempFolder folder;
    ImportResult result;
    std::string told;
};

TEST_F(ImportacaoTest, DocumentsKeepTheirNumbersAndEnds)
{
    EXPECT_EQ(Lines(E16("000007", "000000", "LX", "20240301080000") +
                    E16("000008", "000000", "MF", "20240301080100")),
              (std::vector<std::string>{R"({"cmd":"leitura_x","em":"2024-03-01 08:00:00"})",
                                        R"({"cmd":"leitura_mf","em":"2024-03-01 08:01:00"})"}));
    EXPECT_EQ(nlohmann::json::parse(result.memory)["registro"]["contadores"]["coo"], 6);
    EXPECT_EQ(told, "");
}

TEST_F(ImportacaoTest, TheFirstIsTheOneBehindTheWidestGap)
{
    EXPECT_EQ(Lines(E16("000001", "000000", "MF", "20240301080100") +
                    E16("999999", "000000", "LX", "20240301080000")),
              (std::vector<std::string>{R"({"cmd":"leitura_x","em":"2024-03-01 08:00:00"})",
                                        R"({"cmd":"leitura_mf","em":"2024-03-01 08:01:00"})"}));
    EXPECT_EQ(nlohmann::json::parse(result.memory)["registro"]["contadores"]["coo"], 999998);
}

TEST_F(ImportacaoTest, ANumberWithoutARecordIsListed)
{
    EXPECT_EQ(Lines(E16("000007", "000000", "LX", "20240301080000") +
                    E16("000009", "000000", "MF", "20240301080100"))
                  .size(),
              3U);
    EXPECT_EQ(told, "left out: E16: numbers of documents that no record tells of, taken by X "
                    "readings of no record (1)\n");
}

TEST_F(ImportacaoTest, AnInterventionSetsTheClockBackWhereTheFileGoesBack)
{
    EXPECT_EQ(
        Lines(E09("000002", "20240301090000") + E16("000007", "000000", "MF", "20240301085900") +
              E16("000008", "000000", "LX", "20240301080000")),
        (std::vector<std::string>{R"({"cmd":"leitura_mf","em":"2024-03-01 08:59:00"})",
                                  R"({"cmd":"entrada_mit_interno","em":"2024-03-01 09:00:00"})",
                                  R"({"cmd":"acerta_relogio","em":"2024-03-01 08:00:00"})",
                                  R"({"cmd":"saida_mit_interno","em":"2024-03-01 08:00:00"})"}));
    ASSERT_EQ(result.fatos.intervencoes.size(), 1U) << "the loss of data, which no row will hold";
    EXPECT_TRUE(result.fatos.intervencoes[0].perdaDados);
    EXPECT_EQ(result.fatos.intervencoes[0].dataHora, "2024-03-01 09:00:00");
}

TEST_F(ImportacaoTest, AFileThatGoesBackWithoutAnInterventionIsListed)
{
    Lines(E16("000007", "000000", "LX", "20240301080000") +
          E16("000008", "000000", "MF", "20240301075900"));
    EXPECT_EQ(told, "neutral: E16 data_fim, hora_fim: before the end of the document before it (1 "
                    "record)\n");
}

TEST_F(ImportacaoTest, WhatNoRowWillHoldIsAFact)
{
    Lines("E03" + COMMON + "0220210203040506" + "00000000000033I3            000000000000000077\n" +
          "E05" + COMMON + "0000000000005520180102030405ABCDEFGHIJ\n" + "E08" + COMMON +
          "00000000000077MFD7                \n");
    EXPECT_EQ(result.fatos.prestadores.at(0).vendas, 77);
    EXPECT_EQ(result.fatos.prestadores.at(0).dataHora, "2021-02-03 04:05:06");
    EXPECT_EQ(result.fatos.cifras.at(0).simbolo, "ABCDEFGHIJ");
    EXPECT_EQ(result.fatos.memorias.at(0).numeroSerie, "MFD7");
}

// The names of the withdrawal's and the float's totalizers stand in no row: a file that was made
// without the register's memory leaves them out.
TEST_F(ImportacaoTest, AnItemOfNoKnownTotalizerIsNoLine)
{
    const std::string numbers = "01"
                                "000007"
                                "000003";
    const std::string none = "0000000000000";
    EXPECT_EQ(Lines("E19" + COMMON + numbers + "20240301" + "00000000010000" + none + "V" + none +
                    "V" + "00000000010000" + "N" + none + "A" + std::string(40, ' ') +
                    "00000000000000\n" + "E20" + COMMON + numbers + "001" + std::string(15, ' ') +
                    "0000000010000" + none + none + "0000000010000" + "N" + none + "\n"),
              (std::vector<std::string>{R"({"cmd":"abre_cnf","em":"2024-03-01 00:00:00"})",
                                        R"({"cmd":"fecha_cupom_nf","em":"2024-03-01 00:00:00"})"}));
    EXPECT_NE(told.find("items of a totalizer that takes none"), std::string::npos) << told;
}

TEST_F(ImportacaoTest, WhatTheRegisterHasNoRoomForIsListed)
{
    std::string content;
    for (int i = 1; i <= 40; ++i) {
        content += "E17" + COMMON + "01000001NOME " + std::to_string(100 + i) + "       " +
                   std::string(13, '0') + "\n";
    }
    for (int i = 1; i <= 22; ++i) {
        content += "E18" + COMMON + "01000001MEIO " + std::to_string(100 + i) + "       " +
                   std::string(13, '0') + "\n";
    }
    const std::vector<std::string> lines = Lines(content);
    ASSERT_EQ(lines.size(), 20U + 37U);
    EXPECT_EQ(lines[19], R"({"cmd":"insere_meio_pagamento","em":"1970-01-01 00:00:01",)"
                         R"("indice":20,"descricao":"MEIO 120"})");
    EXPECT_EQ(lines[56], R"({"cmd":"insere_reg_ope_nf","em":"1970-01-01 00:00:01",)"
                         R"("indice":39,"descricao":"NOME 137"})");
    EXPECT_NE(told.find("left out: E17: totalizers behind the register's 39 (3)\n"
                        "left out: E18: payment means behind the register's 20 (2)\n"),
              std::string::npos)
        << told;
}

TEST_F(ImportacaoTest, AReceiptHasNoMoreItemsThanNumbers)
{
    std::string content = "E19" + COMMON + "0100000700000320240301" + std::string(27, '0') + "V" +
                          std::string(13, '0') + "V" + std::string(14, '0') + "N" +
                          std::string(13, '0') + " " + std::string(40, ' ') + std::string(14, '0') +
                          "\n";
    for (int i = 0; i < 1001; ++i) {
        content += "E20" + COMMON + "01000007000003001NOME           " + "0000000000100" +
                   std::string(26, '0') + "0000000000100N" + std::string(13, '0') + "\n";
    }
    EXPECT_EQ(Lines(content).size(), 1U + 1U + 999U) << "the name, the opening, the items";
    EXPECT_NE(told.find("items behind the last number"), std::string::npos);
}

// What the process has read, as the system counts it.
std::int64_t BytesRead()
{
    std::ifstream io("/proc/self/io");
    std::string name;
    std::int64_t count = 0;
    io >> name >> count;
    EXPECT_EQ(name, "rchar:");
    return count;
}

TEST_F(ImportacaoTest, AFileIsReadAFewTimesHoweverManyDocumentsItHas)
{
    for (const int count : {500, 5000}) {
        std::string content;
        for (int i = 1; i <= count; ++i) {
            const std::string number = std::to_string(1000000 + i).substr(1);
            content += "E19" + COMMON + "01" + number + number + "20240301" + std::string(27, '0') +
                       " " + std::string(13, '0') + " " + std::string(14, '0') + "N" +
                       std::string(13, '0') + " " + std::string(40, ' ') + std::string(14, '0') +
                       "\n";
        }
        for (int i = 1; i <= count; ++i) {
            const std::string number = std::to_string(1000000 + i).substr(1);
            content += "E20" + COMMON + "01" + number + number + "001NOME           " +
                       std::string(52, '0') + "N" + std::string(13, '0') + "\n";
        }
        content.insert(0, E01);
        folder.Write("f", content);
        std::ostringstream tape;
        std::ostringstream notes;
        const std::int64_t before = BytesRead();
        EXPECT_NE(Import(folder.File("f"), tape, notes).memory, "");
        EXPECT_LT(BytesRead() - before, static_cast<std::int64_t>(4 * content.size())) << count;
    }
}

// A malformed file is told of by its line, the record's type, the field and its positions, before
// a line of a tape is written.
TEST_F(ImportacaoTest, AFaultNamesLineTypeFieldAndPositions)
{
    const std::string good = E16("000007", "000000", "LX", "20240301080000");
    const auto fault = [this](const std::string& content) {
        folder.Write("f", content);
        std::ostringstream tape;
        std::ostringstream notes;
        try {
            EXPECT_NE(Import(folder.File("f"), tape, notes).memory, "");
        } catch (const Unusable& unusable) {
            EXPECT_EQ(tape.str(), "");
            EXPECT_EQ(notes.str(), "");
            return std::string(unusable.what()).substr(folder.File("f").size());
        }
        return std::string("none");
    };
    EXPECT_EQ(fault(E01 + good), "none");
    EXPECT_EQ(fault(good + E16("00000X", "000000", "MF", "20240301080100")),
              ":2: E16, coo (positions 47-52): digits are due, not \"00000X\"");
    EXPECT_EQ(fault(good + E16("000008", "000000", "MF", "20240230080100")),
              ":2: E16, data_fim (positions 77-84): a date AAAAMMDD is due, not \"20240230\"");
    EXPECT_EQ(fault(good + E16("000008", "000000", "MF", "20240301246000")),
              ":2: E16, hora_fim (positions 85-90): a time HHMMSS is due, not \"246000\"");
    for (const std::string data : {"19700101", "21060207", "99991231"}) {
        EXPECT_EQ(fault(good + E16("000008", "000000", "MF", data + "080100")),
                  ":2: E16, data_fim (positions 77-84): a date from 1970-01-02 to 2106-02-06 is "
                  "due, not \"" +
                      data + "\"");
    }
    EXPECT_EQ(fault(E01 + E16("000007", "000000", "LX", "19700102000000") +
                    E16("000008", "000000", "MF", "21060206235959")),
              "none");
    EXPECT_EQ(fault("E10" + COMMON + "00000120240301000000000004" + std::string(14, '0') + "\n"),
              ":1: E10, coo_inicial (positions 59-64): the number of a document is due, not "
              "\"000000\"");
    EXPECT_EQ(fault(good + "E15" + COMMON + "01\n"),
              ":2: E15 stands behind E16: the types of a file come in rising order");
    EXPECT_EQ(fault("E16" + COMMON + "01\n"), ":1: E16 has 90 positions, not 46");
    for (const std::string totalizador : {"99X0000", "00T1800", "31T1800"}) {
        EXPECT_EQ(
            fault("E15" + COMMON + "01000002000001001C             " + "D" + std::string(99, ' ') +
                  "0000001UN 00000100" + std::string(16, '0') + "00000000000100" + totalizador +
                  "N" + std::string(33, '0') + "T02\n"),
            ":1: E15, totalizador (positions 224-230): a totalizer that items are sold in is due, "
            "not \"" +
                totalizador + "\"");
    }
    EXPECT_EQ(
        fault("E12" + COMMON + "01000001000007000000202403012024030123000000000000000000 \n" +
              "E12" + COMMON + "01000002000007000000202403012024030123000000000000000000 \n"),
        ":2: E12, coo (positions 53-58): a number that did not come before is due, not \"000007\"");
    EXPECT_EQ(fault(""),
              ":1: a file begins with E01, the register's identification, not with its end");
    EXPECT_EQ(fault("\n"), ":1: a record begins with its type, E01 to E21 or EAD, not with \"\"");
    EXPECT_EQ(fault(good),
              ":1: a file begins with E01, the register's identification, not with E16");
}

TEST_F(ImportacaoTest, WhatIsNoFileMakesNothing)
{
    EXPECT_THROW(Lines("E16 too short\n"), Unusable);
    EXPECT_THROW(Lines(E16("000007", "000000", "LX", "20240301080000") +
                       E16("000007", "000000", "MF", "20240301080000")),
                 Unusable);
    EXPECT_THROW(Lines(E16("000007", "000000", "LX", "20240301250000")), Unusable);
}

} // namespace
} // namespace bancada::arquivo

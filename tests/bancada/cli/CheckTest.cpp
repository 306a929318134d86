// ecf-bancada check as a user calls it: output, exit codes, what it cannot read.
#include "bancada/Unusable.h"
#include "bancada/cli/Subcommands.h"
#include "bancada/conferencia/FindingKind.h"
#include "tests/bancada/BegunAnew.h"
#include "tests/bancada/InPortuguese.h"
#include "tests/bancada/conferencia/CheckedDatabase.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iostream>
#include <nlohmann/json.hpp>
#include <sstream>

namespace bancada
{
namespace
{

using testing::AnyOf;
using testing::Each;
using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

class CheckCommand : public conferencia_test::CheckedDatabase
{
  protected:
    // Runs the subcommand; its output goes to `output`. Answers the exit code.
    int Run(std::vector<std::string> arguments)
    {
        int code = EXIT_OK;
        CLI::App app;
        AddRun(app, code);
        AddCheck(app, code);
        std::reverse(arguments.begin(), arguments.end());
        testing::internal::CaptureStdout();
        try {
            app.parse(arguments);
        } catch (...) {
            std::cout.flush();
            output = testing::internal::GetCapturedStdout();
            throw;
        }
        std::cout.flush();
        output = testing::internal::GetCapturedStdout();
        return code;
    }

    // What the subcommand says that it cannot use. Nothing is printed then.
    std::string WhyUnusable(const std::vector<std::string>& arguments)
    {
        try {
            Run(arguments);
        } catch (const Unusable& error) {
            return error.what();
        }
        return "accepted";
    }

    std::vector<std::string> Lines() const
    {
        std::vector<std::string> lines;
        std::istringstream in(output);
        for (std::string line; std::getline(in, line);) {
            lines.push_back(line);
        }
        return lines;
    }

    std::string output;
};

// A register may fill its names up with blanks to the width of their fields.
TEST_F(CheckCommand, BlanksBehindTheOwnersNameAreNotTold)
{
    Execute(conferencia_test::CLEAN_DAYS);
    Execute("UPDATE dados_usuario SET razao_social = razao_social || '   '");
    Run({"check", Path()});
    EXPECT_THAT(Lines()[1], StartsWith("register 0001 of MERCEARIA: COO 1 of "));
}

TEST_F(CheckCommand, ACleanDatabaseExitsWithZeroAndKeepsItsNotes)
{
    Execute(conferencia_test::CLEAN_DAYS);
    EXPECT_EQ(Run({"check", Path()}), 0);
    const std::vector<std::string> lines = Lines();
    ASSERT_GE(lines.size(), 2U);
    EXPECT_THAT(lines[0], MatchesRegex("looked at " + Path() +
                                       ", [0-9]+ bytes, SHA-256 [0-9a-f]{64}, by "
                                       "ecf-bancada [0-9.]+"));
    EXPECT_EQ(lines[1], "register 0001 of MERCEARIA: COO 1 of 2024-03-01 08:00:00 to COO 21 of "
                        "2024-03-03 08:00:00, CRZ 1 to CRZ 2, GT 75.48");
    EXPECT_EQ(output.substr(lines[0].size() + lines[1].size() + 2),
              "note: cupom-adicional: COO 11: paid 10.00, closing never written\n"
              "note: documento-sem-linha: GNF 3: reversal of a voucher (COO 6) before COO 10\n"
              "7 fiscal receipts, 4 non-fiscal receipts, 2 Z reductions: 0 findings, 2 notes\n");
}

TEST_F(CheckCommand, ADocumentWithoutANumberIsNeitherTheFirstNorTheLast)
{
    Execute(conferencia_test::CLEAN_DAYS);
    Execute("UPDATE outros_documentos SET cont_coo = NULL WHERE cont_coo IN (1, 20)");
    Run({"check", Path()});
    EXPECT_EQ(Lines()[1], "register 0001 of MERCEARIA: COO 3 of 2024-03-01 08:10:00 to COO 21 of "
                          "2024-03-03 08:00:00, CRZ 1 to CRZ 2, GT 75.48");
}

TEST_F(CheckCommand, AFindingExitsWithOne)
{
    Execute(conferencia_test::CLEAN_DAYS);
    Execute("UPDATE reducao_z SET valor_gt = 75.47 WHERE cont_crz = 2");
    EXPECT_EQ(Run({"check", Path()}), 1);
    EXPECT_THAT(output, HasSubstr("\nz-gt: CRZ 2: "));
    EXPECT_THAT(output, EndsWith("2 Z reductions: 1 finding, 2 notes\n"));
}

TEST_F(CheckCommand, ThoseWhoReadPortugueseGetNothingElse)
{
    Execute(conferencia_test::CLEAN_DAYS);
    Execute("UPDATE reducao_z SET valor_gt = 75.47 WHERE cont_crz = 2;"
            "UPDATE item_cupom_fiscal SET valor_total = NULL WHERE rowid = 1;"
            "UPDATE outros_documentos SET id_tipo_documento = 'XX' WHERE cont_coo = 5");
    const bancada_test::InPortuguese portuguese;
    EXPECT_EQ(Run({"check", Path(), "--until", "COO=30"}), 1);
    const std::vector<std::string> lines = Lines();
    ASSERT_GE(lines.size(), 2U);
    EXPECT_THAT(lines[0], MatchesRegex("examinado " + Path() +
                                       ", [0-9]+ bytes, SHA-256 [0-9a-f]{64}, por "
                                       "ecf-bancada [0-9.]+"));
    EXPECT_EQ(
        output.substr(lines[0].size() + 1),
        "ECF 0001 de MERCEARIA: COO 1 de 2024-03-01 08:00:00 a COO 21 de 2024-03-03 08:00:00,"
        " CRZ 1 a CRZ 2, GT 75.47\n"
        "valor-invalido: outros_documentos linha 3: id_tipo_documento contém XX, onde se espera LX,"
        " MF, CC, RG, NC, CN ou RZ\n"
        "valor-invalido: item_cupom_fiscal linha 1: valor_total contém NULL, onde se espera um"
        " valor, nenhum abaixo de zero\n"
        "item-total: COO 3 item 1: total NULL, quantidade vezes preço e ajustes 10.00\n"
        "cupom-itens: COO 3: itens não cancelados ?, subtotal 15.48, total 15.48\n"
        "nota: cupom-adicional: COO 11: pago 10.00, fechamento nunca gravado\n"
        "z-gt: CRZ 2: grande total de 68.48 a 75.47, venda bruta 7.00\n"
        "gnf-ausente: GNF 2: falta um documento não fiscal antes de COO 5\n"
        "contador-documento: COO 5: CDC 1, onde se espera 0\n"
        "gnf-ausente: GNF 3: falta um documento não fiscal (COO 6) antes de COO 10\n"
        "ancora: COO 30: sabe-se que é 30, as linhas terminam em 21\n"
        "7 cupons fiscais, 4 cupons não fiscais, 2 reduções Z: 9 achados, 1 nota\n");
}

// What programs read has no language.
TEST_F(CheckCommand, TheJsonIsTheSameInEveryLanguage)
{
    Execute(conferencia_test::CLEAN_DAYS);
    Execute("UPDATE reducao_z SET valor_gt = 75.47 WHERE cont_crz = 2;"
            "UPDATE item_cupom_fiscal SET valor_total = NULL WHERE rowid = 1");
    const std::vector<std::string> arguments = {"check", Path(), "--json", "--until", "COO=30"};
    EXPECT_EQ(Run(arguments), 1);
    const std::string english = output;
    const bancada_test::InPortuguese portuguese;
    EXPECT_EQ(Run(arguments), 1);
    EXPECT_EQ(output, english);
    EXPECT_EQ(WhyUnusable({"check", folder.File("none"), "--json", "--until", "x"}),
              "--until x: não é COO=NÚMERO,CRZ=NÚMERO,GT=VALOR, cada um no máximo uma vez");
}

TEST_F(CheckCommand, JsonForPrograms)
{
    Execute(conferencia_test::CLEAN_DAYS);
    Execute("UPDATE reducao_z SET valor_gt = 75.47 WHERE cont_crz = 2");
    EXPECT_EQ(Run({"check", "--json", Path()}), 1);
    const nlohmann::json json = nlohmann::json::parse(output);
    EXPECT_THAT(json["findings"], SizeIs(3));
    EXPECT_EQ(json["findings"][1],
              nlohmann::json::parse(R"({"kind": "z-gt", "weight": "finding", "key": "CRZ 2",
                "text": "grand total from 68.48 to 75.47, gross sales 7.00", "explained": false,
                "severity": "fault", "coo": 20, "crz": 2, "table": "reducao_z", "row": 2,
                "column": "valor_gt", "expected": "75.48", "found": "75.47", "next":
                "Print the reduction with show --crz and compare it with its paper.", "file": ")" +
                                    Path() + "\"}"));
    EXPECT_EQ(json["looked_at"]["file"], Path());
    EXPECT_EQ(json["looked_at"]["last_document"], "21");
    EXPECT_EQ(json["looked_at"]["grand_total"], "75.47");
    EXPECT_EQ(json["looked_at"]["empty"], false);
    EXPECT_EQ(json["summary"],
              nlohmann::json::parse(R"({"fiscal_receipts": 7, "non_fiscal_receipts": 4,
                "z_reductions": 2, "findings": 1, "explained": 0, "notes": 2})"));
}

TEST_F(CheckCommand, JsonOfNothingFound)
{
    EXPECT_EQ(Run({"check", "--json", Path()}), 0);
    EXPECT_THAT(
        output,
        StartsWith("{\"findings\": [\n],\n\"groups\": [],\n\"summary\": {\"fiscal_receipts\":0,"
                   "\"non_fiscal_receipts\":0,\"z_reductions\":0,"
                   "\"findings\":0,\"explained\":0,\"notes\":0},\n"
                   "\"looked_at\": {\"file\":"));
    EXPECT_EQ(nlohmann::json::parse(output)["looked_at"]["empty"], true);
}

TEST_F(CheckCommand, TheLogListsTheLostRows)
{
    const std::string log = folder.Write(
        "log",
        "2024-03-01 08:00:00\tDBLoggerExecuteSQL: Erro executando SQL Code. Comando:'3', "
        "Erro:'no such table'\n"
        "2024-03-01 08:00:00\tUPDATE item_cupom_fiscal SET id_cancelado = 'S' where cont_coo "
        "= '5' and seq_item = '2'\n"
        "2024-03-01 08:00:01\tLogDatabase: the rows of this command are lost: disk I/O "
        "error\n");
    EXPECT_EQ(Run({"check", Path(), "--log", log}), 1);
    EXPECT_THAT(output, HasSubstr("\nan empty database: it holds no document\nlinha-perdida: "));
    EXPECT_EQ(output.substr(output.find("linha-perdida")),
              "linha-perdida: item_cupom_fiscal cont_coo 5, seq_item 2: UPDATE of "
              "item_cupom_fiscal by command 3 was rejected: no such table\n"
              "comando-perdido: 2024-03-01 08:00:01: the rows of a command are lost: disk I/O "
              "error\n"
              "0 fiscal receipts, 0 non-fiscal receipts, 0 Z reductions: 2 findings, 0 notes\n");
}

TEST_F(CheckCommand, ATextOfTheDatabaseStaysOnOneLine)
{
    Execute("INSERT INTO reducao_z (cont_crz, cont_coo, data_hora_emissao, data_movimento) VALUES"
            " (1, 1, '2024-03-01 09:00:00', '2024' || char(10, 7, 27) || 'x');"
            "INSERT INTO cupom_nf (cont_coo, cont_crz, data_hora_emissao) VALUES (2, 1, 'a')");
    EXPECT_EQ(Run({"check", Path()}), 1);
    EXPECT_THAT(output, HasSubstr("day of 2024???x, first receipt COO 2"));
}

// Not only what is below a blank: a terminal obeys U+009B too, and U+202E turns a line around.
TEST_F(CheckCommand, NoTextSteersTheTerminal)
{
    Execute(conferencia_test::CLEAN_DAYS);
    Execute("UPDATE dados_ecf SET num_serie = '\u009B2J\u202E';"
            "UPDATE outros_documentos SET id_tipo_documento = '\u009B2J' WHERE cont_coo = 5");
    Run({"check", Path()});
    EXPECT_THAT(output, HasSubstr(" holds \\xC2\\x9B2J, where "));
    EXPECT_THAT(output, Not(HasSubstr("\u009B")));
    EXPECT_THAT(output, Not(HasSubstr("\u202E")));
}

TEST_F(CheckCommand, BytesThatAreNoUtf8AreReplaced)
{
    Execute("INSERT INTO reducao_z (cont_crz, cont_coo, data_hora_emissao, data_movimento) VALUES"
            " (1, 1, '2024-03-01 09:00:00', CAST(x'32FF30C3A3' AS TEXT));"
            "INSERT INTO cupom_nf (cont_coo, cont_crz, data_hora_emissao) VALUES (2, 1, 'a')");
    EXPECT_EQ(Run({"check", Path()}), 1);
    EXPECT_THAT(output, HasSubstr("day of 2\xEF\xBF\xBD"
                                  "0ã, first receipt COO 2"));
}

TEST_F(CheckCommand, TheDatabaseIsLeftAsItWas)
{
    Execute(conferencia_test::CLEAN_DAYS);
    const auto content = [this] {
        std::ostringstream text;
        text << std::ifstream(Path(), std::ios::binary).rdbuf();
        return text.str();
    };
    const std::string before = content();
    Run({"check", Path()});
    EXPECT_EQ(content(), before);
}

TEST_F(CheckCommand, SaysWhatItCannotRead)
{
    EXPECT_EQ(WhyUnusable({"check", folder.File("none.db")}),
              folder.File("none.db") + ": no such file");
    EXPECT_EQ(WhyUnusable({"check", folder.File("")}), folder.File("") + ": is a directory");
    EXPECT_THAT(WhyUnusable({"check", folder.Write("empty", "")}),
                EndsWith("empty: not a logging database (no such table: cupom_fiscal)"));
    EXPECT_THAT(WhyUnusable({"check", folder.Write("text", std::string(5000, 'x'))}),
                EndsWith(": file is not a database"));
    EXPECT_THAT(WhyUnusable({"check", Path(), "--log", folder.File("none.log")}),
                StartsWith("cannot read the firmware log "));
}

TEST_F(CheckCommand, SaysWhichTableAnotherProgramsDatabaseLacks)
{
    Execute("DROP TABLE moeda");
    EXPECT_THAT(WhyUnusable({"check", Path()}),
                EndsWith(": not a logging database (no such table: moeda)"));
    Execute("CREATE TABLE moeda (x)");
    EXPECT_THAT(WhyUnusable({"check", Path()}),
                EndsWith(": not a logging database (no such column: num_ecf)"));
}

TEST_F(CheckCommand, NothingIsPrintedOfAnotherProgramsDatabase)
{
    Execute("DROP TABLE moeda");
    EXPECT_NE(WhyUnusable({"check", "--json", Path()}), "accepted");
    EXPECT_EQ(output, "");
}

TEST_F(CheckCommand, ADamagedDatabaseIsUnusable)
{
    Execute(conferencia_test::CLEAN_DAYS);
    std::ostringstream text;
    text << std::ifstream(Path(), std::ios::binary).rdbuf();
    std::string bytes = text.str();
    // The header and the schema stand; every other page is noise.
    const std::size_t begin = 4096 * 6;
    ASSERT_GT(bytes.size(), begin);
    for (std::size_t i = begin; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>(i * 37 + i / 256);
    }
    EXPECT_THAT(WhyUnusable({"check", folder.Write("damaged.db", bytes)}),
                HasSubstr("database disk image is malformed"));
}

TEST_F(CheckCommand, WhatTheRowsDoNotReachIsAFinding)
{
    Execute(conferencia_test::CLEAN_DAYS);
    EXPECT_EQ(Run({"check", Path(), "--until", "COO=21,CRZ=2,GT=75.48"}), 0);
    EXPECT_EQ(Run({"check", Path(), "--until", "COO=22"}), 1);
    EXPECT_THAT(output, HasSubstr("\nancora: COO 22: known to be 22, the rows end at 21\n"));
    EXPECT_EQ(Run({"check", Path(), "--until", "CRZ=3,GT=75.48"}), 1);
    EXPECT_THAT(output, HasSubstr("\nancora: CRZ 3: known to be 3, the rows end at 2\n"
                                  "ancora: CRZ 3 GT: known to be 75.48, the rows end at none\n"));
    EXPECT_EQ(Run({"check", Path(), "--until", "GT=75.47", "--json"}), 1);
    EXPECT_EQ(nlohmann::json::parse(output)["findings"][2]["kind"], "ancora");
    for (const char* until : {"COO", "COO=", "COO=x", "COO=1,COO=2", "GT=1.2", "CFD=1", ","}) {
        EXPECT_THAT(WhyUnusable({"check", Path(), "--until", until}), StartsWith("--until "));
    }
}

// A register that ran with a memory, which reading leaves as it is.
TEST_F(CheckCommand, AMemoryIsAnAnchor)
{
    const std::string tape = folder.Write(
        "tape.jsonl",
        "{\"cmd\":\"insere_meio_pagamento\",\"em\":\"2024-03-01 07:00:00\",\"indice\":1,\"descricao\":\"DINHEIRO\"}\n"
        "{\"cmd\":\"leitura_x\",\"em\":\"2024-03-01 08:00:00\"}\n"
        "{\"cmd\":\"sangria\",\"operacao\":\"fundo_troco\",\"valor\":\"100.00\",\"meio\":1}\n"
        "{\"cmd\":\"leitura_x\"}\n");
    const std::string database = folder.File("lida.db");
    const std::string memory = folder.File("lida.memoria");
    ASSERT_EQ(
        Run({"run", tape, "--db", database, "--memory", memory, "--log", folder.File("lida.log")}),
        0);
    const auto content = [&memory] {
        std::ostringstream text;
        text << std::ifstream(memory, std::ios::binary).rdbuf();
        return text.str();
    };
    const std::string before = content();
    EXPECT_EQ(Run({"check", database, "--memory", memory}), 0);
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(database.c_str(), &db), SQLITE_OK);
    sqlite3_exec(db, "DELETE FROM outros_documentos WHERE cont_coo = 3; PRAGMA user_version = 3",
                 nullptr, nullptr, nullptr);
    sqlite3_close(db);
    EXPECT_EQ(Run({"check", database}), 0);
    EXPECT_EQ(Run({"check", database, "--memory", memory}), 1);
    EXPECT_THAT(output, HasSubstr("\nancora: command 4: the register's memory says 4, the rows 3\n"
                                  "ancora: COO 3: the register's memory says 3, the rows 2\n"));
    EXPECT_EQ(content(), before);
    EXPECT_THAT(WhyUnusable({"check", database, "--memory", folder.File("none.memoria")}),
                EndsWith("none.memoria: there is no such memory"));
    EXPECT_THAT(WhyUnusable({"check", database, "--memory", tape}),
                HasSubstr("cannot use the memory"));
}

// Two databases of one register: the first ends with its first Z, the next begins behind it.
class CheckSeveral : public CheckCommand
{
  protected:
    void SetUp() override
    {
        CheckCommand::SetUp();
        Execute(conferencia_test::CLEAN_DAYS);
        before = Part("before.db", "cont_coo > 14", "cont_crz > 1");
        after = Part("after.db", "cont_coo <= 14", "cont_crz <= 1");
    }

    // A copy without the documents and the Z reductions that these conditions name.
    std::string Part(const std::string& name, const std::string& documents,
                     const std::string& reducoes)
    {
        const std::string path = folder.File(name);
        Execute("VACUUM INTO '" + path + "'");
        for (const char* table : {"outros_documentos", "cupom_fiscal", "item_cupom_fiscal",
                                  "cupom_nf", "item_cupom_nf", "pagamento_cupom"}) {
            Change(path, std::string("DELETE FROM ") + table + " WHERE " + documents);
        }
        for (const char* table : {"reducao_z", "totalizador_reducao", "meio_pagamento_reducao"}) {
            Change(path, std::string("DELETE FROM ") + table + " WHERE " + reducoes);
        }
        return path;
    }

    static void Change(const std::string& path, const std::string& sql)
    {
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open(path.c_str(), &db), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sql;
        sqlite3_close(db);
    }

    // What is told of the seam, a line each.
    std::string Seam()
    {
        Run({"check", before, after});
        std::istringstream lines(output);
        const std::string head = "emenda: " + before + " to " + after + ": ";
        std::string seam;
        for (std::string line; std::getline(lines, line);) {
            if (line.rfind(head, 0) == 0) {
                seam += line.substr(head.size()) + "\n";
            }
        }
        return seam;
    }

    std::string before;
    std::string after;
};

TEST_F(CheckSeveral, EachIsCheckedAndTheSeamIsInOrder)
{
    EXPECT_EQ(Seam(), "");
    EXPECT_THAT(output, HasSubstr("looked at " + before + ", "));
    EXPECT_THAT(output, HasSubstr("looked at " + after + ", "));
    EXPECT_THAT(output, EndsWith("\n2 databases of one register, in their order: 0 findings where "
                                 "one ends and the next begins\n"));
}

TEST_F(CheckSeveral, AGapIsTold)
{
    Change(after, "DELETE FROM cupom_fiscal WHERE cont_coo = 15");
    EXPECT_EQ(Seam(), "a document is missing between them: the first ends at 14, the next begins "
                      "at 17\n");
    Change(before, "DELETE FROM reducao_z");
    EXPECT_THAT(Seam(), Not(HasSubstr("Z reduction")));
}

TEST_F(CheckSeveral, AMissingZIsTold)
{
    Change(after, "UPDATE reducao_z SET cont_crz = 3");
    EXPECT_EQ(Seam(), "a Z reduction is missing between them: the first ends at 1, the next begins "
                      "at 3\n");
}

TEST_F(CheckSeveral, WhatStandsInBothIsTold)
{
    after = Part("overlap.db", "cont_coo <= 10", "cont_crz <= 1");
    EXPECT_THAT(Seam(),
                HasSubstr("a document stands in both: the first ends at 14, the next begins "
                          "at 11\n"));
}

TEST_F(CheckSeveral, TheGrandTotalIsHeldToTheCent)
{
    Change(after, "UPDATE reducao_z SET valor_gt = valor_gt + 0.01");
    EXPECT_THAT(Seam(), MatchesRegex("the grand total does not continue: GT [0-9.]+ and VB [0-9.]+ "
                                     "of CRZ 2 are not GT [0-9.]+\n"));
}

TEST_F(CheckSeveral, NonFiscalOperationsFollowEachOther)
{
    Change(after, "UPDATE outros_documentos SET cont_gnf = cont_gnf + 5");
    EXPECT_EQ(Seam(), "non-fiscal operations do not follow each other: GNF 5, then GNF 12\n");
}

TEST_F(CheckSeveral, AnotherRegisterIsToldAndOneThatIsNotProgrammedIsNot)
{
    Change(before, "DELETE FROM dados_ecf");
    Change(before, "INSERT INTO dados_ecf (num_serie) VALUES ('A1')");
    Change(after, "DELETE FROM dados_ecf");
    EXPECT_EQ(Seam(), "");
    Change(after, "INSERT INTO dados_ecf (num_serie) VALUES ('B2')");
    EXPECT_EQ(Seam(), "another register: serial number A1, then B2\n");
}

TEST_F(CheckSeveral, TheOtherWayRoundEverythingIsWrong)
{
    std::swap(before, after);
    EXPECT_THAT(Seam(),
                HasSubstr("a document stands in both: the first ends at 21, the next begins "
                          "at 1\na Z reduction stands in both: "));
    EXPECT_THAT(output, HasSubstr(", before the first ends on "));
}

TEST_F(CheckSeveral, JsonHasTheDatabasesAndTheSeams)
{
    Change(after, "DELETE FROM cupom_fiscal WHERE cont_coo = 15");
    EXPECT_EQ(Run({"check", before, after, "--json"}), 1);
    const auto json = nlohmann::json::parse(output);
    EXPECT_THAT(json["databases"], SizeIs(2));
    EXPECT_EQ(json["databases"][0]["looked_at"]["file"], before);
    EXPECT_EQ(json["databases"][1]["looked_at"]["file"], after);
    ASSERT_THAT(json["seams"], SizeIs(1));
    EXPECT_EQ(json["seams"][0]["kind"], "emenda");
    EXPECT_EQ(json["seams"][0]["file"], after);
    EXPECT_EQ(json["seams"][0]["expected"], "15");
    EXPECT_EQ(json["seams"][0]["found"], "17");
}

TEST_F(CheckSeveral, ALogGoesWithOne)
{
    EXPECT_THAT(WhyUnusable({"check", before, after, "--log", folder.Write("empty.log", "")}),
                StartsWith("--log goes with one database"));
}

// What is known from outside is known of the last.
TEST_F(CheckSeveral, TheAnchorIsOfTheLast)
{
    Run({"check", before, after, "--until", "COO=21,CRZ=2"});
    EXPECT_THAT(output, Not(HasSubstr("ancora")));
    Run({"check", before, after, "--until", "COO=22"});
    EXPECT_THAT(output, HasSubstr("\nancora: COO 22"));
}

// As the library begins databases anew, behind Z reductions.
TEST_F(CheckCommand, ARegisterThatBeganAnewIsInOrder)
{
    for (const char* example : {"oficina", "primeira_semana"}) {
        const test_support::TempFolder own;
        std::vector<std::string> arguments = bancada_test::RunAndBeginAnew(own, example, 2);
        ASSERT_THAT(arguments, SizeIs(3));
        arguments.insert(arguments.begin(), "check");
        EXPECT_EQ(Run(arguments), 0) << example << "\n" << output;
        EXPECT_THAT(output, HasSubstr("\nregister (not programmed) of (not programmed): COO "));
        EXPECT_THAT(output, EndsWith("\n3 databases of one register, in their order: 0 findings "
                                     "where one ends and the next begins\n"));
        // Without the one between them.
        arguments.erase(arguments.begin() + 2);
        EXPECT_EQ(Run(arguments), 1);
        EXPECT_THAT(output, HasSubstr(": a document is missing between them: the first ends at "));
        EXPECT_THAT(output, HasSubstr(": a Z reduction is missing between them: "));
        EXPECT_THAT(output, HasSubstr(": the grand total does not continue: "));
    }
}

TEST_F(CheckCommand, ALogThatIsNoneIsUnusable)
{
    EXPECT_THAT(WhyUnusable({"check", Path(), "--log", folder.Write("text", "no log\n")}),
                EndsWith("text: not a firmware log: none of its lines is a record"));
    EXPECT_EQ(Run({"check", Path(), "--log", folder.Write("empty.log", "")}), 0);
}

TEST_F(CheckCommand, OneFaultRepeatedIsListedUpToALimit)
{
    Execute("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 103)"
            " INSERT INTO meio_pagamento SELECT 1 + i % 20, 1, NULL, 'N' FROM n");
    EXPECT_EQ(Run({"check", Path()}), 1);
    EXPECT_THAT(output, HasSubstr("meio_pagamento row 100: "));
    EXPECT_THAT(output, Not(HasSubstr("meio_pagamento row 101: ")));
    EXPECT_THAT(output,
                HasSubstr("\nvalor-invalido: 3 more of the kind in meio_pagamento.descricao,"
                          " from meio_pagamento row 1 to meio_pagamento row 103, "));
    EXPECT_EQ(Run({"check", Path(), "--all"}), 1);
    EXPECT_THAT(output, HasSubstr("meio_pagamento row 103: "));
    EXPECT_THAT(output, Not(HasSubstr("more of the kind")));
}

TEST_F(CheckCommand, TheJsonCountsTheFindingsOfACause)
{
    Execute(conferencia_test::CLEAN_DAYS);
    Execute("UPDATE cupom_fiscal SET id_cupom_adicional = 'S' WHERE cont_coo IN (3, 4, 7);"
            "UPDATE reducao_z SET valor_gt = valor_gt - 0.01 WHERE cont_crz = 2");
    EXPECT_EQ(Run({"check", Path(), "--json"}), 1);
    const nlohmann::json groups = nlohmann::json::parse(output)["groups"];
    const auto first = std::find_if(groups.begin(), groups.end(), [](const nlohmann::json& group) {
        return group["kind"] == "cupom-colunas";
    });
    ASSERT_NE(first, groups.end());
    EXPECT_EQ(*first, nlohmann::json::parse(
                          R"({"kind": "cupom-colunas", "severity": "fault", "table": "cupom_fiscal",
                  "column": "id_cupom_adicional", "count": 3, "first": "COO 3", "last": "COO 7",
                  "meaning": "a column of a receipt that holds what its commands never write there",
                  "next": "Print the document with show --coo and compare it with its paper."})"));
}

TEST_F(CheckCommand, TheHelpNamesEveryKind)
{
    int code = EXIT_OK;
    CLI::App app;
    AddCheck(app, code);
    const std::string help = app.get_subcommand("check")->help();
    for (const conferencia::FindingKindInfo& kind : conferencia::FindingKinds()) {
        EXPECT_THAT(help, HasSubstr(std::string("  ") + kind.name + " "));
    }
}

TEST_F(CheckCommand, TheHelpEndsWithWhatIsJudgedTheKindsAndTheExitCodes)
{
    int code = EXIT_OK;
    CLI::App app;
    AddCheck(app, code);
    std::string kinds;
    for (const conferencia::FindingKindInfo& kind : conferencia::FindingKinds()) {
        kinds += "  " + std::string(kind.name);
        kinds.append(25 - std::string(kind.name).size(), ' ');
        kinds += kind.weight == conferencia::Weight::NOTE ? "(note) " : "";
        kinds += std::string(kind.meaning) + "\n";
    }
    EXPECT_EQ(app.get_subcommand("check")->get_footer(),
              "A database is judged by its own rows. Without --log, a receipt that is paid in "
              "full and keeps its\nopening values is taken for an additional receipt; with it, "
              "only when the log names its closing. A\nfinding that a lost row in the log "
              "explains is marked and still counts: the row is missing.\n\nKinds of "
              "findings:\n" +
                  kinds +
                  "\nExit codes: 0 nothing found (notes are no findings); 1 something was found; 2 "
                  "the database or the log\ncannot be read.");
}

class CheckedExample : public CheckCommand, public testing::WithParamInterface<const char*>
{
};

// The examples are clean but for the rows that their log says are lost, and what follows of those.
TEST_P(CheckedExample, IsCleanButForWhatItsLogNames)
{
    const std::string database = folder.File("example.db");
    const std::string log = folder.File("example.log");
    ASSERT_EQ(Run({"run", std::string(ECF_SOURCE_DIR "/examples/") + GetParam() + ".jsonl", "--db",
                   database, "--log", log}),
              0);
    Run({"check", database, "--log", log});
    std::vector<std::string> lines = Lines();
    ASSERT_GE(lines.size(), 1U);
    EXPECT_THAT(lines.back(), HasSubstr(" fiscal receipts, "));
    lines.pop_back();
    ASSERT_GE(lines.size(), 2U);
    EXPECT_THAT(lines[0], StartsWith("looked at "));
    EXPECT_THAT(lines[1], StartsWith("register "));
    lines.erase(lines.begin(), lines.begin() + 2);
    EXPECT_THAT(lines, Each(AnyOf(StartsWith("note: "), StartsWith("linha-perdida: "),
                                  EndsWith(" [a lost row in the log explains it]"))));
}

INSTANTIATE_TEST_SUITE_P(Check, CheckedExample,
                         testing::Values("mercearia", "oficina", "primeira_semana"),
                         [](const auto& example) { return std::string(example.param); });

} // namespace
} // namespace bancada

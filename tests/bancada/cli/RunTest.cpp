// ecf-bancada run, as a user runs it: exit codes, messages, what is left behind.
#include "tests/bancada/cli/RunFixture.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <string>

using namespace bancada_test;
using testing::HasSubstr;

namespace
{

using RunTest = RunFixture;

TEST_F(RunTest, ATapeIsRunToItsEndAndSummedUp)
{
    const ProgramResult result = RunTape(PROGRAMMING + RECEIPT);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "commands run                               6\n"
                          "commands refused                           0\n"
                          "statements executed                        5\n"
                          "statements rejected                        0\n"
                          "commands lost                              0\n"
                          "rows                                inserted   updated\n"
                          "  cupom_fiscal                             1         1\n"
                          "  item_cupom_fiscal                        1         0\n"
                          "  meio_pagamento                           1         0\n"
                          "  pagamento_cupom                          1         0\n");
    EXPECT_EQ(Rows("SELECT valor_troco FROM cupom_fiscal"), "4");
    EXPECT_EQ(Rows("SELECT data_hora_emissao FROM cupom_fiscal"), "2026-03-02 07:50:02");
    EXPECT_EQ(folder.Read("db.log"), "");
}

TEST_F(RunTest, WhatIsRefusedOrRejectedIsNamedWithItsLine)
{
    const std::string tape = PROGRAMMING + "\n" +
                             R"({"cmd":"efetua_pagamento","meio":1,"valor":"1"}
{"cmd":"abre_cupom","nome":"JOANA D'ARC"}
{"cmd":"cancela_cupom_em_emissao"}
)";
    ProgramResult result = RunTape(tape);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_NE(result.out.find("commands refused                           1\n"
                              "  tape:4 efetua_pagamento: "),
              std::string::npos)
        << result.out;
    EXPECT_NE(result.out.find("statements rejected                        1\n"
                              "  tape:5 abre_cupom: 1 statement\n"),
              std::string::npos)
        << result.out;
    EXPECT_EQ(folder.Read("db.log").substr(0, 91),
              "2026-03-02 07:50:03\tDBLoggerExecuteSQL: Erro executando SQL Code. Comando:'1', "
              "Erro:'near \"");

    std::filesystem::remove(folder.File("db"));
    result = RunTape(tape, "--strict");
    EXPECT_EQ(result.exitCode, 1);
}

// The name of a tape is a text like any other.
TEST_F(RunTest, NoTextSteersTheTerminal)
{
    folder.Write("tape\x1b[2J", PROGRAMMING + CLOSING);
    const ProgramResult result = Run("run tape*2J --db db --replies");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.out, HasSubstr("\n  tape\\x1B[2J:3 efetua_pagamento: "));
    EXPECT_THAT(result.out, Not(HasSubstr("\x1b")));
}

TEST_F(RunTest, StrictIsContentWithAnOrdinaryTape)
{
    EXPECT_EQ(RunTape(PROGRAMMING + RECEIPT, "--strict").exitCode, 0);
}

TEST_F(RunTest, AFaultOfTheTapeStopsThereAndKeepsWhatWasBefore)
{
    const ProgramResult result =
        RunTape(PROGRAMMING + RECEIPT + R"({"cmd":"vende_tudo"})" + "\n" + RECEIPT);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "tape:7:8: there is no command \"vende_tudo\"\n");
    EXPECT_NE(result.out.find("commands run                               6\n"), std::string::npos);
    EXPECT_EQ(Rows("SELECT count(*) FROM cupom_fiscal"), "1");
}

TEST_F(RunTest, FieldsAreCheckedBeforeTheCommandRuns)
{
    const ProgramResult result = RunTape(PROGRAMMING + R"({"cmd":"abre_cupom","nme":"x"})");
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err,
              "tape:3:21: abre_cupom has no field \"nme\"; its fields are cpf_cnpj, nome, "
              "endereco\n");
    EXPECT_EQ(Rows("SELECT count(*) FROM cupom_fiscal"), "0");
}

TEST_F(RunTest, TheFirstCommandSaysWhen)
{
    EXPECT_EQ(RunTape("{\"cmd\":\"configura\"}\n" + RECEIPT).err,
              "tape:2:1: the first command of a tape needs the field \"em\"\n");
}

TEST_F(RunTest, ConfiguraSetsTheBench)
{
    EXPECT_EQ(RunTape("{\"cmd\":\"configura\",\"aplicativo\":\"PDV 7\"}\n" + PROGRAMMING + RECEIPT)
                  .exitCode,
              0);
    EXPECT_EQ(Rows("SELECT texto_complementar FROM cupom_fiscal"), "PDV 7");
}

TEST_F(RunTest, ConfiguraTakesNoTime)
{
    const ProgramResult result = RunTape(R"({"cmd":"configura","em":"2026-03-02 07:50:00"})");
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "tape:1:20: configura takes no time, and no field \"em\"\n");
    EXPECT_EQ(RunTape(R"({"cmd":"configura","fim":"2026-03-02 07:50:00"})").err,
              "tape:1:20: configura takes no time, and no field \"fim\"\n");
}

TEST_F(RunTest, StandardInputIsATape)
{
    folder.Write("tape", PROGRAMMING + RECEIPT + "x");
    const ProgramResult result = Run("run - --db db <tape");
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err.substr(0, 7), "-:7:1: ");
    EXPECT_EQ(Rows("SELECT count(*) FROM cupom_fiscal"), "1");
}

TEST_F(RunTest, AnEmptyTapeIsATapeAndMakesNoDatabase)
{
    for (const char* blank : {"", "\n \t\r\n"}) {
        const ProgramResult result = RunTape(blank, "--memory memory");
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err,
                  "ecf-bancada: the tape tape holds no command: no database was made\n");
        for (const char* made : {"db", "db.log", "db.lock", "memory"}) {
            EXPECT_FALSE(folder.Has(made)) << made;
        }
    }
    EXPECT_EQ(Run("run - --db db").err,
              "ecf-bancada: the tape - holds no command: no database was made\n");
    EXPECT_FALSE(folder.Has("db"));
}

TEST_F(RunTest, AnEmptyTapeLeavesADatabaseAsItIs)
{
    ASSERT_EQ(RunTape(PROGRAMMING + RECEIPT).exitCode, 0);
    const ProgramResult result = RunTape("", "--append");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(Rows("SELECT count(*) FROM cupom_fiscal"), "1");
}

TEST_F(RunTest, LintListsAllFaultsAndMakesNothing)
{
    folder.Write("tape", PROGRAMMING + "not JSON\n" + R"({"cmd":"vende_itens"}
{"cmd":"vende_item","codigo":1,"descricao":"ARROZ","preco":"1.00","quantidade":"x"}
)" + RECEIPT);
    const ProgramResult result = Run("run tape --lint");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out,
              R"(tape:3:2: not JSON: syntax error while parsing value - invalid literal
tape:4:8: there is no command "vende_itens"
tape:5:30: field "codigo": a text is due, not an integer
tape:5:80: field "quantidade": a decimal text such as "1.500", of up to 12 digits and 3 decimals is due
tape:5:52: vende_item has no field "preco"; its fields are codigo, descricao, quantidade, unidade, valor_unitario, tributacao, indice, arredonda
tape:5:1: vende_item needs the field "valor_unitario"
tape:5:1: vende_item needs the field "tributacao"
tape:5:1: vende_item needs the field "indice"
9 commands, 8 faults
)");
    EXPECT_FALSE(folder.Has("db"));
    EXPECT_FALSE(folder.Has("tape.log"));
    folder.Write("tape", PROGRAMMING + RECEIPT);
    const ProgramResult good = Run("run tape --lint");
    EXPECT_EQ(good.exitCode, 0);
    EXPECT_EQ(good.out, "6 commands, 0 faults\n");
}

TEST_F(RunTest, LintTakesNoPlaceToWriteTo)
{
    folder.Write("tape", PROGRAMMING);
    for (const char* option : {"--db db", "--log log", "--memory memory", "--append"}) {
        EXPECT_EQ(Run("run tape --lint " + std::string(option)).exitCode, 2) << option;
    }
    EXPECT_FALSE(folder.Has("db"));
    EXPECT_THAT(Run("run tape --lint >>tape").err, HasSubstr("standard output"));
    EXPECT_EQ(folder.Read("tape"), PROGRAMMING);
    EXPECT_EQ(Run("run none --lint").err,
              "ecf-bancada: cannot read the tape none: No such file or directory\n");
    EXPECT_THAT(Run("run tape").err, HasSubstr("--db is required"));
}

TEST_F(RunTest, ATapeOfBinaryNoiseIsTold)
{
    std::string noise("\x7F"
                      "ELF\x02\x01\x01\x00\x00",
                      9);
    for (int i = 0; i < 5000; ++i) {
        noise += static_cast<char>(i * 7919 >> 3);
    }
    const ProgramResult result = RunTape(noise);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "tape:1:8: not JSON: a NUL byte\n");
}

TEST_F(RunTest, AMissingTapeLeavesNothingBehind)
{
    const ProgramResult result = Run("run tape --db db");
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "ecf-bancada: cannot read the tape tape: No such file or directory\n");
    EXPECT_FALSE(folder.Has("db"));
    EXPECT_FALSE(folder.Has("db.log"));
}

TEST_F(RunTest, AFolderIsNoTape)
{
    std::filesystem::create_directory(folder.File("tape"));
    const ProgramResult result = Run("run tape --db db");
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "ecf-bancada: cannot read the tape tape: Is a directory\n");
    EXPECT_FALSE(folder.Has("db"));
    EXPECT_FALSE(folder.Has("db.log"));
}

TEST_F(RunTest, ADatabaseThatHoldsRowsNeedsAppend)
{
    ASSERT_EQ(RunTape(PROGRAMMING + RECEIPT).exitCode, 0);
    ProgramResult result = RunTape(PROGRAMMING + RECEIPT);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "ecf-bancada: cannot use the database db: it already holds rows (table "
                          "cupom_fiscal); --append adds to them\n");
    EXPECT_EQ(Rows("SELECT count(*) FROM cupom_fiscal"), "1");
    EXPECT_EQ(RunTape(PROGRAMMING + RECEIPT, "--append").exitCode, 0);
    EXPECT_EQ(Rows("SELECT count(*) FROM cupom_fiscal"), "2");
}

TEST_F(RunTest, PlacesThatCannotBeWrittenAreTold)
{
    folder.Write("tape", PROGRAMMING);
    ProgramResult result = Run("run tape --db none/db");
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "ecf-bancada: cannot use the database none/db: unable to open database "
                          "file (No such file or directory)\n");
    result = Run("run tape --db db --log none/log");
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "ecf-bancada: cannot write the firmware log none/log: No such file or "
                          "directory\n");
}

TEST_F(RunTest, WhatIsNoLoggingDatabaseIsLeftAlone)
{
    folder.Write("db", std::string(3000, 'n'));
    const ProgramResult result = RunTape(PROGRAMMING);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "ecf-bancada: cannot use the database db: file is not a database\n");
    EXPECT_EQ(folder.Read("db"), std::string(3000, 'n'));
    EXPECT_FALSE(folder.Has("db.log"));
}

TEST_F(RunTest, ADatabaseOfAnotherProgramIsLeftAlone)
{
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(folder.File("db").c_str(), &db), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(db, "CREATE TABLE notes (text)", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(db);
    const ProgramResult result = RunTape(PROGRAMMING, "--append");
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "ecf-bancada: cannot use the database db: it is not a logging database: "
                          "it has no column cupom_fiscal.cont_coo\n");
}

TEST_F(RunTest, TapeDatabaseAndLogAreThreeFiles)
{
    folder.Write("tape", PROGRAMMING);
    EXPECT_EQ(Run("run tape --db tape").exitCode, 2);
    EXPECT_EQ(Run("run tape --db db --log db").exitCode, 2);
    const ProgramResult result = Run("run tape --db db --log ./tape");
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(folder.Read("tape"), PROGRAMMING);
}

TEST_F(RunTest, ALockedDatabaseDoesNotStopTheTape)
{
    ASSERT_EQ(RunTape("{\"cmd\":\"configura\"}").exitCode, 0);
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(folder.File("db").c_str(), &db), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    const ProgramResult result = RunTape(
        R"({"cmd":"insere_meio_pagamento","em":"2026-03-02 07:50:00","indice":1,"descricao":"DINHEIRO"})",
        "--strict");
    sqlite3_close(db);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.out.find("commands lost                              1\n"
                              "  tape:1 insere_meio_pagamento: database is locked\n"),
              std::string::npos)
        << result.out;
    EXPECT_NE(folder.Read("db.log").find("\tLogDatabase: the rows of this command are lost: "
                                         "database is locked\n"),
              std::string::npos);
}

TEST_F(RunTest, AFailingLogIsCountedAndDoesNotStopTheTape)
{
    const ProgramResult result = RunTape(
        R"({"cmd":"abre_cupom","em":"2026-03-02 07:50:00","nome":"D'ARC"})", "--log /dev/full");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_NE(result.out.find("firmware log: 2 of 2 records could not be written\n"),
              std::string::npos)
        << result.out;
}

TEST_F(RunTest, AReaderThatWentAwayIsNoError)
{
    folder.Write("tape", PROGRAMMING + RECEIPT);
    RunShell(
        folder,
        "{ sleep 0.2; " + ProgramInShell() +
            " run tape --db db; echo $? >code; } | true; while ! test -s code; do sleep 0.05; done");
    EXPECT_EQ(folder.Read("code"), "0\n");
    EXPECT_EQ(Rows("SELECT count(*) FROM cupom_fiscal"), "1");
}

TEST_F(RunTest, AFullStandardOutputIsAnError)
{
    folder.Write("tape", PROGRAMMING + RECEIPT);
    const ProgramResult result = Run("run tape --db db >/dev/full");
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "ecf-bancada: standard output could not be written\n");
    EXPECT_EQ(Rows("SELECT count(*) FROM cupom_fiscal"), "1");
}

TEST_F(RunTest, ClosedStandardFilesAreNotTakenByTheFilesOfTheRun)
{
    folder.Write("tape", PROGRAMMING + RECEIPT);
    EXPECT_EQ(Run("run tape --db db >&- 2>&- <&-").exitCode, 0);
    EXPECT_EQ(folder.Read("db.log"), "");
    EXPECT_EQ(Rows("PRAGMA integrity_check"), "ok");
}

TEST_F(RunTest, ProgressIsForTerminals)
{
    EXPECT_EQ(RunTape(PROGRAMMING + RECEIPT).err, "");
}

TEST_F(RunTest, HelpExplainsAndUsageErrorsAreUnusable)
{
    const ProgramResult help = Run("run --help");
    EXPECT_EQ(help.exitCode, 0);
    for (const char* word : {"TAPE", "--db", "--log", "--append", "--strict", "Exit codes"}) {
        EXPECT_NE(help.out.find(word), std::string::npos) << word;
    }
    EXPECT_EQ(Run("").exitCode, 2);
    EXPECT_EQ(Run("run").exitCode, 2);
    EXPECT_EQ(Run("run tape").exitCode, 2);
    EXPECT_EQ(Run("run tape --db db --no-such").exitCode, 2);
    EXPECT_EQ(Run("walk").exitCode, 2);
    EXPECT_EQ(Run("--version").out.substr(0, 12), "ecf-bancada ");
    EXPECT_EQ(Run("help-tape no_such").exitCode, 2);
    EXPECT_EQ(Run("help-tape --into none.md").exitCode, 2);
}

} // namespace

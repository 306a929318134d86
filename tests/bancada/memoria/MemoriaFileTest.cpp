// ecf-bancada run --memory: what a memory file may be, and what the run makes of it.
#include "tests/bancada/cli/RunFixture.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sqlite3.h>
#include <string>

using namespace bancada_test;

namespace
{

class MemoriaFileTest : public RunFixture
{
  protected:
    ProgramResult RunTape(const std::string& tape, const std::string& options = "")
    {
        return RunFixture::RunTape(tape, "--memory memory " + options);
    }

    // Runs with a memory that was written by hand. The message when it is refused.
    std::string Refusal(const std::string& memory)
    {
        folder.Write("memory", memory);
        const ProgramResult result = RunTape(PROGRAMMING);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(folder.Read("memory"), memory);
        EXPECT_FALSE(folder.Has("db"));
        EXPECT_FALSE(folder.Has("memory.tmp"));
        return result.err;
    }
    std::string RegisterRefusal(const std::string& fields)
    {
        return Refusal(R"({"formato":"ecf-bancada memoria","versao":1,"registro":{)" + fields +
                       "}}");
    }

    nlohmann::json Memory() { return nlohmann::json::parse(folder.Read("memory")); }

    void Execute(const std::string& sql)
    {
        sqlite3* db = nullptr;
        EXPECT_EQ(sqlite3_open(folder.File("db").c_str(), &db), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(db);
    }
};

TEST_F(MemoriaFileTest, TheRegisterGoesOnWithAnotherTape)
{
    EXPECT_EQ(RunTape(PROGRAMMING + OPENING).exitCode, 0);
    EXPECT_EQ(Memory()["registro"]["cupom"]["situacao"], "em_itens");
    folder.Write("second",
                 R"({"cmd":"efetua_pagamento","em":"2026-03-02 08:00:00","meio":1,"valor":"10"}
{"cmd":"fecha_cupom"}
)");
    const ProgramResult result =
        RunBancada(folder, "run second --db db --memory memory --replies --strict");
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out.substr(0, 65), "1 efetua_pagamento: executed\n"
                                        "2 fecha_cupom: executed\n"
                                        "commands run");
    EXPECT_EQ(Rows("SELECT valor_troco FROM cupom_fiscal"), "4");
    EXPECT_EQ(Memory()["registro"]["gt"], "6.00");
    EXPECT_EQ(Memory()["execucao"]["sequencia"], 6);
    EXPECT_EQ(Rows("PRAGMA user_version"), "6");
}

TEST_F(MemoriaFileTest, TheSameTapeGoesOnBehindWhatWasDone)
{
    EXPECT_EQ(RunTape(PROGRAMMING + OPENING).exitCode, 0);
    ProgramResult result = RunTape(PROGRAMMING + OPENING + CLOSING, "--replies");
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out.substr(0, 105), "5 efetua_pagamento: executed\n"
                                         "6 fecha_cupom: executed\n"
                                         "continued behind line 4\n"
                                         "commands run                ");
    EXPECT_EQ(Rows("SELECT data_hora_emissao FROM cupom_fiscal"), "2026-03-02 07:50:02");
    result = RunTape(PROGRAMMING + OPENING + CLOSING, "--replies");
    EXPECT_EQ(result.out.substr(0, 23), "continued behind line 6");
    EXPECT_EQ(Rows("SELECT count(*) FROM cupom_fiscal"), "1");
}

TEST_F(MemoriaFileTest, ATapeWhoseLastLineHadNoEndGrows)
{
    const std::string first = R"({"cmd":"leitura_x","em":"2026-03-02 07:50:00"})";
    EXPECT_EQ(RunTape(first).exitCode, 0);
    EXPECT_EQ(RunTape(first + "\n\n" + R"({"cmd":"leitura_mf"})", "--replies").out.substr(0, 23),
              "3 leitura_mf: executed\n");
    EXPECT_EQ(Rows("SELECT id_tipo_documento FROM outros_documentos"), "LX MF");
}

TEST_F(MemoriaFileTest, ATapeChangedBeforeThatPlaceIsAnotherTape)
{
    EXPECT_EQ(RunTape(R"({"cmd":"leitura_x","em":"2026-03-02 07:50:00"})").exitCode, 0);
    EXPECT_EQ(RunTape(R"({"cmd":"leitura_x","em":"2026-03-02 07:50:01"})").exitCode, 0);
    EXPECT_EQ(Rows("SELECT count(*) FROM outros_documentos"), "2");
}

TEST_F(MemoriaFileTest, APipeCannotBeReadAgainFromItsFirstLine)
{
    const std::string first = R"({"cmd":"leitura_x","em":"2026-03-02 07:50:00"})";
    EXPECT_EQ(RunTape(first + "\n").exitCode, 0);
    folder.Write("longer", first + "\n" + R"({"cmd":"leitura_mf"})");
    ProgramResult result = RunShell(folder, "cat longer | " + ProgramInShell() +
                                                " run - --db db --memory memory --replies");
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out.substr(0, 23), "2 leitura_mf: executed\n");
    result = RunShell(folder, "cat tape | " + ProgramInShell() + " run - --db db --memory memory");
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err,
              "ecf-bancada: cannot read the tape - from its first line: it is not the one that was "
              "read before, and a pipe is read once; give it as a file\n");
}

TEST_F(MemoriaFileTest, RefusedCommandsAndDirectivesAdvanceToo)
{
    const ProgramResult result = RunTape(R"({"cmd":"configura","aplicativo":"PDV 7"}
{"cmd":"fecha_cupom","em":"2026-03-02 07:50:00"}
{"cmd":"leitura_x"}
)",
                                         "--replies");
    EXPECT_NE(result.out.find("1 configura: executed\n2 fecha_cupom: refused: "), std::string::npos)
        << result.out;
    EXPECT_NE(result.out.find("\n3 leitura_x: executed\n"), std::string::npos) << result.out;
    EXPECT_EQ(Memory()["execucao"]["sequencia"], 1);
    EXPECT_EQ(Memory()["execucao"]["fita"]["linhas"], 3);
    EXPECT_EQ(Memory()["registro"]["aplicativo"], "PDV 7");
}

TEST_F(MemoriaFileTest, ARunThatStoppedAtAFaultGoesOnWhenItIsMended)
{
    EXPECT_EQ(RunTape(PROGRAMMING + OPENING + "{\"cmd\":\"efetua\"}\n").exitCode, 2);
    EXPECT_EQ(RunTape(PROGRAMMING + OPENING + CLOSING).exitCode, 0);
    EXPECT_EQ(Rows("SELECT valor_troco FROM cupom_fiscal"), "4");
    EXPECT_EQ(Rows("SELECT count(*) FROM item_cupom_fiscal"), "1");
}

TEST_F(MemoriaFileTest, AMemoryWrittenByHandStartsInTheMiddleOfALife)
{
    folder.Write("memory", R"({
        "formato": "ecf-bancada memoria",
        "versao": 1,
        "registro": {
            "contadores": {"coo": 999998, "ccf": 120000, "crz": 400, "cro": 2},
            "gt": "1234567.89", "gt_ultima_rz": "1234567.89",
            "fiscal": {"icms": {"totalizadores": {"T1": {"programado": true, "aliquota": "18.00"}}}},
            "meios": {"1": {"descricao": "DINHEIRO", "vinculacao": "sem_ccd"}},
            "ecf": {"sequencia": 3}
        }
    })");
    const ProgramResult result = RunTape(R"({"cmd":"leitura_x","em":"2026-03-02 07:50:00"})"
                                         "\n" +
                                             OPENING + CLOSING + R"({"cmd":"reducao_z"})",
                                         "--strict");
    EXPECT_EQ(result.exitCode, 0) << result.out << result.err;
    EXPECT_EQ(Rows("SELECT cont_coo || ':' || cont_ccf FROM cupom_fiscal"), "1:120001");
    EXPECT_EQ(Memory()["registro"]["gt"], "1234573.89");
    EXPECT_EQ(Rows("SELECT cont_crz FROM reducao_z"), "401");
}

TEST_F(MemoriaFileTest, LineBreaksBetweenTheFieldsAreNoDamage)
{
    EXPECT_EQ(RunTape(PROGRAMMING + R"({"cmd":"abre_cupom","nome":"JOSÉ"})" + "\n").exitCode, 0);
    folder.Write("memory", Memory().dump(4));
    EXPECT_EQ(RunTape(PROGRAMMING).exitCode, 0);
}

TEST_F(MemoriaFileTest, EveryDamagedByteIsNoticed)
{
    EXPECT_EQ(RunTape(PROGRAMMING + OPENING).exitCode, 0);
    const std::string memory = folder.Read("memory");
    const std::size_t length = memory.size() - 1; // the line's end is no content
    for (std::size_t at = 0; at < length; at += 61) {
        std::string damaged = memory;
        damaged[at] = static_cast<char>(damaged[at] ^ 1);
        folder.Write("memory", damaged);
        const ProgramResult result = RunTape(PROGRAMMING);
        EXPECT_EQ(result.exitCode, 2) << at;
        EXPECT_NE(result.err.find("cannot use the memory memory: "), std::string::npos)
            << at << result.err;
        EXPECT_EQ(folder.Read("memory"), damaged) << at;
    }
}

TEST_F(MemoriaFileTest, ATruncatedFileIsRefusedWithItsPlace)
{
    EXPECT_EQ(Refusal(R"({"formato":"ecf-bancada memoria","ver)"),
              "ecf-bancada: cannot use the memory memory: it is damaged, or not JSON: parse error "
              "at line 1, column 38: syntax error while parsing object key - invalid string: "
              "missing closing quote; last read: '\"ver'; expected string literal\n");
    EXPECT_NE(Refusal("").find("it is damaged, or not JSON: "), std::string::npos);
}

TEST_F(MemoriaFileTest, ForeignNewerAndUnknownContentIsRefused)
{
    const std::string head = "ecf-bancada: cannot use the memory memory: ";
    EXPECT_EQ(Refusal("[1]"),
              head +
                  "it is no memory of this program: \"formato\" is not \"ecf-bancada memoria\"\n");
    EXPECT_EQ(Refusal(R"({"formato":"ecf-bancada memoria"})"), head + "versao: it is missing\n");
    EXPECT_EQ(Refusal(R"({"formato":"ecf-bancada memoria","versao":3,"more":1})"),
              head + "versao: 3 was written by a newer program; this one reads versions 1 to 2\n");
    EXPECT_EQ(Refusal(R"({"formato":"ecf-bancada memoria","versao":0})"),
              head + "versao: it is not a number from 1 to 2\n");
    EXPECT_EQ(Refusal(R"({"formato":"ecf-bancada memoria","versao":"2"})"),
              head + "versao: it is not a number from 1 to 2\n");
    EXPECT_EQ(Refusal(R"({"formato":"ecf-bancada memoria","versao":1,"more":1})"),
              head + "more: there is no such field\n");
    EXPECT_EQ(Refusal(R"({"formato":"ecf-bancada memoria","versao":1,"versao":1})"),
              head + "the field \"versao\" comes twice\n");
    EXPECT_EQ(
        Refusal(R"({"formato":"ecf-bancada memoria","versao":1,"digest":"00","registro":{}})"),
        head + "digest: the file is damaged: the digest is not that of its content (whoever edits "
               "it takes the field out)\n");
}

TEST_F(MemoriaFileTest, ValuesOutOfRangeAreRefusedWithTheirPlace)
{
    const std::string head = "ecf-bancada: cannot use the memory memory: registro.";
    EXPECT_EQ(RegisterRefusal(R"("contadores":{"coo":1000000})"),
              head + "contadores.coo: an integer from 0 to 999999 is due\n");
    EXPECT_EQ(RegisterRefusal(R"("contadores":{"coo":18446744073709551615})"),
              head + "contadores.coo: an integer from 0 to 999999 is due\n");
    EXPECT_EQ(RegisterRefusal(R"("contadores":{"coo":1.0})"),
              head + "contadores.coo: an integer from 0 to 999999 is due\n");
    EXPECT_EQ(RegisterRefusal(R"("contadores":{"ccoo":1})"),
              head + "contadores.ccoo: there is no such field\n");
    EXPECT_EQ(RegisterRefusal(R"("gt":12.5)"),
              head + "gt: money, a decimal text such as \"12.50\", is due\n");
    EXPECT_EQ(RegisterRefusal(R"("gt":"-1.00")"),
              head + "gt: money, a decimal text such as \"12.50\", is due\n");
    EXPECT_EQ(RegisterRefusal(R"("gt_inicial":"0.01")"), head + "gt_inicial: it is more than gt\n");
    EXPECT_EQ(
        RegisterRefusal(R"("fiscal":{"icms":{"totalizadores":{"T1":{"aliquota":"100.00"}}}})"),
        head + "fiscal.icms.totalizadores.T1.aliquota: a decimal text with up to 2 digits "
               "and 2 decimals is due\n");
    EXPECT_EQ(RegisterRefusal(R"("fiscal":{"icms":{"totalizadores":{"T31":{}}}})"),
              head + "fiscal.icms.totalizadores.T31: there is no such field\n");
    EXPECT_EQ(RegisterRefusal(R"("fiscal":{"icms":{"totalizadores":{"F1":{"aliquota":"1.00"}}}})"),
              head + "fiscal.icms.totalizadores.F1.aliquota: there is no such field\n");
    EXPECT_EQ(RegisterRefusal(R"("modo":"off")"),
              head + "modo: \"nenhum\" or \"mil\" or \"mit\" is due\n");
    EXPECT_EQ(RegisterRefusal(R"("data_fechada":"2026-02-30 00:00:00")"),
              head +
                  "data_fechada: an instant \"YYYY-MM-DD hh:mm:ss\", or \"\" for none, is due\n");
    EXPECT_EQ(RegisterRefusal(R"("ratear_subtotal":1)"),
              head + "ratear_subtotal: true or false is due\n");
    EXPECT_EQ(RegisterRefusal(R"("aplicativo":"a\u0000")"),
              head + "aplicativo: a text has no NUL\n");
    EXPECT_EQ(RegisterRefusal(R"("cupom":{"itens":[{},{"posicao":39}]})"),
              head + "cupom.itens[2].posicao: an integer from 0 to 38 is due\n");
    EXPECT_EQ(RegisterRefusal(R"("cupom":{"assinatura":"0g"})"),
              head + "cupom.assinatura: 64 hexadecimal digits are due\n");
    EXPECT_EQ(
        RegisterRefusal(
            R"("cupom":{"situacao":"em_itens","abertura":"2026-03-02 08:00:00","itens":[{}]})"),
        head + "cupom.itens_vivos: it is the number of the items that are not cancelled\n");
}

TEST_F(MemoriaFileTest, MemoryAndDatabaseThatDoNotBelongTogetherAreRefused)
{
    EXPECT_EQ(RunTape(PROGRAMMING + OPENING).exitCode, 0);
    const std::string memory = folder.Read("memory");
    Execute("PRAGMA user_version = 7");
    ProgramResult result = RunTape(PROGRAMMING + OPENING + CLOSING);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_NE(result.err.find("and the database db do not belong together: the memory needs a "
                              "database at command 4, this one is at 7\n"),
              std::string::npos)
        << result.err;
    EXPECT_EQ(Rows("SELECT count(*) FROM pagamento_cupom"), "0");

    std::filesystem::remove(folder.File("db"));
    result = RunTape(PROGRAMMING + OPENING + CLOSING);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_NE(result.err.find("at command 4, this one is at 0\n"), std::string::npos) << result.err;
    EXPECT_FALSE(folder.Has("db"));
    EXPECT_EQ(folder.Read("memory"), memory);
}

TEST_F(MemoriaFileTest, ALinkStaysALinkAndTheModeStays)
{
    std::filesystem::create_directory(folder.File("kept"));
    std::filesystem::create_symlink("kept/m", folder.File("memory")); // to none so far
    EXPECT_EQ(RunTape(PROGRAMMING).exitCode, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(folder.File("memory")));
    EXPECT_TRUE(folder.Has("kept/m"));
    EXPECT_FALSE(folder.Has("memory.tmp"));

    using std::filesystem::perms;
    const perms owner = perms::owner_read | perms::owner_write;
    std::filesystem::permissions(folder.File("kept/m"), owner);
    EXPECT_EQ(RunTape(PROGRAMMING + OPENING).exitCode, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(folder.File("memory")));
    EXPECT_EQ(std::filesystem::status(folder.File("kept/m")).permissions(), owner);
    EXPECT_EQ(Memory()["registro"]["cupom"]["situacao"], "em_itens");
}

TEST_F(MemoriaFileTest, ANewMemoryTakesADatabaseWithRowsOnlyToAppend)
{
    EXPECT_EQ(RunTape(PROGRAMMING).exitCode, 0);
    std::filesystem::remove(folder.File("memory"));
    EXPECT_EQ(RunTape(PROGRAMMING).exitCode, 2);
    EXPECT_FALSE(folder.Has("memory"));
    EXPECT_EQ(RunTape(PROGRAMMING, "--append").exitCode, 0);
    EXPECT_EQ(Memory()["execucao"]["sequencia"], 4); // the numbers go on
}

// A crash between the memory and COMMIT, and one between COMMIT and the reply, look alike in the
// memory; the database tells.
TEST_F(MemoriaFileTest, ThePendingCommandIsRunAgainUnlessTheDatabaseHasIt)
{
    EXPECT_EQ(RunTape(PROGRAMMING + OPENING).exitCode, 0);
    nlohmann::json before = Memory();
    EXPECT_EQ(RunTape(PROGRAMMING + OPENING + CLOSING).exitCode, 0);
    const std::string after = folder.Read("memory");

    EXPECT_EQ(RunTape(PROGRAMMING + OPENING).exitCode, 0);
    nlohmann::json pending = nlohmann::json::parse(after);
    pending.erase("digest");
    pending["execucao"]["sequencia"] = 5;
    pending["execucao"]["confirmada"] = 4;
    pending["antes"] = {{"registro", before["registro"]}, {"execucao", before["execucao"]}};
    folder.Write("memory", pending.dump());
    Execute("PRAGMA user_version = 5");
    EXPECT_EQ(RunTape(PROGRAMMING + OPENING + CLOSING, "--replies").out.substr(0, 23),
              "continued behind line 6");
    folder.Write("memory", pending.dump());
    Execute("PRAGMA user_version = 4");
    EXPECT_EQ(RunTape(PROGRAMMING + OPENING + CLOSING, "--replies").out.substr(0, 29),
              "5 efetua_pagamento: executed\n");
    folder.Write("memory", pending.dump());
    Execute("PRAGMA user_version = 3");
    const ProgramResult result = RunTape(PROGRAMMING + OPENING + CLOSING);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_NE(result.err.find("at command 4 to 5, this one is at 3\n"), std::string::npos)
        << result.err;
}

// An acknowledged command is not run again, though the database never got it.
TEST_F(MemoriaFileTest, ALostCommandIsRememberedAsDone)
{
    EXPECT_EQ(RunTape(PROGRAMMING).exitCode, 0);
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(folder.File("db").c_str(), &other), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    const std::string x = R"({"cmd":"leitura_x"})"
                          "\n";
    const std::string rate =
        R"({"cmd":"insere_aliquota","tributacao":"T","indice":2,"percentual":"7.00"})"
        "\n";
    ProgramResult result = RunTape(PROGRAMMING + x + rate, "--replies");
    sqlite3_close(other);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(
        result.out.substr(0, 81),
        "3 leitura_x: executed, rows lost: database is locked\n4 insere_aliquota: executed\n");
    EXPECT_EQ(Memory()["execucao"]["sequencia"], 4);
    EXPECT_EQ(Memory()["execucao"]["confirmada"], 2);
    EXPECT_EQ(Memory()["execucao"]["perdidos"], 1);

    result = RunTape(PROGRAMMING + x + rate + x, "--replies");
    EXPECT_EQ(result.out.substr(0, 22), "5 leitura_x: executed\n");
    EXPECT_NE(result.out.find("commands lost since the memory began: 1; the last: "
                              "line 3, leitura_x: database is locked\n"),
              std::string::npos)
        << result.out;
    EXPECT_EQ(Rows("SELECT cont_coo FROM outros_documentos"), "2");
    EXPECT_EQ(Rows("PRAGMA user_version"), "5");
}

TEST_F(MemoriaFileTest, AMemoryThatCannotBeWrittenStopsTheRun)
{
    const ProgramResult result = [this] {
        folder.Write("tape", PROGRAMMING);
        return RunBancada(folder, "run tape --db db --memory missing/memory");
    }();
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err,
              "ecf-bancada: cannot write missing/memory.tmp: No such file or directory\n");
    EXPECT_EQ(RunBancada(folder, "run tape --db db --memory db").err,
              "ecf-bancada: db cannot be two of tape, database, firmware log and memory\n");
}

TEST_F(MemoriaFileTest, AMemoryBehindALinkStaysThere)
{
    folder.Write("real", R"({"formato":"ecf-bancada memoria","versao":1})");
    std::filesystem::create_symlink("real", folder.File("memory"));
    EXPECT_EQ(RunTape(PROGRAMMING).exitCode, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(folder.File("memory")));
    EXPECT_NE(folder.Read("real").find("\"sequencia\":2"), std::string::npos);
}

} // namespace

// The programs that read a logging database, put before the same rows and the same files: what one
// of them makes of a database the other makes of it too.
#include "bancada/leitura/DatabaseReading.h"

#include "tests/bancada/BancadaProgram.h"
#include "tests/bancada/leitura/Sample.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <string>
#include <unistd.h>

namespace bancada
{
namespace
{

using ::testing::AnyOf;
using ::testing::HasSubstr;
using ::testing::Not;

class Tools : public leitura_test::Sample, public ::testing::WithParamInterface<const char*>
{
  protected:
    bancada_test::ProgramResult Read(const std::string& path) const
    {
        return bancada_test::RunBancada(m_place, std::string(GetParam()) + ' ' + path);
    }

    // As a user who may write nothing: the system's own, where the test runs as root.
    bancada_test::ProgramResult ReadAsOrdinaryUser() const
    {
        const std::string user =
            geteuid() == 0 ? "setpriv --reuid 65534 --regid 65534 --clear-groups " : "";
        return bancada_test::RunShell(m_place, user + bancada_test::ProgramInShell() + ' ' +
                                                   GetParam() + ' ' + Path());
    }

    // A receipt that is whole: one item, paid, closed and filed under a Z that is open.
    void WriteReceipt() const
    {
        Execute("INSERT INTO cupom_fiscal VALUES (7, 1, 1, '2024-03-15 09:12:44', '', 'Ana', ',',"
                " 'c2ln', 5, 5, 'V', 0, 'V', 0, 0, 0, ' ', 'N', 'N', 0, 0, ' ', ' ');"
                "INSERT INTO item_cupom_fiscal VALUES (1, 7, '1', 'Pao', 1, '01T18.00', 'UN', 5,"
                " 'V', 0, 'V', 0, 0, 5, 0, 2, 'T', 'N', 0, 0);"
                "INSERT INTO pagamento_cupom VALUES (7, 0, 5, 1, '', 1, 'N', 0);");
    }

    void MakeReadOnly() const
    {
        for (const auto& entry : std::filesystem::directory_iterator(Folder().File("."))) {
            std::filesystem::permissions(entry.path(), std::filesystem::perms(0444));
        }
        std::filesystem::permissions(Folder().File("."), std::filesystem::perms(0555));
    }
    void TearDown() override
    {
        std::filesystem::permissions(Folder().File("."), std::filesystem::perms(0755));
    }

  private:
    // Where the program runs and its output goes.
    test_support::TempFolder m_place;
};

// A value in place of another, and what stands there for a person.
struct HostileValue {
    const char* column;
    const char* literal;
    const char* shown;
};

constexpr HostileValue HOSTILE[] = {
    {"valor_total", "NULL", "NULL"},
    {"valor_total", "'abc'", "abc"},
    {"valor_total", "9223372036854775807", "9223372036854775807"},
    {"valor_total", "x'00FF'", "X'00FF'"},
    {"cont_ccf", "NULL", "NULL"},
    {"cont_ccf", "'12x'", "12x"},
    {"cont_ccf", "9223372036854775807", "9223372036854775807"},
    {"cont_crz", "'12x'", "12x"},
    {"id_cancelado", "NULL", "NULL"},
    {"id_cancelado", "'X'", "X"},
    {"data_hora_emissao", "NULL", "NULL"},
    // A NUL and a byte that is no UTF-8, each of them one replacement character.
    {"data_hora_emissao", "CAST(x'610062' AS TEXT)",
     "a\xEF\xBF\xBD"
     "b"},
    {"data_hora_emissao", "CAST(x'61FF62' AS TEXT)",
     "a\xEF\xBF\xBD"
     "b"},
};

// A reconciliation tells of the values that disagree with others: here of the total alone.
bool Tells(const std::string& tool, const HostileValue& value)
{
    return tool == "show" || std::string(value.column) == "valor_total";
}

TEST_P(Tools, AHostileValueIsToldAsWhatItIs)
{
    for (const HostileValue& value : HOSTILE) {
        SCOPED_TRACE(std::string(value.column) + " = " + value.literal);
        Execute("DELETE FROM cupom_fiscal; DELETE FROM item_cupom_fiscal; DELETE FROM"
                " pagamento_cupom");
        WriteReceipt();
        Execute(std::string("UPDATE cupom_fiscal SET ") + value.column + " = " + value.literal);
        const bancada_test::ProgramResult read = Read(Path());
        EXPECT_THAT(read.exitCode, AnyOf(0, 1));
        EXPECT_EQ(read.err, "");
        if (Tells(GetParam(), value)) {
            EXPECT_THAT(read.out, HasSubstr(value.shown));
        }
        EXPECT_THAT(read.out, Not(HasSubstr(std::string(1, '\0'))));
    }
}

TEST_P(Tools, ReadingLeavesNothingBehind)
{
    Execute("PRAGMA journal_mode = WAL");
    WriteReceipt();
    const auto before = Files();
    EXPECT_THAT(Read(Path()).exitCode, AnyOf(0, 1));
    EXPECT_EQ(Files(), before);
}

TEST_P(Tools, AFolderThatCannotBeWrittenIsRead)
{
    Execute("PRAGMA journal_mode = WAL");
    WriteReceipt();
    const bancada_test::ProgramResult writable = Read(Path());
    const auto before = Files();
    MakeReadOnly();
    const bancada_test::ProgramResult read = ReadAsOrdinaryUser();
    EXPECT_EQ(read.exitCode, writable.exitCode) << read.err;
    EXPECT_EQ(read.out, writable.out);
    EXPECT_EQ(read.err, "");
    EXPECT_EQ(Files(), before);
}

TEST_P(Tools, WhatCannotBeReadIsNamed)
{
    const std::string folder = Folder().File(".");
    EXPECT_EQ(Read(Path()).err, "ecf-bancada: " + Path() + ": no such file\n");
    EXPECT_EQ(Read(folder).err, "ecf-bancada: " + folder + ": is a directory\n");
    Execute("DROP TABLE versao_sb");
    const bancada_test::ProgramResult read = Read(Path());
    EXPECT_EQ(read.exitCode, 2);
    EXPECT_EQ(read.err,
              "ecf-bancada: " + Path() + ": not a logging database (no such table: versao_sb)\n");
}

INSTANTIATE_TEST_SUITE_P(Each, Tools, ::testing::Values("show", "check"),
                         [](const auto& tool) { return std::string(tool.param); });

} // namespace
} // namespace bancada

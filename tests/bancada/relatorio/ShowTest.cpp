// Databases that cannot be read and places that cannot be written.
#include <string>

#include <gmock/gmock.h>
#include <unistd.h>

#include "tests/bancada/relatorio/ShowTest.h"

namespace bancada::show_test
{
namespace
{

using ::testing::HasSubstr;
using ::testing::StartsWith;

using ShowFaults = Sample;

TEST_F(ShowFaults, AMissingFileIsNotMade)
{
    RunShow({});
    EXPECT_EQ(result, UNUSABLE);
    EXPECT_EQ(error, Database() + ": no such file");
    EXPECT_FALSE(std::filesystem::exists(Database()));
}

TEST_F(ShowFaults, AFolder)
{
    ShowOptions options;
    options.databases = {File(".")};
    RunShow(options);
    EXPECT_EQ(result, UNUSABLE);
    EXPECT_EQ(error, options.databases.front() + ": is a directory");
}

TEST_F(ShowFaults, AFileThatIsNoDatabase)
{
    std::ofstream(Database()) << "this is a text of more than a hundred bytes, so that it is long "
                                 "enough to be taken for the header of a database file.\n";
    RunShow({});
    EXPECT_EQ(result, UNUSABLE);
    EXPECT_EQ(error, Database() + ": file is not a database");
}

TEST_F(ShowFaults, AnEmptyFile)
{
    std::ofstream(Database()).flush();
    RunShow({});
    EXPECT_EQ(result, UNUSABLE);
    EXPECT_THAT(error, StartsWith(Database() + ": not a logging database (no such table: "));
}

TEST_F(ShowFaults, ADatabaseOfAnotherProgram)
{
    Write("DROP TABLE totalizador_reducao");
    RunShow({});
    EXPECT_EQ(result, UNUSABLE);
    EXPECT_EQ(error, Database() + ": not a logging database (no such table: totalizador_reducao)");
}

TEST_F(ShowFaults, EveryTableAndColumnThatIsShownIsAskedForFirst)
{
    Write("ALTER TABLE item_cupom_nf DROP COLUMN perc_desconto");
    RunShow({});
    EXPECT_EQ(result, UNUSABLE);
    EXPECT_EQ(error, Database() + ": not a logging database (no such column: perc_desconto)");
}

TEST_F(ShowFaults, ADamagedDatabase)
{
    WriteSample();
    // Every page but the first, which holds the schema's root.
    std::fstream file(Database(), std::ios::in | std::ios::out | std::ios::binary);
    const auto size = std::filesystem::file_size(Database());
    ASSERT_GT(size, 4096U);
    file.seekp(4096);
    file << std::string(static_cast<std::size_t>(size) - 4096, '\xFF');
    file.close();
    RunShow({});
    EXPECT_EQ(result, UNUSABLE);
    EXPECT_THAT(error, HasSubstr("database disk image is malformed"));
}

TEST_F(ShowFaults, ALogThatIsNotThere)
{
    WriteSample();
    ShowOptions options;
    options.log = File("missing.log");
    RunShow(options);
    EXPECT_EQ(result, UNUSABLE);
    EXPECT_THAT(error, HasSubstr(options.log));
}

TEST_F(ShowFaults, ShowingChangesNothing)
{
    WriteSample();
    const std::string before = ReadFile(Database());
    RunShow({});
    ShowOptions options;
    options.html = true;
    RunShow(options);
    EXPECT_EQ(result, SHOWN);
    EXPECT_TRUE(ReadFile(Database()) == before);
}

TEST_F(ShowFaults, ADatabaseThatTheRegisterHasOpenIsShownAsItWasLast)
{
    Write("PRAGMA user_version = 0");
    sqlite3* writer = nullptr;
    ASSERT_EQ(sqlite3_open(Database().c_str(), &writer), SQLITE_OK);
    const auto execute = [writer](const char* sql) {
        ASSERT_EQ(sqlite3_exec(writer, sql, nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(writer);
    };
    execute("PRAGMA journal_mode = WAL");
    execute("INSERT INTO cupom_fiscal (cont_coo, cont_ccf, cont_crz, valor_total, id_cancelado,"
            " assinatura_documento, data_hora_emissao)"
            " VALUES (5, 0, 1, 7.25, 'N', 'x', '2024-03-15 10:00:00')");
    execute("BEGIN IMMEDIATE; INSERT INTO cupom_fiscal (cont_coo, cont_crz) VALUES (6, 1)");
    RunShow({});
    EXPECT_EQ(result, SHOWN) << error;
    EXPECT_EQ(text, "Z 0001  not closed\n"
                    "  000005  15/03/2024 10:00:00  CUPOM FISCAL                   CCF 000000"
                    "            7,25\n");
    execute("COMMIT");
    sqlite3_close(writer);
}

TEST_F(ShowFaults, ACooThatIsNotThere)
{
    WriteSample();
    ShowCoo(999);
    EXPECT_EQ(result, NOT_THERE);
    EXPECT_EQ(text, "");
    EXPECT_EQ(error, Database() + ": no document has the COO 999\n");
}

TEST_F(ShowFaults, AReductionThatIsNotThere)
{
    WriteSample();
    ShowCrz(9);
    EXPECT_EQ(result, NOT_THERE);
    EXPECT_EQ(error, Database() + ": there is no Z reduction 9\n");
    ShowCrz(2);
    EXPECT_EQ(result, NOT_THERE);
    EXPECT_EQ(error, Database() + ": there is no Z reduction 2 (1 receipt waits for it)\n");
    EXPECT_EQ(text, "");
}

} // namespace
} // namespace bancada::show_test

// Databases that cannot be read and places that cannot be written.
#include <string>

#include <gmock/gmock.h>
#include <unistd.h>

#include "tests/bancada/show_Amostra.h"

namespace bancada::show_test
{
namespace
{

using ::testing::HasSubstr;
using ::testing::StartsWith;

using ShowErros = Amostra;

TEST_F(ShowErros, AMissingFileIsNotMade)
{
    Mostra({});
    EXPECT_EQ(resultado, UNUSABLE);
    EXPECT_EQ(erro, Banco() + ": no such file");
    EXPECT_FALSE(std::filesystem::exists(Banco()));
}

TEST_F(ShowErros, AFolder)
{
    ShowOptions options;
    options.database = Caminho(".");
    Mostra(options);
    EXPECT_EQ(resultado, UNUSABLE);
    EXPECT_EQ(erro, options.database + ": is a directory");
}

TEST_F(ShowErros, AFileThatIsNoDatabase)
{
    std::ofstream(Banco()) << "this is a text of more than a hundred bytes, so that it is long "
                              "enough to be taken for the header of a database file.\n";
    Mostra({});
    EXPECT_EQ(resultado, UNUSABLE);
    EXPECT_EQ(erro, Banco() + ": file is not a database");
}

TEST_F(ShowErros, AnEmptyFile)
{
    std::ofstream(Banco()).flush();
    Mostra({});
    EXPECT_EQ(resultado, UNUSABLE);
    EXPECT_THAT(erro, StartsWith(Banco() + ": not a logging database (no such table: "));
}

TEST_F(ShowErros, ADatabaseOfAnotherProgram)
{
    Grava("DROP TABLE totalizador_reducao");
    Mostra({});
    EXPECT_EQ(resultado, UNUSABLE);
    EXPECT_EQ(erro, Banco() + ": not a logging database (no such table: totalizador_reducao)");
}

TEST_F(ShowErros, EveryTableAndColumnThatIsShownIsAskedForFirst)
{
    Grava("ALTER TABLE item_cupom_nf DROP COLUMN perc_desconto");
    Mostra({});
    EXPECT_EQ(resultado, UNUSABLE);
    EXPECT_EQ(erro, Banco() + ": not a logging database (no such column: perc_desconto)");
}

TEST_F(ShowErros, ADamagedDatabase)
{
    GravaAmostra();
    // Every page but the first, which holds the schema's root.
    std::fstream arquivo(Banco(), std::ios::in | std::ios::out | std::ios::binary);
    const auto tamanho = std::filesystem::file_size(Banco());
    ASSERT_GT(tamanho, 4096U);
    arquivo.seekp(4096);
    arquivo << std::string(static_cast<std::size_t>(tamanho) - 4096, '\xFF');
    arquivo.close();
    Mostra({});
    EXPECT_EQ(resultado, UNUSABLE);
    EXPECT_THAT(erro, HasSubstr("database disk image is malformed"));
}

TEST_F(ShowErros, APlaceThatCannotBeWritten)
{
    GravaAmostra();
    ShowOptions options;
    options.html = Caminho("no/such/folder/pagina.html");
    Mostra(options);
    EXPECT_EQ(resultado, UNUSABLE);
    EXPECT_EQ(erro, options.html + ": cannot be written");
}

TEST_F(ShowErros, APageOnAFullDisk)
{
    GravaAmostra();
    ShowOptions options;
    options.html = "/dev/full";
    Mostra(options);
    EXPECT_EQ(resultado, UNUSABLE);
    EXPECT_EQ(erro, "/dev/full: cannot be written");
}

TEST_F(ShowErros, ALogThatIsNotThere)
{
    GravaAmostra();
    ShowOptions options;
    options.log = Caminho("missing.log");
    Mostra(options);
    EXPECT_EQ(resultado, UNUSABLE);
    EXPECT_THAT(erro, HasSubstr(options.log));
}

TEST_F(ShowErros, ShowingChangesNothing)
{
    GravaAmostra();
    const std::string antes = Le(Banco());
    Mostra({});
    ShowOptions options;
    options.html = Caminho("pagina.html");
    Mostra(options);
    EXPECT_EQ(resultado, SHOWN);
    EXPECT_TRUE(Le(Banco()) == antes);
}

TEST_F(ShowErros, ADatabaseThatTheRegisterHasOpenIsShownAsItWasLast)
{
    Grava("PRAGMA user_version = 0");
    sqlite3* registro = nullptr;
    ASSERT_EQ(sqlite3_open(Banco().c_str(), &registro), SQLITE_OK);
    const auto executa = [registro](const char* sql) {
        ASSERT_EQ(sqlite3_exec(registro, sql, nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(registro);
    };
    executa("PRAGMA journal_mode = WAL");
    executa("INSERT INTO cupom_fiscal (cont_coo, cont_crz, valor_total, assinatura_documento,"
            " data_hora_emissao) VALUES (5, 1, 7.25, 'x', '2024-03-15 10:00:00')");
    executa("BEGIN IMMEDIATE; INSERT INTO cupom_fiscal (cont_coo, cont_crz) VALUES (6, 1)");
    Mostra({});
    EXPECT_EQ(resultado, SHOWN) << erro;
    EXPECT_EQ(texto, "Z 0001  not closed\n"
                     "  000005  15/03/2024 10:00:00  CUPOM FISCAL                   CCF 000000"
                     "            7,25\n");
    executa("COMMIT");
    sqlite3_close(registro);
}

} // namespace
} // namespace bancada::show_test

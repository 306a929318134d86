// Whether two databases hold the same.
#include "bancada/copia/CompareContent.h"

#include "tests/bancada/leitura/Sample.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace bancada::copia
{
namespace
{

using leitura::DatabaseReading;
using testing::HasSubstr;

class CompareContentTest : public leitura_test::Sample
{
  protected:
    void SetUp() override
    {
        Execute("INSERT INTO cupom_fiscal (cont_coo, valor_total, nome_consumidor)"
                " VALUES (1, 12.5, 'ANA'), (2, 3, X'00'), (3, 9e999, NULL);"
                "INSERT INTO dados_ecf (num_ecf) VALUES (1);"
                "CREATE TABLE without (a PRIMARY KEY, b) WITHOUT ROWID;"
                "INSERT INTO without VALUES ('k', 1);"
                "CREATE TABLE \"odd \"\" name\" (x); INSERT INTO \"odd \"\" name\" VALUES (1)");
    }

    // What is told of the sample and a copy of it on which `sql` was run.
    Comparison After(const std::string& sql) const
    {
        const std::string other = Folder().File("other.db");
        std::filesystem::copy_file(Path(), other,
                                   std::filesystem::copy_options::overwrite_existing);
        sqlite3* db = nullptr;
        EXPECT_EQ(sqlite3_open(other.c_str(), &db), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(db);
        sqlite3_close(db);
        return CompareContent(DatabaseReading(Path()), DatabaseReading(other));
    }
};

TEST_F(CompareContentTest, TheSameIsTheSame)
{
    const Comparison same = After("");
    EXPECT_EQ(same.difference, "");
    EXPECT_EQ(same.unreadable, "");
    EXPECT_EQ(same.rows, 6);
    EXPECT_GE(same.tables, 10);
    EXPECT_THAT(After("VACUUM").difference, HasSubstr("the schema, row")); // where each table lies
}

TEST_F(CompareContentTest, OneChangeIsFound)
{
    EXPECT_EQ(
        After("UPDATE cupom_fiscal SET nome_consumidor = 'ANB' WHERE cont_coo = 1").difference,
        "the table cupom_fiscal, row 1");
    EXPECT_EQ(
        After("UPDATE cupom_fiscal SET nome_consumidor = X'414E41' WHERE cont_coo = 1").difference,
        "the table cupom_fiscal, row 1");
    EXPECT_EQ(
        After("UPDATE cupom_fiscal SET nome_consumidor = X'01' WHERE cont_coo = 2").difference,
        "the table cupom_fiscal, row 2");
    EXPECT_EQ(
        After("UPDATE cupom_fiscal SET nome_consumidor = X'0000' WHERE cont_coo = 2").difference,
        "the table cupom_fiscal, row 2");
    EXPECT_EQ(After("UPDATE cupom_fiscal SET valor_total = 12.500000000000002 WHERE cont_coo = 1")
                  .difference,
              "the table cupom_fiscal, row 1");
    EXPECT_EQ(After("UPDATE cupom_fiscal SET valor_total = 4 WHERE cont_coo = 2").difference,
              "the table cupom_fiscal, row 2");
    EXPECT_EQ(After("UPDATE cupom_fiscal SET nome_consumidor = '' WHERE cont_coo = 3").difference,
              "the table cupom_fiscal, row 3");
    EXPECT_EQ(After("UPDATE cupom_fiscal SET rowid = 9 WHERE rowid = 3").difference,
              "the table cupom_fiscal, row 3");
    EXPECT_EQ(After("DELETE FROM cupom_fiscal WHERE rowid = 3").difference,
              "the table cupom_fiscal, row 3");
    EXPECT_EQ(After("INSERT INTO cupom_fiscal (cont_coo) VALUES (4)").difference,
              "the table cupom_fiscal, row 4");
    EXPECT_EQ(After("UPDATE without SET b = 2").difference, "the table without, row 1");
    EXPECT_EQ(After("UPDATE \"odd \"\" name\" SET x = 2").difference,
              "the table odd \" name, row 1");
}

TEST_F(CompareContentTest, TheHeaderAndTheSchemaCount)
{
    EXPECT_EQ(After("PRAGMA user_version = 7").difference, "user_version, row 1");
    EXPECT_EQ(After("PRAGMA application_id = 7").difference, "application_id, row 1");
    EXPECT_THAT(After("DROP INDEX idx_outros_documentos").difference, HasSubstr("the schema, row"));
    EXPECT_THAT(After("CREATE VIEW v AS SELECT 1").difference, HasSubstr("the schema, row"));
}

} // namespace
} // namespace bancada::copia

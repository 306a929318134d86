// The schema that the library carries, and its version.
#include "LogDatabase/Schema.h"
#include "tests/LogDatabase/LogDatabaseTest.h"

namespace
{

using namespace log_database;

class Schema : public LogDatabaseTest
{
  protected:
    // A database as it was made before versions: the same tables, and no word of what it is.
    void MakeVersionZero() const
    {
        Plain(std::string("PRAGMA page_size = 2048; PRAGMA journal_mode = WAL;") + LOG_SCHEMA +
              "INSERT INTO versao_sb VALUES (1, 'v'); PRAGMA user_version = 5");
    }
    // The file, and whatever stands beside it.
    std::string AllFiles() const
    {
        std::string all;
        for (const char* name : {"db", "db-wal", "db-journal"}) {
            all += folder.Has(name) ? name + (":" + folder.Read(name)) : "";
        }
        return all;
    }
    std::string Version() const { return Rows("PRAGMA application_id"); }
};

TEST_F(Schema, ListsEveryColumnOfEveryTable)
{
    Plain(LOG_SCHEMA);
    std::string columns;
    for (int i = 0; i < LOG_COLUMN_COUNT; ++i) {
        columns += (columns.empty() ? "" : " ") + std::string(LOG_COLUMNS[i].table) + "." +
                   LOG_COLUMNS[i].column;
    }
    EXPECT_EQ(
        columns,
        Rows("SELECT t.name || '.' || c.name FROM sqlite_schema AS t,"
             " pragma_table_info(t.name) AS c WHERE t.type = 'table' ORDER BY t.name, c.cid"));
    std::string tables;
    for (int i = 0; i < LOG_TABLE_COUNT; ++i) {
        tables += (tables.empty() ? "" : " ") + std::string(LOG_TABLES[i]);
        EXPECT_EQ(TableIndex(LOG_TABLES[i]), i);
    }
    EXPECT_EQ(tables, Rows("SELECT name FROM sqlite_schema WHERE type = 'table' ORDER BY name"));
    EXPECT_EQ(TableIndex("sqlite_schema"), LOG_TABLE_COUNT);
    EXPECT_EQ(TableIndex(""), LOG_TABLE_COUNT);
    EXPECT_EQ(TableIndex("zzz"), LOG_TABLE_COUNT);
}

// Of whatever table: a row in one alone is enough.
TEST_F(Schema, ARowOfAnyTableIsSeenWhereAnEmptyDatabaseIsAskedFor)
{
    LogDatabaseOptions options = Brief();
    options.onlyEmpty = true;
    for (int i = 0; i < LOG_TABLE_COUNT; ++i) {
        const std::string table = LOG_TABLES[i];
        ASSERT_EQ(Open(), LogFault::NONE);
        EXPECT_EQ(Command({"INSERT INTO " + table + " DEFAULT VALUES"}).state, LogState::KEPT);
        EXPECT_EQ(Open(options), LogFault::HOLDS_ROWS) << table;
        EXPECT_EQ(database.Text(), "it already holds rows (table " + table + ")");
        database.Close();
        Plain("DELETE FROM " + table);
    }
    EXPECT_EQ(Open(options), LogFault::NONE) << database.Text();
}

TEST_F(Schema, ADatabaseOfBeforeVersionsIsUpgradedAndKeepsItsRowsItsNumberAndItsPageSize)
{
    MakeVersionZero();
    ASSERT_EQ(Version(), "0");
    ASSERT_EQ(Open(), LogFault::NONE) << database.Text();
    EXPECT_EQ(database.CommandNumber(), 5);
    EXPECT_EQ(Version(), std::to_string(0x45434601));
    EXPECT_EQ(Rows("PRAGMA page_size"), "2048");
    EXPECT_EQ(Rows("PRAGMA user_version"), "5");
    EXPECT_EQ(Rows(), "1");
}

TEST_F(Schema, ANewerVersionIsRefusedWithBothNumbers)
{
    MakeVersionZero();
    Plain("PRAGMA application_id = " + std::to_string(0x45434602));
    const std::string before = folder.Read("db");
    EXPECT_EQ(Open(), LogFault::NEWER);
    EXPECT_STREQ(database.Text(),
                 "its schema is of version 2, and this program knows those up to 1");
    EXPECT_EQ(folder.Read("db"), before);
}

TEST_F(Schema, AnUpgradeThatFailsLeavesTheFileAndItsJournalAsTheyWere)
{
    MakeVersionZero();
    Plain("PRAGMA journal_mode = DELETE");
    const std::string before = AllFiles();
    Other other(Path());
    other.Run("BEGIN IMMEDIATE");
    EXPECT_EQ(Open(), LogFault::LOCKED);
    EXPECT_STREQ(database.Text(), "database is locked");
    other.Run("ROLLBACK");
    database.Close();
    EXPECT_EQ(AllFiles(), before);
    ASSERT_EQ(Open(), LogFault::NONE);
    EXPECT_TRUE(database.HasWriteAheadLog());
    EXPECT_EQ(Version(), std::to_string(0x45434601));
}

TEST_F(Schema, AnUpgradeThatCannotBeWrittenLeavesTheDatabaseAsItWas)
{
    MakeVersionZero();
    Other other(Path());
    other.Run("BEGIN IMMEDIATE");
    EXPECT_EQ(Open(), LogFault::LOCKED);
    other.Run("COMMIT");
    EXPECT_EQ(Version(), "0");
    // The next command finds it free.
    EXPECT_EQ(NumberedCommand(6, 2).state, LogState::KEPT);
    EXPECT_EQ(Version(), std::to_string(0x45434601));
    EXPECT_EQ(Rows(), "1 2");
}

TEST_F(Schema, AColumnThatIsMissingIsNamed)
{
    ASSERT_EQ(Open(), LogFault::NONE);
    database.Close();
    Plain("ALTER TABLE item_cupom_nf DROP COLUMN perc_desconto");
    EXPECT_EQ(Open(), LogFault::NOT_A_LOG);
    EXPECT_STREQ(database.Text(),
                 "it is not a logging database: it has no column item_cupom_nf.perc_desconto");
}

TEST_F(Schema, AnOlderVersionIsAskedForWhatItPromisesAlone)
{
    Plain("CREATE TABLE t (a)");
    Other db(Path());
    const LogColumn columns[] = {{"t", "a", 0}, {"t", "b", 2}, {"u", "c", 3}};
    Reason reason;
    const auto check = [&](int version) {
        reason = {};
        return CheckColumns(db.Handle(), columns, 3, version, reason);
    };
    EXPECT_EQ(check(0), LogFault::NONE);
    EXPECT_EQ(check(1), LogFault::NONE);
    EXPECT_EQ(check(2), LogFault::NOT_A_LOG);
    EXPECT_STREQ(reason.text, "it is not a logging database: it has no column t.b");
    db.Run("ALTER TABLE t ADD COLUMN b");
    EXPECT_EQ(check(2), LogFault::NONE);
    EXPECT_EQ(check(3), LogFault::NOT_A_LOG);
    EXPECT_STREQ(reason.text, "it is not a logging database: it has no column u.c");
}

TEST_F(Schema, ProgramsInTheDatabaseAreRefused)
{
    ASSERT_EQ(Open(), LogFault::NONE);
    database.Close();
    Plain("CREATE VIEW spy AS SELECT 1");
    EXPECT_EQ(Open(), LogFault::NOT_A_LOG);
    EXPECT_STREQ(database.Text(), "it is not a logging database: it has the view spy");
}

} // namespace

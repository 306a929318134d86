// What can still be read of a damaged database: everything on a sound page, and nothing else.
#include "bancada/recuperacao/Recuperacao.h"

#include "bancada/Unusable.h"
#include "tests/bancada/leitura/Sample.h"
#include "tests/support/Rows.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <vector>

namespace bancada::recuperacao
{
namespace
{

using test_support::Rows;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace fs = std::filesystem;

using Content = std::map<std::string, std::map<std::int64_t, std::string>>; // rows by table, rowid

// Every row of every logging table, whole.
Content ContentOf(const std::string& path)
{
    std::map<std::string, std::string> columns;
    for (const auto& [table, column] : LogSchemaColumns()) {
        columns[table] += (columns[table].empty() ? "quote(" : " || ',' || quote(") + column + ")";
    }
    Content content;
    for (const auto& [table, values] : columns) {
        content[table] = {};
        for (const std::string& row : Rows(path, "SELECT rowid, " + values + " FROM " + table)) {
            const std::size_t bar = row.find('|');
            content[table][std::stoll(row.substr(0, bar))] = row.substr(bar + 1);
        }
    }
    return content;
}

// A page of the intact database, by the engine's own account.
struct PageAccount {
    std::string table;
    std::string path; // within the tree
    std::string kind;
    std::set<std::int64_t> rows; // on a leaf, or that an overflow page is a part of
};

class RecuperacaoTest : public leitura_test::Sample
{
  protected:
    // Tables whose trees have several levels, rows that go on on other pages, rows that were made
    // longer later.
    void MakeDatabase(int pageSize)
    {
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open(Path().c_str(), &db), SQLITE_OK);
        const std::string schema =
            "PRAGMA page_size = " + std::to_string(pageSize) + ";" + LOG_SCHEMA;
        ASSERT_EQ(sqlite3_exec(db, schema.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(db);
        Execute(
            "BEGIN;"
            "WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i + 1 FROM n WHERE i < 2500)"
            " INSERT INTO item_cupom_fiscal (cont_coo, seq_item, cod_item, descricao,"
            " quantidade, valor_unitario, valor_total, id_cancelado)"
            " SELECT i / 5, i % 5, 'C' || i, 'ITEM ' || i || ' Ç', i * 0.25, i * 3, i * 7.5, 'N'"
            " FROM n;"
            "WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i + 1 FROM n WHERE i < 500)"
            " INSERT INTO cupom_fiscal (cont_coo, cont_ccf, data_hora_emissao, nome_consumidor,"
            " endereco_consumidor, valor_total) SELECT i, i, '2026-03-02 08:00:00', NULL,"
            " CASE WHEN i % 9 = 0 THEN hex(zeroblob(200 + i)) ELSE '' END, i * 37.5 FROM n;"
            "UPDATE cupom_fiscal SET nome_consumidor = hex(zeroblob(50)) WHERE rowid % 7 = 0;"
            "WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i + 1 FROM n WHERE i < 300)"
            " INSERT INTO outros_documentos (cont_coo, cont_gnf, id_tipo_documento)"
            " SELECT i, i, 'LX' FROM n;"
            "INSERT INTO dados_ecf (num_ecf) VALUES (1); COMMIT");
        m_pageSize = static_cast<std::size_t>(pageSize);
        m_intact = ContentOf(Path());
        m_bytes = Folder().Read("registro.db");
        Account();
    }

    // The rows of each page. The leaves of a table in the order of their paths hold its rows in the
    // order of their rowids; the engine tells how many each.
    void Account()
    {
        m_pages.clear();
        std::map<std::string, std::map<std::string, std::vector<std::int64_t>>> leaves;
        std::map<std::string, std::int64_t> counted;
        for (const std::string& line :
             Rows(Path(), "SELECT name, path, pageno, pagetype, ncell FROM dbstat WHERE name IN"
                          " (SELECT name FROM sqlite_schema WHERE type = 'table')"
                          " ORDER BY name, path")) {
            std::istringstream in(line);
            std::string table;
            std::string path;
            std::string number;
            std::string kind;
            int cells = 0;
            std::getline(
                std::getline(std::getline(std::getline(in, table, '|'), path, '|'), number, '|'),
                kind, '|') >>
                cells;
            m_pages[std::stoul(number)] = {table, path, kind, {}};
            for (int i = 0; kind == "leaf" && i < cells; ++i) {
                leaves[table][path].push_back(++counted[table]);
            }
        }
        for (const auto& [table, rows] : m_intact) {
            ASSERT_EQ(static_cast<std::int64_t>(rows.size()), counted[table]) << table;
            ASSERT_TRUE(rows.empty() || rows.rbegin()->first == counted[table]) << table;
        }
        for (auto& [number, page] : m_pages) {
            if (page.kind == "leaf") {
                const auto& rows = leaves[page.table][page.path];
                page.rows.insert(rows.begin(), rows.end());
            } else if (page.kind == "overflow") {
                // "/000/001/002+000000" is the first further page of the cell 2 of /000/001/.
                const std::size_t name = page.path.rfind('/') + 1;
                const std::size_t cell = std::stoul(page.path.substr(name), nullptr, 16);
                page.rows.insert(leaves[page.table].at(page.path.substr(0, name)).at(cell));
            }
        }
    }

    // Damages a page of m_bytes in one of five manners.
    void Damage(std::size_t number, unsigned manner, std::mt19937& random)
    {
        const std::size_t begin = (number - 1) * m_pageSize;
        for (std::size_t i = 0; i < m_pageSize; ++i) {
            char& byte = m_bytes[begin + i];
            switch (manner) {
            case 0: // noise
                byte = static_cast<char>(random());
                break;
            case 1: // erased
                byte = 0;
                break;
            case 2: // only its beginning was written
                byte = i < m_pageSize / 2 ? byte : '\0';
                break;
            case 3: // only its end
                byte = i < m_pageSize / 2 ? '\xFF' : byte;
                break;
            default: // another page in its place
                byte = m_bytes[i];
            }
        }
    }

    // Recovers what m_bytes holds and compares it with the intact database. Rows of the damaged
    // pages may be missing, and are then told to be; all others are there, and nothing else is.
    void ExpectRecovered(const std::set<std::size_t>& damaged)
    {
        const std::string from = Folder().Write("damaged.db", m_bytes);
        const std::string to = Folder().Write("recovered.db", "");
        const Recuperacao result = Recover(from, to);
        EXPECT_TRUE(Folder().Read("damaged.db") == m_bytes);
        EXPECT_THAT(Rows(to, "PRAGMA integrity_check"), ElementsAre("ok"));
        const Content recovered = ContentOf(to);
        std::map<std::string, std::set<std::int64_t>> mayMiss;
        for (const std::size_t page : damaged) {
            mayMiss[m_pages[page].table].insert(m_pages[page].rows.begin(),
                                                m_pages[page].rows.end());
        }
        ASSERT_EQ(result.tables.size(), m_intact.size());
        for (const RecoveredTable& table : result.tables) {
            SCOPED_TRACE(table.name);
            const auto& rows = recovered.at(table.name);
            const auto& originals = m_intact[table.name];
            EXPECT_EQ(table.rows, static_cast<std::int64_t>(rows.size()));
            for (const auto& [rowid, row] : rows) {
                const auto original = originals.find(rowid);
                ASSERT_TRUE(original != originals.end()) << rowid << " was invented";
                ASSERT_EQ(row, original->second) << rowid;
                ASSERT_FALSE(IsTold(table, rowid)) << rowid;
            }
            for (const auto& [rowid, row] : originals) {
                const bool there = rows.count(rowid) == 1;
                ASSERT_TRUE(there || IsTold(table, rowid)) << rowid;
                ASSERT_TRUE(there || mayMiss[table.name].count(rowid) == 1)
                    << rowid << " stood on a sound page";
            }
        }
    }

    static bool IsTold(const RecoveredTable& table, std::int64_t rowid)
    {
        return std::any_of(
            table.missing.begin(), table.missing.end(),
            [rowid](const RowRange& range) { return rowid >= range.first && rowid <= range.last; });
    }

    std::vector<std::size_t> PagesOf(const std::string& kind) const
    {
        std::vector<std::size_t> pages;
        for (const auto& [number, page] : m_pages) {
            if (page.kind == kind) {
                pages.push_back(number);
            }
        }
        return pages;
    }

    Recuperacao RecoverAgain(const std::string& name) const
    {
        return Recover(Folder().File(name), Folder().Write("again.db", ""));
    }
    std::vector<std::string> Again(const std::string& sql) const
    {
        return Rows(Folder().File("again.db"), sql);
    }

    std::size_t m_pageSize = 0;
    std::string m_bytes;
    Content m_intact;
    std::map<std::size_t, PageAccount> m_pages;
};

TEST_F(RecuperacaoTest, AnIntactDatabaseIsWhole)
{
    for (const int pageSize : {512, 4096, 65536}) {
        SCOPED_TRACE(pageSize);
        fs::remove(Path());
        MakeDatabase(pageSize);
        ExpectRecovered({});
        const Recuperacao result = RecoverAgain("registro.db");
        EXPECT_TRUE(result.IsWhole());
        EXPECT_EQ(result.Rows(), 2500 + 500 + 300 + 1);
        EXPECT_EQ(result.pageSize, m_pageSize);
        EXPECT_THAT(result.damaged, IsEmpty());
        const char* schema = "SELECT type, name, tbl_name, sql FROM sqlite_schema";
        EXPECT_EQ(Again(schema), Rows(Path(), schema));
        EXPECT_THAT(Again("PRAGMA application_id"), ElementsAre(std::to_string(0x45434601)));
    }
}

TEST_F(RecuperacaoTest, EveryRowOnASoundPageIsThereAndNothingElse)
{
    MakeDatabase(512);
    ASSERT_GT(PagesOf("overflow").size(), 40U);
    ASSERT_GT(PagesOf("internal").size(), 8U);
    const std::string intact = m_bytes;
    std::vector<std::size_t> pages;
    for (const auto& [number, page] : m_pages) {
        pages.push_back(number);
    }
    for (unsigned seed = 1; seed <= 25; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        m_bytes = intact;
        std::set<std::size_t> damaged;
        while (damaged.size() < 1 + seed % 8) {
            const std::size_t page = pages[random() % pages.size()];
            damaged.insert(page);
            Damage(page, static_cast<unsigned>(random() % 5), random);
        }
        ExpectRecovered(damaged);
        if (HasFatalFailure()) {
            return;
        }
    }
}

TEST_F(RecuperacaoTest, LeavesThatNothingLeadsToAnyMoreAreFound)
{
    MakeDatabase(512);
    const std::string intact = m_bytes;
    for (const std::size_t page : PagesOf("internal")) {
        SCOPED_TRACE("page " + std::to_string(page));
        std::mt19937 random(static_cast<unsigned>(page));
        m_bytes = intact;
        Damage(page, 0, random);
        ExpectRecovered({page});
        if (HasFatalFailure()) {
            return;
        }
    }
}

TEST_F(RecuperacaoTest, AFileWithoutItsFirstPage)
{
    MakeDatabase(1024);
    std::mt19937 random(1);
    for (const unsigned manner : {0U, 1U}) {
        Damage(1, manner, random);
        ExpectRecovered({});
        const Recuperacao result = RecoverAgain("damaged.db");
        EXPECT_FALSE(result.hasHeader);
        EXPECT_FALSE(result.IsWhole());
        EXPECT_EQ(result.pageSize, 1024U);
    }
}

// Today's schema puts the tables elsewhere than they are.
TEST_F(RecuperacaoTest, AFileWithoutItsFirstPageWhoseTablesWereMoved)
{
    MakeDatabase(1024);
    Execute("VACUUM");
    m_bytes = Folder().Read("registro.db");
    Account();
    std::set<std::size_t> all;
    for (const auto& [number, page] : m_pages) {
        all.insert(number);
    }
    std::mt19937 random(1);
    Damage(1, 0, random);
    ExpectRecovered(all);
}

TEST_F(RecuperacaoTest, AFileThatWasCutShort)
{
    MakeDatabase(512);
    const std::size_t kept = m_bytes.size() / m_pageSize / 2;
    std::set<std::size_t> cut;
    for (const auto& [number, page] : m_pages) {
        if (number > kept) {
            cut.insert(number);
        }
    }
    ASSERT_GT(cut.size(), 10U);
    m_bytes.resize(kept * m_pageSize + 100);
    ExpectRecovered(cut);
    Folder().Write("damaged.db", m_bytes.substr(0, 300));
    EXPECT_FALSE(RecoverAgain("damaged.db").IsWhole());
}

TEST_F(RecuperacaoTest, WhatIsMissingIsListed)
{
    MakeDatabase(512);
    const auto leaf = std::find_if(m_pages.begin(), m_pages.end(), [](const auto& page) {
        return page.second.kind == "leaf" && page.second.rows.count(1000) == 1 &&
               page.second.table == "item_cupom_fiscal";
    });
    ASSERT_TRUE(leaf != m_pages.end());
    std::mt19937 random(1);
    Damage(leaf->first, 1, random);
    Folder().Write("damaged.db", m_bytes);
    const Recuperacao result = RecoverAgain("damaged.db");
    ASSERT_THAT(result.damaged, SizeIs(1));
    EXPECT_EQ(result.damaged[0].page, leaf->first);
    EXPECT_EQ(result.damaged[0].table, "item_cupom_fiscal");
    EXPECT_EQ(result.damaged[0].reason, "is damaged");
    for (const RecoveredTable& table : result.tables) {
        ASSERT_THAT(table.missing, SizeIs(table.name == "item_cupom_fiscal" ? 1 : 0)) << table.name;
        for (const RowRange& range : table.missing) {
            EXPECT_EQ(range.first, *leaf->second.rows.begin());
            EXPECT_EQ(range.last, *leaf->second.rows.rbegin());
        }
    }
}

TEST_F(RecuperacaoTest, TheWriteAheadLogIsReadUpToItsLastSoundCommit)
{
    MakeDatabase(4096);
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(Path().c_str(), &db), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(db,
                           "PRAGMA journal_mode = WAL; PRAGMA wal_autocheckpoint = 0;"
                           "INSERT INTO meio_pagamento (num_indice) VALUES (1);"
                           "INSERT INTO meio_pagamento (num_indice) VALUES (2)",
                           nullptr, nullptr, nullptr),
              SQLITE_OK);
    fs::copy_file(Path(), Folder().File("cut.db")); // as a power cut leaves them
    const std::string log = Folder().Read("registro.db-wal");
    sqlite3_close(db);
    const auto recover = [&](const std::string& content) {
        Folder().Write("cut.db-wal", content);
        return RecoverAgain("cut.db");
    };
    const char* count = "SELECT count(*) FROM meio_pagamento";

    Recuperacao result = recover(log);
    EXPECT_THAT(Again(count), ElementsAre("2"));
    EXPECT_TRUE(result.withLog);
    EXPECT_TRUE(result.IsWhole());

    std::string damaged = log;
    damaged[damaged.size() - 10] = static_cast<char>(damaged[damaged.size() - 10] ^ 1);
    result = recover(damaged);
    EXPECT_THAT(Again(count), ElementsAre("1"));
    EXPECT_GT(result.logBytesNotRead, 0U);
    EXPECT_FALSE(result.IsWhole());

    damaged = log;
    damaged[12] = static_cast<char>(damaged[12] ^ 1); // of the log's header
    result = recover(damaged);
    EXPECT_THAT(Again(count), ElementsAre("0"));
    EXPECT_FALSE(result.withLog);
    EXPECT_EQ(result.logBytesNotRead, log.size());
    EXPECT_FALSE(result.IsWhole());

    // The file has lost its header; the log tells the size of the pages, and has one.
    Folder().Write("cut.db", std::string(4096, 'x') + Folder().Read("cut.db").substr(4096));
    result = recover(log);
    EXPECT_THAT(Again(count), ElementsAre("2"));
    EXPECT_EQ(result.pageSize, 4096U);
}

TEST_F(RecuperacaoTest, ATableOfAnotherProgramIsNotCopiedAndTold)
{
    Execute("CREATE TABLE songs (name TEXT); INSERT INTO songs VALUES ('x')");
    const Recuperacao result = RecoverAgain("registro.db");
    EXPECT_THAT(result.notCopied, ElementsAre("songs"));
    EXPECT_EQ(result.Rows(), 0);
}

TEST_F(RecuperacaoTest, AnOlderDatabaseWithColumnsElsewhere)
{
    Execute("ALTER TABLE item_cupom_nf DROP COLUMN perc_desconto;"
            "ALTER TABLE item_cupom_nf DROP COLUMN perc_acrescimo;"
            "INSERT INTO item_cupom_nf (cont_coo, seq_item) VALUES (7, 1);"
            "ALTER TABLE item_cupom_nf ADD COLUMN perc_desconto NUMERIC DEFAULT 0;"
            "ALTER TABLE item_cupom_nf ADD COLUMN perc_acrescimo NUMERIC DEFAULT 0;"
            "INSERT INTO item_cupom_nf (cont_coo, seq_item, perc_desconto, perc_acrescimo)"
            " VALUES (8, 2, 3, 4)");
    EXPECT_TRUE(RecoverAgain("registro.db").IsWhole());
    EXPECT_THAT(
        Again("SELECT cont_coo, seq_item, perc_desconto, perc_acrescimo FROM item_cupom_nf"),
        ElementsAre("7|1|0|0", "8|2|3|4"));
}

TEST_F(RecuperacaoTest, WhatHoldsNoPageIsRefused)
{
    for (const std::string& content : {std::string(), std::string(9000, 'x')}) {
        const std::string path = Folder().Write("noise", content);
        try {
            static_cast<void>(RecoverAgain("noise"));
            FAIL();
        } catch (const Unusable& error) {
            EXPECT_EQ(error.what(), path + ": holds no page of a database");
        }
    }
    EXPECT_THROW(static_cast<void>(RecoverAgain("none")), Unusable);
    EXPECT_THROW(static_cast<void>(RecoverAgain(".")), Unusable);
}

} // namespace
} // namespace bancada::recuperacao

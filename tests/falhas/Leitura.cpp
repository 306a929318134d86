#include "tests/falhas/Leitura.h"

#include "LogDatabase/Schema.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace falhas
{

std::string Dump(sqlite3* db)
{
    std::string dump;
    for (int i = 0; i < log_database::LOG_TABLE_COUNT; ++i) {
        const std::string table = log_database::LOG_TABLES[i];
        sqlite3_stmt* rows = nullptr;
        const std::string sql = "SELECT rowid, * FROM " + table;
        int result = sqlite3_prepare_v2(db, sql.c_str(), -1, &rows, nullptr);
        while (result == SQLITE_OK && (result = sqlite3_step(rows)) == SQLITE_ROW) {
            result = SQLITE_OK;
            dump += table;
            for (int column = 0; column < sqlite3_column_count(rows); ++column) {
                const auto* text = static_cast<const char*>(sqlite3_column_blob(rows, column));
                const auto length = static_cast<std::size_t>(sqlite3_column_bytes(rows, column));
                dump += '|';
                if (sqlite3_column_type(rows, column) == SQLITE_NULL) {
                    dump += "NULL";
                } else if (length > 0) {
                    dump.append(text, length);
                }
            }
            dump += '\n';
        }
        if (result != SQLITE_DONE) {
            dump += table + ": " + sqlite3_errmsg(db) + '\n';
        }
        sqlite3_finalize(rows);
    }
    return dump;
}

Leitura::Leitura(const SimulatedDisk& disk)
{
    EXPECT_EQ(sqlite3_open_v2(BANCO, &m_db, SQLITE_OPEN_READWRITE, disk.Name().c_str()), SQLITE_OK);
}

Leitura::~Leitura()
{
    sqlite3_close(m_db);
}

std::string Leitura::Integrity() const
{
    return Value(m_db, "PRAGMA integrity_check");
}

std::string Value(sqlite3* db, const std::string& sql)
{
    sqlite3_stmt* query = nullptr;
    std::string value;
    sqlite3_prepare_v2(db, sql.c_str(), -1, &query, nullptr);
    if (sqlite3_step(query) == SQLITE_ROW) {
        const unsigned char* text = sqlite3_column_text(query, 0);
        value = text == nullptr ? "NULL" : reinterpret_cast<const char*>(text);
    } else {
        value = sqlite3_errmsg(db);
    }
    sqlite3_finalize(query);
    return value;
}

} // namespace falhas

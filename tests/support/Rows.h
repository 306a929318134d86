// What a query answers.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <string>
#include <vector>

namespace test_support
{

// The rows of a query, each its values joined by '|'; NULL is written NULL. Fails the test if the
// query cannot be run to its end.
inline std::vector<std::string> Rows(sqlite3* db, const std::string& sql)
{
    std::vector<std::string> rows;
    sqlite3_stmt* query = nullptr;
    int result = sqlite3_prepare_v2(db, sql.c_str(), -1, &query, nullptr);
    while (result == SQLITE_OK && (result = sqlite3_step(query)) == SQLITE_ROW) {
        result = SQLITE_OK;
        std::string row;
        for (int i = 0; i < sqlite3_column_count(query); ++i) {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(query, i));
            row += (i == 0 ? "" : "|") + std::string(text == nullptr ? "NULL" : text);
        }
        rows.push_back(row);
    }
    EXPECT_EQ(result, SQLITE_DONE) << sqlite3_errmsg(db) << " in " << sql;
    sqlite3_finalize(query);
    return rows;
}

// The same of a database file, opened for it.
inline std::vector<std::string> Rows(const std::string& path, const std::string& sql)
{
    sqlite3* db = nullptr;
    EXPECT_EQ(sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READWRITE, nullptr), SQLITE_OK)
        << path;
    std::vector<std::string> rows = Rows(db, sql);
    sqlite3_close(db);
    return rows;
}

} // namespace test_support

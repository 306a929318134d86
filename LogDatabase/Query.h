// A query of the library's own.
#pragma once

#include <cstdint>
#include <sqlite3.h>

namespace log_database
{

// Prepared when it is made, released when it ends.
class Query
{
  public:
    Query(sqlite3* db, const char* sql)
        : m_result(sqlite3_prepare_v2(db, sql, -1, &m_query, nullptr))
    {
    }
    ~Query() { sqlite3_finalize(m_query); }
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;

    // Steps to the next row; false when there is none, or after a failure.
    bool Next()
    {
        if (m_result == SQLITE_OK || m_result == SQLITE_ROW) {
            m_result = sqlite3_step(m_query);
        }
        return m_result == SQLITE_ROW;
    }

    // The engine's result; SQLITE_DONE when the query has ended well.
    int Result() const { return m_result; }

    // A column of the row, from 0. A text lives until the next step; NULL is an empty one.
    std::int64_t Integer(int column) const { return sqlite3_column_int64(m_query, column); }
    const char* Text(int column) const
    {
        const unsigned char* text = sqlite3_column_text(m_query, column);
        return text == nullptr ? "" : reinterpret_cast<const char*>(text);
    }

  private:
    sqlite3_stmt* m_query = nullptr;
    int m_result;
};

} // namespace log_database

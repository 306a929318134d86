// A query of the bench's own.
#pragma once

#include <sqlite3.h>
#include <string>

namespace bancada
{

// Prepared when it is made, released when it ends. After a failure Next answers false and Failed
// true; the connection has the error text.
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

    // Steps to the next row; false when there is none.
    bool Next()
    {
        if (m_result == SQLITE_OK || m_result == SQLITE_ROW) {
            m_result = sqlite3_step(m_query);
        }
        return m_result == SQLITE_ROW;
    }

    bool Failed() const
    {
        return m_result != SQLITE_OK && m_result != SQLITE_ROW && m_result != SQLITE_DONE;
    }

    // A column of the row, from 0; NULL is an empty text.
    std::string Text(int column) const
    {
        const unsigned char* text = sqlite3_column_text(m_query, column);
        return text == nullptr ? std::string() : reinterpret_cast<const char*>(text);
    }
    int Integer(int column) const { return sqlite3_column_int(m_query, column); }

  private:
    sqlite3_stmt* m_query = nullptr;
    int m_result;
};

} // namespace bancada

#include "bancada/copia/CompareContent.h"

#include "bancada/ForeignTexts.h"
#include "bancada/Messages.h"

#include <cstring>
#include <memory>
#include <sqlite3.h>
#include <vector>

namespace bancada::copia
{
namespace
{

using leitura::DatabaseReading;

struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

std::uint64_t Bits(double number)
{
    std::uint64_t bits = 0;
    static_assert(sizeof bits == sizeof number);
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

// The rows of one SELECT, one after the other.
class Rows
{
  public:
    // The first of the texts that the engine accepts.
    Rows(const DatabaseReading& database, const std::vector<std::string>& sql)
    {
        for (const std::string& text : sql) {
            sqlite3_stmt* statement = nullptr;
            m_result = sqlite3_prepare_v2(database.Handle(), text.c_str(), -1, &statement, nullptr);
            m_statement.reset(statement);
            if (m_result == SQLITE_OK) {
                return;
            }
        }
    }

    // SQLITE_ROW at a row, SQLITE_DONE behind the last one, or the engine's error.
    int Next()
    {
        if (m_statement) {
            m_result = sqlite3_step(m_statement.get());
        }
        return m_result;
    }

    bool IsSameAs(const Rows& other) const
    {
        const int columns = sqlite3_column_count(m_statement.get());
        if (columns != sqlite3_column_count(other.m_statement.get())) {
            return false;
        }
        for (int i = 0; i < columns; ++i) {
            if (!IsSameCell(m_statement.get(), other.m_statement.get(), i)) {
                return false;
            }
        }
        return true;
    }

    std::string Text(int column) const
    {
        const unsigned char* text = sqlite3_column_text(m_statement.get(), column);
        return text == nullptr ? "" : reinterpret_cast<const char*>(text);
    }

  private:
    static bool IsSameCell(sqlite3_stmt* one, sqlite3_stmt* other, int column)
    {
        const int type = sqlite3_column_type(one, column);
        if (type != sqlite3_column_type(other, column)) {
            return false;
        }
        switch (type) {
        case SQLITE_INTEGER:
            return sqlite3_column_int64(one, column) == sqlite3_column_int64(other, column);
        case SQLITE_FLOAT: {
            // By its bits: also what is equal to nothing is the same as itself.
            return Bits(sqlite3_column_double(one, column)) ==
                   Bits(sqlite3_column_double(other, column));
        }
        case SQLITE_NULL:
            return true;
        default: {
            const void* a = sqlite3_column_blob(one, column);
            const void* b = sqlite3_column_blob(other, column);
            const int size = sqlite3_column_bytes(one, column);
            return size == sqlite3_column_bytes(other, column) &&
                   (size == 0 || std::memcmp(a, b, static_cast<std::size_t>(size)) == 0);
        }
        }
    }

    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
    int m_result = SQLITE_OK;
};

std::string Quoted(const std::string& name)
{
    std::string quoted = "\"";
    for (const char c : name) {
        quoted += c;
        if (c == '"') {
            quoted += c;
        }
    }
    return quoted + "\"";
}

class Comparing
{
  public:
    Comparing(const DatabaseReading& one, const DatabaseReading& other) : m_one(one), m_other(other)
    {
    }

    Comparison Compare()
    {
        CompareRows(Tr("the schema"), {"SELECT rowid, * FROM sqlite_schema ORDER BY rowid"});
        if (!m_result.unreadable.empty()) {
            m_one.Fail();
        }
        CompareRows("application_id", {"PRAGMA application_id"});
        CompareRows("user_version", {"PRAGMA user_version"});
        m_result.rows = 0;
        for (const std::string& table : Tables()) {
            ++m_result.tables;
            const std::string name = Quoted(table);
            // Some tables have no rowid; these have an order of their own.
            CompareRows(
                Tr("the table %1", {table}),
                {"SELECT rowid, * FROM " + name + " ORDER BY rowid", "SELECT * FROM " + name});
        }
        return m_result;
    }

  private:
    // Those with rows of their own.
    std::vector<std::string> Tables() const
    {
        std::vector<std::string> names;
        Rows rows(m_one, {"SELECT name FROM sqlite_schema WHERE type = 'table' AND rootpage > 0"
                          " ORDER BY rowid"});
        while (rows.Next() == SQLITE_ROW) {
            names.push_back(rows.Text(0));
        }
        return names;
    }

    void CompareRows(const std::string& what, const std::vector<std::string>& sql)
    {
        if (!m_result.difference.empty()) {
            return;
        }
        Rows rows(m_one, sql);
        Rows others(m_other, sql);
        for (std::int64_t row = 1;; ++row) {
            const int result = rows.Next();
            const bool same = others.Next() == result;
            if (!same || (result == SQLITE_ROW && !rows.IsSameAs(others))) {
                m_result.difference = Tr("%1, row %2", {what, std::to_string(row)});
                return;
            }
            if (result != SQLITE_ROW) {
                if (result != SQLITE_DONE && m_result.unreadable.empty()) {
                    m_result.unreadable =
                        Tr("%1, behind row %2: %3", {what, std::to_string(row - 1),
                                                     TrForeign(sqlite3_errmsg(m_one.Handle()))});
                }
                return;
            }
            ++m_result.rows;
        }
    }

    const DatabaseReading& m_one;
    const DatabaseReading& m_other;
    Comparison m_result;
};

} // namespace

Comparison CompareContent(const DatabaseReading& one, const DatabaseReading& other)
{
    return Comparing(one, other).Compare();
}

} // namespace bancada::copia

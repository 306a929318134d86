// A table's columns, listed once: the list builds the SELECT, reads the row into its record and
// says what the tools need.
#pragma once

#include "bancada/leitura/Amount.h"
#include "bancada/leitura/Cell.h"
#include "bancada/leitura/DatabaseReading.h"
#include "bancada/leitura/Domain.h"
#include "bancada/leitura/Query.h"

#include <cassert>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

namespace bancada::leitura
{

// What every record has: its row in the table.
struct Row {
    std::int64_t rowid = 0;
};

// A column that no tool reads, said in the list so that the reader knows it.
struct Unread {
};
constexpr Unread UNREAD;

// How a column may be missing.
enum class Presence : std::uint8_t {
    // Every database has it, and the module's inserts name it.
    ALWAYS,
    // Every database has it; some of the module's inserts leave it out.
    MAY_BE_NULL,
    // Added to the schema after databases were in the field. Where a database is older, the value's
    // state says so; in rows that are older than the column it is NULL.
    ADDED,
};

template <typename Record>
struct Column {
    const char* name;
    std::variant<Unread, Integer Record::*, Text Record::*, Flag Record::*, Amount Record::*>
        member;
    Domain domain = Domain::TEXT;
    Presence presence = Presence::ALWAYS;
    // The most bytes of a text; 0 where nothing bounds them.
    std::int64_t most = 0;
};

// The names of a table's columns in a database; empty where it has no such table.
std::vector<std::string> ColumnNames(const DatabaseReading& database, const std::string& table);

template <typename RowRecord>
class Table
{
  public:
    using Record = RowRecord;

    // In the order of the schema. An amount's decimals are those that its member begins with.
    Table(const char* name, std::initializer_list<Column<Record>> columns)
        : m_name(name), m_columns(columns)
    {
    }

    const std::string& Name() const { return m_name; }
    const std::vector<Column<Record>>& Columns() const { return m_columns; }

    // The table of these of its columns, for whoever reads many rows for few of them: what the
    // record has of the others stays as it is.
    Table Only(std::initializer_list<const char*> names) const
    {
        Table some(m_name.c_str(), {});
        for (const Column<Record>& column : m_columns) {
            for (const std::string_view name : names) {
                if (name == column.name) {
                    some.m_columns.push_back(column);
                }
            }
        }
        assert(some.m_columns.size() == names.size());
        return some;
    }

  private:
    std::string m_name;
    std::vector<Column<Record>> m_columns;
};

// The rows of a table as records, one at a time. Lives no longer than its database.
template <typename Record>
class Rows
{
  public:
    // `tail` goes on after the table's name: a condition with ?1, ?2, ..., an order. Throws
    // Unusable where the database has no such table or column.
    Rows(const DatabaseReading& database, const Table<Record>& table, const std::string& tail)
        : m_columns(Present(database, table)), m_query(database, Select(table.Name()) + tail)
    {
    }

    // As those of Query.
    template <typename... Values>
    Rows& With(const Values&... values)
    {
        m_query.With(values...);
        return *this;
    }
    void End() { m_query.End(); }

    // Reads the next row into `record`, whole; false after the last one, and `record` is as it was.
    // Throws Unusable when it cannot.
    bool Next(Record& record)
    {
        if (!m_query.Next()) {
            return false;
        }
        for (const Column<Record>& column : m_missing) {
            CopyEmpty(column, record);
        }
        record.rowid = ReadInteger(m_query.Row(), 0, Nullable::NO).Value();
        int position = 0;
        for (const Column<Record>& column : m_columns) {
            Read(++position, column, record);
        }
        return true;
    }

  private:
    std::vector<Column<Record>> Present(const DatabaseReading& database, const Table<Record>& table)
    {
        std::vector<std::string> names;
        std::vector<Column<Record>> present;
        for (const Column<Record>& column : table.Columns()) {
            if (std::holds_alternative<Unread>(column.member)) {
                continue;
            }
            if (column.presence == Presence::ADDED) {
                if (names.empty()) {
                    names = ColumnNames(database, table.Name());
                }
                if (!Contains(names, column.name)) {
                    MarkMissing(column);
                    m_missing.push_back(column);
                    continue;
                }
            }
            present.push_back(column);
        }
        return present;
    }

    static bool Contains(const std::vector<std::string>& names, const std::string& name)
    {
        for (const std::string& one : names) {
            if (one == name) {
                return true;
            }
        }
        return false;
    }

    // In the record of what every row has of the columns that are not there.
    void MarkMissing(const Column<Record>& column)
    {
        std::visit(
            [this](auto member) {
                using Member = decltype(member);
                if constexpr (std::is_same_v<Member, Amount Record::*>) {
                    m_empty.*member =
                        Amount(CellState::NO_COLUMN, {}, (m_empty.*member).Decimals());
                } else if constexpr (!std::is_same_v<Member, Unread>) {
                    using Kind = std::remove_reference_t<decltype(m_empty.*member)>;
                    m_empty.*member = Kind(CellState::NO_COLUMN);
                }
            },
            column.member);
    }

    void CopyEmpty(const Column<Record>& column, Record& record) const
    {
        std::visit(
            [&](auto member) {
                if constexpr (!std::is_same_v<decltype(member), Unread>) {
                    record.*member = m_empty.*member;
                }
            },
            column.member);
    }

    std::string Select(const std::string& table) const
    {
        std::string sql = "SELECT rowid";
        for (const Column<Record>& column : m_columns) {
            sql += ", ";
            sql += column.name;
        }
        return sql + " FROM " + table + " ";
    }

    void Read(int position, const Column<Record>& column, Record& record) const
    {
        sqlite3_stmt* row = m_query.Row();
        const Nullable nullable =
            column.presence == Presence::ALWAYS ? Nullable::NO : Nullable::YES;
        if (const auto* integer = std::get_if<Integer Record::*>(&column.member)) {
            record.** integer = ReadInteger(row, position, nullable);
        } else if (const auto* text = std::get_if<Text Record::*>(&column.member)) {
            record.** text = ReadText(row, position, nullable);
        } else if (const auto* flag = std::get_if<Flag Record::*>(&column.member)) {
            record.** flag = ReadFlag(row, position, nullable);
        } else if (const auto* amount = std::get_if<Amount Record::*>(&column.member)) {
            record.** amount = ReadAmount(row, position, nullable, (m_empty.**amount).Decimals());
        }
    }

    Record m_empty{};
    std::vector<Column<Record>> m_missing; // of an older database
    std::vector<Column<Record>> m_columns;
    Query m_query;
};

} // namespace bancada::leitura

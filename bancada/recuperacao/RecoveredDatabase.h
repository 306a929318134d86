// The database that the recovered rows go to.
#pragma once

#include "bancada/recuperacao/Record.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace bancada::recuperacao
{

enum class Affinity : std::uint8_t {
    TEXT,
    NUMBER
};

struct Column {
    std::string name;
    Affinity affinity = Affinity::NUMBER;
    bool isRowid = false; // another name of the rowid: its value stands nowhere else
};

// A table as a database has it: where its tree begins, and its columns in the order of its rows.
struct TableShape {
    std::string name;
    std::uint32_t root = 0;
    std::vector<Column> columns;
};

// Every logging table of a database that was made from the schema today, with pages of this size.
// Throws Unusable.
[[nodiscard]] std::vector<TableShape> SchemaShapes(std::size_t pageSize);

// The columns that a CREATE TABLE statement makes; none if it is no such statement.
[[nodiscard]] std::vector<Column> ColumnsOf(const std::string& name, const std::string& sql);

// A logging database made of the schema, in one transaction.
class RecoveredDatabase
{
  public:
    // The file is there and empty. Throws Unusable.
    RecoveredDatabase(const std::string& path, std::size_t pageSize);
    ~RecoveredDatabase();
    RecoveredDatabase(const RecoveredDatabase&) = delete;
    RecoveredDatabase& operator=(const RecoveredDatabase&) = delete;

    // Writes a row whose values are those of the first columns of `table`; a column that the schema
    // does not have is left out, one that the row does not have takes its default. Throws Unusable.
    void Insert(const TableShape& table, std::int64_t rowid, const std::vector<Value>& values);

    // All is written. Throws Unusable.
    void Commit();

  private:
    struct Close {
        void operator()(sqlite3* db) const;
    };
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };

    void Prepare(const TableShape& table, std::size_t values);
    void Execute(const char* sql);
    [[noreturn]] void Fail() const;

    std::unique_ptr<sqlite3, Close> m_db;
    std::vector<TableShape> m_shapes;
    // The INSERT of the row before, which mostly does for the next one too.
    std::unique_ptr<sqlite3_stmt, Finalize> m_insert;
    std::string m_table;
    std::size_t m_values = 0;
    std::vector<std::size_t> m_bound; // the values that it takes
};

} // namespace bancada::recuperacao

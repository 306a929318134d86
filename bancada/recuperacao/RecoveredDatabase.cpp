#include "bancada/recuperacao/RecoveredDatabase.h"

#include "LogDatabase/Schema.h"
#include "bancada/ForeignTexts.h"
#include "bancada/Messages.h"
#include "bancada/Unusable.h"

#include <algorithm>
#include <cassert>
#include <sqlite3.h>

namespace bancada::recuperacao
{
namespace
{

struct CloseDatabase {
    void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
};
using Database = std::unique_ptr<sqlite3, CloseDatabase>;

std::string Text(sqlite3_stmt* row, int column)
{
    const unsigned char* text = sqlite3_column_text(row, column);
    return text == nullptr ? "" : reinterpret_cast<const char*>(text);
}

// Calls `each` with every row of a query; of one that the engine refuses there are none.
template <typename Each>
void ForEachRow(sqlite3* db, const std::string& sql, const Each& each)
{
    sqlite3_stmt* query = nullptr;
    if (sqlite3_prepare_v2(db, sql.c_str(), -1, &query, nullptr) == SQLITE_OK) {
        while (sqlite3_step(query) == SQLITE_ROW) {
            each(query);
        }
    }
    sqlite3_finalize(query);
}

Database OpenInMemory()
{
    sqlite3* db = nullptr;
    const int result = sqlite3_open(":memory:", &db);
    Database opened(db);
    if (result != SQLITE_OK) {
        throw Unusable(Tr("cannot recover: %1", {TrForeign(sqlite3_errmsg(db))}));
    }
    return opened;
}

std::vector<Column> ReadColumns(sqlite3* db, const std::string& table)
{
    std::vector<Column> columns;
    ForEachRow(db, "SELECT name, type, pk FROM pragma_table_info('" + table + "') ORDER BY cid",
               [&columns](sqlite3_stmt* row) {
                   const std::string type = Text(row, 1);
                   columns.push_back({Text(row, 0),
                                      type == "TEXT" ? Affinity::TEXT : Affinity::NUMBER,
                                      type == "INTEGER" && sqlite3_column_int(row, 2) != 0});
               });
    return columns;
}

bool IsLoggingTable(const std::string& name)
{
    return log_database::TableIndex(name.c_str()) < log_database::LOG_TABLE_COUNT;
}

} // namespace

std::vector<TableShape> SchemaShapes(std::size_t pageSize)
{
    const Database db = OpenInMemory();
    const std::string size = "PRAGMA page_size = " + std::to_string(pageSize);
    if (sqlite3_exec(db.get(), size.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK ||
        sqlite3_exec(db.get(), log_database::LOG_SCHEMA, nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw Unusable(Tr("cannot recover: %1", {TrForeign(sqlite3_errmsg(db.get()))}));
    }
    std::vector<TableShape> shapes;
    ForEachRow(db.get(), "SELECT name, rootpage FROM sqlite_schema WHERE type = 'table'",
               [&](sqlite3_stmt* row) {
                   shapes.push_back({Text(row, 0),
                                     static_cast<std::uint32_t>(sqlite3_column_int64(row, 1)),
                                     ReadColumns(db.get(), Text(row, 0))});
               });
    return shapes;
}

std::vector<Column> ColumnsOf(const std::string& name, const std::string& sql)
{
    if (!IsLoggingTable(name) || sql.compare(0, 13, "CREATE TABLE ") != 0) {
        return {};
    }
    const Database db = OpenInMemory();
    // One statement alone, whatever follows it.
    ForEachRow(db.get(), sql, [](sqlite3_stmt*) {});
    return ReadColumns(db.get(), name);
}

void RecoveredDatabase::Close::operator()(sqlite3* db) const
{
    sqlite3_close_v2(db);
}

void RecoveredDatabase::Finalize::operator()(sqlite3_stmt* statement) const
{
    sqlite3_finalize(statement);
}

RecoveredDatabase::RecoveredDatabase(const std::string& path, std::size_t pageSize)
    : m_shapes(SchemaShapes(pageSize))
{
    sqlite3* db = nullptr;
    const int result =
        sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    m_db.reset(db);
    if (result != SQLITE_OK) {
        Fail();
    }
    // Nobody else knows the file, and one that is not whole is thrown away.
    Execute(("PRAGMA page_size = " + std::to_string(pageSize)).c_str());
    Execute("PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; BEGIN");
    if (log_database::MakeSchema(db) != SQLITE_OK) {
        Fail();
    }
}

RecoveredDatabase::~RecoveredDatabase() = default;

void RecoveredDatabase::Insert(const TableShape& table, std::int64_t rowid,
                               const std::vector<Value>& values)
{
    Prepare(table, values.size());
    sqlite3_bind_int64(m_insert.get(), 1, rowid);
    int parameter = 1;
    for (const std::size_t place : m_bound) {
        const Value& value = values[place];
        const int size = static_cast<int>(value.bytes.size());
        ++parameter;
        switch (value.kind) {
        case Kind::NOTHING:
            sqlite3_bind_null(m_insert.get(), parameter);
            break;
        case Kind::INTEGER:
            sqlite3_bind_int64(m_insert.get(), parameter, value.integer);
            break;
        case Kind::REAL:
            sqlite3_bind_double(m_insert.get(), parameter, value.real);
            break;
        case Kind::TEXT:
            sqlite3_bind_text(m_insert.get(), parameter, value.bytes.data(), size, SQLITE_STATIC);
            break;
        case Kind::BLOB:
            sqlite3_bind_blob(m_insert.get(), parameter, value.bytes.data(), size, SQLITE_STATIC);
            break;
        }
    }
    if (sqlite3_step(m_insert.get()) != SQLITE_DONE) {
        Fail();
    }
    sqlite3_reset(m_insert.get());
}

void RecoveredDatabase::Commit()
{
    m_insert.reset();
    Execute("COMMIT");
    m_db.reset();
}

void RecoveredDatabase::Prepare(const TableShape& table, std::size_t values)
{
    if (m_insert && m_table == table.name && m_values == values) {
        return;
    }
    const auto shape = std::find_if(m_shapes.begin(), m_shapes.end(),
                                    [&table](const auto& one) { return one.name == table.name; });
    assert(shape != m_shapes.end() && values <= table.columns.size());
    m_bound.clear();
    std::string columns = "rowid";
    std::string marks = "?";
    for (std::size_t i = 0; i < values; ++i) {
        const auto column =
            std::find_if(shape->columns.begin(), shape->columns.end(),
                         [&](const Column& one) { return one.name == table.columns[i].name; });
        if (column != shape->columns.end() && !column->isRowid) {
            columns += ", " + column->name;
            marks += ", ?";
            m_bound.push_back(i);
        }
    }
    const std::string sql =
        "INSERT INTO " + table.name + " (" + columns + ") VALUES (" + marks + ")";
    sqlite3_stmt* insert = nullptr;
    if (sqlite3_prepare_v2(m_db.get(), sql.c_str(), -1, &insert, nullptr) != SQLITE_OK) {
        Fail();
    }
    m_insert.reset(insert);
    m_table = table.name;
    m_values = values;
}

void RecoveredDatabase::Execute(const char* sql)
{
    if (sqlite3_exec(m_db.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
        Fail();
    }
}

void RecoveredDatabase::Fail() const
{
    throw Unusable(Tr("the recovered database cannot be written: %1",
                      {TrForeign(m_db ? sqlite3_errmsg(m_db.get()) : "out of memory")}));
}

} // namespace bancada::recuperacao

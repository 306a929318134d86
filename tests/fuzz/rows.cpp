// A logging database whose rows hold any value in any column, are missing or stand twice, before
// all that reads one.
#include "tests/fuzz/Day.h"
#include "tests/fuzz/Readers.h"

#include <algorithm>
#include <fuzzer/FuzzedDataProvider.h>
#include <sqlite3.h>
#include <string>
#include <vector>

namespace
{

struct Table {
    std::string name;
    std::vector<std::string> columns;
};

std::vector<std::string> ColumnOf(sqlite3* db, const std::string& sql)
{
    std::vector<std::string> values;
    const auto onRow = [](void* all, int, char** row, char**) {
        static_cast<std::vector<std::string>*>(all)->emplace_back(row[0]);
        return 0;
    };
    Hold(sqlite3_exec(db, sql.c_str(), onRow, &values, nullptr) == SQLITE_OK);
    return values;
}

std::vector<Table> TablesOf(sqlite3* db)
{
    std::vector<Table> tables;
    for (const std::string& name :
         ColumnOf(db, "SELECT name FROM sqlite_schema WHERE type = 'table' ORDER BY name")) {
        tables.push_back(
            {name, ColumnOf(db, "SELECT name FROM pragma_table_info('" + name + "')")});
    }
    return tables;
}

// Binds what no logger ever wrote: the type is none of the column's concern to the engine.
void BindAnything(sqlite3_stmt* statement, FuzzedDataProvider& data)
{
    switch (data.ConsumeIntegralInRange(0, 5)) {
    case 0:
        sqlite3_bind_null(statement, 1);
        break;
    case 1:
        sqlite3_bind_int64(statement, 1, data.ConsumeIntegral<std::int64_t>());
        break;
    case 2:
        sqlite3_bind_int64(statement, 1, data.ConsumeIntegralInRange(-2, 1000000));
        break;
    case 3:
        sqlite3_bind_double(statement, 1, data.ConsumeFloatingPoint<double>());
        break;
    default: {
        const std::string text = data.ConsumeRandomLengthString(300);
        const int length = static_cast<int>(text.size());
        if (data.ConsumeBool()) {
            sqlite3_bind_text(statement, 1, text.data(), length, SQLITE_TRANSIENT);
        } else {
            sqlite3_bind_blob(statement, 1, text.data(), length, SQLITE_TRANSIENT);
        }
    }
    }
}

void Change(sqlite3* db, const Table& table, FuzzedDataProvider& data)
{
    const std::string& column =
        table.columns[data.ConsumeIntegralInRange<std::size_t>(0, table.columns.size() - 1)];
    const std::string row = " (SELECT rowid FROM " + table.name +
                            " ORDER BY rowid LIMIT 1 OFFSET " +
                            std::to_string(data.ConsumeIntegralInRange(0, 40)) + ")";
    std::string sql;
    switch (data.ConsumeIntegralInRange(0, 7)) {
    case 0:
        sql = "DELETE FROM " + table.name + " WHERE ?1 IS ?1 AND rowid =" + row;
        break;
    case 1:
        sql = "INSERT INTO " + table.name + " SELECT * FROM " + table.name +
              " WHERE ?1 IS ?1 AND rowid =" + row;
        break;
    case 2: // a whole column
        sql = "UPDATE " + table.name + " SET " + column + " = ?1";
        break;
    default:
        sql = "UPDATE " + table.name + " SET " + column + " = ?1 WHERE rowid =" + row;
    }
    sqlite3_stmt* statement = nullptr;
    Hold(sqlite3_prepare_v2(db, sql.c_str(), -1, &statement, nullptr) == SQLITE_OK);
    BindAnything(statement, data);
    sqlite3_step(statement); // a constraint may refuse it
    sqlite3_finalize(statement);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    const std::string path = Scratch().Write("rows.db", ADay().closed);
    const int reader = data.ConsumeIntegralInRange(0, READERS - 1);
    const int number = data.ConsumeIntegralInRange(1, 40);

    sqlite3* db = nullptr;
    Hold(sqlite3_open(path.c_str(), &db) == SQLITE_OK);
    sqlite3_exec(db, "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; BEGIN", nullptr, nullptr,
                 nullptr);
    static const std::vector<Table> tables = TablesOf(db);
    for (int i = 0; i < 12 && data.remaining_bytes() > 0; ++i) {
        Change(db, tables[data.ConsumeIntegralInRange<std::size_t>(0, tables.size() - 1)], data);
    }
    Hold(sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr) == SQLITE_OK);
    sqlite3_close(db);

    ReadDatabase(path, reader, number);
    return 0;
}

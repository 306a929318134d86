#include "bancada/banco/LogSchema.h"

#include "bancada/banco/SchemaColumns.h"
#include "bancada/banco/Sql.h"

#include <memory>
#include <sqlite3.h>
#include <stdexcept>

namespace bancada
{

SchemaColumns ReadSchemaColumns(sqlite3* db)
{
    SchemaColumns columns;
    Query query(db, "SELECT tables.name, columns.name"
                    " FROM sqlite_schema AS tables, pragma_table_info(tables.name) AS columns"
                    " WHERE tables.type = 'table' ORDER BY tables.name, columns.cid");
    while (query.Next()) {
        columns.emplace_back(query.Text(0), query.Text(1));
    }
    if (query.Failed()) {
        throw std::runtime_error(sqlite3_errmsg(db));
    }
    return columns;
}

SchemaColumns LogSchemaColumns()
{
    sqlite3* handle = nullptr;
    const int opened = sqlite3_open(":memory:", &handle);
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> db(handle, sqlite3_close);
    if (opened != SQLITE_OK ||
        sqlite3_exec(handle, LOG_SCHEMA, nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw std::runtime_error(std::string("the schema: ") + sqlite3_errmsg(handle));
    }
    return ReadSchemaColumns(handle);
}

} // namespace bancada

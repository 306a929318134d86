#include "bancada/leitura/Table.h"

namespace bancada::leitura
{

std::vector<std::string> ColumnNames(const DatabaseReading& database, const std::string& table)
{
    std::vector<std::string> names;
    Query columns(database, "SELECT name FROM pragma_table_info(?1) ORDER BY cid");
    columns.With(table);
    while (columns.Next()) {
        names.push_back(columns.ReadText("name").Value());
    }
    return names;
}

} // namespace bancada::leitura

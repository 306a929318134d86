#include "bancada/banco/LogSchema.h"

namespace bancada
{

SchemaColumns LogSchemaColumns()
{
    SchemaColumns columns;
    for (int i = 0; i < log_database::LOG_COLUMN_COUNT; ++i) {
        columns.emplace_back(log_database::LOG_COLUMNS[i].table,
                             log_database::LOG_COLUMNS[i].column);
    }
    return columns;
}

} // namespace bancada

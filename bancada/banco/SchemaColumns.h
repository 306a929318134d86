// The columns that a database has.
#pragma once

#include "bancada/banco/LogSchema.h"

struct sqlite3;

namespace bancada
{

// As LogSchemaColumns, of any database. Throws std::runtime_error with the engine's error text.
SchemaColumns ReadSchemaColumns(sqlite3* db);

} // namespace bancada

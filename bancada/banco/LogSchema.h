// The schema of the logging database.
#pragma once

#include "LogDatabase/Schema.h"

#include <string>
#include <utility>
#include <vector>

namespace bancada
{

// The text of sqlite/schema.sql.
using log_database::LOG_SCHEMA;

// Every column of every table of the schema (table, column), by table name and column position.
using SchemaColumns = std::vector<std::pair<std::string, std::string>>;
SchemaColumns LogSchemaColumns();

} // namespace bancada

// The schema of the logging database.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace bancada
{

// The text of sqlite/schema.sql, taken from there by the build.
extern const char LOG_SCHEMA[];

// Every column of every table of the schema (table, column), by table name and column position.
using SchemaColumns = std::vector<std::pair<std::string, std::string>>;
SchemaColumns LogSchemaColumns();

} // namespace bancada

// The schema of the logging database, its version, and how older ones come to it.
#pragma once

#include "LogDatabase/Fault.h"

#include <cstdint>

struct sqlite3;

namespace log_database
{

// A database says what it is by its application_id: the letters ECF and, in the last byte, the
// version of its schema. One of before that rule carries none, is known by its tables, and counts
// as version 0.
inline constexpr std::int32_t APPLICATION = 0x45434600;
inline constexpr int SCHEMA_VERSION = 1;

// The text of sqlite/schema.sql, taken from there by the build.
extern const char LOG_SCHEMA[];

struct LogColumn {
    const char* table;
    const char* column;
    int since; // the version of the schema that has it first
};
// Every column of the schema, by table name and position; every table, by name.
extern const LogColumn LOG_COLUMNS[];
extern const int LOG_COLUMN_COUNT;
extern const char* const LOG_TABLES[];
extern const int LOG_TABLE_COUNT;

// The place of a logging table in LOG_TABLES, or LOG_TABLE_COUNT for any other name.
int TableIndex(const char* name);

struct SchemaIdentity {
    bool fresh = false;      // nothing was ever made in it
    int version = 0;         // of its schema
    std::int32_t number = 0; // of the last numbered command
};

// What a database is that may not be the right one. Each answers NONE, or the fault with its text
// in `reason`, and writes nothing.
LogFault ReadIdentity(sqlite3* db, SchemaIdentity& identity, Reason& reason);
// Every column that a schema of `version` promises is there, and no program (trigger, view).
LogFault CheckTables(sqlite3* db, int version, Reason& reason);
// The first of it, for `count` columns.
LogFault CheckColumns(sqlite3* db, const LogColumn* columns, int count, int version,
                      Reason& reason);
// No table holds a row.
LogFault CheckEmpty(sqlite3* db, Reason& reason);

// Make the schema, or take it from `version` to SCHEMA_VERSION. REQUIRE a transaction. Answer the
// engine's result.
int MakeSchema(sqlite3* db);
int UpgradeSchema(sqlite3* db, int version);

} // namespace log_database

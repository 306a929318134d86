#include "LogDatabase/Schema.h"

#include "LogDatabase/Fault.h"
#include "LogDatabase/Query.h"

#include <cstdio>
#include <cstring>
#include <sqlite3.h>

namespace log_database
{
namespace
{

constexpr std::int64_t VERSION_MASK = 0xFF;

// The step at place i takes a database from version i to i + 1.
const char* const UPGRADES[] = {
    "PRAGMA application_id = 0x45434601",
};
static_assert(sizeof UPGRADES / sizeof UPGRADES[0] == SCHEMA_VERSION);

LogFault ReadInteger(sqlite3* db, const char* sql, std::int64_t& value, Reason& reason)
{
    Query query(db, sql);
    if (!query.Next()) {
        return FaultOfEngine(db, reason);
    }
    value = query.Integer(0);
    return LogFault::NONE;
}

} // namespace

int TableIndex(const char* name)
{
    int low = 0;
    int high = LOG_TABLE_COUNT;
    while (low < high) {
        const int middle = (low + high) / 2;
        const int order = std::strcmp(LOG_TABLES[middle], name);
        if (order == 0) {
            return middle;
        }
        if (order < 0) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    return LOG_TABLE_COUNT;
}

LogFault ReadIdentity(sqlite3* db, SchemaIdentity& identity, Reason& reason)
{
    std::int64_t number = 0;
    std::int64_t application = 0;
    std::int64_t objects = 0;
    LogFault fault = ReadInteger(db, "PRAGMA user_version", number, reason);
    if (fault == LogFault::NONE) {
        fault = ReadInteger(db, "PRAGMA application_id", application, reason);
    }
    if (fault == LogFault::NONE) {
        fault = ReadInteger(db, "SELECT count(*) FROM sqlite_schema", objects, reason);
    }
    if (fault != LogFault::NONE) {
        return fault;
    }
    identity.number = static_cast<std::int32_t>(number);
    identity.fresh = objects == 0 && application == 0;
    identity.version = 0;
    if (application == 0) {
        return LogFault::NONE;
    }
    if ((application & ~VERSION_MASK) != APPLICATION) {
        std::snprintf(reason.text, sizeof reason.text,
                      "it is a database of another application (application_id %lld)",
                      static_cast<long long>(application));
        return LogFault::NOT_A_LOG;
    }
    identity.version = static_cast<int>(application & VERSION_MASK);
    if (identity.version > SCHEMA_VERSION) {
        std::snprintf(reason.text, sizeof reason.text,
                      "its schema is of version %d, and this program knows those up to %d",
                      identity.version, SCHEMA_VERSION);
        return LogFault::NEWER;
    }
    return LogFault::NONE;
}

LogFault CheckColumns(sqlite3* db, const LogColumn* columns, int count, int version, Reason& reason)
{
    for (int i = 0; i < count; ++i) {
        const LogColumn& due = columns[i];
        if (due.since > version) {
            continue; // for the upgrade to make
        }
        const int result = sqlite3_table_column_metadata(db, "main", due.table, due.column, nullptr,
                                                         nullptr, nullptr, nullptr, nullptr);
        if (result == SQLITE_OK) {
            continue;
        }
        if (result != SQLITE_ERROR) {
            return FaultOfEngine(db, reason);
        }
        std::snprintf(reason.text, sizeof reason.text,
                      "it is not a logging database: it has no column %s.%s", due.table,
                      due.column);
        return LogFault::NOT_A_LOG;
    }
    return LogFault::NONE;
}

LogFault CheckTables(sqlite3* db, int version, Reason& reason)
{
    const LogFault fault = CheckColumns(db, LOG_COLUMNS, LOG_COLUMN_COUNT, version, reason);
    if (fault != LogFault::NONE) {
        return fault;
    }
    Query programs(db, "SELECT type, name FROM sqlite_schema WHERE type IN ('trigger', 'view')");
    if (programs.Next()) {
        std::snprintf(reason.text, sizeof reason.text,
                      "it is not a logging database: it has the %s %.100s", programs.Text(0),
                      programs.Text(1));
        return LogFault::NOT_A_LOG;
    }
    return programs.Result() == SQLITE_DONE ? LogFault::NONE : FaultOfEngine(db, reason);
}

LogFault CheckEmpty(sqlite3* db, Reason& reason)
{
    for (int i = 0; i < LOG_TABLE_COUNT; ++i) {
        char sql[100];
        std::snprintf(sql, sizeof sql, "SELECT EXISTS (SELECT 1 FROM %s)", LOG_TABLES[i]);
        std::int64_t rows = 0;
        const LogFault fault = ReadInteger(db, sql, rows, reason);
        if (fault != LogFault::NONE) {
            return fault;
        }
        if (rows != 0) {
            std::snprintf(reason.text, sizeof reason.text, "it already holds rows (table %s)",
                          LOG_TABLES[i]);
            return LogFault::HOLDS_ROWS;
        }
    }
    return LogFault::NONE;
}

int MakeSchema(sqlite3* db)
{
    const int made = sqlite3_exec(db, LOG_SCHEMA, nullptr, nullptr, nullptr);
    return made == SQLITE_OK ? UpgradeSchema(db, SCHEMA_VERSION - 1) : made;
}

int UpgradeSchema(sqlite3* db, int version)
{
    int result = SQLITE_OK;
    for (int from = version; from < SCHEMA_VERSION && result == SQLITE_OK; ++from) {
        result = sqlite3_exec(db, UPGRADES[from], nullptr, nullptr, nullptr);
    }
    return result;
}

} // namespace log_database

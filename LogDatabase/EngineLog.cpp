#include "LogDatabase/EngineLog.h"

#include "LogDatabase/LogDatabase.h"

#include <sqlite3.h>

namespace log_database
{
namespace
{

thread_local EngineLogCounts counts;
bool taken = false;

// What is no failure, or the mere consequence of one.
bool IsRemark(int result)
{
    switch (result & 0xFF) {
    case SQLITE_NOTICE:
    case SQLITE_WARNING:
    case SQLITE_SCHEMA: // prepared again
    case SQLITE_MISUSE: // a query that could not be prepared is stepped
        return true;
    default:
        return false;
    }
}

void OnRecord(void*, int result, const char*)
{
    ++counts.records;
    if (IsRemark(result)) {
        return;
    }
    ++counts.errors;
    if (IsStatementsOwn(result)) {
        return;
    }
    ++counts.failures;
    counts.lastFailure = result;
}

} // namespace

const EngineLogCounts& EngineLog()
{
    return counts;
}

bool HasEngineLog()
{
    return taken;
}

bool IsStatementsOwn(int result)
{
    switch (result & 0xFF) {
    case SQLITE_OK:
    case SQLITE_ROW:
    case SQLITE_DONE:
    case SQLITE_ERROR:
    case SQLITE_CONSTRAINT:
    case SQLITE_MISMATCH:
    case SQLITE_RANGE:
    case SQLITE_TOOBIG:
    case SQLITE_AUTH:
        return true;
    default:
        return false;
    }
}

} // namespace log_database

bool LogDatabase::PrepareEngine()
{
    using namespace log_database;
    if (!taken) {
        // Of the same answer: the engine takes both before its first use, and neither after it.
        sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
        taken =
            sqlite3_config(SQLITE_CONFIG_LOG, OnRecord, static_cast<void*>(nullptr)) == SQLITE_OK;
    }
    return taken;
}

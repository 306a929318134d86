#include "bancada/banco/EngineLog.h"

#include <sqlite3.h>

namespace bancada
{
namespace
{

thread_local EngineLogCounts counts;

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
    if (IsStatementsOwn(result) || IsRemark(result)) {
        return;
    }
    ++counts.failures;
    counts.lastFailure = result;
}

const bool installed =
    sqlite3_config(SQLITE_CONFIG_LOG, OnRecord, static_cast<void*>(nullptr)) == SQLITE_OK;

} // namespace

const EngineLogCounts& EngineLog()
{
    static_cast<void>(installed);
    return counts;
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

} // namespace bancada

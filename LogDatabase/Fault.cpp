#include "LogDatabase/Fault.h"

#include <cstring>
#include <sqlite3.h>

namespace log_database
{

LogFault FaultOf(int result)
{
    if (result == SQLITE_IOERR_NOMEM) {
        return LogFault::NO_MEMORY;
    }
    switch (result & 0xFF) {
    case SQLITE_OK:
        return LogFault::NONE;
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
        return LogFault::CANNOT_OPEN;
    case SQLITE_NOTADB:
        return LogFault::NOT_A_DATABASE;
    case SQLITE_CORRUPT:
    case SQLITE_FORMAT:
        return LogFault::DAMAGED;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL:
        return LogFault::LOCKED;
    case SQLITE_READONLY:
        return LogFault::READ_ONLY;
    case SQLITE_FULL:
        return LogFault::FULL;
    case SQLITE_NOMEM:
        return LogFault::NO_MEMORY;
    case SQLITE_IOERR:
    case SQLITE_NOLFS:
        return LogFault::DISK;
    case SQLITE_INTERRUPT:
        return LogFault::INTERRUPTED;
    default:
        return LogFault::OTHER;
    }
}

LogFault FaultOfEngine(sqlite3* db, Reason& reason)
{
    const int number = sqlite3_system_errno(db);
    if (number == 0) {
        CopyText(reason.text, sqlite3_errmsg(db));
    } else {
        std::snprintf(reason.text, sizeof reason.text, "%s (%s)", sqlite3_errmsg(db),
                      std::strerror(number));
    }
    const LogFault fault = FaultOf(sqlite3_extended_errcode(db));
    return fault == LogFault::NONE ? LogFault::OTHER : fault;
}

} // namespace log_database

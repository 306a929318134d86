#include "LogDatabase/Fault.h"

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

} // namespace log_database

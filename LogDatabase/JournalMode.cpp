// How commits are made durable.
#include "LogDatabase/EngineLog.h"
#include "LogDatabase/Fault.h"
#include "LogDatabase/LogDatabase.h"
#include "LogDatabase/Query.h"

#include "MfdServices/GravaLog.h"

#include <cstdio>
#include <cstring>
#include <sqlite3.h>

using namespace log_database;

namespace
{

// False where it cannot be read.
bool ReadFile(sqlite3* db)
{
    return Query(db, "PRAGMA user_version").Next();
}

} // namespace

// Whether the database is in that mode, whoever has set it.
bool LogDatabase::IsWriteAhead()
{
    m_own = true;
    const bool isRead = ReadFile(m_db);
    Query mode(m_db, "PRAGMA journal_mode");
    const bool isWriteAhead = isRead && mode.Next() && std::strcmp(mode.Text(0), "wal") == 0;
    m_own = false;
    return isWriteAhead;
}

// The write-ahead log, synced at every commit: of all the engine's modes the one that keeps each
// command that was acknowledged through a power cut, with one sync. How the statement ends counts,
// not what its row says: its own commit comes after it. So the mode is asked again, and before
// each the file is read: after a failure the engine remembers the mode that it was to have until it
// reads the one that it has.
bool LogDatabase::SetWriteAheadLog()
{
    char reason[sizeof m_notice] = "";
    m_own = true;
    ReadFile(m_db);
    {
        Query set(m_db, "PRAGMA journal_mode = WAL");
        while (set.Next()) {
            CopyText(reason, set.Text(0));
        }
        if (set.Result() != SQLITE_DONE) {
            CopyText(reason, sqlite3_errmsg(m_db));
        }
    }
    m_own = false;
    const bool isSet = IsWriteAhead();
    if (!isSet && !m_journalTold) {
        std::snprintf(m_notice, sizeof m_notice, "LogDatabase: no write-ahead log: %.180s", reason);
        m_journalTold = true;
    } else if (isSet && m_journalTold) {
        CopyText(m_notice, "LogDatabase: the write-ahead log is in use again");
        m_journalTold = false;
    }
    return isSet;
}

// Without the write-ahead log a command that was acknowledged is kept only if the folder is synced
// too when the journal is gone: that is EXTRA.
bool LogDatabase::SetJournal()
{
    if (m_synced && (m_writeAheadLog || m_inMemory)) {
        return true;
    }
    if (!m_inMemory && SetWriteAheadLog() != m_writeAheadLog) {
        m_writeAheadLog = !m_writeAheadLog;
        m_synced = false;
    }
    if (!m_synced) {
        m_synced = ExecuteOwn(m_writeAheadLog ? "PRAGMA synchronous = FULL"
                                              : "PRAGMA synchronous = EXTRA");
    }
    return m_synced;
}

void LogDatabase::TellNotice()
{
    if (m_engineTooLate) {
        m_engineTooLate = false;
        char late[sizeof LATE_ENGINE];
        CopyText(late, LATE_ENGINE);
        Vindral_GravaLog(late);
    }
    if (m_notice[0] != '\0') {
        Vindral_GravaLog(m_notice);
        m_notice[0] = '\0';
    }
}

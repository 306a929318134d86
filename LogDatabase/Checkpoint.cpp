// The write-ahead log's size, and how it comes back into the database.
#include "LogDatabase/Fault.h"
#include "LogDatabase/LogDatabase.h"
#include "LogDatabase/Query.h"

#include "MfdServices/GravaLog.h"

#include <algorithm>
#include <cstdio>
#include <sqlite3.h>

using namespace log_database;

namespace
{

// The engine's write-ahead log: a header, and each page with one of its own.
constexpr std::int64_t LOG_HEADER_BYTES = 32;
constexpr std::int64_t FRAME_HEADER_BYTES = 24;

} // namespace

// In place of the engine's own checkpoint within COMMIT: when the log is copied is decided here.
void LogDatabase::WatchLog()
{
    sqlite3_wal_hook(m_db, OnLog, this);
}

int LogDatabase::OnLog(void* self, sqlite3*, const char*, int pages)
{
    auto& owner = *static_cast<LogDatabase*>(self);
    owner.m_logBytes = LOG_HEADER_BYTES + pages * (FRAME_HEADER_BYTES + owner.m_pageBytes);
    return SQLITE_OK;
}

bool LogDatabase::ReadPage()
{
    Query size(m_db, "PRAGMA page_size");
    if (!size.Next()) {
        return false;
    }
    m_pageBytes = size.Integer(0);
    // A log that had to grow gives its room back when it begins anew.
    char sql[60];
    std::snprintf(sql, sizeof sql, "PRAGMA journal_size_limit = %lld",
                  static_cast<long long>(m_options.checkpointBytes));
    if (!ExecuteOwn(sql) || m_options.maxBytes <= 0) {
        return m_options.maxBytes <= 0;
    }
    std::snprintf(sql, sizeof sql, "PRAGMA max_page_count = %lld",
                  static_cast<long long>(m_options.maxBytes / m_pageBytes));
    return ExecuteOwn(sql);
}

// After a commit: what no reader needs of a log that is long enough is copied into the database.
void LogDatabase::BoundLog()
{
    if (m_logBytes <= m_options.tellLogBytes) {
        m_logTold = false;
    }
    if (m_logBytes <= m_options.checkpointBytes) {
        return;
    }
    const LogFault fault = Checkpoint(SQLITE_CHECKPOINT_PASSIVE);
    if (fault == LogFault::NONE) {
        m_logTold = false;
    } else if (fault == LogFault::LOCKED && m_logBytes > m_options.tellLogBytes && !m_logTold) {
        m_logTold = true;
        char entry[120];
        std::snprintf(entry, sizeof entry,
                      "LogDatabase: the write-ahead log has %lld bytes: a reader stays",
                      static_cast<long long>(m_logBytes));
        Vindral_GravaLog(entry);
    }
}

// Answers LOCKED when a reader still needs some of the log.
LogFault LogDatabase::Checkpoint(int mode)
{
    int pages = 0;
    int copied = 0;
    m_own = true;
    const int result = sqlite3_wal_checkpoint_v2(m_db, "main", mode, &pages, &copied);
    m_own = false;
    if (result != SQLITE_OK) {
        return FaultOf(result);
    }
    return copied < pages ? LogFault::LOCKED : LogFault::NONE;
}

LogFault LogDatabase::Rest()
{
    if (!IsOpen() || m_inCommand || !m_writeAheadLog) {
        return LogFault::NONE;
    }
    // The engine waits until nobody reads in the place where a reader once held an old snapshot,
    // and does not see that readers who overlap hold newer ones there by now, without end. Asked
    // anew, it looks anew.
    constexpr int LOOK_MS = 50;
    LogFault fault = LogFault::NONE;
    int waited = 0;
    do {
        const int wait = std::min(LOOK_MS, m_options.busyTimeoutMs - waited);
        sqlite3_busy_timeout(m_db, wait);
        fault = Checkpoint(SQLITE_CHECKPOINT_RESTART);
        waited += wait;
    } while (fault == LogFault::LOCKED && waited < m_options.busyTimeoutMs);
    sqlite3_busy_timeout(m_db, m_options.busyTimeoutMs);
    if (fault == LogFault::NONE) {
        m_logBytes = 0;
    }
    return fault;
}

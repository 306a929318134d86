// The connection: opened on the right file and on no other, set up, and opened anew when it does
// not do its work any more.
#include "LogDatabase/EngineLog.h"
#include "LogDatabase/Guard.h"
#include "LogDatabase/LogDatabase.h"
#include "LogDatabase/Look.h"
#include "LogDatabase/Query.h"
#include "LogDatabase/Schema.h"

#include <cstdio>
#include <cstring>
#include <sqlite3.h>

using namespace log_database;

namespace
{

constexpr char IN_MEMORY[] = ":memory:";

// Whether a file that could not be opened may be one that can be opened later, as it is.
bool MayPass(LogFault fault)
{
    switch (fault) {
    case LogFault::CANNOT_OPEN:
    case LogFault::LOCKED:
    case LogFault::READ_ONLY:
    case LogFault::FULL:
    case LogFault::NO_MEMORY:
    case LogFault::DISK:
        return true;
    default:
        return false;
    }
}

} // namespace

LogFault LogDatabase::Fail(LogFault fault, const char* reason)
{
    CopyText(m_text, reason);
    return fault;
}

LogFault LogDatabase::FailByEngine()
{
    Reason reason;
    const LogFault fault = FaultOfEngine(m_db, reason);
    return Fail(fault, reason.text);
}

LogFault LogDatabase::Open(const char* path, const LogDatabaseOptions& options)
{
    Close();
    m_options = options;
    m_text[0] = '\0';
    m_wasOpen = false;
    m_path[0] = '\0';
    if (path == nullptr || path[0] == '\0') {
        m_fault = Fail(LogFault::CANNOT_OPEN, "it has no name");
    } else if (std::strlen(path) >= sizeof m_path) {
        m_fault = Fail(LogFault::CANNOT_OPEN, "its name is too long");
    } else {
        std::strcpy(m_path, path);
        m_inMemory = std::strcmp(path, IN_MEMORY) == 0;
        m_engineTooLate = !PrepareEngine();
        m_fault = OpenFile();
    }
    if (!IsOpen()) {
        CopyText(m_refusal, m_text);
        RefuseEverything();
    }
    if (m_fault == LogFault::NONE && m_engineTooLate) {
        CopyText(m_text, LATE_ENGINE);
    }
    return m_fault;
}

LogFault LogDatabase::OpenFile()
{
    if (!m_inMemory) {
        LogFault fault = FinishSettingAside();
        if (fault != LogFault::NONE) {
            return fault;
        }
        SchemaIdentity identity;
        Reason reason;
        fault = Look(m_path, m_options, identity, reason);
        if (fault != LogFault::NONE) {
            return Fail(fault, reason.text);
        }
    }
    return Connect();
}

LogFault LogDatabase::Connect()
{
    const int create = m_wasOpen ? 0 : SQLITE_OPEN_CREATE;
    LogFault fault = LogFault::NONE;
    if (sqlite3_open_v2(m_path, &m_db,
                        SQLITE_OPEN_READWRITE | create | SQLITE_OPEN_NOMUTEX |
                            SQLITE_OPEN_EXRESCODE,
                        m_options.vfs) != SQLITE_OK) {
        fault = FailByEngine();
    } else {
        fault = SetUp();
    }
    if (fault != LogFault::NONE && fault != LogFault::READ_ONLY) {
        Disconnect(LogAtEnd::STAYS);
        return fault;
    }
    m_wasOpen = true;
    if (m_options.connected != nullptr) {
        m_options.connected(m_options.context, m_db);
    }
    return fault;
}

LogFault LogDatabase::SetUp()
{
    sqlite3_busy_timeout(m_db, m_options.busyTimeoutMs);
    DistrustFile(m_db);

    SchemaIdentity identity;
    Reason reason;
    LogFault fault = ReadIdentity(m_db, identity, reason);
    if (fault != LogFault::NONE) {
        return Fail(fault, reason.text);
    }
    if (identity.fresh && m_wasOpen) {
        return Fail(LogFault::NOT_A_LOG, "it was emptied while it was in use");
    }
    const bool readOnly = IsReadOnly();
    if (readOnly && identity.fresh) {
        return Fail(LogFault::READ_ONLY, sqlite3_errstr(SQLITE_READONLY));
    }
    m_number = identity.number;
    if (identity.fresh) {
        char sql[40];
        std::snprintf(sql, sizeof sql, "PRAGMA page_size = %d", m_options.pageSize);
        ExecuteOwn(sql);
    }
    WatchLog();
    if (identity.version == SCHEMA_VERSION || readOnly) {
        fault = SetJournal() ? LogFault::NONE : FailByEngine();
    } else {
        fault = identity.fresh ? Make() : Upgrade();
    }
    if (fault != LogFault::NONE) {
        return fault;
    }
    if (!ReadPage()) {
        return FailByEngine();
    }
    Guard();
    if (!PrepareOwn()) {
        return FailByEngine();
    }
    return readOnly ? Fail(LogFault::READ_ONLY, sqlite3_errstr(SQLITE_READONLY)) : LogFault::NONE;
}

LogFault LogDatabase::Make()
{
    return SetJournal() ? WriteSchema() : FailByEngine();
}

// An older database keeps the journal that it has until it is upgraded: if that fails, nothing has
// changed.
LogFault LogDatabase::Upgrade()
{
    const bool prepared = IsWriteAhead() ? SetJournal() : ExecuteOwn("PRAGMA synchronous = EXTRA");
    LogFault fault = prepared ? WriteSchema() : FailByEngine();
    if (fault == LogFault::NONE && !SetJournal()) {
        fault = FailByEngine();
    }
    return fault;
}

// In one transaction.
LogFault LogDatabase::WriteSchema()
{
    if (!ExecuteOwn("BEGIN IMMEDIATE")) {
        return FailByEngine();
    }
    // Whoever came first has done it.
    SchemaIdentity now;
    Reason reason;
    m_own = true;
    LogFault fault = ReadIdentity(m_db, now, reason);
    const bool written =
        fault == LogFault::NONE &&
        (now.fresh ? MakeSchema(m_db) : UpgradeSchema(m_db, now.version)) == SQLITE_OK;
    m_own = false;
    if (written && ExecuteOwn("COMMIT")) {
        return LogFault::NONE;
    }
    fault = fault == LogFault::NONE ? FailByEngine() : Fail(fault, reason.text);
    if (written && !now.fresh && m_writeAheadLog) {
        ExecuteOwn("ROLLBACK");
        OverwriteFailedCommit(now.number);
    }
    return fault;
}

bool LogDatabase::PrepareOwn()
{
    const struct {
        sqlite3_stmt*& statement;
        const char* sql;
    } all[] = {{m_begin, "BEGIN IMMEDIATE"},
               {m_commit, "COMMIT"},
               {m_rollback, "ROLLBACK"},
               {m_readNumber, "PRAGMA user_version"}};
    m_own = true;
    bool prepared = true;
    for (const auto& one : all) {
        prepared = prepared && sqlite3_prepare_v3(m_db, one.sql, -1, SQLITE_PREPARE_PERSISTENT,
                                                  &one.statement, nullptr) == SQLITE_OK;
    }
    m_own = false;
    return prepared;
}

bool LogDatabase::ExecuteOwn(const char* sql)
{
    m_own = true;
    const int result = sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr);
    m_own = false;
    return result == SQLITE_OK;
}

bool LogDatabase::StepOwn(sqlite3_stmt* statement)
{
    m_own = true;
    sqlite3_step(statement);
    const int result = sqlite3_reset(statement);
    m_own = false;
    return result == SQLITE_OK;
}

void LogDatabase::Disconnect(LogAtEnd log)
{
    if (m_db == nullptr) {
        return;
    }
    m_own = true;
    while (sqlite3_stmt* open = sqlite3_next_stmt(m_db, nullptr)) {
        sqlite3_finalize(open);
    }
    m_begin = m_commit = m_rollback = m_readNumber = nullptr;
    if (log == LogAtEnd::STAYS) {
        sqlite3_db_config(m_db, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    }
    sqlite3_close(m_db);
    m_own = false;
    m_db = nullptr;
    m_refuses = false;
    m_writeAheadLog = m_synced = false;
    m_logBytes = 0;
}

void LogDatabase::Close()
{
    Disconnect(LogAtEnd::IS_COPIED);
    m_inCommand = false;
}

// Stands in for the connection that could not be had: whatever runs on it is refused and named in
// the firmware log.
void LogDatabase::RefuseEverything()
{
    if (sqlite3_open_v2(IN_MEMORY, &m_db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr) !=
        SQLITE_OK) {
        sqlite3_close(m_db);
        m_db = nullptr;
        return;
    }
    m_refuses = true;
    Guard();
}

bool LogDatabase::IsReadOnly() const
{
    return sqlite3_db_readonly(m_db, "main") == 1;
}

// Whether what keeps a command from beginning may be the connection's own: a lock that it could not
// give back, a file that is not the one that it has open any more.
bool LogDatabase::NewConnectionMayHelp() const
{
    if (m_inMemory || m_path[0] == '\0') {
        return false;
    }
    if (!IsOpen()) {
        return m_wasOpen || MayPass(m_fault);
    }
    if (IsReadOnly()) {
        return true;
    }
    switch (FaultOf(sqlite3_extended_errcode(m_db))) {
    case LogFault::LOCKED:
    case LogFault::DISK:
    case LogFault::CANNOT_OPEN:
    case LogFault::READ_ONLY:
        return true;
    default:
        return false;
    }
}

// Answers whether there is a connection again. Without one, whatever runs is refused.
bool LogDatabase::Reconnect()
{
    Disconnect(LogAtEnd::STAYS);
    m_fault = m_wasOpen ? Connect() : OpenFile();
    if (!IsOpen()) {
        CopyText(m_refusal, m_text);
        RefuseEverything();
    }
    return IsOpen();
}

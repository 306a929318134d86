// A command's transaction: begun, watched, and ended one way or the other.
#include "LogDatabase/EngineLog.h"
#include "LogDatabase/Fault.h"
#include "LogDatabase/LogDatabase.h"

#include "MfdServices/GravaLog.h"

#include <cstdio>
#include <sqlite3.h>

using namespace log_database;

bool LogDatabase::Begin()
{
    m_inCommand = true;
    m_ownNumber = 0;
    m_asked = m_lost = m_lossTold = m_accessing = false;
    m_lossFault = LogFault::NONE;
    m_loss[0] = '\0';

    TellNotice();
    if (m_suspect) {
        m_suspect = false;
        Reconnect();
    }
    m_began = BeginTransaction(m_options.busyTimeoutMs);
    if (!m_began && NewConnectionMayHelp() && Reconnect()) {
        // The first attempt has waited.
        m_began = BeginTransaction(0);
        if (m_began) {
            char entry[] = "LogDatabase: the connection was opened anew";
            Vindral_GravaLog(entry);
        }
        sqlite3_busy_timeout(m_db, m_options.busyTimeoutMs);
    }
    if (!m_began) {
        if (m_path[0] == '\0' && m_fault == LogFault::NONE) {
            Lose(LogFault::CANNOT_OPEN, "no database is open");
        } else if (!IsOpen()) {
            Lose(m_fault, m_text);
        } else if (IsReadOnly()) {
            Lose(LogFault::READ_ONLY, sqlite3_errstr(SQLITE_READONLY));
        } else {
            LoseByEngine();
        }
    }
    m_recordsAtBegin = EngineLog().records;
    m_failuresAtBegin = EngineLog().failures;
    m_errorsSeen = EngineLog().errors;
    return m_began;
}

bool LogDatabase::BeginTransaction(int waitMs)
{
    // The engine begins a transaction of a file that it can only read, but as a reader.
    if (!IsOpen() || IsReadOnly()) {
        return false;
    }
    // Nothing should be open here; a transaction that a failed rollback left behind would swallow
    // this command.
    if (sqlite3_get_autocommit(m_db) == 0) {
        StepOwn(m_rollback);
    }
    // A reader that keeps the journal from being what it should be is not waited for.
    sqlite3_busy_timeout(m_db, 0);
    const bool journalSet = SetJournal();
    sqlite3_busy_timeout(m_db, waitMs);
    return journalSet && StepOwn(m_begin);
}

LogOutcome LogDatabase::Commit()
{
    LogOutcome outcome;
    if (!m_inCommand) {
        return outcome;
    }
    CheckTransaction();
    // Without memory a statement may fail before it asks for anything.
    m_asked = m_asked || EngineLog().records != m_recordsAtBegin;
    ReleaseOpenStatements();
    if (!m_lost && m_ownNumber > 0) {
        WriteNumber();
    }
    if (!m_lost) {
        SyncLog();
        if (!StepOwn(m_commit)) {
            LoseByEngine();
            // A lock that it could not give back would cost the commands to come, too.
            m_suspect =
                !m_inMemory && (m_lossFault == LogFault::LOCKED || m_lossFault == LogFault::DISK);
            m_lastAttempt = m_ownNumber;
            EndTransaction();
            std::int32_t unchanged = 0;
            if (ReadNumber(unchanged)) {
                OverwriteFailedCommit(unchanged);
            }
        }
    } else {
        EndTransaction();
    }
    m_inCommand = false;
    if (!m_lost && m_ownNumber > 0) {
        m_number = m_ownNumber;
        m_lastAttempt = 0;
    }

    // A command that asked for nothing has lost nothing.
    if (m_lost && (m_asked || (m_began && m_ownNumber > 0))) {
        TellLoss();
        SyncLog();
        outcome.state = m_began ? LogState::LOST : LogState::NOT_BEGUN;
        outcome.fault = m_lossFault;
        outcome.text = m_loss;
    } else {
        m_loss[0] = '\0';
    }
    BoundLog();
    outcome.logBytes = m_logBytes;
    return outcome;
}

void LogDatabase::EndTransaction()
{
    if (m_db != nullptr && sqlite3_get_autocommit(m_db) == 0) {
        StepOwn(m_rollback);
    }
}

// A commit that failed in its last step, the sync, has left the whole command in the write-ahead
// log, and whoever reads the log anew takes it for committed, though it was told as lost. The next
// transaction overwrites it; as that of a next command may never come, one that changes nothing
// (the database carries the number `unchanged`) does. It asks for no sync at first: at the log's
// beginning a sync comes before what overwrites, and may fail for the same reason. Then it is made
// durable, as far as the disk does it.
void LogDatabase::OverwriteFailedCommit(std::int32_t unchanged)
{
    if (m_writeAheadLog && ExecuteOwn("PRAGMA synchronous = OFF")) {
        m_synced = false;
        ExecuteNumber(unchanged);
    }
    if (SetJournal()) {
        ExecuteNumber(unchanged);
    }
}

bool LogDatabase::ReadNumber(std::int32_t& number)
{
    m_own = true;
    const bool read = sqlite3_step(m_readNumber) == SQLITE_ROW;
    if (read) {
        number = sqlite3_column_int(m_readNumber, 0);
    }
    sqlite3_reset(m_readNumber);
    m_own = false;
    return read;
}

bool LogDatabase::ExecuteNumber(std::int32_t number)
{
    char sql[40];
    std::snprintf(sql, sizeof sql, "PRAGMA user_version = %ld", static_cast<long>(number));
    return ExecuteOwn(sql);
}

// The number that is there is compared within the transaction, where nobody else can change it. A
// commit of this object's own that failed may have reached the file all the same, if its disk said
// that it failed and did not.
void LogDatabase::WriteNumber()
{
    std::int32_t carried = 0;
    if (!ReadNumber(carried)) {
        LoseByEngine();
    } else if (carried != m_number && (m_lastAttempt == 0 || carried != m_lastAttempt)) {
        char reason[sizeof m_loss];
        std::snprintf(reason, sizeof reason,
                      "another program has written to the database: it is at command %ld, not %ld",
                      static_cast<long>(carried), static_cast<long>(m_number));
        Lose(LogFault::WRONG_NUMBER, reason);
    } else if (!ExecuteNumber(m_ownNumber)) {
        LoseByEngine();
    }
}

// Released, so that the transaction's end leaves no read open: some loggers leave their counting
// query as it is. Its last result comes again here, and may be the only word of a failure.
void LogDatabase::ReleaseOpenStatements()
{
    sqlite3_stmt* open = m_db == nullptr ? nullptr : sqlite3_next_stmt(m_db, nullptr);
    while (open != nullptr) {
        sqlite3_stmt* next = sqlite3_next_stmt(m_db, open);
        if (!IsOwn(open) && !IsStatementsOwn(sqlite3_finalize(open))) {
            LoseByEngine();
        }
        open = next;
    }
}

bool LogDatabase::IsOwn(const sqlite3_stmt* statement) const
{
    return statement == m_begin || statement == m_commit || statement == m_rollback ||
           statement == m_readNumber;
}

void LogDatabase::Lose(LogFault fault, const char* reason)
{
    if (m_lost) {
        return;
    }
    m_lost = true;
    m_lossFault = fault;
    CopyText(m_loss, reason);
}

void LogDatabase::LoseByEngine()
{
    Lose(FaultOf(sqlite3_extended_errcode(m_db)), sqlite3_errmsg(m_db));
}

void LogDatabase::TellLoss()
{
    if (m_lossTold) {
        return;
    }
    m_lossTold = true;
    char entry[sizeof LOST_COMMAND_ENTRY + sizeof m_loss];
    std::snprintf(entry, sizeof entry, "%s%s", LOST_COMMAND_ENTRY, m_loss);
    Vindral_GravaLog(entry);
}

void LogDatabase::SyncLog()
{
    if (m_options.syncLog != nullptr) {
        m_options.syncLog(m_options.context);
    }
}

// Notices a failure that cost, or may have cost, the command's transaction. Asked whenever the
// loggers come back to the engine: the failure itself is told to nobody but the statement that met
// it, and the engine may have rolled everything back. A query that could not even be prepared looks
// to a logger like a count of none, and the row that it writes then would be a wrong one: the
// engine's log alone knows.
void LogDatabase::CheckTransaction()
{
    if (!m_inCommand || m_lost) {
        return;
    }
    if (!IsStatementsOwn(sqlite3_errcode(m_db))) {
        LoseByEngine();
    } else if (EngineLog().failures != m_failuresAtBegin) {
        const int failure = EngineLog().lastFailure;
        Lose(FaultOf(failure), sqlite3_errstr(failure));
    } else if (sqlite3_get_autocommit(m_db) != 0) {
        Lose(LogFault::ROLLED_BACK, "the engine has rolled its transaction back");
    }
}

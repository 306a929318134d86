#include "bancada/banco/LogDatabase.h"

#include "LogDatabase/Schema.h"
#include "bancada/ForeignTexts.h"
#include "bancada/Messages.h"
#include "bancada/Unusable.h"
#include "bancada/log/FirmwareLog.h"

#include <sqlite3.h>

namespace bancada
{
namespace
{

using log_database::LOG_TABLE_COUNT;
using log_database::LOG_TABLES;

// The largest array in which the module composes a statement.
constexpr std::size_t MAX_STATEMENT_BYTES = 8000;

// Before anything else of the program uses the engine.
[[maybe_unused]] const bool ENGINE_PREPARED = ::LogDatabase::PrepareEngine();

} // namespace

LogDatabase::LogDatabase(const std::string& path, FirmwareLog& log)
    : LogDatabase(path, log, Options())
{
}

LogDatabase::LogDatabase(const std::string& path, FirmwareLog& log, const Options& options)
    : m_log(log), m_vfs(options.vfs), m_accept(options.accept),
      m_commandRows(static_cast<std::size_t>(LOG_TABLE_COUNT))
{
    // The engine calls back from C: nothing there may allocate and throw.
    m_started.reserve(MAX_STATEMENT_BYTES);
    for (int i = 0; i < LOG_TABLE_COUNT; ++i) {
        m_rows.push_back(&m_counts.rows[LOG_TABLES[i]]);
    }

    LogDatabaseOptions own;
    own.onlyEmpty = !options.append;
    own.busyTimeoutMs = options.busyTimeoutMs;
    own.vfs = m_vfs.empty() ? nullptr : m_vfs.c_str();
    own.pageSize = options.pageSize > 0 ? options.pageSize : own.pageSize;
    own.checkpointBytes =
        options.checkpointBytes > 0 ? options.checkpointBytes : own.checkpointBytes;
    own.context = this;
    own.accepts = OnAccept;
    own.syncLog = OnSyncLog;
    own.connected = OnConnected;
    own.preparing = OnPreparing;
    own.starting = OnStarting;
    const LogFault fault = m_owner.Open(path.c_str(), own);
    if (m_refusal) {
        std::rethrow_exception(m_refusal);
    }
    // Of a file that can only be read, the commands lose their rows, and go on.
    if (fault != LogFault::NONE && fault != LogFault::READ_ONLY) {
        throw Unusable(Tr(fault == LogFault::HOLDS_ROWS
                              ? TrLater("cannot use the database %1: %2; --append adds to them")
                              : TrLater("cannot use the database %1: %2"),
                          {path, TrForeign(m_owner.Text())}));
    }
    m_log.SetRejectionObserver(
        [this](std::string_view statement) { StatementRejected(statement); });
}

LogDatabase::~LogDatabase()
{
    m_log.SetRejectionObserver(nullptr);
}

void LogDatabase::BeginCommand()
{
    ForgetStatement();
    m_owner.Begin();
}

bool LogDatabase::CommitCommand()
{
    const LogOutcome outcome = m_owner.Commit();
    m_loss = outcome.text;
    SettleCounts(outcome.state == LogState::KEPT);
    return outcome.state == LogState::KEPT;
}

void LogDatabase::SettleCounts(bool kept)
{
    KeepStatement();
    if (kept) {
        m_counts.statementsExecuted += m_commandStatements;
    } else {
        m_counts.statementsUndone += m_commandStatements;
        ++m_counts.commandsLost;
    }
    for (std::size_t i = 0; i < m_commandRows.size(); ++i) {
        if (kept) {
            m_rows[i]->inserted += m_commandRows[i].inserted;
            m_rows[i]->updated += m_commandRows[i].updated;
        }
        m_commandRows[i] = {};
    }
    m_commandStatements = 0;
}

void LogDatabase::ForgetStatement()
{
    m_started.clear();
    m_startedWrites = false;
    m_change = {};
}

void LogDatabase::KeepStatement()
{
    if (m_startedWrites) {
        ++m_commandStatements;
    }
    if (m_change.table >= 0) {
        LogDatabaseCounts::Rows& rows = m_commandRows[static_cast<std::size_t>(m_change.table)];
        rows.inserted += m_change.rows.inserted;
        rows.updated += m_change.rows.updated;
    }
    ForgetStatement();
}

// The module reports a rejected statement right after it failed. If it had been started, what it
// changed is undone.
void LogDatabase::StatementRejected(std::string_view statement)
{
    ++m_counts.statementsRejected;
    if (statement == m_started) {
        ForgetStatement();
    } else {
        KeepStatement();
    }
}

bool LogDatabase::OnAccept(void* self, std::int32_t number)
{
    auto& database = *static_cast<LogDatabase*>(self);
    if (!database.m_accept) {
        return true;
    }
    // The library is one that no exception may pass.
    try {
        database.m_accept(number);
        return true;
    } catch (...) {
        database.m_refusal = std::current_exception();
        return false;
    }
}

void LogDatabase::OnSyncLog(void* self)
{
    static_cast<LogDatabase*>(self)->m_log.Sync();
}

void LogDatabase::OnConnected(void* self, sqlite3* db)
{
    sqlite3_update_hook(db, OnUpdate, self);
}

// A statement is being prepared: the one before it, if any, was not reported and stays.
void LogDatabase::OnPreparing(void* self)
{
    auto& database = *static_cast<LogDatabase*>(self);
    if (!database.m_started.empty()) {
        database.KeepStatement();
    }
}

void LogDatabase::OnStarting(void* self, sqlite3_stmt* statement)
{
    auto& database = *static_cast<LogDatabase*>(self);
    database.KeepStatement();
    database.m_started = sqlite3_sql(statement);
    database.m_startedWrites = sqlite3_stmt_readonly(statement) == 0;
}

// A statement changes rows of one table.
void LogDatabase::OnUpdate(void* self, int operation, const char*, const char* table, long long)
{
    Change& change = static_cast<LogDatabase*>(self)->m_change;
    if (change.table < 0) {
        const int place = log_database::TableIndex(table);
        if (place == LOG_TABLE_COUNT) {
            return;
        }
        change.table = place;
    }
    ++(operation == SQLITE_INSERT ? change.rows.inserted : change.rows.updated);
}

} // namespace bancada

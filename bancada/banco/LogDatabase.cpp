#include "bancada/banco/LogDatabase.h"

#include "bancada/Unusable.h"
#include "bancada/banco/EngineLog.h"
#include "bancada/banco/LogSchema.h"
#include "bancada/banco/SchemaColumns.h"
#include "bancada/banco/Sql.h"
#include "bancada/log/FirmwareLog.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <sqlite3.h>

namespace bancada
{
namespace
{

// The largest array in which the module composes a statement.
constexpr int MAX_STATEMENT_BYTES = 8000;

// What the module's statements need, and a little air: more is none of its statements.
struct Limit {
    int id;
    int value;
};
constexpr Limit LIMITS[] = {
    {SQLITE_LIMIT_LENGTH, 1000000},                 // one row
    {SQLITE_LIMIT_SQL_LENGTH, MAX_STATEMENT_BYTES}, // one statement
    {SQLITE_LIMIT_COLUMN, 100},                     // the widest table has 23
    {SQLITE_LIMIT_EXPR_DEPTH, 20},                  // a comparison within AND
    {SQLITE_LIMIT_COMPOUND_SELECT, 1},              // none
    {SQLITE_LIMIT_FUNCTION_ARG, 1},                 // count(*) takes none
    {SQLITE_LIMIT_ATTACHED, 0},
    {SQLITE_LIMIT_VARIABLE_NUMBER, 0}, // nothing is bound
    {SQLITE_LIMIT_TRIGGER_DEPTH, 0},
    {SQLITE_LIMIT_WORKER_THREADS, 0},
};

[[noreturn]] void ThrowUnusable(const std::string& path, const std::string& reason)
{
    throw Unusable("cannot use the database " + path + ": " + reason);
}

std::string OpenError(sqlite3* db)
{
    const int number = sqlite3_system_errno(db);
    std::string text = sqlite3_errmsg(db);
    if (number != 0) {
        text += std::string(" (") + std::strerror(number) + ")";
    }
    return text;
}

} // namespace

LogDatabase::LogDatabase(const std::string& path, FirmwareLog& log)
    : LogDatabase(path, log, Options())
{
}

LogDatabase::LogDatabase(const std::string& path, FirmwareLog& log, const Options& options)
    : m_log(log)
{
    // The engine calls back from C: nothing there may allocate and throw.
    m_started.reserve(MAX_STATEMENT_BYTES);

    try {
        ListTables();
        Open(path, options);
    } catch (const Unusable&) {
        sqlite3_close(m_db);
        throw;
    } catch (const std::exception& error) {
        sqlite3_close(m_db);
        ThrowUnusable(path, error.what());
    }
    m_log.SetRejectionObserver(
        [this](std::string_view statement) { StatementRejected(statement); });
}

LogDatabase::~LogDatabase()
{
    m_log.SetRejectionObserver(nullptr);
    m_own = true;
    ReleaseOpenStatements();
    sqlite3_finalize(m_rollback);
    sqlite3_close(m_db);
}

void LogDatabase::ListTables()
{
    for (const auto& [table, column] : LogSchemaColumns()) {
        if (m_tables.empty() || m_tables.back() != table) {
            m_tables.push_back(table);
        }
    }
    for (const std::string& table : m_tables) {
        m_counts.rows[table];
    }
    m_statementRows.resize(m_tables.size());
    m_commandRows.resize(m_tables.size());
}

void LogDatabase::Open(const std::string& path, const Options& options)
{
    const int flags =
        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
    if (sqlite3_open_v2(path.c_str(), &m_db, flags,
                        options.vfs.empty() ? nullptr : options.vfs.c_str()) != SQLITE_OK) {
        ThrowUnusable(path, OpenError(m_db));
    }
    sqlite3_busy_timeout(m_db, options.busyTimeoutMs);

    // The file is not trusted: what its schema holds runs nothing, and nothing may damage it.
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    // A text between double quotes is a name, never a text.
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);

    m_number = ReadNumber(path);
    if (options.accept) {
        options.accept(m_number);
    }
    const bool fresh = IsFresh(path);
    if (!fresh) {
        // Looked at before anything is written: a file that is refused stays as it was.
        CheckSchema(path);
        if (!options.append) {
            CheckEmpty(path);
        }
    }

    Configure();
    if (fresh) {
        CreateSchema(path);
    }
    LimitStatements();
}

// The engine keeps a number for the owner of a database in its first page.
std::int32_t LogDatabase::ReadNumber(const std::string& path) const
{
    Query version(m_db, "PRAGMA user_version");
    if (!version.Next()) {
        ThrowUnusable(path, sqlite3_errmsg(m_db));
    }
    return static_cast<std::int32_t>(version.Integer(0));
}

bool LogDatabase::IsFresh(const std::string& path) const
{
    Query objects(m_db, "SELECT count(*) FROM sqlite_schema");
    if (!objects.Next()) {
        ThrowUnusable(path, sqlite3_errmsg(m_db));
    }
    return objects.Integer(0) == 0;
}

void LogDatabase::CheckSchema(const std::string& path) const
{
    const SchemaColumns columns = ReadSchemaColumns(m_db);
    for (const auto& column : LogSchemaColumns()) {
        if (std::find(columns.begin(), columns.end(), column) == columns.end()) {
            ThrowUnusable(path, "it is not a logging database: it has no column " + column.first +
                                    "." + column.second);
        }
    }

    Query programs(m_db, "SELECT type, name FROM sqlite_schema WHERE type IN ('trigger', 'view')");
    if (programs.Next()) {
        ThrowUnusable(path, "it is not a logging database: it has the " + programs.Text(0) + " " +
                                programs.Text(1));
    }
}

void LogDatabase::CheckEmpty(const std::string& path) const
{
    for (const std::string& table : m_tables) {
        Query rows(m_db, ("SELECT EXISTS (SELECT 1 FROM \"" + table + "\")").c_str());
        if (!rows.Next()) {
            ThrowUnusable(path, sqlite3_errmsg(m_db));
        }
        if (rows.Integer(0) != 0) {
            ThrowUnusable(path,
                          "it already holds rows (table " + table + "); --append adds to them");
        }
    }
}

// Answers the mode that is set now, or why it is none.
std::string LogDatabase::SetWriteAheadLog()
{
    Query mode(m_db, "PRAGMA journal_mode = WAL");
    return mode.Next() ? mode.Text(0) : sqlite3_errmsg(m_db);
}

void LogDatabase::Configure()
{
    // Write-ahead log, synced at every commit: of all the engine's modes the one that keeps each
    // command that was acknowledged through a power cut. Where it cannot be had (a read-only file,
    // a database in memory), commands go on in the file's own mode.
    const std::string mode = SetWriteAheadLog();
    if (mode != "wal" && mode != "memory") {
        m_notice = "LogDatabase: no write-ahead log: " + mode;
    }
    ExecuteOwn("PRAGMA synchronous = FULL");
}

void LogDatabase::CreateSchema(const std::string& path)
{
    if (!ExecuteOwn("BEGIN IMMEDIATE") || !ExecuteOwn(LOG_SCHEMA) || !ExecuteOwn("COMMIT")) {
        ThrowUnusable(path, OpenError(m_db));
    }
}

void LogDatabase::LimitStatements()
{
    for (const Limit& limit : LIMITS) {
        sqlite3_limit(m_db, limit.id, limit.value);
    }
    sqlite3_set_authorizer(m_db, OnAuthorize, this);
    sqlite3_trace_v2(m_db, SQLITE_TRACE_STMT, OnTrace, this);
    sqlite3_update_hook(m_db, OnUpdate, this);
}

bool LogDatabase::ExecuteOwn(const char* sql)
{
    m_own = true;
    const int result = sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr);
    m_own = false;
    return result == SQLITE_OK;
}

void LogDatabase::BeginCommand()
{
    assert(!m_inCommand);
    m_inCommand = true;
    m_ownNumber = 0;
    m_asked = false;
    m_lost = false;
    m_lossTold = false;
    m_loss.clear();
    ForgetStatement();
    if (!m_notice.empty()) {
        m_log.Write(m_notice);
        m_notice.clear();
    }

    // Nothing should be open here; a transaction that a failed rollback left behind would swallow
    // this command.
    if (sqlite3_get_autocommit(m_db) == 0) {
        ExecuteOwn("ROLLBACK");
    }
    m_began = PrepareRollback() && ExecuteOwn("BEGIN IMMEDIATE");
    if (!m_began) {
        Lose(sqlite3_errmsg(m_db));
    }
    m_recordsAtBegin = EngineLog().records;
    m_failuresAtBegin = EngineLog().failures;
}

// At hand before the transaction begins: when memory runs out within it, there is none to prepare
// its end.
bool LogDatabase::PrepareRollback()
{
    m_own = true;
    const int result = sqlite3_prepare_v2(m_db, "ROLLBACK", -1, &m_rollback, nullptr);
    m_own = false;
    return result == SQLITE_OK;
}

void LogDatabase::RollBack()
{
    m_own = true;
    sqlite3_step(m_rollback);
    m_own = false;
}

void LogDatabase::NumberCommand(std::int32_t number)
{
    assert(m_inCommand && number > 0);
    m_ownNumber = number;
}

bool LogDatabase::CommitCommand()
{
    assert(m_inCommand);
    CheckTransaction();
    // Without memory a statement may fail before it asks for anything.
    m_asked = m_asked || EngineLog().records != m_recordsAtBegin;
    ReleaseOpenStatements();
    if (!m_lost && m_ownNumber > 0 &&
        !ExecuteOwn(("PRAGMA user_version = " + std::to_string(m_ownNumber)).c_str())) {
        Lose(sqlite3_errmsg(m_db));
    }
    const bool committed = !m_lost && ExecuteOwn("COMMIT");
    const bool failedToCommit = !m_lost && !committed;
    if (failedToCommit) {
        Lose(sqlite3_errmsg(m_db));
    }
    if (m_lost && sqlite3_get_autocommit(m_db) == 0) {
        RollBack();
    }
    sqlite3_finalize(m_rollback);
    m_rollback = nullptr;
    if (failedToCommit) {
        OverwriteFailedCommit();
    }
    m_inCommand = false;
    if (!m_lost && m_ownNumber > 0) {
        m_number = m_ownNumber;
    }

    // A command that could not begin, but asked for nothing, has lost nothing.
    const bool kept = !m_lost || (!m_began && !m_asked);
    if (kept) {
        m_loss.clear();
    } else {
        TellLoss();
    }
    SettleCounts(kept);
    return kept;
}

// A commit that failed in its last step, the sync, has left the whole command in the write-ahead
// log, and whoever reads the log anew takes it for committed, though it was told as lost. The next
// transaction overwrites it; as that of a next command may never come, one that changes nothing
// does. It may fail for the same reason, but not before it has overwritten.
void LogDatabase::OverwriteFailedCommit()
{
    std::string unchanged;
    m_own = true;
    {
        Query version(m_db, "PRAGMA user_version");
        if (version.Next()) {
            unchanged = "PRAGMA user_version = " + version.Text(0);
        }
    }
    m_own = false;
    ExecuteOwn(unchanged.c_str());
}

void LogDatabase::SettleCounts(bool kept)
{
    KeepStatement();
    if (kept) {
        m_counts.statementsExecuted += m_commandStatements;
    } else {
        m_counts.statementsUndone += m_commandStatements;
    }
    if (!kept) {
        ++m_counts.commandsLost;
    }
    for (std::size_t i = 0; i < m_tables.size(); ++i) {
        if (kept) {
            LogDatabaseCounts::Rows& rows = m_counts.rows[m_tables[i]];
            rows.inserted += m_commandRows[i].inserted;
            rows.updated += m_commandRows[i].updated;
        }
        m_commandRows[i] = {};
    }
    m_commandStatements = 0;
}

// Released, so that the transaction's end leaves no read open: some loggers leave their counting
// query as it is. Its last result comes again here, and may be the only word of a failure.
void LogDatabase::ReleaseOpenStatements()
{
    sqlite3_stmt* open = sqlite3_next_stmt(m_db, nullptr);
    while (open != nullptr) {
        sqlite3_stmt* next = sqlite3_next_stmt(m_db, open);
        if (open != m_rollback && !IsStatementsOwn(sqlite3_finalize(open))) {
            Lose(sqlite3_errmsg(m_db));
        }
        open = next;
    }
}

void LogDatabase::Lose(const std::string& reason)
{
    if (m_lost) {
        return;
    }
    m_lost = true;
    m_loss = reason;
}

void LogDatabase::TellLoss()
{
    if (m_lossTold) {
        return;
    }
    m_lossTold = true;
    m_log.Write(LOST_COMMAND_ENTRY + m_loss);
}

// Notices a failure that cost, or may have cost, the command's transaction. Asked whenever the
// module comes back to the engine: the failure itself is told to nobody but the statement that met
// it, and the engine may have rolled everything back. A query that could not even be prepared looks
// to the module like a count of none, and the row that it writes then would be a wrong one: the
// engine's log alone knows.
void LogDatabase::CheckTransaction()
{
    if (!m_inCommand || m_lost) {
        return;
    }
    if (!IsStatementsOwn(sqlite3_errcode(m_db))) {
        Lose(sqlite3_errmsg(m_db));
    } else if (EngineLog().failures != m_failuresAtBegin) {
        Lose(sqlite3_errstr(EngineLog().lastFailure));
    } else if (sqlite3_get_autocommit(m_db) != 0) {
        Lose("the engine has rolled its transaction back");
    }
}

void LogDatabase::ForgetStatement()
{
    m_accessing = false;
    m_started.clear();
    m_startedWrites = false;
    for (LogDatabaseCounts::Rows& rows : m_statementRows) {
        rows = {};
    }
}

void LogDatabase::KeepStatement()
{
    if (m_startedWrites) {
        ++m_commandStatements;
    }
    for (std::size_t i = 0; i < m_tables.size(); ++i) {
        m_commandRows[i].inserted += m_statementRows[i].inserted;
        m_commandRows[i].updated += m_statementRows[i].updated;
    }
    ForgetStatement();
}

// The module reports a rejected statement right after it failed. If it had been started, what it
// changed is undone.
void LogDatabase::StatementRejected(std::string_view statement)
{
    ++m_counts.statementsRejected;
    if (m_inCommand) {
        m_asked = true;
    }
    if (statement == m_started) {
        ForgetStatement();
    } else {
        KeepStatement();
    }
    CheckTransaction();
}

std::size_t LogDatabase::TableIndex(std::string_view name) const
{
    const auto found = std::lower_bound(m_tables.begin(), m_tables.end(), name);
    return found != m_tables.end() && *found == name
               ? static_cast<std::size_t>(found - m_tables.begin())
               : m_tables.size();
}

int LogDatabase::Authorize(int action, const char* first, const char* second, const char* database,
                           const char* trigger)
{
    if (m_own) {
        return SQLITE_OK;
    }
    // A statement is being prepared: the one before it, if any, was not reported and stays.
    if (!m_started.empty()) {
        KeepStatement();
    }
    CheckTransaction();
    if (m_inCommand) {
        m_asked = true;
    }
    if (m_lost && m_inCommand) {
        TellLoss();
        return SQLITE_DENY;
    }
    if (trigger != nullptr || (database != nullptr && std::strcmp(database, "main") != 0)) {
        return SQLITE_DENY;
    }
    return IsAllowed(action, first, second) ? SQLITE_OK : SQLITE_DENY;
}

bool LogDatabase::IsAllowed(int action, const char* first, const char* second)
{
    switch (action) {
    case SQLITE_SELECT: {
        // None of the module's statements has a query within it.
        const bool alone = !m_accessing || !m_inCommand;
        m_accessing = true;
        return alone;
    }
    case SQLITE_READ:
        return TableIndex(first) < m_tables.size();
    case SQLITE_FUNCTION:
        return std::strcmp(second, "count") == 0;
    case SQLITE_UPDATE:
        // A row moved onto another's number could take its place.
        if (std::strcmp(second, "ROWID") == 0) {
            return false;
        }
        [[fallthrough]];
    case SQLITE_INSERT:
        m_accessing = true;
        return m_inCommand && TableIndex(first) < m_tables.size();
    default:
        return false;
    }
}

int LogDatabase::OnAuthorize(void* self, int action, const char* first, const char* second,
                             const char* database, const char* trigger)
{
    return static_cast<LogDatabase*>(self)->Authorize(action, first, second, database, trigger);
}

int LogDatabase::OnTrace(unsigned, void* self, void* statement, void*)
{
    auto& database = *static_cast<LogDatabase*>(self);
    if (database.m_own) {
        return 0;
    }
    database.KeepStatement();
    auto* started = static_cast<sqlite3_stmt*>(statement);
    database.m_started = sqlite3_sql(started);
    database.m_startedWrites = sqlite3_stmt_readonly(started) == 0;
    return 0;
}

void LogDatabase::OnUpdate(void* self, int operation, const char*, const char* table, long long)
{
    auto& database = *static_cast<LogDatabase*>(self);
    const std::size_t index = database.TableIndex(table);
    if (index == database.m_tables.size()) {
        return;
    }
    LogDatabaseCounts::Rows& rows = database.m_statementRows[index];
    ++(operation == SQLITE_INSERT ? rows.inserted : rows.updated);
}

} // namespace bancada

// What the loggers' statements may do: the authorizer and the limits.
#include "LogDatabase/Guard.h"

#include "LogDatabase/EngineLog.h"
#include "LogDatabase/LogDatabase.h"
#include "LogDatabase/Schema.h"

#include <cstring>
#include <sqlite3.h>

namespace
{

// The largest array in which a logger composes a statement.
constexpr int MAX_STATEMENT_BYTES = 8000;

// What the loggers' statements need, and a little air: more is none of their statements.
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

bool IsLoggingTable(const char* name)
{
    return log_database::TableIndex(name) < log_database::LOG_TABLE_COUNT;
}

} // namespace

void log_database::DistrustFile(sqlite3* db)
{
    sqlite3_db_config(db, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(db, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(db, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(db, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    // A text between double quotes is a name, never a text.
    sqlite3_db_config(db, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(db, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
}

void LogDatabase::Guard()
{
    for (const Limit& limit : LIMITS) {
        sqlite3_limit(m_db, limit.id, limit.value);
    }
    sqlite3_set_authorizer(m_db, OnAuthorize, this);
    sqlite3_trace_v2(m_db, SQLITE_TRACE_STMT, OnTrace, this);
}

int LogDatabase::Authorize(int action, const char* first, const char* second, const char* database,
                           const char* trigger)
{
    if (m_own) {
        return SQLITE_OK;
    }
    if (m_options.preparing != nullptr) {
        m_options.preparing(m_options.context);
    }
    // A statement that could not be prepared never starts, but the engine's log has it.
    const std::int64_t errors = log_database::EngineLog().errors;
    if (errors != m_errorsSeen) {
        m_errorsSeen = errors;
        m_accessing = false;
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
    // None of the loggers' statements has a query within it.
    const bool alone = !m_accessing || !m_inCommand;
    switch (action) {
    case SQLITE_SELECT:
        m_accessing = true;
        return alone;
    case SQLITE_READ:
        return IsLoggingTable(first);
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
        return m_inCommand && IsLoggingTable(first);
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
    auto& owner = *static_cast<LogDatabase*>(self);
    if (owner.m_own) {
        return 0;
    }
    owner.m_accessing = false;
    if (owner.m_options.starting != nullptr) {
        owner.m_options.starting(owner.m_options.context, static_cast<sqlite3_stmt*>(statement));
    }
    return 0;
}

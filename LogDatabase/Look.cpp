#include "LogDatabase/Look.h"

#include "LogDatabase/Files.h"
#include "LogDatabase/Guard.h"
#include "LogDatabase/LookLayer.h"

#include <cstdio>
#include <sqlite3.h>

namespace log_database
{
namespace
{

// The connection of one look.
class Onlooker
{
  public:
    Onlooker(const char* path, const LookLayer& layer)
        : m_result(sqlite3_open_v2(
              path, &m_db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE,
              layer.Name()))
    {
        if (m_result == SQLITE_OK) {
            DistrustFile(m_db);
        }
    }
    ~Onlooker() { sqlite3_close(m_db); }
    Onlooker(const Onlooker&) = delete;
    Onlooker& operator=(const Onlooker&) = delete;

    bool IsOpen() const { return m_result == SQLITE_OK; }
    sqlite3* Handle() const { return m_db; }

  private:
    sqlite3* m_db = nullptr;
    int m_result;
};

LogFault Accept(const LogDatabaseOptions& options, const SchemaIdentity& identity, Reason& reason)
{
    if (options.accepts == nullptr || options.accepts(options.context, identity.number)) {
        return LogFault::NONE;
    }
    std::snprintf(reason.text, sizeof reason.text, "it carries command number %ld",
                  static_cast<long>(identity.number));
    return LogFault::WRONG_NUMBER;
}

LogFault Examine(sqlite3* db, const LogDatabaseOptions& options, SchemaIdentity& identity,
                 Reason& reason)
{
    LogFault fault = ReadIdentity(db, identity, reason);
    if (fault == LogFault::NONE) {
        fault = Accept(options, identity, reason);
    }
    if (fault != LogFault::NONE || identity.fresh) {
        return fault;
    }
    fault = CheckTables(db, identity.version, reason);
    if (fault == LogFault::NONE && options.onlyEmpty) {
        fault = CheckEmpty(db, reason);
    }
    return fault;
}

enum class Company {
    NONE,
    SOME
};

// Alone, the connection needs no index of the log in a file, and leaves none behind.
LogFault LookOnce(Company company, const char* path, const LogDatabaseOptions& options,
                  SchemaIdentity& identity, Reason& reason)
{
    const LookLayer layer(options.vfs);
    const Onlooker onlooker(path, layer);
    if (!onlooker.IsOpen()) {
        return FaultOfEngine(onlooker.Handle(), reason);
    }
    // What is in a log is not read once more when the connection ends.
    sqlite3_db_config(onlooker.Handle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    if (company == Company::NONE) {
        sqlite3_exec(onlooker.Handle(), "PRAGMA locking_mode = EXCLUSIVE", nullptr, nullptr,
                     nullptr);
    } else {
        sqlite3_busy_timeout(onlooker.Handle(), options.busyTimeoutMs);
    }
    return Examine(onlooker.Handle(), options, identity, reason);
}

} // namespace

LogFault Look(const char* path, const LogDatabaseOptions& options, SchemaIdentity& identity,
              Reason& reason)
{
    if (!FileExists(path, options.vfs)) {
        identity.fresh = true;
        return Accept(options, identity, reason);
    }
    const LogFault fault = LookOnce(Company::NONE, path, options, identity, reason);
    return fault == LogFault::LOCKED ? LookOnce(Company::SOME, path, options, identity, reason)
                                     : fault;
}

} // namespace log_database

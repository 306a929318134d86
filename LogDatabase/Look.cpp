#include "LogDatabase/Look.h"

#include "LogDatabase/Files.h"
#include "LogDatabase/Guard.h"

#include <cstdio>
#include <cstring>
#include <sqlite3.h>

namespace log_database
{
namespace
{

constexpr std::size_t MAX_NAME_BYTES = 1100;

// The files that the engine keeps beside a database, as far as they are there and not empty.
struct Files {
    bool database = true;
    bool journal = false;
    bool log = false;
};

// Asked of the file layer, for the engine does not look without recovering.
Files FindFiles(const char* path, const char* vfs)
{
    Files files;
    char name[MAX_NAME_BYTES];
    files.database = FileExists(path, vfs);
    std::snprintf(name, sizeof name, "%s-journal", path);
    files.journal = FileExists(name, vfs);
    std::snprintf(name, sizeof name, "%s-wal", path);
    files.log = FileExists(name, vfs);
    return files;
}

// The connection of one look.
class Onlooker
{
  public:
    Onlooker(const char* name, const LogDatabaseOptions& options)
        : m_result(sqlite3_open_v2(name, &m_db,
                                   SQLITE_OPEN_READWRITE | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX |
                                       SQLITE_OPEN_EXRESCODE,
                                   options.vfs))
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

bool IsUnreserved(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::strchr("/-._~", c) != nullptr;
}

// `path` as the name by which the engine reads the file as it stands, without its journal. Empty
// when there is no room for it.
void WriteImmutableName(const char* path, char (&name)[3 * MAX_NAME_BYTES])
{
    static constexpr char PARAMETER[] = "?immutable=1";
    std::size_t used = static_cast<std::size_t>(std::snprintf(name, sizeof name, "file:"));
    for (; *path != '\0'; ++path) {
        if (used + 3 + sizeof PARAMETER > sizeof name) {
            name[0] = '\0';
            return;
        }
        used += static_cast<std::size_t>(
            std::snprintf(name + used, 4, IsUnreserved(*path) ? "%c" : "%%%02X",
                          static_cast<unsigned>(static_cast<unsigned char>(*path))));
    }
    std::strcpy(name + used, PARAMETER);
}

// What stands in a file whose journal would be rolled back by any other reading. Only a database
// that is none of ours is refused so; one of ours, in whatever state, is to be recovered.
LogFault LookAside(const char* path, const LogDatabaseOptions& options, Reason& reason)
{
    char name[3 * MAX_NAME_BYTES];
    WriteImmutableName(path, name);
    const Onlooker onlooker(name, options);
    if (name[0] == '\0' || !onlooker.IsOpen()) {
        return LogFault::NONE;
    }
    SchemaIdentity identity;
    LogFault fault = ReadIdentity(onlooker.Handle(), identity, reason);
    if (fault == LogFault::NONE && !identity.fresh) {
        fault = CheckTables(onlooker.Handle(), reason);
    }
    return fault == LogFault::NOT_A_LOG || fault == LogFault::NEWER ? fault : LogFault::NONE;
}

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
    fault = CheckTables(db, reason);
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
LogFault LookOnce(Company company, const char* path, const LogDatabaseOptions& options, bool hasLog,
                  SchemaIdentity& identity, Reason& reason)
{
    const Onlooker onlooker(path, options);
    if (!onlooker.IsOpen()) {
        CopyText(reason.text, sqlite3_errmsg(onlooker.Handle()));
        return FaultOf(sqlite3_extended_errcode(onlooker.Handle()));
    }
    // What is in a log stays there when the connection ends.
    sqlite3_db_config(onlooker.Handle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, hasLog ? 1 : 0, nullptr);
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
    const Files files = FindFiles(path, options.vfs);
    if (!files.database) {
        identity.fresh = true;
        return Accept(options, identity, reason);
    }
    if (files.journal) {
        const LogFault fault = LookAside(path, options, reason);
        if (fault != LogFault::NONE) {
            return fault;
        }
    }

    LogFault fault = LookOnce(Company::NONE, path, options, files.log, identity, reason);
    if (fault == LogFault::LOCKED) {
        fault = LookOnce(Company::SOME, path, options, files.log, identity, reason);
    }
    return fault;
}

} // namespace log_database

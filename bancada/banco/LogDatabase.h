// The logging database of the bench: its owner, and what is counted of it.
#pragma once

#include "LogDatabase/LogDatabase.h"

#include <cstdint>
#include <exception>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace bancada
{

class FirmwareLog;

// What the database was asked and what it holds of it.
struct LogDatabaseCounts {
    struct Rows {
        std::int64_t inserted = 0;
        std::int64_t updated = 0;
    };

    // INSERT and UPDATE statements.
    std::int64_t statementsExecuted = 0; // carried out and kept
    std::int64_t statementsUndone = 0;   // carried out, then lost with their command
    std::int64_t statementsRejected = 0; // reported to the firmware log as rejected

    std::int64_t commandsLost = 0;    // commands none of whose rows are kept
    std::map<std::string, Rows> rows; // kept rows, by table; every logging table has its entry
};

// The library's owner of the logging database (LogDatabase/LogDatabase.h), which holds each
// command's transaction, and an observer that counts its statements and rows. Its entries go to the
// firmware log that is on duty (FirmwareDuty).
//
// Not for more than one thread.
class LogDatabase
{
  public:
    struct Options {
        bool append = false;              // accept a database that already holds rows
        int busyTimeoutMs = 1000;         // how long to wait for a lock of another connection
        std::string vfs;                  // the engine's file layer; empty is its default
        int pageSize = 0;                 // of a new database; 0 is the library's own
        std::int64_t checkpointBytes = 0; // 0 is the library's own

        // Told the number that the database carries before anything is written to it; throws to
        // refuse it.
        std::function<void(std::int32_t)> accept;
    };

    // Opens the file `path` (":memory:" is a database in memory), as the library does. This object
    // becomes the observer of the rejected statements of `log`, which must outlive it. Throws
    // Unusable when the file cannot be opened or made, is no database or not a logging database, or
    // holds rows and `append` is not set; an existing file is then as it was.
    LogDatabase(const std::string& path, FirmwareLog& log);
    LogDatabase(const std::string& path, FirmwareLog& log, const Options& options);
    // Rolls back what is open and closes the file.
    ~LogDatabase();
    LogDatabase(const LogDatabase&) = delete;
    LogDatabase& operator=(const LogDatabase&) = delete;

    // As those of the library's owner (Begin, Commit, Rest). CommitCommand answers whether the
    // command is kept.
    bool IsOpen() const { return m_owner.IsOpen(); }
    bool HasWriteAheadLog() const { return m_owner.HasWriteAheadLog(); }
    sqlite3* Handle() const { return m_owner.Handle(); }
    void BeginCommand();
    [[nodiscard]] bool CommitCommand();
    void NumberCommand(std::int32_t number) { m_owner.NumberCommand(number); }
    std::int32_t CommandNumber() const { return m_owner.CommandNumber(); }
    void Rest() { m_owner.Rest(); }

    // Why the command committed last was lost; empty when it was not.
    const std::string& LastLoss() const { return m_loss; }

    const LogDatabaseCounts& Counts() const { return m_counts; }

  private:
    // What one statement changed: a logging table's place, and its rows.
    struct Change {
        int table = -1;
        LogDatabaseCounts::Rows rows;
    };

    void ForgetStatement();
    void KeepStatement();
    void StatementRejected(std::string_view statement);
    void SettleCounts(bool kept);

    static void OnSyncLog(void* self);
    static bool OnAccept(void* self, std::int32_t number);
    static void OnConnected(void* self, sqlite3* db);
    static void OnPreparing(void* self);
    static void OnStarting(void* self, sqlite3_stmt* statement);
    static void OnUpdate(void* self, int operation, const char* database, const char* table,
                         long long rowid);

    FirmwareLog& m_log;
    std::string m_vfs; // lent to the owner
    std::function<void(std::int32_t)> m_accept;
    std::exception_ptr m_refusal; // thrown by it
    std::string m_loss;
    LogDatabaseCounts m_counts;
    std::vector<LogDatabaseCounts::Rows*> m_rows; // of m_counts, by the table's place

    // What a statement changed is known to stay only when the next one begins: until then it may be
    // reported as rejected.
    std::string m_started; // text of the one started last
    bool m_startedWrites = false;
    Change m_change;                                    // its own
    std::vector<LogDatabaseCounts::Rows> m_commandRows; // by the table's place
    std::int64_t m_commandStatements = 0;

    ::LogDatabase m_owner;
};

} // namespace bancada

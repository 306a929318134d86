// The logging database as its owner keeps it.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace bancada
{

class FirmwareLog;

// How the firmware log's entry about a lost command begins; the reason follows.
inline constexpr char LOST_COMMAND_ENTRY[] = "LogDatabase: the rows of this command are lost: ";

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

// Owns the connection that the command loggers write through, and each command's transaction.
//
// A command's rows are kept whole or not at all. A statement that the engine refuses for itself
// (its syntax, a constraint, a missing column, something that the module has no business with)
// costs its own row alone. Anything else that fails (no room, no memory, a damaged file, an error
// of the disk) loses the command: the engine may have rolled the whole transaction back without a
// word, so from then on every statement of that command is refused, and what is left open is rolled
// back. A transaction that cannot begin (locked, read-only) refuses the command's statements too.
// None of this stops the register: it is counted and told to the firmware log.
//
// Not for more than one thread.
class LogDatabase
{
  public:
    struct Options {
        bool append = false;      // accept a database that already holds rows
        int busyTimeoutMs = 1000; // how long to wait for a lock of another connection
        std::string vfs;          // the engine's file layer; empty is its default

        // Told the number that the database carries before anything is written to it; throws to
        // refuse it.
        std::function<void(std::int32_t)> accept;
    };

    // Opens the file `path` (":memory:" is a database in memory), makes it with the schema if it is
    // missing or empty, and sets the connection up. `log` gets what goes wrong and must outlive
    // this object, which becomes the observer of its rejected statements. Throws Unusable when the
    // file cannot be opened or made, is no database or not a logging database, or holds rows and
    // `append` is not set; an existing file is then as it was.
    LogDatabase(const std::string& path, FirmwareLog& log);
    LogDatabase(const std::string& path, FirmwareLog& log, const Options& options);
    // Rolls back what is open and closes the file.
    ~LogDatabase();
    LogDatabase(const LogDatabase&) = delete;
    LogDatabase& operator=(const LogDatabase&) = delete;

    // The handle for Command::DBLogger. Between BeginCommand and CommitCommand the module's
    // statements run on it (SELECT, INSERT and UPDATE on the logging tables); outside, SELECT
    // alone.
    sqlite3* Handle() const { return m_db; }

    // Begins the transaction of a command. REQUIRES: none is begun. If the engine cannot begin it,
    // the statements that follow are refused and the command goes on.
    void BeginCommand();

    // Releases the statements that the loggers left open and ends the transaction. Answers true
    // when everything of the command that was not refused for itself is durable; false when the
    // command is lost, and nothing of it is in the file. A command that begins no statement loses
    // nothing. REQUIRES: a command is begun.
    bool CommitCommand();

    // Numbers the command that is begun: the database carries `number` exactly if it holds the
    // command's transaction, which then is not empty. REQUIRES: a command is begun, 0 < number.
    void NumberCommand(std::int32_t number);

    // The number that the database carries: of the last numbered command that was committed; 0 if
    // none was.
    std::int32_t CommandNumber() const { return m_number; }

    // Why the command committed last was lost; empty when it was not.
    const std::string& LastLoss() const { return m_loss; }

    const LogDatabaseCounts& Counts() const { return m_counts; }

  private:
    void ListTables();
    void Open(const std::string& path, const Options& options);
    std::int32_t ReadNumber(const std::string& path) const;
    bool IsFresh(const std::string& path) const;
    void CreateSchema(const std::string& path);
    void CheckSchema(const std::string& path) const;
    void CheckEmpty(const std::string& path) const;
    std::string SetWriteAheadLog();
    void Configure();
    void LimitStatements();
    bool ExecuteOwn(const char* sql);

    void ForgetStatement();
    void KeepStatement();
    void StatementRejected(std::string_view statement);
    void CheckTransaction();
    void Lose(const std::string& reason);
    void TellLoss();
    bool PrepareRollback();
    void RollBack();
    void ReleaseOpenStatements();
    void OverwriteFailedCommit();
    void SettleCounts(bool kept);

    int Authorize(int action, const char* first, const char* second, const char* database,
                  const char* trigger);
    bool IsAllowed(int action, const char* first, const char* second);
    // The position of a logging table in m_tables, or its size for any other name.
    std::size_t TableIndex(std::string_view name) const;

    static int OnAuthorize(void* self, int action, const char* first, const char* second,
                           const char* database, const char* trigger);
    static int OnTrace(unsigned type, void* self, void* statement, void* text);
    static void OnUpdate(void* self, int operation, const char* database, const char* table,
                         long long rowid);

    sqlite3* m_db = nullptr;
    FirmwareLog& m_log;
    std::vector<std::string> m_tables; // the logging tables, sorted

    std::string m_notice; // about the file, for the firmware log
    bool m_own = false;   // a statement of this class itself is at work

    std::int32_t m_number = 0;

    // The command.
    bool m_inCommand = false;
    std::int32_t m_ownNumber = 0;       // 0: it has none
    sqlite3_stmt* m_rollback = nullptr; // ends its transaction
    bool m_began = false;               // its transaction was begun
    bool m_asked = false;               // it has asked for a statement
    std::int64_t m_recordsAtBegin = 0;  // of the engine's log
    std::int64_t m_failuresAtBegin = 0;
    bool m_lost = false;     // nothing more of it may reach the file
    bool m_lossTold = false; // the firmware log has the reason
    std::string m_loss;

    // Its statement. What one changed is known to stay only when the next begins: until then it may
    // be reported as rejected.
    bool m_accessing = false; // the one being prepared reads or writes a table
    std::string m_started;    // text of the one started last
    bool m_startedWrites = false;
    std::vector<LogDatabaseCounts::Rows> m_statementRows; // as m_tables
    std::vector<LogDatabaseCounts::Rows> m_commandRows;   // as m_tables
    std::int64_t m_commandStatements = 0;

    LogDatabaseCounts m_counts;
};

} // namespace bancada

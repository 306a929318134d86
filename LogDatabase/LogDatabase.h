// The owner of the logging database: the connection that the command loggers write through, and
// each command's transaction.
#pragma once

#include <cstddef>
#include <cstdint>

struct sqlite3;
struct sqlite3_stmt;

// How the firmware log's entry about a lost command begins; the reason follows.
inline constexpr char LOST_COMMAND_ENTRY[] = "LogDatabase: the rows of this command are lost: ";

// Why a database could not be opened, or a command's rows are lost. LogDatabase has the text.
enum class LogFault {
    NONE,
    CANNOT_OPEN,    // a directory, a missing folder, no permission, a path that is too long
    NOT_A_DATABASE, // a file of another kind
    NOT_A_LOG,      // a database of another application, or without the logging tables
    NEWER,          // its schema is of a version that this library does not know
    HOLDS_ROWS,     // and an empty one was asked for
    WRONG_NUMBER,   // its command number is not the one that the caller knows
    DAMAGED,
    LOCKED, // by another connection, for longer than the time to wait
    READ_ONLY,
    FULL,
    NO_MEMORY,
    DISK,        // an error of the disk, or of another thing that the engine needs of the system
    ROLLED_BACK, // the engine has rolled the transaction back and does not say why
    INTERRUPTED,
    OTHER
};

// What became of a command.
enum class LogState {
    KEPT,     // all that was not rejected for itself is durable; also when nothing was logged
    LOST,     // none of its rows is in the database
    NOT_BEGUN // the same: its transaction could not begin, and its statements were refused
};

struct LogOutcome {
    LogState state = LogState::KEPT;
    LogFault fault = LogFault::NONE;
    const char* text = "";     // the reason; valid until the next call of the object
    std::int64_t logBytes = 0; // of the write-ahead log, as LogDatabase::LogBytes has it
};

// What the caller supplies, and how the database is kept. All pointers are borrowed and outlive the
// LogDatabase; a null function is not called.
struct LogDatabaseOptions {
    int busyTimeoutMs = 1000; // how long a command waits for a lock of another connection
    bool onlyEmpty = false;   // refuse a database that already holds rows

    const char* vfs = nullptr; // the engine's file layer; null is its default
    int pageSize = 1024;       // of a new database, in bytes: a power of two from 512 to 65536

    // After a commit that leaves more than this in the write-ahead log, it is copied into the
    // database as far as no reader needs it. Rest does the same at a better moment.
    std::int64_t checkpointBytes = 4 * 1024 * 1024;

    // Past this size of the write-ahead log, which a reader keeps from coming back, the firmware
    // log gets an entry, once until it is below it again.
    std::int64_t tellLogBytes = 64 * 1024 * 1024;

    std::int64_t maxBytes = 0; // of the database; 0 is the engine's own limit

    void* context = nullptr; // given to each of the functions

    // Whether the database that carries this command number (0: none) is the right one. Asked
    // before anything is written to it.
    bool (*accepts)(void* context, std::int32_t number) = nullptr;

    // Makes the entries durable that Vindral_GravaLog has taken so far. Called before each COMMIT,
    // and after a loss is told: whoever finds a row missing then finds the reason too.
    void (*syncLog)(void* context) = nullptr;

    // Gives a file another name in the same folder, answering whether it has it now; for BeginAnew
    // on a file layer whose files the C library's rename does not reach.
    bool (*moveFile)(void* context, const char* from, const char* to) = nullptr;

    // A connection was opened, the handle of the commands from now on.
    void (*connected)(void* context, sqlite3* db) = nullptr;
    // A statement of the command is about to be prepared, and one of them starts.
    void (*preparing)(void* context) = nullptr;
    void (*starting)(void* context, sqlite3_stmt* statement) = nullptr;
};

// Owns one logging database. A firmware keeps one object for as long as it runs:
//
//     database.Begin();
//     command.DBLogger(database.Handle());
//     outcome = database.Commit();
//
// A command's rows are kept whole or not at all. A statement that the engine refuses for itself
// (its syntax, a constraint, a missing column, something that the loggers have no business with)
// costs its own row alone. Anything else that fails (no room, no memory, a damaged file, an error
// of the disk) loses the command: the engine may have rolled the whole transaction back without a
// word, so from then on every statement of that command is refused, and what is left open is rolled
// back. None of this stops the register: the outcome says it, and so does an entry of the firmware
// log, by Vindral_GravaLog, which whoever links this library supplies.
//
// Throws nothing, ends the program never, and takes no memory but the engine's: what the object
// needs is in it. For one thread.
class LogDatabase
{
  public:
    LogDatabase() = default;
    ~LogDatabase() { Close(); }
    LogDatabase(const LogDatabase&) = delete;
    LogDatabase& operator=(const LogDatabase&) = delete;

    // Sets what the engine takes only before its first use: its log, without which some failures
    // cannot be seen, and no statistics of memory, which cost 15 to 18 % of the instructions.
    // A program that uses the engine before its first Open calls it before that. Answers false, and
    // changes nothing, when it is too late. (sqlite3_memory_used answers 0 from then on.)
    static bool PrepareEngine();

    // Opens the file `path`, makes it with the schema if it is missing or empty, and upgrades one
    // of an older version. ":memory:" is a database in memory. Whatever was open before is closed.
    //
    // LogFault::NONE: it is open. READ_ONLY: it is open for reading alone, and no command can
    // begin. Anything else: it is not open, a file that was there is as it was (byte for byte, with
    // its log or journal, when it was refused; in what it holds and in its journal mode, when an
    // upgrade failed), and Text has the reason. Commands may go on all the same: their statements
    // are refused and named in the firmware log, and they end as LogState::NOT_BEGUN. REQUIRES: no
    // command is begun.
    LogFault Open(const char* path, const LogDatabaseOptions& options = {});

    // Rolls back what is open and closes the file.
    void Close();

    bool IsOpen() const { return m_db != nullptr && !m_refuses; }
    // The reason of the last Open or BeginAnew that did not answer LogFault::NONE; else empty, or
    // that PrepareEngine came too late.
    const char* Text() const { return m_text; }

    // The handle for Command::DBLogger, valid until the next Begin, Open or Close. Between Begin
    // and Commit the loggers' statements run on it (SELECT, INSERT and UPDATE on the logging
    // tables); outside, SELECT alone. Null only when there is no memory for one that refuses
    // everything.
    sqlite3* Handle() const { return m_db; }

    // Begins the transaction of a command. Answers whether it was begun; if not, the statements
    // that follow are refused and the command goes on. A connection that cannot begin is opened
    // anew before it gives up. REQUIRES: no command is begun.
    bool Begin();

    // Numbers the command that is begun: the database carries `number` exactly if it holds the
    // command's transaction, which then is not empty. If it carries by then another number than
    // this object knows, somebody else has written to it, and the command is lost. REQUIRES: a
    // command is begun, 0 < number.
    void NumberCommand(std::int32_t number) { m_ownNumber = number; }

    // Releases the statements that the loggers left open and ends the transaction. REQUIRES: a
    // command is begun.
    LogOutcome Commit();

    // The number that the database carries: of the last numbered command that was committed; 0 if
    // none was.
    std::int32_t CommandNumber() const { return m_number; }

    // Whether each commit goes to the write-ahead log. While it cannot be had, commits go to the
    // file itself, synced as often as the engine can, and each Begin tries again.
    bool HasWriteAheadLog() const { return m_writeAheadLog; }

    // The size of the write-ahead log in bytes, after the last commit.
    std::int64_t LogBytes() const { return m_logBytes; }

    // To be called when the device has nothing to do, and after a Z reduction: copies the
    // write-ahead log into the database, so that no command has to, and waits for readers as long
    // as a command may wait for a lock. LOCKED: a reader still needs some of it. REQUIRES: no
    // command is begun.
    LogFault Rest();

    // Sets the file of the last Open aside under `asideName`, in the same folder, whole and with
    // its log, and opens a new one in its place: after an Open that found it damaged or of another
    // kind, or in good order, at a Z reduction, so that no document is split. The firmware log gets
    // an entry before anything is moved, and syncLog is called: it may stand twice, or in vain, and
    // is never missing. Answers what became of the new one. If the old one cannot be set aside
    // (LOCKED: a reader needs its log; CANNOT_OPEN: a file of that name is there; DISK), it stays
    // in use and Text says why; one that can no longer copy its log is set aside with it. What the
    // power, or a failure half way, cut short is finished by the next Open, Begin or BeginAnew: a
    // file named with -aside at its end says until then what the files are to be called. REQUIRES:
    // no command is begun, nobody else has the file open.
    LogFault BeginAnew(const char* asideName);

    // What a service menu shows: the versions of this library and of the schema that it keeps, and
    // how many bytes the database may still grow, -1 when that cannot be told. What room the disk
    // has is not asked.
    static const char* Version();
    static int SchemaVersion();
    std::int64_t RoomBytes();

    // Whether a statement of this object itself is at work, for who looks on.
    bool IsAtWork() const { return m_own; }

  private:
    static constexpr std::size_t MAX_PATH_BYTES = 1024;
    static constexpr std::size_t MAX_TEXT_BYTES = 256;
    enum class LogAtEnd {
        IS_COPIED,
        STAYS
    };

    // Connection.cpp
    LogFault OpenFile();
    LogFault Connect();
    LogFault SetUp();
    LogFault Make();
    LogFault Upgrade();
    LogFault WriteSchema();
    bool PrepareOwn();
    void Disconnect(LogAtEnd log);
    void RefuseEverything();
    bool IsReadOnly() const;
    bool NewConnectionMayHelp() const;
    bool Reconnect();
    bool ExecuteOwn(const char* sql);
    bool StepOwn(sqlite3_stmt* statement);
    LogFault Fail(LogFault fault, const char* reason);
    LogFault FailByEngine();

    // JournalMode.cpp
    bool IsWriteAhead();
    bool SetWriteAheadLog();
    bool SetJournal();
    void TellNotice();

    // Guard.cpp
    void Guard();
    int Authorize(int action, const char* first, const char* second, const char* database,
                  const char* trigger);
    bool IsAllowed(int action, const char* first, const char* second);
    static int OnAuthorize(void* self, int action, const char* first, const char* second,
                           const char* database, const char* trigger);
    static int OnTrace(unsigned type, void* self, void* statement, void* text);

    // Transaction.cpp
    bool BeginTransaction(int waitMs);
    void EndTransaction();
    void CheckTransaction();
    void ReleaseOpenStatements();
    bool IsOwn(const sqlite3_stmt* statement) const;
    bool ReadNumber(std::int32_t& number);
    bool ExecuteNumber(std::int32_t number);
    void WriteNumber();
    void OverwriteFailedCommit(std::int32_t unchanged);
    void Lose(LogFault fault, const char* reason);
    void LoseByEngine();
    void TellLoss();
    void SyncLog();

    // Checkpoint.cpp
    void WatchLog();
    bool ReadPage();
    void BoundLog();
    LogFault Checkpoint(int mode);

    // Renewal.cpp
    LogFault CheckAside(const char* asideName);
    LogFault WriteIntent(const char* asideName);
    LogFault FinishSettingAside();
    void GoOn(bool wasOpen);

    // Status.cpp
    bool ReadOwn(const char* sql, std::int64_t& value);
    static int OnLog(void* self, sqlite3* db, const char* name, int pages);

    LogDatabaseOptions m_options;
    char m_path[MAX_PATH_BYTES] = "";
    LogFault m_fault = LogFault::NONE; // of the last opening
    char m_text[MAX_TEXT_BYTES] = "";
    char m_refusal[MAX_TEXT_BYTES] = ""; // why the file cannot be used, for the firmware log
    bool m_wasOpen = false;              // the file is the one that was found right

    // The connection.
    sqlite3* m_db = nullptr;
    bool m_refuses = false;  // it stands in for one that could not be opened
    bool m_inMemory = false; // nothing of it is in a file
    bool m_suspect = false;  // it is to be opened anew before the next command
    bool m_own = false;      // a statement of this object itself is at work
    bool m_writeAheadLog = false;
    bool m_synced = false;              // as the journal needs it
    bool m_journalTold = false;         // that there is no write-ahead log
    char m_notice[MAX_TEXT_BYTES] = ""; // about the journal, for the firmware log
    bool m_engineTooLate = false;       // to be told
    std::int32_t m_number = 0;
    std::int64_t m_pageBytes = 0;
    std::int64_t m_logBytes = 0;
    bool m_logTold = false; // that it is large
    // Prepared as long as the connection lives.
    sqlite3_stmt* m_begin = nullptr;
    sqlite3_stmt* m_commit = nullptr;
    sqlite3_stmt* m_rollback = nullptr;
    sqlite3_stmt* m_readNumber = nullptr;

    // The command.
    bool m_inCommand = false;
    std::int32_t m_ownNumber = 0;   // 0: it has none
    std::int32_t m_lastAttempt = 0; // the number of a commit that failed; 0: none has since
    bool m_began = false;           // its transaction was begun
    bool m_asked = false;           // it has asked for a statement
    std::int64_t m_errorsSeen = 0;  // of the engine's log, as are the next two
    std::int64_t m_recordsAtBegin = 0;
    std::int64_t m_failuresAtBegin = 0;
    bool m_accessing = false; // the statement being prepared reads or writes a table
    bool m_lost = false;      // nothing more of it may reach the file
    bool m_lossTold = false;  // the firmware log has the reason
    LogFault m_lossFault = LogFault::NONE;
    char m_loss[MAX_TEXT_BYTES] = "";
};

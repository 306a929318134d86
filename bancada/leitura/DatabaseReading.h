// A logging database opened for reading.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

struct sqlite3;

namespace bancada::leitura
{

// How a database is read, by what stands beside the file.
enum class Manner : std::uint8_t {
    // With the engine's locks: another process has it open, or it keeps no write-ahead log.
    SHARED,
    // The file and the write-ahead log that was left beside it, of a register that ended or lost
    // power: every committed document is read, also without the log's index.
    WITH_LOG,
    // The file alone, which nobody has open and which has no log.
    FILE_ALONE,
};

// One state of the database from the opening to the end: a register that goes on writing neither
// waits nor is seen. The file, its folder and what stands beside it stay as they are, byte by byte
// and name by name, and need no permission but that of reading; what the engine must keep aside
// stays in memory. Nothing that the file's schema says is run: no view, no trigger.
//
// Not for a database that this process itself has open: the engine's locks are the process's, and
// looking at them from a second place may end them.
class DatabaseReading
{
  public:
    // Throws Unusable, with the path and the reason, for a file that is missing, is no file, cannot
    // be read or is no database.
    explicit DatabaseReading(std::string path);

    // The connection, as long as this object lives.
    sqlite3* Handle() const { return m_db.get(); }
    const std::string& Path() const { return m_path; }
    Manner HowRead() const { return m_manner; }

    // Asked when all is read. Throws Unusable if somebody wrote to the database meanwhile who could
    // not be seen at the opening: what was read is then not one state.
    void ConfirmUnchanged() const;

    // Throws Unusable with the path and the engine's text for what happened last.
    [[noreturn]] void Fail() const;

  private:
    struct Close {
        void operator()(sqlite3* db) const;
    };
    // What tells one state of a file from another; all zero where there is none.
    struct Stamp {
        std::uint64_t size = 0;
        std::int64_t seconds = 0;
        std::int64_t nanoseconds = 0;
        bool operator==(const Stamp& other) const;
    };

    static Stamp StampOf(const std::string& path);
    void Open();
    int OpenAs(const std::string& name, int flags, const char* vfs);

    std::string m_path;
    // With symbolic links resolved: the log stands beside the file that they lead to.
    std::string m_file;
    Manner m_manner = Manner::SHARED;
    Stamp m_databaseStamp;
    Stamp m_logStamp;
    std::unique_ptr<sqlite3, Close> m_db;
};

} // namespace bancada::leitura

#include "bancada/leitura/DatabaseReading.h"

#include "bancada/ForeignTexts.h"
#include "bancada/Messages.h"
#include "bancada/Unusable.h"
#include "bancada/leitura/Limits.h"

#include <fcntl.h>
#include <filesystem>
#include <sqlite3.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace bancada::leitura
{
namespace
{

// Where the engine locks a database file: the two bytes and the range that its file format names.
constexpr off_t LOCKED_BYTES_BEGIN = 0x40000000;
constexpr off_t LOCKED_BYTES = 512;

// The byte of the header that is 2 where the database is read with a write-ahead log.
constexpr off_t READ_VERSION_OFFSET = 19;

class Descriptor
{
  public:
    explicit Descriptor(const std::string& path) : m_fd(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {}
    ~Descriptor()
    {
        if (m_fd >= 0) {
            close(m_fd);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    // Whether another process holds a lock of the engine's. With a write-ahead log every connection
    // holds one as long as it is open.
    bool IsInUse() const
    {
        struct flock lock = {};
        lock.l_type = F_WRLCK;
        lock.l_whence = SEEK_SET;
        lock.l_start = LOCKED_BYTES_BEGIN;
        lock.l_len = LOCKED_BYTES;
        return m_fd >= 0 && fcntl(m_fd, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
    }

    bool WantsLog() const
    {
        unsigned char version = 0;
        return m_fd >= 0 && pread(m_fd, &version, 1, READ_VERSION_OFFSET) == 1 && version == 2;
    }

  private:
    int m_fd;
};

// The path as an address that the engine reads back to the same path.
std::string UnchangingAddress(const std::string& path)
{
    static constexpr char DIGITS[] = "0123456789abcdef";
    std::string address = "file:";
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte <= ' ' || byte >= 0x7F || c == '%' || c == '?' || c == '#') {
            address += '%';
            address += DIGITS[byte >> 4U];
            address += DIGITS[byte & 0xFU];
        } else {
            address += c;
        }
    }
    return address + "?immutable=1";
}

} // namespace

void DatabaseReading::Close::operator()(sqlite3* db) const
{
    sqlite3_close_v2(db);
}

bool DatabaseReading::Stamp::operator==(const Stamp& other) const
{
    return size == other.size && seconds == other.seconds && nanoseconds == other.nanoseconds;
}

DatabaseReading::Stamp DatabaseReading::StampOf(const std::string& path)
{
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0) {
        return {};
    }
    return {static_cast<std::uint64_t>(status.st_size), status.st_mtim.tv_sec,
            status.st_mtim.tv_nsec};
}

DatabaseReading::DatabaseReading(std::string path) : m_path(std::move(path))
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(m_path, error);
    if (status.type() == std::filesystem::file_type::not_found) {
        throw Unusable(Tr("%1: no such file", {m_path}));
    }
    if (status.type() == std::filesystem::file_type::directory) {
        throw Unusable(Tr("%1: is a directory", {m_path}));
    }
    if (error) {
        throw Unusable(m_path + ": " + TrForeign(error.message()));
    }
    if (status.type() != std::filesystem::file_type::regular) {
        throw Unusable(Tr("%1: not a file", {m_path}));
    }
    m_file = std::filesystem::canonical(m_path, error).string();
    if (error) {
        throw Unusable(m_path + ": " + TrForeign(error.message()));
    }
    Open();
}

// A connection that only reads would still make the log's index beside a database with a
// write-ahead log, where it may, and fail where it may not. Where nobody else has the file open
// nothing needs to be shared, and neither is asked for.
void DatabaseReading::Open()
{
    m_databaseStamp = StampOf(m_file);
    m_logStamp = StampOf(m_file + "-wal");
    {
        const Descriptor file(m_file);
        if (file.IsInUse()) {
            m_manner = Manner::SHARED;
        } else if (m_logStamp.size > 0) {
            m_manner = Manner::WITH_LOG;
        } else {
            m_manner = file.WantsLog() ? Manner::FILE_ALONE : Manner::SHARED;
        }
    }

    int result = SQLITE_OK;
    switch (m_manner) {
    case Manner::SHARED:
        result = OpenAs(m_file, SQLITE_OPEN_READONLY, nullptr);
        break;
    case Manner::WITH_LOG:
        // Without locks: there is nobody to keep out, and a lock would need a file that can be
        // written. In exclusive mode the engine keeps the log's index in memory.
        result = OpenAs(m_file, SQLITE_OPEN_READONLY, "unix-none");
        break;
    case Manner::FILE_ALONE:
        result = OpenAs(UnchangingAddress(m_file), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, nullptr);
        break;
    }
    if (result != SQLITE_OK) {
        Fail();
    }
}

int DatabaseReading::OpenAs(const std::string& name, int flags, const char* vfs)
{
    sqlite3* db = nullptr;
    const int opened = sqlite3_open_v2(name.c_str(), &db, flags | SQLITE_OPEN_NOMUTEX, vfs);
    m_db.reset(db);
    if (opened != SQLITE_OK) {
        return opened;
    }
    sqlite3_busy_timeout(db, BUSY_TIMEOUT_MS);
    sqlite3_limit(db, SQLITE_LIMIT_LENGTH, MAX_ROW_BYTES);
    sqlite3_limit(db, SQLITE_LIMIT_ATTACHED, 0);
    sqlite3_limit(db, SQLITE_LIMIT_WORKER_THREADS, 0);
    sqlite3_db_config(db, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(db, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(db, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(db, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_db_config(db, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(db, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_db_config(db, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    if (m_manner == Manner::WITH_LOG) {
        const int exclusive =
            sqlite3_exec(db, "PRAGMA locking_mode = EXCLUSIVE", nullptr, nullptr, nullptr);
        if (exclusive != SQLITE_OK) {
            return exclusive;
        }
    }
    // The first SELECT begins the read transaction, which lasts to the end.
    return sqlite3_exec(db,
                        "PRAGMA cell_size_check = ON; PRAGMA temp_store = MEMORY;"
                        " BEGIN; SELECT count(*) FROM sqlite_schema",
                        nullptr, nullptr, nullptr);
}

void DatabaseReading::ConfirmUnchanged() const
{
    if (m_manner == Manner::SHARED) {
        return;
    }
    if (!(StampOf(m_file) == m_databaseStamp) || !(StampOf(m_file + "-wal") == m_logStamp)) {
        throw Unusable(Tr("%1: was written to while it was read", {m_path}));
    }
}

void DatabaseReading::Fail() const
{
    throw Unusable(m_path + ": " + TrForeign(m_db ? sqlite3_errmsg(m_db.get()) : "out of memory"));
}

} // namespace bancada::leitura

#include "LogDatabase/Files.h"

#include <cstdio>
#include <cstring>
#include <sqlite3.h>

namespace log_database
{
namespace
{

// What the engine's own layers need for an open file is a tenth of it.
constexpr std::size_t MAX_OPEN_FILE_BYTES = 1024;

// As the layer's kind of a database: a file of another kind is made with the permissions of the
// database that its name begins with, which may be gone by now.
constexpr int READ = SQLITE_OPEN_READONLY | SQLITE_OPEN_MAIN_DB;
constexpr int WRITTEN = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_MAIN_DB;

// A file, open while it lives. Nobody locks it.
class OpenFile
{
  public:
    OpenFile(const char* name, int flags, const char* vfsName) : m_vfs(sqlite3_vfs_find(vfsName))
    {
        if (m_vfs == nullptr || static_cast<std::size_t>(m_vfs->szOsFile) > MAX_OPEN_FILE_BYTES ||
            m_vfs->xFullPathname(m_vfs, name, static_cast<int>(sizeof m_name), m_name) !=
                SQLITE_OK) {
            return;
        }
        int given = 0;
        m_open = m_vfs->xOpen(m_vfs, m_name, File(), flags, &given) == SQLITE_OK;
        m_readOnly = (given & SQLITE_OPEN_READONLY) != 0;
    }
    ~OpenFile() { Close(); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    void Close()
    {
        if (File()->pMethods != nullptr) {
            File()->pMethods->xClose(File());
            File()->pMethods = nullptr;
        }
    }

    bool IsOpen() const { return m_open; }
    // It could be opened for reading alone.
    bool IsReadOnly() const { return m_readOnly; }
    sqlite3_file* File() { return reinterpret_cast<sqlite3_file*>(m_memory); }
    const sqlite3_io_methods& Methods() { return *File()->pMethods; }

  private:
    sqlite3_vfs* m_vfs;
    bool m_open = false;
    bool m_readOnly = false;
    char m_name[MAX_NAME_BYTES]; // the layer keeps it while the file is open
    alignas(std::max_align_t) unsigned char m_memory[MAX_OPEN_FILE_BYTES] = {};
};

} // namespace

bool FileExists(const char* name, const char* vfsName)
{
    sqlite3_vfs* vfs = sqlite3_vfs_find(vfsName);
    char full[MAX_NAME_BYTES];
    int exists = 0;
    return vfs != nullptr &&
           vfs->xFullPathname(vfs, name, static_cast<int>(sizeof full), full) == SQLITE_OK &&
           vfs->xAccess(vfs, full, SQLITE_ACCESS_EXISTS, &exists) == SQLITE_OK && exists != 0;
}

bool WriteFile(const char* name, const char* text, const char* vfs)
{
    OpenFile file(name, WRITTEN, vfs);
    return file.IsOpen() && file.Methods().xTruncate(file.File(), 0) == SQLITE_OK &&
           file.Methods().xWrite(file.File(), text, static_cast<int>(std::strlen(text)), 0) ==
               SQLITE_OK &&
           file.Methods().xSync(file.File(), SQLITE_SYNC_NORMAL) == SQLITE_OK;
}

void ReadFile(const char* name, char* text, std::size_t room, const char* vfs)
{
    text[0] = '\0';
    OpenFile file(name, READ, vfs);
    sqlite3_int64 size = 0;
    if (!file.IsOpen() || file.Methods().xFileSize(file.File(), &size) != SQLITE_OK ||
        size >= static_cast<sqlite3_int64>(room) ||
        file.Methods().xRead(file.File(), text, static_cast<int>(size), 0) != SQLITE_OK) {
        size = 0;
    }
    text[size] = '\0';
}

bool DeleteFile(const char* name, const char* vfsName)
{
    sqlite3_vfs* vfs = sqlite3_vfs_find(vfsName);
    char full[MAX_NAME_BYTES];
    return vfs != nullptr &&
           vfs->xFullPathname(vfs, name, static_cast<int>(sizeof full), full) == SQLITE_OK &&
           vfs->xDelete(vfs, full, 1) == SQLITE_OK;
}

// The layer syncs a folder when it deletes a file of it, and no other way.
bool SyncFolderOf(const char* name, const char* vfs)
{
    char scratch[MAX_NAME_BYTES];
    static constexpr const char* DIGITS[] = {"", "1", "2", "3", "4", "5", "6", "7", "8", "9"};
    for (const char* digit : DIGITS) {
        std::snprintf(scratch, sizeof scratch, "%s-sync%s", name, digit);
        OpenFile file(scratch, WRITTEN | SQLITE_OPEN_EXCLUSIVE, vfs);
        // One that was there is opened for reading alone.
        if (file.IsOpen() && !file.IsReadOnly()) {
            file.Close();
            return DeleteFile(scratch, vfs);
        }
    }
    return false;
}

} // namespace log_database

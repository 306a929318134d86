#include "LogDatabase/Files.h"

#include <cstddef>
#include <cstdio>
#include <sqlite3.h>

namespace log_database
{
namespace
{

constexpr std::size_t MAX_NAME_BYTES = 1100;
// What the engine's own layers need for an open file is a tenth of it.
constexpr std::size_t MAX_OPEN_FILE_BYTES = 1024;

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

// The layer syncs a folder when it deletes a file of it, and no other way.
bool SyncFolderOf(const char* name, const char* vfsName)
{
    sqlite3_vfs* vfs = sqlite3_vfs_find(vfsName);
    char scratch[MAX_NAME_BYTES];
    char full[MAX_NAME_BYTES];
    std::snprintf(scratch, sizeof scratch, "%s-sync", name);
    if (vfs == nullptr || static_cast<std::size_t>(vfs->szOsFile) > MAX_OPEN_FILE_BYTES ||
        vfs->xFullPathname(vfs, scratch, static_cast<int>(sizeof full), full) != SQLITE_OK) {
        return false;
    }
    alignas(std::max_align_t) unsigned char memory[MAX_OPEN_FILE_BYTES] = {};
    auto* file = reinterpret_cast<sqlite3_file*>(memory);
    const int opened =
        vfs->xOpen(vfs, full, file,
                   SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_MAIN_JOURNAL, nullptr);
    if (file->pMethods != nullptr) {
        file->pMethods->xClose(file);
    }
    return opened == SQLITE_OK && vfs->xDelete(vfs, full, 1) == SQLITE_OK;
}

} // namespace log_database

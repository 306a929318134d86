#include "tests/LogDatabase/FailingLayer.h"

#include <map>
#include <string_view>

namespace
{

FailingLayer* layer = nullptr;
sqlite3_vfs* real = nullptr;

// The engine's layer has several kinds of files, each with calls of its own.
struct Calls {
    const sqlite3_io_methods* real;
    sqlite3_io_methods failing;
};
std::map<sqlite3_file*, Calls> calls;

int CloseFile(sqlite3_file* file)
{
    const sqlite3_io_methods* methods = calls.at(file).real;
    calls.erase(file);
    return methods->xClose(file);
}

bool IsItsTurn(int& left)
{
    return left > 0 && --left == 0;
}

int WriteFile(sqlite3_file* file, const void* bytes, int length, sqlite3_int64 at)
{
    if (IsItsTurn(layer->writesLeft)) {
        layer->sizesLost = layer->sizesLostBehind;
        return SQLITE_IOERR_WRITE;
    }
    return calls.at(file).real->xWrite(file, bytes, length, at);
}

int SyncFile(sqlite3_file* file, int flags)
{
    if (IsItsTurn(layer->syncsLeft)) {
        layer->sizesLost = layer->sizesLostBehind;
        return SQLITE_IOERR_FSYNC;
    }
    return layer->syncs ? calls.at(file).real->xSync(file, flags) : SQLITE_OK;
}

int FileSize(sqlite3_file* file, sqlite3_int64* size)
{
    if (layer->sizesLost > 0) {
        --layer->sizesLost;
        return SQLITE_IOERR_FSTAT;
    }
    return layer->fileSize != SQLITE_OK ? layer->fileSize
                                        : calls.at(file).real->xFileSize(file, size);
}

int LockShared(sqlite3_file* file, int first, int count, int flags)
{
    if ((flags & SQLITE_SHM_LOCK) != 0 && layer->sharedLocks > 0) {
        --layer->sharedLocks;
        return layer->sharedLock;
    }
    return calls.at(file).real->xShmLock(file, first, count, flags);
}

int Open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags)
{
    file->pMethods = nullptr;
    if (layer->open != SQLITE_OK && !layer->opensAllTheSame) {
        return layer->open;
    }
    const int result = real->xOpen(real, name, file, flags, outFlags);
    if (result == SQLITE_OK) {
        Calls& made = calls[file];
        made.real = file->pMethods;
        made.failing = *made.real;
        made.failing.xClose = CloseFile;
        made.failing.xWrite = WriteFile;
        made.failing.xSync = SyncFile;
        made.failing.xFileSize = FileSize;
        made.failing.xShmLock = LockShared;
        file->pMethods = &made.failing;
    }
    return layer->open != SQLITE_OK ? layer->open : result;
}

int Delete(sqlite3_vfs*, const char* name, int syncs)
{
    if (layer->undeletable != nullptr) {
        const std::string_view ending = layer->undeletable;
        const std::string_view whole = name;
        if (whole.size() >= ending.size() && whole.substr(whole.size() - ending.size()) == ending) {
            return SQLITE_IOERR_DELETE;
        }
    }
    return real->xDelete(real, name, syncs);
}

int Access(sqlite3_vfs*, const char* name, int flags, int* answer)
{
    return layer->access != SQLITE_OK ? layer->access : real->xAccess(real, name, flags, answer);
}

int FullPathname(sqlite3_vfs*, const char* name, int size, char* path)
{
    return layer->fullPathname != SQLITE_OK ? layer->fullPathname
                                            : real->xFullPathname(real, name, size, path);
}

} // namespace

FailingLayer::FailingLayer()
{
    layer = this;
    real = sqlite3_vfs_find(nullptr);
    m_vfs = *real;
    m_vfs.zName = NAME;
    m_vfs.xOpen = Open;
    m_vfs.xDelete = Delete;
    m_vfs.xAccess = Access;
    m_vfs.xFullPathname = FullPathname;
    sqlite3_vfs_register(&m_vfs, 0);
}

FailingLayer::~FailingLayer()
{
    sqlite3_vfs_unregister(&m_vfs);
}

std::size_t FailingLayer::CountOpen() const
{
    return calls.size();
}

#include "LogDatabase/LookLayer.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <new>

namespace log_database
{
namespace
{

constexpr char JOURNAL[] = "-journal";

// What was written at one place; its bytes stand behind it.
struct Piece {
    Piece* next;
    sqlite3_int64 at;
    int length;

    unsigned char* Bytes() { return reinterpret_cast<unsigned char*>(this + 1); }
};

// The engine's view of an open file. The real one stands behind it.
struct alignas(8) LookFile {
    sqlite3_file base;
    sqlite3_file* real; // null: there is none
    sqlite3_int64 size; // as it was written; -1: that of the real one
    Piece* first;
    Piece* last;
};

LookFile& Of(sqlite3_file* file)
{
    return *reinterpret_cast<LookFile*>(file);
}

int FileSize(sqlite3_file* file, sqlite3_int64* size)
{
    const LookFile& look = Of(file);
    *size = std::max<sqlite3_int64>(look.size, 0);
    return look.size >= 0 || look.real == nullptr ? SQLITE_OK
                                                  : look.real->pMethods->xFileSize(look.real, size);
}

int CloseFile(sqlite3_file* file)
{
    LookFile& look = Of(file);
    while (Piece* piece = look.first) {
        look.first = piece->next;
        sqlite3_free(piece);
    }
    return look.real == nullptr ? SQLITE_OK : look.real->pMethods->xClose(look.real);
}

int ReadFile(sqlite3_file* file, void* bytes, int length, sqlite3_int64 at)
{
    const LookFile& look = Of(file);
    auto* to = static_cast<unsigned char*>(bytes);
    std::memset(to, 0, static_cast<std::size_t>(length));
    int result = SQLITE_OK;
    if (look.real != nullptr) {
        result = look.real->pMethods->xRead(look.real, bytes, length, at);
    }
    sqlite3_int64 size = 0;
    if (result == SQLITE_OK || result == SQLITE_IOERR_SHORT_READ) {
        result = FileSize(file, &size);
    }
    if (result != SQLITE_OK) {
        return result;
    }
    const sqlite3_int64 end = at + length;
    for (Piece* piece = look.first; piece != nullptr; piece = piece->next) {
        const sqlite3_int64 from = std::max(at, piece->at);
        const sqlite3_int64 until = std::min(end, piece->at + piece->length);
        if (from < until) {
            std::memcpy(to + (from - at), piece->Bytes() + (from - piece->at),
                        static_cast<std::size_t>(until - from));
        }
    }
    if (end <= size) {
        return SQLITE_OK;
    }
    const sqlite3_int64 there = std::max(at, size);
    std::memset(to + (there - at), 0, static_cast<std::size_t>(end - there));
    return SQLITE_IOERR_SHORT_READ;
}

int WriteFile(sqlite3_file* file, const void* bytes, int length, sqlite3_int64 at)
{
    LookFile& look = Of(file);
    sqlite3_int64 size = 0;
    const int result = FileSize(file, &size);
    if (result != SQLITE_OK) {
        return result;
    }
    auto* piece =
        static_cast<Piece*>(sqlite3_malloc64(sizeof(Piece) + static_cast<sqlite3_uint64>(length)));
    if (piece == nullptr) {
        return SQLITE_IOERR_NOMEM;
    }
    *piece = {nullptr, at, length};
    std::memcpy(piece->Bytes(), bytes, static_cast<std::size_t>(length));
    (look.last == nullptr ? look.first : look.last->next) = piece;
    look.last = piece;
    look.size = std::max(size, at + length);
    return SQLITE_OK;
}

int TruncateFile(sqlite3_file* file, sqlite3_int64 length)
{
    Of(file).size = length;
    return SQLITE_OK;
}

int SyncFile(sqlite3_file*, int)
{
    return SQLITE_OK;
}

// The engine locks the database alone, which is there.
int LockFile(sqlite3_file* file, int level)
{
    return Of(file).real->pMethods->xLock(Of(file).real, level);
}

int UnlockFile(sqlite3_file* file, int level)
{
    return Of(file).real->pMethods->xUnlock(Of(file).real, level);
}

int CheckReservedLock(sqlite3_file* file, int* held)
{
    return Of(file).real->pMethods->xCheckReservedLock(Of(file).real, held);
}

// None, so that no hint about a size or the like reaches the file.
int FileControl(sqlite3_file*, int, void*)
{
    return SQLITE_NOTFOUND;
}

int SectorSize(sqlite3_file*)
{
    return 512;
}

int DeviceCharacteristics(sqlite3_file*)
{
    return 0;
}

int ShareMap(sqlite3_file* file, int region, int size, int extend, void volatile** memory)
{
    return Of(file).real->pMethods->xShmMap(Of(file).real, region, size, extend, memory);
}

int ShareLock(sqlite3_file* file, int first, int count, int flags)
{
    return Of(file).real->pMethods->xShmLock(Of(file).real, first, count, flags);
}

void ShareBarrier(sqlite3_file* file)
{
    Of(file).real->pMethods->xShmBarrier(Of(file).real);
}

int ShareUnmap(sqlite3_file* file, int deletes)
{
    return Of(file).real->pMethods->xShmUnmap(Of(file).real, deletes);
}

// Of version 1, that of a layer which shares no memory, the engine calls none of the last ones.
constexpr sqlite3_io_methods MethodsOf(int version)
{
    return {version,
            CloseFile,
            ReadFile,
            WriteFile,
            TruncateFile,
            SyncFile,
            FileSize,
            LockFile,
            UnlockFile,
            CheckReservedLock,
            FileControl,
            SectorSize,
            DeviceCharacteristics,
            ShareMap,
            ShareLock,
            ShareBarrier,
            ShareUnmap,
            nullptr,
            nullptr};
}

constexpr sqlite3_io_methods METHODS = MethodsOf(2);
constexpr sqlite3_io_methods METHODS_WITHOUT_SHARING = MethodsOf(1);

int ForReading(int flags)
{
    constexpr int CHANGES = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_EXCLUSIVE |
                            SQLITE_OPEN_DELETEONCLOSE;
    return (flags & ~CHANGES) | SQLITE_OPEN_READONLY;
}

bool IsJournal(const char* name)
{
    const std::size_t length = std::strlen(name);
    return length >= sizeof JOURNAL - 1 &&
           std::strcmp(name + length - (sizeof JOURNAL - 1), JOURNAL) == 0;
}

} // namespace

LookLayer::LookLayer(const char* vfs) : m_real(sqlite3_vfs_find(vfs))
{
    std::snprintf(m_name, sizeof m_name, "look-%p", static_cast<void*>(this));
    if (m_real == nullptr) {
        return;
    }
    m_vfs.iVersion = 1;
    m_vfs.szOsFile = static_cast<int>(sizeof(LookFile)) + m_real->szOsFile;
    m_vfs.mxPathname = m_real->mxPathname;
    m_vfs.zName = m_name;
    m_vfs.pAppData = this;
    m_vfs.xOpen = Open;
    m_vfs.xDelete = Delete;
    m_vfs.xAccess = Access;
    m_vfs.xFullPathname = FullPathname;
    m_vfs.xRandomness = Randomness;
    m_vfs.xSleep = Sleep;
    m_vfs.xCurrentTime = CurrentTime;
    m_vfs.xGetLastError = GetLastError;
    sqlite3_vfs_register(&m_vfs, 0);
}

LookLayer::~LookLayer()
{
    sqlite3_vfs_unregister(&m_vfs);
}

LookLayer& LookLayer::Of(sqlite3_vfs* vfs)
{
    return *static_cast<LookLayer*>(vfs->pAppData);
}

int LookLayer::Open(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags,
                    int* outFlags)
{
    LookFile& look = *new (file) LookFile{{nullptr}, nullptr, -1, nullptr, nullptr};
    const bool isDatabase = (flags & SQLITE_OPEN_MAIN_DB) != 0;
    int opened = flags;
    int there = isDatabase ? 1 : 0;
    int result = SQLITE_OK;
    if (!isDatabase && name != nullptr) {
        result = Access(vfs, name, SQLITE_ACCESS_EXISTS, &there);
    }
    // Layers say of an empty file that it is not there, and others may write to that of a log.
    if (result == SQLITE_OK && (there != 0 || (flags & SQLITE_OPEN_WAL) != 0)) {
        sqlite3_vfs* real = Of(vfs).m_real;
        auto* behind = reinterpret_cast<sqlite3_file*>(&look + 1);
        behind->pMethods = nullptr;
        result = real->xOpen(real, name, behind, isDatabase ? flags : ForReading(flags),
                             isDatabase ? &opened : nullptr);
        if (result == SQLITE_OK) {
            look.real = behind;
        } else if (behind->pMethods != nullptr) {
            behind->pMethods->xClose(behind);
        }
        result = there != 0 ? result : SQLITE_OK;
    }
    if (result != SQLITE_OK) {
        return result;
    }
    look.base.pMethods = look.real != nullptr && look.real->pMethods->iVersion > 1
                             ? &METHODS
                             : &METHODS_WITHOUT_SHARING;
    if (outFlags != nullptr) {
        *outFlags = opened;
    }
    return SQLITE_OK;
}

int LookLayer::Delete(sqlite3_vfs* vfs, const char* name, int)
{
    Of(vfs).m_journalGone = Of(vfs).m_journalGone || IsJournal(name);
    return SQLITE_OK;
}

int LookLayer::Access(sqlite3_vfs* vfs, const char* name, int flags, int* answer)
{
    if (Of(vfs).m_journalGone && IsJournal(name)) {
        *answer = 0;
        return SQLITE_OK;
    }
    sqlite3_vfs* real = Of(vfs).m_real;
    return real->xAccess(real, name, flags, answer);
}

int LookLayer::FullPathname(sqlite3_vfs* vfs, const char* name, int size, char* path)
{
    sqlite3_vfs* real = Of(vfs).m_real;
    return real->xFullPathname(real, name, size, path);
}

int LookLayer::Randomness(sqlite3_vfs* vfs, int length, char* bytes)
{
    sqlite3_vfs* real = Of(vfs).m_real;
    return real->xRandomness(real, length, bytes);
}

int LookLayer::Sleep(sqlite3_vfs* vfs, int microseconds)
{
    sqlite3_vfs* real = Of(vfs).m_real;
    return real->xSleep(real, microseconds);
}

int LookLayer::CurrentTime(sqlite3_vfs* vfs, double* julianDay)
{
    sqlite3_vfs* real = Of(vfs).m_real;
    return real->xCurrentTime(real, julianDay);
}

int LookLayer::GetLastError(sqlite3_vfs* vfs, int size, char* text)
{
    sqlite3_vfs* real = Of(vfs).m_real;
    return real->xGetLastError(real, size, text);
}

} // namespace log_database

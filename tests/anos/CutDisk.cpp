#include "tests/anos/CutDisk.h"

#include "bancada/Unusable.h"
#include "tests/support/Files.h"

#include <algorithm>
#include <cassert>
#include <filesystem>
#include <fstream>
#include <new>
#include <utility>

namespace anos
{
namespace
{

constexpr char NAME[] = "anos";

CutDisk* disk = nullptr; // the one that lives

sqlite3_vfs* Own()
{
    static sqlite3_vfs* const own = sqlite3_vfs_find("unix");
    return own;
}

// The engine's own file follows it in memory.
struct File {
    sqlite3_file base;
    std::string* path;

    sqlite3_file* Inner() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

File& FileOf(sqlite3_file* file)
{
    return *reinterpret_cast<File*>(file);
}

sqlite3_file* Inner(sqlite3_file* file)
{
    return FileOf(file).Inner();
}

int Close(sqlite3_file* file)
{
    delete FileOf(file).path;
    return Inner(file)->pMethods->xClose(Inner(file));
}

int Read(sqlite3_file* file, void* bytes, int length, sqlite3_int64 at)
{
    return Inner(file)->pMethods->xRead(Inner(file), bytes, length, at);
}

// What `length` bytes at `at` hold, as far as there are any.
std::string Held(sqlite3_file* inner, std::int64_t size, std::int64_t at, std::int64_t length)
{
    const std::int64_t there = std::clamp<std::int64_t>(size - at, 0, length);
    std::string held(static_cast<std::size_t>(there), '\0');
    if (there > 0) {
        inner->pMethods->xRead(inner, held.data(), static_cast<int>(there), at);
    }
    return held;
}

int Write(sqlite3_file* file, const void* bytes, int length, sqlite3_int64 at)
{
    if (!disk->Allows()) {
        return SQLITE_IOERR_WRITE;
    }
    sqlite3_file* const inner = Inner(file);
    sqlite3_int64 size = 0;
    inner->pMethods->xFileSize(inner, &size);
    disk->Replaces(*FileOf(file).path, at, Held(inner, size, at, length), size);
    return inner->pMethods->xWrite(inner, bytes, length, at);
}

int Truncate(sqlite3_file* file, sqlite3_int64 length)
{
    if (!disk->Allows()) {
        return SQLITE_IOERR_TRUNCATE;
    }
    sqlite3_file* const inner = Inner(file);
    sqlite3_int64 size = 0;
    inner->pMethods->xFileSize(inner, &size);
    disk->Replaces(*FileOf(file).path, length, Held(inner, size, length, size - length), size);
    return inner->pMethods->xTruncate(inner, length);
}

// The files stand in memory, where there is nothing to sync.
int Sync(sqlite3_file* file, int)
{
    if (!disk->Allows()) {
        return SQLITE_IOERR_FSYNC;
    }
    disk->Synced(*FileOf(file).path);
    return SQLITE_OK;
}

int FileSize(sqlite3_file* file, sqlite3_int64* size)
{
    return Inner(file)->pMethods->xFileSize(Inner(file), size);
}

int Lock(sqlite3_file* file, int lock)
{
    return Inner(file)->pMethods->xLock(Inner(file), lock);
}

int Unlock(sqlite3_file* file, int lock)
{
    return Inner(file)->pMethods->xUnlock(Inner(file), lock);
}

int CheckReservedLock(sqlite3_file* file, int* result)
{
    return Inner(file)->pMethods->xCheckReservedLock(Inner(file), result);
}

int FileControl(sqlite3_file* file, int operation, void* argument)
{
    return Inner(file)->pMethods->xFileControl(Inner(file), operation, argument);
}

int SectorSize(sqlite3_file* file)
{
    return Inner(file)->pMethods->xSectorSize(Inner(file));
}

int DeviceCharacteristics(sqlite3_file* file)
{
    return Inner(file)->pMethods->xDeviceCharacteristics(Inner(file));
}

int ShmMap(sqlite3_file* file, int page, int size, int extend, void volatile** memory)
{
    return Inner(file)->pMethods->xShmMap(Inner(file), page, size, extend, memory);
}

int ShmLock(sqlite3_file* file, int offset, int count, int flags)
{
    return Inner(file)->pMethods->xShmLock(Inner(file), offset, count, flags);
}

void ShmBarrier(sqlite3_file* file)
{
    Inner(file)->pMethods->xShmBarrier(Inner(file));
}

int ShmUnmap(sqlite3_file* file, int remove)
{
    return Inner(file)->pMethods->xShmUnmap(Inner(file), remove);
}

// The second version: without memory-mapped reading, which goes past Read.
constexpr sqlite3_io_methods METHODS = {2,
                                        Close,
                                        Read,
                                        Write,
                                        Truncate,
                                        Sync,
                                        FileSize,
                                        Lock,
                                        Unlock,
                                        CheckReservedLock,
                                        FileControl,
                                        SectorSize,
                                        DeviceCharacteristics,
                                        ShmMap,
                                        ShmLock,
                                        ShmBarrier,
                                        ShmUnmap,
                                        nullptr,
                                        nullptr};

int Open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags)
{
    file->pMethods = nullptr;
    if (disk->IsDark()) {
        return SQLITE_CANTOPEN;
    }
    File& own = FileOf(file);
    const int result = Own()->xOpen(Own(), name, own.Inner(), flags, outFlags);
    if (result == SQLITE_OK) {
        own.path = new std::string(name == nullptr ? "" : name);
        file->pMethods = &METHODS;
    }
    return result;
}

int Delete(sqlite3_vfs*, const char* name, int)
{
    if (!disk->Allows()) {
        return SQLITE_IOERR_DELETE;
    }
    disk->Synced(name);
    return Own()->xDelete(Own(), name, 0);
}

} // namespace

CutDisk::CutDisk(std::uint32_t seed) : m_chance(seed)
{
    assert(disk == nullptr);
    disk = this;
    m_vfs = *Own();
    m_vfs.zName = NAME;
    m_vfs.pNext = nullptr;
    m_vfs.szOsFile = static_cast<int>(sizeof(File)) + Own()->szOsFile;
    m_vfs.xOpen = Open;
    m_vfs.xDelete = Delete;
    sqlite3_vfs_register(&m_vfs, 0);
}

CutDisk::~CutDisk()
{
    sqlite3_vfs_unregister(&m_vfs);
    disk = nullptr;
}

const char* CutDisk::Name()
{
    return NAME;
}

bool CutDisk::Allows()
{
    if (m_dark) {
        return false;
    }
    ++m_calls;
    if (m_callsToCut > 0 && --m_callsToCut == 0) {
        m_dark = true;
    }
    return !m_dark;
}

void CutDisk::Replaces(const std::string& path, std::int64_t at, std::string before,
                       std::int64_t size)
{
    m_unsynced[path].push_back({at, std::move(before), size});
}

std::uint32_t CutDisk::Draw(std::uint32_t below)
{
    return std::uniform_int_distribution<std::uint32_t>(0, below - 1)(m_chance);
}

// Takes writes back, the last one first: all of one, its second half, or nothing.
void CutDisk::ComeBack()
{
    for (auto& [path, writes] : m_unsynced) {
        std::error_code none;
        if (!std::filesystem::exists(path, none)) {
            continue;
        }
        // Whether the disk kept its last writes, its first ones, or any.
        const std::uint32_t kept = Draw(4);
        for (std::size_t left = writes.size(); left > 0; --left) {
            const Write& write = writes[left - 1];
            const std::uint32_t fate = kept == 0 ? 0 : kept == 1 ? 1 : Draw(3);
            if (fate == 0) {
                continue;
            }
            const std::size_t from = fate == 2 ? write.before.size() / 2 : 0;
            {
                std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
                file.seekp(write.at + static_cast<std::int64_t>(from));
                file.write(write.before.data() + from,
                           static_cast<std::streamsize>(write.before.size() - from));
            }
            // What was written behind the file's end goes when all that came later has gone.
            const std::int64_t end =
                fate == 2 ? std::max(write.size, write.at + static_cast<std::int64_t>(from))
                          : write.size;
            if (left == writes.size() || kept == 1) {
                std::filesystem::resize_file(path, static_cast<std::uintmax_t>(end));
            }
        }
    }
    m_unsynced.clear();
    m_callsToCut = 0;
    m_dark = false;
}

namespace
{

[[noreturn]] void NoPower()
{
    throw bancada::Unusable("the power is cut");
}

void Put(const std::string& path, std::string_view content, std::ios::openmode mode)
{
    std::ofstream file(path, std::ios::binary | mode);
    file << content;
}

} // namespace

std::optional<std::string> CutStorage::Read(const std::string& path, std::size_t)
{
    if (m_disk.IsDark()) {
        NoPower();
    }
    return std::filesystem::exists(path) ? std::optional(test_support::ReadFile(path))
                                         : std::nullopt;
}

void CutStorage::Replace(const std::string& path, std::string_view content)
{
    const bool wasDark = m_disk.IsDark();
    const bool allowed = m_disk.Allows();
    if (allowed || (!wasDark && m_disk.Draw(2) == 0)) {
        Put(path, content, std::ios::trunc);
    }
    if (!allowed) {
        NoPower();
    }
}

void CutStorage::Create(const std::string& path, std::string_view content, const std::string&)
{
    const bool wasDark = m_disk.IsDark();
    const bool allowed = m_disk.Allows();
    m_appended = path;
    if (allowed) {
        Put(path, content, std::ios::trunc);
        return;
    }
    if (!wasDark && m_disk.Draw(2) == 0) {
        Put(path, content.substr(0, m_disk.Draw(static_cast<std::uint32_t>(content.size()))),
            std::ios::trunc);
    }
    NoPower();
}

void CutStorage::Append(std::string_view text)
{
    const bool wasDark = m_disk.IsDark();
    if (m_disk.Allows()) {
        Put(m_appended, text, std::ios::app);
        return;
    }
    if (!wasDark) {
        Put(m_appended, text.substr(0, m_disk.Draw(static_cast<std::uint32_t>(text.size()) + 1)),
            std::ios::app);
    }
    NoPower();
}

void CutStorage::Remove(const std::string& path)
{
    const bool wasDark = m_disk.IsDark();
    const bool allowed = m_disk.Allows();
    if (allowed || (!wasDark && m_disk.Draw(2) == 0)) {
        std::filesystem::remove(path);
    }
    if (!allowed) {
        NoPower();
    }
}

} // namespace anos

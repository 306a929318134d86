#include "benchmarks/FileCalls.h"

#include <map>
#include <sqlite3.h>
#include <stdexcept>

namespace
{

FileCalls calls;
sqlite3_vfs* own = nullptr;
// The methods of one kind of the engine's files, two of them exchanged.
struct Methods {
    sqlite3_io_methods counting; // the first member: a file points to it
    const sqlite3_io_methods* real;
};

const sqlite3_io_methods& RealOf(sqlite3_file* file)
{
    return *reinterpret_cast<const Methods*>(file->pMethods)->real;
}

int Write(sqlite3_file* file, const void* bytes, int length, sqlite3_int64 at)
{
    ++calls.writes;
    calls.bytes += length;
    return RealOf(file).xWrite(file, bytes, length, at);
}

int Sync(sqlite3_file* file, int flags)
{
    ++calls.syncs;
    return RealOf(file).xSync(file, flags);
}

int Open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* flagsSet)
{
    const int result = own->xOpen(own, name, file, flags, flagsSet);
    if (file->pMethods == nullptr) {
        return result;
    }
    static std::map<const sqlite3_io_methods*, Methods> kinds;
    const auto [kind, isNew] = kinds.insert({file->pMethods, {*file->pMethods, file->pMethods}});
    if (isNew) {
        kind->second.counting.xWrite = Write;
        kind->second.counting.xSync = Sync;
    }
    file->pMethods = &kind->second.counting;
    return result;
}

} // namespace

const char* CountingLayer()
{
    static sqlite3_vfs layer = [] {
        own = sqlite3_vfs_find(nullptr);
        sqlite3_vfs made = *own;
        made.zName = "counting";
        made.pNext = nullptr;
        made.xOpen = Open;
        return made;
    }();
    if (sqlite3_vfs_register(&layer, 0) != SQLITE_OK) {
        throw std::runtime_error("the engine takes no other file layer");
    }
    return layer.zName;
}

const FileCalls& CountFileCalls()
{
    return calls;
}

#include "tests/LogDatabase/HeapCount.h"

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <sqlite3.h>

#if defined(__SANITIZE_ADDRESS__)
#define ECF_UNDER_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ECF_UNDER_SANITIZER 1
#endif
#endif
#ifndef ECF_UNDER_SANITIZER
#define ECF_UNDER_SANITIZER 0
#endif

#if ECF_UNDER_SANITIZER
// Of the sanitizer's runtime; g++ comes without the header that declares it.
extern "C" int __sanitizer_install_malloc_and_free_hooks(
    void (*allocated)(const volatile void* block, std::size_t size),
    void (*released)(const volatile void* block));
#endif

namespace
{

// Of the thread that asks: a test has readers in a thread of their own.
thread_local HeapBlocks blocks;
thread_local int engineCalls = 0;
thread_local int testsOwn = 0;
// Of all threads.
std::atomic<long> bytes = 0;
std::atomic<long> peak = 0;

void Count()
{
    if (testsOwn == 0) {
        ++(engineCalls > 0 ? blocks.engine : blocks.others);
    }
}

sqlite3_mem_methods real;

void Hold(long difference)
{
    const long now = bytes += difference;
    long before = peak;
    while (before < now && !peak.compare_exchange_weak(before, now)) {
    }
}

void* EngineAllocates(int size)
{
    ++engineCalls;
    void* block = real.xMalloc(size);
    --engineCalls;
    Hold(block == nullptr ? 0 : real.xSize(block));
    return block;
}

void* EngineReallocates(void* block, int size)
{
    const int before = real.xSize(block);
    ++engineCalls;
    void* other = real.xRealloc(block, size);
    --engineCalls;
    Hold(other == nullptr ? 0 : real.xSize(other) - before);
    return other;
}

void EngineReleases(void* block)
{
    Hold(-real.xSize(block));
    real.xFree(block);
}

// The engine takes an allocator only before its first use.
[[maybe_unused]] const bool INSTALLED = [] {
    if (sqlite3_config(SQLITE_CONFIG_GETMALLOC, &real) != SQLITE_OK) {
        return false;
    }
    static sqlite3_mem_methods methods = real;
    methods.xMalloc = EngineAllocates;
    methods.xRealloc = EngineReallocates;
    methods.xFree = EngineReleases;
    return sqlite3_config(SQLITE_CONFIG_MALLOC, &methods) == SQLITE_OK;
}();

#if ECF_UNDER_SANITIZER

// A sanitizer has an allocator of its own, and says when it is called.
[[maybe_unused]] const bool HOOKED = [] {
    return __sanitizer_install_malloc_and_free_hooks(
               [](const volatile void*, std::size_t) { Count(); }, [](const volatile void*) {}) > 0;
}();

#endif

} // namespace

#if !ECF_UNDER_SANITIZER

// Those of the C library, under their other names: whatever calls malloc, in whatever library,
// calls these instead.
extern "C" {

void* LibcMalloc(std::size_t size) __asm__("__libc_malloc");
void* LibcCalloc(std::size_t count, std::size_t size) __asm__("__libc_calloc");
void* LibcRealloc(void* block, std::size_t size) __asm__("__libc_realloc");
void* LibcMemalign(std::size_t alignment, std::size_t size) __asm__("__libc_memalign");

void* malloc(std::size_t size) noexcept
{
    Count();
    return LibcMalloc(size);
}

void* calloc(std::size_t count, std::size_t size) noexcept
{
    Count();
    return LibcCalloc(count, size);
}

void* realloc(void* block, std::size_t size) noexcept
{
    Count();
    return LibcRealloc(block, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept
{
    Count();
    return LibcMemalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept
{
    Count();
    *block = LibcMemalign(alignment, size);
    return *block == nullptr ? ENOMEM : 0;
}
}

#endif

const HeapBlocks& CountBlocks()
{
    return blocks;
}

void ForgetBlocks()
{
    blocks = {};
    peak = bytes.load();
}

long EngineBytes()
{
    return bytes;
}

long EnginePeakBytes()
{
    return peak;
}

TestsOwnBlocks::TestsOwnBlocks()
{
    ++testsOwn;
}

TestsOwnBlocks::~TestsOwnBlocks()
{
    --testsOwn;
}

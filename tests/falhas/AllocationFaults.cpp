#include "tests/falhas/AllocationFaults.h"

#include <sqlite3.h>

namespace falhas
{
namespace
{

sqlite3_mem_methods real;
int callsToFault = 0; // 0: none is planned
bool failing = false;
bool failed = false;
bool failsForever = false;

bool Fails(int size)
{
    if (callsToFault > 0 && --callsToFault == 0) {
        failed = true;
        failing = failsForever;
    } else if (!failing) {
        return false;
    }
    sqlite3_log(SQLITE_NOMEM, "failed to allocate %d bytes of memory", size);
    return true;
}

void* Allocate(int size)
{
    return Fails(size) ? nullptr : real.xMalloc(size);
}

void* Reallocate(void* memory, int size)
{
    return Fails(size) ? nullptr : real.xRealloc(memory, size);
}

// The engine takes an allocator only before its first use. Its allocations from a connection's own
// reserve (lookaside) never fail, so the reserve is left out.
const bool installed = [] {
    if (sqlite3_config(SQLITE_CONFIG_GETMALLOC, &real) != SQLITE_OK) {
        return false;
    }
    static sqlite3_mem_methods methods = real;
    methods.xMalloc = Allocate;
    methods.xRealloc = Reallocate;
    return sqlite3_config(SQLITE_CONFIG_MALLOC, &methods) == SQLITE_OK &&
           sqlite3_config(SQLITE_CONFIG_LOOKASIDE, 0, 0) == SQLITE_OK;
}();

} // namespace

void FailAllocation(int at, bool forever)
{
    callsToFault = installed ? at : 0;
    failsForever = forever;
    failing = failed = false;
}

bool AllocationHasFailed()
{
    return failed;
}

int AllocationsLeft()
{
    return callsToFault;
}

void HealAllocations()
{
    callsToFault = 0;
    failing = false;
}

} // namespace falhas

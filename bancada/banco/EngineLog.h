// What the engine says of failures beside its results.
#pragma once

#include <cstdint>

namespace bancada
{

// A result that the module does not look at is gone with its next call. The engine's own log has
// it all the same: a query that could not be prepared, memory or a disk that failed on the way.
struct EngineLogCounts {
    std::int64_t records = 0;
    std::int64_t failures = 0; // of memory, disk or file, which a statement is not to blame for
    int lastFailure = 0;       // its result code
};

// Of this thread, since the program began. They stay zero in a program that has used the engine
// before its static objects were made: the engine takes a log only before its first use.
const EngineLogCounts& EngineLog();

// Whether a failed call says something about its statement alone. Any other failure (no room, no
// memory, the disk, the file) may have cost the transaction, and leaves no reason to trust the rest
// of it.
bool IsStatementsOwn(int result);

} // namespace bancada

// What the engine says of failures beside its results.
#pragma once

#include <cstdint>

namespace log_database
{

// A result that the loggers do not look at is gone with the engine's next call. The engine's own
// log has it all the same: a query that could not be prepared, memory or a disk that failed on the
// way.
struct EngineLogCounts {
    std::int64_t records = 0;
    std::int64_t errors = 0;   // of them, no remarks: each ends the statement that met it
    std::int64_t failures = 0; // of them, of memory, disk or file: no statement is to blame
    int lastFailure = 0;       // the result code of the last one
};

// Of this thread, since PrepareEngine answered true; zero if it never did.
const EngineLogCounts& EngineLog();

// What an opening says that the engine has not taken the log for.
inline constexpr char LATE_ENGINE[] =
    "LogDatabase: the engine was in use before PrepareEngine: some failures cannot be seen";

// Whether the engine has taken the log.
bool HasEngineLog();

// Whether a failed call says something about its statement alone. Any other failure (no room, no
// memory, the disk, the file) may have cost the transaction, and leaves no reason to trust the rest
// of it.
bool IsStatementsOwn(int result);

} // namespace log_database

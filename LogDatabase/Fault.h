// The engine's failures as this library tells them.
#pragma once

#include "LogDatabase/LogDatabase.h"

#include <cstddef>
#include <cstdio>

struct sqlite3;

namespace log_database
{

// The fault that a result code of the engine, extended or not, stands for.
LogFault FaultOf(int result);

// Copies `text`, cut where `out` is full.
template <std::size_t SIZE>
void CopyText(char (&out)[SIZE], const char* text)
{
    std::snprintf(out, SIZE, "%s", text);
}

// The text of a fault.
struct Reason {
    char text[256] = "";
};

// What the engine said last of `db`, with the operating system's word where it has one. REQUIRES: a
// call failed.
LogFault FaultOfEngine(sqlite3* db, Reason& reason);

} // namespace log_database

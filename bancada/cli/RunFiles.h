// The files of a run, which must not be taken for one another.
#pragma once

#include <string>

namespace bancada
{

struct RunFiles {
    std::string tape; // "-" is standard input
    std::string database;
    std::string log;
    std::string memory; // empty: none is kept

    bool HasMemory() const { return !memory.empty(); }
    // The engine's name for a database that is no file.
    bool DatabaseIsFile() const { return database != ":memory:"; }
};

// The files of a run as they are named: the log's name is derived from the database's where it is
// empty, and a database is a file also where the engine would take its name for an address. Throws
// Unusable if two of tape, database, firmware log, memory and the files that they need beside them
// (of the database -wal, -shm, -journal and -aside, of the memory .tmp and .journal, of both .lock)
// are one, whatever links name them, if standard output is redirected to one that is not the log,
// for a database that nothing would be kept of, and for one that another hard link names too.
[[nodiscard]] RunFiles CheckRunFiles(RunFiles files);

} // namespace bancada

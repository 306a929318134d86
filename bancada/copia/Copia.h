// A logging database copied as evidence.
#pragma once

#include "bancada/leitura/DatabaseReading.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bancada::copia
{

struct Copia {
    leitura::Manner howRead = leitura::Manner::SHARED;
    std::int64_t tables = 0;
    std::int64_t rows = 0;
    std::uint64_t bytes = 0;
    std::string sha256; // of the copy, 64 hexadecimal digits
    // What is wrong with the database, and so with its copy: the first lines of SQLite's own
    // integrity check, and where its rows cannot be read. Empty where it is sound.
    std::vector<std::string> damage;
};

// Copies the database `from` by the engine's backup interface into the file `to`, which exists and
// is empty: one state of it, every committed document included that waits in the write-ahead log.
// Then compares the two, row by row. `from` is only read (leitura::DatabaseReading), and stays as
// it is with all that stands beside it; beside `to` nothing is left. Copies of one state have the
// same bytes, but not those of the file that was copied.
//
// Throws Unusable if `from` cannot be read or is no logging database, if it was written to
// meanwhile by somebody who could not be seen, if `to` cannot be written, or if the copy does not
// hold the same; what `to` then holds is to be thrown away.
[[nodiscard]] Copia CopyDatabase(const std::string& from, const std::string& to);

} // namespace bancada::copia

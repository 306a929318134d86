// Whether two databases hold the same.
#pragma once

#include "bancada/leitura/DatabaseReading.h"

#include <cstdint>
#include <string>

namespace bancada::copia
{

struct Comparison {
    std::int64_t tables = 0;
    std::int64_t rows = 0;
    // The first thing that is not the same in both, in words; empty where there is none.
    std::string difference;
    // Where the engine could not read on, in both alike, with its reason; empty where it could.
    std::string unreadable;
};

// Compares the schema, the numbers that the file's header carries for its application
// (application_id, user_version) and every row of every table with its rowid: types and bytes, in
// the order of the rows. A table that cannot be read to its end in either is compared as far as it
// can be. Throws Unusable where the schema itself cannot be read.
[[nodiscard]] Comparison CompareContent(const leitura::DatabaseReading& one,
                                        const leitura::DatabaseReading& other);

} // namespace bancada::copia

// What can still be read of a damaged logging database.
#pragma once

#include "bancada/recuperacao/RowSet.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bancada::recuperacao
{

struct RecoveredTable {
    std::string name;
    std::int64_t rows = 0;
    // Rows that are, or may be, missing. Rows are never deleted, so that every one that is not
    // there between two that are was lost.
    std::vector<RowRange> missing;
};

struct DamagedPage {
    std::uint32_t page = 0;
    std::string table; // whose tree leads there; empty: none does
    std::string reason;
};

struct Recuperacao {
    std::size_t pageSize = 0;
    std::uint32_t pages = 0;
    bool hasHeader = false;             // page 1 begins as that of a database
    bool withLog = false;               // pages were read from the write-ahead log
    std::uint64_t logBytesNotRead = 0;  // behind its last commit that can be read
    std::int64_t leavesFound = 0;       // that no tree led to, and whose table is certain
    std::vector<RecoveredTable> tables; // every logging table, in the schema's order
    std::vector<DamagedPage> damaged;   // by their number
    std::vector<std::string> notCopied; // tables that are none of a logging database

    std::int64_t Rows() const;
    bool IsWhole() const;
};

// Reads the damaged database `from`, with the write-ahead log beside it if there is one, and writes
// every row that stands on a sound page into `to`, a file that exists and is empty, with its rowid,
// its values unchanged and the schema of today. Nothing is written that did not stand in `from`.
// The new database carries no command number: no register goes on with it. `from` and what stands
// beside it stay as they are; memory grows with the number of pages and of damages, not of rows.
//
// Throws Unusable if `from` cannot be read, holds no page of a database, or was written to
// meanwhile, and if `to` cannot be written.
[[nodiscard]] Recuperacao Recover(const std::string& from, const std::string& to);

} // namespace bancada::recuperacao

// A stretch of a table's rows, found without reading the table.
#pragma once

#include "bancada/leitura/DatabaseReading.h"

#include <cstdint>
#include <limits>
#include <string>

namespace bancada::leitura
{

// The rows from one rowid to another, both included; all rows until it is told which. Empty where
// `last` is less than `first`.
struct RowRange {
    std::int64_t first = std::numeric_limits<std::int64_t>::min();
    std::int64_t last = std::numeric_limits<std::int64_t>::max();
};

// The condition of a query on the rows of a range.
std::string Within(const RowRange& range);

// The rows of a table whose counter `column` is `from` to `to`. Halves the rowids until they are
// found, so that time grows with the logarithm of the table.
//
// REQUIRES: the counter does not fall from row to row. Where it does, it is a stretch in which rows
// may be missing. Rows whose cell holds no integer are not asked. Throws Unusable where the table
// or the column is missing.
RowRange FindRange(const DatabaseReading& database, const std::string& table,
                   const std::string& column, std::int64_t from, std::int64_t to);

} // namespace bancada::leitura

// The rows of a table by a counter that the schema does not index.
#pragma once

#include "bancada/leitura/DatabaseReading.h"
#include "bancada/leitura/RowRange.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace bancada::leitura
{

// Made in one pass over the rows and kept in memory, 16 bytes a row, so that a report asks for the
// rows of each of many keys without a scan for each. Does not need the database afterwards.
class RowIndex
{
  public:
    // Of the rows in `range`. Throws Unusable where the table or the column is missing. Cells that
    // hold no integer are the rows of no key.
    RowIndex(const DatabaseReading& database, const std::string& table, const std::string& column,
             const RowRange& range = {});

    // The rowids of a key's rows, rising; empty where it has none.
    std::vector<std::int64_t> RowsOf(std::int64_t key) const;
    bool Has(std::int64_t key) const;
    // Whether several rows have the key.
    bool IsRepeated(std::int64_t key) const;

  private:
    using Entry = std::pair<std::int64_t, std::int64_t>;

    std::vector<Entry>::const_iterator First(std::int64_t key) const;

    // By key, then by rowid.
    std::vector<Entry> m_entries;
};

} // namespace bancada::leitura

#include "bancada/leitura/RowIndex.h"

#include "bancada/leitura/Query.h"

#include <algorithm>
#include <limits>

namespace bancada::leitura
{

RowIndex::RowIndex(const DatabaseReading& database, const std::string& table,
                   const std::string& column, const RowRange& range)
{
    Query rows(database, "SELECT rowid AS row, " + column + " AS key FROM " + table + " WHERE " +
                             Within(range));
    while (rows.Next()) {
        if (const Integer key = rows.ReadInteger("key"); key.IsKnown()) {
            m_entries.emplace_back(key.Value(), rows.ReadInteger("row").Value());
        }
    }
    std::sort(m_entries.begin(), m_entries.end());
}

std::vector<RowIndex::Entry>::const_iterator RowIndex::First(std::int64_t key) const
{
    return std::lower_bound(m_entries.begin(), m_entries.end(),
                            Entry(key, std::numeric_limits<std::int64_t>::min()));
}

std::vector<std::int64_t> RowIndex::RowsOf(std::int64_t key) const
{
    std::vector<std::int64_t> rows;
    for (auto entry = First(key); entry != m_entries.end() && entry->first == key; ++entry) {
        rows.push_back(entry->second);
    }
    return rows;
}

bool RowIndex::Has(std::int64_t key) const
{
    const auto entry = First(key);
    return entry != m_entries.end() && entry->first == key;
}

bool RowIndex::IsRepeated(std::int64_t key) const
{
    const auto entry = First(key);
    return m_entries.end() - entry > 1 && entry[1].first == key;
}

} // namespace bancada::leitura

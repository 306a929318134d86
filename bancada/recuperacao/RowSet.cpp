#include "bancada/recuperacao/RowSet.h"

#include <algorithm>
#include <iterator>

namespace bancada::recuperacao
{

void RowSet::Add(std::int64_t rowid)
{
    if (HasAnyOf({rowid, rowid})) {
        return;
    }
    ++m_count;
    auto next = m_ranges.upper_bound(rowid);
    std::int64_t last = rowid;
    if (next != m_ranges.end() && next->first - 1 == rowid) {
        last = next->second;
        next = m_ranges.erase(next);
    }
    if (next != m_ranges.begin() && std::prev(next)->second == rowid - 1) {
        std::prev(next)->second = last;
    } else {
        m_ranges.emplace_hint(next, rowid, last);
    }
}

bool RowSet::HasAnyOf(RowRange range) const
{
    const auto behind = m_ranges.upper_bound(range.last);
    return behind != m_ranges.begin() && std::prev(behind)->second >= range.first;
}

std::vector<RowRange> RowSet::MissingOf(RowRange range) const
{
    std::vector<RowRange> missing;
    auto at = m_ranges.upper_bound(range.first);
    if (at != m_ranges.begin()) {
        --at;
    }
    std::int64_t first = range.first;
    for (; at != m_ranges.end() && at->first <= range.last; ++at) {
        if (at->second < first) {
            continue;
        }
        if (at->first > first) {
            missing.push_back({first, at->first - 1});
        }
        if (at->second >= range.last) {
            return missing;
        }
        first = at->second + 1;
    }
    missing.push_back({first, range.last});
    return missing;
}

} // namespace bancada::recuperacao

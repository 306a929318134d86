#include "bancada/relatorio/RepeatedNumber.h"

#include "bancada/leitura/Limits.h"

#include <algorithm>

namespace bancada::relatorio
{

PlaceAmongEqual PlaceAmong(const std::vector<std::int64_t>& equal, std::int64_t rowid)
{
    return {std::lower_bound(equal.begin(), equal.end(), rowid) - equal.begin(),
            static_cast<std::int64_t>(equal.size())};
}

void RowGroups::Add(std::int64_t rowid, bool begins)
{
    if (begins || m_rowids.empty()) {
        m_begins.push_back(m_rowids.size());
    }
    m_rowids.push_back(rowid);
}

Share RowGroups::Of(const PlaceAmongEqual& place) const
{
    if (m_rowids.empty()) {
        return {};
    }
    const auto documents = static_cast<std::size_t>(place.all);
    if (m_begins.size() == documents) {
        const auto group = static_cast<std::size_t>(place.before);
        const std::size_t end = group + 1 < m_begins.size() ? m_begins[group + 1] : m_rowids.size();
        const auto row = [this](std::size_t at) {
            return m_rowids.begin() + static_cast<std::ptrdiff_t>(at);
        };
        return {{row(m_begins[group]), row(end)}, false, false};
    }
    const bool few = m_rowids.size() <= static_cast<std::size_t>(leitura::MAX_ITENS) / documents;
    if (place.before == 0 || few) {
        return {m_rowids, true, false};
    }
    return {{}, true, true};
}

} // namespace bancada::relatorio

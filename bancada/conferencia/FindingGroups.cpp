#include "bancada/conferencia/FindingGroups.h"

namespace bancada::conferencia
{

std::int64_t FindingGroups::Add(const Finding& finding)
{
    const auto place = m_places
                           .emplace(std::tuple(finding.kind, finding.explained, finding.place.table,
                                               finding.place.column),
                                    m_groups.size())
                           .first->second;
    if (place == m_groups.size()) {
        m_groups.push_back({finding.kind,
                            finding.explained,
                            finding.place.table,
                            finding.place.column,
                            0,
                            finding.key,
                            {}});
    }
    FindingGroup& group = m_groups[place];
    group.last = finding.key;
    return ++group.count;
}

} // namespace bancada::conferencia

// Findings by their cause: one systematic fault over a year is one group.
#pragma once

#include "bancada/conferencia/Finding.h"

#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace bancada::conferencia
{

// Findings of one kind on one column, explained or not.
struct FindingGroup {
    FindingKind kind = FindingKind::END;
    bool explained = false;
    std::string table, column; // empty where they are of no one place
    std::int64_t count = 0;
    std::string first, last; // what they concern
};

class FindingGroups
{
  public:
    // Answers how many there are of its group by now, itself included.
    std::int64_t Add(const Finding& finding);

    // In the order of their first findings.
    const std::vector<FindingGroup>& All() const { return m_groups; }

  private:
    std::map<std::tuple<FindingKind, bool, std::string, std::string>, std::size_t> m_places;
    std::vector<FindingGroup> m_groups;
};

} // namespace bancada::conferencia

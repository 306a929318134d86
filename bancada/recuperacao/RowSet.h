// Which rows of a table there are.
#pragma once

#include <cstdint>
#include <limits>
#include <map>
#include <vector>

namespace bancada::recuperacao
{

// Rows by their rowid, from `first` to `last`, both of them in it.
struct RowRange {
    static constexpr std::int64_t NO_END = std::numeric_limits<std::int64_t>::max();

    std::int64_t first = 1;
    std::int64_t last = NO_END; // NO_END: how many there were nobody can tell
};

// A set of rowids; small where they follow one another.
class RowSet
{
  public:
    void Add(std::int64_t rowid);
    bool HasAnyOf(RowRange range) const;
    std::int64_t Count() const { return m_count; }

    // What of the range is not in the set, in its order.
    std::vector<RowRange> MissingOf(RowRange range) const;

  private:
    std::map<std::int64_t, std::int64_t> m_ranges; // the last of each by its first
    std::int64_t m_count = 0;
};

} // namespace bancada::recuperacao

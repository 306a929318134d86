#include "bancada/leitura/RowRange.h"

#include "bancada/leitura/Query.h"

#include <optional>

namespace bancada::leitura
{
namespace
{

class Bisection
{
  public:
    Bisection(const DatabaseReading& database, const std::string& table, const std::string& column)
        : m_ends(database, "SELECT (SELECT min(rowid) FROM " + table +
                               ") AS low, (SELECT max(rowid) FROM " + table + ") AS high"),
          m_next(database, "SELECT rowid AS row, " + column + " AS key FROM " + table +
                               " WHERE rowid BETWEEN ?1 AND ?2 AND typeof(" + column +
                               ") = 'integer' ORDER BY rowid LIMIT 1")
    {
    }

    // The first row whose key is `key` or more.
    std::optional<std::int64_t> FirstFrom(std::int64_t key)
    {
        std::optional<std::int64_t> found;
        m_ends.With().Next();
        const Integer lowest = m_ends.ReadInteger("low");
        std::int64_t low = lowest.Value();
        std::int64_t high = m_ends.ReadInteger("high").Value();
        m_ends.End();
        while (lowest.IsKnown() && low <= high) {
            // Through unsigned, as the distance of two rowids has 64 bits.
            const std::uint64_t half =
                (static_cast<std::uint64_t>(high) - static_cast<std::uint64_t>(low)) / 2;
            const auto middle = static_cast<std::int64_t>(static_cast<std::uint64_t>(low) + half);
            const bool any = m_next.With(middle, high).Next();
            const std::int64_t row = any ? m_next.ReadInteger("row").Value() : high;
            const bool isBelow = any && m_next.ReadInteger("key").Value() < key;
            m_next.End();
            if (isBelow) {
                if (row == high) {
                    break;
                }
                low = row + 1;
                continue;
            }
            if (any) {
                found = row;
            }
            if (middle == low) {
                break;
            }
            high = middle - 1;
        }
        return found;
    }

  private:
    Query m_ends;
    Query m_next;
};

} // namespace

std::string Within(const RowRange& range)
{
    return "rowid BETWEEN " + std::to_string(range.first) + " AND " + std::to_string(range.last);
}

RowRange FindRange(const DatabaseReading& database, const std::string& table,
                   const std::string& column, std::int64_t from, std::int64_t to)
{
    Bisection bisection(database, table, column);
    const std::optional<std::int64_t> first = bisection.FirstFrom(from);
    if (!first || from > to) {
        return {0, -1};
    }
    RowRange range;
    range.first = *first;
    if (to < std::numeric_limits<std::int64_t>::max()) {
        if (const std::optional<std::int64_t> next = bisection.FirstFrom(to + 1)) {
            range.last = *next - 1;
        }
    }
    return range;
}

} // namespace bancada::leitura

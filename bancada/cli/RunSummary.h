// What became of a tape.
#pragma once

#include "bancada/banco/LogDatabase.h"
#include "bancada/tape/Place.h"

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace bancada
{

// Commands of one fate, each with its place on the tape. All are counted; of a tape that goes on
// and on only the first are kept.
class CommandList
{
  public:
    static constexpr std::size_t MAX_KEPT = 100;

    void Add(const Place& place, const std::string& command, const std::string& what);

    std::int64_t Count() const { return m_count; }
    // One line a command, "  file:line command: what".
    void Print(std::ostream& out) const;

  private:
    std::int64_t m_count = 0;
    std::vector<std::string> m_lines;
};

struct RunSummary {
    std::int64_t run = 0;
    CommandList refused;
    CommandList rejected; // commands with rejected statements
    CommandList lost;     // commands none of whose rows are kept

    // Whether anything was refused, rejected or lost.
    bool HasFindings() const;
    void Print(std::ostream& out, const LogDatabaseCounts& counts) const;
};

} // namespace bancada

#include "bancada/cli/RunSummary.h"

#include "bancada/Printable.h"

#include <iomanip>
#include <ostream>

namespace bancada
{
namespace
{

constexpr int LABEL_WIDTH = 34;
constexpr int NUMBER_WIDTH = 10;

void PrintCount(std::ostream& out, const char* label, std::int64_t count)
{
    out << std::left << std::setw(LABEL_WIDTH) << label << std::right << std::setw(NUMBER_WIDTH)
        << count << "\n";
}

} // namespace

void CommandList::Add(const Place& place, const std::string& command, const std::string& what)
{
    ++m_count;
    if (m_lines.size() < MAX_KEPT) {
        m_lines.push_back(
            "  " +
            Printable(place.file + ":" + std::to_string(place.line) + " " + command + ": " + what) +
            "\n");
    }
}

void CommandList::Print(std::ostream& out) const
{
    for (const std::string& line : m_lines) {
        out << line;
    }
    const std::int64_t more = m_count - static_cast<std::int64_t>(m_lines.size());
    if (more > 0) {
        out << "  ... and " << more << " more\n";
    }
}

bool RunSummary::HasFindings() const
{
    return refused.Count() > 0 || rejected.Count() > 0 || lost.Count() > 0;
}

void RunSummary::Print(std::ostream& out, const LogDatabaseCounts& counts) const
{
    PrintCount(out, "commands run", run);
    PrintCount(out, "commands refused", refused.Count());
    refused.Print(out);
    PrintCount(out, "statements executed", counts.statementsExecuted);
    PrintCount(out, "statements rejected", counts.statementsRejected);
    rejected.Print(out);
    PrintCount(out, "commands lost", lost.Count());
    lost.Print(out);
    if (counts.statementsUndone > 0) {
        PrintCount(out, "statements undone with them", counts.statementsUndone);
    }

    out << std::left << std::setw(LABEL_WIDTH) << "rows" << std::right << std::setw(NUMBER_WIDTH)
        << "inserted" << std::setw(NUMBER_WIDTH) << "updated"
        << "\n";
    for (const auto& [table, rows] : counts.rows) {
        if (rows.inserted == 0 && rows.updated == 0) {
            continue;
        }
        out << "  " << std::left << std::setw(LABEL_WIDTH - 2) << table << std::right
            << std::setw(NUMBER_WIDTH) << rows.inserted << std::setw(NUMBER_WIDTH) << rows.updated
            << "\n";
    }
}

} // namespace bancada

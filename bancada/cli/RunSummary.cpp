#include "bancada/cli/RunSummary.h"

#include "bancada/Messages.h"
#include "bancada/Printable.h"

#include <algorithm>
#include <iomanip>
#include <ostream>
#include <string_view>

namespace bancada
{
namespace
{

constexpr std::size_t LABEL_WIDTH = 34;
constexpr int NUMBER_WIDTH = 10;

// Filled up to its columns: a character is one, whatever its bytes.
void PrintLabel(std::ostream& out, std::string_view label, std::size_t width = LABEL_WIDTH)
{
    const auto columns =
        static_cast<std::size_t>(std::count_if(label.begin(), label.end(), [](char c) {
            return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
        }));
    out << label << std::string(columns < width ? width - columns : 0, ' ');
}

void PrintCount(std::ostream& out, const char* label, std::int64_t count)
{
    PrintLabel(out, label);
    out << std::right << std::setw(NUMBER_WIDTH) << count << "\n";
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
        out << "  " << Tr("... and %1 more", {std::to_string(more)}) << "\n";
    }
}

bool RunSummary::HasFindings() const
{
    return refused.Count() > 0 || rejected.Count() > 0 || lost.Count() > 0;
}

void RunSummary::Print(std::ostream& out, const LogDatabaseCounts& counts) const
{
    PrintCount(out, Tr("commands run"), run);
    PrintCount(out, Tr("commands refused"), refused.Count());
    refused.Print(out);
    PrintCount(out, Tr("statements executed"), counts.statementsExecuted);
    PrintCount(out, Tr("statements rejected"), counts.statementsRejected);
    rejected.Print(out);
    PrintCount(out, Tr("commands lost"), lost.Count());
    lost.Print(out);
    if (counts.statementsUndone > 0) {
        PrintCount(out, Tr("statements undone with them"), counts.statementsUndone);
    }

    PrintLabel(out, Tr("rows"));
    out << std::right << std::setw(NUMBER_WIDTH) << Tr("inserted") << std::setw(NUMBER_WIDTH)
        << Tr("updated") << "\n";
    for (const auto& [table, rows] : counts.rows) {
        if (rows.inserted == 0 && rows.updated == 0) {
            continue;
        }
        out << "  ";
        PrintLabel(out, table, LABEL_WIDTH - 2);
        out << std::right << std::setw(NUMBER_WIDTH) << rows.inserted << std::setw(NUMBER_WIDTH)
            << rows.updated << "\n";
    }
}

} // namespace bancada

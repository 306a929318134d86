#include "bancada/relatorio/Bobina.h"

#include "bancada/relatorio/DisplayText.h"

namespace bancada::relatorio
{

void Bobina::Print(std::string_view text, std::size_t indent)
{
    for (const std::string& line : Wrap(text, BOBINA_COLUMNS - indent)) {
        m_lines.push_back(std::string(indent, ' ') + line);
    }
}

void Bobina::PrintCentered(std::string_view text)
{
    for (const std::string& line : Wrap(text, BOBINA_COLUMNS)) {
        m_lines.push_back(std::string((BOBINA_COLUMNS - ColumnCount(line)) / 2, ' ') + line);
    }
}

void Bobina::PrintSides(std::string_view left, std::string_view right, std::size_t indent)
{
    const std::string value = Cut(right, BOBINA_COLUMNS);
    std::vector<std::string> lines = Wrap(left, BOBINA_COLUMNS - indent);
    for (std::string& line : lines) {
        line.insert(0, indent, ' ');
    }
    if (lines.empty() || ColumnCount(lines.back()) + 1 + ColumnCount(value) > BOBINA_COLUMNS) {
        lines.emplace_back();
    }
    std::string& last = lines.back();
    last += AlignRight(value, BOBINA_COLUMNS - ColumnCount(last));
    m_lines.insert(m_lines.end(), lines.begin(), lines.end());
}

void Bobina::PrintRule(char mark)
{
    m_lines.emplace_back(BOBINA_COLUMNS, mark);
}

} // namespace bancada::relatorio

// The strip of paper that a document is printed on.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace bancada::relatorio
{

// The width of the paper, in columns.
constexpr std::size_t BOBINA_COLUMNS = 48;

// A strip of paper: lines of at most BOBINA_COLUMNS columns, whatever the texts hold.
class Bobina
{
  public:
    const std::vector<std::string>& Lines() const { return m_lines; }

    // Each wraps where the text is longer than the paper; an empty or blank text prints nothing.
    void Print(std::string_view text, std::size_t indent = 0);
    void PrintCentered(std::string_view text);
    // `left` at `indent` and `right` at the right edge of the last line it takes.
    void PrintSides(std::string_view left, std::string_view right, std::size_t indent = 0);
    // The paper's width of one character.
    void PrintRule(char mark);

  private:
    std::vector<std::string> m_lines;
};

} // namespace bancada::relatorio

#include "bancada/relatorio/DisplayText.h"

#include "bancada/Character.h"

#include <algorithm>
#include <cstdint>

namespace bancada::relatorio
{
namespace
{

constexpr char32_t SUBSTITUTE = 0xFFFD;

bool IsCombining(char32_t c)
{
    return (c >= 0x0300 && c <= 0x036F) || c == 0x200B || c == 0x200C || c == 0x200D ||
           (c >= 0xFE00 && c <= 0xFE0F);
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Whether the text has the pattern's length, a digit where it has '9' and its own character
// elsewhere.
bool HasPattern(std::string_view text, std::string_view pattern)
{
    return text.size() == pattern.size() &&
           std::equal(text.begin(), text.end(), pattern.begin(),
                      [](char c, char p) { return p == '9' ? IsDigit(c) : c == p; });
}

void Append(std::string& out, char32_t c)
{
    const auto byte = [&](char32_t b) { out += static_cast<char>(static_cast<std::uint8_t>(b)); };
    if (c < 0x80) {
        byte(c);
    } else if (c < 0x800) {
        byte(0xC0U | (c >> 6U));
        byte(0x80U | (c & 0x3FU));
    } else if (c < 0x10000) {
        byte(0xE0U | (c >> 12U));
        byte(0x80U | ((c >> 6U) & 0x3FU));
        byte(0x80U | (c & 0x3FU));
    } else {
        byte(0xF0U | (c >> 18U));
        byte(0x80U | ((c >> 12U) & 0x3FU));
        byte(0x80U | ((c >> 6U) & 0x3FU));
        byte(0x80U | (c & 0x3FU));
    }
}

// How many characters of the text take at most `width` columns.
std::size_t CountThatFit(std::u32string_view text, std::size_t width)
{
    std::size_t used = 0;
    std::size_t i = 0;
    while (i < text.size() && used + (IsCombining(text[i]) ? 0 : 1) <= width) {
        used += IsCombining(text[i]) ? 0 : 1;
        ++i;
    }
    return i;
}

// What stands in a number's place, where there is room for a number.
std::string RawShown(const leitura::Cell& cell)
{
    constexpr std::size_t COLUMNS = 40;
    return Cut(cell.Raw(), COLUMNS);
}

} // namespace

std::u32string Characters(std::string_view text)
{
    std::u32string out;
    out.reserve(text.size());
    std::size_t i = 0;
    while (i < text.size()) {
        const Character character = ReadCharacter(text, i);
        const char32_t c = character.value;
        if (c == U'\n' || c == U'\r' || c == U'\t') {
            out += U' ';
        } else {
            out += character.bytes == 0 || IsSteering(c) ? SUBSTITUTE : c;
        }
        i += character.bytes == 0 ? 1 : character.bytes;
    }
    return out;
}

std::u32string Folded(std::string_view text)
{
    constexpr char32_t TO_SMALL = 0x20;
    constexpr char32_t TIMES = 0xD7;
    std::u32string folded = Characters(text);
    for (char32_t& c : folded) {
        const bool capital = (c >= U'A' && c <= U'Z') || (c >= 0xC0 && c <= 0xDE && c != TIMES);
        c += capital ? TO_SMALL : 0;
    }
    return folded;
}

std::string Utf8(std::u32string_view text)
{
    std::string out;
    out.reserve(text.size());
    for (const char32_t c : text) {
        Append(out, c);
    }
    return out;
}

std::string Disarmed(std::string_view text)
{
    return Utf8(Characters(text));
}

std::size_t ColumnCount(std::u32string_view text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char32_t c) { return !IsCombining(c); }));
}

std::size_t ColumnCount(std::string_view text)
{
    return ColumnCount(Characters(text));
}

std::vector<std::string> Wrap(std::string_view text, std::size_t width)
{
    const std::u32string all = Characters(text);
    std::u32string_view rest = all;
    std::vector<std::string> lines;
    const auto skipBlanks = [&rest] {
        rest.remove_prefix(std::min(rest.find_first_not_of(U' '), rest.size()));
    };
    for (skipBlanks(); !rest.empty(); skipBlanks()) {
        std::size_t end = CountThatFit(rest, width);
        if (end < rest.size() && rest[end] != U' ') {
            const std::size_t blank = rest.substr(0, end).find_last_of(U' ');
            if (blank != std::u32string_view::npos) {
                end = blank;
            }
        }
        std::u32string_view line = rest.substr(0, end);
        line = line.substr(0, line.find_last_not_of(U' ') + 1);
        lines.push_back(Utf8(line));
        rest.remove_prefix(end);
    }
    return lines;
}

std::string Cut(std::string_view text, std::size_t width)
{
    const std::u32string all = Characters(text);
    return Utf8(std::u32string_view(all).substr(0, CountThatFit(all, width)));
}

std::string AlignRight(std::string_view text, std::size_t width)
{
    const std::size_t used = ColumnCount(text);
    return std::string(width > used ? width - used : 0, ' ') + std::string(text);
}

std::string AlignLeft(std::string_view text, std::size_t width)
{
    const std::size_t used = ColumnCount(text);
    return std::string(text) + std::string(width > used ? width - used : 0, ' ');
}

std::string WithZeros(long long number, std::size_t digits)
{
    const std::string text = std::to_string(number);
    return number < 0 || text.size() >= digits ? text
                                               : std::string(digits - text.size(), '0') + text;
}

std::string WithZeros(const leitura::Integer& number, std::size_t digits)
{
    return number.IsKnown() ? WithZeros(number.Value(), digits) : RawShown(number);
}

std::string AmountText(const leitura::Amount& amount, int minDecimals)
{
    return amount.IsKnown() ? TillText(amount, minDecimals) : RawShown(amount);
}

bool IsBlank(std::string_view text)
{
    return text.find_first_not_of(' ') == std::string_view::npos;
}

std::string FormatCpfCnpj(std::string_view text)
{
    std::string t(text);
    if (HasPattern(t, "99999999999")) {
        return t.substr(0, 3) + '.' + t.substr(3, 3) + '.' + t.substr(6, 3) + '-' + t.substr(9);
    }
    if (HasPattern(t, "99999999999999")) {
        return t.substr(0, 2) + '.' + t.substr(2, 3) + '.' + t.substr(5, 3) + '/' + t.substr(8, 4) +
               '-' + t.substr(12);
    }
    return t;
}

std::string FormatDateTime(std::string_view text)
{
    std::string t(text);
    if (HasPattern(t, "9999-99-99") || HasPattern(t, "9999-99-99 99:99:99")) {
        return t.substr(8, 2) + '/' + t.substr(5, 2) + '/' + t.substr(0, 4) + t.substr(10);
    }
    return t;
}

std::string EscapeHtml(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    for (const char32_t c : Characters(text)) {
        switch (c) {
        case U'&':
            out += "&amp;";
            break;
        case U'<':
            out += "&lt;";
            break;
        case U'>':
            out += "&gt;";
            break;
        case U'"':
            out += "&quot;";
            break;
        case U'\'':
            out += "&#39;";
            break;
        default:
            Append(out, c);
        }
    }
    return out;
}

} // namespace bancada::relatorio

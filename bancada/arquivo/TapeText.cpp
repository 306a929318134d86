#include "bancada/arquivo/TapeText.h"

#include "bancada/arquivo/Instante.h"

#include <algorithm>

namespace bancada::arquivo
{

TapeLine::TapeLine(std::ostream& out, const char* command, std::int64_t em, std::int64_t fim)
    : m_out(out)
{
    m_line = std::string("{\"cmd\":\"") + command + "\"";
    if (em != 0) {
        Text("em", InstantText(em));
    }
    if (fim != 0) {
        Text("fim", InstantText(fim));
    }
}

TapeLine::~TapeLine()
{
    m_out << m_line << "}\n";
}

TapeLine& TapeLine::Field(const char* name, const std::string& value)
{
    m_line += std::string(",\"") + name + "\":" + value;
    return *this;
}

// The file's texts are printable ASCII.
TapeLine& TapeLine::Text(const char* name, const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            quoted += '\\';
        }
        quoted += c;
    }
    return Field(name, quoted + "\"");
}

TapeLine& TapeLine::Number(const char* name, std::int64_t number)
{
    return Field(name, std::to_string(number));
}

TapeLine& TapeLine::Decimal(const char* name, std::int64_t units, int decimals)
{
    std::string digits = std::to_string(units);
    const auto fraction = static_cast<std::size_t>(decimals);
    if (digits.size() <= fraction) {
        digits.insert(0, fraction + 1 - digits.size(), '0');
    }
    if (decimals > 0) {
        digits.insert(digits.size() - fraction, ".");
    }
    return Field(name, "\"" + digits + "\"");
}

TapeLine& TapeLine::Flag(const char* name, bool flag)
{
    return Field(name, flag ? "true" : "false");
}

TapeLine TapeText::At(const char* command, std::int64_t em, std::int64_t fim)
{
    m_now = fim > em ? fim : em;
    m_latest = std::max(m_latest, m_now);
    return {m_out, command, em, fim > em ? fim : 0};
}

void TapeText::SetClock(std::int64_t em)
{
    m_now = em;
    TapeLine(m_out, "acerta_relogio", em, 0);
}

} // namespace bancada::arquivo

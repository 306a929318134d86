#include "bancada/log/LogText.h"

namespace bancada
{
namespace
{

constexpr char DIGITS[] = "0123456789ABCDEF";

int DigitValue(char digit)
{
    if (digit >= '0' && digit <= '9') {
        return digit - '0';
    }
    if (digit >= 'A' && digit <= 'F') {
        return digit - 'A' + 10;
    }
    return -1;
}

} // namespace

void AppendEscaped(std::string& out, std::string_view text)
{
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\\') {
            out += "\\\\";
        } else if (c == '\n') {
            out += "\\n";
        } else if (c == '\r') {
            out += "\\r";
        } else if (c == '\t') {
            out += "\\t";
        } else if (byte < 0x20 || byte == 0x7F) {
            out += "\\x";
            out += DIGITS[byte >> 4];
            out += DIGITS[byte & 0x0F];
        } else {
            out += c;
        }
    }
}

bool Unescape(std::string_view escaped, std::string& out)
{
    out.clear();
    for (std::size_t i = 0; i < escaped.size(); ++i) {
        if (escaped[i] != '\\') {
            out += escaped[i];
            continue;
        }
        if (++i == escaped.size()) {
            return false;
        }
        switch (escaped[i]) {
        case '\\':
            out += '\\';
            break;
        case 'n':
            out += '\n';
            break;
        case 'r':
            out += '\r';
            break;
        case 't':
            out += '\t';
            break;
        case 'x': {
            if (escaped.size() - i < 3) {
                return false;
            }
            const int high = DigitValue(escaped[i + 1]);
            const int low = DigitValue(escaped[i + 2]);
            if (high < 0 || low < 0) {
                return false;
            }
            out += static_cast<char>(high * 16 + low);
            i += 2;
            break;
        }
        default:
            return false;
        }
    }
    return true;
}

} // namespace bancada

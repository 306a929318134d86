#include "bancada/arquivo/Ascii.h"

#include <cstdint>

namespace bancada::arquivo
{
namespace
{

// U+00A0 to U+00FF, each as its letter without the accent; '\0' where it has none.
constexpr char LATIN[] = " \0\0\0\0\0\0\0\0\0a\0\0\0\0\0"
                         "\0\0\0\0\0\0\0\0\0\0o\0\0\0\0\0"
                         "AAAAAA\0CEEEEIIII"
                         "\0NOOOOO\0OUUUUY\0\0"
                         "aaaaaa\0ceeeeiiii"
                         "\0nooooo\0ouuuuy\0y";
static_assert(sizeof LATIN == 0x60 + 1, "a letter for each of U+00A0 to U+00FF");

} // namespace

std::optional<std::string> ToAscii(std::string_view utf8)
{
    std::string ascii;
    ascii.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto byte = static_cast<std::uint8_t>(utf8[i]);
        if (byte >= ' ' && byte <= '~') {
            ascii += utf8[i];
            continue;
        }
        // Two bytes hold all letters of Portuguese, and the accents that stand by themselves.
        if (byte < 0xC2 || byte > 0xDF || i + 1 == utf8.size()) {
            return std::nullopt;
        }
        const auto next = static_cast<std::uint8_t>(utf8[++i]);
        if ((next & 0xC0U) != 0x80U) {
            return std::nullopt;
        }
        const unsigned int letter = (byte & 0x1FU) << 6U | (next & 0x3FU);
        if (letter >= 0x300 && letter <= 0x36F) {
            continue;
        }
        if (letter < 0xA0 || letter > 0xFF || LATIN[letter - 0xA0] == '\0') {
            return std::nullopt;
        }
        ascii += LATIN[letter - 0xA0];
    }
    return ascii;
}

} // namespace bancada::arquivo

#include "bancada/Printable.h"

#include <cstddef>
#include <cstdint>

namespace bancada
{
namespace
{

// How many bytes the character that begins at `at` has, and what it is; 0 if there is none.
std::size_t ReadCharacter(std::string_view text, std::size_t at, std::uint32_t& character)
{
    const auto byte = [text](std::size_t place) -> std::uint32_t {
        return place < text.size() ? static_cast<unsigned char>(text[place]) : 0U;
    };
    const std::uint32_t first = byte(at);
    if (first < 0x80U) {
        character = first;
        return 1;
    }
    const std::size_t size = first >= 0xF0U && first < 0xF8U ? 4
                             : first >= 0xE0U                ? 3
                             : first >= 0xC0U                ? 2
                                                             : 0;
    if (size == 0 || first >= 0xF8U) {
        return 0;
    }
    character = first & (0x7FU >> size);
    for (std::size_t i = 1; i < size; ++i) {
        if ((byte(at + i) & 0xC0U) != 0x80U) {
            return 0;
        }
        character = character << 6U | (byte(at + i) & 0x3FU);
    }
    constexpr std::uint32_t SMALLEST[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
    return character < SMALLEST[size] || character > 0x10FFFF || surrogate ? 0 : size;
}

bool Steers(std::uint32_t character)
{
    return character < 0x20 || (character >= 0x7F && character <= 0x9F) || character == 0x061C ||
           character == 0x200E || character == 0x200F ||
           (character >= 0x2028 && character <= 0x202E) ||
           (character >= 0x2066 && character <= 0x2069);
}

} // namespace

std::string Printable(std::string_view text, bool lines)
{
    static constexpr char DIGITS[] = "0123456789ABCDEF";
    std::string printable;
    for (std::size_t at = 0; at < text.size();) {
        std::uint32_t character = 0;
        const std::size_t size = ReadCharacter(text, at, character);
        if (size != 0 && (!Steers(character) || (lines && character == '\n'))) {
            printable += text.substr(at, size);
            at += size;
            continue;
        }
        for (const std::size_t end = at + (size == 0 ? 1 : size); at < end; ++at) {
            const auto byte = static_cast<unsigned char>(text[at]);
            printable += "\\x";
            printable += DIGITS[byte >> 4U];
            printable += DIGITS[byte & 0xFU];
        }
    }
    return printable;
}

} // namespace bancada

#include "bancada/Character.h"

namespace bancada
{

Character ReadCharacter(std::string_view text, std::size_t at)
{
    const auto byte = [text](std::size_t place) -> char32_t {
        return place < text.size() ? static_cast<unsigned char>(text[place]) : 0U;
    };
    const char32_t first = byte(at);
    if (first < 0x80U) {
        return {first, 1};
    }
    const std::size_t size = first >= 0xF0U && first < 0xF8U   ? 4
                             : first >= 0xE0U && first < 0xF0U ? 3
                             : first >= 0xC0U && first < 0xE0U ? 2
                                                               : 0;
    if (size == 0) {
        return {};
    }
    char32_t value = first & (0x7FU >> size);
    for (std::size_t i = 1; i < size; ++i) {
        if ((byte(at + i) & 0xC0U) != 0x80U) {
            return {};
        }
        value = value << 6U | (byte(at + i) & 0x3FU);
    }
    constexpr char32_t SMALLEST[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool half = value >= 0xD800 && value <= 0xDFFF;
    return value < SMALLEST[size] || value > 0x10FFFF || half ? Character()
                                                              : Character{value, size};
}

bool IsSteering(char32_t c)
{
    return c < 0x20 || (c >= 0x7F && c <= 0x9F) || c == 0x061C || c == 0x200E || c == 0x200F ||
           (c >= 0x2028 && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069) || c == 0xFEFF;
}

} // namespace bancada

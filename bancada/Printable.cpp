#include "bancada/Printable.h"

#include "bancada/Character.h"

#include <cstddef>

namespace bancada
{

std::string Printable(std::string_view text, bool lines)
{
    static constexpr char DIGITS[] = "0123456789ABCDEF";
    std::string printable;
    for (std::size_t at = 0; at < text.size();) {
        const Character character = ReadCharacter(text, at);
        if (character.bytes != 0 &&
            (!IsSteering(character.value) || (lines && character.value == U'\n'))) {
            printable += text.substr(at, character.bytes);
            at += character.bytes;
            continue;
        }
        for (const std::size_t end = at + (character.bytes == 0 ? 1 : character.bytes); at < end;
             ++at) {
            const auto byte = static_cast<unsigned char>(text[at]);
            printable += "\\x";
            printable += DIGITS[byte >> 4U];
            printable += DIGITS[byte & 0xFU];
        }
    }
    return printable;
}

} // namespace bancada

// The characters of texts that came from outside: read, and told from those that must not be shown.
#pragma once

#include <cstddef>
#include <string_view>

namespace bancada
{

struct Character {
    char32_t value = 0;
    // Of it in UTF-8; 0 where the byte at hand begins none.
    std::size_t bytes = 0;
};

// The character that begins at `at`; too long a form, half of a pair and what is beyond Unicode are
// none. REQUIRES: `at` is less than the size.
[[nodiscard]] Character ReadCharacter(std::string_view text, std::size_t at);

// Whether it would steer a terminal or a browser: control characters, line ends and tabs too, those
// that reorder a line, the byte order mark.
[[nodiscard]] bool IsSteering(char32_t character);

} // namespace bancada

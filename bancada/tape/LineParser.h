// One line of JSON.
#pragma once

#include "bancada/tape/TapeCommand.h"

#include <string_view>

namespace bancada
{

// Reads `text`, a line without its end, which stands on line `line` of `file`. It holds one JSON
// object whose values are texts, numbers, true or false. Throws TapeError with the place of
// whatever else it holds: what is not JSON, ill-formed UTF-8, a NUL, a name that comes twice.
[[nodiscard]] TapeLine ParseLine(std::string_view text, const std::string& file, int line);

} // namespace bancada

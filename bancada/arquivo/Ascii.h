// Texts as the legal audit file holds them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace bancada::arquivo
{

// The text in printable ASCII: a letter with an accent loses it. Nothing for a text that has no
// such form: bytes that are no UTF-8, control characters, letters of other scripts.
[[nodiscard]] std::optional<std::string> ToAscii(std::string_view utf8);

} // namespace bancada::arquivo

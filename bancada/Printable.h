// Texts that came from outside, for a terminal.
#pragma once

#include <string>
#include <string_view>

namespace bancada
{

// The text as it can be printed without steering a terminal: control characters, those that reorder
// a line, and bytes that are no UTF-8 stand as \xHH, byte by byte; everything else stays as it is,
// a backslash too. A line end is escaped unless `lines` is set, for messages of several lines.
[[nodiscard]] std::string Printable(std::string_view text, bool lines = false);

} // namespace bancada

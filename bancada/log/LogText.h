// The form of a text within a record of the firmware log.
#pragma once

#include <string>
#include <string_view>

namespace bancada
{

// Appends `text` to `out` so that it stays on one line: \\ \n \r \t and \xHH (two capital
// hexadecimal digits) stand for a backslash, a line break, a carriage return, a tab and any other
// control byte.
void AppendEscaped(std::string& out, std::string_view text);

// Turns that form back. Answers false, and leaves `out` in an undefined state, for a backslash that
// begins none of them.
bool Unescape(std::string_view escaped, std::string& out);

} // namespace bancada

// The record by which the module reports a rejected statement.
#pragma once

#include <string>
#include <string_view>

namespace bancada
{

// Whether `text` is the first of the two records of a rejected statement; the next record is then
// the statement.
bool IsRejectionMessage(std::string_view text);

// Takes the command's protocol code and the engine's error text out of such a record. Answers
// false, and leaves both unchanged, for any other text.
bool ParseRejectionMessage(std::string_view text, int& command, std::string& error);

} // namespace bancada

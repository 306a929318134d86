// The commands of the register, as a table.
#pragma once

#include <string>

namespace bancada
{

// Markdown: one row a command, in the order of their codes, with its class, its code, the tables
// that its logger writes and the type of its row in outros_documentos.
std::string CommandTable();

// `document`, docs/commands.md, with the table between its two markers replaced by CommandTable().
// Throws std::invalid_argument if it has not both, in their order.
std::string WithCommandTable(const std::string& document);

} // namespace bancada

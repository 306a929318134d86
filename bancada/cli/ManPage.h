// The manual page, from the same texts as --help.
#pragma once

#include <string>

namespace CLI
{
class App;
}

namespace bancada
{

// The page of section 1 in man(7) form: what `app` and each of its subcommands is, takes and
// answers. A footer's paragraphs are those between its blank lines; a line of one that begins with
// blanks is an entry of a list, its first word the name.
std::string ManPage(const CLI::App& app);

} // namespace bancada

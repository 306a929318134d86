// What somebody meant who mistyped a name.
#pragma once

#include <string>
#include <vector>

namespace CLI
{
class App;
}

namespace bancada
{

// Of the names the one that is nearest to `typed`, by letters added, dropped, changed or swapped
// with the next; empty if none is near.
[[nodiscard]] std::string Nearest(const std::string& typed, const std::vector<std::string>& names);

// After a parse that failed: a line for each argument that `app` or its subcommand does not know,
// with the nearest subcommand or option where there is one. Empty if all were known.
[[nodiscard]] std::string UnknownArguments(const CLI::App& app);

} // namespace bancada

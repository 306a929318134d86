#include "bancada/cli/Suggestion.h"

#include "bancada/Messages.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>

namespace bancada
{
namespace
{

std::size_t Distance(const std::string& one, const std::string& other)
{
    std::vector<std::vector<std::size_t>> cost(one.size() + 1,
                                               std::vector<std::size_t>(other.size() + 1));
    for (std::size_t i = 0; i <= one.size(); ++i) {
        for (std::size_t j = 0; j <= other.size(); ++j) {
            if (i == 0 || j == 0) {
                cost[i][j] = i + j;
                continue;
            }
            cost[i][j] = std::min({cost[i - 1][j] + 1, cost[i][j - 1] + 1,
                                   cost[i - 1][j - 1] + (one[i - 1] == other[j - 1] ? 0 : 1)});
            if (i > 1 && j > 1 && one[i - 1] == other[j - 2] && one[i - 2] == other[j - 1]) {
                cost[i][j] = std::min(cost[i][j], cost[i - 2][j - 2] + 1);
            }
        }
    }
    return cost[one.size()][other.size()];
}

std::vector<std::string> OptionNames(const CLI::App& app)
{
    std::vector<std::string> names;
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            names.push_back("--" + name);
        }
    }
    return names;
}

std::vector<std::string> SubcommandNames(const CLI::App& app)
{
    std::vector<std::string> names;
    for (const CLI::App* sub : app.get_subcommands([](const CLI::App*) { return true; })) {
        names.push_back(sub->get_name());
    }
    return names;
}

} // namespace

std::string Nearest(const std::string& typed, const std::vector<std::string>& names)
{
    constexpr std::size_t MAX_TYPED = 64;
    if (typed.size() > MAX_TYPED) {
        return "";
    }
    std::string nearest;
    std::size_t least = std::max<std::size_t>(2, typed.size() / 3) + 1;
    for (const std::string& name : names) {
        const std::size_t distance = Distance(typed, name);
        if (distance < least && distance < name.size()) {
            least = distance;
            nearest = name;
        }
    }
    return nearest;
}

std::string UnknownArguments(const CLI::App& app)
{
    const std::vector<CLI::App*> parsed = app.get_subcommands();
    const CLI::App& at = parsed.empty() ? app : *parsed.back();
    std::string text;
    for (const std::string& argument : app.remaining(true)) {
        const bool isOption = argument.size() > 1 && argument[0] == '-';
        const std::string nearest =
            isOption ? Nearest(argument.substr(0, argument.find('=')), OptionNames(at))
                     : Nearest(argument, SubcommandNames(at));

        const std::string of = (parsed.empty() ? "" : app.get_name() + " ") + at.get_name();
        text += Tr(isOption         ? TrLater("\"%1\" is no option of %2")
                   : parsed.empty() ? TrLater("\"%1\" is no subcommand of %2")
                                    : TrLater("\"%1\" is no argument of %2"),
                   {argument, of}) +
                (nearest.empty() ? std::string() : Tr("; did you mean %1?", {nearest})) + "\n";
    }
    return text;
}

} // namespace bancada

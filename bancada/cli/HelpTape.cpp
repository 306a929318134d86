// ecf-bancada help-tape: the commands that a tape may hold.
#include "bancada/cli/DocumentSection.h"
#include "bancada/cli/Subcommands.h"
#include "bancada/cli/TapeHelp.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>

namespace bancada
{
namespace
{

struct HelpTapeOptions {
    std::string command;
    std::string into;
};

} // namespace

void AddHelpTape(CLI::App& app, int& exitCode)
{
    const auto options = std::make_shared<HelpTapeOptions>();
    CLI::App* help = app.add_subcommand(
        "help-tape", "Describe the commands of a tape: their fields, units, defaults and examples");
    CLI::Option* command = help->add_option("COMMAND", options->command, "One command [all]");
    help->add_option("--into", options->into,
                     "Instead of printing, replace the section of the commands in this file, "
                     "docs/tape.md")
        ->type_name("FILE")
        ->excludes(command);
    help->footer("Exit codes: 0 done; 2 there is no such command, or the file cannot be used.");
    help->callback([options, &exitCode] {
        if (!options->into.empty()) {
            RewriteDocument(options->into, WithTapeHelp);
        } else {
            std::cout << (options->command.empty() ? TapeHelp() : CommandHelp(options->command));
        }
        exitCode = EXIT_OK;
    });
}

} // namespace bancada

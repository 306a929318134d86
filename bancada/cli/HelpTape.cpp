// ecf-bancada help-tape: the commands that a tape may hold.
#include "bancada/Unusable.h"
#include "bancada/cli/Subcommands.h"
#include "bancada/cli/TapeHelp.h"

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>

namespace bancada
{
namespace
{

struct HelpTapeOptions {
    std::string command;
    std::string into;
};

void RewriteDocument(const std::string& path)
{
    std::ostringstream document;
    std::ifstream in(path, std::ios::binary);
    if (!in || !(document << in.rdbuf()))
        throw Unusable("cannot read " + path + ": " + std::strerror(errno));
    std::string text;
    try {
        text = WithTapeHelp(document.str());
    } catch (const std::invalid_argument& error) {
        throw Unusable(path + ": " + error.what());
    }
    std::ofstream out(path, std::ios::binary);
    if (!(out << text << std::flush))
        throw Unusable("cannot write " + path + ": " + std::strerror(errno));
}

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
        if (!options->into.empty())
            RewriteDocument(options->into);
        else
            std::cout << (options->command.empty() ? TapeHelp() : CommandHelp(options->command));
        exitCode = EXIT_OK;
    });
}

} // namespace bancada

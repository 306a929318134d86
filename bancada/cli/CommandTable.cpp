// ecf-bancada commands, and its table.
#include "bancada/cli/CommandTable.h"
#include "bancada/Messages.h"
#include "bancada/cli/DocumentSection.h"
#include "bancada/cli/Help.h"
#include "bancada/cli/Subcommands.h"
#include "bancada/comandos/Catalogue.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <sstream>

namespace bancada
{
namespace
{

// Each name of a list between backquotes; an empty list is an empty cell.
std::string Code(const std::string& list)
{
    std::string code;
    for (const char c : list) {
        code += c == ',' ? "`," : c == ' ' ? " `" : std::string(1, c);
    }
    return code.empty() ? code : "`" + code + "`";
}

} // namespace

std::string CommandTable()
{
    std::ostringstream table;
    table << "| " << Tr("command | class | code | tables written | document type") << " |\n"
          << "|---|---|---|---|---|\n";
    for (const CatalogueEntry& item : Catalogue()) {
        table << "| " << Code(item.name) << " | " << Code(item.commandClass) << " | " << item.code
              << " |";
        for (const std::string& cell : {Code(item.tables), Code(item.documentType)}) {
            table << (cell.empty() ? "" : " ") << cell << " |";
        }
        table << "\n";
    }
    return table.str();
}

std::string WithCommandTable(const std::string& document)
{
    return WithSection(document, "command table", CommandTable());
}

void AddCommands(CLI::App& app, int& exitCode)
{
    const auto into = std::make_shared<std::string>();
    CLI::App* commands = app.add_subcommand(
        "commands", Tr("List the register's commands: class, code, the tables that "
                       "the logger writes, document type"));
    commands
        ->add_option("--into", *into,
                     Tr("Instead of printing, replace the table in this file, docs/commands.md"))
        ->type_name("FILE");
    commands->footer(Tr("Exit codes: 0 done; 2 the file cannot be used."));
    SetExamples(*commands, {{"ecf-bancada commands", Tr("The table of all commands")}});
    commands->callback([into, &exitCode] {
        if (into->empty()) {
            std::cout << CommandTable();
        } else {
            RewriteDocument(*into, WithCommandTable);
        }
        exitCode = EXIT_OK;
    });
}

} // namespace bancada

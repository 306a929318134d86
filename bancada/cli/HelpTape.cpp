// ecf-bancada help-tape, and what it tells.
#include "bancada/cli/HelpTape.h"
#include "bancada/Messages.h"

#include "bancada/Unusable.h"
#include "bancada/cli/DocumentSection.h"
#include "bancada/cli/Help.h"
#include "bancada/cli/Subcommands.h"
#include "bancada/comandos/AcertaRelogio.h"
#include "bancada/comandos/CancelaAberto.h"
#include "bancada/comandos/Catalogue.h"
#include "bancada/comandos/Configura.h"
#include "bancada/registro/Registro.h"
#include "bancada/tape/FieldTable.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

namespace bancada
{
namespace
{

struct HelpTapeOptions {
    std::string command;
    std::string into;
};

std::string Section(const std::string& name, const std::string& head, const FieldTable& table)
{
    std::string text = "### `" + name + "`\n\n" + head + "\n";
    if (!table.Fields().empty()) {
        text += "\n" + MarkdownTable(table.Fields());
    }
    return text + "\n```json\n" + ExampleLine(name, table.Fields()) + "\n```\n";
}

std::string Capitalised(std::string text)
{
    if (!text.empty() && text[0] >= 'a' && text[0] <= 'z') {
        text[0] = static_cast<char>(text[0] - 'a' + 'A');
    }
    return text;
}

std::string ConfiguraSection()
{
    Registro registro;
    Configura settings(registro);
    FieldTable table;
    settings.Fields(table);
    return Section(CONFIGURA,
                   Capitalised(Tr(CONFIGURA_SUMMARY)) + ". " +
                       Tr("A setting that is not given stays as it is."),
                   table);
}

std::string AcertaRelogioSection()
{
    return std::string("### `") + ACERTA_RELOGIO + "`\n\n" +
           Capitalised(Tr(ACERTA_RELOGIO_SUMMARY)) + ". " + Tr("The field `em` is required.") +
           "\n\n```json\n{\"cmd\": \"" + ACERTA_RELOGIO +
           "\", \"em\": \"2026-03-02 08:00:00\"}\n```\n";
}

std::string CancelaAbertoSection()
{
    return Section(CANCELA_ABERTO, Capitalised(Tr(CANCELA_ABERTO_SUMMARY)) + ".", FieldTable());
}

// What is not in the catalogue, because it is not one command of the register.
struct DirectiveEntry {
    const char* name;
    std::string (*section)();
};

constexpr DirectiveEntry DIRECTIVES[] = {
    {CONFIGURA, &ConfiguraSection},
    {ACERTA_RELOGIO, &AcertaRelogioSection},
    {CANCELA_ABERTO, &CancelaAbertoSection},
};

std::string CommandSection(const CatalogueEntry& item)
{
    Registro registro;
    FieldTable table;
    item.make(registro)->Fields(table);
    std::string head =
        Tr("%1. Class `%2`, code %3",
           {Capitalised(Tr(item.summary)), item.commandClass, std::to_string(item.code)});
    head += *item.tables == '\0' ? Tr("; logs nothing") : Tr("; logs into %1", {item.tables});
    if (*item.documentType != '\0') {
        head += Tr(", document type %1", {item.documentType});
    }
    return Section(item.name, head + ".", table);
}

} // namespace

std::string DescribeTape()
{
    std::string text;
    for (const DirectiveEntry& directive : DIRECTIVES) {
        text += (text.empty() ? "" : "\n") + directive.section();
    }
    for (const CatalogueEntry& item : Catalogue()) {
        text += "\n" + CommandSection(item);
    }
    return text;
}

std::string DescribeCommand(std::string_view command)
{
    for (const DirectiveEntry& directive : DIRECTIVES) {
        if (command == directive.name) {
            return directive.section();
        }
    }
    const CatalogueEntry* item = FindComando(command);
    if (item == nullptr) {
        throw Unusable(Tr("there is no command \"%1\"", {command}));
    }
    return CommandSection(*item);
}

std::string WithTapeDescription(const std::string& document)
{
    return WithSection(document, "commands", DescribeTape());
}

void AddHelpTape(CLI::App& app, int& exitCode)
{
    const auto options = std::make_shared<HelpTapeOptions>();
    CLI::App* help = app.add_subcommand(
        "help-tape",
        Tr("Describe the commands of a tape: their fields, units, defaults and examples"));
    CLI::Option* command = help->add_option("COMMAND", options->command, Tr("One command [all]"));
    help->add_option("--into", options->into,
                     Tr("Instead of printing, replace the section of the commands in this file, "
                        "docs/tape.md"))
        ->type_name("FILE")
        ->excludes(command);
    help->footer(Tr("Exit codes: 0 done; 2 there is no such command, or the file cannot be used."));
    SetExamples(*help, {{"ecf-bancada help-tape vende_item", Tr("One command of the tape")},
                        {"ecf-bancada help-tape", Tr("All commands")}});
    help->callback([options, &exitCode] {
        if (!options->into.empty()) {
            RewriteDocument(options->into, WithTapeDescription);
        } else {
            std::cout << (options->command.empty() ? DescribeTape()
                                                   : DescribeCommand(options->command));
        }
        exitCode = EXIT_OK;
    });
}

} // namespace bancada

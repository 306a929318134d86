// ecf-bancada export: the legal audit file of a logging database.
#include "bancada/Messages.h"
#include "bancada/Unusable.h"
#include "bancada/arquivo/Exportacao.h"
#include "bancada/cli/Help.h"
#include "bancada/cli/OutputFile.h"
#include "bancada/cli/Subcommands.h"
#include "bancada/cli/UsedFiles.h"
#include "bancada/cli/Validators.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace bancada
{
namespace
{

using namespace arquivo;

struct ExportArguments {
    ExportOptions options;
    std::string output;
    std::string crz;
    std::string comando = "TDM";
    std::string lineEnd = "crlf";
};

const std::map<std::string, Comando>& Comandos()
{
    static const std::map<std::string, Comando> comandos = {
        {"TDM", Comando::TDM}, {"MFD", Comando::MFD}, {"MF", Comando::MF}, {"RZ", Comando::RZ}};
    return comandos;
}

const std::map<std::string, LineEnd>& LineEnds()
{
    static const std::map<std::string, LineEnd> lineEnds = {{"crlf", LineEnd::CRLF},
                                                            {"lf", LineEnd::LF}};
    return lineEnds;
}

// A name of the map; what help says of it is the option's type name alone.
template <typename Values>
CLI::Validator OneOf(const Values& values)
{
    std::vector<std::string> names;
    names.reserve(values.size());
    for (const auto& [name, value] : values) {
        names.push_back(name);
    }
    return CLI::IsMember(names).description("");
}

// "FIRST-LAST", or one number.
std::pair<std::int64_t, std::int64_t> ParseRange(const std::string& text)
{
    const auto number = [&text](const std::string& digits) -> std::int64_t {
        if (digits.empty() || digits.size() > 6 ||
            digits.find_first_not_of("0123456789") != std::string::npos ||
            std::stoll(digits) == 0) {
            throw CLI::ValidationError(
                "--crz", Tr("FIRST-LAST is due, numbers from 1 to 999999, not %1", {text}));
        }
        return std::stoll(digits);
    };
    const std::size_t hyphen = text.find('-');
    const std::int64_t first = number(text.substr(0, hyphen));
    const std::int64_t last = hyphen == std::string::npos ? first : number(text.substr(hyphen + 1));
    if (last < first) {
        throw CLI::ValidationError("--crz", Tr("the range %1 ends before it begins", {text}));
    }
    return {first, last};
}

} // namespace

void AddExport(CLI::App& app, int& exitCode)
{
    const auto arguments = std::make_shared<ExportArguments>();
    ExportOptions& options = arguments->options;
    CLI::App* command = app.add_subcommand(
        "export", Tr("Write the legal audit file of a logging database, records E01 to E21"));
    command->add_option("DB", options.database, Tr("The logging database, which is only read"))
        ->required();
    command
        ->add_option("--output", arguments->output, Tr("The file to write; - is standard output"))
        ->required()
        ->type_name("FILE");
    command
        ->add_option(
            "--command", arguments->comando,
            Tr("Which memories: TDM, all; MFD, the detail memory; MF, the fiscal memory; RZ, "
               "the documents of Z reductions"))
        ->check(OneOf(Comandos()))
        ->type_name("TDM|MFD|MF|RZ")
        ->capture_default_str();
    const CLI::Validator date = DateOption();
    CLI::Option* from =
        command->add_option("--from", options.from, Tr("The fiscal days from this date on"))
            ->check(date)
            ->type_name("DATE");
    CLI::Option* to = command->add_option("--to", options.to, Tr("The fiscal days up to this date"))
                          ->check(date)
                          ->type_name("DATE");
    command
        ->add_option("--crz", arguments->crz,
                     Tr("The fiscal days that these Z reductions close, FIRST-LAST"))
        ->excludes(from)
        ->excludes(to)
        ->type_name("RANGE");
    command
        ->add_option("--facts", options.facts, Tr("What no row tells, a JSON file (docs/facts.md)"))
        ->type_name("FILE");
    command
        ->add_option("--memory", options.memory,
                     Tr("The register's memory file, for its counters and grand total"))
        ->type_name("FILE");
    command->add_option("--line-end", arguments->lineEnd, Tr("What ends a line: crlf or lf"))
        ->check(OneOf(LineEnds()))
        ->type_name("crlf|lf")
        ->capture_default_str();
    command->footer(
        Tr("The file states what the rows say and repairs nothing. What no source tells is left as "
           "where there is\nnothing, and listed on standard error by record and field. There is no "
           "signature EAD: it is made with\nthe maker's key.\n\nExit codes: 0 written; 2 a file "
           "cannot be read or written, or a value does not fit its field."));
    SetExamples(*command, {{"ecf-bancada export loja.db --output loja.txt",
                            Tr("The legal audit file of all days")},
                           {"ecf-bancada export loja.db --output - --command RZ --crz 1-2",
                            Tr("Z reductions 1 and 2, to standard output")}});
    command->callback([arguments, &app, &exitCode] {
        ExportOptions& chosen = arguments->options;
        chosen.comando = Comandos().at(arguments->comando);
        chosen.lineEnd = LineEnds().at(arguments->lineEnd);
        if (!chosen.from.empty() && !chosen.to.empty() && chosen.to < chosen.from) {
            throw CLI::ValidationError(
                "--to", Tr("the range %1 to %2 ends before it begins", {chosen.from, chosen.to}));
        }
        if (!arguments->crz.empty()) {
            chosen.crz = ParseRange(arguments->crz);
        }
        chosen.library = app.version();
        const std::size_t blank = chosen.library.rfind(' ');
        chosen.library = blank == std::string::npos ? "" : chosen.library.substr(blank + 1);
        std::vector<UsedFile> inputs = {EvidenceDatabase(chosen.database)};
        if (!chosen.facts.empty()) {
            inputs.push_back({chosen.facts, TrLater("facts file")});
        }
        if (!chosen.memory.empty()) {
            inputs.push_back({chosen.memory, TrLater("memory")});
        }
        RequireApart(arguments->output, inputs);
        OutputFile file(arguments->output);
        Export(chosen, file.Stream(), std::cerr);
        file.Commit();
        exitCode = EXIT_OK;
    });
}

} // namespace bancada

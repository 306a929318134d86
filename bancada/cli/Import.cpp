// ecf-bancada import: makes of a legal audit file what replays it.
#include "bancada/Messages.h"
#include "bancada/Unusable.h"
#include "bancada/arquivo/Importacao.h"
#include "bancada/cli/Help.h"
#include "bancada/cli/OutputFile.h"
#include "bancada/cli/Subcommands.h"
#include "bancada/cli/UsedFiles.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace bancada
{
namespace
{

struct ImportArguments {
    std::string file;
    std::string tape;
    std::string memory;
    std::string facts;
};

} // namespace

void AddImport(CLI::App& app, int& exitCode)
{
    const auto arguments = std::make_shared<ImportArguments>();
    CLI::App* command = app.add_subcommand(
        "import",
        Tr("Make of a legal audit file a tape, a starting memory and a facts file, by which "
           "run and export give the file again"));
    command->add_option("FILE", arguments->file, Tr("The legal audit file, which is only read"))
        ->required();
    command
        ->add_option("--tape", arguments->tape,
                     Tr("The tape to write: the file's documents; - is standard output"))
        ->required()
        ->type_name("FILE");
    command
        ->add_option(
            "--memory", arguments->memory,
            Tr("The memory file to write: the register before the first document; - is standard output"))
        ->required()
        ->type_name("FILE");
    command
        ->add_option(
            "--facts", arguments->facts,
            Tr("The facts file to write: what no row of a database will hold; - is standard output"))
        ->required()
        ->type_name("FILE");
    command->footer(
        Tr("What a tape cannot say is listed on standard error by record and field. A file "
           "that is none makes\nnothing.\n\nExit codes: 0 written; 2 the file cannot be "
           "read or is no legal audit file, or an output cannot be written."));
    SetExamples(
        *command,
        {{"ecf-bancada import loja.txt --tape volta.jsonl --memory volta.memoria --facts volta.json",
          Tr("A tape, a memory and facts by which run and export give the file again")},
         {"ecf-bancada import loja.txt --tape - --memory m.memoria --facts f.json",
          Tr("The tape alone to standard output")}});
    command->callback([arguments, &exitCode] {
        const std::vector<UsedFile> inputs = {{arguments->file, TrLater("legal audit file")}};
        for (const std::string& output : {arguments->tape, arguments->memory, arguments->facts}) {
            RequireApart(output, inputs);
        }
        RequireApart(arguments->memory, {{arguments->tape, TrLater("tape")}});
        RequireApart(arguments->facts,
                     {{arguments->tape, TrLater("tape")}, {arguments->memory, TrLater("memory")}});
        if ((arguments->tape == "-") + (arguments->memory == "-") + (arguments->facts == "-") > 1) {
            throw Unusable(Tr("only one of tape, memory and facts can go to standard output"));
        }
        OutputFile tape(arguments->tape);
        OutputFile memory(arguments->memory);
        OutputFile facts(arguments->facts);
        const arquivo::ImportResult result =
            arquivo::Import(arguments->file, tape.Stream(), std::cerr);
        memory.Stream() << result.memory;
        facts.Stream() << arquivo::FatosText(result.fatos);
        tape.Commit();
        memory.Commit();
        facts.Commit();
        exitCode = EXIT_OK;
    });
}

} // namespace bancada

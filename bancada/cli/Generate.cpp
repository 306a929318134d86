// ecf-bancada generate: writes a realistic tape.
#include "bancada/Messages.h"
#include "bancada/cli/Help.h"
#include "bancada/cli/Subcommands.h"
#include "bancada/gerador/Generator.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

namespace bancada
{
namespace
{

CLI::Validator Between(int least, int most)
{
    return CLI::Range(least, most)
        .description(Tr("INT in [%1 - %2]", {std::to_string(least), std::to_string(most)}));
}

} // namespace

void AddGenerate(CLI::App& app, int& exitCode)
{
    const auto options = std::make_shared<GeneratorOptions>();
    CLI::App* generate = app.add_subcommand(
        "generate", Tr("Write the tape of a grocer's register to standard output, the same for the "
                       "same options everywhere"));
    generate->add_option("--days", options->jornadas, Tr("How many days, from 2024-01-01 on"))
        ->required()
        ->check(Between(1, MAX_JORNADAS));
    generate->add_option("--receipts", options->cuponsPorJornada, Tr("Fiscal receipts a day"))
        ->required()
        ->check(Between(0, MAX_CUPONS_POR_JORNADA));
    generate->add_option("--seed", options->seed, Tr("Seed of everything that is drawn"))
        ->required()
        ->type_name("UINT");
    generate->footer(Tr(
        "The tape programs the register, then goes day by day through readings, float, receipts "
        "with about 6\nitems, adjustments, cancellations, vouchers, non-fiscal receipts, "
        "withdrawals and the Z reduction. run\nexecutes it without a refusal or a rejected "
        "statement.\n\nExit codes: 0 written; 2 an option is out of its range, or the tape could "
        "not be written."));
    SetExamples(*generate, {{"ecf-bancada generate --days 2 --receipts 10 --seed 1 > gerada.jsonl",
                             Tr("A tape of two days with ten receipts each")}});
    generate->callback([options, &exitCode] {
        GenerateTape(*options, std::cout);
        exitCode = EXIT_OK;
    });
}

} // namespace bancada

// ecf-bancada generate: writes a realistic tape.
#include "bancada/cli/Subcommands.h"
#include "bancada/gerador/Generator.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

namespace bancada
{

void AddGenerate(CLI::App& app, int& exitCode)
{
    const auto options = std::make_shared<GeneratorOptions>();
    CLI::App* generate = app.add_subcommand(
        "generate", "Write the tape of a grocer's register to standard output, the same for the "
                    "same options everywhere");
    generate->add_option("--days", options->jornadas, "How many days, from 2024-01-01 on")
        ->required()
        ->check(CLI::Range(1, MAX_JORNADAS));
    generate->add_option("--receipts", options->cuponsPorJornada, "Fiscal receipts a day")
        ->required()
        ->check(CLI::Range(0, MAX_CUPONS_POR_JORNADA));
    generate->add_option("--seed", options->seed, "Seed of everything that is drawn")
        ->required()
        ->type_name("UINT");
    generate->footer(
        "The tape programs the register, then goes day by day through readings, float, receipts "
        "with about 6\nitems, adjustments, cancellations, vouchers, non-fiscal receipts, "
        "withdrawals and the Z reduction. run\nexecutes it without a refusal or a rejected "
        "statement.\n\nExit codes: 0 written; 2 an option is out of its range, or the tape could "
        "not be written.");
    generate->callback([options, &exitCode] {
        GenerateTape(*options, std::cout);
        exitCode = EXIT_OK;
    });
}

} // namespace bancada

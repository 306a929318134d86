// ecf-bancada: the register that one can run on a desk.
#include "bancada/Messages.h"
#include "bancada/Printable.h"
#include "bancada/Unusable.h"
#include "bancada/cli/Help.h"
#include "bancada/cli/Interruption.h"
#include "bancada/cli/StandardFiles.h"
#include "bancada/cli/Subcommands.h"
#include "bancada/cli/Suggestion.h"
#include "bancada/tape/Place.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>
#include <sstream>

namespace
{

constexpr char OUT_OF_MEMORY[] = "ecf-bancada: out of memory\n";

// Where an exception finds no way out: in what must not throw, and while another is on its way.
// For want of memory the program ends there as it may at any moment, by exit code; what is not
// committed is undone by whoever opens the files next. Anything else is a fault of the program.
[[noreturn]] void EndWithoutUnwinding()
{
    if (const std::exception_ptr thrown = std::current_exception()) {
        try {
            std::rethrow_exception(thrown);
        } catch (const std::bad_alloc&) {
            std::fputs(OUT_OF_MEMORY, stderr); // which has no buffer to allocate
            std::_Exit(bancada::EXIT_UNUSABLE);
        } catch (...) {
            std::abort();
        }
    }
    std::abort();
}

// Before the program's own constants are made, for these allocate too.
[[gnu::constructor(101)]] void TakeCharge()
{
    std::set_terminate(EndWithoutUnwinding);
}

} // namespace

// What is thrown before the parsing ends in EndWithoutUnwinding.
// NOLINTNEXTLINE(bugprone-exception-escape)
int main(int argc, char** argv)
{
    using namespace bancada;

    OpenStandardFiles();
    int exitCode = EXIT_OK;
    ChooseLanguage(argc, argv);
    CLI::App app(Tr("A reference fiscal printer: runs command tapes into a logging database."),
                 "ecf-bancada");
    SetHelpLanguage(app);
    app.set_version_flag("--version", "ecf-bancada " ECF_VERSION,
                         Tr("Display program version information and exit"));
    app.require_subcommand(1);
    app.set_help_all_flag("--help-all", Tr("Print the help of every subcommand and exit"));
    app.footer(Tr("Exit codes: 0 done; 1 done, with findings that were asked for; 2 an input or an "
                  "output cannot be used.\nThe files of the bench are described in docs/."));
    AddRun(app, exitCode);
    AddShow(app, exitCode);
    AddCheck(app, exitCode);
    AddCompare(app, exitCode);
    AddExport(app, exitCode);
    AddCopy(app, exitCode);
    AddRecover(app, exitCode);
    AddGenerate(app, exitCode);
    AddHelpTape(app, exitCode);
    AddCommands(app, exitCode);
    AddImport(app, exitCode);
    AddManPage(app, exitCode);
    FinishHelp(app);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        std::ostringstream told;
        exitCode = app.exit(error, std::cout, told) == 0 ? EXIT_OK : EXIT_UNUSABLE;
        if (exitCode != EXIT_OK) {
            std::cerr << Printable(told.str() + UnknownArguments(app), true);
        }
    } catch (const TapeError& error) {
        // The place comes first, as compilers have it, so that editors find it.
        std::cout.flush();
        std::cerr << Printable(error.what(), true) << "\n";
        exitCode = EXIT_UNUSABLE;
    } catch (const std::bad_alloc&) {
        std::cout.flush();
        std::cerr << OUT_OF_MEMORY;
        exitCode = EXIT_UNUSABLE;
    } catch (const std::exception& error) {
        std::cout.flush();
        std::cerr << "ecf-bancada: " << Printable(error.what(), true) << "\n";
        exitCode = EXIT_UNUSABLE;
    }
    if (!FlushStandardOutput()) {
        return EXIT_UNUSABLE;
    }
    if (exitCode > EXIT_SIGNAL) {
        EndBySignal(exitCode - EXIT_SIGNAL);
    }
    return exitCode;
}

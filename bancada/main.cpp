// ecf-bancada: the register that one can run on a desk.
#include "bancada/Unusable.h"
#include "bancada/cli/StandardFiles.h"
#include "bancada/cli/Subcommands.h"
#include "bancada/tape/Place.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

int main(int argc, char** argv)
{
    using namespace bancada;

    OpenStandardFiles();
    int exitCode = EXIT_OK;
    CLI::App app("A reference fiscal printer: runs command tapes into a logging database.",
                 "ecf-bancada");
    app.set_version_flag("--version", "ecf-bancada " ECF_VERSION);
    app.require_subcommand(1);
    app.set_help_all_flag("--help-all", "Print the help of every subcommand and exit");
    app.footer("Exit codes: 0 done; 1 done, with findings that were asked for; 2 an input or an "
               "output cannot be used.\nThe files of the bench are described in docs/.");
    AddRun(app, exitCode);
    AddShow(app, exitCode);
    AddCheck(app, exitCode);
    AddGenerate(app, exitCode);
    AddHelpTape(app, exitCode);
    AddCommands(app, exitCode);
    AddManPage(app, exitCode);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        exitCode = app.exit(error) == 0 ? EXIT_OK : EXIT_UNUSABLE;
    } catch (const TapeError& error) {
        // The place comes first, as compilers have it, so that editors find it.
        std::cout.flush();
        std::cerr << error.what() << "\n";
        exitCode = EXIT_UNUSABLE;
    } catch (const std::exception& error) {
        std::cout.flush();
        std::cerr << "ecf-bancada: " << error.what() << "\n";
        exitCode = EXIT_UNUSABLE;
    }
    return FlushStandardOutput() ? exitCode : EXIT_UNUSABLE;
}

// What --help tells, in the language chosen.
#pragma once

#include <string>
#include <vector>

namespace CLI
{
class App;
}

namespace bancada
{

// A command line as somebody would type it, and what it does.
struct Example {
    std::string line;
    std::string does;
};

// Shows the examples first in the help of `app`, and of no other.
void SetExamples(CLI::App& app, std::vector<Example> examples);

// The examples of `app`; none where nobody set any.
[[nodiscard]] std::vector<Example> ExamplesOf(const CLI::App& app);

// Puts what CLI11 itself says into the language chosen: headings, labels, the flag --help, the
// messages of a parse that failed. To be called before the subcommands are added.
void SetHelpLanguage(CLI::App& app);

// Adds --language to `app` and its subcommands, and puts the names of their groups into the
// language chosen. To be called behind the last of them.
void FinishHelp(CLI::App& app);

// The language that the arguments ask for, or else the environment: known before the texts of the
// options are. A code that is none is for the parse to refuse.
void ChooseLanguage(int argc, const char* const* argv);

} // namespace bancada

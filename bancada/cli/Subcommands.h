// The subcommands of ecf-bancada, one source each.
#pragma once

namespace CLI
{
class App;
}

namespace bancada
{

// Exit codes that every subcommand uses alike.
inline constexpr int EXIT_OK = 0;
inline constexpr int EXIT_FINDINGS = 1; // it did its work, and found what the user asked to be told
inline constexpr int EXIT_UNUSABLE = 2; // an input or an output cannot be used
// Above it, the number of the signal that asked it to end is added; main ends the program by it.
inline constexpr int EXIT_SIGNAL = 128;

// Each of these adds one subcommand to `app`, with its options, help and exit codes. When the user
// asks for it, it runs within app.parse and sets `exitCode`; what it cannot use it throws as
// Unusable or TapeError, which main reports with EXIT_UNUSABLE. It writes its result to std::cout,
// which main flushes and checks, and what a person should notice to std::cerr. `app` and `exitCode`
// outlive the parse.
void AddRun(CLI::App& app, int& exitCode);
void AddShow(CLI::App& app, int& exitCode);
void AddCheck(CLI::App& app, int& exitCode);
void AddCompare(CLI::App& app, int& exitCode);
void AddExport(CLI::App& app, int& exitCode);
void AddCopy(CLI::App& app, int& exitCode);
void AddRecover(CLI::App& app, int& exitCode);
void AddGenerate(CLI::App& app, int& exitCode);
void AddHelpTape(CLI::App& app, int& exitCode);
void AddCommands(CLI::App& app, int& exitCode);
void AddImport(CLI::App& app, int& exitCode);
void AddManPage(CLI::App& app, int& exitCode);

} // namespace bancada

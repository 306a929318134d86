// Runs the built ecf-bancada as a user does.
#pragma once

#include "tests/support/Files.h"

#include <string>

namespace bancada_test
{

using test_support::TempFolder;

struct ProgramResult {
    int exitCode = -1; // -1 when it did not end by itself
    std::string out;
    std::string err;
};

// The program, to stand at the place of a command in a line for the shell.
std::string ProgramInShell();

// Runs `ecf-bancada arguments`, which the shell splits and which may redirect, with `folder` as the
// current folder. Standard input is empty unless redirected.
ProgramResult RunBancada(const TempFolder& folder, const std::string& arguments);

// Runs a whole line of the shell so. Exit code and output are the line's.
ProgramResult RunShell(const TempFolder& folder, const std::string& line);

} // namespace bancada_test

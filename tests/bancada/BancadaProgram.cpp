#include "tests/bancada/BancadaProgram.h"

#include <cstdlib>
#include <sys/wait.h>

namespace bancada_test
{

std::string ProgramInShell()
{
    // ECF_EMULATOR runs programs of another architecture; it is empty for our own.
    return ECF_EMULATOR " '" ECF_BANCADA_PROGRAM "'";
}

ProgramResult RunShell(const TempFolder& folder, const std::string& line)
{
    const std::string script = "LC_ALL=C; export LC_ALL; cd '" + folder.File("") + "' && ( " +
                               line + "\n ) </dev/null >.out 2>.err";
    const int status = std::system(script.c_str());
    ProgramResult result;
    if (WIFEXITED(status)) {
        result.exitCode = WEXITSTATUS(status);
    }
    result.out = folder.Read(".out");
    result.err = folder.Read(".err");
    return result;
}

ProgramResult RunBancada(const TempFolder& folder, const std::string& arguments)
{
    return RunShell(folder, ProgramInShell() + " " + arguments);
}

} // namespace bancada_test

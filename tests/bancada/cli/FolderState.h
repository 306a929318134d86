// What a folder holds, to be compared before and after.
#pragma once

#include "bancada/Sha256.h"
#include "tests/support/Files.h"

#include <filesystem>
#include <map>
#include <string>

namespace bancada_test
{

// Every file of the folder by its name, with its digest; a symbolic link with what it says. What
// the tests' own shell leaves there (.out, .err) is left out.
inline std::map<std::string, std::string> StateOf(const test_support::TempFolder& folder)
{
    namespace fs = std::filesystem;
    std::map<std::string, std::string> state;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder.File("."))) {
        const std::string name = entry.path().filename().string();
        if (name == ".out" || name == ".err") {
            continue;
        }
        if (entry.is_symlink()) {
            state[name] = "-> " + fs::read_symlink(entry.path()).string();
        } else if (entry.is_regular_file()) {
            state[name] = bancada::Sha256Hex(folder.Read(name));
        } else {
            state[name] = "no file";
        }
    }
    return state;
}

} // namespace bancada_test

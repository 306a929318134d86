// Makes of a legal audit file a tape and a starting memory that replay its documents.
#pragma once

#include "bancada/arquivo/Fatos.h"

#include <ostream>
#include <string>

namespace bancada::arquivo
{

struct ImportResult {
    std::string memory; // content of the memory file
    Fatos fatos;        // what no row will hold
};

// Reads the file, writes the tape's lines to `tape` and, a line each, what a tape cannot say to
// `notes`. Memory grows by some 100 bytes a document, of which a file has 999,999 at most. Throws
// Unusable for what is no such file, before anything of the tape is written.
[[nodiscard]] ImportResult Import(const std::string& path, std::ostream& tape, std::ostream& notes);

} // namespace bancada::arquivo

// The file that a subcommand writes.
#pragma once

#include "bancada/cli/FreshFile.h"

#include <fstream>
#include <optional>
#include <ostream>
#include <string>

namespace bancada
{

// Written beside its place and put there when it is whole, so that a failed run leaves the old file
// as it was. "-" is standard output; a device or a pipe is written as it is.
//
// Whether the place is one of the inputs is for RequireApart (UsedFiles.h) to say, before anything
// is opened.
class OutputFile
{
  public:
    // Throws Unusable, naming the place, if nothing can be written there.
    explicit OutputFile(const std::string& place);

    // What is written goes there. For "-" it is std::cout, which main flushes and checks.
    std::ostream& Stream();

    // All is written. Throws Unusable if not all of it could be; the place is then as it was.
    // Without this call it stays so too.
    void Commit();

  private:
    std::string m_place;
    std::optional<FreshFile> m_fresh;
    std::ofstream m_stream;
};

} // namespace bancada

// The place of a database that a subcommand makes.
#pragma once

#include "bancada/cli/FreshFile.h"
#include "bancada/cli/UsedFiles.h"

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace bancada
{

// A database that is written beside its place and put there when it is whole; "-" is standard
// output, to which it goes when it is whole.
class NewDatabase
{
  public:
    // Throws Unusable, before any of them is opened, if there is something of the name `place` or
    // of the names beside it, if it is one of the inputs, or if nothing can be written there.
    NewDatabase(const std::string& place, const std::vector<UsedFile>& inputs);

    // The file to be filled, which is empty.
    const std::string& Path() const { return m_fresh->Path(); }

    // It is whole and closed. Throws Unusable if it cannot be put in its place.
    void Commit();

    // Where what is to be told of it goes: standard output, or standard error where that has the
    // database.
    std::ostream& Report() const;

  private:
    std::string m_place;
    std::optional<FreshFile> m_fresh;
};

} // namespace bancada

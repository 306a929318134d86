// The files that a subcommand uses, which must not be taken for one another.
#pragma once

#include <string>
#include <vector>

namespace bancada
{

// A file that a subcommand is given, and the names beside it that belong to it, whether there is
// anything of those names or not.
struct UsedFile {
    std::string path;                    // as the user named it
    const char* what = "";               // "database", as messages name it
    std::vector<const char*> suffixes{}; // added to the name of the file that `path` leads to

    // All of its names, its own first, with symbolic links followed.
    std::vector<std::string> Names() const;
};

// What the engine and a run keep beside a database.
[[nodiscard]] UsedFile UsedDatabase(const std::string& path);

// A database as evidence: its firmware log belongs to it too, also where it is not named.
[[nodiscard]] UsedFile EvidenceDatabase(const std::string& path);

// Whether both names lead to one file, which is a matter of device and inode, or would if there
// was one.
[[nodiscard]] bool AreOne(const std::string& one, const std::string& other);

// Throws Unusable if `output`, the name of a file to be written ("-" is standard output, "" none),
// or the file that standard output is redirected to is one of the inputs or of what belongs to
// them. To be asked before any of them is opened: then nothing is harmed.
void RequireApart(const std::string& output, const std::vector<UsedFile>& inputs);

// Throws Unusable if there is anything of the name of a database that is to be made, or of a name
// that the engine would take for a part of it.
void RequireNew(const UsedFile& database);

} // namespace bancada

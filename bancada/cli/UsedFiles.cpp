#include "bancada/cli/UsedFiles.h"

#include "bancada/Unusable.h"
#include "bancada/memoria/WholeFile.h"

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace bancada
{
namespace
{

namespace fs = std::filesystem;

// Whether the open file `number` is the regular file `path`.
bool IsOpenAs(int number, const std::string& path)
{
    struct stat open = {};
    struct stat named = {};
    return fstat(number, &open) == 0 && S_ISREG(open.st_mode) && stat(path.c_str(), &named) == 0 &&
           open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

// What the file is to the input, whose name it is or which it belongs to.
std::string Relation(const UsedFile& input, const std::string& name)
{
    return (name == input.Names()[0] ? " is the " : " belongs to the ") + std::string(input.what) +
           " " + input.path;
}

} // namespace

std::vector<std::string> UsedFile::Names() const
{
    const std::string file = FollowLinks(path);
    std::vector<std::string> names = {file};
    for (const char* suffix : suffixes) {
        names.push_back(file + suffix);
    }
    return names;
}

UsedFile UsedDatabase(const std::string& path)
{
    return {path, "database", {"-wal", "-shm", "-journal", ".lock"}};
}

UsedFile EvidenceDatabase(const std::string& path)
{
    UsedFile file = UsedDatabase(path);
    file.suffixes.push_back(".log");
    return file;
}

bool AreOne(const std::string& one, const std::string& other)
{
    std::error_code none;
    return one == other || fs::equivalent(one, other, none) ||
           fs::weakly_canonical(fs::absolute(one), none) ==
               fs::weakly_canonical(fs::absolute(other), none);
}

void RequireApart(const std::string& output, const std::vector<UsedFile>& inputs)
{
    const bool isFile = !output.empty() && output != "-";
    const std::string written = isFile ? FollowLinks(output) : "";
    for (const UsedFile& input : inputs) {
        for (const std::string& name : input.Names()) {
            if (isFile && AreOne(written, name)) {
                throw Unusable(output + " cannot be written: it" + Relation(input, name));
            }
            if (IsOpenAs(STDOUT_FILENO, name)) {
                throw Unusable("standard output cannot be written: it" + Relation(input, name));
            }
        }
    }
}

void RequireNew(const UsedFile& database)
{
    if (database.path.empty()) {
        throw Unusable("the " + std::string(database.what) + " to be made needs a name");
    }
    std::error_code none;
    // A link that leads nowhere is something too.
    if (fs::exists(fs::symlink_status(database.path, none))) {
        throw Unusable(database.path + " exists already");
    }
    for (const std::string& name : database.Names()) {
        if (fs::exists(fs::symlink_status(name, none))) {
            throw Unusable(name + " exists already, and would be taken for a part of " +
                           database.path);
        }
    }
}

} // namespace bancada

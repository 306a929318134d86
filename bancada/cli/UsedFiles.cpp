#include "bancada/cli/UsedFiles.h"

#include "bancada/Messages.h"
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
std::string Refusal(const std::string& output, const UsedFile& input, const std::string& name)
{
    return Tr(name == input.Names()[0] ? TrLater("%1 cannot be written: it is the %2 %3")
                                       : TrLater("%1 cannot be written: it belongs to the %2 %3"),
              {output, Tr(input.what), input.path});
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
    return {path, TrLater("database"), {"-wal", "-shm", "-journal", "-aside", ".lock"}};
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
                throw Unusable(Refusal(output, input, name));
            }
            if (IsOpenAs(STDOUT_FILENO, name)) {
                throw Unusable(Refusal(Tr("standard output"), input, name));
            }
        }
    }
}

void RequireNew(const UsedFile& database)
{
    if (database.path.empty()) {
        throw Unusable(Tr("the %1 to be made needs a name", {Tr(database.what)}));
    }
    std::error_code none;
    // A link that leads nowhere is something too.
    if (fs::exists(fs::symlink_status(database.path, none))) {
        throw Unusable(Tr("%1 exists already", {database.path}));
    }
    for (const std::string& name : database.Names()) {
        if (fs::exists(fs::symlink_status(name, none))) {
            throw Unusable(Tr("%1 exists already, and would be taken for a part of %2",
                              {name, database.path}));
        }
    }
}

} // namespace bancada

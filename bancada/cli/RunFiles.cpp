#include "bancada/cli/RunFiles.h"

#include "bancada/Unusable.h"
#include "bancada/memoria/WholeFile.h"

#include <filesystem>
#include <utility>
#include <vector>

namespace bancada
{
namespace
{

namespace fs = std::filesystem;

// One of the files, with those that it needs.
struct Used {
    std::string path; // as the user named it
    const char* what; // "database"
    std::vector<const char*> suffixes;

    std::vector<std::string> Names() const
    {
        const std::string file = FollowLinks(path);
        std::vector<std::string> names = {file};
        for (const char* suffix : suffixes) {
            names.push_back(file + suffix);
        }
        return names;
    }
};

bool AreOne(const std::string& one, const std::string& other)
{
    std::error_code none;
    return one == other || fs::equivalent(one, other, none) ||
           fs::weakly_canonical(fs::absolute(one), none) ==
               fs::weakly_canonical(fs::absolute(other), none);
}

void RequireDistinct(const Used& one, const Used& other)
{
    const std::vector<std::string> names = one.Names();
    const std::vector<std::string> others = other.Names();
    if (one.path == other.path || AreOne(names[0], others[0])) {
        throw Unusable(one.path + " cannot be two of tape, database, firmware log and memory");
    }
    for (const std::string& name : names) {
        for (const std::string& needed : others) {
            if (AreOne(name, needed)) {
                throw Unusable("the " + std::string(one.what) + " " + one.path + " and the " +
                               other.what + " " + other.path + " cannot both use " + needed);
            }
        }
    }
}

} // namespace

RunFiles CheckRunFiles(RunFiles files)
{
    if (files.database.empty()) {
        throw Unusable("the database needs a name: of one without nothing is kept");
    }
    if (!files.DatabaseIsFile() && files.HasMemory()) {
        throw Unusable("the memory " + files.memory + " belongs to a database that is kept, and " +
                       files.database + " is not");
    }
    if (files.database.rfind("file:", 0) == 0) {
        files.database.insert(0, "./");
    }
    if (files.log.empty()) {
        files.log = files.database + ".log";
    }

    std::vector<Used> used;
    if (files.tape != "-") {
        used.push_back({files.tape, "tape", {}});
    } else if (std::error_code none; fs::is_regular_file("/dev/stdin", none)) {
        used.push_back({"/dev/stdin", "tape", {}});
    }
    if (files.DatabaseIsFile()) {
        used.push_back({files.database, "database", {"-wal", "-shm", "-journal", ".lock"}});
    }
    used.push_back({files.log, "firmware log", {}});
    if (files.HasMemory()) {
        used.push_back({files.memory, "memory", {".tmp", ".lock"}});
    }
    for (std::size_t i = 0; i < used.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            RequireDistinct(used[j], used[i]);
        }
    }
    return files;
}

} // namespace bancada

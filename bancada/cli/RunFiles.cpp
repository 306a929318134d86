#include "bancada/cli/RunFiles.h"

#include "bancada/Messages.h"
#include "bancada/Unusable.h"
#include "bancada/cli/UsedFiles.h"

#include <filesystem>
#include <vector>

namespace bancada
{
namespace
{

namespace fs = std::filesystem;

void RequireDistinct(const UsedFile& one, const UsedFile& other)
{
    const std::vector<std::string> names = one.Names();
    const std::vector<std::string> others = other.Names();
    if (one.path == other.path || AreOne(names[0], others[0])) {
        throw Unusable(
            Tr("%1 cannot be two of tape, database, firmware log and memory", {one.path}));
    }
    for (const std::string& name : names) {
        for (const std::string& needed : others) {
            if (AreOne(name, needed)) {
                throw Unusable(Tr("the %1 %2 and the %3 %4 cannot both use %5",
                                  {Tr(one.what), one.path, Tr(other.what), other.path, needed}));
            }
        }
    }
}

// The engine's log and the lock of a run go by the name: under another one a second run would find
// neither.
void RequireOneName(const std::string& database)
{
    std::error_code none;
    if (fs::is_regular_file(database, none) && fs::hard_link_count(database, none) > 1) {
        throw Unusable(Tr("the database %1 has another name too, by a hard link: what is written "
                          "under one is not safe from a run under the other; copy it",
                          {database}));
    }
}

} // namespace

RunFiles CheckRunFiles(RunFiles files)
{
    if (files.database.empty()) {
        throw Unusable(Tr("the database needs a name: of one without nothing is kept"));
    }
    if (!files.DatabaseIsFile() && files.HasMemory()) {
        throw Unusable(Tr("the memory %1 belongs to a database that is kept, and %2 is not",
                          {files.memory, files.database}));
    }
    if (files.database.rfind("file:", 0) == 0) {
        files.database.insert(0, "./");
    }
    if (files.log.empty()) {
        files.log = files.database + ".log";
    }

    std::vector<UsedFile> used;
    if (files.tape != "-") {
        used.push_back({files.tape, TrLater("tape"), {}});
    } else if (std::error_code none; fs::is_regular_file("/dev/stdin", none)) {
        used.push_back({"/dev/stdin", TrLater("tape"), {}});
    }
    if (files.DatabaseIsFile()) {
        RequireOneName(files.database);
        used.push_back(UsedDatabase(files.database));
    }
    if (files.HasMemory()) {
        used.push_back({files.memory, TrLater("memory"), {".tmp", ".journal", ".lock"}});
    }
    RequireApart("", used); // the log may go to standard output
    used.push_back({files.log, TrLater("firmware log"), {}});
    for (std::size_t i = 0; i < used.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            RequireDistinct(used[j], used[i]);
        }
    }
    return files;
}

} // namespace bancada

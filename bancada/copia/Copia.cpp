#include "bancada/copia/Copia.h"

#include "bancada/ForeignTexts.h"
#include "bancada/Messages.h"
#include "bancada/Sha256.h"
#include "bancada/Unusable.h"
#include "bancada/copia/CompareContent.h"
#include "bancada/leitura/Query.h"

#include <fstream>
#include <memory>
#include <sqlite3.h>

namespace bancada::copia
{
namespace
{

using leitura::DatabaseReading;
using leitura::Query;

constexpr int MAX_DAMAGE_LINES = 10;

struct Close {
    void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
};

void BackUp(const DatabaseReading& source, const std::string& to)
{
    sqlite3* opened = nullptr;
    const int result =
        sqlite3_open_v2(to.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    const std::unique_ptr<sqlite3, Close> copy(opened);
    // Nobody else knows the file, and what is half a copy is thrown away.
    if (result != SQLITE_OK ||
        sqlite3_exec(opened, "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF", nullptr,
                     nullptr, nullptr) != SQLITE_OK) {
        throw Unusable(Tr("cannot write the copy: %1", {TrForeign(sqlite3_errmsg(opened))}));
    }
    sqlite3_backup* backup = sqlite3_backup_init(opened, "main", source.Handle(), "main");
    if (backup != nullptr) {
        sqlite3_backup_step(backup, -1);
        sqlite3_backup_finish(backup); // which answers what the steps came to
    }
    if (sqlite3_errcode(opened) != SQLITE_OK) {
        throw Unusable(
            Tr("cannot copy %1: %2", {source.Path(), TrForeign(sqlite3_errmsg(opened))}));
    }
}

// What the engine's own check says of a database that is not sound.
std::vector<std::string> CheckIntegrity(const DatabaseReading& database)
{
    std::vector<std::string> lines;
    const auto keep = [](void* to, int, char** values, char**) {
        static_cast<std::vector<std::string>*>(to)->emplace_back(values[0] == nullptr ? ""
                                                                                      : values[0]);
        return 0;
    };
    const std::string check = "PRAGMA integrity_check(" + std::to_string(MAX_DAMAGE_LINES) + ")";
    if (sqlite3_exec(database.Handle(), check.c_str(), keep, &lines, nullptr) != SQLITE_OK) {
        lines.push_back(TrForeign(sqlite3_errmsg(database.Handle())));
    }
    if (lines == std::vector<std::string>{"ok"}) {
        lines.clear();
    }
    return lines;
}

void Digest(const std::string& path, Copia& copia)
{
    std::ifstream file(path, std::ios::binary);
    Sha256 digest;
    std::vector<char> piece(64 * 1024);
    while (file.read(piece.data(), static_cast<std::streamsize>(piece.size())) ||
           file.gcount() > 0) {
        const auto count = static_cast<std::size_t>(file.gcount());
        digest.Add({piece.data(), count});
        copia.bytes += count;
    }
    if (!file.eof()) {
        throw Unusable(Tr("cannot read the copy again"));
    }
    copia.sha256 = digest.Hex();
}

} // namespace

Copia CopyDatabase(const std::string& from, const std::string& to)
{
    const DatabaseReading source(from);
    const Query hasReceipts(source, "SELECT 1 FROM cupom_fiscal LIMIT 0"); // as logging databases
    BackUp(source, to);

    Copia copia;
    copia.howRead = source.HowRead();
    const DatabaseReading copy(to);
    const Comparison comparison = CompareContent(source, copy);
    if (!comparison.difference.empty()) {
        throw Unusable(Tr("the copy of %1 is not the same: %2", {from, comparison.difference}));
    }
    copia.tables = comparison.tables;
    copia.rows = comparison.rows;
    copia.damage = CheckIntegrity(copy);
    if (!comparison.unreadable.empty()) {
        copia.damage.push_back(comparison.unreadable);
    }
    Digest(to, copia);
    source.ConfirmUnchanged();
    return copia;
}

} // namespace bancada::copia

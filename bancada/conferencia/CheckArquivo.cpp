// The file: the engine's own integrity check, and its size.
#include "bancada/Messages.h"
#include "bancada/conferencia/CheckContext.h"
#include "bancada/leitura/Query.h"

#include <filesystem>
#include <system_error>

namespace bancada::conferencia
{
namespace
{

std::int64_t Pragma(const leitura::DatabaseReading& database, const char* name)
{
    leitura::Query query(database, std::string("PRAGMA ") + name);
    return query.Next() ? query.ReadInteger(name).Value() : 0;
}

// The pages of a log that was left beside the file need not be in it yet.
void CheckSize(CheckContext& context)
{
    const leitura::DatabaseReading& database = context.Database();
    std::error_code error;
    const auto size = static_cast<std::int64_t>(
        std::filesystem::file_size(std::filesystem::path(database.Path()), error));
    const std::int64_t pageSize = Pragma(database, "page_size");
    const std::int64_t pages = Pragma(database, "page_count");
    const bool whole = database.HowRead() == leitura::Manner::FILE_ALONE ? size == pages * pageSize
                                                                         : size % pageSize == 0;
    if (!error && !whole) {
        const std::string expected =
            Tr("%1 pages of %2 bytes", {std::to_string(pages), std::to_string(pageSize)});
        context.findings.ReportExplained(
            FindingKind::ARQUIVO_DANIFICADO, Tr("size"),
            Tr("%1 bytes, and not %2", {std::to_string(size), expected}), false, {},
            {"", 0, "", expected, Tr("%1 bytes", {std::to_string(size)})});
    }
}

} // namespace

void CheckArquivo(CheckContext& context)
{
    CheckSize(context);
    leitura::Query query(context.Database(), "PRAGMA integrity_check");
    while (query.Next()) {
        const std::string text = query.ReadText("integrity_check").Shown();
        if (text != "ok") {
            context.findings.ReportExplained(FindingKind::ARQUIVO_DANIFICADO, Tr("integrity"), text,
                                             false, {}, {"", 0, "", "ok", text});
        }
    }
}

} // namespace bancada::conferencia

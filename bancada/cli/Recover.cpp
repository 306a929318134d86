// ecf-bancada recover: what can still be read of a damaged database.
#include "bancada/Messages.h"
#include "bancada/Printable.h"
#include "bancada/cli/Help.h"
#include "bancada/cli/NewDatabase.h"
#include "bancada/cli/Subcommands.h"
#include "bancada/recuperacao/Recuperacao.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <ostream>
#include <string>

namespace bancada
{
namespace
{

using namespace recuperacao;

struct RecoverOptions {
    std::string database;
    std::string to;
};

std::string Name(const RowRange& range)
{
    if (range.last == RowRange::NO_END) {
        return Tr("from %1 on, nobody can tell how many", {std::to_string(range.first)});
    }
    return range.first == range.last
               ? std::to_string(range.first)
               : Tr("%1 to %2", {std::to_string(range.first), std::to_string(range.last)});
}

void Tell(const Recuperacao& result, std::ostream& out)
{
    out << Tr(result.withLog ? TrLater("read: %1 pages of %2 bytes, with the write-ahead log")
                             : TrLater("read: %1 pages of %2 bytes"),
              {std::to_string(result.pages), std::to_string(result.pageSize)})
        << "\n";
    for (const RecoveredTable& table : result.tables) {
        out << Printable(table.name) << ": " << TrCount("%1 row", "%1 rows", table.rows) << "\n";
        for (const RowRange& range : table.missing) {
            out << "  "
                << Tr(range.first == range.last ? TrLater("missing: row %1")
                                                : TrLater("missing: rows %1"),
                      {Name(range)})
                << "\n";
        }
    }
    if (!result.hasHeader) {
        out << Tr("the file's header is damaged") << "\n";
    }
    if (result.logBytesNotRead > 0) {
        out << Tr("write-ahead log: %1 bytes behind its last whole commit were not read",
                  {std::to_string(result.logBytesNotRead)})
            << "\n";
    }
    for (const DamagedPage& page : result.damaged) {
        const std::string number = std::to_string(page.page);
        out << Printable(page.table.empty()
                             ? Tr("page %1: %2", {number, page.reason})
                             : Tr("page %1 of %2: %3", {number, page.table, page.reason}))
            << "\n";
    }
    if (result.leavesFound > 0) {
        out << Tr("pages that nothing led to any more, whose rows were recovered: %1",
                  {std::to_string(result.leavesFound)})
            << "\n";
    }
    for (const std::string& table : result.notCopied) {
        out << Tr("not copied, for it is none of a logging database: %1", {Printable(table)})
            << "\n";
    }
    out << (result.IsWhole() ? Tr("nothing is missing") : Tr("something is missing")) << "\n";
}

int Recover(const RecoverOptions& options)
{
    NewDatabase to(options.to, {EvidenceDatabase(options.database)});
    const Recuperacao result = recuperacao::Recover(options.database, to.Path());
    to.Commit();
    Tell(result, to.Report());
    return result.IsWhole() ? EXIT_OK : EXIT_FINDINGS;
}

} // namespace

void AddRecover(CLI::App& app, int& exitCode)
{
    const auto options = std::make_shared<RecoverOptions>();
    CLI::App* recover = app.add_subcommand(
        "recover",
        Tr("Copy what can still be read of a damaged logging database into a new one, and "
           "list what is missing: rows by table and rowid, pages"));
    recover
        ->add_option(
            "DB", options->database,
            Tr("The damaged database, which is only read; the write-ahead log beside it is "
               "read with it"))
        ->required();
    recover
        ->add_option("TO", options->to,
                     Tr("The new database, which must not exist; - is standard output, and what is "
                        "told goes to standard error"))
        ->required();
    recover->footer(Tr(
        "Every row on a sound page is recovered, also where nothing leads to the page any more; a "
        "page of which\nanything does not fit gives none, so that nothing is invented. A byte "
        "changed within a value cannot be\nseen here: let check judge the new database. No "
        "register goes on with it.\n\nExit codes: 0 everything was there; 1 something is missing, "
        "and is listed; 2 the file cannot be read or\nholds no page of a database, or the new one "
        "exists already or cannot be written."));
    SetExamples(*recover, {{"ecf-bancada recover estragada.db nova.db",
                            Tr("Save what can still be read, and list what is missing")}});
    recover->callback([options, &exitCode] { exitCode = Recover(*options); });
}

} // namespace bancada

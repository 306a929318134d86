// ecf-bancada copy: takes a logging database from where it lies.
#include "bancada/Messages.h"
#include "bancada/Printable.h"
#include "bancada/cli/Help.h"
#include "bancada/cli/NewDatabase.h"
#include "bancada/cli/Subcommands.h"
#include "bancada/copia/Copia.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>

namespace bancada
{
namespace
{

struct CopyOptions {
    std::string database;
    std::string to;
};

const char* Read(leitura::Manner manner)
{
    switch (manner) {
    case leitura::Manner::SHARED:
        return Tr("one state of it, which other programs may have open");
    case leitura::Manner::WITH_LOG:
        return Tr("with the write-ahead log beside it");
    case leitura::Manner::FILE_ALONE:
        break;
    }
    return Tr("the file alone: there was no write-ahead log beside it");
}

int Copy(const CopyOptions& options)
{
    NewDatabase to(options.to, {EvidenceDatabase(options.database)});
    const copia::Copia copy = copia::CopyDatabase(options.database, to.Path());
    to.Commit();
    std::ostream& report = to.Report();
    report << Tr("read:      %1", {Read(copy.howRead)}) << "\n"
           << Tr("compared:  %1 of %2, all the same",
                 {TrCount("%1 row", "%1 rows", copy.rows),
                  TrCount("%1 table", "%1 tables", copy.tables)})
           << "\n"
           << Tr("integrity: %1", {copy.damage.empty() ? "ok" : Tr("the database is damaged")})
           << "\n"
           << "bytes:     " << copy.bytes << "\n"
           << "SHA-256:   " << copy.sha256 << "\n";
    for (const std::string& line : copy.damage) {
        std::cerr << Printable(options.database + ": " + line) << "\n";
    }
    return copy.damage.empty() ? EXIT_OK : EXIT_FINDINGS;
}

} // namespace

void AddCopy(CLI::App& app, int& exitCode)
{
    const auto options = std::make_shared<CopyOptions>();
    CLI::App* copy = app.add_subcommand(
        "copy", Tr("Copy a logging database as evidence: one state of it with what its write-ahead "
                   "log holds, compared row by row, with its SHA-256"));
    copy->add_option("DB", options->database, Tr("The logging database, which is only read"))
        ->required();
    copy->add_option(
            "TO", options->to,
            Tr("The copy, which must not exist; - is standard output, and what is told goes "
               "to standard error"))
        ->required();
    copy->footer(Tr(
        "A register may go on writing meanwhile. The copy takes its name when it is whole; it "
        "needs no other\nfile beside it. docs/evidence.md tells how a database is taken from a "
        "device.\n\nExit codes: 0 copied; 1 copied, and the database, like its copy, is damaged "
        "(what SQLite's integrity check\nsays is told); 2 the database cannot be read, the copy "
        "exists already or cannot be written, or the two do\nnot hold the same: there is no copy "
        "then."));
    SetExamples(*copy, {{"ecf-bancada copy loja.db prova.db",
                         Tr("Take a database as evidence, from a device that may go on")},
                        {"ecf-bancada copy loja.db - > prova2.db",
                         Tr("The same through standard output")}});
    copy->callback([options, &exitCode] { exitCode = Copy(*options); });
}

} // namespace bancada

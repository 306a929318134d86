// ecf-bancada show: a logging database as a person would look at it.
#include "bancada/relatorio/Show.h"
#include "bancada/Messages.h"
#include "bancada/Unusable.h"
#include "bancada/cli/FreshFolder.h"
#include "bancada/cli/Help.h"
#include "bancada/cli/OutputFile.h"
#include "bancada/cli/ShowVerdict.h"
#include "bancada/cli/Subcommands.h"
#include "bancada/cli/UsedFiles.h"
#include "bancada/relatorio/Csv.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <deque>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace bancada
{
namespace
{

std::vector<UsedFile> Inputs(const ShowOptions& options)
{
    std::vector<UsedFile> inputs;
    for (const std::string& database : options.databases) {
        inputs.push_back(EvidenceDatabase(database));
    }
    if (!options.log.empty()) {
        inputs.push_back({options.log, TrLater("firmware log")});
    }
    return inputs;
}

int ExitCode(bool shown)
{
    return shown ? EXIT_OK : EXIT_FINDINGS;
}

// The databases opened, and what check says of them.
class Judged
{
  public:
    Judged(const ShowOptions& options, bool judge)
    {
        for (const std::string& path : options.databases) {
            m_readings.emplace_back(path);
        }
        if (judge) {
            std::optional<Losses> losses;
            if (!options.log.empty()) {
                losses = ReadLosses(options.log);
            }
            m_verdicts = ReadVerdicts(m_readings, losses ? &*losses : nullptr);
        }
        for (std::size_t i = 0; i < m_readings.size(); ++i) {
            m_databases.push_back({&m_readings[i], judge ? &m_verdicts[i] : nullptr});
        }
    }

    const std::vector<ShownDatabase>& Databases() const { return m_databases; }

  private:
    std::deque<leitura::DatabaseReading> m_readings;
    std::vector<relatorio::Verdict> m_verdicts;
    std::vector<ShownDatabase> m_databases;
};

int ShowFolder(const std::string& folder, const ShowOptions& options)
{
    FreshFolder pages(folder);
    const Judged judged(options, true);
    ShowPages(
        judged.Databases(), options,
        [&](const std::string& name, const std::string& content) { pages.Write(name, content); });
    pages.Commit();
    return EXIT_OK;
}

// The page of a whole database carries its verdict; that of one day is made without reading the
// rest, and says that it has none.
int ShowInto(const std::string& page, const ShowOptions& options)
{
    const Judged judged(options, !options.crz);
    OutputFile file(page);
    const bool shown = Show(judged.Databases(), options, file.Stream(), std::cerr);
    if (shown) {
        file.Commit();
    }
    return ExitCode(shown);
}

struct CsvOptions {
    std::string table;
    std::string output = "-";
};

int ShowCsv(const CsvOptions& csv, const ShowOptions& options)
{
    const auto& tables = relatorio::CSV_TABLES;
    const auto place = std::find(tables.begin(), tables.end(), csv.table) - tables.begin();
    std::deque<leitura::DatabaseReading> readings;
    std::vector<const leitura::DatabaseReading*> databases;
    for (const std::string& path : options.databases) {
        databases.push_back(&readings.emplace_back(path));
    }
    OutputFile file(csv.output);
    relatorio::WriteCsv(databases, static_cast<relatorio::CsvTable>(place), file.Stream());
    file.Commit();
    return EXIT_OK;
}

} // namespace

void AddShow(CLI::App& app, int& exitCode)
{
    const auto options = std::make_shared<ShowOptions>();
    const auto page = std::make_shared<std::string>();
    CLI::App* show = app.add_subcommand(
        "show", Tr("Show what a logging database holds: its days and documents, one document as on "
                   "paper, or a page for the browser"));
    show->add_option("DB", options->databases,
                     Tr("The logging database, which is only read; several of one register, in "
                        "their order, are shown one after the other"))
        ->required();
    CLI::Option* coo =
        show->add_option("--coo", options->coo,
                         Tr("The document of this number as on paper; both, if it came twice"));
    CLI::Option* crz =
        show->add_option("--crz", options->crz,
                         Tr("The Z reduction of this number; with --html the page of "
                            "the day that it closes, open or closed"));
    CLI::Option* html =
        show->add_option(
                "--html", *page,
                Tr("Write one page that needs nothing else: days, receipts, sales by hour "
                   "and by payment means, rejected statements and lost commands; - is standard output"))
            ->type_name("FILE");
    const auto folder = std::make_shared<std::string>();
    CLI::Option* pages =
        show->add_option(
                "--pages", *folder,
                Tr("Write a folder of pages that need nothing else, for a long history: an "
                   "overview by month and day that links to a page a day, none above 2 MB"))
            ->type_name("FOLDER");
    CLI::Option* log = show->add_option("--log", options->log,
                                        Tr("The firmware log, whose rejected statements and lost "
                                           "commands the list and the page then show"))
                           ->type_name("FILE");
    CLI::Option* json =
        show->add_flag("--json", options->json, Tr("JSON instead of text; money as decimal texts"));
    const auto csv = std::make_shared<CsvOptions>();
    const std::vector<std::string> tables(relatorio::CSV_TABLES.begin(),
                                          relatorio::CSV_TABLES.end());
    CLI::Option* csvTable =
        show->add_option("--csv", csv->table,
                         Tr("For a spreadsheet: the documents, their items, their payments, or the "
                            "Z reductions"))
            ->check(CLI::IsMember(tables).description(""))
            ->type_name("documentos|itens|pagamentos|reducoes");
    show->add_option("--output", csv->output,
                     Tr("The file that --csv writes; - is standard output [-]"))
        ->type_name("FILE")
        ->needs(csvTable);
    csvTable->excludes(coo)
        ->excludes(crz)
        ->excludes(html)
        ->excludes(pages)
        ->excludes(log)
        ->excludes(json);
    coo->excludes(crz)->excludes(html)->excludes(log);
    html->excludes(json);
    pages->excludes(coo)->excludes(crz)->excludes(html)->excludes(json);
    show->footer(
        Tr("Without --coo, --crz and --html it lists the days, by the Z reduction that "
           "closes each, and their documents.\n\nExit codes: 0 shown; 1 the document, the Z "
           "reduction or the day is not in the database; 2 a file cannot be\nread or "
           "written, or is no logging database."));
    SetExamples(*show, {{"ecf-bancada show loja.db", Tr("List the days and their documents")},
                        {"ecf-bancada show loja.db --coo 12", Tr("One document as on paper")},
                        {"ecf-bancada show loja.db --html loja.html --log loja.db.log",
                         Tr("A page for the browser, with what was lost")},
                        {"ecf-bancada show loja.db --csv itens --output itens.csv",
                         Tr("The items sold, for a spreadsheet")}});
    show->callback([options, page, folder, csv, csvTable, crz, html, pages, log, &app, &exitCode] {
        if (*log && *crz && !*html) {
            throw CLI::ExcludesError("--log", Tr("--crz without --html"));
        }
        if (*log && options->databases.size() > 1) {
            throw Unusable(
                Tr("--log goes with one database: a log does not tell whose rows are lost"));
        }
        RequireApart(*csvTable ? csv->output : *pages ? *folder : *page, Inputs(*options));
        if (*csvTable) {
            exitCode = ShowCsv(*csv, *options);
            return;
        }
        options->html = static_cast<bool>(*html);
        options->version = app.version();
        if (*pages) {
            exitCode = ShowFolder(*folder, *options);
            return;
        }
        exitCode = options->html ? ShowInto(*page, *options)
                                 : ExitCode(Show(*options, std::cout, std::cerr));
    });
}

} // namespace bancada

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
#include "bancada/cli/Validators.h"
#include "bancada/leitura/Limits.h"
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

// The options that choose documents, as they are typed.
struct FilterArguments {
    std::string minimo, maximo;
};

// An amount that MoneyOption has passed.
std::optional<relatorio::Amount> AmountOf(std::string text)
{
    if (text.empty()) {
        return {};
    }
    text.erase(text.find('.'), 1);
    return relatorio::Amount(std::stoll(text), 2);
}

std::vector<CLI::Option*> AddFilters(CLI::App& show, ShowOptions& options,
                                     FilterArguments& arguments)
{
    relatorio::Filtro& filtro = options.filtro;
    const CLI::Validator money = MoneyOption();
    const CLI::Validator date = DateOption();
    return {
        show.add_flag("--cancelled", filtro.cancelado, Tr("Only cancelled receipts")),
        show.add_option("--consumer", filtro.consumidor,
                        Tr("Only receipts with this in the consumer's CPF, CNPJ or name"))
            ->type_name("TEXT"),
        show.add_option("--min-value", arguments.minimo,
                        Tr("Only receipts whose total is at least this"))
            ->transform(money)
            ->type_name("VALUE"),
        show.add_option("--max-value", arguments.maximo,
                        Tr("Only receipts whose total is at most this"))
            ->transform(money)
            ->type_name("VALUE"),
        show.add_option("--text", filtro.texto,
                        Tr("Only documents with this in one of their texts: what they are called, "
                           "consumer, messages, items, payments; small and capital letters are "
                           "one"))
            ->type_name("TEXT"),
        show.add_option("--from", filtro.desde, Tr("Only documents begun on this day or later"))
            ->check(date)
            ->type_name("DATE"),
        show.add_option("--to", filtro.ate, Tr("Only documents begun on this day or earlier"))
            ->check(date)
            ->type_name("DATE"),
    };
}

// Takes over what was typed; a range that holds nothing is refused.
void Finish(relatorio::Filtro& filtro, const FilterArguments& arguments)
{
    filtro.minimo = AmountOf(arguments.minimo);
    filtro.maximo = AmountOf(arguments.maximo);
    if (!filtro.desde.empty() && !filtro.ate.empty() && filtro.ate < filtro.desde) {
        throw CLI::ValidationError(
            "--to", Tr("the range %1 to %2 ends before it begins", {filtro.desde, filtro.ate}));
    }
    if (filtro.minimo && filtro.maximo && (*filtro.maximo - *filtro.minimo).Units() < 0) {
        throw CLI::ValidationError("--max-value", Tr("the range %1 to %2 ends before it begins",
                                                     {arguments.minimo, arguments.maximo}));
    }
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
    relatorio::WriteCsv(databases, static_cast<relatorio::CsvTable>(place), options.filtro,
                        file.Stream());
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
                         Tr("The document of this number as on paper; both, if it came twice"))
            ->check(CLI::Range(std::int64_t{1}, leitura::LAST_COUNTER).description(""));
    CLI::Option* crz =
        show->add_option("--crz", options->crz,
                         Tr("The Z reduction of this number; with --html the page of "
                            "the day that it closes, open or closed"))
            // The day behind the last number is still open.
            ->check(CLI::Range(std::int64_t{1}, leitura::LAST_COUNTER + 1).description(""));
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
                         Tr("For a spreadsheet: the documents, their items, their payments, the "
                            "Z reductions, or the totals by day, tax code or payment means"))
            ->check(CLI::IsMember(tables).description(""))
            ->type_name("documentos|itens|pagamentos|reducoes|dias|aliquotas|meios");
    CLI::Option* totals = show->add_flag(
        "--totals", options->totais,
        Tr("Instead of the list the totals by day, by tax code and by payment means"));
    const auto filter = std::make_shared<FilterArguments>();
    for (CLI::Option* one : AddFilters(*show, *options, *filter)) {
        one->excludes(coo)->excludes(crz);
    }
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
    totals->excludes(coo)->excludes(crz)->excludes(html)->excludes(pages)->excludes(log)->excludes(
        csvTable);
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
                        {"ecf-bancada show loja.db --totals --from 2024-03-01 --to 2024-03-31",
                         Tr("What a month came to")},
                        {"ecf-bancada show loja.db --cancelled --min-value 100,00",
                         Tr("The large receipts that were cancelled")},
                        {"ecf-bancada show loja.db --csv itens --output itens.csv",
                         Tr("The items sold, for a spreadsheet")}});
    show->callback(
        [options, page, folder, csv, csvTable, filter, crz, html, pages, log, &app, &exitCode] {
            Finish(options->filtro, *filter);
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

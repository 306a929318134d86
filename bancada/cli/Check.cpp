// ecf-bancada check: reconciles a logging database by itself.
#include "bancada/cli/Subcommands.h"
#include "bancada/cli/UsedFiles.h"
#include "bancada/conferencia/Conferencia.h"
#include "bancada/log/Losses.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace bancada
{
namespace
{

using namespace conferencia;

struct CheckOptions {
    std::string database;
    std::string log;
    bool json = false;
};

std::string Count(std::int64_t number, const char* one, const char* several)
{
    return std::to_string(number) + " " + (number == 1 ? one : several);
}

// A byte that is no UTF-8 becomes U+FFFD, in text as in JSON.
std::string Dump(const nlohmann::ordered_json& json)
{
    return json.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

std::string Utf8(const std::string& text)
{
    return nlohmann::ordered_json::parse(Dump(text)).get<std::string>();
}

void PrintText(const Finding& finding)
{
    std::cout << (InfoOf(finding.kind).weight == Weight::NOTE ? "note: " : "")
              << InfoOf(finding.kind).name << ": " << Utf8(finding.key + ": " + finding.text)
              << (finding.explained ? " [a lost row in the log explains it]" : "") << "\n";
}

void PrintSummary(const CheckSummary& summary)
{
    std::cout << Count(summary.rows.cupons, "fiscal receipt", "fiscal receipts") << ", "
              << Count(summary.rows.cuponsNf, "non-fiscal receipt", "non-fiscal receipts") << ", "
              << Count(summary.rows.reducoes, "Z reduction", "Z reductions") << ": "
              << Count(summary.faults, "finding", "findings");
    if (summary.explained > 0) {
        std::cout << " (" << summary.explained << " explained by lost rows in the log)";
    }
    std::cout << ", " << Count(summary.notes, "note", "notes") << "\n";
}

// One member of the array a line, so that findings are never held together. Nothing is printed of a
// database that cannot be read.
class JsonPrinter
{
  public:
    void Print(const Finding& finding)
    {
        const nlohmann::ordered_json json = {
            {"kind", InfoOf(finding.kind).name},
            {"weight", InfoOf(finding.kind).weight == Weight::NOTE ? "note" : "finding"},
            {"key", finding.key},
            {"text", finding.text},
            {"explained", finding.explained}};
        Begin();
        std::cout << (m_first ? "\n" : ",\n") << Dump(json);
        m_first = false;
    }

    void Finish(const CheckSummary& summary)
    {
        const nlohmann::ordered_json json = {{"fiscal_receipts", summary.rows.cupons},
                                             {"non_fiscal_receipts", summary.rows.cuponsNf},
                                             {"z_reductions", summary.rows.reducoes},
                                             {"findings", summary.faults},
                                             {"explained", summary.explained},
                                             {"notes", summary.notes}};
        Begin();
        std::cout << "\n],\n\"summary\": " << Dump(json) << "}\n";
    }

  private:
    void Begin()
    {
        if (!m_begun) {
            std::cout << "{\"findings\": [";
            m_begun = true;
        }
    }

    bool m_begun = false;
    bool m_first = true;
};

int Check(const CheckOptions& options)
{
    std::vector<UsedFile> inputs = {EvidenceDatabase(options.database)};
    if (!options.log.empty()) {
        inputs.push_back({options.log, "firmware log"});
    }
    RequireApart("", inputs);
    std::optional<Losses> losses;
    if (!options.log.empty()) {
        losses = ReadLosses(options.log);
    }
    const leitura::DatabaseReading database(options.database);
    const Losses* given = losses ? &*losses : nullptr;
    CheckSummary summary;
    if (options.json) {
        JsonPrinter printer;
        summary =
            CheckDatabase(database, given, [&](const Finding& finding) { printer.Print(finding); });
        printer.Finish(summary);
    } else {
        summary = CheckDatabase(database, given, PrintText);
        PrintSummary(summary);
    }
    return summary.faults > 0 ? EXIT_FINDINGS : EXIT_OK;
}

std::string Footer()
{
    std::string text =
        "A database is judged by its own rows. Without --log, a receipt that is paid in full and "
        "keeps its\nopening values is taken for an additional receipt; with it, only when the log "
        "names its closing. A\nfinding that a lost row in the log explains is marked and still "
        "counts: the row is missing.\n\nKinds of findings:\n";
    for (const FindingKindInfo& kind : FindingKinds()) {
        std::string name = kind.name;
        name.resize(std::max<std::size_t>(name.size(), 24), ' ');
        text += "  " + name + (kind.weight == Weight::NOTE ? "(note) " : "") + kind.meaning + "\n";
    }
    return text + "\nExit codes: 0 nothing found (notes are no findings); 1 something was found; 2 "
                  "the database or the log\ncannot be read.";
}

} // namespace

void AddCheck(CLI::App& app, int& exitCode)
{
    const auto options = std::make_shared<CheckOptions>();
    CLI::App* check = app.add_subcommand(
        "check",
        "Reconcile a logging database: receipts, items and payments, Z reductions, document "
        "numbers, lost rows");
    check->add_option("DB", options->database, "The logging database, which is only read")
        ->required();
    check
        ->add_option(
            "--log", options->log,
            "The firmware log: its rejected statements are listed with the row each should "
            "have written")
        ->type_name("FILE");
    check->add_flag("--json", options->json, "Print the findings as JSON");
    check->footer(Footer());
    check->callback([options, &exitCode] { exitCode = Check(*options); });
}

} // namespace bancada

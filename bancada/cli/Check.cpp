// ecf-bancada check: reconciles a logging database by itself.
#include "bancada/cli/Subcommands.h"
#include "bancada/conferencia/Conferencia.h"
#include "bancada/log/Losses.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace bancada
{
namespace
{

struct CheckOptions {
    std::string database;
    std::string log;
    bool json = false;
};

std::string Count(std::int64_t number, const char* one, const char* several)
{
    return std::to_string(number) + " " + (number == 1 ? one : several);
}

void PrintText(const Achado& finding)
{
    std::cout << (finding.tipo->peso == Peso::AVISO ? "note: " : "") << finding.tipo->nome << ": "
              << finding.chave << ": " << finding.texto
              << (finding.explicado ? " [a lost row in the log explains it]" : "") << "\n";
}

void PrintSummary(const ResumoConferencia& summary)
{
    std::cout << Count(summary.cupons, "fiscal receipt", "fiscal receipts") << ", "
              << Count(summary.cuponsNf, "non-fiscal receipt", "non-fiscal receipts") << ", "
              << Count(summary.reducoes, "Z reduction", "Z reductions") << ": "
              << Count(summary.faltas, "finding", "findings");
    if (summary.explicadas > 0) {
        std::cout << " (" << summary.explicadas << " explained by lost rows in the log)";
    }
    std::cout << ", " << Count(summary.avisos, "note", "notes") << "\n";
}

// One member of the array a line, so that findings are never held together.
class JsonPrinter
{
  public:
    JsonPrinter() { std::cout << "{\"findings\": ["; }

    void Print(const Achado& finding)
    {
        const nlohmann::ordered_json json = {
            {"kind", finding.tipo->nome},
            {"weight", finding.tipo->peso == Peso::AVISO ? "note" : "finding"},
            {"key", finding.chave},
            {"text", finding.texto},
            {"explained", finding.explicado}};
        std::cout << (m_first ? "\n" : ",\n") << Dump(json);
        m_first = false;
    }

    void Finish(const ResumoConferencia& summary)
    {
        const nlohmann::ordered_json json = {
            {"fiscal_receipts", summary.cupons}, {"non_fiscal_receipts", summary.cuponsNf},
            {"z_reductions", summary.reducoes},  {"findings", summary.faltas},
            {"explained", summary.explicadas},   {"notes", summary.avisos}};
        std::cout << "\n],\n\"summary\": " << Dump(json) << "}\n";
    }

  private:
    static std::string Dump(const nlohmann::ordered_json& json)
    {
        return json.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
    }

    bool m_first = true;
};

int Check(const CheckOptions& options)
{
    std::optional<Losses> losses;
    if (!options.log.empty()) {
        losses = ReadLosses(options.log);
    }
    const BancoLeitura database(options.database);
    const Losses* given = losses ? &*losses : nullptr;
    ResumoConferencia summary;
    if (options.json) {
        JsonPrinter printer;
        summary = Confere(database, given, [&](const Achado& finding) { printer.Print(finding); });
        printer.Finish(summary);
    } else {
        summary = Confere(database, given, PrintText);
        PrintSummary(summary);
    }
    return summary.faltas > 0 ? EXIT_FINDINGS : EXIT_OK;
}

std::string Footer()
{
    std::string text =
        "A database is judged by its own rows. Without --log, a receipt that is paid in full and "
        "keeps its\nopening values is taken for an additional receipt; with it, only when the log "
        "names its closing. A\nfinding that a lost row in the log explains is marked and still "
        "counts: the row is missing.\n\nKinds of findings:\n";
    for (const TipoAchado& kind : TiposDeAchado()) {
        std::string name = kind.nome;
        name.resize(std::max<std::size_t>(name.size(), 24), ' ');
        text += "  " + name + (kind.peso == Peso::AVISO ? "(note) " : "") + kind.significado + "\n";
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

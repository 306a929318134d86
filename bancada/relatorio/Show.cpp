#include "bancada/relatorio/Show.h"

#include "bancada/Messages.h"
#include "bancada/log/Losses.h"
#include "bancada/relatorio/DisplayText.h"
#include "bancada/relatorio/DocumentoPrint.h"
#include "bancada/relatorio/DocumentoRows.h"
#include "bancada/relatorio/HtmlPage.h"
#include "bancada/relatorio/JornadaList.h"
#include "bancada/relatorio/Json.h"
#include "bancada/relatorio/Report.h"
#include "bancada/relatorio/TotaisList.h"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <utility>

namespace bancada
{
namespace
{

using namespace relatorio;

// The databases that are shown, each with its readers.
class Sources
{
  public:
    Sources(const std::vector<ShownDatabase>& databases, std::optional<std::int64_t> crz,
            const Filtro& filtro)
        : m_databases(databases)
    {
        for (const ShownDatabase& database : databases) {
            Report& report = m_reports.emplace_back(*database.reading, crz, filtro);
            m_sources.push_back({report, NameOf(*database.reading), database.verdict});
        }
    }

    // As the pages name them.
    const std::vector<PageSource>& All() const { return m_sources; }
    std::deque<Report>& Reports() { return m_reports; }
    bool AreSeveral() const { return m_reports.size() > 1; }

    // As the user named them, to begin a message with.
    std::string Paths() const
    {
        std::string paths;
        for (const ShownDatabase& database : m_databases) {
            paths += (paths.empty() ? "" : ", ") + database.reading->Path();
        }
        return paths;
    }

    void ConfirmUnchanged() const
    {
        for (const ShownDatabase& database : m_databases) {
            database.reading->ConfirmUnchanged();
        }
    }

  private:
    // The file's name; the whole path where two of them have one name.
    std::string NameOf(const leitura::DatabaseReading& reading) const
    {
        const std::filesystem::path path = reading.Path();
        const bool isSingle =
            std::count_if(m_databases.begin(), m_databases.end(), [&](const ShownDatabase& other) {
                return std::filesystem::path(other.reading->Path()).filename() == path.filename();
            }) == 1;
        return isSingle ? path.filename().string() : path.string();
    }

    const std::vector<ShownDatabase>& m_databases;
    std::deque<Report> m_reports;
    std::vector<PageSource> m_sources;
};

// Documents as on paper, under the name of their database where there are several.
class Printer
{
  public:
    Printer(bool several, std::ostream& out) : m_several(several), m_out(out) {}

    void Print(Report& report, const std::vector<Documento>& documentos)
    {
        const Estabelecimento estabelecimento = report.Names().ReadEstabelecimento();
        for (const Documento& documento : documentos) {
            m_out << (m_first ? "" : "\n");
            m_first = false;
            if (m_several) {
                m_out << Disarmed(report.Database().Path()) << ":\n";
            }
            for (const std::string& line : PrintDocumento(documento, estabelecimento)) {
                m_out << line << '\n';
            }
        }
    }

  private:
    bool m_several;
    std::ostream& m_out;
    bool m_first = true;
};

bool ShowCoo(Sources& sources, const ShowOptions& options, std::ostream& out, std::ostream& errors)
{
    std::vector<FoundIn<Documento>> found;
    for (Report& report : sources.Reports()) {
        const std::vector<Documento> documentos = report.Documentos().WithCoo(*options.coo);
        if (!documentos.empty()) {
            found.push_back({&report, documentos});
        }
    }
    if (found.empty()) {
        errors << Tr("%1: no document has the COO %2",
                     {sources.Paths(), std::to_string(*options.coo)})
               << '\n';
        return false;
    }
    if (options.json) {
        WriteDocumentosJson(*options.coo, found, sources.AreSeveral(), out);
        return true;
    }
    Printer printer(sources.AreSeveral(), out);
    for (const FoundIn<Documento>& one : found) {
        printer.Print(*one.report, one.documents);
    }
    return true;
}

bool ShowCrz(Sources& sources, const ShowOptions& options, std::ostream& out, std::ostream& errors)
{
    std::vector<FoundIn<ReducaoZ>> found;
    std::int64_t cupons = 0;
    for (Report& report : sources.Reports()) {
        std::vector<ReducaoZ> reducoes = report.Reducoes().WithCrz(*options.crz);
        for (ReducaoZ& reducao : reducoes) {
            report.Reducoes().Complete(reducao);
        }
        if (!reducoes.empty()) {
            found.push_back({&report, std::move(reducoes)});
        }
        cupons += report.Documentos().CountCuponsOf(*options.crz);
    }
    if (found.empty()) {
        errors << Tr("%1: there is no Z reduction %2",
                     {sources.Paths(), std::to_string(*options.crz)})
               << (cupons > 0
                       ? TrCount(" (%1 receipt waits for it)", " (%1 receipts wait for it)", cupons)
                       : "")
               << '\n';
        return false;
    }
    if (options.json) {
        WriteReducoesJson(*options.crz, found, sources.AreSeveral(), out);
        return true;
    }
    Printer printer(sources.AreSeveral(), out);
    for (const FoundIn<ReducaoZ>& one : found) {
        std::vector<Documento> documentos;
        for (const ReducaoZ& reducao : one.documents) {
            documentos.push_back(DocumentoOf(reducao));
        }
        printer.Print(*one.report, documentos);
    }
    return true;
}

bool ShowPage(Sources& sources, const ShowOptions& options, const Losses* losses, std::ostream& out,
              std::ostream& errors)
{
    const bool isThere =
        !options.crz ||
        std::any_of(sources.Reports().begin(), sources.Reports().end(), [&](Report& report) {
            return !report.Reducoes().WithCrz(*options.crz).empty() ||
                   report.Documentos().CountCuponsOf(*options.crz) > 0;
        });
    if (!isThere) {
        errors << Tr("%1: there is no day of the Z reduction %2",
                     {sources.Paths(), std::to_string(*options.crz)})
               << '\n';
        return false;
    }
    WriteHtmlPage(sources.All(), {options.version, options.crz, losses}, out);
    return true;
}

void ShowList(Sources& sources, std::ostream& out)
{
    bool first = true;
    for (Report& report : sources.Reports()) {
        if (sources.AreSeveral()) {
            out << (first ? "" : "\n") << Disarmed(report.Database().Path()) << ":\n";
        }
        first = false;
        WriteList(report, out);
    }
}

void ListLosses(const Losses& losses, std::ostream& out)
{
    out << "\n" << Tr("Rejected statements: %1", {std::to_string(losses.rejected.size())}) << '\n';
    for (const RejectedStatement& one : losses.rejected) {
        out << "  " << FormatDateTime(one.time) << "  "
            << Tr("command %1", {std::to_string(one.command)}) << ": " << Disarmed(one.error)
            << "\n    " << Disarmed(one.statement) << '\n';
    }
    out << Tr("Lost commands: %1", {std::to_string(losses.lost.size())}) << '\n';
    for (const LostCommand& one : losses.lost) {
        out << "  " << FormatDateTime(one.time) << "  " << Disarmed(one.reason) << '\n';
    }
}

void ShowTotais(Sources& sources, const ShowOptions& options, std::ostream& out)
{
    Totais totais;
    for (Report& report : sources.Reports()) {
        Add(totais, ReadTotais(report));
    }
    options.json ? WriteTotaisJson(totais, out) : WriteTotaisList(totais, out);
}

bool ShowFrom(Sources& sources, const ShowOptions& options, std::ostream& out, std::ostream& errors)
{
    if (options.coo) {
        return ShowCoo(sources, options, out, errors);
    }
    if (options.crz && !options.html) {
        return ShowCrz(sources, options, out, errors);
    }
    if (options.totais) {
        ShowTotais(sources, options, out);
        return true;
    }
    Losses read;
    const Losses* losses = nullptr;
    if (!options.log.empty()) {
        read = ReadLosses(options.log);
        losses = &read;
    }
    if (options.html) {
        return ShowPage(sources, options, losses, out, errors);
    }
    if (options.json) {
        WriteListsJson(sources.Reports(), losses, out);
        return true;
    }
    ShowList(sources, out);
    if (losses) {
        ListLosses(*losses, out);
    }
    return true;
}

} // namespace

bool Show(const ShowOptions& options, std::ostream& out, std::ostream& errors)
{
    std::deque<leitura::DatabaseReading> readings;
    std::vector<ShownDatabase> databases;
    for (const std::string& path : options.databases) {
        databases.push_back({&readings.emplace_back(path), nullptr});
    }
    return Show(databases, options, out, errors);
}

bool Show(const std::vector<ShownDatabase>& databases, const ShowOptions& options,
          std::ostream& out, std::ostream& errors)
{
    Sources sources(databases, options.crz, options.filtro);
    const bool shown = ShowFrom(sources, options, out, errors);
    sources.ConfirmUnchanged();
    return shown;
}

void ShowPages(const std::vector<ShownDatabase>& databases, const ShowOptions& options,
               const relatorio::PageSink& sink)
{
    std::optional<Losses> losses;
    if (!options.log.empty()) {
        losses = ReadLosses(options.log);
    }
    Sources sources(databases, {}, options.filtro);
    WritePages(sources.All(), {options.version, {}, losses ? &*losses : nullptr}, sink);
    sources.ConfirmUnchanged();
}

} // namespace bancada

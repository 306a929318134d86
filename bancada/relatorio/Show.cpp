#include "bancada/relatorio/Show.h"

#include "bancada/log/Losses.h"
#include "bancada/relatorio/DisplayText.h"
#include "bancada/relatorio/DocumentoPrint.h"
#include "bancada/relatorio/DocumentoRows.h"
#include "bancada/relatorio/HtmlPage.h"
#include "bancada/relatorio/JornadaList.h"
#include "bancada/relatorio/Json.h"
#include "bancada/relatorio/Report.h"

#include <filesystem>

namespace bancada
{
namespace
{

using namespace relatorio;

void PrintAll(Report& report, const std::vector<Documento>& documentos, std::ostream& out)
{
    const Estabelecimento estabelecimento = report.Names().ReadEstabelecimento();
    for (std::size_t i = 0; i < documentos.size(); ++i) {
        out << (i > 0 ? "\n" : "");
        for (const std::string& line : PrintDocumento(documentos[i], estabelecimento)) {
            out << line << '\n';
        }
    }
}

bool ShowCoo(Report& report, const ShowOptions& options, std::ostream& out, std::ostream& errors)
{
    const std::vector<Documento> documentos = report.Documentos().WithCoo(*options.coo);
    if (documentos.empty()) {
        errors << options.database << ": no document has the COO " << *options.coo << '\n';
        return false;
    }
    if (options.json) {
        WriteDocumentosJson(*options.coo, documentos, out);
    } else {
        PrintAll(report, documentos, out);
    }
    return true;
}

bool ShowCrz(Report& report, const ShowOptions& options, std::ostream& out, std::ostream& errors)
{
    std::vector<ReducaoZ> reducoes = report.Reducoes().WithCrz(*options.crz);
    if (reducoes.empty()) {
        errors << options.database << ": there is no Z reduction " << *options.crz;
        if (const std::int64_t cupons = report.Documentos().CountCuponsOf(*options.crz);
            cupons > 0) {
            errors << " (" << cupons
                   << (cupons == 1 ? " receipt waits for it)" : " receipts wait for it)");
        }
        errors << '\n';
        return false;
    }
    std::vector<Documento> documentos;
    for (ReducaoZ& reducao : reducoes) {
        report.Reducoes().Complete(reducao);
        documentos.push_back(DocumentoOf(reducao));
    }
    if (options.json) {
        WriteReducoesJson(*options.crz, reducoes, out);
    } else {
        PrintAll(report, documentos, out);
    }
    return true;
}

bool ShowPage(Report& report, const ShowOptions& options, const Losses* losses,
              const Verdict* verdict, std::ostream& out, std::ostream& errors)
{
    if (options.crz && report.Reducoes().WithCrz(*options.crz).empty() &&
        report.Documentos().CountCuponsOf(*options.crz) == 0) {
        errors << options.database << ": there is no day of the Z reduction " << *options.crz
               << '\n';
        return false;
    }
    const std::string name = std::filesystem::path(options.database).filename().string();
    WriteHtmlPage(report, {name, options.version, options.crz, losses, verdict}, out);
    return true;
}

void ListLosses(const Losses& losses, std::ostream& out)
{
    out << "\nRejected statements: " << losses.rejected.size() << '\n';
    for (const RejectedStatement& one : losses.rejected) {
        out << "  " << FormatDateTime(one.time) << "  command " << one.command << ": "
            << Disarmed(one.error) << "\n    " << Disarmed(one.statement) << '\n';
    }
    out << "Lost commands: " << losses.lost.size() << '\n';
    for (const LostCommand& one : losses.lost) {
        out << "  " << FormatDateTime(one.time) << "  " << Disarmed(one.reason) << '\n';
    }
}

bool ShowFrom(Report& report, const Verdict* verdict, const ShowOptions& options, std::ostream& out,
              std::ostream& errors)
{
    if (options.coo) {
        return ShowCoo(report, options, out, errors);
    }
    if (options.crz && !options.html) {
        return ShowCrz(report, options, out, errors);
    }
    Losses read;
    const Losses* losses = nullptr;
    if (!options.log.empty()) {
        read = ReadLosses(options.log);
        losses = &read;
    }
    if (options.html) {
        return ShowPage(report, options, losses, verdict, out, errors);
    }
    if (options.json) {
        WriteListJson(report, losses, out);
        return true;
    }
    WriteList(report, out);
    if (losses) {
        ListLosses(*losses, out);
    }
    return true;
}

} // namespace

bool Show(const ShowOptions& options, std::ostream& out, std::ostream& errors)
{
    const leitura::DatabaseReading database(options.database);
    return Show(database, nullptr, options, out, errors);
}

bool Show(const leitura::DatabaseReading& database, const relatorio::Verdict* verdict,
          const ShowOptions& options, std::ostream& out, std::ostream& errors)
{
    Report report(database, options.crz);
    const bool shown = ShowFrom(report, verdict, options, out, errors);
    database.ConfirmUnchanged();
    return shown;
}

void ShowPages(const leitura::DatabaseReading& database, const relatorio::Verdict* verdict,
               const ShowOptions& options, const relatorio::PageSink& sink)
{
    std::optional<Losses> losses;
    if (!options.log.empty()) {
        losses = ReadLosses(options.log);
    }
    Report report(database);
    const std::string name = std::filesystem::path(options.database).filename().string();
    WritePages(report, {name, options.version, {}, losses ? &*losses : nullptr, verdict}, sink);
    database.ConfirmUnchanged();
}

} // namespace bancada

#include "bancada/relatorio/HtmlParts.h"

#include <sodium.h>

#include "bancada/Messages.h"
#include "bancada/log/RejectedRow.h"
#include "bancada/relatorio/Chart.h"
#include "bancada/relatorio/DisplayText.h"
#include "bancada/relatorio/DocumentoPrint.h"
#include "bancada/relatorio/HtmlPageAssets.h"
#include "bancada/relatorio/TotaisList.h"

namespace bancada::relatorio
{
namespace
{

// The page's policy names its script by digest, so that no other runs, not even one that a text of
// the database managed to bring in.
std::string DigestOf(std::string_view text)
{
    unsigned char bytes[crypto_hash_sha256_BYTES];
    crypto_hash_sha256(bytes, reinterpret_cast<const unsigned char*>(text.data()), text.size());
    char base64[sodium_base64_ENCODED_LEN(sizeof bytes, sodium_base64_VARIANT_ORIGINAL)];
    sodium_bin2base64(base64, sizeof base64, bytes, sizeof bytes, sodium_base64_VARIANT_ORIGINAL);
    return std::string("sha256-") + base64;
}

// Of what is in no sum; nothing where all is.
void WriteUnreadable(std::int64_t number, const std::string& text, std::ostream& out)
{
    if (number > 0) {
        out << "<p class=\"marca ilegivel\">" << text << "</p>\n";
    }
}

// A heading of a column.
std::string Heading(const char* text)
{
    return std::string("<th class=\"num\">") + text + "</th>";
}

std::string Weak(const std::string& text)
{
    return "<p class=\"fraco\">" + EscapeHtml(text) + "</p>\n";
}

void WriteProperty(const char* name, const std::string& value, std::ostream& out)
{
    if (!value.empty()) {
        out << "<tr><th>" << name << "</th><td>" << EscapeHtml(value) << "</td></tr>\n";
    }
}

void WriteFindings(const Verdict& verdict, std::size_t most, std::ostream& out)
{
    auto left = static_cast<std::size_t>(verdict.faults + verdict.notes);
    std::size_t listed = 0;
    if (verdict.findings.empty()) {
        return;
    }
    out << "<details" << (verdict.faults > 0 ? " open" : "") << "><summary>"
        << TrCount("%1 finding", "%1 findings", verdict.faults) << ", "
        << TrCount("%1 note", "%1 notes", verdict.notes) << "</summary>\n<ul class=\"achados\">\n";
    for (const VerdictFinding& one : verdict.findings) {
        listed += one.key.size() + one.text.size();
        if (listed > most) {
            break;
        }
        --left;
        out << "<li>" << (one.note ? Tr("note: ") : "") << "<b>" << EscapeHtml(one.kind) << "</b> "
            << EscapeHtml(one.key) << ": " << EscapeHtml(one.text)
            << (one.explained ? std::string(" <span class=\"fraco\">") +
                                    Tr("A lost row in the log explains it.") + "</span>"
                              : std::string())
            << "</li>\n";
    }
    out << "</ul>\n";
    if (left > 0) {
        out << Weak(
            TrCount("%1 more is counted and not listed; ecf-bancada check --all lists it.",
                    "%1 more are counted and not listed; ecf-bancada check --all lists them.",
                    static_cast<long long>(left)));
    }
    out << "</details>\n";
}

} // namespace

std::string NumberBox(const std::string& value, const std::string& name)
{
    return "<div><b>" + EscapeHtml(value) + "</b><span>" + EscapeHtml(name) + "</span></div>\n";
}

std::string FaultsMark(std::int64_t faults)
{
    return faults > 0 ? "<span class=\"marca achados\">" +
                            TrCount("%1 finding", "%1 findings", faults) + "</span>"
                      : "";
}

void WriteDocumento(const Documento& d, const Estabelecimento& estabelecimento,
                    const Verdict* verdict, std::ostream& out)
{
    const std::string cancelado = d.CanceladoMark();
    const bool unclosed = d.IsCupom() && cancelado.empty() && !d.HasFechamento();
    out << "<details class=\"doc" << (d.cancelado.IsSet() ? " cancelado" : "") << "\" data-coo=\""
        << EscapeHtml(WithZeros(d.coo, 1)) << "\"><summary><span>"
        << EscapeHtml(WithZeros(d.coo, 6)) << "</span><span class=\"hora\">"
        << EscapeHtml(FormatDateTime(d.inicio.Shown())) << "</span><span>" << EscapeHtml(Title(d))
        << "</span><span class=\"valor num\">"
        << (d.IsCupom() || d.reducao ? EscapeHtml(AmountText(d.total)) : "")
        << "</span><span class=\"marca\">" << (unclosed ? Tr("no closing") : EscapeHtml(cancelado))
        << "</span>"
        << (verdict && d.coo.IsKnown() ? FaultsMark(verdict->FaultsOfCoo(d.coo.Value())) : "")
        << "</summary>\n<div class=\"papel\"><pre class=\"bobina\" lang=\"pt-BR\">";
    for (const std::string& line : PrintDocumento(d, estabelecimento)) {
        out << EscapeHtml(line) << '\n';
    }
    out << "</pre></div></details>\n";
}

void WriteJornadaSummary(const Jornada& jornada, const Verdict* verdict, std::ostream& out)
{
    out << "<summary><strong>Z " << EscapeHtml(WithZeros(jornada.crz, 4)) << "</strong>";
    if (jornada.reducao) {
        out << "<span>" << EscapeHtml(Cut(FormatDateTime(jornada.reducao->movimento.Shown()), 19))
            << "</span><span>"
            << EscapeHtml(Tr("gross sales R$ %1", {AmountText(jornada.reducao->vb)}))
            << "</span><span>"
            << EscapeHtml(
                   Tr("closed %1", {Cut(FormatDateTime(jornada.reducao->emissao.Shown()), 19)}))
            << "</span>";
    } else {
        out << "<span>" << Tr("not closed") << "</span>";
    }
    if (verdict && jornada.crz.IsKnown()) {
        out << FaultsMark(verdict->FaultsOfCrz(jornada.crz.Value()));
    }
    out << "</summary>\n";
}

std::string NameOf(const std::vector<PageSource>& sources)
{
    for (const PageSource& source : sources) {
        const Estabelecimento estabelecimento = source.report.Names().ReadEstabelecimento();
        for (const Text* name : {&estabelecimento.nomeFantasia, &estabelecimento.razaoSocial}) {
            if (!IsBlank(name->Shown())) {
                return name->Shown();
            }
        }
    }
    return sources.front().name;
}

std::string FilesOf(const std::vector<PageSource>& sources)
{
    std::string files;
    for (const PageSource& source : sources) {
        files += (files.empty() ? "" : ", ") + source.name;
    }
    return files;
}

std::string Button(const char* id, const char* text)
{
    return std::string("<button type=\"button\" id=\"") + id + "\">" + text + "</button>";
}

// What the script says stands on the page, in its language.
void WriteSearch(const std::string& buttons, std::ostream& out)
{
    out << "<form class=\"ferramentas\" id=\"procura\"><label for=\"coo\">COO</label>"
           "<input id=\"coo\" inputmode=\"numeric\" pattern=\"[0-9]+\" required>"
           "<button>"
        << Tr("Show") << "</button>" << buttons
        << "<span id=\"achado\" class=\"fraco\" role=\"status\" data-dia=\""
        << EscapeHtml(Tr("No day has this number.")) << "\" data-nenhum=\""
        << EscapeHtml(Tr("No document has this number.")) << "\" data-documentos=\""
        << EscapeHtml(Tr("%1 documents have this number.")) << "\" data-instrucao=\""
        << EscapeHtml(Tr("A rejected statement has it: see what was lost."))
        << "\" data-instrucoes=\""
        << EscapeHtml(Tr("%1 rejected statements have it: see what was lost."))
        << "\"></span></form>\n";
}

std::string SectionLink(const char* id, const char* text)
{
    return std::string("<a href=\"#") + id + "\">" + text + "</a>";
}

void WriteSections(const std::string& days, std::ostream& out)
{
    out << "<nav>" << SectionLink("check", Tr("Check")) << days
        << SectionLink("hours", Tr("By hour")) << SectionLink("means", Tr("By payment means"))
        << SectionLink("taxes", Tr("By tax code")) << SectionLink("lost", Tr("Rejected and lost"));
}

void WriteHoras(const VendasByHora& vendas, std::ostream& out)
{
    const std::vector<VendaHora>& horas = vendas.horas;
    out << "<section class=\"quadro\" id=\"hours\"><h2>" << Tr("Sales by hour") << "</h2>\n"
        << ChartByHora(horas) << "\n";
    WriteUnreadable(vendas.unreadable,
                    TrCount("%1 receipt whose hour or total cannot be read is in no sum here",
                            "%1 receipts whose hour or total cannot be read are in no sum here",
                            vendas.unreadable),
                    out);
    out << "<details><summary>" << Tr("Figures") << "</summary><table><tr><th>" << Tr("Hour")
        << "</th>" << Heading(Tr("Receipts")) << Heading("R$") << "</tr>\n";
    for (std::size_t hora = 0; hora < horas.size(); ++hora) {
        if (horas[hora].cupons > 0) {
            out << "<tr><td>" << WithZeros(static_cast<int>(hora), 2) << " h</td><td class=\"num\">"
                << horas[hora].cupons << "</td><td class=\"num\">" << AmountText(horas[hora].valor)
                << "</td></tr>\n";
        }
    }
    out << "</table></details></section>\n";
}

Totais ReadVendas(const std::vector<PageSource>& sources, std::optional<std::int64_t> crz)
{
    Totais vendas;
    for (const PageSource& source : sources) {
        Report& report = source.report;
        if (!report.Filter().IsNone()) {
            Add(vendas, ReadTotais(report, crz));
            continue;
        }
        // The columns that these need, without the documents.
        Add(vendas.horas, ReadVendasByHora(report.Database(), report.Range(), crz));
        Add(vendas.meios, ReadVendasByMeio(report.Database(), report.Range(), report.Names(), crz));
        vendas.troco = vendas.troco + ReadTroco(report.Database(), report.Range(), crz);
    }
    return vendas;
}

void WriteFiltro(const std::vector<PageSource>& sources, std::ostream& out)
{
    const Filtro& filtro = sources.front().report.Filter();
    if (!filtro.IsNone()) {
        out << "<p class=\"marca\">"
            << EscapeHtml(Tr("Of these documents alone, figures and days: %1. What check says is "
                             "of the whole database.",
                             {filtro.Described()}))
            << "</p>\n";
    }
}

void WriteTotaisByDia(const Totais& totais, std::ostream& out)
{
    out << "<section class=\"quadro\" id=\"bydays\"><h2>" << Tr("Totals by day")
        << "</h2>\n<table><tr><th>" << Tr("Day") << "</th>" << Heading(Tr("Receipts"))
        << Heading(Tr("Sold, R$")) << Heading(Tr("Cancelled")) << Heading(Tr("Unreadable"))
        << Heading(Tr("Gross sales of the Z, R$")) << "</tr>\n";
    for (const TotalDia& dia : totais.dias) {
        const std::string movimento = Cut(FormatDateTime(dia.movimento.Shown().substr(0, 10)), 19);
        out << "<tr><td>" << EscapeHtml("Z " + WithZeros(dia.crz, 4) + ", " + movimento)
            << "</td><td class=\"num\">" << dia.cupons << "</td><td class=\"num\">"
            << EscapeHtml(AmountText(dia.vendido)) << "</td><td class=\"num\">" << dia.cancelados
            << "</td><td class=\"num\">" << dia.unreadable << "</td><td class=\"num\">"
            << (dia.fechado ? EscapeHtml(AmountText(dia.vb)) : Tr("not closed")) << "</td></tr>\n";
    }
    out << "</table></section>\n";
}

void WriteTotaisByAliquota(const Totais& totais, std::ostream& out)
{
    out << "<section class=\"quadro\" id=\"taxes\"><h2>" << Tr("Sales by tax code") << "</h2>\n";
    WriteUnreadable(totais.unreadable,
                    TrCount("%1 amount that cannot be read is in no sum here",
                            "%1 amounts that cannot be read are in no sum here", totais.unreadable),
                    out);
    out << "<table><tr><th>" << Tr("Tax code") << "</th>" << Heading(Tr("Items")) << Heading("R$")
        << "</tr>\n";
    for (const TotalAliquota& total : totais.aliquotas) {
        out << "<tr><td>" << EscapeHtml(AliquotaName(total)) << "</td><td class=\"num\">"
            << total.itens << "</td><td class=\"num\">" << EscapeHtml(AmountText(total.valor))
            << "</td></tr>\n";
    }
    if (!totais.foraDosItens.IsZero()) {
        out << "<tr><td>" << Tr("In no item") << "</td><td></td><td class=\"num\">"
            << EscapeHtml(AmountText(totais.foraDosItens)) << "</td></tr>\n";
    }
    out << "</table></section>\n";
}

void WriteMeios(const VendasByMeio& vendas, const Amount& troco, std::ostream& out)
{
    const std::vector<VendaMeio>& meios = vendas.meios;
    out << "<section class=\"quadro\" id=\"means\"><h2>" << Tr("Sales by payment means")
        << "</h2>\n";
    WriteUnreadable(vendas.unreadable,
                    TrCount("%1 payment whose amount cannot be read is in no sum here",
                            "%1 payments whose amount cannot be read are in no sum here",
                            vendas.unreadable),
                    out);
    if (meios.empty()) {
        out << Weak(Tr("No payments.")) << "</section>\n";
        return;
    }
    out << ChartByMeio(meios) << "\n"
        << Weak(Tr("Change of R$ %1 is not taken off.", {AmountText(troco)}))
        << "<details><summary>" << Tr("Figures") << "</summary><table><tr><th>" << Tr("Means")
        << "</th>" << Heading(Tr("Payments")) << Heading("R$") << "</tr>\n";
    for (const VendaMeio& meio : meios) {
        out << "<tr><td>" << EscapeHtml(NameOrNumber(meio)) << "</td><td class=\"num\">"
            << meio.pagamentos << "</td><td class=\"num\">" << AmountText(meio.valor)
            << "</td></tr>\n";
    }
    out << "</table></details></section>\n";
}

void WriteLosses(const Losses* losses, std::size_t most, std::ostream& out)
{
    std::size_t listed = 0;
    std::size_t left = 0;
    // Answers whether there is room for so many bytes more.
    const auto hasRoom = [&](std::size_t bytes) {
        listed += bytes;
        const bool has = left == 0 && listed <= most;
        left += has ? 0 : 1;
        return has;
    };
    out << "<section class=\"quadro\" id=\"lost\"><h2>"
        << Tr("Rejected statements and lost commands") << "</h2>\n";
    if (!losses) {
        out << Weak(Tr("No firmware log was given."));
    } else if (losses->rejected.empty() && losses->lost.empty()) {
        out << Weak(Tr("The firmware log holds none."));
    } else {
        for (const RejectedStatement& one : losses->rejected) {
            if (!hasRoom(one.statement.size() + one.error.size())) {
                continue;
            }
            out << "<div class=\"perdido\"";
            // The document whose row it should have written, for the search.
            if (const auto coo = ReadRejectedRow(one.statement).Value("cont_coo")) {
                out << " data-coo=\"" << *coo << "\"";
            }
            out << "><p><b>" << EscapeHtml(FormatDateTime(one.time)) << "</b> "
                << Tr("command %1, statement rejected, log line %2",
                      {std::to_string(one.command), std::to_string(one.line)})
                << ": <span class=\"marca\">" << EscapeHtml(one.error) << "</span></p><pre>"
                << EscapeHtml(one.statement) << "</pre></div>\n";
        }
        for (const LostCommand& one : losses->lost) {
            if (!hasRoom(one.reason.size())) {
                continue;
            }
            out << "<div class=\"perdido\"><p><b>" << EscapeHtml(FormatDateTime(one.time))
                << "</b> " << Tr("command lost, log line %1", {std::to_string(one.line)})
                << ": <span class=\"marca\">" << EscapeHtml(one.reason) << "</span></p></div>\n";
        }
        if (left > 0) {
            out << Weak(TrCount("%1 more is counted and not listed; show --log lists it.",
                                "%1 more are counted and not listed; show --log lists them.",
                                static_cast<long long>(left)));
        }
    }
    out << "</section>\n";
}

namespace
{

void WriteVerdict(const PageSource& source, const HtmlPage& page, std::size_t most,
                  std::ostream& out)
{
    const Verdict* verdict = source.verdict;
    if (!verdict) {
        out << "<p class=\"veredicto\">"
            << Tr("Not checked: this page was made without reconciling the database. ecf-bancada "
                  "check does it.")
            << "</p>\n";
    } else if (!verdict->failure.empty()) {
        out << "<p class=\"veredicto falha\">"
            << EscapeHtml(Tr("The check did not come to its end: %1", {verdict->failure}))
            << "</p>\n";
    } else if (verdict->faults > 0) {
        out << "<p class=\"veredicto falha\">"
            << TrCount(
                   "check found %1 finding, %2 of them not explained by a lost row. The figures "
                   "of this page are what the rows say, right or wrong.",
                   "check found %1 findings, %2 of them not explained by a lost row. The "
                   "figures of this page are what the rows say, right or wrong.",
                   verdict->faults, {std::to_string(verdict->faults - verdict->explained)})
            << "</p>\n";
    } else {
        out << "<p class=\"veredicto certo\">"
            << Tr("check found nothing to object to in the rows.") << "</p>\n";
    }
    out << "<table class=\"ficha\">\n";
    WriteProperty(Tr("File"), source.name, out);
    if (verdict) {
        WriteProperty(Tr("Size"), Tr("%1 bytes", {std::to_string(verdict->size)}), out);
        WriteProperty("SHA-256", verdict->sha256, out);
        if (verdict->logSize > 0) {
            WriteProperty(Tr("Write-ahead log"), Tr("%1 bytes", {std::to_string(verdict->logSize)}),
                          out);
            WriteProperty(Tr("Its SHA-256"), verdict->logSha256, out);
        }
        WriteProperty(Tr("Holds"), verdict->range, out);
    }
    if (page.crz) {
        WriteProperty(Tr("This page"), Tr("the day of Z %1 alone", {WithZeros(*page.crz, 4)}), out);
    }
    WriteProperty(Tr("Made with"), page.version, out);
    out << "</table>\n";
    if (verdict) {
        WriteFindings(*verdict, most, out);
    }
}

} // namespace

void WriteVerdicts(const std::vector<PageSource>& sources, const HtmlPage& page, std::size_t most,
                   std::ostream& out)
{
    out << "<section class=\"quadro\" id=\"check\"><h2>"
        << Tr("What was looked at, and what check says") << "</h2>\n";
    for (const PageSource& source : sources) {
        WriteVerdict(source, page, most / sources.size(), out);
    }
    out << "</section>\n";
}

std::string FaultsBox(const std::vector<PageSource>& sources)
{
    std::int64_t faults = 0;
    for (const PageSource& source : sources) {
        if (!source.verdict || !source.verdict->failure.empty()) {
            return "";
        }
        faults += source.verdict->faults;
    }
    return NumberBox(std::to_string(faults),
                     faults == 1 ? Tr("finding of check") : Tr("findings of check"));
}

void WriteHead(const std::string& name, std::ostream& out)
{
    out << "<!DOCTYPE html>\n<html lang=\""
        << (GetLanguage() == Language::PORTUGUESE ? "pt-BR" : "en")
        << "\"><head><meta charset=\"utf-8\">\n"
           "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
           "style-src '"
        << DigestOf(PAGE_STYLE) << "'; script-src '" << DigestOf(PAGE_SCRIPT)
        << "'; base-uri 'none'; form-action 'none'\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>"
        << EscapeHtml(name) << "</title>\n<style>" << PAGE_STYLE << "</style></head>\n";
}

} // namespace bancada::relatorio

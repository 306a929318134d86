#include "bancada/relatorio/HtmlParts.h"

#include <sodium.h>

#include "bancada/log/RejectedRow.h"
#include "bancada/relatorio/Chart.h"
#include "bancada/relatorio/DisplayText.h"
#include "bancada/relatorio/DocumentoPrint.h"
#include "bancada/relatorio/HtmlPageAssets.h"

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
void WriteUnreadable(std::int64_t number, const char* one, const char* several, std::ostream& out)
{
    if (number > 0) {
        out << "<p class=\"marca ilegivel\">" << CountText(number, one, several) << "</p>\n";
    }
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
        << CountText(verdict.faults, "finding", "findings") << ", "
        << CountText(verdict.notes, "note", "notes") << "</summary>\n<ul class=\"achados\">\n";
    for (const VerdictFinding& one : verdict.findings) {
        listed += one.key.size() + one.text.size();
        if (listed > most) {
            break;
        }
        --left;
        out << "<li>" << (one.note ? "note: " : "") << "<b>" << EscapeHtml(one.kind) << "</b> "
            << EscapeHtml(one.key) << ": " << EscapeHtml(one.text)
            << (one.explained ? " <span class=\"fraco\">A lost row in the log explains it.</span>"
                              : "")
            << "</li>\n";
    }
    out << "</ul>\n";
    if (left > 0) {
        out << "<p class=\"fraco\">" << CountText(left, "more is", "more are")
            << " counted and not listed; ecf-bancada check --all lists them.</p>\n";
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
                            CountText(faults, "finding", "findings") + "</span>"
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
        << "</span><span class=\"marca\">" << (unclosed ? "no closing" : EscapeHtml(cancelado))
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
            << "</span><span>gross sales R$ " << EscapeHtml(AmountText(jornada.reducao->vb))
            << "</span><span>closed "
            << EscapeHtml(Cut(FormatDateTime(jornada.reducao->emissao.Shown()), 19)) << "</span>";
    } else {
        out << "<span>not closed</span>";
    }
    if (verdict && jornada.crz.IsKnown()) {
        out << FaultsMark(verdict->FaultsOfCrz(jornada.crz.Value()));
    }
    out << "</summary>\n";
}

std::string NameOf(const HtmlPage& page, const Estabelecimento& estabelecimento)
{
    const std::string& fantasia = estabelecimento.nomeFantasia.Shown();
    const std::string& razao = estabelecimento.razaoSocial.Shown();
    return !IsBlank(fantasia) ? fantasia : !IsBlank(razao) ? razao : page.name;
}

void WriteHoras(const VendasByHora& vendas, std::ostream& out)
{
    const std::vector<VendaHora>& horas = vendas.horas;
    out << "<section class=\"quadro\" id=\"hours\"><h2>Sales by hour</h2>\n"
        << ChartByHora(horas) << "\n";
    WriteUnreadable(vendas.unreadable,
                    "receipt whose hour or total cannot be read is in no sum here",
                    "receipts whose hour or total cannot be read are in no sum here", out);
    out << "<details><summary>Figures</summary><table><tr><th>Hour</th>"
           "<th class=\"num\">Receipts</th><th class=\"num\">R$</th></tr>\n";
    for (std::size_t hora = 0; hora < horas.size(); ++hora) {
        if (horas[hora].cupons > 0) {
            out << "<tr><td>" << WithZeros(static_cast<int>(hora), 2) << " h</td><td class=\"num\">"
                << horas[hora].cupons << "</td><td class=\"num\">" << AmountText(horas[hora].valor)
                << "</td></tr>\n";
        }
    }
    out << "</table></details></section>\n";
}

void WriteMeios(const VendasByMeio& vendas, const Amount& troco, std::ostream& out)
{
    const std::vector<VendaMeio>& meios = vendas.meios;
    out << "<section class=\"quadro\" id=\"means\"><h2>Sales by payment means</h2>\n";
    WriteUnreadable(vendas.unreadable, "payment whose amount cannot be read is in no sum here",
                    "payments whose amount cannot be read are in no sum here", out);
    if (meios.empty()) {
        out << "<p class=\"fraco\">No payments.</p></section>\n";
        return;
    }
    out << ChartByMeio(meios) << "\n<p class=\"fraco\">Change of R$ " << AmountText(troco)
        << " is not taken off.</p>\n<details><summary>Figures</summary><table><tr><th>Means</th>"
           "<th class=\"num\">Payments</th><th class=\"num\">R$</th></tr>\n";
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
    out << "<section class=\"quadro\" id=\"lost\"><h2>Rejected statements and lost "
           "commands</h2>\n";
    if (!losses) {
        out << "<p class=\"fraco\">No firmware log was given.</p>\n";
    } else if (losses->rejected.empty() && losses->lost.empty()) {
        out << "<p class=\"fraco\">The firmware log holds none.</p>\n";
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
            out << "><p><b>" << EscapeHtml(FormatDateTime(one.time)) << "</b> command "
                << one.command << ", statement rejected, log line " << one.line
                << ": <span class=\"marca\">" << EscapeHtml(one.error) << "</span></p><pre>"
                << EscapeHtml(one.statement) << "</pre></div>\n";
        }
        for (const LostCommand& one : losses->lost) {
            if (!hasRoom(one.reason.size())) {
                continue;
            }
            out << "<div class=\"perdido\"><p><b>" << EscapeHtml(FormatDateTime(one.time))
                << "</b> command lost, log line " << one.line << ": <span class=\"marca\">"
                << EscapeHtml(one.reason) << "</span></p></div>\n";
        }
        if (left > 0) {
            out << "<p class=\"fraco\">" << CountText(left, "more is", "more are")
                << " counted and not listed; show --log lists them.</p>\n";
        }
    }
    out << "</section>\n";
}

// What the figures are of, and what a reconciliation says of them.
void WriteVerdict(const HtmlPage& page, std::size_t most, std::ostream& out)
{
    out << "<section class=\"quadro\" id=\"check\"><h2>What was looked at, and what check "
           "says</h2>\n";
    const Verdict* verdict = page.verdict;
    if (!verdict) {
        out << "<p class=\"veredicto\">Not checked: this page was made without reconciling the "
               "database. ecf-bancada check does it.</p>\n";
    } else if (!verdict->failure.empty()) {
        out << "<p class=\"veredicto falha\">The check did not come to its end: "
            << EscapeHtml(verdict->failure) << "</p>\n";
    } else if (verdict->faults > 0) {
        out << "<p class=\"veredicto falha\">check found "
            << CountText(verdict->faults, "finding", "findings") << ", "
            << verdict->faults - verdict->explained
            << " of them not explained by a lost row. The figures of this page are what the rows "
               "say, right or wrong.</p>\n";
    } else {
        out << "<p class=\"veredicto certo\">check found nothing to object to in the rows.</p>\n";
    }
    out << "<table class=\"ficha\">\n";
    WriteProperty("File", page.name, out);
    if (verdict) {
        WriteProperty("Size", std::to_string(verdict->size) + " bytes", out);
        WriteProperty("SHA-256", verdict->sha256, out);
        if (verdict->logSize > 0) {
            WriteProperty("Write-ahead log", std::to_string(verdict->logSize) + " bytes", out);
            WriteProperty("Its SHA-256", verdict->logSha256, out);
        }
        WriteProperty("Holds", verdict->range, out);
    }
    if (page.crz) {
        WriteProperty("This page", "the day of Z " + WithZeros(*page.crz, 4) + " alone", out);
    }
    WriteProperty("Made with", page.version, out);
    out << "</table>\n";
    if (verdict) {
        WriteFindings(*verdict, most, out);
    }
    out << "</section>\n";
}

void WriteHead(const std::string& name, std::ostream& out)
{
    out << "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">\n"
           "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
           "style-src '"
        << DigestOf(PAGE_STYLE) << "'; script-src '" << DigestOf(PAGE_SCRIPT)
        << "'; base-uri 'none'; form-action 'none'\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>"
        << EscapeHtml(name) << "</title>\n<style>" << PAGE_STYLE << "</style></head>\n";
}

} // namespace bancada::relatorio

#include "bancada/relatorio/HtmlPage.h"

#include <sodium.h>

#include "bancada/log/RejectedRow.h"
#include "bancada/relatorio/Chart.h"
#include "bancada/relatorio/DisplayText.h"
#include "bancada/relatorio/DocumentoPrint.h"
#include "bancada/relatorio/HtmlPageAssets.h"
#include "bancada/relatorio/Vendas.h"

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

std::string NumberBox(const std::string& value, const std::string& name)
{
    return "<div><b>" + EscapeHtml(value) + "</b><span>" + EscapeHtml(name) + "</span></div>\n";
}

std::string CountText(std::int64_t number, const char* one, const char* several)
{
    return std::to_string(number) + " " + (number == 1 ? one : several);
}

class PageWriter final : public JornadaVisitor
{
  public:
    PageWriter(Report& report, const HtmlPage& page, const Estabelecimento& estabelecimento,
               std::ostream& out)
        : m_report(report), m_page(page), m_estabelecimento(estabelecimento), m_out(out)
    {
    }

    void BeginJornada(const Jornada& jornada) override
    {
        if (IsOutside(jornada)) {
            return;
        }
        m_out << "<details class=\"dia\" data-crz=\"" << EscapeHtml(WithZeros(jornada.crz, 1))
              << "\"" << (m_empty ? " open" : "") << "><summary><strong>Z "
              << EscapeHtml(WithZeros(jornada.crz, 4)) << "</strong>";
        m_empty = false;
        if (jornada.reducao) {
            m_out << "<span>" << EscapeHtml(FormatDateTime(jornada.reducao->movimento.Shown()))
                  << "</span><span>gross sales R$ " << EscapeHtml(AmountText(jornada.reducao->vb))
                  << "</span><span>closed "
                  << EscapeHtml(FormatDateTime(jornada.reducao->emissao.Shown())) << "</span>";
        } else {
            m_out << "<span>not closed</span>";
        }
        if (m_page.verdict && jornada.crz.IsKnown()) {
            WriteFaults(m_page.verdict->FaultsOfCrz(jornada.crz.Value()));
        }
        m_out << "</summary>\n";
        m_inside = true;
    }

    void VisitDocumento(Documento& d) override
    {
        if (!m_inside) {
            return;
        }
        m_report.Documentos().Complete(d);
        const std::string cancelado = d.CanceladoMark();
        const bool unclosed = d.IsCupom() && cancelado.empty() && !d.HasFechamento();
        m_out << "<details class=\"doc" << (d.cancelado.IsSet() ? " cancelado" : "")
              << "\" data-coo=\"" << EscapeHtml(WithZeros(d.coo, 1)) << "\"><summary><span>"
              << EscapeHtml(WithZeros(d.coo, 6)) << "</span><span class=\"hora\">"
              << EscapeHtml(FormatDateTime(d.inicio.Shown())) << "</span><span>"
              << EscapeHtml(Title(d)) << "</span><span class=\"valor num\">"
              << (d.IsCupom() || d.reducao ? EscapeHtml(AmountText(d.total)) : "")
              << "</span><span class=\"marca\">"
              << (unclosed ? "no closing" : EscapeHtml(cancelado)) << "</span>";
        if (m_page.verdict && d.coo.IsKnown()) {
            WriteFaults(m_page.verdict->FaultsOfCoo(d.coo.Value()));
        }
        m_out << "</summary>\n<div class=\"papel\"><pre class=\"bobina\" lang=\"pt-BR\">";
        for (const std::string& line : PrintDocumento(d, m_estabelecimento)) {
            m_out << EscapeHtml(line) << '\n';
        }
        m_out << "</pre></div></details>\n";
    }

    void EndJornada(const Jornada&) override
    {
        if (m_inside) {
            m_out << "</details>\n";
        }
        m_inside = false;
    }

    bool IsEmpty() const { return m_empty; }

  private:
    bool IsOutside(const Jornada& jornada) const
    {
        return m_page.crz && (!jornada.crz.IsKnown() || *m_page.crz != jornada.crz.Value());
    }

    // Of a day or a document; nothing where there are none.
    void WriteFaults(std::int64_t faults)
    {
        if (faults > 0) {
            m_out << "<span class=\"marca achados\">" << CountText(faults, "finding", "findings")
                  << "</span>";
        }
    }

    Report& m_report;
    const HtmlPage& m_page;
    const Estabelecimento& m_estabelecimento;
    std::ostream& m_out;
    bool m_empty = true;
    bool m_inside = false;
};

// Of what is in no sum; nothing where all is.
void WriteUnreadable(std::int64_t number, const char* one, const char* several, std::ostream& out)
{
    if (number > 0) {
        out << "<p class=\"marca ilegivel\">" << CountText(number, one, several) << "</p>\n";
    }
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

void WriteLosses(const Losses* losses, std::ostream& out)
{
    out << "<section class=\"quadro\" id=\"lost\"><h2>Rejected statements and lost "
           "commands</h2>\n";
    if (!losses) {
        out << "<p class=\"fraco\">No firmware log was given.</p>\n";
    } else if (losses->rejected.empty() && losses->lost.empty()) {
        out << "<p class=\"fraco\">The firmware log holds none.</p>\n";
    } else {
        for (const RejectedStatement& one : losses->rejected) {
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
            out << "<div class=\"perdido\"><p><b>" << EscapeHtml(FormatDateTime(one.time))
                << "</b> command lost, log line " << one.line << ": <span class=\"marca\">"
                << EscapeHtml(one.reason) << "</span></p></div>\n";
        }
    }
    out << "</section>\n";
}

void WriteProperty(const char* name, const std::string& value, std::ostream& out)
{
    if (!value.empty()) {
        out << "<tr><th>" << name << "</th><td>" << EscapeHtml(value) << "</td></tr>\n";
    }
}

void WriteFindings(const Verdict& verdict, std::ostream& out)
{
    const std::size_t counted = static_cast<std::size_t>(verdict.faults + verdict.notes);
    if (verdict.findings.empty()) {
        return;
    }
    out << "<details" << (verdict.faults > 0 ? " open" : "") << "><summary>"
        << CountText(verdict.faults, "finding", "findings") << ", "
        << CountText(verdict.notes, "note", "notes") << "</summary>\n<ul class=\"achados\">\n";
    for (const VerdictFinding& one : verdict.findings) {
        out << "<li>" << (one.note ? "note: " : "") << "<b>" << EscapeHtml(one.kind) << "</b> "
            << EscapeHtml(one.key) << ": " << EscapeHtml(one.text)
            << (one.explained ? " <span class=\"fraco\">A lost row in the log explains it.</span>"
                              : "")
            << "</li>\n";
    }
    out << "</ul>\n";
    if (counted > verdict.findings.size()) {
        out << "<p class=\"fraco\">" << counted - verdict.findings.size()
            << " more are counted and not listed; ecf-bancada check --all lists them.</p>\n";
    }
    out << "</details>\n";
}

// What the figures are of, and what a reconciliation says of them.
void WriteVerdict(const HtmlPage& page, std::ostream& out)
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
        WriteFindings(*verdict, out);
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

} // namespace

void WriteHtmlPage(Report& report, const HtmlPage& page, std::ostream& out)
{
    const Estabelecimento estabelecimento = report.Names().ReadEstabelecimento();
    const VendasByHora vendas = ReadVendasByHora(report.Database(), report.Range(), page.crz);
    std::int64_t cupons = 0;
    Amount total;
    for (const VendaHora& venda : vendas.horas) {
        cupons += venda.cupons;
        total = total + venda.valor;
    }

    const std::string& fantasia = estabelecimento.nomeFantasia.Shown();
    const std::string& razao = estabelecimento.razaoSocial.Shown();
    const std::string& cnpj = estabelecimento.cnpj.Shown();
    const std::string name = !IsBlank(fantasia) ? fantasia : !IsBlank(razao) ? razao : page.name;
    WriteHead(name, out);
    out << "<body><header><h1>" << EscapeHtml(name) << "</h1>\n<p class=\"fraco\">"
        << EscapeHtml(IsBlank(cnpj) ? "" : "CNPJ " + FormatCpfCnpj(cnpj) + " · ")
        << EscapeHtml(page.name)
        << (page.crz ? " · Z " + WithZeros(*page.crz, 4) + " alone" : std::string())
        << "</p>\n<nav><a href=\"#check\">Check</a><a href=\"#hours\">By hour</a><a href=\"#means\">By payment means</a>"
           "<a href=\"#lost\">Rejected and lost</a><a href=\"#days\">Days and documents</a></nav>\n"
           "</header><main>\n<div class=\"numeros\">\n"
        << NumberBox(std::to_string(cupons), cupons == 1
                                                 ? "fiscal receipt, without cancelled ones"
                                                 : "fiscal receipts, without cancelled ones")
        << NumberBox("R$ " + AmountText(total), "sold on these receipts")
        << (page.losses
                ? NumberBox(std::to_string(page.losses->rejected.size()), "rejected statements") +
                      NumberBox(std::to_string(page.losses->lost.size()), "lost commands")
                : std::string())
        << (page.verdict && page.verdict->failure.empty()
                ? NumberBox(std::to_string(page.verdict->faults),
                            page.verdict->faults == 1 ? "finding of check" : "findings of check")
                : std::string())
        << "</div>\n";
    WriteVerdict(page, out);
    WriteHoras(vendas, out);
    WriteMeios(ReadVendasByMeio(report.Database(), report.Range(), report.Names(), page.crz),
               ReadTroco(report.Database(), report.Range(), page.crz), out);
    WriteLosses(page.losses, out);

    out << "<section class=\"quadro\" id=\"days\"><h2>Days and documents</h2>\n"
           "<form class=\"ferramentas\" id=\"procura\"><label for=\"coo\">COO</label>"
           "<input id=\"coo\" inputmode=\"numeric\" pattern=\"[0-9]+\" required>"
           "<button>Show</button><button type=\"button\" id=\"abre\">Open all days</button>"
           "<button type=\"button\" id=\"fecha\">Close all</button>"
           "<span id=\"achado\" class=\"fraco\" role=\"status\"></span></form>\n";
    PageWriter writer(report, page, estabelecimento, out);
    report.Walk(writer);
    if (writer.IsEmpty()) {
        out << "<p class=\"fraco\">No documents.</p>\n";
    }
    out << "</section></main>\n<script>" << PAGE_SCRIPT << "</script></body></html>\n";
}

} // namespace bancada::relatorio

#include "bancada/relatorio/HtmlPage.h"

#include "bancada/relatorio/DisplayText.h"
#include "bancada/relatorio/HtmlPageAssets.h"
#include "bancada/relatorio/HtmlParts.h"
#include "bancada/relatorio/Vendas.h"

namespace bancada::relatorio
{
namespace
{

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
              << "\"" << (m_empty ? " open" : "") << ">";
        m_empty = false;
        WriteJornadaSummary(jornada, m_page.verdict, m_out);
        m_inside = true;
    }

    void VisitDocumento(Documento& d) override
    {
        if (!m_inside) {
            return;
        }
        m_report.Documentos().Complete(d);
        WriteDocumento(d, m_estabelecimento, m_page.verdict, m_out);
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

    Report& m_report;
    const HtmlPage& m_page;
    const Estabelecimento& m_estabelecimento;
    std::ostream& m_out;
    bool m_empty = true;
    bool m_inside = false;
};

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

    const std::string& cnpj = estabelecimento.cnpj.Shown();
    const std::string name = NameOf(page, estabelecimento);
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
    WriteVerdict(page, ALL_OF_IT, out);
    WriteHoras(vendas, out);
    WriteMeios(ReadVendasByMeio(report.Database(), report.Range(), report.Names(), page.crz),
               ReadTroco(report.Database(), report.Range(), page.crz), out);
    WriteLosses(page.losses, ALL_OF_IT, out);

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

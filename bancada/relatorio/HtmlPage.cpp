#include "bancada/relatorio/HtmlPage.h"

#include "bancada/Messages.h"
#include "bancada/relatorio/DisplayText.h"
#include "bancada/relatorio/HtmlPageAssets.h"
#include "bancada/relatorio/HtmlParts.h"
#include "bancada/relatorio/Totais.h"

namespace bancada::relatorio
{
namespace
{

class PageWriter final : public JornadaVisitor
{
  public:
    PageWriter(const PageSource& source, const HtmlPage& page, bool& empty, std::ostream& out)
        : m_source(source), m_page(page), m_totais(source.report.Names()),
          m_estabelecimento(source.report.Names().ReadEstabelecimento()), m_empty(empty), m_out(out)
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
        WriteJornadaSummary(jornada, m_source.verdict, m_out);
        m_totais.BeginJornada(jornada);
        m_inside = true;
    }

    void VisitDocumento(Documento& d) override
    {
        if (!m_inside) {
            return;
        }
        m_source.report.Documentos().Complete(d);
        WriteDocumento(d, m_estabelecimento, m_source.verdict, m_out);
        m_totais.VisitDocumento(d);
    }

    void EndJornada(const Jornada&) override
    {
        if (m_inside) {
            m_out << "</details>\n";
        }
        m_inside = false;
    }

    // Of the documents that were written.
    [[nodiscard]] Totais Sums() const { return m_totais.Sums(); }

  private:
    bool IsOutside(const Jornada& jornada) const
    {
        return m_page.crz && (!jornada.crz.IsKnown() || *m_page.crz != jornada.crz.Value());
    }

    const PageSource& m_source;
    const HtmlPage& m_page;
    TotaisCollector m_totais;
    const Estabelecimento m_estabelecimento;
    // Whether no jornada was written yet, of whatever database.
    bool& m_empty;
    std::ostream& m_out;
    bool m_inside = false;
};

} // namespace

void WriteHtmlPage(const std::vector<PageSource>& sources, const HtmlPage& page, std::ostream& out)
{
    const Totais vendas = ReadVendas(sources, page.crz);
    std::int64_t cupons = 0;
    Amount total;
    for (const VendaHora& venda : vendas.horas.horas) {
        cupons += venda.cupons;
        total = total + venda.valor;
    }

    const std::string name = NameOf(sources);
    const std::string cnpj = sources.front().report.Names().ReadEstabelecimento().cnpj.Shown();
    WriteHead(name, out);
    out << "<body><header><h1>" << EscapeHtml(name) << "</h1>\n<p class=\"fraco\">"
        << EscapeHtml(IsBlank(cnpj) ? "" : "CNPJ " + FormatCpfCnpj(cnpj) + " · ")
        << EscapeHtml(FilesOf(sources))
        << (page.crz ? " · " + Tr("Z %1 alone", {WithZeros(*page.crz, 4)}) : std::string())
        << "</p>\n";
    WriteFiltro(sources, out);
    WriteSections("", out);
    out << SectionLink("days", Tr("Days and documents"))
        << SectionLink("bydays", Tr("Totals by day"))
        << "</nav>\n</header><main>\n<div class=\"numeros\">\n"
        << NumberBox(std::to_string(cupons), cupons == 1
                                                 ? Tr("fiscal receipt, without cancelled ones")
                                                 : Tr("fiscal receipts, without cancelled ones"))
        << NumberBox("R$ " + AmountText(total), Tr("sold on these receipts"))
        << (page.losses
                ? NumberBox(std::to_string(page.losses->rejected.size()),
                            Tr("rejected statements")) +
                      NumberBox(std::to_string(page.losses->lost.size()), Tr("lost commands"))
                : std::string())
        << FaultsBox(sources) << "</div>\n";
    WriteVerdicts(sources, page, ALL_OF_IT, out);
    WriteHoras(vendas.horas, out);
    WriteMeios(vendas.meios, vendas.troco, out);
    WriteLosses(page.losses, ALL_OF_IT, out);

    out << "<section class=\"quadro\" id=\"days\"><h2>" << Tr("Days and documents") << "</h2>\n";
    WriteSearch(Button("abre", Tr("Open all days")) + Button("fecha", Tr("Close all")), out);
    bool empty = true;
    Totais totais;
    for (const PageSource& source : sources) {
        if (sources.size() > 1) {
            out << "<h3>" << EscapeHtml(source.name) << "</h3>\n";
        }
        PageWriter writer(source, page, empty, out);
        source.report.Walk(writer);
        Add(totais, writer.Sums());
    }
    if (empty) {
        out << "<p class=\"fraco\">" << Tr("No documents.") << "</p>\n";
    }
    out << "</section>\n";
    WriteTotaisByDia(totais, out);
    WriteTotaisByAliquota(totais, out);
    out << "</main>\n<script>" << PAGE_SCRIPT << "</script></body></html>\n";
}

} // namespace bancada::relatorio

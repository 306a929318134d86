#include "bancada/relatorio/PageFolder.h"

#include "bancada/Messages.h"
#include "bancada/relatorio/DisplayText.h"
#include "bancada/relatorio/HtmlPageAssets.h"
#include "bancada/relatorio/HtmlParts.h"
#include "bancada/relatorio/Totais.h"

#include <algorithm>
#include <map>
#include <optional>
#include <sstream>
#include <vector>

namespace bancada::relatorio
{
namespace
{

// What a page has besides its documents: head, style, script, links.
constexpr std::size_t FRAME_BYTES = 60'000;
// Of the findings, and of the losses, on the overview; escaped a text may take six times as much.
constexpr std::size_t LIST_BYTES = 100'000;
// More rows than these make the overview too long.
constexpr std::size_t MAX_DAYS_ON_OVERVIEW = 1000;

// Of a name on every page.
constexpr std::size_t NAME_COLUMNS = 120;

constexpr const char* OVERVIEW = "index.html";

// Sums of receipts.
struct Sums {
    std::int64_t cupons = 0;
    Amount vendido;
    std::int64_t cancelados = 0;
    std::int64_t faults = 0;
    // Receipts whose total is not known: they are in no sum.
    std::int64_t unreadable = 0;

    void Add(const Sums& other)
    {
        cupons += other.cupons;
        vendido = vendido + other.vendido;
        cancelados += other.cancelados;
        faults += other.faults;
        unreadable += other.unreadable;
    }
};

// A page of a day, with the lowest and the highest number on it.
struct Part {
    std::string file;
    std::int64_t from = 0;
    std::int64_t to = 0;
};

struct Day {
    std::string name;   // as the table names it
    std::string source; // the database's
    std::string month;
    bool closed = false;
    Amount vb;
    Sums sums;
    std::vector<Part> parts;
};

std::string Link(const std::string& file, const std::string& text)
{
    return "<a href=\"" + file + "\">" + EscapeHtml(text) + "</a>";
}

std::string SumCells(const Sums& sums)
{
    return "<td class=\"num\">" + std::to_string(sums.cupons) + "</td><td class=\"num\">" +
           EscapeHtml(AmountText(sums.vendido)) + "</td><td class=\"num\">" +
           std::to_string(sums.cancelados) + "</td><td class=\"num\">" +
           std::to_string(sums.unreadable) + "</td><td class=\"num\">" +
           std::to_string(sums.faults) + "</td>";
}

std::string SumHeadings()
{
    std::string headings;
    for (const char* text :
         {Tr("Receipts"), Tr("Sold, R$"), Tr("Cancelled"), Tr("Unreadable"), Tr("Findings")}) {
        headings += std::string("<th class=\"num\">") + text + "</th>";
    }
    return headings;
}

// "2024-03" of an instant; "other" of what is none.
std::string MonthOf(const std::string& instant)
{
    if (instant.size() < 7 || instant[4] != '-') {
        return Tr("other");
    }
    for (const std::size_t digit : {0U, 1U, 2U, 3U, 5U, 6U}) {
        if (instant[digit] < '0' || instant[digit] > '9') {
            return Tr("other");
        }
    }
    return instant.substr(0, 7);
}

class FolderWriter final : public JornadaVisitor
{
  public:
    FolderWriter(const std::vector<PageSource>& sources, const HtmlPage& page, const PageSink& sink)
        : m_sources(sources), m_page(page), m_sink(sink), m_name(Cut(NameOf(sources), NAME_COLUMNS))
    {
    }

    // A page a day, of each database.
    void WriteDayPages()
    {
        for (const PageSource& source : m_sources) {
            m_source = &source;
            m_estabelecimento = source.report.Names().ReadEstabelecimento();
            m_totais.emplace(source.report.Names());
            source.report.Walk(*this);
            Add(m_sums, m_totais->Sums());
        }
    }

    void BeginJornada(const Jornada& jornada) override
    {
        ++m_number;
        m_day = Day();
        m_day.source = m_source->name;
        m_day.name = "Z " + WithZeros(jornada.crz, 4);
        m_day.closed = jornada.reducao.has_value();
        if (jornada.reducao) {
            m_day.vb = jornada.reducao->vb;
            m_day.month = MonthOf(jornada.reducao->movimento.Shown());
            m_day.name += ", " + Cut(FormatDateTime(jornada.reducao->movimento.Shown()), 19);
        }
        if (m_source->verdict && jornada.crz.IsKnown()) {
            m_day.sums.faults = m_source->verdict->FaultsOfCrz(jornada.crz.Value());
        }
        std::ostringstream summary;
        WriteJornadaSummary(jornada, m_source->verdict, summary);
        m_heading = "<details class=\"dia\" data-crz=\"" + EscapeHtml(WithZeros(jornada.crz, 1)) +
                    "\" open>" + summary.str();
        m_totais->BeginJornada(jornada);
        BeginPart();
    }

    void VisitDocumento(Documento& d) override
    {
        if (m_day.month.empty()) {
            m_day.month = MonthOf(d.inicio.Shown());
        }
        Count(d);
        m_source->report.Documentos().Complete(d);
        m_totais->VisitDocumento(d);
        std::ostringstream written;
        WriteDocumento(d, m_estabelecimento, m_source->verdict, written);
        std::string html = written.str();
        if (html.size() > MAX_PAGE_BYTES - FRAME_BYTES - m_heading.size()) {
            html = "<p class=\"marca\">" +
                   EscapeHtml(Tr("The document COO %1 is too long for a page; show --coo shows it.",
                                 {WithZeros(d.coo, 6)})) +
                   "</p>\n";
        }
        if (m_documents.size() + html.size() + m_heading.size() > MAX_PAGE_BYTES - FRAME_BYTES) {
            Finish();
            BeginPart();
        }
        m_documents += html;
        if (d.coo.IsKnown()) {
            Part& part = m_day.parts.back();
            part.from = part.to == 0 ? d.coo.Value() : std::min(part.from, d.coo.Value());
            part.to = std::max(part.to, d.coo.Value());
        }
    }

    void EndJornada(const Jornada&) override
    {
        Finish();
        m_total.Add(m_day.sums);
        m_days.push_back(m_day);
    }

    // When all days are written.
    void WriteOverview()
    {
        Flush("");
        std::map<std::string, Sums> months;
        for (const Day& day : m_days) {
            months[day.month].Add(day.sums);
        }
        const bool few = m_days.size() <= MAX_DAYS_ON_OVERVIEW;
        std::ostringstream out;
        WriteHead(m_name, out);
        out << "<body><header><h1>" << EscapeHtml(m_name) << "</h1>\n<p class=\"fraco\">"
            << EscapeHtml(FilesOf(m_sources)) << "</p>\n";
        WriteFiltro(m_sources, out);
        WriteSections(SectionLink("months", Tr("Months")) +
                          (few ? SectionLink("days", Tr("Days")) : std::string()),
                      out);
        out << "</nav>\n</header><main>\n<div class=\"numeros\">\n"
            << NumberBox(std::to_string(m_days.size()), m_days.size() == 1 ? Tr("day") : Tr("days"))
            << NumberBox(std::to_string(m_total.cupons),
                         m_total.cupons == 1 ? Tr("fiscal receipt, without cancelled ones")
                                             : Tr("fiscal receipts, without cancelled ones"))
            << NumberBox("R$ " + AmountText(m_total.vendido), Tr("sold on these receipts"))
            << NumberBox(std::to_string(m_total.cancelados), Tr("cancelled receipts"))
            << FaultsBox(m_sources) << "</div>\n";
        WriteVerdicts(m_sources, m_page, LIST_BYTES, out);
        WriteSearch("", out);
        WriteMonths(months, few, out);
        if (few) {
            WriteDays("", out);
        }
        WriteHoras(m_sums.horas, out);
        WriteMeios(m_sums.meios, m_sums.troco, out);
        WriteTotaisByAliquota(m_sums, out);
        WriteLosses(m_page.losses, LIST_BYTES, out);
        out << "</main>\n<script>" << PAGE_SCRIPT << "</script></body></html>\n";
        m_sink(OVERVIEW, out.str());
        if (!few) {
            WriteMonthPages(months);
        }
    }

  private:
    void Count(const Documento& d)
    {
        Sums& sums = m_day.sums;
        if (m_source->verdict && d.coo.IsKnown()) {
            sums.faults += m_source->verdict->FaultsOfCoo(d.coo.Value());
        }
        if (d.IsCupom() && d.cancelado.IsSet()) {
            ++sums.cancelados;
        } else if (d.tipo == TipoDocumento::CUPOM_FISCAL) {
            if (d.total.IsKnown()) {
                ++sums.cupons;
                sums.vendido = sums.vendido + d.total;
            } else {
                ++sums.unreadable;
            }
        }
    }

    void BeginPart()
    {
        const std::size_t number = m_day.parts.size() + 1;
        m_day.parts.push_back({"dia-" + WithZeros(m_number, 5) +
                                   (number > 1 ? "-" + std::to_string(number) : "") + ".html",
                               0, 0});
        m_documents.clear();
    }

    // The page is held until it is known which one follows.
    void Finish()
    {
        const std::string& file = m_day.parts.back().file;
        Flush(file);
        m_heldFile = file;
        m_heldTitle = m_day.parts.size() > 1
                          ? Tr("%1, part %2", {m_day.name, std::to_string(m_day.parts.size())})
                          : m_day.name;
        m_heldSource = m_source->name;
        m_held = m_heading + m_documents + "</details>\n";
    }

    void Flush(const std::string& next)
    {
        if (m_heldFile.empty()) {
            return;
        }
        std::ostringstream out;
        WriteHead(m_heldTitle + " - " + m_name, out);
        out << "<body><header><h1>" << EscapeHtml(m_heldTitle) << "</h1>\n<p class=\"fraco\">"
            << EscapeHtml(m_name) << " · " << EscapeHtml(m_heldSource) << "</p>\n<nav>"
            << Link(OVERVIEW, Tr("Overview"))
            << (m_previous.empty() ? "" : Link(m_previous, Tr("Page before")))
            << (next.empty() ? "" : Link(next, Tr("Next page")))
            << "</nav>\n</header><main>\n<section class=\"quadro\" id=\"days\">\n";
        WriteSearch(Button("fecha", Tr("Close all")), out);
        out << m_held << "</section></main>\n<script>" << PAGE_SCRIPT
            << "</script></body></html>\n";
        m_sink(m_heldFile, out.str());
        m_previous = m_heldFile;
        m_heldFile.clear();
    }

    static void WriteMonths(const std::map<std::string, Sums>& months, bool few, std::ostream& out)
    {
        out << "<section class=\"quadro\" id=\"months\"><h2>" << Tr("Months")
            << "</h2>\n<table><tr><th>" << Tr("Month") << "</th>" << SumHeadings() << "</tr>\n";
        for (const auto& [month, sums] : months) {
            out << "<tr><td>" << (few ? month : Link("mes-" + month + ".html", month)) << "</td>"
                << SumCells(sums) << "</tr>\n";
        }
        out << "</table></section>\n";
    }

    // Those of a month; all of them for "".
    void WriteDays(const std::string& month, std::ostream& out) const
    {
        out << "<section class=\"quadro\" id=\"days\"><h2>" << Tr("Days")
            << "</h2>\n<table><tr><th>" << Tr("Day") << "</th>"
            << (m_sources.size() > 1 ? std::string("<th>") + Tr("File") + "</th>" : std::string())
            << "<th class=\"num\">" << Tr("Gross sales of the Z, R$") << "</th>" << SumHeadings()
            << "</tr>\n";
        for (const Day& day : m_days) {
            if (!month.empty() && day.month != month) {
                continue;
            }
            out << "<tr><td>";
            for (std::size_t i = 0; i < day.parts.size(); ++i) {
                const Part& part = day.parts[i];
                out << (i > 0 ? " " : "") << "<a href=\"" << part.file << "\" data-de=\""
                    << part.from << "\" data-ate=\"" << part.to << "\">"
                    << EscapeHtml(i == 0 ? day.name : Tr("part %1", {std::to_string(i + 1)}))
                    << "</a>";
            }
            out << (m_sources.size() > 1 ? "</td><td>" + EscapeHtml(day.source) : std::string())
                << "</td><td class=\"num\">"
                << (day.closed ? EscapeHtml(AmountText(day.vb)) : Tr("not closed")) << "</td>"
                << SumCells(day.sums) << "</tr>\n";
        }
        out << "</table></section>\n";
    }

    void WriteMonthPages(const std::map<std::string, Sums>& months) const
    {
        for (const auto& [month, sums] : months) {
            std::ostringstream out;
            WriteHead(month + " - " + m_name, out);
            out << "<body><header><h1>" << month << "</h1>\n<p class=\"fraco\">"
                << EscapeHtml(m_name) << "</p>\n<nav>" << Link(OVERVIEW, Tr("Overview"))
                << "</nav>\n</header><main>\n";
            WriteSearch("", out);
            WriteDays(month, out);
            out << "</main>\n<script>" << PAGE_SCRIPT << "</script></body></html>\n";
            m_sink("mes-" + month + ".html", out.str());
        }
    }

    const std::vector<PageSource>& m_sources;
    const HtmlPage& m_page;
    const PageSink& m_sink;
    std::string m_name;

    // The database at hand.
    const PageSource* m_source = nullptr;
    Estabelecimento m_estabelecimento;

    std::int64_t m_number = 0;
    Day m_day;
    std::string m_heading;
    std::string m_documents;

    std::string m_previous, m_heldFile, m_heldTitle, m_heldSource, m_held;

    std::optional<TotaisCollector> m_totais;
    Totais m_sums;

    Sums m_total;
    std::vector<Day> m_days;
};

} // namespace

void WritePages(const std::vector<PageSource>& sources, const HtmlPage& page, const PageSink& sink)
{
    FolderWriter writer(sources, page, sink);
    writer.WriteDayPages();
    writer.WriteOverview();
}

} // namespace bancada::relatorio

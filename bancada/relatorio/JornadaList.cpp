#include "bancada/relatorio/JornadaList.h"

#include "bancada/Messages.h"
#include "bancada/relatorio/DisplayText.h"

namespace bancada::relatorio
{
namespace
{

class ListWriter final : public JornadaVisitor
{
  public:
    explicit ListWriter(std::ostream& out) : m_out(out) {}

    void BeginJornada(const Jornada& jornada) override
    {
        m_out << (m_empty ? "" : "\n") << "Z " << WithZeros(jornada.crz, 4);
        m_empty = false;
        if (jornada.reducao) {
            m_out << Tr("  day %1  closed %2  gross sales %3  grand total %4",
                        {Disarmed(FormatDateTime(jornada.reducao->movimento.Shown())),
                         Disarmed(FormatDateTime(jornada.reducao->emissao.Shown())),
                         AmountText(jornada.reducao->vb), AmountText(jornada.reducao->gt)});
        } else {
            m_out << "  " << Tr("not closed");
        }
        m_out << '\n';
    }

    void VisitDocumento(Documento& d) override
    {
        const bool fiscal = d.tipo == TipoDocumento::CUPOM_FISCAL;
        m_out << "  " << WithZeros(d.coo, 6) << "  "
              << AlignLeft(Cut(FormatDateTime(d.inicio.Shown()), 19), 19) << "  "
              << AlignLeft(Cut(Title(d), 29), 29) << "  " << (fiscal ? "CCF " : "GNF ")
              << WithZeros(fiscal ? d.ccf : d.gnf, 6);
        if (d.IsCupom() || d.reducao) {
            m_out << "  " << AlignRight(AmountText(d.total), 14);
        }
        if (const std::string mark = d.CanceladoMark(); !mark.empty()) {
            m_out << "  " << Disarmed(mark);
        } else if (fiscal && !d.HasFechamento()) {
            m_out << "  " << Tr("no closing");
        }
        m_out << '\n';
    }

    void EndJornada(const Jornada&) override {}

    bool IsEmpty() const { return m_empty; }

  private:
    std::ostream& m_out;
    bool m_empty = true;
};

} // namespace

void WriteList(Report& report, std::ostream& out)
{
    ListWriter writer(out);
    report.Walk(writer);
    if (writer.IsEmpty()) {
        out << Tr("No documents.") << "\n";
    }
}

} // namespace bancada::relatorio

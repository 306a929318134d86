#include "bancada/conferencia/Sequencias.h"
#include "bancada/conferencia/Texts.h"

namespace bancada::conferencia
{

void HoraSequence::Check(const Documento& documento)
{
    const std::string before = "after " + m_coo;
    if (documento.hora < m_hora) {
        // The clock is set in an intervention, which is left with a reading.
        const bool set = documento.tipo == "LX";
        m_context.findings.ReportExplained(set ? FindingKind::RELOGIO_ATRASADO : FindingKind::ORDEM,
                                           Coo(documento.coo),
                                           "of " + documento.hora + ", " + before + " of " + m_hora,
                                           false, DocumentOf(documento.coo.Value()));
    } else if (documento.hora < m_fim) {
        m_context.findings.ReportExplained(FindingKind::ORDEM, Coo(documento.coo),
                                           "of " + documento.hora + ", " + before +
                                               ", which ended " + m_fim,
                                           false, DocumentOf(documento.coo.Value()));
    }
    m_coo = Coo(documento.coo);
    m_hora = documento.hora;
    // The end of a number that came round may be that of another document.
    m_fim = m_context.Repeated().IsSingleOutro(documento.coo) ? documento.fim : documento.hora;
}

} // namespace bancada::conferencia

#include "bancada/Messages.h"
#include "bancada/conferencia/Sequencias.h"
#include "bancada/conferencia/Texts.h"

namespace bancada::conferencia
{

void HoraSequence::Check(const Documento& documento)
{

    if (documento.hora < m_hora) {
        // The clock is set in an intervention, which is left with a reading.
        const bool set = documento.tipo == "LX";
        m_context.findings.ReportExplained(
            set ? FindingKind::RELOGIO_ATRASADO : FindingKind::ORDEM, Coo(documento.coo),
            Tr("of %1, after %2 of %3", {documento.hora, m_coo, m_hora}), false,
            DocumentOf(documento.coo.Value()));
    } else if (documento.hora < m_fim) {
        m_context.findings.ReportExplained(
            FindingKind::ORDEM, Coo(documento.coo),
            Tr("of %1, after %2, which ended %3", {documento.hora, m_coo, m_fim}), false,
            DocumentOf(documento.coo.Value()));
    }
    m_coo = Coo(documento.coo);
    m_hora = documento.hora;
    // The end of a number that came round may be that of another document.
    m_fim = m_context.Repeated().IsSingleOutro(documento.coo) ? documento.fim : documento.hora;
}

} // namespace bancada::conferencia

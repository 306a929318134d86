#include "bancada/Messages.h"
#include "bancada/conferencia/Sequencias.h"
#include "bancada/conferencia/Texts.h"

namespace bancada::conferencia
{

void HoraSequence::Check(const Documento& documento)
{
    const bool hasEnd = documento.table == std::string("outros_documentos");
    const auto report = [&](FindingKind kind, const std::string& least, const std::string& text) {
        m_context.findings.ReportExplained(
            kind, Coo(documento.coo), text, false, DocumentOf(documento.coo.Value()),
            PlaceIn(documento, hasEnd ? "data_hora_inicio_emissao" : "data_hora_emissao",
                    Tr("none before %1", {least}), documento.hora));
    };
    if (documento.hora < m_hora) {
        report(IsSet(documento) ? FindingKind::RELOGIO_ATRASADO : FindingKind::ORDEM, m_hora,
               Tr("of %1, after %2 of %3", {documento.hora, m_coo, m_hora}));
    } else if (documento.hora < m_fim) {
        report(FindingKind::ORDEM, m_fim,
               Tr("of %1, after %2, which ended %3", {documento.hora, m_coo, m_fim}));
    }
    m_coo = Coo(documento.coo);
    m_hora = documento.hora;
    // The end of a number that came round may be that of another document.
    m_fim = m_context.Repeated().IsSingleOutro(documento.coo) ? documento.fim : documento.hora;
}

// Whether the clock was set before this document, as every check of times takes it. Of a number
// that came round only the reading tells.
bool HoraSequence::IsSet(const Documento& documento) const
{
    return m_context.Relogio().FindAt(documento.coo.Value()) != nullptr ||
           (documento.tipo == "LX" && !m_context.Repeated().IsSingleOutro(documento.coo));
}

} // namespace bancada::conferencia

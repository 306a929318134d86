#include "bancada/conferencia/Sequencias.h"
#include "bancada/conferencia/Texts.h"

namespace bancada::conferencia
{

void CrzSequence::Check(const Documento& documento)
{
    if (documento.tipo != "RZ" && m_last && documento.crz.Value() != m_last->Value()) {
        m_context.findings.Report(FindingKind::CRZ_DOCUMENTO, Coo(documento.coo),
                                  "filed under " + Crz(documento.crz) + ", the last Z is " +
                                      Crz(*m_last),
                                  DocumentOf(documento.coo.Value()));
        return;
    }
    m_last = documento.crz;
}

} // namespace bancada::conferencia

#include "bancada/Messages.h"
#include "bancada/conferencia/Sequencias.h"
#include "bancada/conferencia/Texts.h"

namespace bancada::conferencia
{

void CrzSequence::Check(const Documento& documento)
{
    if (documento.tipo != "RZ" && m_last && documento.crz.Value() != m_last->Value()) {
        m_context.findings.Report(
            FindingKind::CRZ_DOCUMENTO, Coo(documento.coo),
            Tr("filed under %1, the last Z is %2", {Crz(documento.crz), Crz(*m_last)}),
            DocumentOf(documento.coo.Value()),
            PlaceIn(documento, "cont_crz", Number(*m_last), Number(documento.crz)));
        return;
    }
    m_last = documento.crz;
    // Before the first Z the documents are filed under 1, as they are behind it.
    if (documento.tipo == "RZ") {
        m_receipts.Set(Following(documento.crz.Value(), 1));
    }
}

void CrzSequence::CheckFiscal(const Documento& documento)
{
    const std::optional<std::int64_t> expected = m_receipts.Value();
    if (!m_receipts.Accept(Following(documento.crz.Value(), 0))) {
        m_context.findings.Report(
            FindingKind::CUPOM_FORA_DO_DIA, Coo(documento.coo),
            Tr("filed under %1, the next Z is %2", {Crz(documento.crz), Crz(*expected)}),
            DocumentOf(documento.coo.Value()),
            PlaceIn(documento, "cont_crz", std::to_string(*expected), Number(documento.crz)));
    }
}

} // namespace bancada::conferencia

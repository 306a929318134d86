#include "bancada/Messages.h"
#include "bancada/conferencia/Sequencias.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Counter.h"
#include "bancada/leitura/Limits.h"

namespace bancada::conferencia
{

void CcfSequence::Check(const Documento& documento)
{
    const std::int64_t ccf = documento.contador.Value();
    if (m_last) {
        const std::int64_t steps = leitura::Steps(*m_last, ccf);
        if (steps == 0 || steps > leitura::LAST_COUNTER / 2) {
            m_context.findings.Report(
                FindingKind::CCF_REPETIDO, "CCF " + Number(documento.contador),
                Tr("%1 comes after %2", {Coo(documento.coo), "CCF " + std::to_string(*m_last)}),
                DocumentOf(documento.coo.Value()),
                PlaceIn(documento, "cont_ccf", std::to_string(Following(*m_last, 1)),
                        Number(documento.contador)));
            return;
        }
        if (steps > 1) {
            ReportMissing(documento, steps - 1);
        }
    }
    m_last = ccf;
}

void CcfSequence::ReportMissing(const Documento& documento, std::int64_t count)
{
    const std::int64_t first = Following(*m_last, 1);
    bool explained = m_context.Losses() != nullptr;
    for (std::int64_t i = 0; explained && i < count; ++i) {
        explained = m_context.Losses()->HasCcf(Following(first, i));
    }
    m_context.findings.ReportExplained(
        FindingKind::CCF_AUSENTE, "CCF " + NumbersText(first, count),
        Tr("no fiscal receipt%1 before %2",
           {m_gaps.Where(count, Absent::ANOTHER), Coo(documento.coo)}),
        explained);
    m_gaps.Consume(count, Absent::ANOTHER);
}

} // namespace bancada::conferencia

#include "bancada/Messages.h"
#include "bancada/conferencia/Sequencias.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Counter.h"
#include "bancada/leitura/Limits.h"

#include <algorithm>

namespace bancada::conferencia
{

CooSequence::CooSequence(CheckContext& context, Gaps& gaps)
    : m_context(context), m_gaps(gaps), m_reimpressoes(context.Database())
{
}

void CooSequence::Check(const Documento& documento)
{
    const std::int64_t coo = documento.coo.Value();
    const Acerto* acerto = m_context.Relogio().FindAt(coo);
    const std::int64_t reimpressoes = acerto == nullptr ? m_reimpressoes.CountUntil(documento.hora)
                                                        : m_reimpressoes.CountAcross(acerto->de);
    if (!m_last) {
        m_last = coo;
        return;
    }
    const std::int64_t steps = leitura::Steps(*m_last, coo);
    if (steps == 0 || steps > leitura::LAST_COUNTER / 2) {
        m_context.findings.Report(FindingKind::COO_REPETIDO, Coo(documento.coo),
                                  Tr("comes after %1", {Coo(*m_last)}), DocumentOf(coo),
                                  PlaceIn(documento, "cont_coo",
                                          std::to_string(Following(*m_last, 1)),
                                          Number(documento.coo)));
        return;
    }
    std::int64_t missing = steps - 1;
    m_mayBeThere = m_mayBeThere || missing > 0;
    // The cancellation stands in no row of its own: most come right behind their receipt, where a
    // number is kept for it.
    const std::int64_t kept = m_keepsNumber && missing > 0 ? 1 : 0;
    m_keepsNumber = m_keepsNumber && kept == 0;
    const std::int64_t reprinted = std::min(missing - kept, reimpressoes);
    m_reimpressoes.Consume(reprinted);
    missing -= reprinted;
    if (missing > 0) {
        const std::int64_t maybeEstornos = std::min(missing - kept, m_comprovantes);
        m_comprovantes -= maybeEstornos;
        m_gaps.Add({Following(*m_last, 1), missing, maybeEstornos,
                    m_awaitsCancelamento ? m_cancelados : 0, kept});
    }
    m_last = coo;
}

void CooSequence::Follow(const Documento& documento)
{
    const bool ends = documento.tipo == "CN" || documento.tipo == "RZ";
    // Only the receipt issued last can be cancelled, and only on its day.
    if (documento.fiscal || ends) {
        ReportCancelamento();
    }
    if (documento.fiscal) {
        m_awaitsCancelamento = documento.cancelamento != NumeroDoCancelamento::NONE;
        m_keepsNumber = m_awaitsCancelamento;
        m_cancelados += m_awaitsCancelamento ? 1 : 0;
        m_cancelado = documento;
        m_mayBeThere = false;
    } else if (ends) {
        m_awaitsCancelamento = false;
        m_keepsNumber = false;
    }
    if (documento.fiscal || ends) {
        m_comprovantes = 0;
    } else if (documento.tipo == "CC") {
        ++m_comprovantes;
    }
}

void CooSequence::ReportCancelamento()
{
    // A number that came round may have been cancelled for another receipt.
    if (m_awaitsCancelamento && m_cancelado.cancelamento == NumeroDoCancelamento::ONE &&
        !m_mayBeThere && !m_context.Repeated().HasComeRound(m_cancelado.coo)) {
        m_context.findings.Report(
            FindingKind::CANCELAMENTO_AUSENTE, Coo(m_cancelado.coo),
            Tr("cancelled, and the next documents leave no number for its cancellation"),
            DocumentOf(m_cancelado.coo.Value()), PlaceIn(m_cancelado, "id_cancelado", "N", "S"));
    }
}

void CooSequence::ReportMissing(Gap gap)
{
    if (gap.cancelado > m_lastCancelado) {
        m_lastCancelado = gap.cancelado;
        gap.first = Following(gap.first, gap.kept);
        --gap.count;
    }
    if (gap.count == 0) {
        return;
    }
    bool explained = m_context.Losses() != nullptr;
    for (std::int64_t i = 0; explained && i < gap.count; ++i) {
        explained = m_context.Losses()->HasCoo(Following(gap.first, i));
    }
    m_context.findings.ReportExplained(
        FindingKind::COO_AUSENTE, "COO " + NumbersText(gap.first, gap.count),
        Tr("no document, and nothing logged that took the number"), explained);
}

} // namespace bancada::conferencia

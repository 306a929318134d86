#include "bancada/Messages.h"
#include "bancada/conferencia/Sequencias.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Counter.h"
#include "bancada/leitura/Limits.h"

#include <vector>

namespace bancada::conferencia
{
namespace
{

bool TakesGnf(const std::string& tipo)
{
    return tipo == "CN" || tipo == "CC" || tipo == "RG" || tipo == "NC";
}

} // namespace

void GnfSequence::Check(const Documento& documento)
{
    const std::int64_t gnf = documento.contador.Value();
    const std::int64_t own = TakesGnf(documento.tipo) ? 1 : 0;
    if (!m_last) {
        m_last = BeforeEstornos(gnf, own);
    }
    if (m_last) {
        const std::int64_t steps = leitura::Steps(*m_last, gnf);
        if (steps < own || steps > leitura::LAST_COUNTER / 2) {
            m_context.findings.Report(
                FindingKind::GNF_REPETIDO, "GNF " + Number(documento.contador),
                Tr("%1 comes after %2", {Coo(documento.coo), "GNF " + std::to_string(*m_last)}),
                DocumentOf(documento.coo.Value()),
                PlaceIn(documento, "cont_gnf", std::to_string(Following(*m_last, own)),
                        Number(documento.contador)));
            return;
        }
        CheckAbsent(documento, steps - own);
    }
    m_last = gnf;
}

// No document showed a number before this one: what is known then are the reversals of payments
// that the numbers without a row leave room for.
std::optional<std::int64_t> GnfSequence::BeforeEstornos(std::int64_t gnf, std::int64_t own) const
{
    std::optional<std::int64_t> before;
    const std::int64_t room = m_gaps.Count();
    for (std::int64_t steps = own; steps < own + room; ++steps) {
        if (m_context.IsGnfDeEstorno(Following(gnf, -steps))) {
            before = Following(gnf, -steps - 1);
        }
    }
    return before;
}

// Non-fiscal documents without a row before this one: the reversals of payments, then as many
// reversals of vouchers as there can have been; the others are missing.
void GnfSequence::CheckAbsent(const Documento& documento, std::int64_t count)
{
    std::vector<std::int64_t> absent;
    for (std::int64_t i = 1; i <= count; ++i) {
        const std::int64_t gnf = Following(*m_last, i);
        if (m_context.IsGnfDeEstorno(gnf)) {
            m_gaps.Consume(1, Absent::ANOTHER);
        } else {
            absent.push_back(gnf);
        }
    }
    std::size_t begin = 0;
    for (; begin < absent.size() && m_gaps.MayHoldEstorno(); ++begin) {
        m_context.findings.ReportExplained(
            FindingKind::DOCUMENTO_SEM_LINHA, "GNF " + std::to_string(absent[begin]),
            Tr("reversal of a voucher%1 before %2",
               {m_gaps.Where(1, Absent::ESTORNO_COMPROVANTE), Coo(documento.coo)}),
            false);
        m_gaps.Consume(1, Absent::ESTORNO_COMPROVANTE);
    }
    while (begin < absent.size()) {
        std::size_t end = begin + 1;
        while (end < absent.size() && absent[end] == Following(absent[end - 1], 1)) {
            ++end;
        }
        const auto missing = static_cast<std::int64_t>(end - begin);
        m_context.findings.ReportExplained(
            FindingKind::GNF_AUSENTE, "GNF " + NumbersText(absent[begin], missing),
            Tr("no non-fiscal document%1 before %2",
               {m_gaps.Where(missing, Absent::ANOTHER), Coo(documento.coo)}),
            IsExplained(absent[begin], missing));
        m_gaps.Consume(missing, Absent::ANOTHER);
        begin = end;
    }
}

bool GnfSequence::IsExplained(std::int64_t first, std::int64_t count) const
{
    const LossIndex* losses = m_context.Losses();
    for (std::int64_t i = 0; i < count; ++i) {
        if (losses == nullptr || !losses->HasGnf(Following(first, i))) {
            return false;
        }
    }
    return true;
}

bool GnfSequence::ExplainAtEnd()
{
    const Gap& gap = m_gaps.First();
    if (gap.sawOutro) {
        return false;
    }
    const std::int64_t next = Following(m_last.value_or(0), 1);
    if (m_context.IsGnfDeEstorno(next)) {
        m_last = next;
        m_gaps.Consume(1, Absent::ANOTHER);
        return true;
    }
    if (gap.maybeEstornos > 0) {
        m_context.findings.ReportExplained(
            FindingKind::DOCUMENTO_SEM_LINHA, Coo(gap.first),
            Tr("may be the reversal of a voucher; no later document tells"), false);
        m_gaps.Consume(1, Absent::ESTORNO_COMPROVANTE);
        return true;
    }
    return false;
}

} // namespace bancada::conferencia

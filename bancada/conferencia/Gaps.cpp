#include "bancada/conferencia/Gaps.h"

#include "bancada/Messages.h"
#include "bancada/leitura/Limits.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace bancada::conferencia
{

std::int64_t Following(std::int64_t number, std::int64_t steps)
{
    // Brought onto the circle first: a row may hold any number.
    constexpr std::int64_t TURN = leitura::LAST_COUNTER;
    return (number % TURN + TURN - 1 + steps % TURN) % TURN + 1;
}

std::string NumbersText(std::int64_t first, std::int64_t count)
{
    const std::string text = std::to_string(first);
    return count == 1 ? text : Tr("%1 to %2", {text, std::to_string(Following(first, count - 1))});
}

void Gaps::Saw(bool fiscal)
{
    for (Gap& gap : m_gaps) {
        (fiscal ? gap.sawFiscal : gap.sawOutro) = true;
    }
}

std::optional<Gap> Gaps::TakeDecided()
{
    if (m_gaps.empty() || !m_gaps.front().sawFiscal || !m_gaps.front().sawOutro) {
        return std::nullopt;
    }
    const Gap gap = m_gaps.front();
    m_gaps.pop_front();
    return gap;
}

std::int64_t Gaps::Count() const
{
    return std::accumulate(m_gaps.begin(), m_gaps.end(), std::int64_t{0},
                           [](std::int64_t count, const Gap& gap) { return count + gap.count; });
}

bool Gaps::MayHoldEstorno() const
{
    return std::any_of(m_gaps.begin(), m_gaps.end(),
                       [](const Gap& gap) { return gap.maybeEstornos > 0; });
}

// The gap that the next explanation is for: one that can hold the reversal of a voucher when it is
// one, and one with other numbers first when it is not.
std::size_t Gaps::Find(Absent absent) const
{
    const auto found = std::find_if(m_gaps.begin(), m_gaps.end(), [absent](const Gap& gap) {
        return absent == Absent::ESTORNO_COMPROVANTE ? gap.maybeEstornos > 0
                                                     : gap.count > gap.maybeEstornos + gap.kept;
    });
    return found == m_gaps.end() ? 0 : static_cast<std::size_t>(found - m_gaps.begin());
}

// How many of its numbers the next explanation may take at once.
std::int64_t Gaps::CountOf(const Gap& gap)
{
    return gap.count > gap.kept ? gap.count - gap.kept : gap.count;
}

std::string Gaps::Where(std::int64_t count, Absent absent) const
{
    if (m_gaps.empty()) {
        return "";
    }
    const Gap& gap = m_gaps[Find(absent)];
    return " (COO " + NumbersText(gap.first, std::min(count, CountOf(gap))) + ")";
}

void Gaps::Consume(std::int64_t count, Absent absent)
{
    const bool estorno = absent == Absent::ESTORNO_COMPROVANTE;
    while (count > 0 && !m_gaps.empty()) {
        const std::size_t found = Find(absent);
        Gap& gap = m_gaps[found];
        const std::int64_t taken = estorno ? 1 : std::min(count, CountOf(gap));
        gap.first = Following(gap.first, taken);
        gap.count -= taken;
        gap.kept = std::min(gap.kept, gap.count);
        gap.maybeEstornos = std::min(gap.maybeEstornos - (estorno ? 1 : 0), gap.count);
        count -= taken;
        if (gap.count == 0) {
            m_gaps.erase(m_gaps.begin() + static_cast<std::ptrdiff_t>(found));
        }
    }
}

} // namespace bancada::conferencia

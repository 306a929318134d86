#include "bancada/gerador/Draw.h"

#include <limits>

namespace bancada
{

std::uint64_t Draw::Below(std::uint64_t count)
{
    // The draws above the last whole multiple would favour the first results.
    const std::uint64_t maximum = std::numeric_limits<std::uint64_t>::max();
    const std::uint64_t limit = maximum - maximum % count;
    std::uint64_t drawn = m_engine();
    while (drawn >= limit) {
        drawn = m_engine();
    }
    return drawn % count;
}

std::int64_t Draw::Between(std::int64_t low, std::int64_t high)
{
    return low + static_cast<std::int64_t>(Below(static_cast<std::uint64_t>(high - low) + 1));
}

std::size_t Draw::Weighted(std::initializer_list<int> weights)
{
    std::uint64_t sum = 0;
    for (const int weight : weights) {
        sum += static_cast<std::uint64_t>(weight);
    }
    std::uint64_t drawn = Below(sum);
    std::size_t position = 0;
    for (const int weight : weights) {
        const auto share = static_cast<std::uint64_t>(weight);
        if (drawn < share) {
            break;
        }
        drawn -= share;
        ++position;
    }
    return position;
}

} // namespace bancada

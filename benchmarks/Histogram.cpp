#include "benchmarks/Histogram.h"

#include <cmath>

double Histogram::Median() const
{
    std::int64_t before = 0;
    for (std::size_t step = 0; step < STEPS; ++step) {
        before += m_counts[step];
        if (2 * before >= m_count && m_counts[step] != 0) {
            return MiddleOf(step);
        }
    }
    return 0;
}

std::size_t Histogram::StepOf(std::uint64_t value)
{
    unsigned doublings = 0;
    while (value >> doublings >= std::uint64_t{2} << BITS) {
        ++doublings;
    }
    // The bits that are left have their highest one at BITS, except below 2^BITS.
    return (std::size_t{doublings} << BITS) + static_cast<std::size_t>(value >> doublings);
}

double Histogram::MiddleOf(std::size_t step)
{
    const std::size_t one = std::size_t{1} << BITS;
    if (step < 2 * one) {
        return static_cast<double>(step);
    }
    const int doublings = static_cast<int>(step / one) - 1;
    return std::ldexp(static_cast<double>(step % one + one) + 0.5, doublings);
}

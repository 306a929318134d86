// Durations, counted in steps of less than one percent.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

// Its size does not depend on what it has counted, so that counting does not grow the memory that
// is measured beside it.
class Histogram
{
  public:
    void Add(std::int64_t nanoseconds)
    {
        const auto value =
            nanoseconds < 0 ? std::uint64_t{0} : static_cast<std::uint64_t>(nanoseconds);
        ++m_counts[StepOf(value)];
        ++m_count;
        m_sum += value;
    }

    std::int64_t Count() const { return m_count; }
    // Both in nanoseconds, 0 if nothing was counted. The median is the middle of its step.
    double Mean() const
    {
        return m_count == 0 ? 0 : static_cast<double>(m_sum) / static_cast<double>(m_count);
    }
    double Median() const;

  private:
    // From 2^BITS up, each doubling is divided into 2^BITS steps; below, each value is one.
    static constexpr unsigned BITS = 7;
    static constexpr unsigned DOUBLINGS = 64 - BITS;
    static constexpr std::size_t STEPS = std::size_t{DOUBLINGS + 1} << BITS;

    static std::size_t StepOf(std::uint64_t value);
    static double MiddleOf(std::size_t step);

    std::array<std::uint32_t, STEPS> m_counts{};
    std::int64_t m_count = 0;
    std::uint64_t m_sum = 0;
};

// Draws that are the same on every platform for the same seed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <random>

namespace bancada
{

// std::mt19937_64 is the same everywhere, the distributions of the standard library are not: these
// are written out.
class Draw
{
  public:
    explicit Draw(std::uint64_t seed) : m_engine(seed) {}

    // 0 to count - 1, each as likely. REQUIRES: count > 0.
    std::uint64_t Below(std::uint64_t count);
    // `low` to `high`, both included. REQUIRES: low <= high.
    std::int64_t Between(std::int64_t low, std::int64_t high);
    // True `times` times in a thousand.
    bool PerMille(int times) { return Below(1000) < static_cast<std::uint64_t>(times); }
    // A position of the list, each as likely as its weight says. REQUIRES: the weights are not all
    // 0.
    std::size_t Weighted(std::initializer_list<int> weights);

  private:
    std::mt19937_64 m_engine;
};

} // namespace bancada

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
    explicit Draw(std::uint64_t semente) : m_gerador(semente) {}

    // 0 to quantos - 1, each as likely. REQUIRES: quantos > 0.
    std::uint64_t Ate(std::uint64_t quantos);
    // `deste` to `ateEste`, both included. REQUIRES: deste <= ateEste.
    std::int64_t Entre(std::int64_t deste, std::int64_t ateEste);
    // True `vezes` times in a thousand.
    bool PorMil(int vezes) { return Ate(1000) < static_cast<std::uint64_t>(vezes); }
    // A position of the list, each as likely as its weight says. REQUIRES: the weights are not all
    // 0.
    std::size_t Pesado(std::initializer_list<int> pesos);

  private:
    std::mt19937_64 m_gerador;
};

} // namespace bancada

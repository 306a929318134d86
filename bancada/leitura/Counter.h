// The circle on which the documents' counters go: 1 follows the last number.
#pragma once

#include <cstdint>

namespace bancada::leitura
{

// The number that follows: 1 behind the last one, and behind any beyond it.
std::int64_t NextNumber(std::int64_t number);

// How many steps lead from `from` on to `to`, 0 to LAST_COUNTER - 1. Defined for any two numbers.
std::int64_t Steps(std::int64_t from, std::int64_t to);

// Whether `a` comes before `b`, of two different numbers: the one from which the other is less than
// half a turn ahead. Defined for any two numbers, and false for equal ones.
bool ComesBefore(std::int64_t a, std::int64_t b);

} // namespace bancada::leitura

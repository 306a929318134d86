#include "bancada/leitura/Counter.h"

#include "bancada/leitura/Limits.h"

namespace bancada::leitura
{

std::int64_t NextNumber(std::int64_t number)
{
    return number >= LAST_COUNTER ? 1 : number + 1;
}

std::int64_t Steps(std::int64_t from, std::int64_t to)
{
    // Each is brought onto the circle first: a row may hold any number.
    const std::int64_t difference = (to % LAST_COUNTER - from % LAST_COUNTER) % LAST_COUNTER;
    return difference < 0 ? difference + LAST_COUNTER : difference;
}

bool ComesBefore(std::int64_t a, std::int64_t b)
{
    // Through unsigned, as the distance of two hostile numbers has 64 bits.
    const auto low = static_cast<std::uint64_t>(a < b ? a : b);
    const auto high = static_cast<std::uint64_t>(a < b ? b : a);
    const bool sameTurn = high - low <= LAST_COUNTER / 2;
    return a != b && (a < b) == sameTurn;
}

} // namespace bancada::leitura

#include "bancada/leitura/Amount.h"

#include <algorithm>
#include <cmath>
#include <sqlite3.h>
#include <utility>

namespace bancada::leitura
{
namespace
{

std::int64_t PowerOf10(int exponent)
{
    std::int64_t power = 1;
    while (exponent-- > 0) {
        power *= 10;
    }
    return power;
}

// A sum of two that cannot be formed. What one of them was is told by that one.
Amount UnknownSum(int decimals)
{
    return {CellState::TOO_LARGE, "?", decimals};
}

std::string Digits(const Amount& amount, int minDecimals, char point, const char* thousands)
{
    const bool negative = amount.Units() < 0;
    // Through unsigned, so that the most negative value has its digits too.
    const std::uint64_t magnitude = negative ? 0U - static_cast<std::uint64_t>(amount.Units())
                                             : static_cast<std::uint64_t>(amount.Units());
    const auto scale = static_cast<std::uint64_t>(PowerOf10(amount.Decimals()));

    const std::string whole = std::to_string(magnitude / scale);
    std::string text = negative ? "-" : "";
    for (std::size_t i = 0; i < whole.size(); ++i) {
        if (i > 0 && (whole.size() - i) % 3 == 0) {
            text += thousands;
        }
        text += whole[i];
    }

    std::string fraction = std::to_string(scale + magnitude % scale).substr(1);
    while (fraction.size() > static_cast<std::size_t>(minDecimals) && fraction.back() == '0') {
        fraction.pop_back();
    }
    if (!fraction.empty()) {
        text += point;
        text += fraction;
    }
    return text;
}

} // namespace

Amount::Amount(CellState state, std::string raw, int decimals)
    : Cell(state, std::move(raw)), m_decimals(decimals)
{
}

Amount Amount::WithDecimals(int decimals) const
{
    if (!IsKnown()) {
        return {State(), Raw(), decimals};
    }
    if (decimals == m_decimals) {
        return *this;
    }
    Amount other(0, decimals);
    if (decimals > m_decimals) {
        if (!ScaleUp(decimals, other.m_units)) {
            return UnknownSum(decimals);
        }
        other.m_exact = m_exact;
        return other;
    }
    const std::int64_t divisor = PowerOf10(m_decimals - decimals);
    const std::int64_t rest = m_units % divisor;
    other.m_units = m_units / divisor;
    if (std::abs(rest) >= divisor / 2) {
        other.m_units += rest < 0 ? -1 : 1;
    }
    other.m_exact = m_exact && rest == 0;
    return other;
}

bool Amount::ScaleUp(int decimals, std::int64_t& units) const
{
    return IsKnown() && !__builtin_mul_overflow(m_units, PowerOf10(decimals - m_decimals), &units);
}

Amount ReadAmount(sqlite3_stmt* row, int column, Nullable nullable, int decimals)
{
    const std::int64_t scale = PowerOf10(decimals);
    switch (sqlite3_column_type(row, column)) {
    case SQLITE_INTEGER: {
        std::int64_t units = 0;
        if (__builtin_mul_overflow(std::int64_t{sqlite3_column_int64(row, column)}, scale,
                                   &units)) {
            return {CellState::TOO_LARGE, RawText(row, column), decimals};
        }
        return {units, decimals};
    }
    case SQLITE_FLOAT: {
        const double value = sqlite3_column_double(row, column);
        const double scaled = std::round(value * static_cast<double>(scale));
        // Below 2^63, which is itself a double; false for an infinity.
        constexpr double LIMIT = 9223372036854775808.0;
        if (!(std::fabs(scaled) < LIMIT)) {
            return {CellState::TOO_LARGE, RawText(row, column), decimals};
        }
        Amount amount(static_cast<std::int64_t>(scaled), decimals);
        // The quotient of two exact doubles is the double nearest to the decimal number, which is
        // the one that the engine made of its text. What the engine took off a row's amount itself,
        // as a second reversal does, is off by less than this of a unit.
        constexpr double EXACT = 9007199254740992.0;
        constexpr double RECKONED = 1e-4;
        const double off = value - scaled / static_cast<double>(scale);
        amount.m_exact =
            std::fabs(scaled) < EXACT && std::fabs(off) * static_cast<double>(scale) < RECKONED;
        return amount;
    }
    case SQLITE_NULL:
        return nullable == Nullable::YES ? Amount(CellState::LEFT_OUT, {}, decimals)
                                         : Amount(CellState::NULL_VALUE, "NULL", decimals);
    default:
        return {CellState::OTHER_KIND, RawText(row, column), decimals};
    }
}

Amount operator+(const Amount& a, const Amount& b)
{
    const int decimals = std::max(a.m_decimals, b.m_decimals);
    std::int64_t left = 0;
    std::int64_t right = 0;
    std::int64_t units = 0;
    if (!a.ScaleUp(decimals, left) || !b.ScaleUp(decimals, right) ||
        __builtin_add_overflow(left, right, &units)) {
        return UnknownSum(decimals);
    }
    return {units, decimals};
}

Amount operator-(const Amount& a, const Amount& b)
{
    const int decimals = std::max(a.m_decimals, b.m_decimals);
    std::int64_t left = 0;
    std::int64_t right = 0;
    std::int64_t units = 0;
    if (!a.ScaleUp(decimals, left) || !b.ScaleUp(decimals, right) ||
        __builtin_sub_overflow(left, right, &units)) {
        return UnknownSum(decimals);
    }
    return {units, decimals};
}

bool IsSame(const Amount& a, const Amount& b)
{
    return (a - b).IsZero();
}

std::string TillText(const Amount& amount, int minDecimals)
{
    return amount.IsKnown() ? Digits(amount, minDecimals, ',', ".") : amount.Raw();
}

std::string PointText(const Amount& amount, int minDecimals)
{
    return amount.IsKnown() ? Digits(amount, minDecimals, '.', "") : "";
}

} // namespace bancada::leitura

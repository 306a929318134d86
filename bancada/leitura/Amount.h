// Exact decimal amounts: money, quantities and percentages of the database.
#pragma once

#include "bancada/leitura/Cell.h"

#include <cstdint>
#include <string>

struct sqlite3_stmt;

namespace bancada::leitura
{

// Units of 10^-Decimals(), exact. One rule for what does not fit: an amount, a sum or a product
// that leaves 64 bits is not known, and neither is anything that is reckoned from it. So no amount
// wraps, and none is taken for zero.
class Amount : public Cell
{
  public:
    // Zero.
    Amount() = default;
    // `units` of 10^-decimals; decimals 0 to 6.
    Amount(std::int64_t units, int decimals) : m_units(units), m_decimals(decimals) {}
    // One that is not known.
    Amount(CellState state, std::string raw, int decimals);

    // 0 where it is not known.
    std::int64_t Units() const { return m_units; }
    int Decimals() const { return m_decimals; }
    // Known, and zero.
    bool IsZero() const { return IsKnown() && m_units == 0; }
    // False where the row's number has more decimals than the column is for, or more digits than
    // the engine keeps of a fraction: the units are then the nearest.
    bool IsExact() const { return m_exact; }

    // The same amount with other decimals. With more it is exact, or not known where it does not
    // fit; with fewer it is rounded, half away from zero.
    Amount WithDecimals(int decimals) const;

  private:
    friend Amount ReadAmount(sqlite3_stmt* row, int column, Nullable nullable, int decimals);
    friend Amount operator+(const Amount& a, const Amount& b);
    friend Amount operator-(const Amount& a, const Amount& b);

    // The units with as many decimals or more; false where it is not known or they do not fit.
    bool ScaleUp(int decimals, std::int64_t& units) const;

    std::int64_t m_units = 0;
    int m_decimals = 2;
    bool m_exact = true;
};

// Reads the cell in `column`, from 0, of the row at hand.
//
// The numeric columns keep what was written as 12.50 as a binary REAL or, when it is whole, as an
// INTEGER. Of a number written with at most `decimals` decimals, the nearest integer to
// value * 10^decimals is exactly what was written, as long as it has no more than 15 digits. This
// is the one place that does it. A text, a blob, an infinity or a number beyond 64 bits is not
// known.
Amount ReadAmount(sqlite3_stmt* row, int column, Nullable nullable, int decimals);

// The exact sum and difference; the result has the decimals of the term that has more. Not known
// where a term is not, or where the result does not fit.
Amount operator+(const Amount& a, const Amount& b);
Amount operator-(const Amount& a, const Amount& b);

// Whether both are known and the same number, whatever their decimals.
bool IsSame(const Amount& a, const Amount& b);

// As the till writes it: 1.234,56. Zeros at the end are left out down to `minDecimals` decimals.
// What stands in the row, where the amount is not known; "?" for a sum that is not.
std::string TillText(const Amount& amount, int minDecimals = 2);

// As programs read it: -1234.56, without zeros at the end down to `minDecimals` decimals. Empty
// where the amount is not known.
std::string PointText(const Amount& amount, int minDecimals = 2);

} // namespace bancada::leitura

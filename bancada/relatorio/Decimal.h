#pragma once

#include <cstdint>
#include <string>

#include <sqlite3.h>

namespace bancada::relatorio
{

// A decimal number of the database: units of 10^-casas, exact.
struct Decimal {
    std::int64_t unidades = 0;
    int casas = 2;
    // False where the column held no number, or one that does not fit; `unidades` is then 0.
    bool legivel = true;

    bool zero() const { return legivel && unidades == 0; }
};

// The value of a column with `casas` decimals (0 to 6).
///
// The numeric columns keep what was written as 12.50 as a binary REAL or, when it is whole, as an
// INTEGER. Of a number written with at most `casas` decimals, the nearest integer to
// value * 10^casas is exactly what was written, as long as it has no more than 15 digits; this is
// the one place that does it. NULL counts as zero: it is what a column that an insert does not
// name holds. A text, a blob, an infinity or a number beyond 64 bits is not legible.
Decimal lerDecimal(sqlite3_stmt* stmt, int coluna, int casas);

// The same units with more decimals. `casas` is at least `valor.casas`.
Decimal comCasas(const Decimal& valor, int casas);

// The exact sum and difference; both have the same `casas`. Not legible where a term is not, or
// where the result does not fit.
Decimal operator+(const Decimal& a, const Decimal& b);
Decimal operator-(const Decimal& a, const Decimal& b);

// As the till writes it: 1.234,56. Zeros at the end are left out down to `minCasas` decimals.
// "?" where the value is not legible.
std::string textoBr(const Decimal& valor, int minCasas = 2);

// As programs read it: -1234.56, always with all its decimals down to `minCasas`. Empty where the
// value is not legible.
std::string textoPonto(const Decimal& valor, int minCasas = 2);

} // namespace bancada::relatorio

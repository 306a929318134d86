#include "libs/Financial.h"

#include "libs/Digits.h"
#include "libs/Magnitude.h"

#include <cstddef>
#include <cstring>

namespace
{

constexpr int DEFAULT_DECIMALS = 2;

// What one unit of the n-th decimal counts in `nr`.
constexpr UINT32 UNIT_OF_DECIMALS[Financial::DECIMALS + 1] = {10000, 1000, 100, 10, 1};

// The extremes have 29 digits, 25 of them before the decimals.
constexpr int MAX_WHOLE_DIGITS = BigInt::TEXT_SIZE - 2 - Financial::DECIMALS;

// The longest text before the decimals: sign, digits, a point before every three but the first
// group, decimal mark.
constexpr int WHOLE_TEXT_SIZE = 1 + MAX_WHOLE_DIGITS + (MAX_WHOLE_DIGITS - 1) / 3 + 1;
static_assert(WHOLE_TEXT_SIZE == sizeof "-3.961.408.125.713.216.879.677.197," - 1);

struct Style {
    bool grouped;
    char decimalMark; // NUL: none
};

Style StyleOf(FINANCIAL_STR_TIPO tipo)
{
    switch (tipo) {
    case FIN_STR_2:
        return {false, ','};
    case FIN_STR_3:
        return {false, '.'};
    case FIN_STR_4:
        return {false, '\0'};
    case FIN_STR_DEFAULT:
    case FIN_STR_1:
        break;
    }
    return {true, ','};
}

char* WriteThreeDigitsBefore(char* end, UINT32 group)
{
    WritePair(end - 2, group % 100);
    end[-3] = static_cast<char>('0' + group / 100);
    return end - 3;
}

// Writes the digits of `whole` so that they end before `end`; answers the first.
char* WriteWholeBefore(char* end, Magnitude whole, bool grouped)
{
    while (!whole.FitsOneWord() || whole.word[0] >= 1000) {
        end = WriteThreeDigitsBefore(end, whole.CutBy<1000>());
        if (grouped) {
            *--end = '.';
        }
    }
    return WriteDigitsBefore(end, whole.word[0]);
}

} // namespace

Financial Financial::FromCents(std::int64_t cents)
{
    return Financial(BigInt::FromInt64(cents) * (SCALE / 100));
}

Financial Financial::Times(const BigInt& factor, const BigInt& divisor, int decimals,
                           Rounding rounding) const
{
    const BigInt product = nr * factor;
    if (decimals == DECIMALS) {
        return Financial(product.DividedBy(divisor, rounding));
    }
    // The divisor times the unit might leave the range, so the division is done in two steps. It
    // is still one rounding: the unit is even, its half is a whole number, and a fraction cut from
    // the first quotient cannot change on which side of that half the value lies.
    return Financial(product.DividedBy(divisor, Rounding::TOWARD_ZERO)).Rounded(decimals, rounding);
}

Financial Financial::Rounded(int decimals, Rounding rounding) const
{
    const BigInt unit(static_cast<int>(UNIT_OF_DECIMALS[decimals]));
    return Financial(nr.DividedBy(unit, rounding) * unit);
}

char* Financial::ToString(char* out, int size, FINANCIAL_STR_TIPO tipo, int decimals, short) const
{
    if (size < 1) {
        return out;
    }
    if (decimals <= 0) {
        decimals = DEFAULT_DECIMALS;
    }
    const int heldDecimals = decimals < DECIMALS ? decimals : DECIMALS;
    const int zeros = decimals - heldDecimals;
    const Style style = StyleOf(tipo);

    // The whole part is written backwards from the decimals' place, all the decimals that `nr`
    // holds forwards from it; the cut leaves the last of them out.
    char text[WHOLE_TEXT_SIZE + DECIMALS];
    char* const place = text + WHOLE_TEXT_SIZE;
    Magnitude whole = Magnitude::Of(nr);
    UINT32 fraction = whole.CutBy<SCALE>();
    const bool isZeroAsWritten = whole.IsZero() && fraction < UNIT_OF_DECIMALS[heldDecimals];
    WritePair(place, fraction / 100);
    WritePair(place + 2, fraction % 100);
    char* first = place;
    if (style.decimalMark != '\0') {
        *--first = style.decimalMark;
    }
    first = WriteWholeBefore(first, whole, style.grouped);
    if (IsNegative() && !isZeroAsWritten) {
        *--first = '-';
    }

    const int length = static_cast<int>(place + heldDecimals - first);
    if (length >= size - zeros) {
        *out = '\0';
        return out;
    }
    std::memcpy(out, first, static_cast<std::size_t>(length));
    char* end = out + length;
    for (int i = 0; i < zeros; ++i) {
        *end++ = '0';
    }
    *end = '\0';
    return out;
}

#include "tests/libs/DecimalText.h"

#include "libs/Magnitude.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace
{

constexpr int WORD_BITS = 32;

// The extremes have 29 digits, 25 of them before the decimals.
constexpr int MAX_WHOLE_DIGITS = BigInt::TEXT_SIZE - 2 - Financial::DECIMALS;

BigInt Words(const Magnitude& magnitude)
{
    BigInt value;
    std::memcpy(value.number, magnitude.word, sizeof value.number);
    return value;
}

} // namespace

bool FromText(const char* text, BigInt& out)
{
    const bool negative = *text == '-';
    if (negative) {
        ++text;
    }
    if (*text == '\0') {
        return false;
    }

    Magnitude magnitude = {};
    for (; *text != '\0'; ++text) {
        if (*text < '0' || *text > '9') {
            return false;
        }
        std::uint64_t carry = static_cast<UINT32>(*text - '0');
        for (UINT32& word : magnitude.word) {
            carry += std::uint64_t{word} * 10;
            word = static_cast<UINT32>(carry);
            carry >>= WORD_BITS;
        }
        if (carry != 0) {
            return false;
        }
    }
    BigInt value = Words(magnitude);
    if (negative) {
        value = -value;
    }
    // A magnitude beyond the range comes out with the other sign.
    if (!magnitude.IsZero() && value.IsNegative() != negative) {
        return false;
    }
    out = value;
    return true;
}

char* ToText(const BigInt& value, char* out, int size)
{
    if (size < 1) {
        return out;
    }
    char text[BigInt::TEXT_SIZE];
    char* first = text + BigInt::TEXT_SIZE - 1;
    *first = '\0';
    Magnitude rest = Magnitude::Of(value);
    do {
        *--first = static_cast<char>('0' + rest.CutBy<10>());
    } while (!rest.IsZero());
    if (value.IsNegative()) {
        *--first = '-';
    }

    const int bytes = static_cast<int>(text + BigInt::TEXT_SIZE - first);
    if (bytes <= size) {
        std::memcpy(out, first, static_cast<std::size_t>(bytes));
    } else {
        *out = '\0';
    }
    return out;
}

bool FromText(const char* text, Financial& out)
{
    const char* const digits = "0123456789";
    const bool negative = *text == '-';
    const char* whole = negative ? text + 1 : text;
    std::size_t wholeDigits = std::strspn(whole, digits);
    if (wholeDigits == 0) {
        return false;
    }
    const char* decimals = "";
    std::size_t decimalDigits = 0;
    const char* end = whole + wholeDigits;
    if (*end == '.') {
        decimals = end + 1;
        decimalDigits = std::strspn(decimals, digits);
        if (decimalDigits == 0 || decimalDigits > Financial::DECIMALS) {
            return false;
        }
        end = decimals + decimalDigits;
    }
    if (*end != '\0') {
        return false;
    }

    // The count's own digits: the whole ones, then all the decimals that `nr` holds.
    while (*whole == '0') {
        ++whole;
        --wholeDigits;
    }
    char count[1 + MAX_WHOLE_DIGITS + Financial::DECIMALS + 1] = {};
    if (wholeDigits > MAX_WHOLE_DIGITS) {
        return false;
    }
    char* next = count;
    if (negative) {
        *next++ = '-';
    }
    std::memcpy(next, whole, wholeDigits);
    next += wholeDigits;
    std::memset(next, '0', Financial::DECIMALS);
    std::memcpy(next, decimals, decimalDigits);
    return FromText(count, out.nr);
}

// BigInt and Financial against 128-bit integers: two values of 96 bits and what else an operation
// takes, from the bytes that the fuzzer makes up.
#include "libs/Financial.h"
#include "tests/fuzz/Decimal128.h"
#include "tests/fuzz/Hold.h"

#include <cstring>
#include <fuzzer/FuzzedDataProvider.h>
#include <vector>

namespace
{

BigInt Value(FuzzedDataProvider& data)
{
    BigInt value;
    for (UINT32& word : value.number) {
        word = data.ConsumeIntegral<UINT32>();
    }
    return value;
}

Wide RoundedQuotient(Wide a, Wide b, Rounding rounding)
{
    const Wide quotient = a / b;
    const Wide rest = a % b < 0 ? -(a % b) : a % b;
    const Wide by = b < 0 ? -b : b;
    if (rounding == Rounding::TOWARD_ZERO || 2 * rest < by) {
        return quotient;
    }
    return (a < 0) != (b < 0) ? quotient - 1 : quotient + 1;
}

void HoldArithmetic(const BigInt& x, const BigInt& y, Rounding rounding)
{
    const Wide a = WideOf(x);
    const Wide b = WideOf(y);
    Hold(WideOf(x + y) == Wrapped(a + b));
    Hold(WideOf(x - y) == Wrapped(a - b));
    Hold(WideOf(-x) == Wrapped(-a));
    const int compared = BigInt::Compare(x, y);
    Hold((compared < 0) == (a < b) && (compared > 0) == (a > b));
    if (b == 0) {
        Hold(x.DividedBy(y, rounding).IsZero());
    } else {
        Hold(WideOf(x.DividedBy(y, rounding)) == Wrapped(RoundedQuotient(a, b, rounding)));
    }
    // Of a product the compiler has 128 bits: of 96 times 31 they are enough.
    const int small = static_cast<int>(y.number[0] >> 1);
    Hold(WideOf(x * BigInt(small)) == Wrapped(a * small));
}

void HoldText(const BigInt& value, FINANCIAL_STR_TIPO style, int decimals, int size)
{
    const int written = decimals <= 0 ? 2 : decimals;
    const bool grouped = style == FIN_STR_DEFAULT || style == FIN_STR_1;
    const char* const mark = style == FIN_STR_3 ? "." : style == FIN_STR_4 ? "" : ",";
    std::string expected = MoneyOf(WideOf(value), written, grouped, mark);
    if (expected.size() >= static_cast<std::size_t>(size)) {
        expected.clear();
    }
    // Of exactly that size, so that the sanitizer sees a byte too many.
    std::vector<char> text(static_cast<std::size_t>(size), 'x');
    Hold(Financial(value).ToString(text.data(), size, style, decimals, 0) == text.data());
    Hold(expected == text.data());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    const BigInt x = Value(data);
    const BigInt y = Value(data);
    const Rounding rounding = data.ConsumeBool() ? Rounding::HALF_UP : Rounding::TOWARD_ZERO;
    HoldArithmetic(x, y, rounding);
    HoldText(x, static_cast<FINANCIAL_STR_TIPO>(data.ConsumeIntegralInRange(0, 4)),
             data.ConsumeIntegralInRange(-2, 40), data.ConsumeIntegralInRange(1, 90));
    return 0;
}

#include "bancada/tape/DecimalText.h"

#include <algorithm>

namespace bancada
{
namespace
{

bool AreDigits(std::string_view text, int atMost)
{
    return !text.empty() && text.size() <= static_cast<std::size_t>(atMost) &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

bool ParseDecimal(std::string_view text, int maxDigits, int maxDecimals, Decimal& out)
{
    const std::size_t point = text.find('.');
    const std::string_view whole = text.substr(0, point);
    std::string_view decimals;
    if (!AreDigits(whole, maxDigits)) {
        return false;
    }
    if (point != std::string_view::npos) {
        decimals = text.substr(point + 1);
        if (!AreDigits(decimals, maxDecimals)) {
            return false;
        }
    }

    Decimal result;
    for (const std::string_view part : {whole, decimals}) {
        for (const char digit : part) {
            result.unscaled = result.unscaled * 10 + (digit - '0');
        }
    }
    result.decimals = static_cast<int>(decimals.size());
    out = result;
    return true;
}

} // namespace bancada

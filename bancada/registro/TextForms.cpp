#include "bancada/registro/TextForms.h"

#include <algorithm>
#include <cstring>

namespace bancada
{

char* CopyText(const std::string& text, char* out, int size)
{
    if (size < 1) {
        return out;
    }
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(size) - 1);
    std::memcpy(out, text.data(), length);
    out[length] = '\0';
    return out;
}

std::string DecimalToText(const Decimal& numero)
{
    const bool negative = numero.unscaled < 0;
    std::string digits = std::to_string(numero.unscaled).substr(negative ? 1 : 0);
    const auto decimals = static_cast<std::size_t>(std::max(numero.decimals, 0));
    if (decimals > 0) {
        if (digits.size() <= decimals) {
            digits.insert(0, decimals + 1 - digits.size(), '0');
        }
        digits.insert(digits.size() - decimals, 1, ',');
    }
    return negative ? "-" + digits : digits;
}

std::string ValorToText(const Financial& valor)
{
    char text[BigInt::TEXT_SIZE + 4];
    return valor.ToString(text, sizeof text, FIN_STR_3, 2, 0);
}

std::string DateToText(RtcAbsoluteTime instant)
{
    char text[16];
    return instant.ToStrDate("yyyy-mm-dd", text);
}

std::string InstantToText(RtcAbsoluteTime instant)
{
    char text[24];
    return instant.ToStrDateTime("yyyy-mm-dd", "hh:mm:ss", text);
}

} // namespace bancada

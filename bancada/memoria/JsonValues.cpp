#include "bancada/memoria/JsonValues.h"

#include "bancada/Messages.h"
#include "bancada/registro/TextForms.h"
#include "bancada/tape/DecimalText.h"
#include "bancada/tape/FieldLimits.h"
#include "bancada/tape/Instant.h"

#include <algorithm>
#include <sodium.h>

namespace bancada
{
namespace
{

// Before the point: the law's grand total has 18 digits, two of them decimals.
constexpr int MEMORY_MONEY_DIGITS = 16;
static_assert(MEMORY_MONEY_DIGITS + MONEY_DECIMALS <= 18, "18 digits fit 64 bits");

const std::string& TextOf(const nlohmann::json& json, const std::string& due)
{
    if (!json.is_string()) {
        throw InvalidValue(due);
    }
    return json.get_ref<const std::string&>();
}

} // namespace

std::string MoneyToJson(const Financial& value)
{
    return ValorToText(value);
}

std::string TextToJson(const std::string& text)
{
    return nlohmann::json(text).dump();
}

std::string DecimalToJson(const Decimal& number)
{
    std::string text = DecimalToText(number);
    std::replace(text.begin(), text.end(), ',', '.');
    return text;
}

std::string InstantToJson(RtcAbsoluteTime instant)
{
    if (instant.s == matlong[0]) {
        return "";
    }
    char text[32];
    return instant.ToStrDateTime("yyyy-mm-dd", "hh:mm:ss", text);
}

std::string BytesToJson(const std::array<std::uint8_t, 32>& bytes)
{
    char text[2 * sizeof bytes + 1];
    return sodium_bin2hex(text, sizeof text, bytes.data(), bytes.size());
}

Financial MoneyFromJson(const nlohmann::json& json)
{
    const char* due = Tr("money, a decimal text such as \"12.50\", is due");
    Decimal decimal;
    if (!ParseDecimal(TextOf(json, due), MEMORY_MONEY_DIGITS, MONEY_DECIMALS, decimal)) {
        throw InvalidValue(due);
    }
    for (; decimal.decimals < MONEY_DECIMALS; ++decimal.decimals) {
        decimal.unscaled *= 10;
    }
    return Financial::FromCents(decimal.unscaled);
}

Decimal DecimalFromJson(const nlohmann::json& json, int maxDigits, int maxDecimals)
{
    const std::string due = Tr("a decimal text with up to %1 digits and %2 decimals is due",
                               {std::to_string(maxDigits), std::to_string(maxDecimals)});
    Decimal decimal;
    if (!ParseDecimal(TextOf(json, due), maxDigits, maxDecimals, decimal)) {
        throw InvalidValue(due);
    }
    return decimal;
}

RtcAbsoluteTime InstantFromJson(const nlohmann::json& json)
{
    const char* due = Tr("an instant \"YYYY-MM-DD hh:mm:ss\", or \"\" for none, is due");
    const std::string& text = TextOf(json, due);
    RtcAbsoluteTime instant(matlong[0]);
    if (!text.empty() && !ParseInstant(text, instant)) {
        throw InvalidValue(due);
    }
    return instant;
}

std::array<std::uint8_t, 32> BytesFromJson(const nlohmann::json& json)
{
    const char* due = Tr("64 hexadecimal digits are due");
    if (!json.is_string()) {
        throw InvalidValue(due);
    }
    const auto& text = json.get_ref<const std::string&>();
    std::array<std::uint8_t, 32> bytes{};
    std::size_t count = 0;
    if (text.size() != 2 * bytes.size() ||
        sodium_hex2bin(bytes.data(), bytes.size(), text.data(), text.size(), nullptr, &count,
                       nullptr) != 0 ||
        count != bytes.size()) {
        throw InvalidValue(due);
    }
    return bytes;
}

std::int64_t IntegerFromJson(const nlohmann::json& json, std::int64_t min, std::int64_t max)
{
    // An unsigned one may be beyond int64_t.
    const bool fits =
        json.is_number_integer() && (!json.is_number_unsigned() ||
                                     json.get<std::uint64_t>() <= static_cast<std::uint64_t>(max));
    const std::int64_t value = fits ? json.get<std::int64_t>() : 0;
    if (!fits || value < min || value > max) {
        throw InvalidValue(
            Tr("an integer from %1 to %2 is due", {std::to_string(min), std::to_string(max)}));
    }
    return value;
}

std::string TextFromJson(const nlohmann::json& json, std::size_t maxBytes)
{
    const std::string& text = TextOf(json, Tr("a text is due"));
    if (text.size() > maxBytes) {
        throw InvalidValue(Tr("a text has at most %1 bytes", {std::to_string(maxBytes)}));
    }
    if (text.find('\0') != std::string::npos) {
        throw InvalidValue(Tr("a text has no NUL"));
    }
    return text;
}

bool FlagFromJson(const nlohmann::json& json)
{
    if (!json.is_boolean()) {
        throw InvalidValue(Tr("true or false is due"));
    }
    return json.get<bool>();
}

} // namespace bancada

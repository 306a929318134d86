// Single values as a memory file holds them.
#pragma once

#include "RtcClasses.h"
#include "bancada/registro/Decimal.h"
#include "libs/Financial.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

namespace bancada
{

// A value is not what is due. what() says what is, without the place.
class InvalidValue : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

// The field of a changed list that has its length.
inline constexpr char LIST_LENGTH[] = "tamanho";

std::string MoneyToJson(const Financial& value);    // "1234.50"
std::string DecimalToJson(const Decimal& number);   // "1.500" for {1500, 3}
std::string InstantToJson(RtcAbsoluteTime instant); // "2024-01-31 08:00:00"; "" if unset
std::string BytesToJson(const std::array<std::uint8_t, 32>& bytes); // hexadecimal
std::string TextToJson(const std::string& text);                    // with its quotes, and escaped

// Each reads the form above, and throws InvalidValue for anything else.
[[nodiscard]] Financial
MoneyFromJson(const nlohmann::json& json); // not negative, up to 16 digits and 2 decimals
[[nodiscard]] Decimal DecimalFromJson(const nlohmann::json& json, int maxDigits, int maxDecimals);
[[nodiscard]] RtcAbsoluteTime InstantFromJson(const nlohmann::json& json);
[[nodiscard]] std::array<std::uint8_t, 32> BytesFromJson(const nlohmann::json& json);

[[nodiscard]] std::int64_t IntegerFromJson(const nlohmann::json& json, std::int64_t min,
                                           std::int64_t max);
[[nodiscard]] std::string TextFromJson(const nlohmann::json& json,
                                       std::size_t maxBytes); // without NUL
[[nodiscard]] bool FlagFromJson(const nlohmann::json& json);

} // namespace bancada

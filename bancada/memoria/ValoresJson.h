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
class ValorInvalido : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

std::string JsonDeValor(const Financial& valor);      // "1234.50"
std::string JsonDeDecimal(const Decimal& numero);     // "1.500" for {1500, 3}
std::string JsonDeInstante(RtcAbsoluteTime instante); // "2024-01-31 08:00:00"; "" if unset
std::string JsonDeBytes(const std::array<std::uint8_t, 32>& bytes); // hexadecimal

// Each reads the form above, and throws ValorInvalido for anything else.
Financial ValorDeJson(const nlohmann::json& json); // not negative, up to 15 digits and 2 decimals
Decimal DecimalDeJson(const nlohmann::json& json, int maxDigits, int maxDecimals);
RtcAbsoluteTime InstanteDeJson(const nlohmann::json& json);
std::array<std::uint8_t, 32> BytesDeJson(const nlohmann::json& json);

std::int64_t InteiroDeJson(const nlohmann::json& json, std::int64_t min, std::int64_t max);
std::string TextoDeJson(const nlohmann::json& json, std::size_t maxBytes); // without NUL
bool MarcaDeJson(const nlohmann::json& json);

} // namespace bancada

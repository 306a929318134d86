#include "bancada/memoria/ValoresJson.h"

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

const std::string& TextoDe(const nlohmann::json& json, const char* devido)
{
    if (!json.is_string()) {
        throw ValorInvalido(std::string(devido) + " is due");
    }
    return json.get_ref<const std::string&>();
}

} // namespace

std::string JsonDeValor(const Financial& valor)
{
    return ValorToText(valor);
}

std::string JsonDeDecimal(const Decimal& numero)
{
    std::string texto = DecimalToText(numero);
    std::replace(texto.begin(), texto.end(), ',', '.');
    return texto;
}

std::string JsonDeInstante(RtcAbsoluteTime instante)
{
    if (instante.s == matlong[0]) {
        return "";
    }
    char texto[32];
    return instante.ToStrDateTime("yyyy-mm-dd", "hh:mm:ss", texto);
}

std::string JsonDeBytes(const std::array<std::uint8_t, 32>& bytes)
{
    char texto[2 * sizeof bytes + 1];
    return sodium_bin2hex(texto, sizeof texto, bytes.data(), bytes.size());
}

Financial ValorDeJson(const nlohmann::json& json)
{
    const char* devido = "money, a decimal text such as \"12.50\",";
    Decimal decimal;
    if (!ParseDecimal(TextoDe(json, devido), MONEY_DIGITS, MONEY_DECIMALS, decimal)) {
        throw ValorInvalido(std::string(devido) + " is due");
    }
    for (; decimal.decimals < MONEY_DECIMALS; ++decimal.decimals) {
        decimal.unscaled *= 10;
    }
    return Financial::FromCents(decimal.unscaled);
}

Decimal DecimalDeJson(const nlohmann::json& json, int maxDigits, int maxDecimals)
{
    const std::string devido = "a decimal text with up to " + std::to_string(maxDigits) +
                               " digits and " + std::to_string(maxDecimals) + " decimals";
    Decimal decimal;
    if (!ParseDecimal(TextoDe(json, devido.c_str()), maxDigits, maxDecimals, decimal)) {
        throw ValorInvalido(devido + " is due");
    }
    return decimal;
}

RtcAbsoluteTime InstanteDeJson(const nlohmann::json& json)
{
    const char* devido = "an instant \"YYYY-MM-DD hh:mm:ss\", or \"\" for none,";
    const std::string& texto = TextoDe(json, devido);
    RtcAbsoluteTime instante(matlong[0]);
    if (!texto.empty() && !ParseInstant(texto, instante)) {
        throw ValorInvalido(std::string(devido) + " is due");
    }
    return instante;
}

std::array<std::uint8_t, 32> BytesDeJson(const nlohmann::json& json)
{
    const char* devido = "64 hexadecimal digits are due";
    if (!json.is_string()) {
        throw ValorInvalido(devido);
    }
    const auto& texto = json.get_ref<const std::string&>();
    std::array<std::uint8_t, 32> bytes{};
    std::size_t lidos = 0;
    if (texto.size() != 2 * bytes.size() ||
        sodium_hex2bin(bytes.data(), bytes.size(), texto.data(), texto.size(), nullptr, &lidos,
                       nullptr) != 0 ||
        lidos != bytes.size()) {
        throw ValorInvalido(devido);
    }
    return bytes;
}

std::int64_t InteiroDeJson(const nlohmann::json& json, std::int64_t min, std::int64_t max)
{
    // An unsigned one may be beyond int64_t.
    const bool cabe =
        json.is_number_integer() && (!json.is_number_unsigned() ||
                                     json.get<std::uint64_t>() <= static_cast<std::uint64_t>(max));
    const std::int64_t valor = cabe ? json.get<std::int64_t>() : 0;
    if (!cabe || valor < min || valor > max) {
        throw ValorInvalido("an integer from " + std::to_string(min) + " to " +
                            std::to_string(max) + " is due");
    }
    return valor;
}

std::string TextoDeJson(const nlohmann::json& json, std::size_t maxBytes)
{
    const std::string& texto = TextoDe(json, "a text");
    if (texto.size() > maxBytes) {
        throw ValorInvalido("a text has at most " + std::to_string(maxBytes) + " bytes");
    }
    if (texto.find('\0') != std::string::npos) {
        throw ValorInvalido("a text has no NUL");
    }
    return texto;
}

bool MarcaDeJson(const nlohmann::json& json)
{
    if (!json.is_boolean()) {
        throw ValorInvalido("true or false is due");
    }
    return json.get<bool>();
}

} // namespace bancada

#include "bancada/memoria/LeituraJson.h"

#include "bancada/tape/FieldLimits.h"

#include <limits>
#include <utility>

namespace bancada
{
namespace
{

constexpr int DECIMAIS_QUANTIDADE = 3; // of quantities and unit prices
constexpr int DIGITOS_ALIQUOTA = 2;    // before the point

} // namespace

LeituraJson::LeituraJson(const nlohmann::json& objeto, std::string lugar)
    : m_objeto(objeto), m_lugar(std::move(lugar))
{
    if (!m_objeto.is_object()) {
        throw CampoInvalido(m_lugar, "an object is due");
    }
}

const nlohmann::json* LeituraJson::Campo(const char* nome)
{
    m_vistos.insert(nome);
    const auto campo = m_objeto.find(nome);
    return campo == m_objeto.end() ? nullptr : &*campo;
}

std::string LeituraJson::Lugar(const std::string& nome) const
{
    return m_lugar.empty() ? nome : m_lugar + "." + nome;
}

void LeituraJson::Fim() const
{
    for (const auto& campo : m_objeto.items()) {
        if (m_vistos.count(campo.key()) == 0) {
            throw CampoInvalido(Lugar(campo.key()), "there is no such field");
        }
    }
}

template <class T, class F>
void LeituraJson::Le(const char* nome, T& valor, F leitura)
{
    const nlohmann::json* campo = Campo(nome);
    if (campo == nullptr) {
        return;
    }
    try {
        valor = leitura(*campo);
    } catch (const ValorInvalido& erro) {
        throw CampoInvalido(Lugar(nome), erro.what());
    }
}

void LeituraJson::Inteiro(const char* nome, int& valor, int min, int max)
{
    Le(nome, valor,
       [&](const auto& json) { return static_cast<int>(InteiroDeJson(json, min, max)); });
}

void LeituraJson::Inteiro(const char* nome, std::int64_t& valor, std::int64_t min, std::int64_t max)
{
    Le(nome, valor, [&](const auto& json) { return InteiroDeJson(json, min, max); });
}

void LeituraJson::Valor(const char* nome, Financial& valor)
{
    Le(nome, valor, [](const auto& json) { return ValorDeJson(json); });
}

void LeituraJson::Percentual(const char* nome, int& centesimos)
{
    Le(nome, centesimos, [](const auto& json) {
        const Decimal decimal = DecimalDeJson(json, DIGITOS_ALIQUOTA, PERCENT_DECIMALS);
        std::int64_t valor = decimal.unscaled;
        for (int casas = decimal.decimals; casas < PERCENT_DECIMALS; ++casas) {
            valor *= 10;
        }
        return static_cast<int>(valor);
    });
}

void LeituraJson::Numero(const char* nome, Decimal& numero)
{
    Le(nome, numero,
       [](const auto& json) { return DecimalDeJson(json, QUANTITY_DIGITS, DECIMAIS_QUANTIDADE); });
}

void LeituraJson::Texto(const char* nome, std::string& texto)
{
    Le(nome, texto, [](const auto& json) { return TextoDeJson(json, MAX_TEXTO); });
}

void LeituraJson::Marca(const char* nome, bool& marca)
{
    Le(nome, marca, [](const auto& json) { return MarcaDeJson(json); });
}

void LeituraJson::Instante(const char* nome, RtcAbsoluteTime& instante)
{
    Le(nome, instante, [](const auto& json) { return InstanteDeJson(json); });
}

void LeituraJson::Segundos(const char* nome, RtcRelativeTime& tempo)
{
    Le(nome, tempo.s, [](const auto& json) {
        return static_cast<UINT32>(InteiroDeJson(json, 0, std::numeric_limits<UINT32>::max()));
    });
}

void LeituraJson::Bytes(const char* nome, std::array<std::uint8_t, 32>& bytes)
{
    Le(nome, bytes, [](const auto& json) { return BytesDeJson(json); });
}

} // namespace bancada

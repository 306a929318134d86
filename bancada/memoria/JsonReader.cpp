#include "bancada/memoria/JsonReader.h"

#include "bancada/Messages.h"
#include "bancada/tape/FieldLimits.h"

#include <limits>
#include <utility>

namespace bancada
{
namespace
{

constexpr int QUANTITY_PLACES = 3; // of quantities and unit prices
constexpr int ALIQUOTA_DIGITS = 2; // before the point

} // namespace

JsonReader::JsonReader(const nlohmann::json& object, std::string place, JsonForm form)
    : m_object(object), m_place(std::move(place)), m_form(form)
{
    if (!m_object.is_object()) {
        throw InvalidField(m_place, Tr("an object is due"));
    }
}

const nlohmann::json* JsonReader::FindField(const char* name)
{
    m_seen.insert(name);
    const auto field = m_object.find(name);
    return field == m_object.end() ? nullptr : &*field;
}

std::string JsonReader::PlaceOf(const std::string& name) const
{
    return m_place.empty() ? name : m_place + "." + name;
}

void JsonReader::Finish() const
{
    for (const auto& field : m_object.items()) {
        if (m_seen.count(field.key()) == 0) {
            throw InvalidField(PlaceOf(field.key()), Tr("there is no such field"));
        }
    }
}

template <class T, class F>
void JsonReader::Read(const char* name, T& value, F parse)
{
    const nlohmann::json* field = FindField(name);
    if (field == nullptr) {
        return;
    }
    try {
        value = parse(*field);
    } catch (const InvalidValue& error) {
        throw InvalidField(PlaceOf(name), error.what());
    }
}

void JsonReader::Integer(const char* name, int& value, int min, int max)
{
    Read(name, value,
         [&](const auto& json) { return static_cast<int>(IntegerFromJson(json, min, max)); });
}

void JsonReader::Integer(const char* name, std::int64_t& value, std::int64_t min, std::int64_t max)
{
    Read(name, value, [&](const auto& json) { return IntegerFromJson(json, min, max); });
}

void JsonReader::Money(const char* name, Financial& value)
{
    Read(name, value, [](const auto& json) { return MoneyFromJson(json); });
}

void JsonReader::Percent(const char* name, int& hundredths)
{
    Read(name, hundredths, [](const auto& json) {
        const Decimal decimal = DecimalFromJson(json, ALIQUOTA_DIGITS, PERCENT_DECIMALS);
        std::int64_t value = decimal.unscaled;
        for (int decimals = decimal.decimals; decimals < PERCENT_DECIMALS; ++decimals) {
            value *= 10;
        }
        return static_cast<int>(value);
    });
}

void JsonReader::Number(const char* name, Decimal& number)
{
    Read(name, number,
         [](const auto& json) { return DecimalFromJson(json, QUANTITY_DIGITS, QUANTITY_PLACES); });
}

void JsonReader::Text(const char* name, std::string& text)
{
    Read(name, text, [](const auto& json) { return TextFromJson(json, MAX_TEXT_BYTES); });
}

void JsonReader::Flag(const char* name, bool& flag)
{
    Read(name, flag, [](const auto& json) { return FlagFromJson(json); });
}

void JsonReader::Instant(const char* name, RtcAbsoluteTime& instant)
{
    Read(name, instant, [](const auto& json) { return InstantFromJson(json); });
}

void JsonReader::Seconds(const char* name, RtcRelativeTime& span)
{
    Read(name, span.s, [](const auto& json) {
        return static_cast<UINT32>(IntegerFromJson(json, 0, std::numeric_limits<UINT32>::max()));
    });
}

void JsonReader::Bytes(const char* name, std::array<std::uint8_t, 32>& bytes)
{
    Read(name, bytes, [](const auto& json) { return BytesFromJson(json); });
}

} // namespace bancada

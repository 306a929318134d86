// Writes fields into a JSON object.
#pragma once

#include "RtcClasses.h"
#include "bancada/memoria/JsonValues.h"
#include "bancada/registro/Decimal.h"
#include "libs/Financial.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

namespace bancada
{

// The operations are those of JsonReader; limits are for the reader to check.
class JsonWriter
{
  public:
    [[nodiscard]] nlohmann::json Finish() { return std::move(m_object); }

    void Integer(const char* name, std::int64_t value, std::int64_t, std::int64_t)
    {
        Put(name, value, value != 0);
    }
    void Money(const char* name, const Financial& value)
    {
        Put(name, MoneyToJson(value), !value.IsZero());
    }
    void Percent(const char* name, int hundredths)
    {
        Put(name, DecimalToJson({hundredths, 2}), hundredths != 0);
    }
    void Number(const char* name, const Decimal& number)
    {
        Put(name, DecimalToJson(number), number.unscaled != 0 || number.decimals != 0);
    }
    void Text(const char* name, const std::string& text) { Put(name, text, !text.empty()); }
    void Flag(const char* name, bool flag) { Put(name, flag, flag); }
    void Instant(const char* name, RtcAbsoluteTime instant)
    {
        Put(name, InstantToJson(instant), instant.s != matlong[0]);
    }
    void Seconds(const char* name, RtcRelativeTime span) { Put(name, span.s, span.s != 0); }
    void Bytes(const char* name, const std::array<std::uint8_t, 32>& bytes)
    {
        Put(name, BytesToJson(bytes), bytes != std::array<std::uint8_t, 32>{});
    }

    // `initial` is what it is in an object just made.
    template <class E, std::size_t N>
    void Choice(const char* name, E value, const std::array<const char*, N>& names, E initial = E{})
    {
        Put(name, names.at(static_cast<std::size_t>(value)), value != initial);
    }

    template <class F>
    void Group(const char* name, F fields)
    {
        JsonWriter group;
        fields(group);
        const bool filled = group.m_filled;
        Put(name, group.Finish(), filled);
    }

    // The elements that hold anything, each under its key; of the first `always` all.
    template <class F>
    void Map(const char* name, const std::vector<std::string>& keys, std::size_t always, F fields)
    {
        JsonWriter map;
        for (std::size_t i = 0; i < keys.size(); ++i) {
            JsonWriter element;
            fields(element, i);
            if (element.m_filled || i < always) {
                map.Put(keys[i].c_str(), element.Finish(), true);
            }
        }
        const bool filled = map.m_filled;
        Put(name, map.Finish(), filled);
    }

    template <class T, class F>
    void List(const char* name, const std::vector<T>& list, std::size_t, F fields)
    {
        nlohmann::json elements = nlohmann::json::array();
        for (const T& element : list) {
            JsonWriter object;
            fields(object, element);
            elements.push_back(object.Finish());
        }
        Put(name, std::move(elements), !list.empty());
    }

  private:
    void Put(const char* name, nlohmann::json value, bool filled)
    {
        m_object[name] = std::move(value);
        m_filled = m_filled || filled;
    }

    nlohmann::json m_object = nlohmann::json::object();
    bool m_filled = false; // a field differs from that of an object just made
};

} // namespace bancada

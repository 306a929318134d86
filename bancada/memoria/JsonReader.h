// Reads fields out of a JSON object.
#pragma once

#include "RtcClasses.h"
#include "bancada/Messages.h"
#include "bancada/memoria/JsonValues.h"
#include "bancada/memoria/MemoriaNames.h"
#include "bancada/registro/Decimal.h"
#include "libs/Financial.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace bancada
{

// A field does not hold what it should. what() begins with its place, "registro.gt: ".
class InvalidField : public std::runtime_error
{
  public:
    InvalidField(const std::string& place, const std::string& reason)
        : std::runtime_error(place + ": " + reason)
    {
    }
};

enum class JsonForm {
    WHOLE,  // as JsonWriter writes it
    CHANGES // as JsonChanges does: lists are told by what has changed in them
};

// Every operation takes the field `name` if it is there and leaves the value unchanged otherwise.
// Throws InvalidField for a value of another kind or out of its range.
class JsonReader
{
  public:
    // `object` is borrowed and outlives this. `place` is its place in the file.
    JsonReader(const nlohmann::json& object, std::string place, JsonForm form = JsonForm::WHOLE);

    // To be called after the last field: throws InvalidField if there are others.
    void Finish() const;

    void Integer(const char* name, int& value, int min, int max);
    void Integer(const char* name, std::int64_t& value, std::int64_t min, std::int64_t max);
    void Money(const char* name, Financial& value);
    void Percent(const char* name, int& hundredths);
    void Number(const char* name, Decimal& number);
    void Text(const char* name, std::string& text);
    void Flag(const char* name, bool& flag);
    void Instant(const char* name, RtcAbsoluteTime& instant);
    void Seconds(const char* name, RtcRelativeTime& span);
    void Bytes(const char* name, std::array<std::uint8_t, 32>& bytes);

    template <class E, std::size_t N>
    void Choice(const char* name, E& value, const std::array<const char*, N>& names, E = E{})
    {
        const nlohmann::json* field = FindField(name);
        if (field == nullptr) {
            return;
        }
        std::string due;
        for (std::size_t i = 0; i < N; ++i) {
            if (field->is_string() && field->get_ref<const std::string&>() == names[i]) {
                value = static_cast<E>(i);
                return;
            }
            due += (i == 0 ? "\"" : std::string(" ") + Tr("or") + " \"") + names[i] + "\"";
        }
        throw InvalidField(PlaceOf(name), Tr("%1 is due", {due}));
    }

    template <class F>
    void Group(const char* name, F fields)
    {
        const nlohmann::json* field = FindField(name);
        if (field == nullptr) {
            return;
        }
        JsonReader group(*field, PlaceOf(name), m_form);
        fields(group);
        group.Finish();
    }

    template <class F>
    void Map(const char* name, const std::vector<std::string>& keys, std::size_t, F fields)
    {
        Group(name, [&](JsonReader& map) {
            for (std::size_t i = 0; i < keys.size(); ++i) {
                map.Group(keys[i].c_str(), [&](JsonReader& element) { fields(element, i); });
            }
        });
    }

    template <class T, class F>
    void List(const char* name, std::vector<T>& list, std::size_t max, F fields)
    {
        const nlohmann::json* field = FindField(name);
        if (field == nullptr) {
            return;
        }
        if (m_form == JsonForm::CHANGES) {
            ChangeList(name, list, max, fields);
            return;
        }
        if (!field->is_array() || field->size() > max) {
            throw InvalidField(PlaceOf(name),
                               Tr("a list of at most %1 is due", {std::to_string(max)}));
        }
        list.clear();
        for (const nlohmann::json& object : *field) {
            JsonReader reader(object, PlaceOf(name) + "[" + std::to_string(list.size() + 1) + "]");
            fields(reader, list.emplace_back());
            reader.Finish();
        }
    }

  private:
    template <class T, class F>
    void ChangeList(const char* name, std::vector<T>& list, std::size_t max, F fields)
    {
        Group(name, [&](JsonReader& changed) {
            auto length = static_cast<int>(list.size());
            changed.Integer(LIST_LENGTH, length, 0, static_cast<int>(max));
            list.resize(static_cast<std::size_t>(length));
            for (std::size_t i = 0; i < list.size(); ++i) {
                changed.Group(std::to_string(i + 1).c_str(),
                              [&](JsonReader& element) { fields(element, list[i]); });
            }
        });
    }

    // The field, or null.
    const nlohmann::json* FindField(const char* name);
    std::string PlaceOf(const std::string& name) const;
    template <class T, class F>
    void Read(const char* name, T& value, F parse);

    const nlohmann::json& m_object;
    std::string m_place;
    JsonForm m_form;
    std::set<std::string> m_seen; // names that were asked for
};

} // namespace bancada

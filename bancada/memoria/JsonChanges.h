// Writes the fields of an object that have changed.
#pragma once

#include "RtcClasses.h"
#include "bancada/memoria/JsonValues.h"
#include "bancada/registro/Decimal.h"
#include "libs/Financial.h"

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bancada
{

// The operations are those of JsonWriter. The text is a JSON object, which JsonReader reads as
// JsonForm::CHANGES. It is put together without a tree of JSON: a command changes a dozen of the
// thousand fields of a register.
class JsonChanges
{
  public:
    // The fields of `after` that differ from `before`, as `visit(changes, after)` lists them; each
    // is taken over into `before`.
    template <class M, class F>
    [[nodiscard]] static std::string Take(M& before, const M& after, F visit)
    {
        std::string text = "{";
        JsonChanges changes(text, before, after);
        visit(changes, after);
        End(text);
        return text;
    }

    template <class I>
    void Integer(const char* name, const I& value, std::int64_t, std::int64_t)
    {
        if (Take(value)) {
            Put(name, std::to_string(value));
        }
    }
    void Money(const char* name, const Financial& value)
    {
        if (Take(value)) {
            PutText(name, MoneyToJson(value));
        }
    }
    void Percent(const char* name, const int& hundredths)
    {
        if (Take(hundredths)) {
            PutText(name, DecimalToJson({hundredths, 2}));
        }
    }
    void Number(const char* name, const Decimal& number)
    {
        Decimal& before = Before(number);
        if (before.unscaled != number.unscaled || before.decimals != number.decimals) {
            before = number;
            PutText(name, DecimalToJson(number));
        }
    }
    void Text(const char* name, const std::string& text)
    {
        if (Take(text)) {
            Put(name, TextToJson(text));
        }
    }
    void Flag(const char* name, const bool& flag)
    {
        if (Take(flag)) {
            Put(name, flag ? "true" : "false");
        }
    }
    void Instant(const char* name, const RtcAbsoluteTime& instant)
    {
        if (Take(instant.s)) {
            PutText(name, InstantToJson(instant));
        }
    }
    void Seconds(const char* name, const RtcRelativeTime& span)
    {
        if (Take(span.s)) {
            Put(name, std::to_string(span.s));
        }
    }
    void Bytes(const char* name, const std::array<std::uint8_t, 32>& bytes)
    {
        if (Take(bytes)) {
            PutText(name, BytesToJson(bytes));
        }
    }

    template <class E, std::size_t N>
    void Choice(const char* name, const E& value, const std::array<const char*, N>& names, E = E{})
    {
        if (Take(value)) {
            PutText(name, names.at(static_cast<std::size_t>(value)));
        }
    }

    template <class F>
    void Group(const char* name, F fields)
    {
        const std::size_t begin = m_text.size();
        Open(name);
        const std::size_t opened = m_text.size();
        fields(*this);
        if (m_text.size() == opened) {
            m_text.resize(begin);
            return;
        }
        End(m_text);
        m_text += ',';
    }

    template <class F>
    void Map(const char* name, const std::vector<std::string>& keys, std::size_t, F fields)
    {
        Group(name, [&](JsonChanges& map) {
            for (std::size_t i = 0; i < keys.size(); ++i) {
                map.Group(keys[i].c_str(), [&](JsonChanges& element) { fields(element, i); });
            }
        });
    }

    // An object too: the list's length where it has changed, and the elements under their number
    // from 1.
    template <class T, class F>
    void List(const char* name, const std::vector<T>& list, std::size_t, F fields)
    {
        std::vector<T>& before = Before(list);
        Group(name, [&](JsonChanges& changed) {
            if (before.size() != list.size()) {
                changed.Put(LIST_LENGTH, std::to_string(list.size()));
                before.resize(list.size());
            }
            for (std::size_t i = 0; i < list.size(); ++i) {
                JsonChanges element(m_text, before[i], list[i]);
                element.Group(std::to_string(i + 1).c_str(),
                              [&](JsonChanges& visitor) { fields(visitor, list[i]); });
            }
        });
    }

  private:
    template <class M>
    JsonChanges(std::string& text, M& before, const M& after)
        : m_text(text), m_before(reinterpret_cast<char*>(&before)),
          m_after(reinterpret_cast<const char*>(&after)), m_size(sizeof(M))
    {
    }

    // The same field of the object before: it stands at the same place within it.
    template <class T>
    T& Before(const T& field) const
    {
        const std::ptrdiff_t place = reinterpret_cast<const char*>(&field) - m_after;
        assert(place >= 0 && static_cast<std::size_t>(place) + sizeof(T) <= m_size);
        return *reinterpret_cast<T*>(m_before + place);
    }

    // Answers whether it has changed, and takes it over.
    template <class T>
    bool Take(const T& field) const
    {
        T& before = Before(field);
        if (before == field) {
            return false;
        }
        before = field;
        return true;
    }

    void Open(const char* name)
    {
        m_text += '"';
        m_text += name;
        m_text += "\":{";
    }
    static void End(std::string& text)
    {
        if (text.back() == ',') {
            text.back() = '}';
        } else {
            text += '}';
        }
    }
    void Put(const char* name, std::string_view json)
    {
        m_text += '"';
        m_text += name;
        m_text += "\":";
        m_text += json;
        m_text += ',';
    }
    void PutText(const char* name, std::string_view plain)
    {
        m_text += '"';
        m_text += name;
        m_text += "\":\"";
        m_text += plain;
        m_text += "\",";
    }

    std::string& m_text;
    char* m_before;
    const char* m_after;
    [[maybe_unused]] std::size_t m_size; // asserted alone
};

} // namespace bancada

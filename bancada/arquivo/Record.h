// One record of the legal audit file, read or to be written.
#pragma once

#include "bancada/arquivo/Leiautes.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace bancada::arquivo
{

// A record as its line holds it. Lives on when its file is closed; the layouts live for ever.
class Record
{
  public:
    Record() = default;
    // REQUIRES: the line has the layout's width and its fields hold what they should.
    Record(const Leiaute& leiaute, std::string line, std::int64_t number)
        : m_leiaute(&leiaute), m_line(std::move(line)), m_number(number)
    {
    }

    const Leiaute& GetLeiaute() const { return *m_leiaute; }
    std::string_view Type() const { return m_leiaute->type; }
    const std::string& Line() const { return m_line; }
    // The line's number in its file, from 1.
    std::int64_t Number() const { return m_number; }

    // A field's positions, unchanged. Throws std::logic_error for a name that there is not, as do
    // the two below.
    std::string_view Raw(std::string_view field) const { return At(m_leiaute->IndexOf(field)); }
    std::string_view At(std::size_t index) const
    {
        const Field& field = m_leiaute->fields[index];
        return std::string_view(m_line).substr(field.Begin(), field.Size());
    }
    // Without the blanks at its end.
    std::string Text(std::string_view field) const;
    // Of digits: at most 18, which fit.
    std::int64_t Integer(std::string_view field) const;

    // The key's positions, one after another. Equal for two records of a type that are the same
    // record; a key may come more than once.
    std::string KeyText() const;

  private:
    const Leiaute* m_leiaute = nullptr;
    std::string m_line;
    std::int64_t m_number = 0;
};

// Why a text is no value of the field, "digits are due" and so on; empty for one that is.
std::string FaultOf(const Field& field, std::string_view text);

// "E14, ccf (positions 47-52)".
std::string PlaceOf(const Leiaute& leiaute, const Field& field);

} // namespace bancada::arquivo

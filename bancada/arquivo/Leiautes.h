// The records of the legal audit file: each type's fields, stated once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bancada::arquivo
{

// What a field's positions hold.
enum class Form : std::uint8_t {
    N, // digits, right-aligned, filled with zeros; zeros where there is nothing
    X, // text, left-aligned, filled with blanks; blanks where there is nothing
    D, // a date, AAAAMMDD; zeros where there is none
    H, // a time of day, HHMMSS
};

// Whether a field tells its record from others of the type.
enum class Key : std::uint8_t {
    NO,
    YES
};

struct Field {
    const char* name;
    Form form;
    int first; // position from 1
    int last;  // inclusive
    Key key = Key::NO;

    std::size_t Begin() const { return static_cast<std::size_t>(first) - 1; }
    std::size_t Size() const { return static_cast<std::size_t>(last - first) + 1; }
};

// The CDC has four digits in E16 and six in the register: those of a longer number are the last.
constexpr std::int64_t CDC_ROOM = 10000;

// The positions of the fields with which every record but E01 and EAD begins. A record of nothing
// else says that its type has no data.
constexpr std::size_t PREFIX_WIDTH = 44;

// The version of the act that fixes these layouts, as E01 has it.
constexpr char VERSAO_ATO[] = "AC1704 01.00.00";

// The number of the owner that the register has now; a database knows no other.
constexpr std::int64_t USUARIO = 1;

struct Leiaute {
    const char* type; // three letters, with which a record begins
    const char* meaning;
    std::vector<Field> fields; // all positions in order, the type's three included

    std::size_t Width() const { return static_cast<std::size_t>(fields.back().last); }
    // Whether it begins with the common fields: all but E01 and EAD.
    bool IsPrefixed() const;
    // Throws std::logic_error for a name that the record does not have.
    std::size_t IndexOf(std::string_view name) const;
};

// In the order of the file.
const std::vector<Leiaute>& Leiautes();

// Null for a type that there is not.
const Leiaute* FindLeiaute(std::string_view type);

} // namespace bancada::arquivo

#include "bancada/arquivo/Record.h"

#include "bancada/Messages.h"

#include <algorithm>

namespace bancada::arquivo
{
namespace
{

bool AreDigits(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

int Number(std::string_view digits)
{
    int number = 0;
    for (const char c : digits) {
        number = number * 10 + (c - '0');
    }
    return number;
}

bool IsDate(std::string_view text)
{
    constexpr int DAYS[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const int year = Number(text.substr(0, 4));
    const int month = Number(text.substr(4, 2));
    const int day = Number(text.substr(6, 2));
    if (year == 0 && month == 0 && day == 0) {
        return true;
    }
    if (year == 0 || month < 1 || month > 12 || day < 1) {
        return false;
    }
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return day <= DAYS[month - 1] + (month == 2 && leap ? 1 : 0);
}

bool IsTime(std::string_view text)
{
    return Number(text.substr(0, 2)) < 24 && Number(text.substr(2, 2)) < 60 &&
           Number(text.substr(4, 2)) < 60;
}

} // namespace

std::string Record::Text(std::string_view field) const
{
    const std::string_view raw = Raw(field);
    const std::size_t last = raw.find_last_not_of(' ');
    return std::string(raw.substr(0, last == std::string_view::npos ? 0 : last + 1));
}

std::int64_t Record::Integer(std::string_view field) const
{
    std::int64_t value = 0;
    for (const char c : Raw(field)) {
        value = value * 10 + (c - '0');
    }
    return value;
}

std::string Record::KeyText() const
{
    std::string key;
    for (std::size_t i = 0; i < m_leiaute->fields.size(); ++i) {
        if (m_leiaute->fields[i].key == Key::YES) {
            key += At(i);
        }
    }
    return key;
}

std::string FaultOf(const Field& field, std::string_view text)
{
    if (field.form == Form::X) {
        const bool printable =
            std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
        return printable ? "" : Tr("ASCII letters are due");
    }
    if (!AreDigits(text)) {
        return Tr("digits are due");
    }
    if (field.form == Form::D && !IsDate(text)) {
        return Tr("a date AAAAMMDD is due");
    }
    if (field.form == Form::H && !IsTime(text)) {
        return Tr("a time HHMMSS is due");
    }
    return "";
}

std::string PlaceOf(const Leiaute& leiaute, const Field& field)
{
    return Tr("%1, %2 (positions %3-%4)",
              {leiaute.type, field.name, std::to_string(field.first), std::to_string(field.last)});
}

} // namespace bancada::arquivo

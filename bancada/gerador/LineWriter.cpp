#include "bancada/gerador/LineWriter.h"

namespace bancada
{

namespace
{

std::string TwoDigits(std::int64_t number)
{
    return (number < 10 ? "0" : "") + std::to_string(number);
}

// The civil date of a day counted from 1970-01-01, years beginning in March so that the leap day
// comes last.
std::string Date(std::int64_t day)
{
    const std::int64_t z = day + 719468;
    const std::int64_t era = z / 146097;
    const std::int64_t dayOfEra = z % 146097;
    const std::int64_t yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
    const std::int64_t dayOfMonth = dayOfYear - (153 * monthFromMarch + 2) / 5 + 1;
    const std::int64_t month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
    const std::int64_t year = yearOfEra + era * 400 + (month <= 2 ? 1 : 0);
    return std::to_string(year) + "-" + TwoDigits(month) + "-" + TwoDigits(dayOfMonth);
}

} // namespace

LineWriter::LineWriter(std::ostream& out, const char* command) : m_out(out)
{
    m_out << "{\"cmd\":\"" << command << '"';
}

LineWriter::~LineWriter()
{
    m_out << "}\n";
}

LineWriter& LineWriter::Text(const char* field, const std::string& value)
{
    m_out << ",\"" << field << "\":\"" << value << '"';
    return *this;
}

LineWriter& LineWriter::Number(const char* field, std::int64_t value)
{
    // By to_string: a stream may group the digits of a number.
    m_out << ",\"" << field << "\":" << std::to_string(value);
    return *this;
}

LineWriter& LineWriter::True(const char* field)
{
    m_out << ",\"" << field << "\":true";
    return *this;
}

LineWriter& LineWriter::Money(const char* field, std::int64_t cents)
{
    return Decimal(field, cents, 2);
}

LineWriter& LineWriter::Decimal(const char* field, std::int64_t units, int decimals)
{
    std::string text = std::to_string(units);
    const auto digits = static_cast<std::size_t>(decimals);
    if (digits > 0) {
        if (text.size() <= digits) {
            text.insert(0, digits + 1 - text.size(), '0');
        }
        text.insert(text.size() - digits, ".");
    }
    return Text(field, text);
}

LineWriter& LineWriter::Em(std::int64_t seconds)
{
    const std::int64_t inDay = seconds % 86400;
    return Text("em", Date(seconds / 86400) + " " + TwoDigits(inDay / 3600) + ":" +
                          TwoDigits(inDay / 60 % 60) + ":" + TwoDigits(inDay % 60));
}

} // namespace bancada

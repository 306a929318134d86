#include "bancada/arquivo/Instante.h"

#include <cstdio>

namespace bancada::arquivo
{
namespace
{

constexpr std::int64_t SECONDS_A_DAY = 86400;
constexpr std::int64_t DAYS_AN_ERA = 146097;  // 400 years
constexpr std::int64_t DAYS_TO_1970 = 719468; // from March 1st of the year 0

std::int64_t Number(std::string_view digits)
{
    std::int64_t number = 0;
    for (const char c : digits) {
        number = number * 10 + (c - '0');
    }
    return number;
}

// Years that begin in March have their leap day at the end.
std::int64_t DaysOf(std::int64_t year, std::int64_t month, std::int64_t day)
{
    year -= month <= 2 ? 1 : 0;
    const std::int64_t era = year / 400;
    const std::int64_t yearOfEra = year - era * 400;
    const std::int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * DAYS_AN_ERA + dayOfEra - DAYS_TO_1970;
}

} // namespace

std::int64_t SecondsOf(std::string_view data, std::string_view hora)
{
    const std::int64_t number = Number(data);
    if (number == 0) {
        return 0;
    }
    const std::int64_t days = DaysOf(number / 10000, number / 100 % 100, number % 100);
    const std::int64_t time = Number(hora);
    return days * SECONDS_A_DAY + time / 10000 * 3600 + time / 100 % 100 * 60 + time % 100;
}

std::string InstantText(std::int64_t seconds)
{
    const std::int64_t days = seconds / SECONDS_A_DAY + DAYS_TO_1970;
    const std::int64_t time = seconds % SECONDS_A_DAY;
    const std::int64_t era = days / DAYS_AN_ERA;
    const std::int64_t dayOfEra = days % DAYS_AN_ERA;
    const std::int64_t yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t shifted = (5 * dayOfYear + 2) / 153; // month from March, from 0
    const std::int64_t day = dayOfYear - (153 * shifted + 2) / 5 + 1;
    const std::int64_t month = shifted < 10 ? shifted + 3 : shifted - 9;
    const std::int64_t year = yearOfEra + era * 400 + (month <= 2 ? 1 : 0);
    char text[80];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", static_cast<int>(year),
                  static_cast<int>(month), static_cast<int>(day), static_cast<int>(time / 3600),
                  static_cast<int>(time / 60 % 60), static_cast<int>(time % 60));
    return text;
}

} // namespace bancada::arquivo

#include "bancada/tape/Instant.h"

#include <cstdint>
#include <limits>

namespace bancada
{
namespace
{

constexpr std::string_view FORM = "9999-99-99 99:99:99";

bool HasForm(std::string_view text)
{
    if (text.size() != FORM.size()) {
        return false;
    }
    for (std::size_t i = 0; i < FORM.size(); ++i) {
        const bool digit = text[i] >= '0' && text[i] <= '9';
        if (FORM[i] == '9' ? !digit : text[i] != FORM[i]) {
            return false;
        }
    }
    return true;
}

int Number(std::string_view digits)
{
    int number = 0;
    for (const char digit : digits) {
        number = number * 10 + (digit - '0');
    }
    return number;
}

bool IsLeap(int year)
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int DaysOfMonth(int year, int month)
{
    constexpr int DAYS[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return DAYS[month - 1] + (month == 2 && IsLeap(year) ? 1 : 0);
}

// From 1970-01-01. REQUIRES: a day from then on.
std::int64_t DaysSince1970(int year, int month, int day)
{
    std::int64_t days = day - 1;
    for (int y = 1970; y < year; ++y) {
        days += IsLeap(y) ? 366 : 365;
    }
    for (int m = 1; m < month; ++m) {
        days += DaysOfMonth(year, m);
    }
    return days;
}

} // namespace

bool ParseInstant(std::string_view text, RtcAbsoluteTime& instant)
{
    if (!HasForm(text)) {
        return false;
    }
    const int year = Number(text.substr(0, 4));
    const int month = Number(text.substr(5, 2));
    const int day = Number(text.substr(8, 2));
    const int hour = Number(text.substr(11, 2));
    const int minute = Number(text.substr(14, 2));
    const int second = Number(text.substr(17, 2));
    if (year < 1970 || month < 1 || month > 12 || day < 1 || day > DaysOfMonth(year, month) ||
        hour > 23 || minute > 59 || second > 59) {
        return false;
    }
    const std::int64_t seconds =
        DaysSince1970(year, month, day) * 86400 + hour * 3600 + minute * 60 + second;
    if (seconds == matlong[0] || seconds > std::numeric_limits<UINT32>::max()) {
        return false;
    }
    instant = RtcAbsoluteTime(static_cast<UINT32>(seconds));
    return true;
}

} // namespace bancada

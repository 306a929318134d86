#include "RtcClasses.h"

#include "libs/Digits.h"

#include <cstddef>
#include <cstring>

const UINT32 matlong[1] = {0};

namespace
{

constexpr UINT32 SECONDS_A_DAY = 86400;

struct CivilDate {
    UINT32 year;
    UINT32 month; // 1 to 12
    UINT32 day;   // 1 to 31
};

// Counts in years that begin on 1 March, so that the leap day is a year's last: from 1968-03-01 on,
// 671 days before 1970-01-01, every fourth has one. The only year of an instant's range that breaks
// the rule is 2100, whose leap day is passed over.
CivilDate ToCivilDate(UINT32 daysSince1970)
{
    constexpr UINT32 LEAP_DAY_OF_2100 = 48212;
    UINT32 days = daysSince1970 + 671;
    if (days >= LEAP_DAY_OF_2100) {
        ++days;
    }
    const UINT32 year = (4 * days + 3) / 1461;
    const UINT32 dayOfYear = days - 1461 * year / 4;
    const UINT32 monthFromMarch = (5 * dayOfYear + 2) / 153;
    const UINT32 day = dayOfYear - (153 * monthFromMarch + 2) / 5 + 1;
    if (monthFromMarch < 10) {
        return {1968 + year, monthFromMarch + 3, day};
    }
    return {1969 + year, monthFromMarch - 9, day};
}

// The letters that stand for digits in a pattern, and where those stand in the ISO text.
struct Field {
    char letters[5];
    char at;
};

constexpr Field DATE_FIELDS[] = {{"yyyy", 0}, {"mm", 5}, {"dd", 8}};
constexpr Field TIME_FIELDS[] = {{"hh", 11}, {"mm", 14}, {"ss", 17}};

// Writes `pattern` with its three fields filled in from the ISO text, terminates the text and
// answers its end.
char* WritePattern(const char* pattern, const Field (&fields)[3], const char* iso, char* out)
{
    const std::size_t length = std::strlen(pattern);
    std::memcpy(out, pattern, length + 1);
    for (const Field& field : fields) {
        while (char* const found = std::strstr(out, field.letters)) {
            std::memcpy(found, iso + field.at, std::strlen(field.letters));
        }
    }
    return out + length;
}

} // namespace

void RtcAbsoluteTime::WriteIso(char* out) const
{
    const CivilDate date = ToCivilDate(s / SECONDS_A_DAY);
    const UINT32 second = s % SECONDS_A_DAY;
    std::memcpy(out, "yyyy-mm-dd hh:mm:ss", ISO_SIZE);
    WritePair(out, date.year / 100);
    WritePair(out + 2, date.year % 100);
    WritePair(out + 5, date.month);
    WritePair(out + 8, date.day);
    WritePair(out + 11, second / 3600);
    WritePair(out + 14, second / 60 % 60);
    WritePair(out + 17, second % 60);
}

char* RtcAbsoluteTime::ToStrDateTime(const char* dateFormat, const char* timeFormat,
                                     char* out) const
{
    char iso[ISO_SIZE];
    WriteIso(iso);
    char* const end = WritePattern(dateFormat, DATE_FIELDS, iso, out);
    *end = ' ';
    WritePattern(timeFormat, TIME_FIELDS, iso, end + 1);
    return out;
}

char* RtcAbsoluteTime::ToStrDate(const char* dateFormat, char* out) const
{
    char iso[ISO_SIZE];
    WriteIso(iso);
    WritePattern(dateFormat, DATE_FIELDS, iso, out);
    return out;
}

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

// Counts in eras of 400 years that begin on 1 March, so that the leap day is a year's last; the
// first era counted from is that of 0000-03-01, 719468 days before 1970-01-01.
CivilDate ToCivilDate(UINT32 daysSince1970)
{
    const UINT32 days = daysSince1970 + 719468;
    const UINT32 era = days / 146097;
    const UINT32 dayOfEra = days % 146097;
    const UINT32 yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const UINT32 dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const UINT32 monthFromMarch = (5 * dayOfYear + 2) / 153;
    const UINT32 day = dayOfYear - (153 * monthFromMarch + 2) / 5 + 1;
    const UINT32 month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
    return {yearOfEra + era * 400 + (month <= 2 ? 1u : 0u), month, day};
}

// What a run of letters in a pattern stands for: so many digits of the ISO text.
struct Field {
    char letter;
    unsigned char at;
    unsigned char digits;
};

constexpr Field DATE_FIELDS[] = {{'y', 0, 4}, {'m', 5, 2}, {'d', 8, 2}};
constexpr Field TIME_FIELDS[] = {{'h', 11, 2}, {'m', 14, 2}, {'s', 17, 2}};

// Whether `pattern` has the whole run of letters of `field` here.
bool HasRun(const char* pattern, const Field& field)
{
    for (int i = 0; i < field.digits; ++i) {
        if (pattern[i] != field.letter) {
            return false;
        }
    }
    return true;
}

// Writes `pattern` with its three fields filled in from the ISO text, terminates the text and
// answers its end.
char* WritePattern(const char* pattern, const Field (&fields)[3], const char* iso, char* out)
{
    while (*pattern != '\0') {
        const char* from = pattern;
        std::size_t length = 1;
        for (const Field& field : fields) {
            if (HasRun(pattern, field)) {
                from = iso + field.at;
                length = field.digits;
            }
        }
        std::memcpy(out, from, length);
        out += length;
        pattern += length;
    }
    *out = '\0';
    return out;
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

#include "RtcClasses.h"

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

// What one run of letters in a pattern stands for.
struct PatternField {
    char letter;
    int digits;
    UINT32 value;
};

// Writes `pattern` with its three fields filled in, terminates the text and answers its end.
char* WritePattern(const char* pattern, const PatternField (&fields)[3], char* out)
{
    while (*pattern != '\0') {
        const PatternField* found = nullptr;
        for (const PatternField& field : fields) {
            int letters = 0;
            while (letters < field.digits && pattern[letters] == field.letter) {
                ++letters;
            }
            if (letters == field.digits) {
                found = &field;
            }
        }
        if (found == nullptr) {
            *out++ = *pattern++;
            continue;
        }
        UINT32 value = found->value;
        for (int digit = found->digits - 1; digit >= 0; --digit) {
            out[digit] = static_cast<char>('0' + value % 10);
            value /= 10;
        }
        out += found->digits;
        pattern += found->digits;
    }
    *out = '\0';
    return out;
}

char* WriteDate(UINT32 seconds, const char* pattern, char* out)
{
    const CivilDate date = ToCivilDate(seconds / SECONDS_A_DAY);
    return WritePattern(pattern, {{'y', 4, date.year}, {'m', 2, date.month}, {'d', 2, date.day}},
                        out);
}

} // namespace

char* RtcAbsoluteTime::ToStrDateTime(const char* dateFormat, const char* timeFormat,
                                     char* out) const
{
    char* end = WriteDate(s, dateFormat, out);
    *end++ = ' ';
    const UINT32 second = s % SECONDS_A_DAY;
    WritePattern(timeFormat,
                 {{'h', 2, second / 3600}, {'m', 2, second / 60 % 60}, {'s', 2, second % 60}}, end);
    return out;
}

char* RtcAbsoluteTime::ToStrDate(const char* dateFormat, char* out) const
{
    WriteDate(s, dateFormat, out);
    return out;
}

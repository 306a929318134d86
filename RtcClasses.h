// The clock classes: instants and spans, counted in seconds.
#pragma once

#include "libs/FirmwareTypes.h"

// A count of seconds. What it counts from, if anything, is said by the derived type.
class RtcTime
{
  public:
    UINT32 s;

    constexpr RtcTime() : s(0) {}
};

// A span of time.
class RtcRelativeTime : public RtcTime
{
  public:
    constexpr RtcRelativeTime() {}
    // REQUIRES: `seconds` fits 32 bits; more is cut to its low 32 bits.
    constexpr RtcRelativeTime(unsigned long seconds) { s = static_cast<UINT32>(seconds); }
};

// An instant: seconds since 1970-01-01 00:00:00, with neither time zone nor leap seconds. The last
// one is 2106-02-07 06:28:15.
class RtcAbsoluteTime : public RtcTime
{
  public:
    constexpr RtcAbsoluteTime() {}
    explicit constexpr RtcAbsoluteTime(UINT32 seconds) { s = seconds; }

    // 1 when both are the same instant, else 0.
    BOOL operator==(RtcAbsoluteTime other) const { return s == other.s ? 1 : 0; }
    BOOL operator!=(RtcAbsoluteTime other) const { return s == other.s ? 0 : 1; }

    // Writes this instant's date, a blank and its time of day into `out` and answers `out`.
    // In `dateFormat` yyyy, mm and dd stand for year, month and day; in `timeFormat` hh, mm and ss
    // for hour (00-23), minute and second; each is written in as many digits as it has letters, and
    // anything else is copied as it stands. `out` needs the bytes of both patterns and two more.
    char* ToStrDateTime(const char* dateFormat, const char* timeFormat, char* out) const;

    // The same for the date alone. `out` needs the bytes of the pattern and one more.
    char* ToStrDate(const char* dateFormat, char* out) const;

    // Writes this instant as yyyy-mm-dd hh:mm:ss, ISO_SIZE bytes of which the first ISO_DATE_SIZE
    // are the date, without a terminator.
    static constexpr int ISO_SIZE = 19;
    static constexpr int ISO_DATE_SIZE = 10;
    void WriteIso(char* out) const;
};

static_assert(sizeof(RtcRelativeTime) == 4 && sizeof(RtcAbsoluteTime) == 4,
              "the clock classes are their count of seconds and nothing else");

// Its first element is the value of an instant that was never set.
extern const UINT32 matlong[1];

// The longest that a fiscal day may stay open: 26 hours.
inline constexpr RtcRelativeTime MAX_TEMPO_OPERACIONAL(93600);

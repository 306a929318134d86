// Writes the tape of an import.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>

namespace bancada::arquivo
{

// A line is written when the object that builds it ends.
class TapeLine
{
  public:
    // `em` and `fim` in seconds; 0: the line has none.
    TapeLine(std::ostream& out, const char* command, std::int64_t em, std::int64_t fim);
    ~TapeLine();
    TapeLine(const TapeLine&) = delete;
    TapeLine& operator=(const TapeLine&) = delete;

    TapeLine& Text(const char* name, const std::string& text);
    TapeLine& Number(const char* name, std::int64_t number);
    // `units` of 10^-decimals, every decimal written.
    TapeLine& Decimal(const char* name, std::int64_t units, int decimals);
    TapeLine& Money(const char* name, std::int64_t cents) { return Decimal(name, cents, 2); }
    TapeLine& Flag(const char* name, bool flag);

  private:
    TapeLine& Field(const char* name, const std::string& value);

    std::ostream& m_out;
    std::string m_line;
};

// Gives each command its instant: none begins before the one before it ended.
class TapeText
{
  public:
    explicit TapeText(std::ostream& out) : m_out(out) {}

    // When the last command ended.
    std::int64_t Now() const { return m_now; }
    // The latest that the register's clock has shown: Now, unless it was set back since.
    std::int64_t Latest() const { return m_latest; }
    // A command that begins at `em` and ends at `fim`, or when it begins where `fim` is earlier.
    // REQUIRES: em is not before Now.
    TapeLine At(const char* command, std::int64_t em, std::int64_t fim = 0);
    // A command that begins when the last one ended.
    TapeLine Then(const char* command) { return At(command, m_now); }
    // Sets the register's clock, in an intervention: the one way back.
    void SetClock(std::int64_t em);
    // A setting of the bench, which takes no time.
    TapeLine Directive(const char* command) { return {m_out, command, 0, 0}; }

  private:
    std::ostream& m_out;
    std::int64_t m_now = 1; // the first instant that a tape can name
    std::int64_t m_latest = 1;
};

} // namespace bancada::arquivo

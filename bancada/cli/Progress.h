// How far a long tape has come, for a person who waits.
#pragma once

#include "bancada/tape/TapeReader.h"

#include <chrono>
#include <cstdint>

namespace bancada
{

// Writes one line to standard error, over and over, and wipes it out in the end; nothing if
// standard error is no terminal, or if the tape is done before one would wonder.
class Progress
{
  public:
    explicit Progress(const TapeReader& tape);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void Show(std::int64_t commands);

  private:
    using Clock = std::chrono::steady_clock;

    const TapeReader& m_tape;
    bool m_terminal;
    bool m_shown = false;
    Clock::time_point m_next;
};

} // namespace bancada

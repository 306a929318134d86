// When the commands of a tape start.
#pragma once

#include "bancada/tape/TapeCommand.h"

#include <optional>

namespace bancada
{

// A command starts when its "em" says, or one second after the command before it.
class TapeClock
{
  public:
    // The instant of the next command. Throws TapeError if it is the first and does not say, or if
    // the clock has no further second.
    [[nodiscard]] RtcAbsoluteTime Next(const TapeCommand& command);

    // When the last command started; unset before the first.
    RtcAbsoluteTime Last() const { return m_last.value_or(RtcAbsoluteTime(matlong[0])); }
    // Goes on after a command that started then; unset is none.
    void Continue(RtcAbsoluteTime last);

  private:
    std::optional<RtcAbsoluteTime> m_last;
};

} // namespace bancada

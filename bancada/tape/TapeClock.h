// When the commands of a tape start and end.
#pragma once

#include "bancada/tape/TapeCommand.h"

#include <optional>

namespace bancada
{

// A command starts when its "em" says, or one second after the command before it ended; it ends
// when its "fim" says, or else counts as ended when it started.
class TapeClock
{
  public:
    // The instant at which the next command starts. Throws TapeError if it is the first and does
    // not say, if it ends before it starts, or if the clock has no further second.
    [[nodiscard]] RtcAbsoluteTime Next(const TapeCommand& command);

    // When the last command ended; unset before the first.
    RtcAbsoluteTime Last() const { return m_last.value_or(RtcAbsoluteTime(matlong[0])); }
    // Goes on after a command that ended then; unset is none.
    void Continue(RtcAbsoluteTime last);

  private:
    std::optional<RtcAbsoluteTime> m_last;
};

} // namespace bancada

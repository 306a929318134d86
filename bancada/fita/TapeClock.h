// When the commands of a tape start.
#pragma once

#include "bancada/fita/TapeCommand.h"

#include <optional>

namespace bancada
{

// A command starts when its "em" says, or one second after the command before it.
class TapeClock
{
  public:
    // The instant of the next command. Throws TapeError if it is the first and does not say, or if
    // the clock has no further second.
    RtcAbsoluteTime Next(const TapeCommand& command);

  private:
    std::optional<RtcAbsoluteTime> m_last;
};

} // namespace bancada

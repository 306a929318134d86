// Instants as the tape writes them.
#pragma once

#include "RtcClasses.h"

#include <string_view>

namespace bancada
{

// Reads "YYYY-MM-DD hh:mm:ss": a day that exists, after 1970-01-01 00:00:00 (which stands for a
// time never set) and up to 2106-02-07 06:28:15, the clock's last second. Answers false, and leaves
// `instant` unchanged, for any other text.
[[nodiscard]] bool ParseInstant(std::string_view text, RtcAbsoluteTime& instant);

} // namespace bancada

// What others say, in the language of people: the system, the engine, the library that owns the
// database. They speak English, without a catalogue.
#pragma once

#include <string>
#include <string_view>

namespace bancada
{

// A reason of theirs in the language of Tr. One that is not known is answered as it is: the
// engine's words about a statement, which quote it, and the system's rare ones.
[[nodiscard]] std::string TrForeign(std::string_view text);

// The system's reason of that number (errno).
[[nodiscard]] std::string SystemReason(int number);

} // namespace bancada

// Instants of the legal audit file as seconds, and as the tape writes them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace bancada::arquivo
{

// Seconds from 1970-01-01 00:00:00 of a date AAAAMMDD and a time HHMMSS (empty: midnight), both as
// their fields hold them; 0 for a date of zeros.
std::int64_t SecondsOf(std::string_view data, std::string_view hora = {});

// "yyyy-mm-dd hh:mm:ss".
std::string InstantText(std::int64_t seconds);

} // namespace bancada::arquivo

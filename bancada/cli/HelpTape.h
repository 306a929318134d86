// The commands of the tape, described.
#pragma once

#include <string>
#include <string_view>

namespace bancada
{

// Markdown: one section a command (what it does, its fields, an example), the directive first. This
// is the section of docs/tape.md between its two markers.
std::string DescribeTape();

// The section of one command. Throws Unusable if there is none of that name.
[[nodiscard]] std::string DescribeCommand(std::string_view command);

// `document` with what stands between its two markers replaced by DescribeTape(). Throws
// std::invalid_argument if it has not both, in their order.
std::string WithTapeDescription(const std::string& document);

} // namespace bancada

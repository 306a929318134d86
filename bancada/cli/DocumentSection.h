// The section of a document that the program itself writes.
#pragma once

#include <string>
#include <string_view>

namespace bancada
{

// `document` with the lines between its two markers replaced by `section`, which ends with a
// newline. The markers are the comments "<!-- NAME: begin -->" and "<!-- NAME: end -->", each on a
// line of its own. Throws std::invalid_argument if it has not both, in their order.
std::string WithSection(const std::string& document, std::string_view name,
                        const std::string& section);

// Replaces a file by what `rewritten` makes of its text. Throws Unusable, which names the file,
// also for the std::invalid_argument of `rewritten`; then it is as it was.
void RewriteDocument(const std::string& path, std::string (*rewritten)(const std::string&));

} // namespace bancada

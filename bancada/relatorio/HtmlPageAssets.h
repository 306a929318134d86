// The page's style and script.
#pragma once

#include <string_view>

namespace bancada::relatorio
{

// As they stand in the page's <style> and <script>.
extern const std::string_view PAGE_STYLE;
extern const std::string_view PAGE_SCRIPT;

} // namespace bancada::relatorio

#pragma once

#include <string_view>

namespace bancada::relatorio
{

// The page's style and script, as they stand in its <style> and <script>.
extern const std::string_view ESTILO_DA_PAGINA;
extern const std::string_view SCRIPT_DA_PAGINA;

} // namespace bancada::relatorio

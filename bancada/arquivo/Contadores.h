// The register's counters before the first document of a file.
#pragma once

#include "bancada/arquivo/ArquivoLido.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace bancada::arquivo
{

// By the counter's name in the memory file: "coo". Of what no record tells, those that the register
// has now. Throws as ArquivoLido::Read.
std::map<std::string, std::int64_t> ContadoresBefore(ArquivoLido& arquivo);

// A lower bound of the first document's instant; 1 where none
// has a date.
std::int64_t FirstInstant(ArquivoLido& arquivo);

// The restart counter before the first document, where the owner was registered on its day or
// later: then that tells it.
std::optional<std::int64_t> CroDoCadastro(ArquivoLido& arquivo);

} // namespace bancada::arquivo

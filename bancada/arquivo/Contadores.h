// The register's counters before the first document of a file.
#pragma once

#include "bancada/arquivo/ArquivoLido.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace bancada::arquivo
{

struct Importador;

// By the counter's name in the memory file: "coo". Of what no record tells, those that the register
// has now. Throws as ArquivoLido::Read. REQUIRES: the programming was found.
std::map<std::string, std::int64_t> ContadoresBefore(Importador& importing);

// When a document ended, as its record tells, or a Z reduction began; 0 where none does.
std::int64_t EndAt(ArquivoLido& arquivo, std::int32_t coo);
// A lower bound of the first document's instant; 1 where none has a date.
std::int64_t FirstInstant(ArquivoLido& arquivo);
// The last instant that it can have begun at: a receipt tells a date alone, and what follows it an
// end.
std::int64_t LastFirstInstant(ArquivoLido& arquivo);

// The restart counter before the first document, where the owner was registered on its day or
// later: then that tells it.
std::optional<std::int64_t> CroDoCadastro(ArquivoLido& arquivo);

} // namespace bancada::arquivo

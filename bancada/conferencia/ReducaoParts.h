// The rows that Z reductions write beside their own: totalizers and payment means.
#pragma once

#include "bancada/leitura/Tables.h"

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace bancada::conferencia
{

struct ReducaoParts {
    std::vector<leitura::TotalizadorReducaoRow> totalizadores;
    std::vector<leitura::MeioPagamentoReducaoRow> meios;
    // The change has the highest index; a means may carry its name, but none its place.
    std::optional<leitura::MeioPagamentoReducaoRow> troco;
};

// Of every Z, by its number.
std::map<std::int64_t, ReducaoParts> ReadReducaoParts(const leitura::DatabaseReading& database);

} // namespace bancada::conferencia

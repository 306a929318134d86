#include "bancada/relatorio/JornadaRange.h"

#include "bancada/leitura/Query.h"

#include <limits>

namespace bancada::relatorio
{
namespace
{

bool ReducoesRise(const leitura::DatabaseReading& database)
{
    leitura::Query reducoes(database, "SELECT cont_crz FROM reducao_z ORDER BY rowid");
    bool any = false;
    std::int64_t last = 0;
    while (reducoes.Next()) {
        const leitura::Integer crz = reducoes.ReadInteger("cont_crz");
        if (!crz.IsKnown() || (any && crz.Value() <= last)) {
            return false;
        }
        any = true;
        last = crz.Value();
    }
    return true;
}

} // namespace

JornadaRange FindJornada(const leitura::DatabaseReading& database, std::int64_t crz)
{
    if (!ReducoesRise(database)) {
        return {};
    }
    // Other documents are filed under the last reduction made, before the first one and after it
    // under 1: which of the first two jornadas they are of shows only from the beginning.
    const std::int64_t from = crz > 2 ? crz - 1 : std::numeric_limits<std::int64_t>::min();
    const std::int64_t to = crz > 2 ? crz : 2;
    const auto find = [&](const char* table) {
        return leitura::FindRange(database, table, "cont_crz", from, to);
    };
    return {find("cupom_fiscal"),        find("cupom_nf"),
            find("outros_documentos"),   find("reducao_z"),
            find("totalizador_reducao"), find("meio_pagamento_reducao")};
}

} // namespace bancada::relatorio

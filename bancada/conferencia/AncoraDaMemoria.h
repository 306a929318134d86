// A database against the register's own memory.
#pragma once

#include "bancada/conferencia/Finding.h"
#include "bancada/conferencia/LookedAt.h"
#include "bancada/leitura/Amount.h"
#include "bancada/leitura/DatabaseReading.h"

#include <cstdint>
#include <optional>
#include <string>

namespace bancada::conferencia
{

// What the memory of a register says of its documents and of its owner.
struct MemoriaAnchor {
    std::int64_t coo = 0;
    std::int64_t ccf = 0;
    std::int64_t gnf = 0;
    std::int64_t crz = 0;
    std::int64_t cfd = 0;
    std::int64_t cdc = 0;
    std::int64_t grg = 0;
    leitura::Amount gtUltimaReducao;
    leitura::Amount gtInicial; // when the CNPJ was programmed
    std::string numSerie, cnpj, razaoSocial;
    // The last command known to be in the database; nothing where the memory tells none.
    std::optional<std::int64_t> command;
};

// Hands out what the rows do not reach: a command that the database does not carry yet, counters of
// the register that are further than the last rows, another grand total of its last Z; and, where
// the memory is no older than the rows, another register or owner. A table without a row tells
// nothing where the database does not begin with the register's first document. Answers how many
// findings these are.
std::int64_t CheckMemoriaAnchor(const leitura::DatabaseReading& database, const LookedAt& lookedAt,
                                const MemoriaAnchor& anchor, const FindingSink& sink);

} // namespace bancada::conferencia

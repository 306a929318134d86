// What a reconciliation looked at, and whether it reaches what is known from outside.
#pragma once

#include "bancada/Messages.h"
#include "bancada/conferencia/Finding.h"
#include "bancada/leitura/DatabaseReading.h"
#include "bancada/leitura/Tables.h"

#include <cstdint>
#include <optional>
#include <string>

namespace bancada::conferencia
{

struct LookedAt {
    std::string file;
    std::int64_t size = 0;
    std::string sha256;
    // Of the write-ahead log that was read with the file; 0 and empty where there was none.
    std::int64_t logSize = 0;
    std::string logSha256;
    std::string numSerie;
    std::string contribuinte; // name and CNPJ of the owner
    // The documents issued first and last, as far as rows tell; not known of an empty database.
    leitura::Integer primeiroCoo{leitura::CellState::NULL_VALUE, Tr("none")};
    leitura::Integer ultimoCoo{leitura::CellState::NULL_VALUE, Tr("none")};
    std::string primeiraHora, ultimaHora;
    // Of the Z reductions.
    leitura::Integer primeiroCrz{leitura::CellState::NULL_VALUE, Tr("none")};
    leitura::Integer ultimoCrz{leitura::CellState::NULL_VALUE, Tr("none")};
    leitura::Amount gt;

    bool IsEmpty() const { return !ultimoCoo.IsKnown(); }
};

// Throws Unusable for the database of another program, or one that cannot be read.
LookedAt ReadLookedAt(const leitura::DatabaseReading& database);

// From the first document to the last and from the first Z reduction to the last, for a person; of
// a database that is not empty.
std::string RangeOf(const LookedAt& lookedAt);

// What is known of a register from outside its database: from a paper Z, from its own memory.
struct Anchor {
    std::optional<std::int64_t> coo;
    std::optional<std::int64_t> crz;
    std::optional<leitura::Amount> gt; // behind that Z, or the last one
};

// "COO=120,CRZ=9,GT=1234.56", each at most once, at least one. Nothing for any other text.
std::optional<Anchor> ParseAnchor(const std::string& text);

// Hands out what the database does not reach: no document of that number or a later one, no Z of
// that number, or one of another grand total. Answers how many findings these are.
std::int64_t CheckAnchor(const leitura::DatabaseReading& database, const LookedAt& lookedAt,
                         const Anchor& anchor, const FindingSink& sink);

} // namespace bancada::conferencia

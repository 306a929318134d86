// What the reconciliation of a logging database finds.
#pragma once

#include "bancada/conferencia/FindingKind.h"

#include <cstdint>
#include <functional>
#include <string>

namespace bancada::conferencia
{

// The document or the day that a finding is about, by which it is tied to the losses that the
// firmware log names. 0 where there is none.
struct Subject {
    std::int64_t coo = 0;
    std::int64_t crz = 0;
};

inline Subject DocumentOf(std::int64_t coo)
{
    return {coo, 0};
}

inline Subject JornadaOf(std::int64_t crz)
{
    return {0, crz};
}

// Where a finding stands in the database, and what was looked for there. Empty what does not apply.
struct Place {
    std::string table;
    std::int64_t row = 0; // its rowid
    std::string column;
    std::string expected;
    std::string found;
};

struct Finding {
    FindingKind kind = FindingKind::END;
    Subject subject;
    // What it concerns, e.g. "COO 120" or "CRZ 9".
    std::string key;
    // One line of plain text.
    std::string text;
    // The firmware log names a lost row of the same document or day.
    bool explained = false;
    Place place;
};

// Takes the findings one by one, in the order in which they are made.
using FindingSink = std::function<void(const Finding&)>;

} // namespace bancada::conferencia

// One line of a tape.
#pragma once

#include "RtcClasses.h"
#include "bancada/tape/Place.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace bancada
{

// The value of a field as the line holds it.
struct TapeValue {
    enum class Kind {
        TEXT,
        INTEGER,  // a JSON integer within 64 bits
        FRACTION, // any other JSON number; no field takes one
        FLAG,
    };

    Kind kind = Kind::TEXT;
    std::string text; // of a TEXT: UTF-8, never with a NUL
    std::int64_t integer = 0;
    bool flag = false;
};

// "a text", "an integer" and so on, for messages.
const char* KindName(TapeValue::Kind kind);

struct TapeField {
    std::string name;
    TapeValue value;
    Place namePlace;
    Place valuePlace;
};

// The fields of a line in its order, each name once.
struct TapeLine {
    Place place; // of its opening brace
    std::vector<TapeField> fields;
};

struct TapeCommand {
    Place place;
    std::string name;                   // "cmd"
    Place namePlace;                    // of that value
    std::optional<RtcAbsoluteTime> em;  // "em": when execution starts
    Place emPlace;                      // where there is one
    std::optional<RtcAbsoluteTime> fim; // "fim": when execution ends
    Place fimPlace;                     // where there is one
    std::vector<TapeField> fields;      // all but cmd, em, fim and obs
};

} // namespace bancada

// A row's values, as they are packed in the file.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace bancada::recuperacao
{

enum class Kind : std::uint8_t {
    NOTHING,
    INTEGER,
    REAL,
    TEXT,
    BLOB
};

struct Value {
    Kind kind = Kind::NOTHING;
    std::int64_t integer = 0;
    double real = 0;
    std::string_view bytes; // of a text or a blob, in the payload
};

// Unpacks a row. Nothing if its parts do not take up the payload exactly, or if it is none.
[[nodiscard]] std::optional<std::vector<Value>> ReadRecord(std::string_view payload);

} // namespace bancada::recuperacao

#include "bancada/recuperacao/Record.h"

#include "bancada/recuperacao/Bytes.h"

#include <cstring>

namespace bancada::recuperacao
{
namespace
{

// The file format's kinds of a value.
constexpr std::uint64_t REAL = 7;
constexpr std::uint64_t ZERO = 8;
constexpr std::uint64_t ONE = 9;
constexpr std::uint64_t FIRST_BYTES = 12;

constexpr std::size_t INTEGER_BYTES[] = {0, 1, 2, 3, 4, 6, 8};

std::int64_t ReadInteger(std::string_view bytes)
{
    std::uint64_t value = !bytes.empty() && ByteAt(bytes, 0) >= 0x80U ? ~0ULL : 0ULL;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        value = value << 8U | ByteAt(bytes, i);
    }
    return static_cast<std::int64_t>(value);
}

// Reads the value of this kind that begins at `at`, and moves `at` behind it.
bool ReadValue(std::uint64_t kind, std::string_view payload, std::size_t& at, Value& value)
{
    std::uint64_t size = 0;
    if (kind >= FIRST_BYTES) {
        size = (kind - FIRST_BYTES) / 2;
    } else if (kind == REAL) {
        size = sizeof value.real;
    } else if (kind < REAL) {
        size = INTEGER_BYTES[kind];
    } else if (kind != ZERO && kind != ONE) {
        return false;
    }
    if (size > payload.size() - at) {
        return false;
    }
    const std::string_view bytes = payload.substr(at, static_cast<std::size_t>(size));
    at += bytes.size();
    if (kind >= FIRST_BYTES) {
        value.kind = kind % 2 == 0 ? Kind::BLOB : Kind::TEXT;
        value.bytes = bytes;
    } else if (kind == REAL) {
        const std::int64_t bits = ReadInteger(bytes);
        std::memcpy(&value.real, &bits, sizeof bits);
        value.kind = Kind::REAL;
    } else if (kind != 0) {
        value.kind = Kind::INTEGER;
        value.integer = kind == ONE ? 1 : ReadInteger(bytes);
    }
    return true;
}

} // namespace

std::optional<std::vector<Value>> ReadRecord(std::string_view payload)
{
    std::uint64_t headerBytes = 0;
    std::size_t at = ReadVarint(payload, 0, headerBytes);
    if (at == 0 || headerBytes > payload.size()) {
        return std::nullopt;
    }
    const std::string_view header = payload.substr(0, static_cast<std::size_t>(headerBytes));
    std::size_t body = header.size();
    std::vector<Value> values;
    while (at < header.size()) {
        std::uint64_t kind = 0;
        const std::size_t size = ReadVarint(header, at, kind);
        Value value;
        if (size == 0 || !ReadValue(kind, payload, body, value)) {
            return std::nullopt;
        }
        values.push_back(value);
        at += size;
    }
    if (at != header.size() || body != payload.size()) {
        return std::nullopt;
    }
    return values;
}

} // namespace bancada::recuperacao

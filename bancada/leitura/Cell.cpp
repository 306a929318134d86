#include "bancada/leitura/Cell.h"

#include <sqlite3.h>
#include <utility>

namespace bancada::leitura
{
namespace
{

// The bytes of a blob that are worth a look.
constexpr int BLOB_BYTES_SHOWN = 32;

std::string Bytes(sqlite3_stmt* row, int column)
{
    const unsigned char* text = sqlite3_column_text(row, column);
    const int size = sqlite3_column_bytes(row, column);
    return text == nullptr
               ? std::string()
               : std::string(reinterpret_cast<const char*>(text), static_cast<std::size_t>(size));
}

std::string BlobText(sqlite3_stmt* row, int column)
{
    static constexpr char DIGITS[] = "0123456789ABCDEF";
    const auto* bytes = static_cast<const unsigned char*>(sqlite3_column_blob(row, column));
    const int size = sqlite3_column_bytes(row, column);
    std::string text = "X'";
    for (int i = 0; i < size && i < BLOB_BYTES_SHOWN; ++i) {
        text += DIGITS[bytes[i] >> 4U];
        text += DIGITS[bytes[i] & 0xFU];
    }
    return text + (size > BLOB_BYTES_SHOWN ? "...'" : "'");
}

// The cell where no value of its kind stands.
template <typename Kind>
Kind Unknown(sqlite3_stmt* row, int column, Nullable nullable)
{
    if (sqlite3_column_type(row, column) == SQLITE_NULL) {
        return nullable == Nullable::YES ? Kind(CellState::LEFT_OUT)
                                         : Kind(CellState::NULL_VALUE, "NULL");
    }
    return Kind(CellState::OTHER_KIND, RawText(row, column));
}

} // namespace

Cell::Cell(CellState state, std::string raw) : m_state(state), m_raw(std::move(raw)) {}

Integer ReadInteger(sqlite3_stmt* row, int column, Nullable nullable)
{
    if (sqlite3_column_type(row, column) == SQLITE_INTEGER) {
        return sqlite3_column_int64(row, column);
    }
    return Unknown<Integer>(row, column, nullable);
}

Text ReadText(sqlite3_stmt* row, int column, Nullable nullable)
{
    if (sqlite3_column_type(row, column) == SQLITE_TEXT) {
        return Bytes(row, column);
    }
    return Unknown<Text>(row, column, nullable);
}

Flag ReadFlag(sqlite3_stmt* row, int column, Nullable nullable)
{
    if (sqlite3_column_type(row, column) == SQLITE_TEXT && sqlite3_column_bytes(row, column) == 1) {
        const unsigned char letter = *sqlite3_column_text(row, column);
        if (letter == 'S' || letter == 'N') {
            return letter == 'S';
        }
    }
    return Unknown<Flag>(row, column, nullable);
}

std::string RawText(sqlite3_stmt* row, int column)
{
    switch (sqlite3_column_type(row, column)) {
    case SQLITE_NULL:
        return "NULL";
    case SQLITE_BLOB:
        return BlobText(row, column);
    default:
        return Bytes(row, column);
    }
}

} // namespace bancada::leitura

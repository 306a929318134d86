// What a cell of a row turned out to hold, for every kind of column.
#pragma once

#include <cstdint>
#include <string>

struct sqlite3_stmt;

namespace bancada::leitura
{

enum class CellState : std::uint8_t {
    // A value of the column's kind.
    READ,
    // NULL, in a column that the module's own inserts leave out: it counts as zero or empty.
    LEFT_OUT,
    // The database is older than the column: it counts as zero or empty.
    NO_COLUMN,
    // NULL, where whatever the module writes is a value.
    NULL_VALUE,
    // Of another storage class than the column's values: a text in a number, a blob in a text, a
    // fraction in a counter, a flag that is neither S nor N.
    OTHER_KIND,
    // A number beyond what an exact amount holds, or the result of a sum that is.
    TOO_LARGE,
};

// What all cells have. A cell that is not known never reads as a zero that somebody wrote: its
// value is 0 or empty, IsKnown() is false and Raw() says what stands there.
class Cell
{
  public:
    CellState State() const { return m_state; }
    bool IsKnown() const { return m_state <= CellState::NO_COLUMN; }
    // What stands in the database where that is not known: "NULL", the text, the number in the
    // engine's own form, a blob as X'00FF'. Empty of a known cell. May hold any bytes.
    const std::string& Raw() const { return m_raw; }

  protected:
    Cell() = default;
    explicit Cell(CellState state, std::string raw = {});

  private:
    CellState m_state = CellState::READ;
    std::string m_raw;
};

// A counter, an index, a number of seconds.
class Integer : public Cell
{
  public:
    Integer() = default;
    // Not explicit: a number that no row holds is as good.
    Integer(std::int64_t value) : m_value(value) {} // NOLINT(google-explicit-constructor)
    explicit Integer(CellState state, std::string raw = {}) : Cell(state, std::move(raw)) {}

    // 0 where it is not known.
    std::int64_t Value() const { return m_value; }

  private:
    std::int64_t m_value = 0;
};

// A text as its bytes stand in the row: whatever it holds, a NUL or what is no UTF-8 included.
class Text : public Cell
{
  public:
    Text() = default;
    Text(std::string value) : m_value(std::move(value)) {} // NOLINT(google-explicit-constructor)
    explicit Text(CellState state, std::string raw = {}) : Cell(state, std::move(raw)) {}

    // Empty where it is not known.
    const std::string& Value() const { return m_value; }
    // What a person is shown: the value, or what stands in its place.
    const std::string& Shown() const { return IsKnown() ? m_value : Raw(); }

  private:
    std::string m_value;
};

// An id_ column: S or N.
class Flag : public Cell
{
  public:
    Flag() = default;
    Flag(bool value) : m_value(value) {} // NOLINT(google-explicit-constructor)
    explicit Flag(CellState state, std::string raw = {}) : Cell(state, std::move(raw)) {}

    // Whether it is S; false where it is not known.
    bool IsSet() const { return m_value; }

  private:
    bool m_value = false;
};

// Whether a column may hold NULL because the module's inserts leave it out.
enum class Nullable : std::uint8_t {
    NO,
    YES
};

// Reads the cell in `column`, from 0, of the row at hand.
Integer ReadInteger(sqlite3_stmt* row, int column, Nullable nullable);
Text ReadText(sqlite3_stmt* row, int column, Nullable nullable);
Flag ReadFlag(sqlite3_stmt* row, int column, Nullable nullable);

// The bytes of a text or a blob, the engine's text of a number; of a blob as X'00FF', cut after its
// first bytes; "NULL".
std::string RawText(sqlite3_stmt* row, int column);

} // namespace bancada::leitura

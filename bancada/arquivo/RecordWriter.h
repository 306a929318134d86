// Writes a legal audit file, record by record.
#pragma once

#include "bancada/arquivo/Leiautes.h"
#include "bancada/leitura/Amount.h"
#include "bancada/leitura/Cell.h"

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

namespace bancada::arquivo
{

enum class LineEnd : std::uint8_t {
    CRLF,
    LF
};

// The row that a record is made from, for messages.
struct RowPlace {
    std::string table;
    std::int64_t rowid = 0;
};

// Between Begin and End every field of the record is given once, by its name, in the order of the
// positions; anything else is a std::logic_error. A value that does not fit its field, or of a cell
// that does not hold one, is thrown as Unusable with the source, the row, the record, the field and
// its positions; nothing of the record is written then.
class RecordWriter
{
  public:
    // `source` names where the values come from, in messages. `out` outlives this.
    RecordWriter(std::ostream& out, LineEnd end, std::string source);

    // What the common fields hold from now on.
    void SetRegister(std::string numeroSerie, std::string modelo);

    // Begins a record. The common fields, where it has them, are given already.
    void Begin(const char* type, RowPlace row = {});
    void End();

    void N(const char* field, std::int64_t value);
    void N(const char* field, const leitura::Integer& value);
    // The whole of `amount` counted in units of 10^-decimals, which it must hold exactly.
    void Amount(const char* field, const leitura::Amount& amount, int decimals = 2);
    // An amount in cents; more decimals are cut.
    void CutAmount(const char* field, const leitura::Amount& amount);
    // A number written as text: points, hyphens, strokes and blanks are no part of it.
    void Digits(const char* field, const leitura::Text& text);
    void X(const char* field, std::string_view text);
    void Text(const char* field, const leitura::Text& text);
    // What is longer than the field is cut.
    void CutText(const char* field, const leitura::Text& text);
    // S or N.
    void Flag(const char* field, const leitura::Flag& flag);
    // The date and the time of an instant "yyyy-mm-dd hh:mm:ss"; zeros for an empty one.
    void D(const char* field, const leitura::Text& instant);
    void H(const char* field, const leitura::Text& instant);

  private:
    void Put(const char* field, Form form, const std::string& text);
    void PutX(const char* field, std::string_view text, bool cut);
    const Field& Next(const char* field) const;
    void RequireKnown(const char* field, const leitura::Cell& cell) const;
    void PutUnits(const char* field, std::int64_t units);
    [[noreturn]] void Fail(const char* field, const std::string& what) const;

    std::ostream& m_out;
    const char* m_end;
    std::string m_source;
    std::string m_numeroSerie;
    std::string m_modelo;
    const Leiaute* m_leiaute = nullptr;
    std::size_t m_next = 0;
    RowPlace m_row;
    std::string m_line;
};

} // namespace bancada::arquivo

#include "bancada/arquivo/RecordWriter.h"

#include "bancada/Messages.h"
#include "bancada/Unusable.h"
#include "bancada/arquivo/Ascii.h"
#include "bancada/arquivo/Record.h"

#include <stdexcept>

namespace bancada::arquivo
{
namespace
{

constexpr std::size_t DATE_SIZE = 10;    // yyyy-mm-dd
constexpr std::size_t INSTANT_SIZE = 19; // and a blank and hh:mm:ss

std::string Without(std::string_view text, std::string_view marks)
{
    std::string rest;
    for (const char c : text) {
        if (marks.find(c) == std::string_view::npos) {
            rest += c;
        }
    }
    return rest;
}

} // namespace

RecordWriter::RecordWriter(std::ostream& out, LineEnd end, std::string source)
    : m_out(out), m_end(end == LineEnd::CRLF ? "\r\n" : "\n"), m_source(std::move(source))
{
}

void RecordWriter::SetRegister(std::string numeroSerie, std::string modelo)
{
    m_numeroSerie = std::move(numeroSerie);
    m_modelo = std::move(modelo);
}

void RecordWriter::Begin(const char* type, RowPlace row)
{
    m_leiaute = FindLeiaute(type);
    if (m_leiaute == nullptr) {
        throw std::logic_error(std::string("there is no record ") + type);
    }
    m_row = std::move(row);
    m_next = 0;
    m_line.clear();
    X("tipo", type);
    if (m_leiaute->IsPrefixed()) {
        X("numero_serie", m_numeroSerie);
        X("letra_adicional", "");
        X("modelo", m_modelo);
    }
}

void RecordWriter::End()
{
    if (m_next != m_leiaute->fields.size()) {
        throw std::logic_error(std::string(m_leiaute->type) + " ends before its field " +
                               m_leiaute->fields[m_next].name);
    }
    m_out << m_line << m_end;
}

const Field& RecordWriter::Next(const char* field) const
{
    if (m_next == m_leiaute->fields.size() ||
        std::string_view(field) != m_leiaute->fields[m_next].name) {
        throw std::logic_error(std::string(m_leiaute->type) + ": the field " + field +
                               " is out of its place");
    }
    return m_leiaute->fields[m_next];
}

void RecordWriter::Fail(const char* field, const std::string& what) const
{
    std::string place = m_source;
    if (!m_row.table.empty()) {
        place += Tr(": %1, row %2", {m_row.table, std::to_string(m_row.rowid)});
    }
    throw Unusable(place + ": " + PlaceOf(*m_leiaute, Next(field)) + ": " + what);
}

void RecordWriter::RequireKnown(const char* field, const leitura::Cell& cell) const
{
    if (!cell.IsKnown()) {
        Fail(field, Tr("the row holds no value for it but %1", {cell.Raw()}));
    }
}

void RecordWriter::Put(const char* field, Form form, const std::string& text)
{
    const Field& next = Next(field);
    if (next.form != form) {
        throw std::logic_error(PlaceOf(*m_leiaute, next) + " has another form");
    }
    if (text.size() > next.Size()) {
        Fail(field, Tr("\"%1\" does not fit", {text}));
    }
    if (form == Form::X) {
        m_line += text;
        m_line.append(next.Size() - text.size(), ' ');
    } else {
        m_line.append(next.Size() - text.size(), '0');
        m_line += text;
    }
    const std::string fault =
        FaultOf(next, std::string_view(m_line).substr(m_line.size() - next.Size()));
    if (!fault.empty()) {
        Fail(field, Tr("%1, not \"%2\"", {fault, text}));
    }
    ++m_next;
}

void RecordWriter::N(const char* field, std::int64_t value)
{
    PutUnits(field, value);
}

void RecordWriter::N(const char* field, const leitura::Integer& value)
{
    RequireKnown(field, value);
    PutUnits(field, value.Value());
}

void RecordWriter::PutUnits(const char* field, std::int64_t units)
{
    if (units < 0) {
        Fail(field, Tr("it is below zero: %1", {std::to_string(units)}));
    }
    Put(field, Form::N, std::to_string(units));
}

void RecordWriter::Amount(const char* field, const leitura::Amount& amount, int decimals)
{
    RequireKnown(field, amount);
    const leitura::Amount counted = amount.WithDecimals(decimals);
    if (!amount.IsExact() || !counted.IsKnown() || !IsSame(counted, amount)) {
        Fail(field, Tr("the row's number is not exact to %1 decimals", {std::to_string(decimals)}));
    }
    PutUnits(field, counted.Units());
}

void RecordWriter::CutAmount(const char* field, const leitura::Amount& amount)
{
    RequireKnown(field, amount);
    if (!amount.IsExact()) {
        Fail(field, Tr("the row's number is not exact to %1 decimals",
                       {std::to_string(amount.Decimals())}));
    }
    std::int64_t units = amount.Units();
    for (int decimals = amount.Decimals(); decimals > 2; --decimals) {
        units /= 10;
    }
    PutUnits(field, units);
}

void RecordWriter::Digits(const char* field, const leitura::Text& text)
{
    RequireKnown(field, text);
    Put(field, Form::N, Without(text.Value(), ".-/ "));
}

void RecordWriter::PutX(const char* field, std::string_view text, bool cut)
{
    std::optional<std::string> ascii = ToAscii(text);
    if (!ascii) {
        Fail(field, Tr("the text has no form in ASCII"));
    }
    const std::size_t size = Next(field).Size();
    if (cut && ascii->size() > size) {
        ascii->resize(size);
    }
    const std::size_t last = ascii->find_last_not_of(' ');
    ascii->resize(last == std::string::npos ? 0 : last + 1);
    Put(field, Form::X, *ascii);
}

void RecordWriter::X(const char* field, std::string_view text)
{
    PutX(field, text, false);
}

void RecordWriter::Text(const char* field, const leitura::Text& text)
{
    RequireKnown(field, text);
    PutX(field, text.Value(), false);
}

void RecordWriter::CutText(const char* field, const leitura::Text& text)
{
    RequireKnown(field, text);
    PutX(field, text.Value(), true);
}

void RecordWriter::Flag(const char* field, const leitura::Flag& flag)
{
    RequireKnown(field, flag);
    PutX(field, flag.IsSet() ? "S" : "N", false);
}

void RecordWriter::D(const char* field, const leitura::Text& instant)
{
    RequireKnown(field, instant);
    Put(field, Form::D, Without(instant.Value().substr(0, DATE_SIZE), "-"));
}

void RecordWriter::H(const char* field, const leitura::Text& instant)
{
    RequireKnown(field, instant);
    if (!instant.Value().empty() && instant.Value().size() != INSTANT_SIZE) {
        Fail(field, Tr("a time is due, not \"%1\"", {instant.Value()}));
    }
    Put(field, Form::H,
        instant.Value().empty() ? "" : Without(instant.Value().substr(DATE_SIZE + 1), ":"));
}

} // namespace bancada::arquivo

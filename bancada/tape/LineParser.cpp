#include "bancada/tape/LineParser.h"

#include "bancada/Messages.h"

#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

namespace bancada
{
namespace
{

constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

// Walks over the tokens of a line beside the parser, which says what a token is but not where. It
// is asked only for what the parser has accepted.
class TokenWalk
{
  public:
    explicit TokenWalk(std::string_view text) : m_text(text) {}

    // Passes to the next token and answers its column, from 1.
    int Next()
    {
        m_at = m_text.find_first_not_of(" \t\r\n:,", m_at);
        if (m_at == std::string_view::npos) {
            m_at = m_text.size();
        }
        const int column = static_cast<int>(m_at) + 1;
        if (m_at == m_text.size()) {
            return column;
        }
        if (m_text[m_at] == '"') {
            PassString();
        } else if (m_text[m_at] == '{' || m_text[m_at] == '}') {
            ++m_at;
        } else { // a number or a word
            m_at = std::min(m_text.find_first_of(" \t\r\n:,}", m_at), m_text.size());
        }
        return column;
    }

    void Pass(std::size_t bytes) { m_at += bytes; }

  private:
    void PassString()
    {
        for (++m_at; m_text[m_at] != '"'; ++m_at) {
            if (m_text[m_at] == '\\') {
                ++m_at;
            }
        }
        ++m_at;
    }

    std::string_view m_text;
    std::size_t m_at = 0;
};

// The parser's own words, without its name, the place (which is said in our own way) and the bytes
// of the line, which may be anything.
std::string ParserMessage(const std::string& what)
{
    std::string message = what.substr(what.find("] ") + 2);
    if (message.rfind("parse error at ", 0) == 0) {
        message.erase(0, message.find(": ") + 2);
    }
    for (const char* piece : {"; last read: ", " parsing '"}) {
        message.erase(std::min(message.find(piece), message.size()));
    }
    return Tr("not JSON: %1", {message});
}

// Takes the events of the parser. What is wrong is thrown where it stands.
class LineHandler : public nlohmann::json_sax<nlohmann::json>
{
  public:
    LineHandler(TapeLine& line, std::string_view text, const std::string& file, int number)
        : m_line(line), m_walk(text), m_place{file, number, 0}
    {
        if (text.substr(0, BYTE_ORDER_MARK.size()) == BYTE_ORDER_MARK) {
            m_walk.Pass(BYTE_ORDER_MARK.size());
        }
    }

    bool start_object(std::size_t) override
    {
        const Place place = NextPlace();
        if (m_inObject) {
            throw TapeError(place, FieldHolds(TrLater("an object")));
        }
        m_inObject = true;
        m_line.place = place;
        return true;
    }

    bool key(string_t& name) override
    {
        const Place place = NextPlace();
        const auto [known, isNew] = m_columns.try_emplace(name, place.column);
        if (!isNew) {
            throw TapeError(place, Tr("field \"%1\" is given twice, first in column %2",
                                      {name, std::to_string(known->second)}));
        }
        TapeField field;
        field.name = std::move(name);
        field.namePlace = place;
        m_line.fields.push_back(std::move(field));
        return true;
    }

    bool end_object() override
    {
        NextPlace();
        return true;
    }

    bool start_array(std::size_t) override { Refuse(TrLater("an array")); }
    bool null() override { Refuse("null"); }

    bool string(string_t& text) override
    {
        TapeValue& value = Value(TrLater("a text"), TapeValue::Kind::TEXT);
        if (text.find('\0') != string_t::npos) {
            throw TapeError(m_line.fields.back().valuePlace,
                            FieldHolds(TrLater("a NUL character")));
        }
        value.text = std::move(text);
        return true;
    }

    bool boolean(bool flag) override
    {
        Value(TrLater("a flag"), TapeValue::Kind::FLAG).flag = flag;
        return true;
    }

    bool number_integer(number_integer_t number) override
    {
        Value(TrLater("a number"), TapeValue::Kind::INTEGER).integer = number;
        return true;
    }

    bool number_unsigned(number_unsigned_t number) override
    {
        constexpr auto MAX = std::numeric_limits<std::int64_t>::max();
        if (number > static_cast<number_unsigned_t>(MAX)) {
            Value(TrLater("a number"), TapeValue::Kind::FRACTION);
        } else {
            Value(TrLater("a number"), TapeValue::Kind::INTEGER).integer =
                static_cast<std::int64_t>(number);
        }
        return true;
    }

    bool number_float(number_float_t, const string_t&) override
    {
        Value(TrLater("a number"), TapeValue::Kind::FRACTION);
        return true;
    }

    // Not raised for JSON.
    bool end_array() override { return false; }
    bool binary(binary_t&) override { return false; }

    bool parse_error(std::size_t position, const std::string&,
                     const nlohmann::json::exception& error) override
    {
        m_place.column = static_cast<int>(position);
        throw TapeError(m_place, ParserMessage(error.what()));
    }

  private:
    Place NextPlace()
    {
        m_place.column = m_walk.Next();
        return m_place;
    }

    std::string FieldHolds(const char* what) const
    {
        return Tr("field \"%1\" holds %2; a field holds a text, a number, true or false",
                  {m_line.fields.back().name, Tr(what)});
    }

    [[noreturn]] void Refuse(const char* what)
    {
        const Place place = NextPlace();
        throw TapeError(place, m_inObject ? FieldHolds(what)
                                          : Tr("a line holds one JSON object, not %1", {Tr(what)}));
    }

    TapeValue& Value(const char* what, TapeValue::Kind kind)
    {
        if (!m_inObject) {
            Refuse(what);
        }
        TapeField& field = m_line.fields.back();
        field.valuePlace = NextPlace();
        field.value.kind = kind;
        return field.value;
    }

    TapeLine& m_line;
    TokenWalk m_walk;
    Place m_place;
    std::map<std::string, int> m_columns; // of the fields so far, by their names
    bool m_inObject = false;
};

} // namespace

const char* KindName(TapeValue::Kind kind)
{
    switch (kind) {
    case TapeValue::Kind::TEXT:
        return Tr("a text");
    case TapeValue::Kind::INTEGER:
        return Tr("an integer");
    case TapeValue::Kind::FRACTION:
        return Tr("a number that is no 64-bit integer");
    case TapeValue::Kind::FLAG:
        return Tr("true or false");
    }
    return "";
}

TapeLine ParseLine(std::string_view text, const std::string& file, int line)
{
    // The parser takes a NUL for the end of its input.
    const std::size_t nul = text.find('\0');
    if (nul != std::string_view::npos) {
        throw TapeError({file, line, static_cast<int>(nul) + 1}, Tr("not JSON: a NUL byte"));
    }
    // ... and passes over a byte order mark on every line.
    if (line > 1 && text.substr(0, BYTE_ORDER_MARK.size()) == BYTE_ORDER_MARK) {
        throw TapeError({file, line, 1}, Tr("not JSON: a byte order mark after the first line"));
    }

    TapeLine result;
    LineHandler handler(result, text, file, line);
    nlohmann::json::sax_parse(text.begin(), text.end(), &handler);
    return result;
}

} // namespace bancada

#include "bancada/tape/TapeFields.h"

#include "bancada/tape/DecimalText.h"
#include "bancada/tape/FieldLimits.h"
#include "libs/Financial.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <utility>

namespace bancada
{
namespace
{

std::string DecimalWanted(int maxDigits, int maxDecimals, const char* example)
{
    return "a decimal text such as \"" + std::string(example) + "\", of up to " +
           std::to_string(maxDigits) + " digits and " + std::to_string(maxDecimals) + " decimals";
}

} // namespace

TapeFields::TapeFields(const TapeCommand& line, FaultSink sink)
    : m_line(line), m_sink(std::move(sink))
{
}

void TapeFields::ReportValue(const TapeField& field, const std::string& message) const
{
    ReportFault(m_sink, field.valuePlace, "field \"" + field.name + "\": " + message);
}

void TapeFields::Finish() const
{
    for (const TapeField& field : m_line.fields) {
        if (std::find(m_asked.begin(), m_asked.end(), field.name) != m_asked.end()) {
            continue;
        }
        std::string known;
        for (const std::string& name : m_asked) {
            known += (known.empty() ? "" : ", ") + name;
        }
        ReportFault(m_sink, field.namePlace,
                    m_line.name + " has no field \"" + field.name + "\"" +
                        (known.empty() ? "; it has none of its own" : "; its fields are " + known));
    }
    for (const std::string& missing : m_missing) {
        ReportFault(m_sink, m_line.place, m_line.name + " needs the field \"" + missing + "\"");
    }
}

const TapeField* TapeFields::Find(const char* name, Presence presence)
{
    assert(std::find(m_asked.begin(), m_asked.end(), name) == m_asked.end());
    m_asked.emplace_back(name);
    for (const TapeField& field : m_line.fields) {
        if (field.name == name) {
            return &field;
        }
    }
    if (presence == Presence::REQUIRED) {
        m_missing.emplace_back(name);
    }
    return nullptr;
}

const TapeValue* TapeFields::FindKind(const char* name, Presence presence, TapeValue::Kind kind,
                                      const std::string& wanted, const TapeField*& field)
{
    field = Find(name, presence);
    if (field == nullptr) {
        return nullptr;
    }
    if (field->value.kind != kind) {
        ReportValue(*field, wanted + " is due, not " + KindName(field->value.kind));
        return nullptr;
    }
    return &field->value;
}

const std::string* TapeFields::FindText(const char* name, std::size_t maxBytes, Presence presence,
                                        const std::string& why)
{
    const TapeField* field = nullptr;
    const TapeValue* value = FindKind(name, presence, TapeValue::Kind::TEXT, "a text", field);
    if (value == nullptr) {
        return nullptr;
    }
    if (value->text.size() > maxBytes) {
        ReportValue(*field, "a text of at most " + std::to_string(maxBytes) +
                                " bytes is due, not " + std::to_string(value->text.size()) + why);
        return nullptr;
    }
    return &value->text;
}

void TapeFields::Text(const char* name, char* out, std::size_t size, Presence presence, const char*,
                      const char*)
{
    if (const std::string* text = FindText(name, size - 1, presence)) {
        std::memcpy(out, text->c_str(), text->size() + 1);
    }
}

void TapeFields::Text(const char* name, std::string& out, std::size_t maxBytes, Presence presence,
                      const char*, const char*)
{
    if (const std::string* text = FindText(name, maxBytes, presence)) {
        out = *text;
    }
}

void TapeFields::ShortText(const char* name, char* out, std::size_t size, std::size_t lawBytes,
                           Presence presence, const char*, const char*)
{
    if (const std::string* text = FindText(name, size - 1, presence,
                                           ": the command has room for no more, the law's field "
                                           "for " +
                                               std::to_string(lawBytes))) {
        std::memcpy(out, text->c_str(), text->size() + 1);
    }
}

void TapeFields::Integer(const char* name, int& out, int min, int max, Presence presence,
                         const char*, const char*)
{
    const std::string wanted =
        "an integer from " + std::to_string(min) + " to " + std::to_string(max);
    const TapeField* field = nullptr;
    const TapeValue* value = FindKind(name, presence, TapeValue::Kind::INTEGER, wanted, field);
    if (value == nullptr) {
        return;
    }
    if (value->integer < min || value->integer > max) {
        ReportValue(*field, wanted + " is due, not " + std::to_string(value->integer));
        return;
    }
    out = static_cast<int>(value->integer);
}

void TapeFields::Flag(const char* name, bool& out, Presence presence, const char*, const char*)
{
    const TapeField* field = nullptr;
    const TapeValue* value =
        FindKind(name, presence, TapeValue::Kind::FLAG, "true or false", field);
    if (value != nullptr) {
        out = value->flag;
    }
}

bool TapeFields::FindDecimal(const char* name, int maxDigits, int maxDecimals, Presence presence,
                             const char* example, Decimal& out)
{
    const std::string wanted = DecimalWanted(maxDigits, maxDecimals, example);
    const TapeField* field = nullptr;
    const TapeValue* value = FindKind(name, presence, TapeValue::Kind::TEXT, wanted, field);
    if (value == nullptr) {
        return false;
    }
    if (!ParseDecimal(value->text, maxDigits, maxDecimals, out)) {
        ReportValue(*field, wanted + " is due");
        return false;
    }
    return true;
}

void TapeFields::Money(const char* name, Financial& out, Presence presence, const char*,
                       const char* example)
{
    Decimal amount;
    if (!FindDecimal(name, MONEY_DIGITS, MONEY_DECIMALS, presence, example, amount)) {
        return;
    }
    std::int64_t cents = amount.unscaled;
    for (int decimals = amount.decimals; decimals < MONEY_DECIMALS; ++decimals) {
        cents *= 10;
    }
    out = Financial::FromCents(cents);
}

void TapeFields::Quantity(const char* name, Decimal& out, int maxDecimals, Presence presence,
                          const char*, const char* example)
{
    assert(maxDecimals <= QUANTITY_DECIMALS);
    FindDecimal(name, QUANTITY_DIGITS, maxDecimals, presence, example, out);
}

void TapeFields::Percent(const char* name, int& hundredths, Presence presence, const char*,
                         const char* example)
{
    Decimal percent;
    if (!FindDecimal(name, PERCENT_DIGITS, PERCENT_DECIMALS, presence, example, percent)) {
        return;
    }
    std::int64_t value = percent.unscaled;
    for (int decimals = percent.decimals; decimals < PERCENT_DECIMALS; ++decimals) {
        value *= 10;
    }
    hundredths = static_cast<int>(value);
}

void TapeFields::Choice(const char* name, int& out, std::initializer_list<Option> options,
                        Presence presence, const char*, const char*)
{
    std::string wanted = "one of";
    for (const Option& option : options) {
        wanted += std::string(wanted == "one of" ? " \"" : ", \"") + option.first + "\"";
    }
    const TapeField* field = nullptr;
    const TapeValue* value = FindKind(name, presence, TapeValue::Kind::TEXT, wanted, field);
    if (value == nullptr) {
        return;
    }
    for (const Option& option : options) {
        if (value->text == option.first) {
            out = option.second;
            return;
        }
    }
    ReportValue(*field, wanted + " is due");
}

} // namespace bancada

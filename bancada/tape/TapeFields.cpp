#include "bancada/tape/TapeFields.h"

#include "bancada/Messages.h"
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
    return Tr("a decimal text such as \"%1\", of up to %2 digits and %3 decimals",
              {example, std::to_string(maxDigits), std::to_string(maxDecimals)});
}

} // namespace

TapeFields::TapeFields(const TapeCommand& line, FaultSink sink)
    : m_line(line), m_sink(std::move(sink))
{
}

void TapeFields::ReportValue(const TapeField& field, const std::string& message) const
{
    ReportFault(m_sink, field.valuePlace, Tr("field \"%1\": %2", {field.name, message}));
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
                    known.empty() ? Tr("%1 has no field \"%2\"; it has none of its own",
                                       {m_line.name, field.name})
                                  : Tr("%1 has no field \"%2\"; its fields are %3",
                                       {m_line.name, field.name, known}));
    }
    for (const std::string& missing : m_missing) {
        ReportFault(m_sink, m_line.place, Tr("%1 needs the field \"%2\"", {m_line.name, missing}));
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
                                      const Wanted& wanted, const TapeField*& field)
{
    field = Find(name, presence);
    if (field == nullptr) {
        return nullptr;
    }
    if (field->value.kind != kind) {
        ReportValue(*field, Tr("%1 is due, not %2", {wanted(), KindName(field->value.kind)}));
        return nullptr;
    }
    return &field->value;
}

const std::string* TapeFields::FindText(const char* name, std::size_t maxBytes, Presence presence,
                                        const Wanted& why)
{
    const TapeField* field = nullptr;
    const TapeValue* value = FindKind(
        name, presence, TapeValue::Kind::TEXT, [] { return std::string(Tr("a text")); }, field);
    if (value == nullptr) {
        return nullptr;
    }
    if (value->text.size() > maxBytes) {
        ReportValue(*field, Tr("a text of at most %1 bytes is due, not %2",
                               {std::to_string(maxBytes), std::to_string(value->text.size())}) +
                                (why ? why() : ""));
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
    if (const std::string* text = FindText(name, size - 1, presence, [lawBytes] {
            return Tr(": the command has room for no more, the law's field for %1",
                      {std::to_string(lawBytes)});
        })) {
        std::memcpy(out, text->c_str(), text->size() + 1);
    }
}

void TapeFields::Integer(const char* name, int& out, int min, int max, Presence presence,
                         const char*, const char*)
{
    const auto wanted = [min, max] {
        return Tr("an integer from %1 to %2", {std::to_string(min), std::to_string(max)});
    };
    const TapeField* field = nullptr;
    const TapeValue* value = FindKind(name, presence, TapeValue::Kind::INTEGER, wanted, field);
    if (value == nullptr) {
        return;
    }
    if (value->integer < min || value->integer > max) {
        ReportValue(*field, Tr("%1 is due, not %2", {wanted(), std::to_string(value->integer)}));
        return;
    }
    out = static_cast<int>(value->integer);
}

void TapeFields::Flag(const char* name, bool& out, Presence presence, const char*, const char*)
{
    const TapeField* field = nullptr;
    const TapeValue* value = FindKind(
        name, presence, TapeValue::Kind::FLAG, [] { return std::string(Tr("true or false")); },
        field);
    if (value != nullptr) {
        out = value->flag;
    }
}

bool TapeFields::FindDecimal(const char* name, int maxDigits, int maxDecimals, Presence presence,
                             const char* example, Decimal& out)
{
    const auto wanted = [=] { return DecimalWanted(maxDigits, maxDecimals, example); };
    const TapeField* field = nullptr;
    const TapeValue* value = FindKind(name, presence, TapeValue::Kind::TEXT, wanted, field);
    if (value == nullptr) {
        return false;
    }
    if (!ParseDecimal(value->text, maxDigits, maxDecimals, out)) {
        ReportValue(*field, Tr("%1 is due", {wanted()}));
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
    const auto wanted = [&options] {
        std::string names;
        for (const Option& option : options) {
            names += std::string(names.empty() ? "\"" : ", \"") + option.first + "\"";
        }
        return Tr("one of %1", {names});
    };
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
    ReportValue(*field, Tr("%1 is due", {wanted()}));
}

} // namespace bancada

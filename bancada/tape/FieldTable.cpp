#include "bancada/tape/FieldTable.h"

#include "bancada/Messages.h"
#include "bancada/registro/Decimal.h"
#include "bancada/tape/FieldLimits.h"
#include "libs/Financial.h"

#include <nlohmann/json.hpp>

namespace bancada
{
namespace
{

std::string Quoted(const std::string& text)
{
    return nlohmann::json(text).dump();
}

std::string MoneyText(const Financial& value)
{
    char text[BigInt::TEXT_SIZE + 2];
    return value.ToString(text, static_cast<int>(sizeof text), FIN_STR_3, MONEY_DECIMALS, 0);
}

std::string DecimalText(std::int64_t unscaled, int decimals)
{
    std::string text = std::to_string(unscaled);
    const auto places = static_cast<std::size_t>(decimals);
    if (places == 0) {
        return text;
    }
    if (text.size() <= places) {
        text.insert(0, places + 1 - text.size(), '0');
    }
    return text.insert(text.size() - places, ".");
}

std::string DecimalKind(int digits, int decimals)
{
    return Tr("decimal text, up to %1 digits and %2 decimals",
              {std::to_string(digits), std::to_string(decimals)});
}

// A bar would end the cell.
std::string Cell(std::string text)
{
    for (std::size_t at = 0; (at = text.find('|', at)) != std::string::npos; at += 2) {
        text.insert(at, 1, '\\');
    }
    return text;
}

} // namespace

void FieldTable::Add(const char* name, const std::string& kind, Presence presence,
                     const std::string& byDefault, const char* doc, const std::string& example)
{
    m_fields.push_back({name, kind, presence,
                        presence == Presence::REQUIRED ? std::string() : byDefault, Tr(doc),
                        example});
}

void FieldTable::Text(const char* name, char* out, std::size_t size, Presence presence,
                      const char* doc, const char* example)
{
    Add(name, Tr("text, at most %1 bytes", {std::to_string(size - 1)}), presence, Quoted(out), doc,
        Quoted(example));
}

void FieldTable::Text(const char* name, std::string& out, std::size_t maxBytes, Presence presence,
                      const char* doc, const char* example)
{
    Add(name, Tr("text, at most %1 bytes", {std::to_string(maxBytes)}), presence, Quoted(out), doc,
        Quoted(example));
}

void FieldTable::ShortText(const char* name, char* out, std::size_t size, std::size_t lawBytes,
                           Presence presence, const char* doc, const char* example)
{
    Add(name,
        Tr("text, at most %1 bytes; the law's field has %2",
           {std::to_string(size - 1), std::to_string(lawBytes)}),
        presence, Quoted(out), doc, Quoted(example));
}

void FieldTable::Integer(const char* name, int& out, int min, int max, Presence presence,
                         const char* doc, const char* example)
{
    Add(name, Tr("integer, %1 to %2", {std::to_string(min), std::to_string(max)}), presence,
        std::to_string(out), doc, example);
}

void FieldTable::Flag(const char* name, bool& out, Presence presence, const char* doc,
                      const char* example)
{
    Add(name, Tr("true or false"), presence, out ? "true" : "false", doc, example);
}

void FieldTable::Money(const char* name, Financial& out, Presence presence, const char* doc,
                       const char* example)
{
    Add(name, Tr("money: %1", {DecimalKind(MONEY_DIGITS, MONEY_DECIMALS)}), presence,
        Quoted(MoneyText(out)), doc, Quoted(example));
}

void FieldTable::Quantity(const char* name, Decimal& out, int maxDecimals, Presence presence,
                          const char* doc, const char* example)
{
    Add(name, DecimalKind(QUANTITY_DIGITS, maxDecimals), presence,
        Quoted(DecimalText(out.unscaled, out.decimals)), doc, Quoted(example));
}

void FieldTable::Percent(const char* name, int& hundredths, Presence presence, const char* doc,
                         const char* example)
{
    Add(name, Tr("percentage: %1", {DecimalKind(PERCENT_DIGITS, PERCENT_DECIMALS)}), presence,
        Quoted(DecimalText(hundredths, PERCENT_DECIMALS)), doc, Quoted(example));
}

void FieldTable::Choice(const char* name, int& out, std::initializer_list<Option> options,
                        Presence presence, const char* doc, const char* example)
{
    std::string kind;
    std::string byDefault;
    for (const Option& option : options) {
        kind += (kind.empty() ? "" : std::string(" ") + Tr("or") + " ") + Quoted(option.first);
        if (option.second == out) {
            byDefault = Quoted(option.first);
        }
    }
    Add(name, kind, presence, byDefault, doc, Quoted(example));
}

std::string MarkdownTable(const std::vector<FieldDescription>& fields)
{
    if (fields.empty()) {
        return "";
    }
    std::string table =
        std::string("| ") + Tr("Field | Value | Without it | Meaning") + " |\n|---|---|---|---|\n";
    for (const FieldDescription& field : fields) {
        table += "| `" + field.name + "` | " + Cell(field.kind) + " | ";
        table += field.presence == Presence::REQUIRED ? Tr("required")
                                                      : "`" + Cell(field.byDefault) + "`";
        table += " | " + Cell(field.doc) + " |\n";
    }
    return table;
}

std::string ExampleLine(const std::string& command, const std::vector<FieldDescription>& fields)
{
    std::string line = "{\"cmd\": " + Quoted(command);
    for (const FieldDescription& field : fields) {
        line += ", \"" + field.name + "\": " + field.example;
    }
    return line + "}";
}

} // namespace bancada

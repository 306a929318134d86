// Describes the fields of commands.
#pragma once

#include "bancada/tape/FieldVisitor.h"

#include <string>
#include <vector>

namespace bancada
{

struct FieldDescription {
    std::string name;
    std::string kind; // "text, at most 49 bytes", "integer, 1 to 20" and so on
    Presence presence = Presence::REQUIRED;
    std::string byDefault; // as on the tape; of a required field, empty
    std::string doc;
    std::string example; // as on the tape, a text with its quotes
};

// Takes the list of a command's fields down, with the defaults that a new command holds.
class FieldTable final : public FieldVisitor
{
  public:
    const std::vector<FieldDescription>& Fields() const { return m_fields; }

    using FieldVisitor::Text;
    void Text(const char* name, char* out, std::size_t size, Presence presence, const char* doc,
              const char* example) override;
    void Text(const char* name, std::string& out, std::size_t maxBytes, Presence presence,
              const char* doc, const char* example) override;
    void ShortText(const char* name, char* out, std::size_t size, std::size_t lawBytes,
                   Presence presence, const char* doc, const char* example) override;
    void Integer(const char* name, int& out, int min, int max, Presence presence, const char* doc,
                 const char* example) override;
    void Flag(const char* name, bool& out, Presence presence, const char* doc,
              const char* example) override;
    void Money(const char* name, Financial& out, Presence presence, const char* doc,
               const char* example) override;
    void Quantity(const char* name, Decimal& out, int maxDecimals, Presence presence,
                  const char* doc, const char* example) override;
    void Percent(const char* name, int& hundredths, Presence presence, const char* doc,
                 const char* example) override;
    void Choice(const char* name, int& out, std::initializer_list<Option> options,
                Presence presence, const char* doc, const char* example) override;

  private:
    void Add(const char* name, const std::string& kind, Presence presence,
             const std::string& byDefault, const char* doc, const std::string& example);

    std::vector<FieldDescription> m_fields;
};

// A Markdown table of the fields, one row each; empty for a command without fields.
std::string MarkdownTable(const std::vector<FieldDescription>& fields);

// A line of the tape: the command with every field, each with its example.
std::string ExampleLine(const std::string& command, const std::vector<FieldDescription>& fields);

} // namespace bancada

// Reads a command's fields from a line of the tape.
#pragma once

#include "bancada/tape/FaultSink.h"
#include "bancada/tape/FieldVisitor.h"
#include "bancada/tape/TapeCommand.h"

#include <functional>
#include <string>
#include <vector>

namespace bancada
{

// Fills a command from a line. After the command has listed its fields, Finish complains about what
// is missing and about what nobody asked for. Until then, and after a TapeError, the command is
// filled in part. Where `sink` is given, it gets every fault, and nothing is thrown.
class TapeFields final : public FieldVisitor
{
  public:
    // `line` must outlive this object.
    explicit TapeFields(const TapeCommand& line, FaultSink sink = nullptr);

    // Reports the fields that the command did not ask for, then with the place of the line the
    // required ones that are missing.
    void Finish() const;

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
    void ReportValue(const TapeField& field, const std::string& message) const;
    // The field of that name, or null when the line has none.
    const TapeField* Find(const char* name, Presence presence);
    // Says a part of a message; asked for it when there is something to report.
    using Wanted = std::function<std::string()>;
    // Its value, which must be of that kind; null when the line has none of it.
    const TapeValue* FindKind(const char* name, Presence presence, TapeValue::Kind kind,
                              const Wanted& wanted, const TapeField*& field);
    // `why` ends the message about a longer text.
    const std::string* FindText(const char* name, std::size_t maxBytes, Presence presence,
                                const Wanted& why = {});
    bool FindDecimal(const char* name, int maxDigits, int maxDecimals, Presence presence,
                     const char* example, Decimal& out);

    const TapeCommand& m_line;
    FaultSink m_sink;
    std::vector<std::string> m_asked;
    std::vector<std::string> m_missing; // the required fields that the line has not
};

} // namespace bancada

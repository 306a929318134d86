// How a command names its fields.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <utility>

class Financial;

namespace bancada
{

struct Decimal; // bancada/registro/Decimal.h

enum class Presence {
    REQUIRED, // a line without the field is a tape error
    OPTIONAL, // without the field `out` stays as it is: what it holds before is the default
};

// A command lists its fields once, by one call a field, in the order in which they are documented.
// The same list reads a line of the tape, writes the table of docs/tape.md and checks itself, so
// the calls must not depend on the values of fields, and `out` must hold the default beforehand.
//
// `name` is the field's name on the tape (snake_case), `doc` its meaning and unit in one sentence
// (no line break), `example` the value as it stands on the tape without the quotes of a text
// ("12.50", "3", "true", "desconto"). All three are literals, `doc` one that TrLater marks.
//
// A value of the wrong kind or outside its range is a TapeError with the place of the value.
class FieldVisitor
{
  public:
    virtual ~FieldVisitor() = default;

    // A text of at most `size` - 1 bytes of UTF-8 without NUL; `out` gets it NUL-terminated, and
    // nothing of it is cut: a longer one is a TapeError.
    virtual void Text(const char* name, char* out, std::size_t size, Presence presence,
                      const char* doc, const char* example) = 0;
    // The same into a string, of at most `maxBytes` bytes.
    virtual void Text(const char* name, std::string& out, std::size_t maxBytes, Presence presence,
                      const char* doc, const char* example) = 0;

    // The array of a command, whose size is known.
    template <std::size_t SIZE>
    void Text(const char* name, char (&out)[SIZE], Presence presence, const char* doc,
              const char* example)
    {
        Text(name, out, SIZE, presence, doc, example);
    }

    // The array of a command that is shorter than the law's field, which has `lawBytes`: a longer
    // text is a TapeError that says so. A visitor that makes no difference takes it as a Text.
    virtual void ShortText(const char* name, char* out, std::size_t size, std::size_t lawBytes,
                           Presence presence, const char* doc, const char* example);

    // A JSON integer from `min` to `max`.
    virtual void Integer(const char* name, int& out, int min, int max, Presence presence,
                         const char* doc, const char* example) = 0;

    // true or false.
    virtual void Flag(const char* name, bool& out, Presence presence, const char* doc,
                      const char* example) = 0;

    // An amount of money as a decimal text without sign, with up to 2 decimals and up to 15 digits
    // before the point: "12.50".
    virtual void Money(const char* name, Financial& out, Presence presence, const char* doc,
                       const char* example) = 0;

    // A number as a decimal text without sign, with up to `maxDecimals` decimals and up to 12
    // digits before the point. The decimals as written are kept: "1.500" is {1500, 3}.
    virtual void Quantity(const char* name, Decimal& out, int maxDecimals, Presence presence,
                          const char* doc, const char* example) = 0;

    // A percentage as a decimal text without sign, with up to 2 decimals and up to 5 digits before
    // the point; `hundredths` of "10.50" is 1050.
    virtual void Percent(const char* name, int& hundredths, Presence presence, const char* doc,
                         const char* example) = 0;

    // One of the texts of `options`; `out` gets the value beside it.
    using Option = std::pair<const char*, int>;
    virtual void Choice(const char* name, int& out, std::initializer_list<Option> options,
                        Presence presence, const char* doc, const char* example) = 0;
};

} // namespace bancada

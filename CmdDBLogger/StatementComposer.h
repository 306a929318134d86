// The statement composer: the fixed arrays in which a logger builds SQL text, and the forms in
// which values go into it.
//
// A logger makes a Statement in its own frame, begins it, appends its pieces in the order of the
// columns and executes it. Each form is named by the call and takes the required text as it is
// written in the table of the row, its conversion ("%d", "%s", "%c", "%.2f", "%02d") standing where
// the value goes; Pattern.h finds a literal that does not fit its form. No pattern is ever handed
// to a formatting routine.
//
// Nothing is written past an array. A piece that would not fit is left out whole, and so is all
// that follows: the statement has overflowed until it is begun again, and is not executed.
#pragma once

#include "CmdDBLogger/Pattern.h"
#include "RtcClasses.h"
#include "libs/BigInt.h"
#include "libs/CharTools.h"
#include "libs/Financial.h"
#include "libs/FirmwareTypes.h"

#include <cstddef>
#include <cstring>

class Command;
struct sqlite3;

// Sizes of the arrays in bytes, terminators included.
constexpr int SQL_SIZE = 5000;            // a statement
constexpr int SQL_SIZE_CUPOM = 8000;      // one of a fiscal receipt, or of outros_documentos
constexpr int SQL_SIZE_DATA_FINAL = 500;  // the update of a document's end time
constexpr int AUX_SIZE = 500;             // one value, and what the fiscal data model writes
constexpr int AUX_SIZE_FECHAMENTO = 1500; // one text of a receipt's closing
constexpr int AUX_SIZE_DATA_FINAL = 50;   // one instant

// The statement's array is cleared in words.
constexpr std::size_t ARRAY_ALIGNMENT = 8;

class StatementComposer
{
  public:
    StatementComposer(const StatementComposer&) = delete;
    StatementComposer& operator=(const StatementComposer&) = delete;

    // Clears the whole statement array and starts a new statement in it.
    void Begin();
    template <std::size_t size>
    [[gnu::always_inline]] void Begin(const char (&head)[size])
    {
        BeginWith(head, size - 1);
    }

    // The statement composed so far, NUL-terminated, and its length in bytes. The pointer lives as
    // long as the composer; the text until the next call.
    const char* Sql() const { return m_sql; }
    int Length() const { return static_cast<int>(m_end - m_sql); }

    // --- Forms -------------------------------------------------------------------------------

    // A fixed piece, as it stands: one value, or several that follow each other in the table.
    template <std::size_t size>
    [[gnu::always_inline]] void Piece(const char (&literal)[size])
    {
        Append(literal, size - 1);
    }

    // "%d"
    void Integer(IntegerPattern pattern, int value)
    {
        InsertInteger(pattern.text, LengthsOf(pattern), value);
    }

    // "%s": the text in an array, as it is, not escaped. It ends with the array at the latest.
    template <std::size_t size>
    void Text(TextPattern pattern, const char (&text)[size])
    {
        InsertText(pattern.text, LengthsOf(pattern), text, size);
    }

    // The same with every `from` turned into `to`, in the array itself.
    template <std::size_t size>
    void TextReplacing(TextPattern pattern, char (&text)[size], char from, char to)
    {
        InsertTextReplacing(pattern.text, LengthsOf(pattern), text, size, from, to);
    }

    // "%s": the NUL-terminated text at `text`, as it is, not escaped; null is an empty text.
    void TextAt(TextPattern pattern, const char* text)
    {
        InsertTextAt(pattern.text, LengthsOf(pattern), text);
    }

    // "%c". NUL ends the form, as it would end its text: what follows in the pattern is left out.
    void Character(CharacterPattern pattern, char character)
    {
        InsertCharacter(pattern.text, LengthsOf(pattern), character);
    }

    // "%s": the value's display form of two decimals without its '.', its ',' turned into '.';
    // other styles and decimals as Financial::ToString gives them.
    void MoneyText(TextPattern pattern, const Financial& value)
    {
        InsertMoney(pattern.text, LengthsOf(pattern), value);
    }
    void MoneyText(TextPattern pattern, const Financial& value, FINANCIAL_STR_TIPO style,
                   int decimals)
    {
        InsertMoney(pattern.text, LengthsOf(pattern), value, style, decimals);
    }

    // "%s": a quantity or unit price as the fiscal data model wrote it, every ',' turned into '.'
    // (in `text` itself), no '.' removed.
    void DecimalText(TextPattern pattern, char* text)
    {
        InsertDecimal(pattern.text, LengthsOf(pattern), text);
    }

    // "%s": yyyy-mm-dd hh:mm:ss, or yyyy-mm-dd.
    void DateTimeText(TextPattern pattern, RtcAbsoluteTime instant)
    {
        InsertInstant(pattern.text, LengthsOf(pattern), instant);
    }
    void DateText(TextPattern pattern, RtcAbsoluteTime instant)
    {
        InsertDate(pattern.text, LengthsOf(pattern), instant);
    }

    // "%.2f": the lowest word of `hundredths`, unsigned, divided by 100.
    void PercentText(PercentPattern pattern, const BigInt& hundredths)
    {
        InsertPercent(pattern, hundredths.number[0]);
    }

    // "%02d" three times: the number of a tax-rate totalizer, its rate's whole percent and
    // hundredths, the rate given in hundredths of a percent (both cut toward zero).
    void TaxCode(const TaxCodePattern& pattern, int number, int rate);

    // Executes the statement as `command`'s and answers what Command::DBLoggerExecuteSQL does. One
    // that has overflowed is not executed: the firmware log gets the two entries of a rejected
    // statement, the second with the text composed so far, and the answer is TRUE.
    BOOL Execute(Command& command, sqlite3* db) const;

  protected:
    // Clears the derived class's arrays, which stand side by side: that of the statement, aligned
    // to ARRAY_ALIGNMENT, the logger's, and the one in which money is turned into text.
    StatementComposer(char* arrays, int sqlSize, int auxSize, int workSize);
    ~StatementComposer() = default;

  private:
    // Fills an array with zero bytes. REQUIRES: it is aligned to ARRAY_ALIGNMENT.
    static void Clear(char* array, std::size_t size);

    // How many bytes of a pattern stand before its conversion, and how many behind it, in one word:
    // a form takes one register less, which is a tenth of what a logger's code takes.
    using Lengths = std::size_t;

    template <class Conversion>
    [[gnu::always_inline]] static Lengths LengthsOf(const Pattern<Conversion>& pattern)
    {
        return pattern.before << PATTERN_AFTER_BITS | pattern.after;
    }

    void BeginWith(const char* head, std::size_t length);
    void Append(const char* text, std::size_t length);
    void Insert(const char* pattern, Lengths lengths, const char* text, std::size_t length);

    void InsertInteger(const char* pattern, Lengths lengths, int value);
    void InsertText(const char* pattern, Lengths lengths, const char* text, std::size_t size);
    void InsertTextReplacing(const char* pattern, Lengths lengths, char* text, std::size_t size,
                             char from, char to);
    void InsertTextAt(const char* pattern, Lengths lengths, const char* text);
    void InsertCharacter(const char* pattern, Lengths lengths, char character);
    void InsertMoney(const char* pattern, Lengths lengths, const Financial& value,
                     FINANCIAL_STR_TIPO style, int decimals);
    void InsertMoney(const char* pattern, Lengths lengths, const Financial& value);
    void InsertDecimal(const char* pattern, Lengths lengths, char* text);
    void InsertInstant(const char* pattern, Lengths lengths, RtcAbsoluteTime instant);
    void InsertDate(const char* pattern, Lengths lengths, RtcAbsoluteTime instant);
    void InsertPercent(const PercentPattern& pattern, UINT32 hundredths);

    char* m_sql;
    std::size_t m_sqlSize;
    char* m_end;        // of the text composed so far
    std::size_t m_room; // bytes from there to the array's end; 0 after an overflow
    char* m_work;
    int m_workSize;
};

// The arrays of a statement, side by side so that one fill clears them all.
template <int sqlSize, int auxSize, int aux2Size>
struct StatementArrays {
    alignas(ARRAY_ALIGNMENT) char sql[sqlSize];

    // Where the fiscal data model writes a text, and where a text is changed before it is appended.
    // It is the logger's alone; the forms do not touch it.
    char aux[auxSize];

    // Where the forms turn money into text; in between, another array of the logger's.
    char aux2[aux2Size];
};

// A composer with its arrays, all cleared when it is made.
template <int sqlSize, int auxSize = AUX_SIZE, int aux2Size = AUX_SIZE>
class Statement : private StatementArrays<sqlSize, auxSize, aux2Size>, public StatementComposer
{
    using Arrays = StatementArrays<sqlSize, auxSize, aux2Size>;

  public:
    using Arrays::aux;
    using Arrays::aux2;

    Statement() : StatementComposer(Arrays::sql, sqlSize, auxSize, aux2Size) {}

    // Puts the text of an array and what is to follow it into `aux`, and answers `aux`.
    template <std::size_t size, std::size_t afterSize>
    char* CopyToAux(const char (&text)[size], const char (&after)[afterSize])
    {
        static_assert(size + afterSize - 1 <= auxSize, "the text fits the work array");
        const std::size_t length = CharLength(text, size - 1);
        std::memcpy(aux, text, length);
        std::memcpy(aux + length, after, afterSize);
        return aux;
    }
};

// The one that most loggers make, instantiated once.
extern template class Statement<SQL_SIZE>;

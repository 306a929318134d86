// The statement composer: the fixed arrays in which a logger builds SQL text, and the forms in
// which values go into it.
//
// A logger makes a Statement in its own frame, begins it, appends its pieces in the order of the
// columns and executes it. Each form is named by the call and takes the required text as it is
// written in the table of the row, its conversion ("%d", "%s", "%c", "%.2f", "%02d") standing where
// the value goes; no pattern is ever handed to a formatting routine. REQUIRES of every pattern: it
// is a literal with the conversions that its form names.
//
// Nothing is written past an array. A piece that would not fit is left out whole, and so is all
// that follows: the statement has overflowed until it is begun again, and is not executed.
#pragma once

#include "RtcClasses.h"
#include "libs/BigInt.h"
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

class StatementComposer
{
  public:
    StatementComposer(const StatementComposer&) = delete;
    StatementComposer& operator=(const StatementComposer&) = delete;

    // Clears the whole statement array and starts a new statement in it.
    void Begin();
    void Begin(const char* head)
    {
        Begin();
        Piece(head);
    }

    // The statement composed so far, NUL-terminated, and its length in bytes. The pointer lives as
    // long as the composer; the text until the next call.
    const char* Sql() const { return m_sql; }
    int Length() const { return static_cast<int>(m_length); }

    // --- Forms -------------------------------------------------------------------------------

    // A fixed piece, as it stands.
    void Piece(const char* literal) { Append(literal, std::strlen(literal)); }

    // "%d"
    void Integer(const char* pattern, int value);

    // "%s": the text in an array, as it is, not escaped. It ends with the array at the latest.
    template <std::size_t size>
    void Text(const char* pattern, const char (&text)[size])
    {
        Insert(pattern, text, strnlen(text, size));
    }

    // "%s": the NUL-terminated text at `text`, as it is, not escaped; null is an empty text.
    void TextAt(const char* pattern, const char* text)
    {
        if (text == nullptr) {
            text = "";
        }
        Insert(pattern, text, std::strlen(text));
    }

    // "%c". NUL ends the form, as it would end its text: what follows in the pattern is left out.
    void Character(const char* pattern, char character);

    // "%s": the value's display form of two decimals without its '.', its ',' turned into '.';
    // other styles and decimals as Financial::ToString gives them.
    void MoneyText(const char* pattern, const Financial& value,
                   FINANCIAL_STR_TIPO style = FIN_STR_DEFAULT, int decimals = 0);

    // "%s": a quantity or unit price as the fiscal data model wrote it, every ',' turned into '.'
    // (in `text` itself), no '.' removed.
    void DecimalText(const char* pattern, char* text);

    // "%s": yyyy-mm-dd hh:mm:ss, or yyyy-mm-dd.
    void DateTimeText(const char* pattern, RtcAbsoluteTime instant);
    void DateText(const char* pattern, RtcAbsoluteTime instant);

    // "%.2f": the lowest word of `hundredths`, unsigned, divided by 100.
    void PercentText(const char* pattern, const BigInt& hundredths);

    // "%02d" three times: the number of a tax-rate totalizer, its rate's whole percent and
    // hundredths, the rate given in hundredths of a percent (both cut toward zero).
    void TaxCode(const char* pattern, int number, int rate);

    // Executes the statement as `command`'s and answers what Command::DBLoggerExecuteSQL does. One
    // that has overflowed is not executed: the firmware log gets the two entries of a rejected
    // statement, the second with the text composed so far, and the answer is TRUE.
    BOOL Execute(Command& command, sqlite3* db) const;

  protected:
    // `work` is where money and instants are turned into text. The arrays are the derived class's,
    // which clears them.
    StatementComposer(char* sql, int sqlSize, char* work, int workSize)
        : m_sql(sql), m_sqlSize(static_cast<std::size_t>(sqlSize)), m_work(work),
          m_workSize(workSize)
    {
    }
    ~StatementComposer() = default;

    // Fills an array with zero bytes.
    static void Clear(char* array, std::size_t size);

  private:
    void Append(const char* text, std::size_t length);
    void Insert(const char* pattern, const char* text, std::size_t length);
    const char* UpToConversion(const char* pattern);
    const char* TwoDigits(const char* pattern, int value);

    char* m_sql;
    std::size_t m_sqlSize;
    std::size_t m_length = 0;
    char* m_work;
    int m_workSize;
    bool m_overflow = false;
};

// A composer with its arrays, all cleared when it is made.
template <int sqlSize, int auxSize = AUX_SIZE, int aux2Size = AUX_SIZE>
class Statement : public StatementComposer
{
  public:
    Statement() : StatementComposer(sql, sqlSize, aux2, aux2Size)
    {
        Clear(sql, sqlSize);
        Clear(aux, auxSize);
        Clear(aux2, aux2Size);
    }

    // Where the fiscal data model writes a text, and where a text is changed before it is appended.
    // It is the logger's alone; the forms above do not touch it.
    char aux[auxSize];

    // Puts the text of an array and what is to follow it into `aux`, and answers `aux`.
    template <std::size_t size, std::size_t afterSize>
    char* CopyToAux(const char (&text)[size], const char (&after)[afterSize])
    {
        static_assert(size + afterSize - 1 <= auxSize, "the text fits the work array");
        const std::size_t length = strnlen(text, size - 1);
        std::memcpy(aux, text, length);
        std::memcpy(aux + length, after, afterSize);
        return aux;
    }

  private:
    static_assert(aux2Size >= AUX_SIZE_DATA_FINAL, "an instant fits the work array");

    char sql[sqlSize];
    char aux2[aux2Size];
};

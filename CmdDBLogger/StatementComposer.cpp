#include "CmdDBLogger/StatementComposer.h"

#include "CmdDBLogger/RejectedStatement.h"
#include "Interpreter.h"
#include "libs/Digits.h"

#include <cstdint>
#include <initializer_list>

namespace
{

// Digits and sign of any 32-bit integer.
constexpr std::size_t INTEGER_SIZE = 11;

// Writes `value` so that it ends before `end`, with a '0' before a lone digit if so asked; answers
// the first character.
char* WriteIntegerBefore(char* end, int value, bool twoDigits = false)
{
    const UINT32 magnitude =
        value < 0 ? 0u - static_cast<UINT32>(value) : static_cast<UINT32>(value);
    char* first = WriteDigitsBefore(end, magnitude);
    if (value < 0) {
        *--first = '-';
    } else if (twoDigits && magnitude < 10) {
        *--first = '0';
    }
    return first;
}

// Most pieces are of a few bytes, fewer than calling the C library takes.
[[gnu::always_inline]] inline void Copy(char* to, const char* from, std::size_t length)
{
    if (length > 4) {
        std::memcpy(to, from, length);
    } else if (length >= 2) {
        const std::size_t rest = length - 2;
        std::memcpy(to, from, 2);
        std::memcpy(to + rest, from + rest, 2);
    } else if (length == 1) {
        *to = *from;
    }
}

} // namespace

StatementComposer::StatementComposer(char* arrays, int sqlSize, int auxSize, int workSize)
    : m_sql(arrays), m_sqlSize(static_cast<std::size_t>(sqlSize)), m_end(arrays), m_room(m_sqlSize),
      m_work(arrays + sqlSize + auxSize), m_workSize(workSize)
{
    Clear(arrays,
          m_sqlSize + static_cast<std::size_t>(auxSize) + static_cast<std::size_t>(workSize));
}

void StatementComposer::Clear(char* array, std::size_t size)
{
#if defined(__arm__)
    // The C library of this processor takes nine instructions for 32 bytes, which would be a third
    // of a logger's; this loop takes five. The optimizer leaves volatile stores as they are; others
    // it would make that call of again.
    using Word [[gnu::may_alias]] = volatile std::uint64_t;
    constexpr std::size_t WORDS = 16;
    constexpr std::size_t BLOCK = WORDS * sizeof(Word);
    for (; size >= BLOCK; size -= BLOCK) {
        Word* const word = reinterpret_cast<Word*>(array);
#pragma GCC unroll 16
        for (std::size_t i = 0; i < WORDS; ++i) {
            word[i] = 0;
        }
        array += BLOCK;
    }
#endif
    std::memset(array, 0, size);
}

void StatementComposer::Begin()
{
    Clear(m_sql, m_sqlSize);
    m_end = m_sql;
    m_room = m_sqlSize;
}

void StatementComposer::BeginWith(const char* head, std::size_t length)
{
    Begin();
    Append(head, length);
}

// Room for the terminator is always kept: it is there, since the whole array was cleared.
void StatementComposer::Append(const char* text, std::size_t length)
{
    if (length >= m_room) {
        m_room = 0;
        return;
    }
    Copy(m_end, text, length);
    m_end += length;
    m_room -= length;
}

// The conversion is of two characters.
void StatementComposer::Insert(const char* pattern, Lengths lengths, const char* text,
                               std::size_t length)
{
    const std::size_t before = lengths >> PATTERN_AFTER_BITS;
    const std::size_t after = lengths & ((Lengths{1} << PATTERN_AFTER_BITS) - 1);
    Append(pattern, before);
    Append(text, length);
    Append(pattern + before + TextPattern::WIDTH, after);
}

void StatementComposer::InsertInteger(const char* pattern, Lengths lengths, int value)
{
    char digits[INTEGER_SIZE];
    char* const end = digits + INTEGER_SIZE;
    const char* const first = WriteIntegerBefore(end, value);
    Insert(pattern, lengths, first, static_cast<std::size_t>(end - first));
}

void StatementComposer::InsertText(const char* pattern, Lengths lengths, const char* text,
                                   std::size_t size)
{
    Insert(pattern, lengths, text, CharLength(text, size));
}

void StatementComposer::InsertTextReplacing(const char* pattern, Lengths lengths, char* text,
                                            std::size_t size, char from, char to)
{
    Insert(pattern, lengths, text, CharReplace(text, size, from, to));
}

void StatementComposer::InsertTextAt(const char* pattern, Lengths lengths, const char* text)
{
    if (text == nullptr) {
        text = "";
    }
    Insert(pattern, lengths, text, std::strlen(text));
}

void StatementComposer::InsertCharacter(const char* pattern, Lengths lengths, char character)
{
    if (character == '\0') {
        Append(pattern, lengths >> PATTERN_AFTER_BITS);
    } else {
        Insert(pattern, lengths, &character, 1);
    }
}

void StatementComposer::InsertMoney(const char* pattern, Lengths lengths, const Financial& value,
                                    FINANCIAL_STR_TIPO style, int decimals)
{
    value.ToString(m_work, m_workSize, style, decimals, 0);
    // What CharRemove of '.' and CharReplace of ',' by '.' would do, in one pass. Digits come
    // first: they lie above all that is not one, the terminator included.
    char* kept = m_work;
    for (const char* text = m_work;; ++text) {
        if (*text >= '0') {
            *kept++ = *text;
        } else if (*text == ',') {
            *kept++ = '.';
        } else if (*text == '\0') {
            break;
        } else if (*text != '.') {
            *kept++ = *text;
        }
    }
    Insert(pattern, lengths, m_work, static_cast<std::size_t>(kept - m_work));
}

void StatementComposer::InsertMoney(const char* pattern, Lengths lengths, const Financial& value)
{
    InsertMoney(pattern, lengths, value, FIN_STR_DEFAULT, 0);
}

void StatementComposer::InsertDecimal(const char* pattern, Lengths lengths, char* text)
{
    CharReplace(text, ',', '.');
    InsertTextAt(pattern, lengths, text);
}

void StatementComposer::InsertInstant(const char* pattern, Lengths lengths, RtcAbsoluteTime instant)
{
    char text[RtcAbsoluteTime::ISO_SIZE];
    instant.WriteIso(text);
    Insert(pattern, lengths, text, RtcAbsoluteTime::ISO_SIZE);
}

void StatementComposer::InsertDate(const char* pattern, Lengths lengths, RtcAbsoluteTime instant)
{
    char text[RtcAbsoluteTime::ISO_SIZE];
    instant.WriteIso(text);
    Insert(pattern, lengths, text, RtcAbsoluteTime::ISO_DATE_SIZE);
}

void StatementComposer::InsertPercent(const PercentPattern& pattern, UINT32 hundredths)
{
    char digits[INTEGER_SIZE + 1];
    char* const end = digits + sizeof digits;
    WritePair(end - 2, hundredths % 100);
    end[-3] = '.';
    const char* const first = WriteDigitsBefore(end - 3, hundredths / 100);
    Append(pattern.text, pattern.before);
    Append(first, static_cast<std::size_t>(end - first));
    Append(pattern.text + pattern.before + PercentPattern::WIDTH, pattern.after);
}

void StatementComposer::TaxCode(const TaxCodePattern& pattern, int number, int rate)
{
    const char* text = pattern.text;
    for (const int value : {number, rate / 100, rate % 100}) {
        const char* const conversion = std::strchr(text, '%');
        Append(text, static_cast<std::size_t>(conversion - text));
        char digits[INTEGER_SIZE + 1];
        char* const end = digits + sizeof digits;
        const char* const first = WriteIntegerBefore(end, value, true);
        Append(first, static_cast<std::size_t>(end - first));
        text = conversion + TaxCodePattern::WIDTH;
    }
    Append(text, std::strlen(text));
}

template class Statement<SQL_SIZE>;

BOOL StatementComposer::Execute(Command& command, sqlite3* db) const
{
    if (m_room == 0) {
        ReportRejectedStatement(command.m_eCmdType, "statement too long", m_sql);
        return TRUE;
    }
    return command.DBLoggerExecuteSQL(db, m_sql);
}

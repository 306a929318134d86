#include "CmdDBLogger/StatementComposer.h"

#include "CmdDBLogger/RejectedStatement.h"
#include "Interpreter.h"
#include "libs/CharTools.h"

#include <algorithm>
#include <charconv>

namespace
{

// Digits and sign of any 32-bit integer.
constexpr std::size_t INTEGER_SIZE = 11;

bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

} // namespace

void StatementComposer::Clear(char* array, std::size_t size)
{
    // In quarters, none above 2 KB: beyond that the C library of common targets turns from vector
    // stores to a string instruction, which costs several times more on arrays of this size.
    const std::size_t quarter = (size + 3) / 4;
    for (std::size_t at = 0; at < size; at += quarter) {
        std::memset(array + at, 0, std::min(quarter, size - at));
    }
}

void StatementComposer::Begin()
{
    Clear(m_sql, m_sqlSize);
    m_length = 0;
    m_overflow = false;
}

void StatementComposer::Append(const char* text, std::size_t length)
{
    if (m_overflow || length >= m_sqlSize - m_length) {
        m_overflow = true;
        return;
    }
    std::memcpy(m_sql + m_length, text, length);
    m_length += length;
}

// Appends `pattern` up to its next conversion and answers what follows that conversion.
const char* StatementComposer::UpToConversion(const char* pattern)
{
    const char* conversion = pattern;
    while (*conversion != '%') {
        ++conversion;
    }
    Append(pattern, static_cast<std::size_t>(conversion - pattern));
    while (!IsLetter(*conversion)) {
        ++conversion;
    }
    return conversion + 1;
}

void StatementComposer::Insert(const char* pattern, const char* text, std::size_t length)
{
    const char* rest = UpToConversion(pattern);
    Append(text, length);
    Piece(rest);
}

void StatementComposer::Integer(const char* pattern, int value)
{
    char digits[INTEGER_SIZE];
    const char* end = std::to_chars(digits, digits + INTEGER_SIZE, value).ptr;
    Insert(pattern, digits, static_cast<std::size_t>(end - digits));
}

void StatementComposer::Character(const char* pattern, char character)
{
    if (character == '\0') {
        UpToConversion(pattern);
    } else {
        Insert(pattern, &character, 1);
    }
}

void StatementComposer::MoneyText(const char* pattern, const Financial& value,
                                  FINANCIAL_STR_TIPO style, int decimals)
{
    value.ToString(m_work, m_workSize, style, decimals, 0);
    CharRemove(m_work, '.');
    CharReplace(m_work, ',', '.');
    TextAt(pattern, m_work);
}

void StatementComposer::DecimalText(const char* pattern, char* text)
{
    CharReplace(text, ',', '.');
    TextAt(pattern, text);
}

void StatementComposer::DateTimeText(const char* pattern, RtcAbsoluteTime instant)
{
    TextAt(pattern, instant.ToStrDateTime("yyyy-mm-dd", "hh:mm:ss", m_work));
}

void StatementComposer::DateText(const char* pattern, RtcAbsoluteTime instant)
{
    TextAt(pattern, instant.ToStrDate("yyyy-mm-dd", m_work));
}

void StatementComposer::PercentText(const char* pattern, const BigInt& hundredths)
{
    const UINT32 value = hundredths.number[0];
    char digits[INTEGER_SIZE + 1];
    char* end = std::to_chars(digits, digits + INTEGER_SIZE, value / 100).ptr;
    *end++ = '.';
    *end++ = static_cast<char>('0' + value / 10 % 10);
    *end++ = static_cast<char>('0' + value % 10);
    Insert(pattern, digits, static_cast<std::size_t>(end - digits));
}

// Writes `value` for the next conversion of `pattern`, at least two characters wide, filled with
// zeros, and answers what follows that conversion.
const char* StatementComposer::TwoDigits(const char* pattern, int value)
{
    const char* rest = UpToConversion(pattern);
    char digits[INTEGER_SIZE];
    const char* end = std::to_chars(digits, digits + INTEGER_SIZE, value).ptr;
    if (end - digits == 1) {
        Append("0", 1);
    }
    Append(digits, static_cast<std::size_t>(end - digits));
    return rest;
}

void StatementComposer::TaxCode(const char* pattern, int number, int rate)
{
    const char* rest = TwoDigits(pattern, number);
    rest = TwoDigits(rest, rate / 100);
    rest = TwoDigits(rest, rate % 100);
    Piece(rest);
}

BOOL StatementComposer::Execute(Command& command, sqlite3* db) const
{
    if (m_overflow) {
        ReportRejectedStatement(command.m_eCmdType, "statement too long", m_sql);
        return TRUE;
    }
    return command.DBLoggerExecuteSQL(db, m_sql);
}

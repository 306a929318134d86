#include "bancada/conferencia/Dominio.h"

#include "bancada/Messages.h"
#include "bancada/leitura/Amount.h"
#include "bancada/leitura/Limits.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <sqlite3.h>

namespace bancada::conferencia
{
namespace
{

using leitura::Domain;
using leitura::Nullable;

constexpr std::int64_t MAX_PARCELAS = 99;
constexpr std::int64_t MAX_CAIXA = 999;
constexpr std::int64_t MAX_PERCENT = 99999;
constexpr int CENTS = 2;
constexpr int THOUSANDTHS = 3;
constexpr std::size_t CNPJ_SIZE = 14;
constexpr std::size_t CPF_SIZE = 11;

constexpr std::array<std::string_view, 27> UFS = {
    "AC", "AL", "AM", "AP", "BA", "CE", "DF", "ES", "GO", "MA", "MG", "MS", "MT", "PA",
    "PB", "PE", "PI", "PR", "RJ", "RN", "RO", "RR", "RS", "SC", "SE", "SP", "TO"};
constexpr std::array<std::string_view, 7> TYPES = {"LX", "MF", "CC", "RG", "NC", "CN", "RZ"};

template <std::size_t COUNT>
bool IsOneOf(const std::array<std::string_view, COUNT>& list, std::string_view text)
{
    return std::find(list.begin(), list.end(), text) != list.end();
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool AreDigits(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), IsDigit);
}

// The number of these digits.
int Digits(std::string_view text)
{
    int number = 0;
    for (const char c : text) {
        number = number * 10 + (c - '0');
    }
    return number;
}

bool IsBase64(std::string_view text)
{
    constexpr std::size_t GROUP = 4;
    const std::size_t padding = text.size() - std::min(text.find('='), text.size());
    return text.size() % GROUP == 0 && padding <= 2 &&
           std::all_of(text.begin(), text.end() - static_cast<std::ptrdiff_t>(padding),
                       [](char c) {
                           return IsDigit(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
                                  c == '+' || c == '/';
                       }) &&
           std::all_of(text.end() - static_cast<std::ptrdiff_t>(padding), text.end(),
                       [](char c) { return c == '='; });
}

// Whether the text has the form, in which a d stands for a digit.
bool HasForm(std::string_view text, std::string_view form)
{
    return text.size() == form.size() &&
           std::equal(text.begin(), text.end(), form.begin(),
                      [](char c, char due) { return due == 'd' ? IsDigit(c) : c == due; });
}

bool IsNumberFrom(sqlite3_stmt* row, int column, int type, std::int64_t least, std::int64_t most)
{
    if (type != SQLITE_INTEGER) {
        return false;
    }
    const std::int64_t value = sqlite3_column_int64(row, column);
    return value >= least && value <= most;
}

bool IsAmount(sqlite3_stmt* row, int column, int type, int decimals, std::int64_t least,
              std::int64_t most)
{
    // Most amounts are zero, and not worth reading as one.
    if (type == SQLITE_INTEGER && sqlite3_column_int64(row, column) == 0) {
        return least <= 0;
    }
    const leitura::Amount amount = leitura::ReadAmount(row, column, Nullable::NO, decimals);
    return amount.IsKnown() && amount.IsExact() && amount.Units() >= least &&
           amount.Units() <= most;
}

bool IsTextWithin(std::string_view text, Domain domain)
{
    switch (domain) {
    case Domain::INSTANT:
        return IsInstant(text);
    case Domain::DAY:
        return IsInstant(text) && text.substr(text.size() - 8) == "00:00:00";
    case Domain::FLAG:
        return text == "S" || text == "N";
    case Domain::KIND:
        return text == "V" || text == "P";
    case Domain::ROUNDING:
        return text == "A" || text == "T";
    case Domain::MODE:
        return text == "L" || text == "T";
    case Domain::DOCUMENT_TYPE:
        return IsOneOf(TYPES, text);
    case Domain::TAX_CODE:
        return IsTaxCode(text);
    case Domain::SIGNATURE:
        return text == " " || (!text.empty() && IsBase64(text));
    case Domain::UF:
        return IsOneOf(UFS, text);
    case Domain::CNPJ:
        return IsCnpj(text);
    case Domain::NAME:
        return !text.empty();
    default:
        return true;
    }
}

} // namespace

bool IsInstant(std::string_view text)
{
    if (!HasForm(text, "dddd-dd-dd dd:dd:dd")) {
        return false;
    }
    constexpr std::array<int, 12> DAYS = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const int year = Digits(text.substr(0, 4));
    const int month = Digits(text.substr(5, 2));
    const int day = Digits(text.substr(8, 2));
    if (year < 1970 || year > 2106 || month < 1 || month > 12) {
        return false;
    }
    const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    const int days = DAYS[static_cast<std::size_t>(month) - 1] + (leap && month == 2 ? 1 : 0);
    return day >= 1 && day <= days && Digits(text.substr(11, 2)) < 24 &&
           Digits(text.substr(14, 2)) < 60 && Digits(text.substr(17, 2)) < 60;
}

bool IsTaxCode(std::string_view text)
{
    constexpr int ALIQUOTAS = 30;
    if (!text.empty() && IsDigit(text[0])) {
        return text.size() == 8 && AreDigits(text.substr(0, 2)) &&
               (text[2] == 'T' || text[2] == 'S') && AreDigits(text.substr(3, 2)) &&
               text[5] == '.' && AreDigits(text.substr(6)) && Digits(text.substr(0, 2)) >= 1 &&
               Digits(text.substr(0, 2)) <= ALIQUOTAS;
    }
    const bool issqn = text.size() == 3 && text[1] == 'S';
    return (text.size() == 2 || issqn) && (text[0] == 'F' || text[0] == 'I' || text[0] == 'N') &&
           text.back() >= '1' && text.back() <= '3';
}

namespace
{

// Modulo 11, twice. The weights go from 2 to `maxWeight` and begin anew, from the last digit on.
bool HasCheckDigits(std::string_view text, std::size_t size, int maxWeight)
{
    if (text.size() != size || !AreDigits(text)) {
        return false;
    }
    for (std::size_t place = size - 2; place < size; ++place) {
        int sum = 0;
        for (std::size_t i = 0; i < place; ++i) {
            sum += (text[i] - '0') * (static_cast<int>(place - 1 - i) % (maxWeight - 1) + 2);
        }
        const int digit = sum % 11 < 2 ? 0 : 11 - sum % 11;
        if (text[place] - '0' != digit) {
            return false;
        }
    }
    return true;
}

} // namespace

bool IsCnpj(std::string_view text)
{
    return HasCheckDigits(text, CNPJ_SIZE, 9);
}

bool IsCpf(std::string_view text)
{
    return HasCheckDigits(text, CPF_SIZE, 11);
}

bool IsWithin(sqlite3_stmt* row, int column, Domain domain, leitura::Presence presence)
{
    const int type = sqlite3_column_type(row, column);
    if (type == SQLITE_NULL) {
        return presence != leitura::Presence::ALWAYS;
    }
    constexpr std::int64_t ANY = std::numeric_limits<std::int64_t>::max();
    switch (domain) {
    case Domain::COUNTER:
        return IsNumberFrom(row, column, type, 1, leitura::LAST_COUNTER);
    case Domain::COUNTER_OR_ZERO:
        return IsNumberFrom(row, column, type, 0, leitura::LAST_COUNTER);
    case Domain::NEXT_COUNTER:
        return IsNumberFrom(row, column, type, 1, leitura::LAST_COUNTER + 1);
    case Domain::ECF:
        return IsNumberFrom(row, column, type, 1, 1);
    case Domain::ITEM:
        return IsNumberFrom(row, column, type, 1, leitura::MAX_ITENS);
    case Domain::MEIO:
        return IsNumberFrom(row, column, type, 1, leitura::MAX_MEIOS_PAGAMENTO);
    case Domain::MEIO_OR_TROCO:
        return IsNumberFrom(row, column, type, 1, leitura::MAX_MEIOS_PAGAMENTO + 1);
    case Domain::TOTALIZADOR_NF:
        return IsNumberFrom(row, column, type, 1, leitura::MAX_TOTALIZADORES_NF);
    case Domain::PARCELAS:
        return IsNumberFrom(row, column, type, 0, MAX_PARCELAS);
    case Domain::CAIXA:
        return IsNumberFrom(row, column, type, 0, MAX_CAIXA);
    case Domain::CASAS:
        return IsNumberFrom(row, column, type, 0, leitura::MAX_CASAS);
    case Domain::SECONDS:
        return IsNumberFrom(row, column, type, 0, ANY);
    case Domain::MONEY:
        return IsAmount(row, column, type, CENTS, 0, ANY);
    case Domain::MONEY_OF_ITEM:
        return IsAmount(row, column, type, THOUSANDTHS, 0, ANY);
    case Domain::SIGNED_MONEY:
        return IsAmount(row, column, type, CENTS, -ANY, ANY);
    case Domain::QUANTITY:
        return IsAmount(row, column, type, leitura::MAX_CASAS, 1, ANY);
    case Domain::PERCENT:
        return IsAmount(row, column, type, CENTS, 0, MAX_PERCENT);
    default:
        break;
    }
    if (type != SQLITE_TEXT || domain == Domain::TEXT) {
        return type == SQLITE_TEXT;
    }
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
    return IsTextWithin({text, static_cast<std::size_t>(sqlite3_column_bytes(row, column))},
                        domain);
}

const char* MeaningOf(Domain domain)
{
    switch (domain) {
    case Domain::TEXT:
        return Tr("a text");
    case Domain::NAME:
        return Tr("a text that is not empty");
    case Domain::COUNTER:
        return Tr("a number from 1 to 999999");
    case Domain::COUNTER_OR_ZERO:
        return Tr("a number from 0 to 999999");
    case Domain::NEXT_COUNTER:
        return Tr("a number from 1 to 1000000");
    case Domain::ECF:
        return "1";
    case Domain::ITEM:
        return Tr("a number from 1 to 999");
    case Domain::MEIO:
        return Tr("a number from 1 to 20");
    case Domain::MEIO_OR_TROCO:
        return Tr("a number from 1 to 21");
    case Domain::TOTALIZADOR_NF:
        return Tr("a number from 1 to 39");
    case Domain::PARCELAS:
        return Tr("a number from 0 to 99");
    case Domain::CAIXA:
        return Tr("a number from 0 to 999");
    case Domain::CASAS:
        return Tr("a number from 0 to 3");
    case Domain::SECONDS:
        return Tr("a number of seconds");
    case Domain::INSTANT:
        return Tr("yyyy-mm-dd hh:mm:ss");
    case Domain::DAY:
        return Tr("yyyy-mm-dd 00:00:00");
    case Domain::FLAG:
        return Tr("S or N");
    case Domain::KIND:
        return Tr("V or P");
    case Domain::ROUNDING:
        return Tr("A or T");
    case Domain::DOCUMENT_TYPE:
        return Tr("LX, MF, CC, RG, NC, CN or RZ");
    case Domain::MODE:
        return Tr("L or T");
    case Domain::MONEY:
    case Domain::MONEY_OF_ITEM:
        return Tr("an amount, none below zero");
    case Domain::SIGNED_MONEY:
        return Tr("an amount");
    case Domain::QUANTITY:
        return Tr("a decimal above zero");
    case Domain::PERCENT:
        return Tr("a percentage from 0 to 999.99");
    case Domain::TAX_CODE:
        return Tr("a tax code");
    case Domain::SIGNATURE:
        return Tr("Base64, or a blank");
    case Domain::UF:
        return Tr("a state");
    case Domain::CNPJ:
        return Tr("a CNPJ with its check digits");
    }
    return "";
}

} // namespace bancada::conferencia

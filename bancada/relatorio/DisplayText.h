// Texts as they are shown: columns, wrapping, escaping, the forms of numbers and instants. Whatever
// a text of the database holds, it steers neither a terminal nor a browser.
#pragma once

#include "bancada/leitura/Amount.h"
#include "bancada/leitura/Cell.h"

#include <string>
#include <string_view>
#include <vector>

namespace bancada::relatorio
{

// The text's characters, one each. Bytes that are no UTF-8 become U+FFFD one by one, and so do
// control characters and those that reorder a line: a text of the database must not steer a
// terminal or a browser. Line ends and tabs become blanks.
std::u32string Characters(std::string_view text);

std::string Utf8(std::u32string_view text);

// Its characters with capital letters small, those with accents (U+00C0 to U+00DE) too: to compare.
std::u32string Folded(std::string_view text);

// The text for a terminal: what `Characters` leaves of it.
std::string Disarmed(std::string_view text);

// The columns that the text takes on paper: one a character, none for a combining mark.
std::size_t ColumnCount(std::u32string_view text);
std::size_t ColumnCount(std::string_view text);

// Lines of at most `width` columns (at least 1), broken at blanks where there are any; a word
// that is longer than a line is cut. No line begins or ends with a blank. An empty or blank text
// has no lines.
std::vector<std::string> Wrap(std::string_view text, std::size_t width);

// The first `width` columns.
std::string Cut(std::string_view text, std::size_t width);

// Blanks added on the left or on the right up to `width` columns; a longer text stays as it is.
std::string AlignRight(std::string_view text, std::size_t width);
std::string AlignLeft(std::string_view text, std::size_t width);

// The number with at least `digits` digits: 000120.
std::string WithZeros(long long number, std::size_t digits);
// Likewise; where it is not known what stands in its place, disarmed and cut.
std::string WithZeros(const leitura::Integer& number, std::size_t digits);

// As the till writes it (leitura::TillText); where it is not known what stands in its place,
// disarmed and cut.
std::string AmountText(const leitura::Amount& amount, int minDecimals = 2);

// Whether there is nothing but blanks: a single blank stands for an empty value in some columns.
bool IsBlank(std::string_view text);

// 11 digits as a CPF (123.456.789-09), 14 as a CNPJ (12.345.678/0001-95), other texts unchanged.
std::string FormatCpfCnpj(std::string_view text);

// "2024-03-15 09:12:44" as 15/03/2024 09:12:44, "2024-03-15" as 15/03/2024; other texts unchanged.
std::string FormatDateTime(std::string_view text);

// The text for HTML, in an element or in a quoted attribute; bytes that are no UTF-8 and controls
// as in `Characters`.
std::string EscapeHtml(std::string_view text);

} // namespace bancada::relatorio

#include "bancada/log/RejectedRow.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace bancada
{
namespace
{

constexpr std::string_view INSERT = "INSERT INTO ";
constexpr std::string_view UPDATE = "UPDATE ";
constexpr std::string_view WHERE = "where ";
constexpr std::string_view AND = " and ";

// The columns by which a reader finds a row again, in the order of their text.
const char* const KEY_COLUMNS[] = {
    "cont_coo", "cont_ccf", "cont_gnf",   "cont_crz",    "seq_item",
    "cont_cro", "cont_cfd", "num_indice", "seq_usuario", "indice_meio_pagamento"};

bool IsKey(const std::string& column)
{
    return std::find(std::begin(KEY_COLUMNS), std::end(KEY_COLUMNS), column) !=
           std::end(KEY_COLUMNS);
}

std::string Trim(const std::string& text)
{
    const char* const blanks = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(blanks);
    if (begin == std::string::npos) {
        return {};
    }
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

std::vector<std::string> Split(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (;;) {
        const std::size_t end = text.find(separator, begin);
        parts.push_back(Trim(text.substr(begin, end - begin)));
        if (end == std::string::npos) {
            return parts;
        }
        begin = end + 1;
    }
}

// A whole decimal number, between apostrophes or not.
std::optional<std::int64_t> Number(std::string text)
{
    if (text.size() >= 2 && text.front() == '\'' && text.back() == '\'') {
        text = text.substr(1, text.size() - 2);
    }
    if (text.empty() || text.size() > 18 ||
        text.find_first_not_of("0123456789") != std::string::npos) {
        return std::nullopt;
    }
    return std::strtoll(text.c_str(), nullptr, 10);
}

// A number with or without decimals, or one character between apostrophes: a value that no text of
// a user can be mistaken for when it stands at the end of a statement.
bool IsPlainValue(const std::string& value)
{
    if (value.size() == 3 && value.front() == '\'' && value.back() == '\'') {
        return true;
    }
    return !value.empty() && value.find_first_not_of("0123456789.-") == std::string::npos;
}

// Commas inside a text shift what follows it. The values before the first text are in their place
// counted from the start, those behind the last text counted from the end.
void ReadKeyFromStart(const std::vector<std::string>& columns,
                      const std::vector<std::string>& values, RejectedRow& row)
{
    for (std::size_t i = 0; i < std::min(values.size(), columns.size()); ++i) {
        const std::optional<std::int64_t> number = Number(values[i]);
        if (!number) {
            return;
        }
        if (IsKey(columns[i])) {
            row.key[columns[i]] = *number;
        }
    }
}

void ReadKeyFromEnd(const std::vector<std::string>& columns, const std::vector<std::string>& values,
                    RejectedRow& row)
{
    for (std::size_t i = 0; i < std::min(values.size(), columns.size()); ++i) {
        const std::string& value = values[values.size() - 1 - i];
        const std::string& column = columns[columns.size() - 1 - i];
        if (!IsPlainValue(value)) {
            return;
        }
        const std::optional<std::int64_t> number = Number(value);
        if (number && IsKey(column)) {
            row.key.emplace(column, *number);
        }
    }
}

void ReadInsert(const std::string& sql, RejectedRow& row)
{
    const std::size_t columnsOpen = sql.find('(');
    if (columnsOpen == std::string::npos) {
        row.table = Trim(sql.substr(INSERT.size()));
        return;
    }
    row.table = Trim(sql.substr(INSERT.size(), columnsOpen - INSERT.size()));
    const std::size_t columnsClose = sql.find(')', columnsOpen);
    const std::size_t valuesOpen = sql.find('(', columnsOpen + 1);
    if (columnsClose == std::string::npos || valuesOpen == std::string::npos) {
        return;
    }
    const std::vector<std::string> columns =
        Split(sql.substr(columnsOpen + 1, columnsClose - columnsOpen - 1), ',');
    std::string text = sql.substr(valuesOpen + 1);
    const bool whole = !text.empty() && text.back() == ')';
    if (whole) {
        text.pop_back();
    }
    std::vector<std::string> values = Split(text, ',');
    if (!whole) {
        values.pop_back(); // of the last one there may be but the beginning
    }
    ReadKeyFromStart(columns, values, row);
    if (whole) {
        ReadKeyFromEnd(columns, values, row);
    }
}

void ReadUpdate(const std::string& sql, RejectedRow& row)
{
    const std::size_t tableEnd = sql.find(' ', UPDATE.size());
    row.table = sql.substr(UPDATE.size(),
                           tableEnd == std::string::npos ? tableEnd : tableEnd - UPDATE.size());
    std::string lower = sql;
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    // The condition stands last, behind any text of a user.
    const std::size_t where = lower.rfind(WHERE);
    if (where == std::string::npos) {
        return;
    }
    std::string condition = lower.substr(where + WHERE.size());
    for (std::size_t i = condition.find(AND); i != std::string::npos; i = condition.find(AND)) {
        condition.replace(i, AND.size(), ",");
    }
    for (const std::string& equation : Split(condition, ',')) {
        const std::vector<std::string> sides = Split(equation, '=');
        if (sides.size() != 2 || !IsKey(sides[0])) {
            continue;
        }
        if (const std::optional<std::int64_t> number = Number(sides[1])) {
            row.key[sides[0]] = *number;
        }
    }
}

bool BeginsWith(const std::string& text, std::string_view prefix)
{
    return text.compare(0, prefix.size(), prefix) == 0;
}

} // namespace

std::optional<std::int64_t> RejectedRow::Value(const std::string& column) const
{
    const auto found = key.find(column);
    return found == key.end() ? std::nullopt : std::optional<std::int64_t>(found->second);
}

std::string RejectedRow::KeyText() const
{
    std::string text;
    for (const char* column : KEY_COLUMNS) {
        if (const std::optional<std::int64_t> value = Value(column)) {
            text += (text.empty() ? "" : ", ") + std::string(column) + " " + std::to_string(*value);
        }
    }
    return text.empty() ? "?" : text;
}

RejectedRow ReadRejectedRow(const std::string& statement)
{
    RejectedRow row;
    if (BeginsWith(statement, INSERT)) {
        row.operation = "INSERT";
        ReadInsert(statement, row);
        row.expected = row.table == "moeda";
    } else if (BeginsWith(statement, UPDATE)) {
        row.operation = "UPDATE";
        ReadUpdate(statement, row);
        row.expected =
            row.table == "cupom_fiscal" &&
            statement.find("' id_cupom_adicional = 'S' WHERE cont_coo = ") != std::string::npos;
    }
    return row;
}

} // namespace bancada

// Whether a cell holds what its column is for.
#pragma once

#include "bancada/leitura/Domain.h"
#include "bancada/leitura/Table.h"

#include <string_view>

struct sqlite3_stmt;

namespace bancada::conferencia
{

// Whether the loggers can have written the cell in `column`, from 0, of the row at hand. A NULL is
// within where the column may be NULL.
bool IsWithin(sqlite3_stmt* row, int column, leitura::Domain domain, leitura::Presence presence);

// What stands in a column of this domain, e.g. "a number from 1 to 999999".
const char* MeaningOf(leitura::Domain domain);

// Whether it is yyyy-mm-dd hh:mm:ss, a day and a time that there is.
bool IsInstant(std::string_view text);

// Whether it is a tax code as the loggers write it: 01T18.00, 03S05.00, F1, FS1.
bool IsTaxCode(std::string_view text);

// Whether these are 14 digits, or 11, of which the last two check the others.
bool IsCnpj(std::string_view text);
bool IsCpf(std::string_view text);

} // namespace bancada::conferencia

// What a spreadsheet is given of a database.
#pragma once

#include "bancada/leitura/DatabaseReading.h"
#include "bancada/relatorio/Filtro.h"

#include <array>
#include <cstdint>
#include <ostream>
#include <vector>

namespace bancada::relatorio
{

enum class CsvTable : std::uint8_t {
    DOCUMENTOS,
    ITENS,
    PAGAMENTOS,
    REDUCOES,
    // Totals by day, by tax code and by payment means.
    DIAS,
    ALIQUOTAS,
    MEIOS,
};

// The word of each, in every language the same.
constexpr std::array<const char*, 7> CSV_TABLES = {
    "documentos", "itens", "pagamentos", "reducoes", "dias", "aliquotas", "meios"};

// One table of the databases of a register, in their order: a line of column names, then a line for
// each document, item, payment or Z reduction that `filtro` admits, or for each total of those
// documents. UTF-8; columns are parted by ';', lines by CR LF, a
// column that needs it stands in quotation marks. Amounts have a decimal comma and nothing else,
// instants are as they were logged, flags S or N. What is no value of its column stands as it is. A
// text that a spreadsheet would reckon with (it begins with =, +, - or @) has an apostrophe before
// it, and what would steer a terminal is U+FFFD. `out` is not flushed; throws Unusable where a
// database cannot be read. Holds one document at a time.
void WriteCsv(const std::vector<const leitura::DatabaseReading*>& databases, CsvTable table,
              const Filtro& filtro, std::ostream& out);

} // namespace bancada::relatorio

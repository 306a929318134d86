// What the reading side takes for possible in a logging database, each bound once with its reason.
// Stated apart from the register's own limits, so that neither side is wrong unseen; a test
// compares the two.
#pragma once

#include <cstdint>

namespace bancada::leitura
{

// Counters have six digits on every document; the number after the last one is 1 again.
constexpr std::int64_t LAST_COUNTER = 999999;

// A receipt holds at most 999 items, whose numbers have three digits, and 30 payments.
constexpr std::int64_t MAX_ITENS = 999;
constexpr std::int64_t MAX_PAGAMENTOS = 30;

// Payment means and non-fiscal totalizers have two digits on the documents; a register has so many.
constexpr std::int64_t MAX_MEIOS_PAGAMENTO = 20;
constexpr std::int64_t MAX_TOTALIZADORES_NF = 39;

// The decimals of a quantity and of a unit price as they are printed.
constexpr std::int64_t MAX_CASAS = 4;

// The longest text or row that is read, in bytes. The longest statement that writes one has 8,000;
// whoever made a row longer than this did not log it, and it must not fill the memory.
constexpr int MAX_ROW_BYTES = 16 * 1024 * 1024;

// How long a reader waits for a writer that holds the whole database, which with a write-ahead log
// happens only while the log is recovered.
constexpr int BUSY_TIMEOUT_MS = 2000;

} // namespace bancada::leitura

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

// The bytes of a text, as the commands that give it have room for; of the owner's texts and of the
// application's as the register keeps them. An address is written with a comma behind it.
constexpr std::int64_t MAX_NOME_CONSUMIDOR = 30;
constexpr std::int64_t MAX_ENDERECO_CONSUMIDOR = 80;
constexpr std::int64_t MAX_CODIGO_ITEM = 14;
constexpr std::int64_t MAX_DESCRICAO_ITEM = 234;
constexpr std::int64_t MAX_UNIDADE = 10;
constexpr std::int64_t MAX_INFO_ADICIONAL = 84;
constexpr std::int64_t MAX_MENSAGEM = 1499;
constexpr std::int64_t MAX_NOME_MEIO = 15;
constexpr std::int64_t MAX_NOME_TOTALIZADOR = 20;
constexpr std::int64_t MAX_INSCRICAO = 20;
constexpr std::int64_t MAX_CONTRIBUINTE = 120;
constexpr std::int64_t MAX_MARCA = 15;
constexpr std::int64_t MAX_MODELO = 20;
constexpr std::int64_t MAX_TIPO_ECF = 7;
constexpr std::int64_t MAX_NUM_SERIE = 20;

// The decimals of a quantity and of a unit price: an item's total is written with two or three.
constexpr std::int64_t MAX_CASAS = 3;

// The longest text or row that is read, in bytes. The longest statement that writes one has 8,000;
// whoever made a row longer than this did not log it, and it must not fill the memory.
constexpr int MAX_ROW_BYTES = 16 * 1024 * 1024;

// How long a reader waits for a writer that holds the whole database, which with a write-ahead log
// happens only while the log is recovered.
constexpr int BUSY_TIMEOUT_MS = 2000;

} // namespace bancada::leitura

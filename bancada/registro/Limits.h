// What the register takes, and so what a tape, a memory file and a generated tape may hold: each
// limit once, with its reason. What reads a database states its own, in bancada/leitura; a test
// compares the two.
#pragma once

#include "FiscalCommands.h"
#include "FiscalData/Cupom.h"

#include <cstddef>

namespace bancada
{

// Counters have six digits on every document: after this number they start over at 1.
constexpr int MAX_CONTADOR = 999999;

// A receipt has what the firmware's own copy of it has room for.
constexpr int MAX_ITENS_CUPOM = Cupom::MAX_ITENS;
constexpr int MAX_PAGAMENTOS_CUPOM = Cupom::MAX_PAGAMENTOS;

// The programming: as many means, rates and totalizers as the facade's tables have places.
constexpr int BASES_DE_IMPOSTO = 2;         // ICMS and ISSQN
constexpr int MAX_ALIQUOTAS = 30;           // rates of a tax base: positions 0 to 29
constexpr int MAX_ESPECIAIS_POR_CODIGO = 3; // F1 to F3, and so on
constexpr int MAX_ESPECIAIS = 9;            // F, I, N of a tax base: positions 30 to 38
constexpr int MAX_TOTALIZADORES = 39;       // positions of a tax base
constexpr int MAX_TOTALIZADORES_NF = 39;    // two digits on the documents
constexpr int MAX_MEIOS_PAGAMENTO = 20;     // likewise
static_assert(3 * MAX_ESPECIAIS_POR_CODIGO == MAX_ESPECIAIS, "a tax base has three special codes");
static_assert(MAX_ALIQUOTAS + MAX_ESPECIAIS == MAX_TOTALIZADORES,
              "a tax base is its rates and its special totalizers");

// A rate has two digits before its two decimals; an adjustment, which may exceed the whole, three.
// Both in hundredths of a percent.
constexpr int MAX_ALIQUOTA = 9999;
constexpr int MAX_PERCENTUAL = 99999;

// The digits of the numbers that are printed on every document's head.
constexpr int MAX_NUMERO_LOJA = 9999;
constexpr int MAX_SEQUENCIA_ECF = 999;

// Two digits on the payment's line.
constexpr int MAX_PARCELAS = 99;

// Quantities and unit prices: their product in cents stays within BigInt,
// 10^(7+3) x 10^(9+3) x 100 < 2^95.
constexpr int MAX_DECIMALS = 3;
constexpr int QUANTIDADE_INTEGER_DIGITS = 7;
constexpr int PRECO_INTEGER_DIGITS = 9;

// Amounts, in cents, so that no sum or product leaves the register's integers: an item, an
// adjustment or a cash movement has nine digits before the point; a payment more than 999 of those.
constexpr long long MAX_LANCAMENTO_CENTS = 99'999'999'999;
constexpr long long MAX_PAGAMENTO_CENTS = 99'999'999'999'999;

// The owner's names and address, in bytes: two lines of print.
constexpr int MAX_CONTRIBUINTE_TEXT = 120;
// The longest text of all, the closing message, in bytes: what its command has room for.
constexpr std::size_t MAX_TEXT_BYTES = sizeof(CmdFechaCupom::m_sMsgPromocional) - 1;

} // namespace bancada

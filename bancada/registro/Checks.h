// The checks that several operations share. Each answers why not, or nothing.
#pragma once

#include "bancada/registro/Memoria.h"
#include "bancada/registro/Refusal.h"
#include "libs/Financial.h"

#include <string>

namespace bancada
{

// The largest amounts that the register takes, see Limits.h: of an item, an adjustment or a cash
// movement, and of a payment.
Financial MaxLancamento(); // 999,999,999.99
Financial MaxPagamento();  // 999,999,999,999.99

// `valor` is whole cents, above zero and at most `maximum`. `what`, a
// marked text, begins the message.
Refusal CheckValor(const char* what, const Financial& valor, const Financial& maximum);

// A CPF or CNPJ, when one is given, has its digits and its check digits.
Refusal CheckConsumidor(const Consumidor& consumidor);

[[nodiscard]] bool IsCupomOpen(const Memoria& memoria);

// No receipt, voucher or report is open.
Refusal CheckNothingOpen(const Memoria& memoria);

// The register is not in an intervention mode.
Refusal CheckNoIntervencao(const Memoria& memoria);

// A document that moves the fiscal day may begin at `em`.
Refusal CheckMovimento(const Memoria& memoria, RtcAbsoluteTime em);

// A receipt (of that type) is open.
Refusal CheckCupomOpen(const Memoria& memoria);
Refusal CheckCupomOpen(const Memoria& memoria, FD_TIPO_CUPOM tipo);

// The open receipt's items may still change: nothing was paid and no adjustment of the subtotal
// stands. REQUIRES: a receipt is open.
Refusal CheckItensOpen(const Memoria& memoria);

// The open receipt has room for one more item.
Refusal CheckRoomForItem(const CurrentCupom& cupom);

// `numero` is an item of the receipt that is not cancelled.
Refusal CheckItem(const CurrentCupom& cupom, int numero);

// The open receipt can be closed: it has items and is paid.
Refusal CheckPago(const CurrentCupom& cupom);

// The last document that moved the day is a receipt in force, and its day is still open.
Refusal CheckLastCupom(const Memoria& memoria);

// Whether the means at a position may be paid more than is due.
[[nodiscard]] bool GivesTroco(const Memoria& memoria, int meio);

// `numero`, from 1, is a programmed payment means.
Refusal CheckMeio(const Memoria& memoria, int numero);

} // namespace bancada

// The checks that several operations share. Each answers why not, or nothing.
#pragma once

#include "bancada/registro/Memoria.h"
#include "bancada/registro/Recusa.h"
#include "libs/Financial.h"

#include <string>

namespace bancada
{

// The largest amounts the register takes, so that no sum or product leaves its integers.
Financial MaximoDeUmLancamento(); // an item, an adjustment, a cash movement: 999,999,999.99
Financial MaximoDeUmPagamento();  // more than 999 of those: 999,999,999,999.99

// `valor` is whole cents, above zero and at most `maximo`. `oQue` begins the message.
Recusa ConfereValor(const char* oQue, const Financial& valor, const Financial& maximo);

// A CPF or CNPJ, when one is given, has its digits and its check digits.
Recusa ConfereConsumidor(const Consumidor& consumidor);

bool CupomAberto(const Memoria& memoria);

// No receipt, voucher or report is open.
Recusa ConfereNadaAberto(const Memoria& memoria);

// The register is not in an intervention mode.
Recusa ConfereForaDeIntervencao(const Memoria& memoria);

// A document that moves the fiscal day may begin at `em`.
Recusa ConferePodeMovimentar(const Memoria& memoria, RtcAbsoluteTime em);

// A receipt (of that type) is open.
Recusa ConfereCupomAberto(const Memoria& memoria);
Recusa ConfereCupomAberto(const Memoria& memoria, FD_TIPO_CUPOM tipo);

// The open receipt's items may still change: nothing was paid and no adjustment of the subtotal
// stands. REQUIRES: a receipt is open.
Recusa ConfereItensAbertos(const Memoria& memoria);

// The open receipt has room for one more item.
Recusa ConfereLugarParaItem(const CupomAtual& cupom);

// `numero` is an item of the receipt that is not cancelled.
Recusa ConfereItem(const CupomAtual& cupom, int numero);

// The open receipt can be closed: it has items and is paid.
Recusa ConferePago(const CupomAtual& cupom);

// The last document that moved the day is a receipt in force, and its day is still open.
Recusa ConfereUltimoCupom(const Memoria& memoria);

// `numero`, from 1, is a programmed payment means.
Recusa ConfereMeio(const Memoria& memoria, int numero);

} // namespace bancada

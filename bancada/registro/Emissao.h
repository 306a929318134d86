// The beginning and the end of a receipt, which are the same for both kinds.
#pragma once

#include "bancada/registro/Memoria.h"

namespace bancada
{

// Begins a receipt: the day is open, COO + 1 and the counter of its kind + 1. It replaces the last
// receipt in memory.
void BeginCupom(Memoria& memoria, FD_TIPO_CUPOM tipo, const Consumidor& consumidor,
                RtcAbsoluteTime em);

// Puts an item, whose fields are filled but the state ones, on the open receipt and books it.
void AddItem(Memoria& memoria, ItemVendido item);

// Ends the open receipt as issued at `fim`: the payments are booked, the time is counted, it is
// signed.
void FinishCupom(Memoria& memoria, const std::string& mensagem, RtcAbsoluteTime fim);

// Counts the time from the opening of a fiscal receipt to `fim`.
void CountTempoDeEmissao(Memoria& memoria, RtcAbsoluteTime fim);

} // namespace bancada

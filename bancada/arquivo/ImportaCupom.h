// The parts of a receipt's lines.
#pragma once

#include "bancada/arquivo/CupomLido.h"
#include "bancada/arquivo/Estornos.h"
#include "bancada/arquivo/Importador.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace bancada::arquivo
{

// The numbers that a receipt has for its items.
constexpr std::int64_t MAX_ITENS = 999;

// The first receipt since the last Z reduction begins the day.
void OpenMovimento(Importador& importing, std::int64_t em);
// When a document begins of which the file tells the day alone: at `em`, or when the document
// before it ended where that is later. Rows are read by their times: it is not before the latest
// that a clock set back had shown that day, where `proximaHora` leaves room.
std::int64_t BeginOf(const Importador& importing, std::int64_t em);
// The opening, with the buyer, at BeginOf(importing, em), which it answers; nothing of the receipt
// before it is pending any more.
std::int64_t WriteAbertura(Importador& importing, const CupomLido& cupom, const char* command,
                           std::int64_t em);
// An item's surcharges and discount and its cancellation, as they were before any sharing.
void WriteAjustesItem(Importador& importing, const ItemLido& item, std::int64_t numero);
void WriteAjustesSubtotal(Importador& importing, const CupomLido& cupom);
// What made the payments of a receipt, where `daTroco` tells which means give change; nothing where
// it cannot be told.
std::optional<PagamentosLidos> FindPagamentos(const Programacao& programacao,
                                              const CupomLido& cupom,
                                              const std::function<bool(std::int64_t)>& daTroco);
// The payments and, of a receipt still open, the reversals; those of a closed one are left pending,
// as far as there are numbers for them.
void WritePagamentos(Importador& importing, const CupomLido& cupom);
// A reversal of a payment.
void WriteEstorno(Importador& importing, const EstornoLido& estorno);

} // namespace bancada::arquivo

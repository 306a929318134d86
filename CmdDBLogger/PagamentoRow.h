// The row of a payment, which a payment and the reversal of one both write.
#pragma once

#include "libs/Financial.h"
#include "libs/FirmwareTypes.h"

class Command;
class StatementComposer;
struct sqlite3;

constexpr int INFO_ADICIONAL_SIZE = 85;

struct PagamentoRow {
    int coo;
    const Financial& valor;
    int parcelas;
    const char (&infoAdicional)[INFO_ADICIONAL_SIZE];
    int meioPagamento;
};

// Composes the row's insert in `insert` and executes it as `command`'s; answers what that does.
BOOL InsertPagamento(StatementComposer& insert, Command& command, const PagamentoRow& row,
                     sqlite3* db);

// Which tables the open receipt's rows lie in.
#pragma once

#include "libs/FirmwareTypes.h"

class Command;
class StatementComposer;
struct sqlite3;

enum class ReceiptTable {
    FISCAL,     // cupom_fiscal, item_cupom_fiscal
    NAO_FISCAL, // cupom_nf, item_cupom_nf
    NONE,       // a receipt of neither type: nothing is to be written
};

// Begin the update of the open receipt's row, or of one of its items', and answer its table. They
// ask the receipt's type; a receipt that is not fiscal is asked once more, as required. Where the
// answer is NONE nothing is begun.
ReceiptTable BeginReceiptUpdate(StatementComposer& update, Command& command);
ReceiptTable BeginItemUpdate(StatementComposer& update, Command& command);

// Begins the update of an item's row in that table. REQUIRES: it is not NONE.
void BeginItemUpdate(StatementComposer& update, ReceiptTable table);

// Ends the update of the open receipt's row with the condition that finds it, executes it as
// `command`'s and answers what that does.
BOOL ExecuteForReceipt(StatementComposer& update, Command& command, sqlite3* db);

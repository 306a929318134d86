// A register at which nothing has happened, for tests to begin with: each operation makes what it
// scripts the register's state, which a test may change or leave alone.
#pragma once

class FakeController;

// A receipt without items, values, adjustments or texts; its type is COMPROVANTE_NAO_FISCAL.
void ScriptEmptyReceipt(FakeController& fiscal);

// A closed day without sums or times, on which no totalizer and no payment means is programmed.
// Special totalizers are resolved to position 99, where no rate stands.
void ScriptEmptyDay(FakeController& fiscal);

// Both, every counter 0, and an owner and a register without data.
void ScriptEmptyRegister(FakeController& fiscal);

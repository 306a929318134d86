// The row of a non-fiscal receipt, which its opening and a cash withdrawal both write.
#pragma once

class Command;
class StatementComposer;

// Begins the row's insert and writes its first five values, cont_coo to data_hora_emissao. The
// columns from valor_subtotal to perc_desconto are to follow.
void BeginCupomNf(StatementComposer& insert, const Command& command);

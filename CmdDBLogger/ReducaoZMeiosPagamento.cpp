// The meio_pagamento_reducao rows of a Z reduction.
#include "CmdDBLogger/ReducaoZRows.h"

BOOL ReducaoZRows::MeioDePagamento(int i)
{
    if (FDController->BaseFormasPagamento_GetMeioPagamentoProgramado(i) == FALSE) {
        return TRUE;
    }

    sql.Begin("INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, "
              "descricao_meio_pagamento, valor_acumulado) VALUES(");
    sql.Integer("%d,", i + 1);                                   // indice_meio_pagamento
    sql.Integer("%d,", FDController->Contador_Get(COUNTER_CRZ)); // cont_crz
    FDController->BaseFormasPagamento_GetMeioPagamento(i, sql.aux, AUX_SIZE);
    sql.Text("'%s',", sql.aux); // descricao_meio_pagamento
    sql.MoneyText("%s)", FDController->BaseFormasPagamento_GetFPTotal(i)); // valor_acumulado
    return sql.Execute(command, db);
}

BOOL ReducaoZRows::MeiosDePagamento()
{
    meios = FDController->BaseFormasPagamento_GetNumeroDeFormasDePagamento();
    for (int i = 0; i < meios; ++i) {
        if (MeioDePagamento(i) == FALSE) {
            return FALSE;
        }
    }
    return TRUE;
}

// Its index is one past the last position, programmed or not.
BOOL ReducaoZRows::Troco()
{
    sql.Begin("INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, "
              "descricao_meio_pagamento, valor_acumulado) VALUES(");
    sql.Integer("%d,", meios + 1);                               // indice_meio_pagamento
    sql.Integer("%d,", FDController->Contador_Get(COUNTER_CRZ)); // cont_crz
    sql.Piece("'TROCO',");                                       // descricao_meio_pagamento
    sql.MoneyText("%s)", FDController->BaseFormasPagamento_GetTrocoTotal()); // valor_acumulado
    return sql.Execute(command, db);
}

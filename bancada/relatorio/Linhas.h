#pragma once

#include "bancada/relatorio/Consulta.h"
#include "bancada/relatorio/Documento.h"

// The tables' columns and the records that their rows become: each SELECT stands beside the one
// function that takes its rows, which counts the columns from 0.
namespace bancada::relatorio
{

extern const char* const SELECT_FISCAL;
Documento cupomFiscal(const Consulta& linha);

extern const char* const SELECT_NF;
Documento cupomNf(const Consulta& linha);

// Without the "CN" rows that have their cupom_nf and the "RZ" rows that have their reducao_z; a
// condition goes on with AND.
extern const char* const SELECT_OUTRO;
Documento outroDocumento(const Consulta& linha);

extern const char* const SELECT_REDUCAO;
ReducaoZ reducaoZ(const Consulta& linha);
// The document that the reduction is.
Documento documentoDaReducao(const ReducaoZ& reducao);

// The items of a receipt, in the order of their rows.
extern const char* const SELECT_ITENS_FISCAIS;
Item itemFiscal(const Consulta& linha);

extern const char* const SELECT_ITENS_NF;
Item itemNf(const Consulta& linha);

extern const char* const SELECT_PAGAMENTOS;
Pagamento pagamento(const Consulta& linha);

} // namespace bancada::relatorio

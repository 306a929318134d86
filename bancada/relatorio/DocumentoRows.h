// The documents' parts as the rows of their tables say them.
#pragma once

#include "bancada/leitura/Tables.h"
#include "bancada/relatorio/Documento.h"

namespace bancada::relatorio
{

// Each document without its items, payments and totalizers.
Documento CupomFiscalOf(const leitura::CupomFiscalRow& row);
// Its end stands in outros_documentos.
Documento ComprovanteNfOf(const leitura::CupomNfRow& row);
Documento OutroDocumentoOf(const leitura::OutroDocumentoRow& row);
ReducaoZ ReducaoOf(const leitura::ReducaoZRow& row);
// The document that the reduction is.
Documento DocumentoOf(const ReducaoZ& reducao);

Item ItemOf(const leitura::ItemCupomFiscalRow& row);
// Without the name of its totalizer.
Item ItemOf(const leitura::ItemCupomNfRow& row);
// Without the name of its means.
Pagamento PagamentoOf(const leitura::PagamentoCupomRow& row);

} // namespace bancada::relatorio

#include "bancada/conferencia/Pagamentos.h"

#include <algorithm>

namespace bancada::conferencia
{

using leitura::Amount;
using leitura::PagamentoCupomRow;

PagamentosReader::PagamentosReader(const leitura::DatabaseReading& database)
    : m_rows(database,
             leitura::PagamentoCupomTable().Only({"cont_coo", "cont_gnf", "valor_pagamento",
                                                  "indice_meio_pagamento", "id_estornado",
                                                  "valor_estornado"}),
             "WHERE cont_coo = ?1 ORDER BY indice_meio_pagamento, rowid")
{
}

Pagamentos PagamentosReader::Read(std::int64_t coo)
{
    Pagamentos pagamentos;
    // A reversal leaves the payment's value as it was and notes the amount beside it; a second one
    // takes the first off the value. What the means holds is the values less the amount noted last.
    std::map<std::int64_t, Amount> estornado;
    std::map<std::int64_t, std::int64_t> gnfByRow;
    m_rows.With(coo);
    PagamentoCupomRow row;
    while (m_rows.Next(row)) {
        const std::int64_t meio = row.indiceMeioPagamento.Value();
        gnfByRow.emplace(row.rowid, row.gnf.Value());
        pagamentos.porMeio[meio] = pagamentos.porMeio[meio] + row.valorPagamento;
        pagamentos.soma = pagamentos.soma + row.valorPagamento;
        if (row.estornado.IsSet() && !estornado.emplace(meio, row.valorEstornado).second) {
            pagamentos.incerto = true;
        }
        pagamentos.rows.push_back(row);
    }
    // While a receipt is open the GNF stands still: a payment with another one was moved there by a
    // reversal, a document of its own.
    for (const auto& [rowid, gnf] : gnfByRow) {
        if (gnf != gnfByRow.begin()->second) {
            pagamentos.gnfsDeEstorno.push_back(gnf);
        }
    }
    std::sort(
        pagamentos.rows.begin(), pagamentos.rows.end(),
        [](const PagamentoCupomRow& a, const PagamentoCupomRow& b) { return a.rowid < b.rowid; });
    for (const auto& [meio, valor] : estornado) {
        pagamentos.porMeio[meio] = pagamentos.porMeio[meio] - valor;
        pagamentos.soma = pagamentos.soma - valor;
    }
    return pagamentos;
}

} // namespace bancada::conferencia

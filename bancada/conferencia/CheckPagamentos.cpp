// The payments of a receipt, each by itself.
#include "bancada/Messages.h"
#include "bancada/conferencia/CheckContext.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Counter.h"

namespace bancada::conferencia
{
namespace
{

using leitura::PagamentoCupomRow;

void Report(CheckContext& context, const PagamentoCupomRow& row, const char* column,
            const std::string& expected, const std::string& found, const std::string& text)
{
    context.findings.Report(FindingKind::PAGAMENTO_COLUNAS,
                            Tr("%1 means %2", {Coo(row.coo), Number(row.indiceMeioPagamento)}),
                            text, DocumentOf(row.coo.Value()),
                            {"pagamento_cupom", row.rowid, column, expected, found});
}

void CheckColunas(CheckContext& context, const PagamentoCupomRow& row)
{
    if (row.estornado.IsSet() == row.valorEstornado.IsZero()) {
        Report(context, row, "valor_estornado", row.estornado.IsSet() ? Tr("above zero") : "0.00",
               Money(row.valorEstornado),
               Tr(row.estornado.IsSet() ? TrLater("reversed, amount reversed %1")
                                        : TrLater("not reversed, amount reversed %1"),
                  {Money(row.valorEstornado)}));
    }
    if (!row.estornado.IsSet() && row.valorPagamento.Units() <= 0) {
        Report(context, row, "valor_pagamento", Tr("above zero"), Money(row.valorPagamento),
               Tr("paid %1", {Money(row.valorPagamento)}));
    }
}

} // namespace

void CheckPagamentos(CheckContext& context, const leitura::Integer& coo,
                     const Pagamentos& pagamentos, const leitura::Integer& gnf)
{
    for (const PagamentoCupomRow& row : pagamentos.rows) {
        CheckColunas(context, row);
    }
    if (pagamentos.rows.empty()) {
        return;
    }
    const PagamentoCupomRow& first = pagamentos.rows.front();
    if (gnf.State() != leitura::CellState::LEFT_OUT) {
        if (first.gnf.Value() != gnf.Value()) {
            Report(context, first, "cont_gnf", Number(gnf), Number(first.gnf),
                   Tr("GNF %1, %2 has %3", {Number(first.gnf), Tr("its receipt"), Number(gnf)}));
        }
        return;
    }
    // A reversal after the closing takes the next GNF; until another document does, it is the last.
    const std::optional<std::int64_t> last = context.gnfDePagamentos;
    const std::int64_t ultimo = pagamentos.rows.back().gnf.Value();
    if (last && leitura::ComesBefore(first.gnf.Value(), *last)) {
        Report(context, first, "cont_gnf", Tr("none before %1", {std::to_string(*last)}),
               Number(first.gnf),
               Tr("GNF %1, %2 comes after GNF %3",
                  {Number(first.gnf), Coo(coo), std::to_string(*last)}));
        return;
    }
    context.gnfDePagamentos = ultimo;
}

} // namespace bancada::conferencia

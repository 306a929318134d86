// Fiscal receipts against their items and payments.
#include "bancada/conferencia/CheckContext.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Tables.h"

#include <algorithm>

namespace bancada::conferencia
{
namespace
{

using leitura::Amount;
using leitura::CupomFiscalRow;
using leitura::ItemCupomFiscalRow;

constexpr int CENTS = 2;
constexpr int THOUSANDTHS = 3;

bool IsFechado(const CupomFiscalRow& cupom)
{
    return cupom.assinaturaDocumento.Value().find_first_not_of(' ') != std::string::npos;
}

// Quantity by unit price, cut or rounded to cents; not known where it does not fit.
Amount Bruto(const Amount& quantidade, const Amount& valorUnitario, bool rounds)
{
    Amount unknown(leitura::CellState::TOO_LARGE, "?", CENTS);
    const Amount quantity = quantidade.WithDecimals(THOUSANDTHS);
    const Amount price = valorUnitario.WithDecimals(THOUSANDTHS);
    if (!quantity.IsKnown() || !price.IsKnown()) {
        return unknown;
    }
    // Millionths in a cent. The product is never formed whole: it would not fit where quantity and
    // price are both large.
    constexpr std::int64_t CENT = 10000;
    std::int64_t whole = 0;
    std::int64_t rest = 0;
    std::int64_t cents = 0;
    if (__builtin_mul_overflow(quantity.Units() / CENT, price.Units(), &whole) ||
        __builtin_mul_overflow(quantity.Units() % CENT, price.Units(), &rest) ||
        __builtin_add_overflow(rest, rounds ? CENT / 2 : 0, &rest) ||
        __builtin_add_overflow(whole, rest / CENT, &cents)) {
        return unknown;
    }
    return {cents, CENTS};
}

class Itens
{
  public:
    explicit Itens(CheckContext& context)
        : m_context(context), m_rows(context.Database(), leitura::ItemCupomFiscalTable(),
                                     "WHERE cont_coo = ?1 ORDER BY seq_item")
    {
    }

    // Checks the items of a receipt; answers the sum of the live ones.
    Amount Check(std::int64_t coo)
    {
        Amount soma;
        std::int64_t previous = 0;
        m_rows.With(coo);
        ItemCupomFiscalRow item;
        while (m_rows.Next(item)) {
            ReportMissingItens(m_context, coo, previous, item.seqItem.Value());
            previous = item.seqItem.Value();
            if (!item.cancelado.IsSet()) {
                soma = soma + CheckTotal(coo, item);
            }
        }
        return soma;
    }

  private:
    // Answers the item's total.
    Amount CheckTotal(std::int64_t coo, const ItemCupomFiscalRow& item)
    {
        Amount total = item.valorTotal.WithDecimals(CENTS);
        const Amount reckoned =
            Bruto(item.quantidade, item.valorUnitario, item.arredTruncValor.Value() == "A") +
            item.valorAcrescimo.WithDecimals(CENTS) - item.valorDesconto.WithDecimals(CENTS);
        if (!IsSame(total, reckoned)) {
            m_context.findings.Report(
                FindingKind::ITEM_TOTAL, Coo(coo) + " item " + Number(item.seqItem),
                "total " + Money(total) + ", quantity by price and adjustments " + Money(reckoned),
                DocumentOf(coo));
        }
        return total;
    }

    CheckContext& m_context;
    leitura::Rows<ItemCupomFiscalRow> m_rows;
};

void CheckFechado(CheckContext& context, const CupomFiscalRow& cupom, const Amount& itens,
                  const Pagamentos& pagamentos)
{
    const Subject subject = DocumentOf(cupom.coo.Value());
    if (!IsSame(cupom.valorTotal,
                cupom.valorSubtotal - cupom.valorDesconto + cupom.valorAcrescimo)) {
        context.findings.Report(
            FindingKind::CUPOM_TOTAL, Coo(cupom.coo),
            "total " + Money(cupom.valorTotal) + ", subtotal " + Money(cupom.valorSubtotal) +
                " less " + Money(cupom.valorDesconto) + " plus " + Money(cupom.valorAcrescimo),
            subject);
    }
    // Apportionment writes the subtotal adjustment into the items.
    const bool adjusted = !cupom.valorDesconto.IsZero() || !cupom.valorAcrescimo.IsZero();
    if (!IsSame(itens, cupom.valorSubtotal) && !(adjusted && IsSame(itens, cupom.valorTotal))) {
        context.findings.Report(FindingKind::CUPOM_ITENS, Coo(cupom.coo),
                                "live items " + Money(itens) + ", subtotal " +
                                    Money(cupom.valorSubtotal) + ", total " +
                                    Money(cupom.valorTotal),
                                subject);
    }
    if (!pagamentos.incerto && !IsSame(pagamentos.soma - cupom.valorTroco, cupom.valorTotal)) {
        context.findings.Report(FindingKind::CUPOM_PAGAMENTOS, Coo(cupom.coo),
                                "payments " + Money(pagamentos.soma) + " less change " +
                                    Money(cupom.valorTroco) + ", total " + Money(cupom.valorTotal),
                                subject);
    }
}

// A receipt that was neither closed nor cancelled in its row. An additional receipt always reads
// so: its closing is rejected and it keeps what its opening wrote. Whether its items carry the
// subtotal adjustment is then not told, so that its total is one of two.
void CheckAberto(CheckContext& context, const CupomFiscalRow& cupom, const Amount& itens,
                 const Pagamentos& pagamentos)
{
    const Amount adjusted = itens - cupom.valorDesconto + cupom.valorAcrescimo;
    const Amount& least = IsAtMost(itens, adjusted) ? itens : adjusted;
    const Amount& most = IsAtMost(itens, adjusted) ? adjusted : itens;
    const bool paid =
        !IsAtMost(pagamentos.soma, Amount(0, CENTS)) && IsAtMost(least, pagamentos.soma);
    Jornada& jornada = context.jornadas[cupom.crz.Value()];
    const LossIndex* losses = context.Losses();
    if (paid && (losses == nullptr || losses->HasCupomAdicional(cupom.coo.Value()))) {
        jornada.vendas.Add(least, most);
        jornada.recebido.Add(least, most);
        context.findings.ReportExplained(
            FindingKind::CUPOM_ADICIONAL, Coo(cupom.coo),
            "paid " + Money(pagamentos.soma) +
                (losses == nullptr ? ", closing never written"
                                   : ", closing rejected as that of an additional receipt"),
            false);
        return;
    }
    // Whether the register counted it, the rows do not tell.
    jornada.vendas.Add(Amount(0, CENTS), most);
    jornada.recebido.Add(Amount(0, CENTS), most);
    jornada.meiosIncertos = Coo(cupom.coo) + " was left open";
    context.findings.Report(
        FindingKind::CUPOM_ABERTO, Coo(cupom.coo),
        paid ? "paid " + Money(pagamentos.soma) + ", closing neither in the row nor in the log"
             : "never closed, paid " + Money(pagamentos.soma) + " of " + Money(least),
        DocumentOf(cupom.coo.Value()));
}

void CheckCupom(CheckContext& context, Itens& itens, const CupomFiscalRow& cupom)
{
    ++context.rows.cupons;
    Jornada& jornada = context.jornadas[cupom.crz.Value()];
    jornada.AddCupom(cupom.coo.Value(), cupom.dataHoraEmissao.Value());
    const bool fechado = IsFechado(cupom);
    const bool cancelado = cupom.cancelado.IsSet();
    if (fechado && !cancelado) {
        jornada.vendas.Add(cupom.valorTotal);
        jornada.recebido.Add(cupom.valorTotal);
    }
    if (!context.Repeated().IsSingle(cupom.coo)) {
        jornada.meiosIncertos = Coo(cupom.coo) + " names several receipts";
        return;
    }
    const Amount soma = itens.Check(cupom.coo.Value());
    const Pagamentos pagamentos = context.ReadPagamentos(cupom.coo.Value());
    if (!cancelado) {
        jornada.AddMeios(pagamentos.porMeio);
        if (pagamentos.incerto && !IsSame(pagamentos.soma - cupom.valorTroco, cupom.valorTotal)) {
            jornada.meiosIncertos = Coo(cupom.coo) + " has a reversal of several payments";
        }
    }
    if (fechado) {
        CheckFechado(context, cupom, soma, pagamentos);
    } else if (!cancelado && !context.IsUltimo(cupom.coo, true)) {
        CheckAberto(context, cupom, soma, pagamentos);
    }
}

} // namespace

void CheckCupons(CheckContext& context)
{
    leitura::Rows<CupomFiscalRow> cupons(context.Database(), leitura::CupomFiscalTable(),
                                         "ORDER BY rowid");
    Itens itens(context);
    CupomFiscalRow cupom;
    while (cupons.Next(cupom)) {
        CheckCupom(context, itens, cupom);
    }
}

} // namespace bancada::conferencia

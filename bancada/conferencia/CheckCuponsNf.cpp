// Non-fiscal receipts against their items and payments. Floats and withdrawals are written as such
// receipts too: their single item stands on totalizer 1 or 2, and they have no payment rows. The
// change that a non-fiscal receipt gives is not recorded with it.
#include "bancada/conferencia/CheckContext.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Tables.h"

namespace bancada::conferencia
{
namespace
{

using leitura::Amount;
using leitura::CupomNfRow;
using leitura::ItemCupomNfRow;

constexpr int CENTS = 2;

// The totalizers of floats and of withdrawals.
constexpr std::int64_t FUNDO_DE_TROCO = 1;
constexpr std::int64_t LAST_CAIXA = 2;

struct ItensSum {
    Amount liquido;
    bool any = false;
    bool caixa = false;
    bool fundo = false;
};

class ItensNf
{
  public:
    explicit ItensNf(CheckContext& context)
        : m_context(context), m_rows(context.Database(), leitura::ItemCupomNfTable(),
                                     "WHERE cont_coo = ?1 ORDER BY seq_item")
    {
    }

    // Checks the items of a receipt; answers the sum of the live ones.
    ItensSum Check(std::int64_t coo)
    {
        ItensSum sum;
        std::int64_t previous = 0;
        m_rows.With(coo);
        ItemCupomNfRow item;
        while (m_rows.Next(item)) {
            ReportMissingItens(m_context, coo, previous, item.seqItem.Value());
            previous = item.seqItem.Value();
            sum.any = true;
            sum.caixa = sum.caixa || item.indiceTotalizadorNf.Value() <= LAST_CAIXA;
            sum.fundo = sum.fundo || item.indiceTotalizadorNf.Value() == FUNDO_DE_TROCO;
            if (!item.cancelado.IsSet()) {
                sum.liquido = sum.liquido + CheckLiquido(coo, item);
            }
        }
        return sum;
    }

  private:
    // Answers the item's net value.
    Amount CheckLiquido(std::int64_t coo, const ItemCupomNfRow& item)
    {
        Amount liquido = item.valorTotalLiquido.WithDecimals(CENTS);
        const Amount reckoned = item.valorTotal.WithDecimals(CENTS) +
                                item.valorAcrescimo.WithDecimals(CENTS) -
                                item.valorDesconto.WithDecimals(CENTS);
        if (!IsSame(liquido, reckoned)) {
            m_context.findings.Report(
                FindingKind::ITEM_NF_TOTAL, Coo(coo) + " item " + Number(item.seqItem),
                "net value " + Money(liquido) + ", value and adjustments " + Money(reckoned),
                DocumentOf(coo));
        }
        return liquido;
    }

    CheckContext& m_context;
    leitura::Rows<ItemCupomNfRow> m_rows;
};

void CheckValores(CheckContext& context, const CupomNfRow& cupom, const ItensSum& itens,
                  const Pagamentos& pagamentos)
{
    const Subject subject = DocumentOf(cupom.coo.Value());
    if (!IsSame(cupom.valorTotalCupom,
                cupom.valorSubtotal - cupom.valorDesconto + cupom.valorAcrescimo)) {
        context.findings.Report(
            FindingKind::NF_TOTAL, Coo(cupom.coo),
            "total " + Money(cupom.valorTotalCupom) + ", subtotal " + Money(cupom.valorSubtotal) +
                " less " + Money(cupom.valorDesconto) + " plus " + Money(cupom.valorAcrescimo),
            subject);
    }
    if (!IsSame(itens.liquido, cupom.valorSubtotal)) {
        context.findings.Report(FindingKind::NF_ITENS, Coo(cupom.coo),
                                "live items " + Money(itens.liquido) + ", subtotal " +
                                    Money(cupom.valorSubtotal),
                                subject);
    }
    if (itens.any && !itens.caixa && !pagamentos.incerto &&
        !IsAtMost(cupom.valorTotalCupom, pagamentos.soma)) {
        context.findings.Report(FindingKind::NF_PAGAMENTOS, Coo(cupom.coo),
                                "payments " + Money(pagamentos.soma) + ", total " +
                                    Money(cupom.valorTotalCupom),
                                subject);
    }
}

void CheckCupomNf(CheckContext& context, ItensNf& itens, const CupomNfRow& cupom)
{
    ++context.rows.cuponsNf;
    Jornada& jornada = context.jornadas[cupom.crz.Value()];
    jornada.AddCupom(cupom.coo.Value(), cupom.dataHoraEmissao.Value());
    const bool cancelado = cupom.cancelado.IsSet();
    if (!cancelado) {
        jornada.naoFiscais = jornada.naoFiscais + cupom.valorTotalCupom;
    }
    if (!context.Repeated().IsSingle(cupom.coo)) {
        jornada.meiosIncertos = Coo(cupom.coo) + " names several receipts";
        return;
    }
    const ItensSum sum = itens.Check(cupom.coo.Value());
    const Pagamentos pagamentos = context.ReadPagamentos(cupom.coo.Value());
    if (!cancelado && sum.fundo) {
        jornada.fundosDeTroco.push_back(cupom.valorTotalCupom);
    }
    if (!cancelado && !sum.caixa) {
        jornada.recebido.Add(cupom.valorTotalCupom);
        jornada.AddMeios(pagamentos.porMeio);
        if (pagamentos.incerto) {
            jornada.meiosIncertos = Coo(cupom.coo) + " has a reversal of several payments";
        }
    }
    const bool hasTotals = !cupom.valorTotalCupom.IsZero() || !cupom.valorSubtotal.IsZero();
    if (hasTotals) {
        CheckValores(context, cupom, sum, pagamentos);
    } else if (!cancelado && !context.IsUltimo(cupom.coo, false) &&
               (!sum.any || !sum.liquido.IsZero())) {
        jornada.meiosIncertos = Coo(cupom.coo) + " was left open";
        context.findings.Report(FindingKind::NF_ABERTO, Coo(cupom.coo),
                                "never closed, live items " + Money(sum.liquido),
                                DocumentOf(cupom.coo.Value()));
    }
}

} // namespace

void CheckCuponsNf(CheckContext& context)
{
    leitura::Rows<CupomNfRow> cupons(context.Database(), leitura::CupomNfTable(), "ORDER BY rowid");
    ItensNf itens(context);
    CupomNfRow cupom;
    while (cupons.Next(cupom)) {
        CheckCupomNf(context, itens, cupom);
    }
}

} // namespace bancada::conferencia

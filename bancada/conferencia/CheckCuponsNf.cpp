// Non-fiscal receipts against their items and payments. Floats and withdrawals are written as such
// receipts too: their single item stands on totalizer 1 or 2, and they have no payment rows. The
// change that a non-fiscal receipt gives is not recorded with it.
#include "bancada/Messages.h"
#include "bancada/conferencia/CheckContext.h"
#include "bancada/conferencia/Consumidor.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Tables.h"

#include <utility>
#include <vector>

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
    // Of the live ones, by their totalizer.
    std::vector<std::pair<std::int64_t, Amount>> porTotalizador;
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
            const Amount liquido = CheckLiquido(coo, item);
            CheckColunas(coo, item);
            if (!item.cancelado.IsSet()) {
                sum.liquido = sum.liquido + liquido;
                sum.porTotalizador.emplace_back(item.indiceTotalizadorNf.Value(), liquido);
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
                FindingKind::ITEM_NF_TOTAL, Tr("%1 item %2", {Coo(coo), Number(item.seqItem)}),
                Tr("net value %1, value and adjustments %2", {Money(liquido), Money(reckoned)}),
                DocumentOf(coo),
                {"item_cupom_nf", item.rowid, "valor_total_liquido", Money(reckoned),
                 Money(liquido)});
        }
        return liquido;
    }

    // A float or a withdrawal leaves the kinds out; a kind by value goes without a percentage.
    void CheckColunas(std::int64_t coo, const ItemCupomNfRow& item)
    {
        const bool caixa = item.indiceTotalizadorNf.Value() <= LAST_CAIXA;
        const auto check = [&](const leitura::Text& tipo, const Amount& percent,
                               const char* column) {
            const bool leftOut = tipo.State() != leitura::CellState::READ;
            if (leftOut != caixa || (tipo.Value() == "P") != !percent.IsZero()) {
                const std::string kind = leftOut ? "NULL" : tipo.Value();
                m_context.findings.Report(
                    FindingKind::PERCENTUAL, Tr("%1 item %2", {Coo(coo), Number(item.seqItem)}),
                    Tr(caixa ? TrLater("kind %1, percentage %2, on the till's totalizer")
                             : TrLater("kind %1, percentage %2"),
                       {kind, Money(percent)}),
                    DocumentOf(coo),
                    {"item_cupom_nf", item.rowid, column, caixa ? "NULL" : Tr("V or P"), kind});
            }
        };
        if (caixa && !item.valorCancAcrescimo.IsZero()) {
            m_context.findings.Report(FindingKind::PERCENTUAL,
                                      Tr("%1 item %2", {Coo(coo), Number(item.seqItem)}),
                                      Tr("cancelled surcharge %1, on the till's totalizer",
                                         {Money(item.valorCancAcrescimo)}),
                                      DocumentOf(coo),
                                      {"item_cupom_nf", item.rowid, "valor_canc_acrescimo", "0.00",
                                       Money(item.valorCancAcrescimo)});
        }
        check(item.tipoDesconto, item.percDesconto, "tipo_desconto");
        check(item.tipoAcrescimo, item.percAcrescimo, "tipo_acrescimo");
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
            Tr("total %1, subtotal %2 less %3 plus %4",
               {Money(cupom.valorTotalCupom), Money(cupom.valorSubtotal),
                Money(cupom.valorDesconto), Money(cupom.valorAcrescimo)}),
            subject,
            {"cupom_nf", cupom.rowid, "valor_total_cupom",
             Money(cupom.valorSubtotal - cupom.valorDesconto + cupom.valorAcrescimo),
             Money(cupom.valorTotalCupom)});
    }
    if (!IsSame(itens.liquido, cupom.valorSubtotal)) {
        context.findings.Report(
            FindingKind::NF_ITENS, Coo(cupom.coo),
            Tr("live items %1, subtotal %2", {Money(itens.liquido), Money(cupom.valorSubtotal)}),
            subject,
            {"cupom_nf", cupom.rowid, "valor_subtotal", Money(itens.liquido),
             Money(cupom.valorSubtotal)});
    }
    if (itens.any && !itens.caixa && !pagamentos.incerto &&
        !IsAtMost(cupom.valorTotalCupom, pagamentos.soma)) {
        context.findings.Report(
            FindingKind::NF_PAGAMENTOS, Coo(cupom.coo),
            Tr("payments %1, total %2", {Money(pagamentos.soma), Money(cupom.valorTotalCupom)}),
            subject,
            {"cupom_nf", cupom.rowid, "valor_total_cupom",
             Tr("at most %1", {Money(pagamentos.soma)}), Money(cupom.valorTotalCupom)});
    }
}

void AddPorTotalizador(Jornada& jornada, const ItensSum& itens, const Amount& adjustment)
{
    for (const auto& [indice, liquido] : itens.porTotalizador) {
        AmountRange& range = jornada.porTotalizadorNf[indice];
        if (adjustment.IsZero()) {
            range.Add(liquido);
        } else {
            range.Add(WithShare(liquido, adjustment, itens.liquido));
        }
    }
}

// No subtotal of a non-fiscal receipt has another kind than V, and a float or a withdrawal has no
// consumer.
void CheckColunas(CheckContext& context, const CupomNfRow& cupom, const ItensSum& itens)
{
    const auto check = [&](bool holds, const char* column, const char* expected,
                           const std::string& found) {
        if (!holds) {
            context.findings.Report(FindingKind::CUPOM_COLUNAS, Coo(cupom.coo),
                                    Tr("%1 holds '%2', where %3 is due", {column, found, expected}),
                                    DocumentOf(cupom.coo.Value()),
                                    {"cupom_nf", cupom.rowid, column, expected, found});
        }
    };
    check(cupom.tipoDesconto.Value() == "V", "tipo_desconto", "V", cupom.tipoDesconto.Shown());
    check(cupom.tipoAcrescimo.Value() == "V", "tipo_acrescimo", "V", cupom.tipoAcrescimo.Shown());
    check(!cupom.valorAcrescimo.IsZero() || !cupom.valorCancAcrescimo.IsZero() ||
              cupom.percAcrescimo.IsZero(),
          "perc_acrescimo", "0.00", Money(cupom.percAcrescimo));
    if (context.chaves.AreKnown()) {
        check(IsConsumidor(cupom.cpfCnpjConsumidor.Value()), "cpf_cnpj_consumidor",
              Tr("a CPF or CNPJ"), cupom.cpfCnpjConsumidor.Shown());
    }
    if (itens.caixa) {
        check(cupom.nomeConsumidor.Value().empty(), "nome_consumidor", Tr("nothing"),
              cupom.nomeConsumidor.Shown());
        check(cupom.cpfCnpjConsumidor.Value().empty(), "cpf_cnpj_consumidor", Tr("nothing"),
              cupom.cpfCnpjConsumidor.Shown());
        check(cupom.percAcrescimo.IsZero(), "perc_acrescimo", "0.00", Money(cupom.percAcrescimo));
        check(cupom.percDesconto.IsZero(), "perc_desconto", "0.00", Money(cupom.percDesconto));
        check(cupom.valorCancAcrescimo.IsZero(), "valor_canc_acrescimo", "0.00",
              Money(cupom.valorCancAcrescimo));
        check(!cupom.cancelado.IsSet(), "id_cancelado", "N", "S");
    }
}

void CheckCupomNf(CheckContext& context, ItensNf& itens, const CupomNfRow& cupom)
{
    ++context.rows.cuponsNf;
    Jornada& jornada = context.jornadas[JornadaNumber(cupom.crz)];
    jornada.AddCupom(cupom.coo.Value(), cupom.dataHoraEmissao.Value(), {"cupom_nf", cupom.rowid});
    const bool cancelado = cupom.cancelado.IsSet();
    if (!cancelado) {
        jornada.naoFiscais = jornada.naoFiscais + cupom.valorTotalCupom;
    }
    const LostRows& lost = context.LostOf(cupom.coo.Value());
    if (!cancelado) {
        for (const LostPagamento& pagamento : lost.pagamentos) {
            context.perdidas[JornadaNumber(cupom.crz)].AddMeios(
                {{pagamento.meio, pagamento.valor}});
        }
    }
    if (!context.Repeated().IsSingle(cupom.coo)) {
        jornada.meiosIncertos = Coo(cupom.coo) + " names several receipts";
        jornada.itensIncertos = jornada.meiosIncertos;
        if (context.Repeated().HasComeRound(cupom.coo)) {
            jornada.totaisIncertos = jornada.meiosIncertos;
        }
        return;
    }
    const ItensSum sum = itens.Check(cupom.coo.Value());
    CheckColunas(context, cupom, sum);
    if (!cancelado) {
        AddPorTotalizador(jornada, sum, cupom.valorAcrescimo - cupom.valorDesconto);
    }
    const Pagamentos pagamentos = context.ReadPagamentos(cupom.coo.Value());
    if (!cancelado && sum.fundo) {
        jornada.fundosDeTroco.push_back(cupom.valorTotalCupom);
    }
    CheckPagamentos(context, cupom.coo, pagamentos, cupom.gnf);
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
                                Tr("never closed, live items %1", {Money(sum.liquido)}),
                                DocumentOf(cupom.coo.Value()),
                                {"cupom_nf", cupom.rowid, "valor_total_cupom", Money(sum.liquido),
                                 Money(cupom.valorTotalCupom)});
    }
}

// What a receipt whose own row was lost added to its day.
void AddCupomPerdido(CheckContext& context, ItensNf& itens, std::int64_t coo, Jornada& perdida)
{
    const ItensSum sum = itens.Check(coo);
    AddPorTotalizador(perdida, sum, Amount(0, CENTS));
    perdida.naoFiscais = perdida.naoFiscais + sum.liquido;
    if (sum.fundo) {
        perdida.fundosDeTroco.push_back(sum.liquido);
    }
    if (!sum.caixa) {
        perdida.recebido.Add(sum.liquido);
        perdida.AddMeios(context.ReadPagamentos(coo).porMeio);
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
    if (context.Losses() == nullptr) {
        return;
    }
    for (const auto& [coo, crz] : context.Losses()->CuponsNf()) {
        Jornada& perdida = context.perdidas[JornadaNumber(crz)];
        const std::int64_t number = coo;
        context.findings.FindResidue([&] { AddCupomPerdido(context, itens, number, perdida); });
    }
    context.findings.ForgetResidue();
}

} // namespace bancada::conferencia

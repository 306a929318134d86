// Fiscal receipts against their items and payments.
#include "bancada/Messages.h"
#include "bancada/conferencia/CheckContext.h"
#include "bancada/conferencia/Consumidor.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Limits.h"
#include "bancada/leitura/Tables.h"

#include <algorithm>
#include <map>
#include <vector>

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

// An item's amounts in cents.
struct Valores {
    explicit Valores(const ItemCupomFiscalRow& item)
        : bruto(Bruto(item.quantidade, item.valorUnitario, item.arredTruncValor.Value() == "A")),
          desconto(item.valorDesconto.WithDecimals(CENTS)),
          acrescimo(item.valorAcrescimo.WithDecimals(CENTS)),
          cancelado(item.valorCancAcrescimo.WithDecimals(CENTS))
    {
    }

    Amount bruto, desconto, acrescimo, cancelado;
};

// What the items of a receipt come to.
struct ItensSum {
    Amount soma; // of the live ones
    std::map<std::string, std::vector<Amount>> porAliquota;
    Amount bruto, descontos, acrescimos;
    bool acrescimoCancelado = false;
    bool missing = false;
};

class Itens
{
  public:
    explicit Itens(CheckContext& context)
        : m_context(context),
          m_rows(context.Database(),
                 leitura::ItemCupomFiscalTable().Only(
                     {"seq_item", "quantidade", "aliquota", "valor_unitario", "tipo_acrescimo",
                      "valor_acrescimo", "tipo_desconto", "valor_desconto", "valor_canc_acrescimo",
                      "valor_total", "casas_decimais_quantidade", "casas_decimais_valor",
                      "id_arred_trunc_valor", "id_cancelado", "perc_acrescimo", "perc_desconto"}),
                 "WHERE cont_coo = ?1 ORDER BY seq_item")
    {
    }

    // Checks the items of a receipt.
    ItensSum Check(std::int64_t coo)
    {
        ItensSum sum;
        std::int64_t previous = 0;
        m_rows.With(coo);
        ItemCupomFiscalRow item;
        while (m_rows.Next(item)) {
            ReportMissingItens(m_context, coo, previous, item.seqItem.Value());
            sum.missing = sum.missing || item.seqItem.Value() != previous + 1;
            previous = item.seqItem.Value();
            const Valores valores(item);
            sum.bruto = sum.bruto + valores.bruto;
            sum.descontos = sum.descontos + valores.desconto;
            sum.acrescimos = sum.acrescimos + valores.acrescimo + valores.cancelado;
            sum.acrescimoCancelado = sum.acrescimoCancelado || !valores.cancelado.IsZero();
            CheckPercentuais(coo, item, valores);
            CheckCasas(coo, item);
            const Amount total = CheckTotal(coo, item, valores);
            if (!item.cancelado.IsSet()) {
                sum.soma = sum.soma + total;
                sum.porAliquota[item.aliquota.Value()].push_back(total);
            }
        }
        return sum;
    }

  private:
    static std::string KeyOf(std::int64_t coo, const ItemCupomFiscalRow& item)
    {
        return Tr("%1 item %2", {Coo(coo), Number(item.seqItem)});
    }

    // Answers the item's total. A cancelled item keeps what it was cancelled with.
    Amount CheckTotal(std::int64_t coo, const ItemCupomFiscalRow& item, const Valores& valores)
    {
        Amount total = item.valorTotal.WithDecimals(CENTS);
        const Amount reckoned = valores.bruto + valores.acrescimo - valores.desconto;
        if (!IsSame(item.valorTotal, reckoned)) {
            m_context.findings.Report(
                FindingKind::ITEM_TOTAL, KeyOf(coo, item),
                Tr("total %1, quantity by price and adjustments %2",
                   {Money(total), Money(reckoned)}),
                DocumentOf(coo),
                {"item_cupom_fiscal", item.rowid, "valor_total", Money(reckoned), Money(total)});
        }
        return total;
    }

    void ReportPercentual(std::int64_t coo, const ItemCupomFiscalRow& item, const char* column,
                          const std::string& expected, const std::string& found,
                          const std::string& text)
    {
        m_context.findings.Report(FindingKind::PERCENTUAL, KeyOf(coo, item), text, DocumentOf(coo),
                                  {"item_cupom_fiscal", item.rowid, column, expected, found});
    }

    void CheckPercentuais(std::int64_t coo, const ItemCupomFiscalRow& item, const Valores& valores)
    {
        const auto& [bruto, desconto, acrescimo, cancelado] = valores;
        const std::string& tipoDesconto = item.tipoDesconto.Value();
        const std::string& tipoAcrescimo = item.tipoAcrescimo.Value();
        if ((tipoDesconto == "P") != !item.percDesconto.IsZero()) {
            ReportPercentual(
                coo, item, "perc_desconto", tipoDesconto == "P" ? Tr("above zero") : "0.00",
                Money(item.percDesconto),
                Tr("discount of kind %1, percentage %2", {tipoDesconto, Money(item.percDesconto)}));
        } else if (tipoDesconto == "P" && !desconto.IsZero()) {
            const Amount most = IsAtMost(acrescimo, cancelado) ? cancelado : acrescimo;
            AmountRange due;
            due.AddBounds(Percentage(bruto, item.percDesconto),
                          Percentage(bruto + most, item.percDesconto));
            if (!due.Contains(desconto)) {
                ReportPercentual(coo, item, "valor_desconto", due.Text(), Money(desconto),
                                 Tr("discount %1, %2 % come to %3",
                                    {Money(desconto), Money(item.percDesconto), due.Text()}));
            }
        }
        // A surcharge by value leaves the percentage of an earlier one, which was then cancelled.
        const bool stale = tipoAcrescimo == "V" && !cancelado.IsZero();
        if ((tipoAcrescimo == "P") != !item.percAcrescimo.IsZero() && !stale) {
            ReportPercentual(coo, item, "perc_acrescimo",
                             tipoAcrescimo == "P" ? Tr("above zero") : "0.00",
                             Money(item.percAcrescimo),
                             Tr("surcharge of kind %1, percentage %2",
                                {tipoAcrescimo, Money(item.percAcrescimo)}));
        } else if (tipoAcrescimo == "P" && !acrescimo.IsZero()) {
            // A discount that was cancelled since leaves no trace.
            AmountRange due;
            due.AddBounds(Percentage(Amount(0, CENTS), item.percAcrescimo),
                          Percentage(bruto, item.percAcrescimo));
            if (!due.Contains(acrescimo)) {
                ReportPercentual(coo, item, "valor_acrescimo", due.Text(), Money(acrescimo),
                                 Tr("surcharge %1, %2 % come to %3",
                                    {Money(acrescimo), Money(item.percAcrescimo), due.Text()}));
            }
        }
    }

    // As many decimals as the item was sold with hold its quantity and its price.
    void CheckCasas(std::int64_t coo, const ItemCupomFiscalRow& item)
    {
        const auto check = [&](const Amount& value, const leitura::Integer& casas,
                               const char* column) {
            if (!casas.IsKnown() || casas.Value() < 0 || casas.Value() > leitura::MAX_CASAS) {
                return; // told as a value that its column is not for
            }
            const Amount cut = value.WithDecimals(static_cast<int>(casas.Value()));
            if (value.IsKnown() && !IsSame(cut, value)) {
                m_context.findings.Report(
                    FindingKind::CASAS_DECIMAIS, KeyOf(coo, item),
                    Tr("%1 sold with %2 decimals", {leitura::PointText(value, 0), Number(casas)}),
                    DocumentOf(coo),
                    {"item_cupom_fiscal", item.rowid, column, leitura::PointText(cut, 0),
                     leitura::PointText(value, 0)});
            }
        };
        check(item.quantidade, item.casasDecimaisQuantidade, "quantidade");
        check(item.valorUnitario, item.casasDecimaisValor, "valor_unitario");
    }

    CheckContext& m_context;
    leitura::Rows<ItemCupomFiscalRow> m_rows;
};

// What was registered on the day, whatever became of the receipt. `rewritten`: the items hold the
// subtotal's adjustment.
void AddRegistrado(Jornada& jornada, const CupomFiscalRow& cupom, const ItensSum& itens,
                   bool rewritten)
{
    const Amount cancelado = cupom.valorCancAcrescimo;
    jornada.descontos = jornada.descontos + itens.descontos;
    jornada.acrescimos = jornada.acrescimos + itens.acrescimos + cancelado;
    jornada.bruto = jornada.bruto + itens.bruto + itens.acrescimos + cancelado;
    jornada.acrescimoCancelado =
        jornada.acrescimoCancelado || itens.acrescimoCancelado || !cancelado.IsZero();
    if (!rewritten) {
        jornada.descontos = jornada.descontos + cupom.valorDesconto;
        jornada.acrescimos = jornada.acrescimos + cupom.valorAcrescimo;
        jornada.bruto = jornada.bruto + cupom.valorAcrescimo;
    }
    if (itens.missing) {
        jornada.itensIncertos = Coo(cupom.coo) + " has items without a row";
    }
}

// What the items of a valid receipt put on their tax codes.
void AddPorAliquota(Jornada& jornada, const ItensSum& itens, const Amount& adjustment)
{
    for (const auto& [aliquota, totais] : itens.porAliquota) {
        for (const Amount& total : totais) {
            if (adjustment.IsZero()) {
                jornada.porAliquota[aliquota].Add(total);
            } else {
                jornada.porAliquota[aliquota].Add(WithShare(total, adjustment, itens.soma));
            }
        }
    }
}

void CheckPercentuais(CheckContext& context, const CupomFiscalRow& cupom)
{
    const auto report = [&](const char* column, const std::string& expected,
                            const std::string& found, const std::string& text) {
        context.findings.Report(FindingKind::PERCENTUAL, Coo(cupom.coo), text,
                                DocumentOf(cupom.coo.Value()),
                                {"cupom_fiscal", cupom.rowid, column, expected, found});
    };
    const std::string& tipo = cupom.tipoAcrescimo.Value();
    if (cupom.tipoDesconto.Value() != "V") {
        report("tipo_desconto", "V", cupom.tipoDesconto.Shown(),
               Tr("discount of kind %1, which no subtotal has", {cupom.tipoDesconto.Shown()}));
    }
    if ((tipo == "P") != !cupom.percAcrescimo.IsZero()) {
        report("perc_acrescimo", tipo == "P" ? Tr("above zero") : "0.00",
               Money(cupom.percAcrescimo),
               Tr("surcharge of kind %1, percentage %2", {tipo, Money(cupom.percAcrescimo)}));
    }
    const auto compare = [&](const Amount& valor, const Amount& percent, const char* column,
                             const char* text) {
        const AmountRange due = Percentage(cupom.valorSubtotal, percent);
        if (!valor.IsZero() && !percent.IsZero() && !due.Contains(valor)) {
            report(column, due.Text(), Money(valor),
                   Tr(text, {Money(valor), Money(percent), due.Text()}));
        }
    };
    if (!cupom.valorSubtotal.IsZero()) {
        compare(cupom.valorDesconto, cupom.percDesconto, "valor_desconto",
                TrLater("discount %1, %2 % come to %3"));
        compare(cupom.valorAcrescimo, cupom.percAcrescimo, "valor_acrescimo",
                TrLater("surcharge %1, %2 % come to %3"));
    }
}

void CheckFechado(CheckContext& context, const CupomFiscalRow& cupom, const Amount& itens,
                  const Pagamentos& pagamentos)
{
    const Subject subject = DocumentOf(cupom.coo.Value());
    if (!IsSame(cupom.valorTotal,
                cupom.valorSubtotal - cupom.valorDesconto + cupom.valorAcrescimo)) {
        context.findings.Report(
            FindingKind::CUPOM_TOTAL, Coo(cupom.coo),
            Tr("total %1, subtotal %2 less %3 plus %4",
               {Money(cupom.valorTotal), Money(cupom.valorSubtotal), Money(cupom.valorDesconto),
                Money(cupom.valorAcrescimo)}),
            subject,
            {"cupom_fiscal", cupom.rowid, "valor_total",
             Money(cupom.valorSubtotal - cupom.valorDesconto + cupom.valorAcrescimo),
             Money(cupom.valorTotal)});
    }
    // Apportionment writes the subtotal adjustment into the items.
    const bool adjusted = !cupom.valorDesconto.IsZero() || !cupom.valorAcrescimo.IsZero();
    if (!IsSame(itens, cupom.valorSubtotal) && !(adjusted && IsSame(itens, cupom.valorTotal))) {
        context.findings.Report(
            FindingKind::CUPOM_ITENS, Coo(cupom.coo),
            Tr("live items %1, subtotal %2, total %3",
               {Money(itens), Money(cupom.valorSubtotal), Money(cupom.valorTotal)}),
            subject,
            {"cupom_fiscal", cupom.rowid, "valor_subtotal", Money(itens),
             Money(cupom.valorSubtotal)});
    }
    if (!pagamentos.incerto && !IsSame(pagamentos.soma - cupom.valorTroco, cupom.valorTotal)) {
        context.findings.Report(
            FindingKind::CUPOM_PAGAMENTOS, Coo(cupom.coo),
            Tr("payments %1 less change %2, total %3",
               {Money(pagamentos.soma), Money(cupom.valorTroco), Money(cupom.valorTotal)}),
            subject,
            {"cupom_fiscal", cupom.rowid, "valor_total", Money(pagamentos.soma - cupom.valorTroco),
             Money(cupom.valorTotal)});
    }
}

// What the lost items and payments of a receipt do not account for is not explained by them.
void CheckFechadoWithLosses(CheckContext& context, const CupomFiscalRow& cupom, const Amount& itens,
                            const Pagamentos& pagamentos, const LostRows& lost)
{
    if (!lost.IsEmpty()) {
        Pagamentos all = pagamentos;
        all.soma = all.soma + lost.Pagamentos();
        context.findings.FindResidue(
            [&] { CheckFechado(context, cupom, itens + lost.Itens(), all); });
    }
    CheckFechado(context, cupom, itens, pagamentos);
    context.findings.ForgetResidue();
}

// What the lost rows of a receipt would have added to its day. A cancelled receipt's sales and
// payments were taken back.
void AddPerdidos(Jornada& perdida, const LostRows& lost, bool cancelado)
{
    for (const LostItem& item : lost.itens) {
        const Amount total = item.total.WithDecimals(CENTS);
        perdida.bruto = perdida.bruto + total;
        if (!cancelado) {
            perdida.porAliquota[item.aliquota].Add(total);
        }
    }
    for (const LostPagamento& pagamento : lost.pagamentos) {
        if (!cancelado) {
            perdida.AddMeios({{pagamento.meio, pagamento.valor}});
        }
    }
}

// What a receipt whose own row was lost added to its day, as its items and payments tell. Paid less
// than its items come to, it had a discount on its subtotal.
void AddCupomPerdido(CheckContext& context, Itens& itens, std::int64_t coo, Jornada& perdida)
{
    const ItensSum sum = itens.Check(coo);
    const Pagamentos pagamentos = context.ReadPagamentos(coo);
    const LostRows& lost = context.LostOf(coo);
    const Amount vendido = sum.soma + lost.Itens();
    const Amount pago = pagamentos.soma + lost.Pagamentos();
    const Amount& total = IsAtMost(vendido, pago) ? vendido : pago;
    perdida.vendas.Add(total);
    perdida.recebido.Add(total);
    AddPorAliquota(perdida, sum, total - vendido);
    AddPerdidos(perdida, lost, false);
    perdida.AddMeios(pagamentos.porMeio);
    perdida.bruto = perdida.bruto + sum.bruto + sum.acrescimos;
    perdida.descontos = perdida.descontos + sum.descontos + vendido - total;
    perdida.acrescimos = perdida.acrescimos + sum.acrescimos;
}

// Whether the closing wrote the subtotal's adjustment into the items.
bool IsRewritten(const CupomFiscalRow& cupom, const Amount& itens)
{
    return IsSame(itens, cupom.valorTotal) && !IsSame(itens, cupom.valorSubtotal);
}

// The same of a receipt without a closing in its row: one that was to have an additional receipt
// was closed all the same, and may have been cancelled behind that.
bool MayBeRewritten(const CupomFiscalRow& cupom, const ItensSum& itens)
{
    return IsAtMost(cupom.valorDesconto, itens.descontos) &&
           IsAtMost(cupom.valorAcrescimo, itens.acrescimos);
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
    Jornada& jornada = context.jornadas[JornadaNumber(cupom.crz)];
    const LossIndex* losses = context.Losses();
    if (paid && (losses == nullptr || losses->HasCupomAdicional(cupom.coo.Value()))) {
        jornada.vendas.Add(least, most);
        jornada.recebido.Add(least, most);
        context.findings.ReportExplained(
            FindingKind::CUPOM_ADICIONAL, Coo(cupom.coo),
            Tr(losses == nullptr
                   ? TrLater("paid %1, closing never written")
                   : TrLater("paid %1, closing rejected as that of an additional receipt"),
               {Money(pagamentos.soma)}),
            false);
        return;
    }
    // Whether the register counted it, the rows do not tell.
    jornada.vendas.Add(Amount(0, CENTS), most);
    jornada.recebido.Add(Amount(0, CENTS), most);
    jornada.meiosIncertos = Coo(cupom.coo) + " was left open";
    jornada.itensIncertos = jornada.meiosIncertos;
    context.findings.Report(
        FindingKind::CUPOM_ABERTO, Coo(cupom.coo),
        paid ? Tr("paid %1, closing neither in the row nor in the log", {Money(pagamentos.soma)})
             : Tr("never closed, paid %1 of %2", {Money(pagamentos.soma), Money(least)}),
        DocumentOf(cupom.coo.Value()),
        {"cupom_fiscal", cupom.rowid, "assinatura_documento", Tr("a signature"),
         cupom.assinaturaDocumento.Shown()});
}

// Columns that hold the same in every receipt, and those of the closing, which keep what the
// opening wrote where there was none.
void CheckColunas(CheckContext& context, const CupomFiscalRow& cupom, bool fechado)
{
    const auto check = [&](bool holds, const char* column, const char* expected,
                           const std::string& found) {
        if (!holds) {
            context.findings.Report(FindingKind::CUPOM_COLUNAS, Coo(cupom.coo),
                                    Tr("%1 holds '%2', where %3 is due", {column, found, expected}),
                                    DocumentOf(cupom.coo.Value()),
                                    {"cupom_fiscal", cupom.rowid, column, expected, found});
        }
    };
    const std::string& endereco = cupom.enderecoConsumidor.Value();
    check(!endereco.empty() && endereco.back() == ',' && endereco.find('\'') == std::string::npos,
          "endereco_consumidor", Tr("an address without apostrophes and a comma"), endereco);
    check(!cupom.cupomAdicional.IsSet(), "id_cupom_adicional", "N", "S");
    const std::string& consumidor = cupom.cpfCnpjConsumidor.Value();
    const std::string named =
        fechado ? ConsumidorDaMensagem(cupom.textoSuplementar.Value()) : std::string();
    if (!named.empty()) {
        check(consumidor == named, "cpf_cnpj_consumidor", named.c_str(), consumidor);
    } else if (context.chaves.AreKnown()) {
        check(IsConsumidor(consumidor), "cpf_cnpj_consumidor", Tr("a CPF or CNPJ"), consumidor);
    }
    if (fechado) {
        return;
    }
    check(cupom.valorSubtotal.IsZero(), "valor_subtotal", "0.00", Money(cupom.valorSubtotal));
    check(cupom.valorTotal.IsZero(), "valor_total", "0.00", Money(cupom.valorTotal));
    check(cupom.valorTroco.IsZero(), "valor_troco", "0.00", Money(cupom.valorTroco));
    check(cupom.textoSuplementar.Value() == " ", "texto_suplementar", Tr("a blank"),
          cupom.textoSuplementar.Shown());
    check(cupom.textoComplementar.Value() == " ", "texto_complementar", Tr("a blank"),
          cupom.textoComplementar.Shown());
    check(cupom.chaveCupom.Value() == " ", "chave_cupom", Tr("a blank"), cupom.chaveCupom.Shown());
}

void CheckCupom(CheckContext& context, Itens& itens, const CupomFiscalRow& cupom)
{
    ++context.rows.cupons;
    Jornada& jornada = context.jornadas[JornadaNumber(cupom.crz)];
    jornada.AddCupom(cupom.coo.Value(), cupom.dataHoraEmissao.Value(),
                     {"cupom_fiscal", cupom.rowid});
    const bool fechado = IsFechado(cupom);
    const bool cancelado = cupom.cancelado.IsSet();
    if (fechado && !cancelado) {
        jornada.vendas.Add(cupom.valorTotal);
        jornada.recebido.Add(cupom.valorTotal);
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
    const bool rewritten = fechado && IsRewritten(cupom, sum.soma);
    const Amount adjustment = cupom.valorAcrescimo - cupom.valorDesconto;
    AddRegistrado(jornada, cupom, sum, rewritten);
    CheckPercentuais(context, cupom);
    const Pagamentos pagamentos = context.ReadPagamentos(cupom.coo.Value());
    CheckPagamentos(context, cupom.coo, pagamentos, leitura::Integer(leitura::CellState::LEFT_OUT));
    if (!cancelado) {
        jornada.AddMeios(pagamentos.porMeio);
        if (pagamentos.incerto && !IsSame(pagamentos.soma - cupom.valorTroco, cupom.valorTotal)) {
            jornada.meiosIncertos = Coo(cupom.coo) + " has a reversal of several payments";
        }
        AddPorAliquota(jornada, sum, rewritten ? Amount(0, CENTS) : adjustment);
    }
    if (!fechado && !adjustment.IsZero() && (!cancelado || MayBeRewritten(cupom, sum))) {
        jornada.itensIncertos = Coo(cupom.coo) + " was adjusted and its closing is not known";
    }
    const LostRows& lost = context.LostOf(cupom.coo.Value());
    if (!lost.IsEmpty()) {
        AddPerdidos(context.perdidas[JornadaNumber(cupom.crz)], lost, cancelado);
    }
    if (fechado) {
        CheckFechadoWithLosses(context, cupom, sum.soma, pagamentos, lost);
    } else if (!cancelado && !context.IsUltimo(cupom.coo, true)) {
        CheckAberto(context, cupom, sum.soma, pagamentos);
    }
    CheckColunas(context, cupom, fechado);
    if (fechado) {
        context.chaves.Check(context.findings, cupom);
        context.aplicativos.Check(context.findings, cupom);
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
    context.chaves.End(context.findings, context.Relogio(), context.BeginsAtFactory());
    if (context.Losses() == nullptr) {
        return;
    }
    for (const auto& [coo, crz] : context.Losses()->Cupons()) {
        Jornada& perdida = context.perdidas[JornadaNumber(crz)];
        const std::int64_t number = coo;
        context.findings.FindResidue([&] { AddCupomPerdido(context, itens, number, perdida); });
    }
    context.findings.ForgetResidue();
}

} // namespace bancada::conferencia

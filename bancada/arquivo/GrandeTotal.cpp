// The grand total as the register has it now.
#include "bancada/arquivo/Exportador.h"

#include "bancada/leitura/Counter.h"
#include "bancada/leitura/Limits.h"
#include "bancada/leitura/Query.h"

namespace bancada::arquivo
{
namespace
{

// As many decimals as the row says that a number was sold with.
leitura::Amount AsSold(const leitura::Amount& amount, const leitura::Integer& decimals)
{
    const bool told = decimals.Value() >= 0 && decimals.Value() <= leitura::MAX_CASAS;
    return amount.WithDecimals(told ? static_cast<int>(decimals.Value()) : amount.Decimals());
}

// What an item was registered at: quantity times unit price, cut or rounded to cents as its flag
// says. Its surcharges come on top, also a cancelled one.
leitura::Amount Registered(const leitura::ItemCupomFiscalRow& row)
{
    const leitura::Amount quantidade = AsSold(row.quantidade, row.casasDecimaisQuantidade);
    const leitura::Amount unitario = AsSold(row.valorUnitario, row.casasDecimaisValor);
    std::int64_t product = 0;
    if (!quantidade.IsKnown() || !unitario.IsKnown() ||
        __builtin_mul_overflow(quantidade.Units(), unitario.Units(), &product)) {
        return leitura::Amount(leitura::CellState::TOO_LARGE, "", 2);
    }
    std::int64_t unitsACent = 1;
    for (int decimals = quantidade.Decimals() + unitario.Decimals(); decimals > 2; --decimals) {
        unitsACent *= 10;
    }
    for (int decimals = quantidade.Decimals() + unitario.Decimals(); decimals < 2; ++decimals) {
        if (__builtin_mul_overflow(product, std::int64_t{10}, &product)) {
            return leitura::Amount(leitura::CellState::TOO_LARGE, "", 2);
        }
    }
    const bool rounded = row.arredTruncValor.Value() == "A";
    const leitura::Amount bruto((product + (rounded ? unitsACent / 2 : 0)) / unitsACent, 2);
    return bruto + row.valorAcrescimo + row.valorCancAcrescimo;
}

} // namespace

leitura::Amount GrandeTotal(const Exportador& exporting)
{
    if (exporting.memoria) {
        return leitura::Amount(exporting.memoria->gt, 2);
    }
    leitura::Amount gt(0, 2);
    std::int64_t crz = 1;
    leitura::Rows reducoes(exporting.database, leitura::ReducaoZTable(),
                           "ORDER BY rowid DESC LIMIT 1");
    leitura::ReducaoZRow reducao;
    if (reducoes.Next(reducao)) {
        gt = reducao.valorGt;
        crz = leitura::NextNumber(reducao.crz.Value());
    }
    // A receipt's surcharge was written into its items' where the closing shared it among them:
    // the items then come to the total, not to the subtotal.
    leitura::Rows cupons(exporting.database, leitura::CupomFiscalTable(),
                         "WHERE cont_crz = ?1 AND rowid > ?2 ORDER BY rowid");
    leitura::Rows itens(exporting.database, leitura::ItemCupomFiscalTable(), "WHERE cont_coo = ?1");
    cupons.With(crz, std::int64_t{0});
    leitura::CupomFiscalRow cupom;
    leitura::ItemCupomFiscalRow item;
    while (cupons.Next(cupom)) {
        itens.With(cupom.coo.Value());
        leitura::Amount total(0, 2);
        while (itens.Next(item)) {
            gt = gt + Registered(item);
            if (!item.cancelado.IsSet()) {
                total = total + item.valorTotal;
            }
        }
        const bool shared =
            !IsSame(cupom.valorTotal, leitura::Amount(0, 2)) && IsSame(total, cupom.valorTotal);
        if (!shared) {
            gt = gt + cupom.valorAcrescimo;
        }
        gt = gt + cupom.valorCancAcrescimo;
    }
    return gt.WithDecimals(2);
}

} // namespace bancada::arquivo

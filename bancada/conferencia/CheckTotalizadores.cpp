// The sums of a Z reduction against its totalizers, and these against the receipts of the day.
#include "bancada/Messages.h"
#include "bancada/conferencia/CheckReducao.h"
#include "bancada/conferencia/Dominio.h"
#include "bancada/conferencia/Texts.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <optional>

namespace bancada::conferencia
{
namespace
{

using leitura::Amount;
using leitura::ReducaoZRow;
using leitura::TotalizadorReducaoRow;

enum Tributo {
    ICMS,
    ISSQN,
    TRIBUTOS
};

// A sum of the Z that a totalizer of its own holds too.
struct FixedTotalizador {
    const char* name;
    const char* columnName;
    Amount ReducaoZRow::*column;
};

// What the Z sums up of a tax.
struct TributoColumns {
    const char* name;
    const char* baseName;
    Amount ReducaoZRow::*base;
    const char* impostoName;
    Amount ReducaoZRow::*imposto;
    FixedTotalizador desconto, acrescimo, cancelamento;
};

const TributoColumns COLUMNS[TRIBUTOS] = {
    {"ICMS",
     "valor_base_icms",
     &ReducaoZRow::valorBaseIcms,
     "valor_icms",
     &ReducaoZRow::valorIcms,
     {"DT", "valor_desc_icms", &ReducaoZRow::valorDescIcms},
     {"AT", "valor_acres_icms", &ReducaoZRow::valorAcresIcms},
     {"Can-T", "valor_canc_icms", &ReducaoZRow::valorCancIcms}},
    {"ISSQN",
     "valor_base_iss",
     &ReducaoZRow::valorBaseIss,
     "valor_iss",
     &ReducaoZRow::valorIss,
     {"DS", "valor_desc_iss", &ReducaoZRow::valorDescIss},
     {"AS", "valor_acres_iss", &ReducaoZRow::valorAcresIss},
     {"Can-S", "valor_canc_iss", &ReducaoZRow::valorCancIss}},
};

// The tax of a totalizer by its code: "01T18.00" and "02S05.00" are rates, "F1" and "FS1" are
// specials. Nothing for any other code.
std::optional<Tributo> TributoOf(const std::string& code)
{
    const auto isDigit = [&](std::size_t i) {
        return i < code.size() && std::isdigit(static_cast<unsigned char>(code[i])) != 0;
    };
    if (isDigit(0)) {
        const std::size_t letter = code.find_first_not_of("0123456789");
        if (letter == std::string::npos || (code[letter] != 'T' && code[letter] != 'S')) {
            return std::nullopt;
        }
        return code[letter] == 'T' ? ICMS : ISSQN;
    }
    const bool special = !code.empty() && (code[0] == 'F' || code[0] == 'I' || code[0] == 'N');
    if (special && code.size() == 2 && isDigit(1)) {
        return ICMS;
    }
    if (special && code.size() == 3 && code[1] == 'S' && isDigit(2)) {
        return ISSQN;
    }
    return std::nullopt;
}

// The totalizers of a Z, added up.
struct Sums {
    Amount base[TRIBUTOS];
    Amount imposto[TRIBUTOS];
    Amount naoFiscais;
    std::map<std::string, Amount> fixed;

    explicit Sums(const ReducaoParts& parts)
    {
        for (const TotalizadorReducaoRow& row : parts.totalizadores) {
            if (!row.fiscal.IsSet()) {
                naoFiscais = naoFiscais + row.valorBaseCalculo;
            } else if (const std::optional<Tributo> t = TributoOf(row.totalizador.Value())) {
                base[*t] = base[*t] + row.valorBaseCalculo;
                imposto[*t] = imposto[*t] + row.valorImposto;
            } else {
                fixed.emplace(row.totalizador.Value(), row.valorBaseCalculo);
            }
        }
    }
};

void Compare(CheckContext& context, const ReducaoZRow& z, const std::string& name,
             const char* columnName, const Amount& column, const Amount& rows)
{
    if (!IsSame(column, rows)) {
        context.findings.Report(FindingKind::Z_TOTALIZADORES, Crz(z.crz),
                                Tr("%1 %2, its rows %3", {name, Money(column), Money(rows)}),
                                SubjectOf(z),
                                {"reducao_z", z.rowid, columnName, Money(rows), Money(column)});
    }
}

void CheckFixed(CheckContext& context, const ReducaoZRow& z, const Sums& sums,
                const FixedTotalizador& totalizador)
{
    const auto row = sums.fixed.find(totalizador.name);
    if (row == sums.fixed.end()) {
        context.findings.Report(FindingKind::REDUCAO_INCOMPLETA, Crz(z.crz),
                                Tr("no totalizer row %1", {totalizador.name}), SubjectOf(z));
    } else {
        Compare(context, z, totalizador.name, totalizador.columnName, z.*totalizador.column,
                row->second);
    }
}

// The rate of "01T18.00" in hundredths of a percent; nothing for a code without one.
std::optional<std::int64_t> RateOf(const std::string& code)
{
    if (!IsTaxCode(code) || std::isdigit(static_cast<unsigned char>(code[0])) == 0) {
        return std::nullopt;
    }
    return std::stoll(code.substr(3, 2)) * 100 + std::stoll(code.substr(6));
}

// The tax of a rate is its base by the rate, cut to cents or rounded; all others have none.
void CheckImposto(CheckContext& context, const ReducaoZRow& z, const TotalizadorReducaoRow& row)
{
    const std::string& code = row.totalizador.Value();
    const std::optional<std::int64_t> rate = row.fiscal.IsSet() ? RateOf(code) : std::nullopt;
    AmountRange due;
    if (rate) {
        due = Percentage(row.valorBaseCalculo, Amount(*rate, 2));
    }
    const bool holds = rate ? due.Contains(row.valorImposto) : row.valorImposto.IsZero();
    if (!holds) {
        context.findings.Report(
            FindingKind::Z_IMPOSTO, Crz(z.crz) + " " + code,
            Tr("tax %1, base %2 comes to %3",
               {Money(row.valorImposto), Money(row.valorBaseCalculo), due.Text()}),
            SubjectOf(z),
            {"totalizador_reducao", row.rowid, "valor_imposto", due.Text(),
             Money(row.valorImposto)});
    }
}

// A fiscal totalizer has a tax code or one of the six fixed names, any other a name.
void CheckCodigo(CheckContext& context, const ReducaoZRow& z, const TotalizadorReducaoRow& row)
{
    static const char* const fixed[] = {"DT", "DS", "AT", "AS", "Can-T", "Can-S"};
    const std::string& code = row.totalizador.Value();
    const bool tax = IsTaxCode(code) || std::count(std::begin(fixed), std::end(fixed), code) != 0;
    if (row.fiscal.IsSet() ? !tax : code.empty()) {
        context.findings.Report(
            FindingKind::Z_NOME, Crz(z.crz),
            Tr("totalizer '%1' of the kind %2",
               {row.totalizador.Shown(), row.fiscal.IsSet() ? "S" : "N"}),
            SubjectOf(z),
            {"totalizador_reducao", row.rowid, "totalizador", "", row.totalizador.Shown()});
    }
}

// Each tax totalizer against the items of its code. The detailed sale writes a rate of ISSQN with
// the letter of ICMS, so that a code may stand for two totalizers: they are then taken together.
void CheckAliquotas(CheckContext& context, const ReducaoZRow& z, const ReducaoParts& parts,
                    const Jornada& jornada)
{
    struct Pair {
        std::string codes;
        Amount base;
        AmountRange items;
        bool programmed = false;
    };
    std::map<std::string, Pair> pairs;
    const auto twin = [](std::string code) {
        if (RateOf(code)) {
            code[2] = 'S';
        }
        return code;
    };
    const auto hasRow = [&](const std::string& code) {
        return std::any_of(
            parts.totalizadores.begin(), parts.totalizadores.end(),
            [&](const auto& row) { return row.fiscal.IsSet() && row.totalizador.Value() == code; });
    };
    // An item of the letter S can be of the S totalizer alone; with both programmed, one of the
    // letter T of either.
    const auto keyOf = [&](const std::string& code) {
        const std::string other = twin(code);
        return other != code && hasRow(other) ? other : code;
    };
    for (const TotalizadorReducaoRow& row : parts.totalizadores) {
        const std::string& code = row.totalizador.Value();
        if (row.fiscal.IsSet() && TributoOf(code)) {
            Pair& pair = pairs[keyOf(code)];
            pair.codes = pair.codes.empty() ? code : Tr("%1 and %2", {pair.codes, code});
            pair.base = pair.base + row.valorBaseCalculo;
            pair.programmed = true;
        }
    }
    for (const auto& [code, items] : jornada.porAliquota) {
        pairs[keyOf(code)].items.Add(items);
    }
    for (const auto& [code, pair] : pairs) {
        if (pair.items.IsKnown() && (!pair.programmed || !pair.items.Contains(pair.base))) {
            const std::string& name = pair.programmed ? pair.codes : code;
            context.findings.Report(
                FindingKind::Z_ALIQUOTA, Crz(z.crz) + " " + name,
                Tr("%1, valid items %2",
                   {pair.programmed ? Money(pair.base) : Tr("no totalizer"), pair.items.Text()}),
                SubjectOf(z),
                {"totalizador_reducao", 0, "valor_base_calculo", pair.items.Text(),
                 Money(pair.base)});
        }
    }
}

// Gross sales, discounts and surcharges against what was registered on the day. Of a surcharge that
// was cancelled twice the rows hold the last, so that there may be more than they tell.
void CheckRegistrado(CheckContext& context, const ReducaoZRow& z, const Jornada& jornada)
{
    const auto compare = [&](const char* column, const char* text, const Amount& found,
                             const Amount& due, bool mayBeMore) {
        if (!due.IsKnown() || IsSame(found, due) || (mayBeMore && IsAtMost(due, found))) {
            return;
        }
        context.findings.Report(FindingKind::Z_REGISTRADO, Crz(z.crz),
                                Tr(text, {Money(found), Money(due)}), SubjectOf(z),
                                {"reducao_z", z.rowid, column, Money(due), Money(found)});
    };
    compare("valor_vb", TrLater("gross sales %1, items of the day %2"), z.valorVb, jornada.bruto,
            jornada.acrescimoCancelado);
    compare("valor_desc_icms", TrLater("discounts %1, items of the day %2"),
            z.valorDescIcms + z.valorDescIss, jornada.descontos, false);
    compare("valor_acres_icms", TrLater("surcharges %1, items of the day %2"),
            z.valorAcresIcms + z.valorAcresIss, jornada.acrescimos, jornada.acrescimoCancelado);
}

} // namespace

void CheckTotalizadores(CheckContext& context, const ReducaoZRow& z, const ReducaoParts& parts)
{
    const Sums sums(parts);
    Amount liquido;
    Amount bruto;
    for (int t = 0; t < TRIBUTOS; ++t) {
        const TributoColumns& columns = COLUMNS[t];
        Compare(context, z, Tr("base of %1", {columns.name}), columns.baseName, z.*columns.base,
                sums.base[t]);
        Compare(context, z, Tr("tax of %1", {columns.name}), columns.impostoName,
                z.*columns.imposto, sums.imposto[t]);
        CheckFixed(context, z, sums, columns.desconto);
        CheckFixed(context, z, sums, columns.acrescimo);
        CheckFixed(context, z, sums, columns.cancelamento);
        liquido = liquido + z.*columns.base;
        bruto =
            bruto + z.*columns.base + z.*columns.desconto.column + z.*columns.cancelamento.column;
    }
    if (!IsSame(z.valorVb, bruto)) {
        context.findings.Report(FindingKind::Z_VB, Crz(z.crz),
                                Tr("gross sales %1, net totalizers, discounts and cancellations %2",
                                   {Money(z.valorVb), Money(bruto)}),
                                SubjectOf(z),
                                {"reducao_z", z.rowid, "valor_vb", Money(bruto), Money(z.valorVb)});
    }
    for (const TotalizadorReducaoRow& row : parts.totalizadores) {
        CheckImposto(context, z, row);
        CheckCodigo(context, z, row);
    }
    const Jornada& jornada = context.jornadas[z.crz.Value()];
    if (jornada.itensIncertos.empty()) {
        CheckAliquotas(context, z, parts, jornada);
        CheckRegistrado(context, z, jornada);
    }
    if (!jornada.totaisIncertos.empty()) {
        return;
    }
    if (!jornada.vendas.Contains(liquido)) {
        context.findings.Report(FindingKind::Z_VENDAS, Crz(z.crz),
                                Tr("net tax totalizers %1, valid fiscal receipts %2",
                                   {Money(liquido), jornada.vendas.Text()}),
                                SubjectOf(z),
                                {"totalizador_reducao", 0, "valor_base_calculo",
                                 jornada.vendas.Text(), Money(liquido)});
    }
    if (!IsSame(sums.naoFiscais, jornada.naoFiscais)) {
        context.findings.Report(FindingKind::Z_NAO_FISCAIS, Crz(z.crz),
                                Tr("non-fiscal totalizers %1, valid non-fiscal receipts %2",
                                   {Money(sums.naoFiscais), Money(jornada.naoFiscais)}),
                                SubjectOf(z),
                                {"totalizador_reducao", 0, "valor_base_calculo",
                                 Money(jornada.naoFiscais), Money(sums.naoFiscais)});
    }
}

} // namespace bancada::conferencia

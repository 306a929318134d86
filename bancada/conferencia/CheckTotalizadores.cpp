// The sums of a Z reduction against its totalizers, and these against the receipts of the day.
#include "bancada/conferencia/CheckReducao.h"
#include "bancada/conferencia/Texts.h"

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
    Amount ReducaoZRow::*column;
};

// What the Z sums up of a tax.
struct TributoColumns {
    const char* name;
    Amount ReducaoZRow::*base;
    Amount ReducaoZRow::*imposto;
    FixedTotalizador desconto, acrescimo, cancelamento;
};

const TributoColumns COLUMNS[TRIBUTOS] = {
    {"ICMS",
     &ReducaoZRow::valorBaseIcms,
     &ReducaoZRow::valorIcms,
     {"DT", &ReducaoZRow::valorDescIcms},
     {"AT", &ReducaoZRow::valorAcresIcms},
     {"Can-T", &ReducaoZRow::valorCancIcms}},
    {"ISSQN",
     &ReducaoZRow::valorBaseIss,
     &ReducaoZRow::valorIss,
     {"DS", &ReducaoZRow::valorDescIss},
     {"AS", &ReducaoZRow::valorAcresIss},
     {"Can-S", &ReducaoZRow::valorCancIss}},
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
             const Amount& column, const Amount& rows)
{
    if (!IsSame(column, rows)) {
        context.findings.Report(FindingKind::Z_TOTALIZADORES, Crz(z.crz),
                                name + " " + Money(column) + ", its rows " + Money(rows),
                                SubjectOf(z));
    }
}

void CheckFixed(CheckContext& context, const ReducaoZRow& z, const Sums& sums,
                const FixedTotalizador& totalizador)
{
    const auto row = sums.fixed.find(totalizador.name);
    if (row == sums.fixed.end()) {
        context.findings.Report(FindingKind::REDUCAO_INCOMPLETA, Crz(z.crz),
                                std::string("no totalizer row ") + totalizador.name, SubjectOf(z));
    } else {
        Compare(context, z, totalizador.name, z.*totalizador.column, row->second);
    }
}

} // namespace

void CheckTotalizadores(CheckContext& context, const ReducaoZRow& z, const ReducaoParts& parts)
{
    const Sums sums(parts);
    Amount liquido;
    Amount bruto;
    for (int t = 0; t < TRIBUTOS; ++t) {
        const TributoColumns& columns = COLUMNS[t];
        Compare(context, z, std::string("base of ") + columns.name, z.*columns.base, sums.base[t]);
        Compare(context, z, std::string("tax of ") + columns.name, z.*columns.imposto,
                sums.imposto[t]);
        CheckFixed(context, z, sums, columns.desconto);
        CheckFixed(context, z, sums, columns.acrescimo);
        CheckFixed(context, z, sums, columns.cancelamento);
        liquido = liquido + z.*columns.base;
        bruto =
            bruto + z.*columns.base + z.*columns.desconto.column + z.*columns.cancelamento.column;
    }
    if (!IsSame(z.valorVb, bruto)) {
        context.findings.Report(FindingKind::Z_VB, Crz(z.crz),
                                "gross sales " + Money(z.valorVb) +
                                    ", net totalizers, discounts and cancellations " + Money(bruto),
                                SubjectOf(z));
    }
    const Jornada& jornada = context.jornadas[z.crz.Value()];
    if (!jornada.vendas.Contains(liquido)) {
        context.findings.Report(FindingKind::Z_VENDAS, Crz(z.crz),
                                "net tax totalizers " + Money(liquido) +
                                    ", valid fiscal receipts " + jornada.vendas.Text(),
                                SubjectOf(z));
    }
    if (!IsSame(sums.naoFiscais, jornada.naoFiscais)) {
        context.findings.Report(FindingKind::Z_NAO_FISCAIS, Crz(z.crz),
                                "non-fiscal totalizers " + Money(sums.naoFiscais) +
                                    ", valid non-fiscal receipts " + Money(jornada.naoFiscais),
                                SubjectOf(z));
    }
}

} // namespace bancada::conferencia

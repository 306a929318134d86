// A Z reduction against the receipts of the day that it closes: its date, its time, its payment
// means.
#include "bancada/conferencia/CheckReducao.h"
#include "bancada/conferencia/FundosDeTroco.h"
#include "bancada/conferencia/Texts.h"

#include <string>

namespace bancada::conferencia
{

using leitura::Amount;
using leitura::MeioPagamentoReducaoRow;
using leitura::ReducaoZRow;

namespace
{

// "2024-03-01" of "2024-03-01 08:00:00".
constexpr std::size_t DATE_SIZE = 10;

} // namespace

void CheckHoras(CheckContext& context, const ReducaoZRow& z, const ReducaoZRow* anterior)
{
    const Jornada& jornada = context.jornadas[z.crz.Value()];
    const Acertos& relogio = context.Relogio();
    const std::string& hora = z.dataHoraEmissao.Value();
    const std::string movimento = z.dataMovimento.Shown().substr(0, DATE_SIZE);
    if (jornada.ultimaHora > hora && !relogio.HasBetween(jornada.ultimoCoo, z.coo.Value())) {
        context.findings.Report(FindingKind::CUPOM_FORA_DO_DIA, Coo(jornada.ultimoCoo),
                                "issued " + jornada.ultimaHora + ", after " + Crz(z.crz) + " of " +
                                    z.dataHoraEmissao.Shown(),
                                DocumentOf(jornada.ultimoCoo));
    }
    if (jornada.primeiraHora.empty()) {
        return;
    }
    if (anterior != nullptr && jornada.primeiraHora < anterior->dataHoraEmissao.Value() &&
        !relogio.HasBetween(anterior->coo.Value(), jornada.primeiroCoo)) {
        context.findings.Report(FindingKind::CUPOM_FORA_DO_DIA, Coo(jornada.primeiroCoo),
                                "issued " + jornada.primeiraHora + ", filed under " + Crz(z.crz) +
                                    ", before the Z of " + anterior->dataHoraEmissao.Value(),
                                DocumentOf(jornada.primeiroCoo));
    }
    if (jornada.primeiraHora.substr(0, DATE_SIZE) != movimento &&
        !relogio.HasBetween(anterior != nullptr ? anterior->coo.Value() : 0, z.coo.Value())) {
        context.findings.Report(FindingKind::Z_DATA, Crz(z.crz),
                                "day of " + movimento + ", first receipt " +
                                    Coo(jornada.primeiroCoo) + " of " + jornada.primeiraHora,
                                SubjectOf(z),
                                {"reducao_z", z.rowid, "data_movimento",
                                 jornada.primeiraHora.substr(0, DATE_SIZE), movimento});
    }
}

void CheckMeios(CheckContext& context, const ReducaoZRow& z, const ReducaoParts& parts)
{
    const Jornada& jornada = context.jornadas[z.crz.Value()];
    MeiosDaReducao meios;
    Amount soma;
    for (const MeioPagamentoReducaoRow& row : parts.meios) {
        Amount& acumulado = meios[row.indiceMeioPagamento.Value()].acumulado;
        acumulado = acumulado + row.valorAcumulado;
        soma = soma + row.valorAcumulado;
    }
    for (const auto& [meio, valor] : jornada.meios) {
        meios[meio].pagamentos = valor;
    }
    AmountRange recebido = jornada.recebido;
    if (CountFundos(meios, jornada.fundosDeTroco)) {
        for (const Amount& fundo : jornada.fundosDeTroco) {
            recebido.Add(fundo);
        }
    }
    if (jornada.meiosIncertos.empty()) {
        for (const auto& [meio, valores] : meios) {
            if (!IsSame(valores.acumulado, valores.pagamentos + valores.fundos)) {
                context.findings.Report(
                    FindingKind::Z_MEIO, Crz(z.crz) + " means " + std::to_string(meio),
                    "took in " + Money(valores.acumulado) + ", payments " +
                        Money(valores.pagamentos) +
                        (valores.fundos.IsZero() ? "" : ", floats " + Money(valores.fundos)),
                    SubjectOf(z),
                    {"meio_pagamento_reducao", 0, "valor_acumulado",
                     Money(valores.pagamentos + valores.fundos), Money(valores.acumulado)});
            }
        }
    }
    if (!parts.troco) {
        context.findings.Report(FindingKind::REDUCAO_INCOMPLETA, Crz(z.crz), "no row of the change",
                                SubjectOf(z));
        return;
    }
    const Amount& troco = parts.troco->valorAcumulado;
    if (jornada.totaisIncertos.empty() && !recebido.Contains(soma - troco)) {
        context.findings.Report(
            FindingKind::Z_TROCO, Crz(z.crz),
            "payment means " + Money(soma) + " less change " + Money(troco) + ", valid receipts " +
                recebido.Text(),
            SubjectOf(z),
            {"meio_pagamento_reducao", 0, "valor_acumulado", recebido.Text(), Money(soma - troco)});
    }
}

} // namespace bancada::conferencia

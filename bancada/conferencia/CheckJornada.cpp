// A Z reduction against the receipts of the day that it closes: its date, its time, its payment
// means.
#include "bancada/Messages.h"
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
                                Tr("issued %1, after %2 of %3",
                                   {jornada.ultimaHora, Crz(z.crz), z.dataHoraEmissao.Shown()}),
                                DocumentOf(jornada.ultimoCoo),
                                {jornada.ultimo.table, jornada.ultimo.rowid, "data_hora_emissao",
                                 Tr("none after %1", {hora}), jornada.ultimaHora});
    }
    if (jornada.primeiraHora.empty()) {
        return;
    }
    if (anterior != nullptr && jornada.primeiraHora < anterior->dataHoraEmissao.Value() &&
        !relogio.HasBetween(anterior->coo.Value(), jornada.primeiroCoo)) {
        context.findings.Report(
            FindingKind::CUPOM_FORA_DO_DIA, Coo(jornada.primeiroCoo),
            Tr("issued %1, filed under %2, before the Z of %3",
               {jornada.primeiraHora, Crz(z.crz), anterior->dataHoraEmissao.Value()}),
            DocumentOf(jornada.primeiroCoo),
            {jornada.primeiro.table, jornada.primeiro.rowid, "data_hora_emissao",
             Tr("none before %1", {anterior->dataHoraEmissao.Value()}), jornada.primeiraHora});
    }
    if (jornada.primeiraHora.substr(0, DATE_SIZE) != movimento &&
        !relogio.HasBetween(anterior != nullptr ? anterior->coo.Value() : 0, z.coo.Value())) {
        context.findings.Report(FindingKind::Z_DATA, Crz(z.crz),
                                Tr("day of %1, first receipt %2 of %3",
                                   {movimento, Coo(jornada.primeiroCoo), jornada.primeiraHora}),
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
    AmountRange comFundos = jornada.recebido;
    for (const Amount& fundo : jornada.fundosDeTroco) {
        comFundos.Add(fundo);
    }
    const bool counted = CountFundos(meios, jornada.fundosDeTroco);
    const AmountRange& recebido = counted ? comFundos : jornada.recebido;
    if (jornada.meiosIncertos.empty()) {
        for (const auto& [meio, valores] : meios) {
            if (!IsSame(valores.acumulado, valores.pagamentos + valores.fundos)) {
                context.findings.Report(
                    FindingKind::Z_MEIO, Tr("%1 means %2", {Crz(z.crz), std::to_string(meio)}),
                    Tr(valores.fundos.IsZero() ? TrLater("took in %1, payments %2")
                                               : TrLater("took in %1, payments %2, floats %3"),
                       {Money(valores.acumulado), Money(valores.pagamentos),
                        Money(valores.fundos)}),
                    SubjectOf(z),
                    {"meio_pagamento_reducao", 0, "valor_acumulado",
                     Money(valores.pagamentos + valores.fundos), Money(valores.acumulado)});
            }
        }
    }
    if (!parts.troco) {
        context.findings.Report(FindingKind::REDUCAO_INCOMPLETA, Crz(z.crz),
                                Tr("no row of the change"), SubjectOf(z));
        return;
    }
    const Amount& troco = parts.troco->valorAcumulado;
    // Where the means cannot be told, neither can it be whether the floats are among them.
    const bool holds = recebido.Contains(soma - troco) ||
                       (!jornada.meiosIncertos.empty() && comFundos.Contains(soma - troco));
    if (jornada.totaisIncertos.empty() && !holds) {
        context.findings.Report(
            FindingKind::Z_TROCO, Crz(z.crz),
            Tr("payment means %1 less change %2, valid receipts %3",
               {Money(soma), Money(troco), recebido.Text()}),
            SubjectOf(z),
            {"meio_pagamento_reducao", 0, "valor_acumulado", recebido.Text(), Money(soma - troco)});
    }
}

} // namespace bancada::conferencia

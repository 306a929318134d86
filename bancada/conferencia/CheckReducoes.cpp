// Z reductions: each after the one before it, each against its own rows and its day, and the days
// that have none.
#include "bancada/Messages.h"
#include "bancada/conferencia/Assinatura.h"
#include "bancada/conferencia/CheckContext.h"
#include "bancada/conferencia/CheckReducao.h"
#include "bancada/conferencia/Gaps.h"
#include "bancada/conferencia/ReducaoParts.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Counter.h"
#include "bancada/leitura/Tables.h"

#include <algorithm>
#include <optional>
#include <set>

namespace bancada::conferencia
{

using leitura::ReducaoZRow;

namespace
{

void CheckNext(CheckContext& context, const ReducaoZRow& previous, const ReducaoZRow& z)
{
    const std::int64_t last = previous.crz.Value();
    const std::int64_t crz = z.crz.Value();
    const bool follows = leitura::ComesBefore(last, crz);
    if (!follows) {
        context.findings.Report(
            FindingKind::CRZ_REPETIDO, Crz(z.crz), Tr("comes after %1", {Crz(previous.crz)}),
            SubjectOf(z),
            {"reducao_z", z.rowid, "cont_crz", std::to_string(Following(last, 1)), Number(z.crz)});
    } else if (const std::int64_t steps = leitura::Steps(last, crz); steps != 1) {
        const std::int64_t first = Following(last, 1);
        context.findings.Report(
            FindingKind::CRZ_AUSENTE, Crz(first),
            Tr("%1 without a row before %2", {std::to_string(steps - 1), Crz(z.crz)}),
            JornadaOf(first));
    } else if (!IsSame(z.valorGt - previous.valorGt, z.valorVb)) {
        context.findings.Report(FindingKind::Z_GT, Crz(z.crz),
                                Tr("grand total from %1 to %2, gross sales %3",
                                   {Money(previous.valorGt), Money(z.valorGt), Money(z.valorVb)}),
                                SubjectOf(z),
                                {"reducao_z", z.rowid, "valor_gt",
                                 Money(previous.valorGt + z.valorVb), Money(z.valorGt)});
    }
}

// The grand total has held the sales of the day since it began; that of a new register nothing
// else.
void CheckFirst(CheckContext& context, const ReducaoZRow& z)
{
    const bool isNew = z.crz.Value() == 1 && context.BeginsAtFactory();
    if (isNew ? !IsSame(z.valorGt, z.valorVb) : !IsAtMost(z.valorVb, z.valorGt)) {
        context.findings.Report(
            FindingKind::Z_GT, Crz(z.crz),
            Tr("grand total %1, gross sales %2 of the first Z",
               {Money(z.valorGt), Money(z.valorVb)}),
            SubjectOf(z), {"reducao_z", z.rowid, "valor_gt", Money(z.valorVb), Money(z.valorGt)});
    }
}

void ReportTempo(CheckContext& context, const ReducaoZRow& z, const char* text, const char* column,
                 const leitura::Integer& found, const std::string& due)
{
    context.findings.Report(FindingKind::Z_TEMPOS, Crz(z.crz), Tr(text, {Number(found), due}),
                            SubjectOf(z), {"reducao_z", z.rowid, column, due, Number(found)});
}

// The two times against each other, and where the register is the bench's against the receipts:
// operating goes from the first of them to the Z, issuing from the opening of each fiscal one to
// its closing or cancellation.
void CheckTempos(CheckContext& context, const ReducaoZRow& z)
{
    const bool known = z.segundosEmitindo.IsKnown() && z.segundosOperacional.IsKnown();
    if (!known || z.segundosEmitindo.Value() > z.segundosOperacional.Value()) {
        context.findings.Report(FindingKind::Z_TEMPOS, Crz(z.crz),
                                Tr("issuing documents %1 s, operating %2 s",
                                   {Number(z.segundosEmitindo), Number(z.segundosOperacional)}),
                                SubjectOf(z),
                                {"reducao_z", z.rowid, "tempo_operacional",
                                 Tr("at most %1", {Number(z.segundosOperacional)}),
                                 Number(z.segundosEmitindo)});
        return;
    }
    if (!context.chaves.AreKnown()) {
        return;
    }
    const Jornada& jornada = context.jornadas[z.crz.Value()];
    const std::int64_t emitindo = z.segundosEmitindo.Value();
    const SecondsRange& emissao = jornada.emissao;
    if (emitindo < emissao.least || emitindo > emissao.most) {
        const std::string least = std::to_string(emissao.least);
        ReportTempo(
            context, z, TrLater("issuing documents %1 s, the receipts of the day tell %2 s"),
            "tempo_operacional", z.segundosEmitindo,
            emissao.least == emissao.most ? least
                                          : Tr("%1 to %2", {least, std::to_string(emissao.most)}));
    }
    const auto first = SecondsOf(jornada.primeiraHora);
    const auto last = SecondsOf(z.dataHoraEmissao.Value());
    // The clock may have been set within an intervention, which begins or ends with a reading.
    const std::int64_t operating = first && last ? *last - *first : 0;
    if (!last || operating < 0 ||
        context.Relogio().MayBeWithin(jornada.primeiraHora, z.dataHoraEmissao.Value())) {
        return;
    }
    if (z.segundosOperacional.Value() != operating) {
        ReportTempo(context, z, TrLater("operating %1 s, the receipts of the day tell %2 s"),
                    "tempo_emitindo_doc", z.segundosOperacional, std::to_string(operating));
    }
}

// Rows of a Z, and receipts of a day, without their Z.
void CheckOrphans(CheckContext& context, const std::map<std::int64_t, ReducaoParts>& parts,
                  const std::set<std::int64_t>& reducoes)
{
    for (const auto& [crz, part] : parts) {
        if (reducoes.count(crz) == 0 && !part.totalizadores.empty()) {
            context.findings.Report(FindingKind::TOTALIZADOR_SEM_REDUCAO,
                                    Crz(part.totalizadores.front().crz),
                                    TrCount("%1 totalizer", "%1 totalizers",
                                            static_cast<long long>(part.totalizadores.size())),
                                    JornadaOf(crz),
                                    {"totalizador_reducao", part.totalizadores.front().rowid,
                                     "cont_crz", "", std::to_string(crz)});
        }
    }
    for (const auto& [crz, part] : parts) {
        if (reducoes.count(crz) == 0 && !part.meios.empty()) {
            context.findings.Report(FindingKind::MEIO_SEM_REDUCAO, Crz(part.meios.front().crz),
                                    Tr("%1 payment means", {std::to_string(part.meios.size())}),
                                    JornadaOf(crz),
                                    {"meio_pagamento_reducao", part.meios.front().rowid, "cont_crz",
                                     "", std::to_string(crz)});
        }
    }
    std::optional<std::int64_t> last;
    const auto follow = [&last](std::int64_t crz) {
        if (!last || leitura::ComesBefore(*last, crz)) {
            last = crz;
        }
    };
    std::for_each(reducoes.begin(), reducoes.end(), follow);
    for (const auto& [crz, jornada] : context.jornadas) {
        if (!jornada.primeiraHora.empty()) {
            follow(crz);
        }
    }
    for (const auto& [crz, jornada] : context.jornadas) {
        if (leitura::ComesBefore(crz, *last) && !jornada.primeiraHora.empty() &&
            reducoes.count(crz) == 0) {
            context.findings.Report(FindingKind::CUPOM_SEM_REDUCAO, Crz(crz),
                                    Tr("receipts from %1 to %2 and no Z",
                                       {Coo(jornada.primeiroCoo), Coo(jornada.ultimoCoo)}),
                                    JornadaOf(crz));
        }
    }
}

} // namespace

Subject SubjectOf(const ReducaoZRow& z)
{
    return {z.coo.Value(), z.crz.Value()};
}

void CheckReducoes(CheckContext& context)
{
    std::map<std::int64_t, ReducaoParts> parts = ReadReducaoParts(context.Database());
    leitura::Rows<ReducaoZRow> rows(context.Database(), leitura::ReducaoZTable(), "ORDER BY rowid");
    std::set<std::int64_t> seen;
    // The one of the highest number so far.
    std::optional<ReducaoZRow> previous;
    ReducaoZRow z;
    while (rows.Next(z)) {
        ++context.rows.reducoes;
        const std::int64_t crz = z.crz.Value();
        if (previous) {
            CheckNext(context, *previous, z);
        } else {
            CheckFirst(context, z);
        }
        if (seen.insert(crz).second) {
            context.CheckWithLosses(crz, [&] { CheckTotalizadores(context, z, parts[crz]); });
            CheckHoras(context, z, previous ? &*previous : nullptr);
            context.CheckWithLosses(crz, [&] { CheckMeios(context, z, parts[crz]); });
        }
        CheckTempos(context, z);
        if (!previous || leitura::ComesBefore(previous->crz.Value(), crz)) {
            previous = z;
        }
    }
    CheckOrphans(context, parts, seen);
}

} // namespace bancada::conferencia

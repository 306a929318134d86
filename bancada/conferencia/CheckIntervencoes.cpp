// Interventions: their order, the reading that begins one in mode L, and the counter of restarts
// that the Z reductions show. Leaving mode T moves it. One row is written for each number, by the
// intervention that finds none: an L may be followed by a T that leaves no row.
#include "bancada/Messages.h"
#include "bancada/conferencia/CheckContext.h"
#include "bancada/conferencia/CheckReducao.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Counter.h"
#include "bancada/leitura/Tables.h"

#include <optional>
#include <vector>

namespace bancada::conferencia
{
namespace
{

using leitura::IntervencaoRow;
using leitura::ReducaoZRow;

void Report(CheckContext& context, const IntervencaoRow& row, const char* column,
            const std::string& expected, const std::string& found, const std::string& text)
{
    context.findings.Report(FindingKind::INTERVENCAO, "CRO " + Number(row.cro), text, {},
                            {"intervencao", row.rowid, column, expected, found});
}

std::vector<IntervencaoRow> CheckRows(CheckContext& context)
{
    leitura::Query reading(context.Database(),
                           "SELECT 1 AS found FROM outros_documentos WHERE id_tipo_documento = 'LX'"
                           " AND data_hora_inicio_emissao = ?1 LIMIT 1");
    leitura::Rows<IntervencaoRow> rows(context.Database(), leitura::IntervencaoTable(),
                                       "ORDER BY rowid");
    std::vector<IntervencaoRow> all;
    IntervencaoRow row;
    while (rows.Next(row)) {
        const std::string& hora = row.dataHoraIntervencao.Value();
        if (!all.empty() && hora < all.back().dataHoraIntervencao.Value() &&
            !context.Relogio().Cover(hora, all.back().dataHoraIntervencao.Value())) {
            const std::string& before = all.back().dataHoraIntervencao.Value();
            Report(context, row, "data_hora_intervencao", Tr("none before %1", {before}), hora,
                   Tr("of %1, after one of %2", {hora, before}));
        }
        if (row.tipoIntervencao.Value() == "L") {
            const bool read = reading.With(hora).Next();
            reading.End();
            if (!read) {
                Report(context, row, "data_hora_intervencao", Tr("that of an X reading"), hora,
                       Tr("no X reading of %1", {hora}));
            }
        }
        if (row.perdaDadosMt.IsSet()) {
            Report(context, row, "id_perda_dados_mt", "N", "S",
                   Tr("loss of data, which is never said"));
        }
        all.push_back(row);
    }
    return all;
}

// What the counter can be at a Z, by the interventions before it and behind it.
void CheckCro(CheckContext& context, const ReducaoZRow& z, const std::vector<IntervencaoRow>& rows,
              const std::optional<std::int64_t>& previous)
{
    if (context.Relogio().Cover(z.dataHoraEmissao.Value(), z.dataHoraEmissao.Value())) {
        return; // which interventions came before it, the times do not tell
    }
    std::optional<std::int64_t> least = previous;
    std::optional<std::int64_t> most = previous;
    for (const IntervencaoRow& row : rows) {
        if (row.dataHoraIntervencao.Value() <= z.dataHoraEmissao.Value()) {
            most = leitura::NextNumber(row.cro.Value());
            least = row.tipoIntervencao.Value() == "T" ? *most : row.cro.Value();
        } else {
            // The next one was written under the number as it stood.
            least = least ? least : row.cro.Value();
            most = most ? most : row.cro.Value();
            break;
        }
    }
    // Without an intervention before it the counter may only stand as it stood.
    const std::int64_t cro = z.cro.Value();
    if (least && cro != *least && cro != *most) {
        const std::string due =
            *least == *most ? std::to_string(*least)
                            : Tr("%1 or %2", {std::to_string(*least), std::to_string(*most)});
        context.findings.Report(FindingKind::Z_CRO, Crz(z.crz),
                                Tr("CRO %1, the interventions lead to %2", {Number(z.cro), due}),
                                SubjectOf(z),
                                {"reducao_z", z.rowid, "cont_cro", due, Number(z.cro)});
    }
}

} // namespace

void CheckIntervencoes(CheckContext& context)
{
    const std::vector<IntervencaoRow> rows = CheckRows(context);
    leitura::Rows<ReducaoZRow> reducoes(context.Database(), leitura::ReducaoZTable(),
                                        "ORDER BY rowid");
    std::optional<std::int64_t> previous;
    if (context.BeginsAtFactory() && context.chaves.AreKnown() &&
        !context.MayHaveLost("intervencao")) {
        previous = 0; // a new register of the bench's
    }
    ReducaoZRow z;
    while (reducoes.Next(z)) {
        CheckCro(context, z, rows, previous);
        previous = z.cro.Value();
    }
}

} // namespace bancada::conferencia

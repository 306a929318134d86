// Reprints: one number after the other, each of documents that were issued before it.
#include "bancada/Messages.h"
#include "bancada/conferencia/CheckContext.h"
#include "bancada/conferencia/Gaps.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Counter.h"
#include "bancada/leitura/Limits.h"
#include "bancada/leitura/Tables.h"

#include <optional>

namespace bancada::conferencia
{
namespace
{

using leitura::FitaDetalheRow;

void Report(CheckContext& context, const FitaDetalheRow& row, const char* column,
            const std::string& expected, const std::string& found, const std::string& text)
{
    context.findings.Report(FindingKind::FITA_DETALHE, "CFD " + Number(row.cfd), text, {},
                            {"fita_detalhe", row.rowid, column, expected, found});
}

} // namespace

void CheckFitaDetalhe(CheckContext& context)
{
    // The document issued last at the time.
    leitura::Query issued(
        context.Database(),
        "SELECT max(rowid), cont_coo AS coo FROM outros_documentos WHERE data_hora_inicio_emissao"
        " <= ?1 UNION ALL SELECT max(rowid), cont_coo FROM cupom_fiscal WHERE data_hora_emissao <="
        " ?1");
    leitura::Rows<FitaDetalheRow> rows(context.Database(), leitura::FitaDetalheTable(),
                                       "ORDER BY rowid");
    std::optional<FitaDetalheRow> previous;
    FitaDetalheRow row;
    while (rows.Next(row)) {
        const std::string& hora = row.dataHoraEmissao.Value();
        if (previous && row.cfd.Value() != Following(previous->cfd.Value(), 1)) {
            const std::string due = std::to_string(Following(previous->cfd.Value(), 1));
            Report(context, row, "cont_cfd", due, Number(row.cfd),
                   Tr("comes after %1", {"CFD " + Number(previous->cfd)}));
        }
        if (previous && hora < previous->dataHoraEmissao.Value() &&
            !context.Relogio().Cover(hora, previous->dataHoraEmissao.Value())) {
            const std::string& before = previous->dataHoraEmissao.Value();
            Report(context, row, "data_hora_emissao", Tr("none before %1", {before}), hora,
                   Tr("of %1, after one of %2", {hora, before}));
        }
        const std::int64_t first = row.cooInicial.Value();
        const std::int64_t last = row.cooFinal.Value();
        if (first != last && !leitura::ComesBefore(first, last)) {
            Report(context, row, "coo_final", Tr("none before %1", {Number(row.cooInicial)}),
                   Number(row.cooFinal),
                   Tr("from %1 to %2", {Coo(row.cooInicial), Coo(row.cooFinal)}));
        }
        issued.With(hora);
        bool reached = false;
        bool any = false;
        while (issued.Next()) {
            const leitura::Integer coo = issued.ReadInteger("coo");
            if (coo.IsKnown()) {
                any = true;
                // The reprint itself and documents without a row may have taken a few more.
                reached = reached || !leitura::ComesBefore(coo.Value(), last) ||
                          leitura::Steps(coo.Value(), last) <= leitura::MAX_PAGAMENTOS;
            }
        }
        if (any && !reached) {
            Report(context, row, "coo_final", Tr("a document issued before %1", {hora}),
                   Number(row.cooFinal),
                   Tr("to %1, which was not issued yet", {Coo(row.cooFinal)}));
        }
        previous = row;
    }
}

} // namespace bancada::conferencia

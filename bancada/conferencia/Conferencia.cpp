#include "bancada/conferencia/Conferencia.h"

#include "bancada/Messages.h"
#include "bancada/conferencia/CheckContext.h"
#include "bancada/leitura/Query.h"
#include "bancada/leitura/Tables.h"

#include <optional>

namespace bancada::conferencia
{
namespace
{

// A lost row concerns the days of its receipt.
void AddJornadas(const leitura::DatabaseReading& database, LossIndex& losses)
{
    leitura::Query jornada(database, "SELECT cont_crz FROM cupom_fiscal WHERE cont_coo = ?1"
                                     " UNION SELECT cont_crz FROM cupom_nf WHERE cont_coo = ?1");
    for (const std::int64_t coo : losses.Coos()) {
        jornada.With(coo);
        while (jornada.Next()) {
            losses.AddCrz(coo, jornada.ReadInteger("cont_crz").Value());
        }
    }
}

void ReportLosses(FindingReport& findings, const LossIndex& losses)
{
    for (std::size_t i = 0; i < losses.Rows().size(); ++i) {
        const RejectedRow& row = losses.Rows()[i];
        const RejectedStatement& rejected = losses.All().rejected[i];
        const std::string what = row.operation.empty() ? Tr("a statement that cannot be read")
                                                       : Tr("%1 of %2", {row.operation, row.table});
        findings.ReportExplained(row.expected ? FindingKind::PERDA_PREVISTA
                                              : FindingKind::LINHA_PERDIDA,
                                 row.table + " " + row.KeyText(),
                                 Tr("%1 by command %2 was rejected: %3",
                                    {what, std::to_string(rejected.command), rejected.error}),
                                 false);
    }
    for (const LostCommand& command : losses.All().lost) {
        findings.ReportExplained(FindingKind::COMANDO_PERDIDO, command.time,
                                 Tr("the rows of a command are lost: %1", {command.reason}), false);
    }
}

} // namespace

CheckSummary CheckDatabase(const leitura::DatabaseReading& database, const Losses* losses,
                           const FindingSink& sink)
{
    leitura::RequireTables(database);
    std::optional<LossIndex> index;
    if (losses != nullptr) {
        index.emplace(*losses);
        AddJornadas(database, *index);
    }
    CheckContext context(database, index ? &*index : nullptr, sink);
    if (index) {
        ReportLosses(context.findings, *index);
    }
    CheckArquivo(context);
    CheckEsquema(context);
    CheckDominios(context);
    CheckCupons(context);
    CheckCuponsNf(context);
    CheckAssinaturas(context);
    CheckReducoes(context);
    CheckSequencias(context);
    CheckLinks(context);
    CheckOutrosDocumentos(context);
    CheckIdentidade(context);
    CheckIntervencoes(context);
    CheckFitaDetalhe(context);
    CheckNomes(context);
    database.ConfirmUnchanged();
    return {context.rows, context.findings.Faults(), context.findings.Explained(),
            context.findings.Notes()};
}

} // namespace bancada::conferencia

// The tables of one row, and the one that stays empty.
#include "bancada/Messages.h"
#include "bancada/conferencia/CheckContext.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Query.h"
#include "bancada/leitura/Tables.h"

namespace bancada::conferencia
{
namespace
{

std::int64_t CountOf(CheckContext& context, const std::string& table)
{
    leitura::Query query(context.Database(), "SELECT count(*) AS row_count FROM " + table);
    return query.Next() ? query.ReadInteger("row_count").Value() : 0;
}

// Rows of one key are told as such.
void CheckAtMost(CheckContext& context, const std::string& table, const std::string& key,
                 std::int64_t most)
{
    leitura::Query query(context.Database(),
                         "SELECT count(DISTINCT " + key + ") AS row_count FROM " + table);
    const std::int64_t rows = query.Next() ? query.ReadInteger("row_count").Value() : 0;
    if (rows > most) {
        context.findings.ReportExplained(
            FindingKind::LINHA_ALHEIA, table,
            Tr("%1 rows, where there is at most %2", {std::to_string(rows), std::to_string(most)}),
            false, {},
            {table, 0, "", TrCount("%1 row", "%1 rows", most), TrCount("%1 row", "%1 rows", rows)});
    }
}

void ReportContribuinte(CheckContext& context, const leitura::DadosUsuarioRow& row,
                        const char* column, const std::string& expected, const std::string& found,
                        const std::string& text)
{
    context.findings.Report(FindingKind::PROGRAMACAO, "dados_usuario", text, {},
                            {"dados_usuario", row.rowid, column, expected, found});
}

// The registrations are written by one command, with the CNPJ.
void CheckInscricoes(CheckContext& context, const leitura::DadosUsuarioRow& row)
{
    const auto isNull = [](const leitura::Text& text) {
        return text.State() == leitura::CellState::LEFT_OUT;
    };
    const auto check = [&](const leitura::Text& text, const char* column) {
        if (isNull(text) != isNull(row.cnpj)) {
            ReportContribuinte(context, row, column, isNull(row.cnpj) ? "NULL" : Tr("a text"),
                               isNull(text) ? "NULL" : text.Shown(),
                               Tr(isNull(text) ? TrLater("%1 is NULL, cnpj is not")
                                               : TrLater("%1 is not NULL, cnpj is"),
                                  {column}));
        }
    };
    check(row.ie, "ie");
    check(row.im, "im");
    check(row.uf, "uf");
}

// The counter as the owner was programmed: one that the Zs and the interventions know. The first
// programming writes 1 for none.
void CheckCro(CheckContext& context, const leitura::DadosUsuarioRow& row)
{
    leitura::Query known(context.Database(),
                         "SELECT min(least) AS least, max(1, max(most)) AS most FROM (SELECT"
                         " min(cont_cro) AS least, max(cont_cro) AS most FROM reducao_z UNION ALL"
                         " SELECT min(cont_cro), max(cont_cro) + 1 FROM intervencao)");
    if (!known.Next() || !row.cro.IsKnown()) {
        return;
    }
    const leitura::Integer least = known.ReadInteger("least");
    const leitura::Integer most = known.ReadInteger("most");
    if (!least.IsKnown() || !most.IsKnown() || context.MayHaveLost("intervencao")) {
        return;
    }
    if (row.cro.Value() < least.Value() || row.cro.Value() > most.Value()) {
        const std::string due = Tr("%1 to %2", {Number(least), Number(most)});
        ReportContribuinte(context, row, "cont_cro", due, Number(row.cro),
                           Tr("CRO %1, the documents know %2", {Number(row.cro), due}));
    }
}

// A new register of the bench's has its owner before the first key that names one.
void CheckGravacao(CheckContext& context, const leitura::DadosUsuarioRow& row)
{
    if (!context.BeginsAtFactory() || !context.chaves.AreKnown() ||
        !context.Relogio().All().empty()) {
        return;
    }
    leitura::Query first(context.Database(),
                         "SELECT data_hora_emissao AS hora FROM cupom_fiscal WHERE"
                         " trim(chave_cupom) <> '' AND substr(chave_cupom, 1, 14) <>"
                         " '00000000000000' ORDER BY rowid LIMIT 1");
    const std::string hora = first.Next() ? first.ReadText("hora").Value() : std::string();
    if (!hora.empty() && row.dataHoraGravacao.Value() > hora) {
        ReportContribuinte(context, row, "data_hora_gravacao", Tr("none after %1", {hora}),
                           row.dataHoraGravacao.Shown(),
                           Tr("written %1, and a key names the owner on %2",
                              {row.dataHoraGravacao.Shown(), hora}));
    }
}

void CheckContribuinte(CheckContext& context)
{
    leitura::Rows<leitura::DadosUsuarioRow> rows(context.Database(), leitura::DadosUsuarioTable(),
                                                 "ORDER BY rowid LIMIT 1");
    leitura::DadosUsuarioRow row;
    if (rows.Next(row)) {
        CheckInscricoes(context, row);
        CheckCro(context, row);
        CheckGravacao(context, row);
    }
}

} // namespace

void CheckIdentidade(CheckContext& context)
{
    CheckAtMost(context, "dados_ecf", "rowid", 1);
    CheckAtMost(context, "dados_usuario", "seq_usuario", 1);
    CheckAtMost(context, "versao_sb", "num_ecf", 1);
    // The engine rejects every statement of its command.
    CheckAtMost(context, "moeda", "rowid", 0);
    CheckContribuinte(context);
    // The command that writes the identity writes the version where it finds none.
    if (CountOf(context, "dados_ecf") != 0 && CountOf(context, "versao_sb") == 0) {
        context.findings.Report(
            FindingKind::PROGRAMACAO, "versao_sb",
            Tr("no version of a register that has its identity"), {},
            {"versao_sb", 0, "", TrCount("%1 row", "%1 rows", 1), TrCount("%1 row", "%1 rows", 0)});
    }
    if (CountOf(context, "dados_ecf") == 0 && CountOf(context, "versao_sb") != 0) {
        context.findings.Report(
            FindingKind::PROGRAMACAO, "dados_ecf",
            Tr("no identity of a register that has its version"), {},
            {"dados_ecf", 0, "", TrCount("%1 row", "%1 rows", 1), TrCount("%1 row", "%1 rows", 0)});
    }
}

} // namespace bancada::conferencia

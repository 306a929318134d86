// The tables of one row, and the one that stays empty.
#include "bancada/Messages.h"
#include "bancada/conferencia/CheckContext.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Query.h"

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

} // namespace

void CheckIdentidade(CheckContext& context)
{
    CheckAtMost(context, "dados_ecf", "rowid", 1);
    CheckAtMost(context, "dados_usuario", "seq_usuario", 1);
    CheckAtMost(context, "versao_sb", "num_ecf", 1);
    // The engine rejects every statement of its command.
    CheckAtMost(context, "moeda", "rowid", 0);
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

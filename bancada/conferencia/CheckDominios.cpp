// Every value of every row against what its column is for, and the rows' own numbers: they go from
// 1 without a gap, as nothing is ever deleted.
#include "bancada/Messages.h"
#include "bancada/conferencia/CheckContext.h"
#include "bancada/conferencia/Dominio.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Counter.h"
#include "bancada/leitura/Query.h"
#include "bancada/leitura/Tables.h"

#include <algorithm>
#include <optional>
#include <set>
#include <sqlite3.h>
#include <string>
#include <vector>

namespace bancada::conferencia
{
namespace
{

struct CheckedColumn {
    std::string name;
    leitura::Domain domain;
    leitura::Presence presence;
    std::int64_t most;
    int position = 0; // in the SELECT
};

class TableCheck
{
  public:
    template <typename Record>
    TableCheck(CheckContext& context, const leitura::Table<Record>& table)
        : m_context(context), m_table(table.Name())
    {
        const std::vector<std::string> names =
            leitura::ColumnNames(context.Database(), table.Name());
        // A column that has a default never holds a NULL: no insert names it and leaves it out.
        const std::set<std::string> defaults = ColumnsWithDefault(context, m_table);
        std::string sql = "SELECT rowid";
        int position = 0;
        for (const leitura::Column<Record>& column : table.Columns()) {
            if (std::find(names.begin(), names.end(), column.name) == names.end()) {
                continue;
            }
            m_columns.push_back(
                {column.name, column.domain,
                 defaults.count(column.name) == 0 ? column.presence : leitura::Presence::ALWAYS,
                 column.most, ++position});
            sql += std::string(", ") + column.name;
            if (m_columns.back().name == "cont_coo") {
                m_coo = position;
            } else if (m_columns.back().name == "cont_crz") {
                m_crz = position;
            }
            if (m_columns.back().name == OrderedBy(m_table)) {
                m_ordered = position;
            }
        }
        m_sql = sql + " FROM " + table.Name() + " ORDER BY rowid";
    }

    void Check()
    {
        leitura::Query query(m_context.Database(), m_sql);
        std::int64_t last = 0;
        while (query.Next()) {
            const std::int64_t rowid =
                leitura::ReadInteger(query.Row(), 0, leitura::Nullable::NO).Value();
            CheckRowid(last, rowid);
            last = rowid;
            CheckOrder(query.Row(), rowid);
            for (const CheckedColumn& column : m_columns) {
                if (!IsWithin(query.Row(), column.position, column.domain, column.presence)) {
                    Report(query.Row(), rowid, column, MeaningOf(column.domain));
                } else if (column.most != 0 &&
                           sqlite3_column_bytes(query.Row(), column.position) > column.most) {
                    Report(query.Row(), rowid, column,
                           Tr("a text of at most %1 bytes", {std::to_string(column.most)}));
                }
            }
        }
    }

  private:
    static std::set<std::string> ColumnsWithDefault(const CheckContext& context,
                                                    const std::string& table)
    {
        leitura::Query query(context.Database(), "SELECT name FROM pragma_table_info('" + table +
                                                     "') WHERE dflt_value IS NOT NULL");
        std::set<std::string> names;
        while (query.Next()) {
            names.insert(query.ReadText("name").Value());
        }
        return names;
    }

    void CheckRowid(std::int64_t last, std::int64_t rowid)
    {
        if (rowid <= last || rowid - 1 == last ||
            (m_table == "outros_documentos" && AreReducoes(last, rowid))) {
            return;
        }
        const std::string first = std::to_string(last + 1);

        m_context.findings.ReportExplained(
            FindingKind::LINHA_AUSENTE, m_table,
            Tr("no row %1, and rows are never deleted", {RangeText(last + 1, rowid - 1)}), false,
            {}, {m_table, rowid, "", Tr("row %1", {first}), Tr("row %1", {std::to_string(rowid)})});
    }

    // Whether the rows between these two are those of as many Z reductions, each of which is told
    // to be without its document row.
    bool AreReducoes(std::int64_t last, std::int64_t rowid) const
    {
        leitura::Query query(
            m_context.Database(),
            "SELECT count(*) AS row_count FROM reducao_z z WHERE NOT EXISTS (SELECT 1 FROM"
            " outros_documentos o WHERE o.cont_coo = z.cont_coo AND o.id_tipo_documento = 'RZ')"
            " AND data_hora_emissao >= coalesce((SELECT data_hora_inicio_emissao FROM"
            " outros_documentos WHERE rowid = ?1), '') AND data_hora_emissao <= (SELECT"
            " data_hora_inicio_emissao FROM outros_documentos WHERE rowid = ?2)");
        return query.With(last, rowid).Next() &&
               query.ReadInteger("row_count").Value() == rowid - last - 1;
    }

    // The counter by which a table's rows stand in the order of issue, where no other check follows
    // it; nothing where the order tells nothing.
    static std::string OrderedBy(const std::string& table)
    {
        if (table == "item_cupom_fiscal" || table == "item_cupom_nf" ||
            table == "pagamento_cupom" || table == "cupom_nf") {
            return "cont_coo";
        }
        if (table == "totalizador_reducao" || table == "meio_pagamento_reducao") {
            return "cont_crz";
        }
        return table == "intervencao" ? "cont_cro" : table == "fita_detalhe" ? "cont_cfd" : "";
    }

    void CheckOrder(sqlite3_stmt* row, std::int64_t rowid)
    {
        const leitura::Integer number =
            m_ordered == 0 ? leitura::Integer(leitura::CellState::NULL_VALUE)
                           : leitura::ReadInteger(row, m_ordered, leitura::Nullable::NO);
        if (!number.IsKnown()) {
            return;
        }
        if (m_last && *m_last != number.Value() && !leitura::ComesBefore(*m_last, number.Value())) {
            const std::string found = std::to_string(number.Value());
            const std::string& column = m_columns[static_cast<std::size_t>(m_ordered) - 1].name;
            m_context.findings.ReportExplained(
                FindingKind::ORDEM, Tr("%1 row %2", {m_table, std::to_string(rowid)}),
                Tr("%1 %2 comes after %3", {column, found, std::to_string(*m_last)}), false,
                {NumberAt(row, m_coo), NumberAt(row, m_crz)},
                {m_table, rowid, column, Tr("none before %1", {std::to_string(*m_last)}), found});
            return; // the next one is compared with what stood here in order
        }
        m_last = number.Value();
    }

    void Report(sqlite3_stmt* row, std::int64_t rowid, const CheckedColumn& column,
                const std::string& due)
    {
        const std::string found = leitura::RawText(row, column.position);
        m_context.findings.ReportExplained(
            FindingKind::VALOR_INVALIDO, Tr("%1 row %2", {m_table, std::to_string(rowid)}),
            Tr("%1 holds %2, where %3 is due", {column.name, found, due}), false,
            {NumberAt(row, m_coo), NumberAt(row, m_crz)},
            {m_table, rowid, column.name, due, found});
    }

    static std::int64_t NumberAt(sqlite3_stmt* row, int position)
    {
        return position == 0 ? 0
                             : leitura::ReadInteger(row, position, leitura::Nullable::NO).Value();
    }

    CheckContext& m_context;
    std::string m_table;
    std::string m_sql;
    std::vector<CheckedColumn> m_columns;
    // Where the document's and the day's numbers stand in the SELECT; 0 where the table has none.
    int m_coo = 0;
    int m_crz = 0;
    int m_ordered = 0;
    std::optional<std::int64_t> m_last;
};

} // namespace

void CheckDominios(CheckContext& context)
{
    leitura::ForEachTable([&context](const auto& table) { TableCheck(context, table).Check(); });
}

} // namespace bancada::conferencia

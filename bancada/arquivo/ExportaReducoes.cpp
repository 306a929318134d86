// E12, E13, E17 and E18: Z reductions with their totalizers and payment means.
#include "bancada/arquivo/Exportador.h"

#include <algorithm>
#include <map>
#include <set>

namespace bancada::arquivo
{
namespace
{

// "01T18.00" is written 01T1800.
std::string WithoutPoint(std::string text)
{
    text.erase(std::remove(text.begin(), text.end(), '.'), text.end());
    return text;
}

// The chosen reductions by number; of one number, by row.
std::vector<Fechamento> ChosenByCrz(const Exportador& exporting)
{
    std::vector<Fechamento> chosen;
    for (const Fechamento& one : exporting.selecao.Reducoes()) {
        if (one.chosen) {
            chosen.push_back(one);
        }
    }
    std::stable_sort(chosen.begin(), chosen.end(),
                     [](const Fechamento& a, const Fechamento& b) { return a.crz < b.crz; });
    return chosen;
}

// The rows of a table that belongs to the chosen reductions, by the reduction's number and then as
// they were logged; the schema does not index them.
template <typename Row>
std::vector<Row> RowsOfChosen(const Exportador& exporting, const leitura::Table<Row>& table,
                              const char* condition)
{
    std::set<std::int64_t> chosen;
    for (const Fechamento& one : exporting.selecao.Reducoes()) {
        if (one.chosen) {
            chosen.insert(one.crz);
        }
    }
    std::vector<Row> all;
    leitura::Rows rows(exporting.database, table, std::string(condition) + " ORDER BY rowid");
    Row row;
    while (rows.Next(row)) {
        if (chosen.count(row.crz.Value()) != 0) {
            all.push_back(row);
        }
    }
    std::stable_sort(all.begin(), all.end(),
                     [](const Row& a, const Row& b) { return a.crz.Value() < b.crz.Value(); });
    return all;
}

} // namespace

void ExportReducoes(Exportador& exporting)
{
    RecordWriter& writer = exporting.writer;
    leitura::Rows rows(exporting.database, leitura::ReducaoZTable(), "WHERE rowid = ?1");
    leitura::ReducaoZRow row;
    for (const Fechamento& one : ChosenByCrz(exporting)) {
        rows.With(one.rowid).Next(row);
        writer.Begin("E12", {"reducao_z", row.rowid});
        writer.N("usuario", USUARIO);
        writer.N("crz", row.crz);
        writer.N("coo", row.coo);
        writer.N("cro", row.cro);
        writer.D("data_movimento", row.dataMovimento);
        writer.D("data_emissao", row.dataHoraEmissao);
        writer.H("hora_emissao", row.dataHoraEmissao);
        writer.Amount("venda_bruta", row.valorVb);
        const std::optional<bool>& issqn = exporting.fatos.descontoIssqn;
        writer.X("desconto_issqn", !issqn ? "" : *issqn ? "S" : "N");
        writer.End();
        if (!issqn) {
            exporting.neutros.AddField("E12", "desconto_issqn", "no column tells it");
        }
    }
    rows.End();
}

void ExportTotalizadores(Exportador& exporting)
{
    RecordWriter& writer = exporting.writer;
    for (const leitura::TotalizadorReducaoRow& row :
         RowsOfChosen(exporting, leitura::TotalizadorReducaoTable(), "WHERE id_fiscal = 'S'")) {
        if (row.valorBaseCalculo.IsZero()) {
            continue;
        }
        writer.Begin("E13", {"totalizador_reducao", row.rowid});
        writer.N("usuario", USUARIO);
        writer.N("crz", row.crz);
        writer.Text("totalizador", WithoutPoint(row.totalizador.Value()));
        writer.Amount("valor", row.valorBaseCalculo);
        writer.End();
    }
}

void ExportTotalizadoresNf(Exportador& exporting)
{
    RecordWriter& writer = exporting.writer;
    for (const leitura::TotalizadorReducaoRow& row :
         RowsOfChosen(exporting, leitura::TotalizadorReducaoTable(), "WHERE id_fiscal = 'N'")) {
        writer.Begin("E17", {"totalizador_reducao", row.rowid});
        writer.N("usuario", USUARIO);
        writer.N("crz", row.crz);
        writer.Text("nome", row.totalizador);
        writer.Amount("valor", row.valorBaseCalculo);
        writer.End();
    }
}

void ExportMeios(Exportador& exporting)
{
    RecordWriter& writer = exporting.writer;
    std::vector<leitura::MeioPagamentoReducaoRow> rows =
        RowsOfChosen(exporting, leitura::MeioPagamentoReducaoTable(), "");
    std::stable_sort(rows.begin(), rows.end(), [](const auto& a, const auto& b) {
        return a.crz.Value() != b.crz.Value()
                   ? a.crz.Value() < b.crz.Value()
                   : a.indiceMeioPagamento.Value() < b.indiceMeioPagamento.Value();
    });
    for (const leitura::MeioPagamentoReducaoRow& row : rows) {
        writer.Begin("E18", {"meio_pagamento_reducao", row.rowid});
        writer.N("usuario", USUARIO);
        writer.N("crz", row.crz);
        writer.Text("nome", row.descricaoMeioPagamento);
        writer.Amount("valor", row.valorAcumulado);
        writer.End();
    }
}

} // namespace bancada::arquivo

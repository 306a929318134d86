// E12, E13, E17 and E18: Z reductions with their totalizers and payment means.
#include "bancada/Messages.h"
#include "bancada/arquivo/Exportador.h"

#include "bancada/leitura/Query.h"

#include <algorithm>
#include <set>

namespace bancada::arquivo
{
namespace
{

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

struct Place {
    std::int64_t crz = 0;
    std::int64_t order = 0;
    std::int64_t rowid = 0;
};

// Where the rows of a table stand that belong to the chosen reductions: by the reduction's number,
// then by the column `order`, then as they were logged; the schema does not index them.
std::vector<Place> PlacesOfChosen(const Exportador& exporting, const std::string& table,
                                  const std::string& order, const std::string& condition)
{
    std::set<std::int64_t> chosen;
    for (const Fechamento& one : exporting.selecao.Reducoes()) {
        if (one.chosen) {
            chosen.insert(one.crz);
        }
    }
    std::vector<Place> all;
    leitura::Query query(exporting.database, "SELECT rowid AS id, cont_crz, " + order +
                                                 " AS ordem FROM " + table + condition +
                                                 " ORDER BY rowid");
    while (query.Next()) {
        const std::int64_t crz = query.ReadInteger("cont_crz").Value();
        if (chosen.count(crz) != 0) {
            all.push_back(
                {crz, query.ReadInteger("ordem").Value(), query.ReadInteger("id").Value()});
        }
    }
    std::stable_sort(all.begin(), all.end(), [](const Place& a, const Place& b) {
        return a.crz != b.crz ? a.crz < b.crz : a.order < b.order;
    });
    return all;
}

// Each of them in turn, one row held at a time.
template <typename Row, typename Write>
void EachOfChosen(const Exportador& exporting, const leitura::Table<Row>& table,
                  const std::string& order, const std::string& condition, Write write)
{
    leitura::Rows rows(exporting.database, table, "WHERE rowid = ?1");
    Row row;
    for (const Place& place : PlacesOfChosen(exporting, table.Name(), order, condition)) {
        rows.With(place.rowid).Next(row);
        write(row);
    }
    rows.End();
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
            exporting.neutros.AddField("E12", "desconto_issqn", Tr("no column tells it"));
        }
    }
    rows.End();
}

void ExportTotalizadores(Exportador& exporting)
{
    RecordWriter& writer = exporting.writer;
    EachOfChosen(exporting, leitura::TotalizadorReducaoTable(), "0", " WHERE id_fiscal = 'S'",
                 [&writer](const leitura::TotalizadorReducaoRow& row) {
                     if (row.valorBaseCalculo.IsZero()) {
                         return;
                     }
                     writer.Begin("E13", {"totalizador_reducao", row.rowid});
                     writer.N("usuario", USUARIO);
                     writer.N("crz", row.crz);
                     writer.Text("totalizador", WithoutPoint(row.totalizador.Value()));
                     writer.Amount("valor", row.valorBaseCalculo);
                     writer.End();
                 });
}

void ExportTotalizadoresNf(Exportador& exporting)
{
    RecordWriter& writer = exporting.writer;
    EachOfChosen(exporting, leitura::TotalizadorReducaoTable(), "0", " WHERE id_fiscal = 'N'",
                 [&writer](const leitura::TotalizadorReducaoRow& row) {
                     writer.Begin("E17", {"totalizador_reducao", row.rowid});
                     writer.N("usuario", USUARIO);
                     writer.N("crz", row.crz);
                     writer.Text("nome", row.totalizador);
                     writer.Amount("valor", row.valorBaseCalculo);
                     writer.End();
                 });
}

void ExportMeios(Exportador& exporting)
{
    RecordWriter& writer = exporting.writer;
    EachOfChosen(exporting, leitura::MeioPagamentoReducaoTable(), "indice_meio_pagamento", "",
                 [&writer](const leitura::MeioPagamentoReducaoRow& row) {
                     writer.Begin("E18", {"meio_pagamento_reducao", row.rowid});
                     writer.N("usuario", USUARIO);
                     writer.N("crz", row.crz);
                     writer.Text("nome", row.descricaoMeioPagamento);
                     writer.Amount("valor", row.valorAcumulado);
                     writer.End();
                 });
}

} // namespace bancada::arquivo

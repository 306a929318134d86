// E21: payments of receipts of either kind.
#include "bancada/Messages.h"
#include "bancada/arquivo/Exportador.h"

#include "bancada/leitura/Query.h"

#include <algorithm>
#include <map>

namespace bancada::arquivo
{
namespace
{

void BeginPagamento(Exportador& exporting, const CupomNumbers& cupom, const char* table,
                    std::int64_t rowid, const std::string& meio)
{
    RecordWriter& writer = exporting.writer;
    writer.Begin("E21", {table, rowid});
    writer.N("usuario", USUARIO);
    writer.N("coo", cupom.coo);
    writer.N("ccf", cupom.fiscal ? cupom.numero : 0);
    writer.N("gnf", cupom.fiscal ? 0 : cupom.numero);
    writer.X("meio", meio);
}

void ExportPagamento(Exportador& exporting, const CupomNumbers& cupom,
                     const leitura::PagamentoCupomRow& row, const std::string& meio)
{
    BeginPagamento(exporting, cupom, "pagamento_cupom", row.rowid, meio);
    RecordWriter& writer = exporting.writer;
    writer.Amount("valor", row.valorPagamento);
    if (cupom.cancelado) {
        writer.X("estornado", "S");
        writer.Amount("valor_estornado", row.valorPagamento);
    } else {
        const bool part = row.valorEstornado.Units() < row.valorPagamento.Units();
        writer.X("estornado", !row.estornado.IsSet() ? "N" : part ? "P" : "S");
        writer.Amount("valor_estornado", row.valorEstornado);
    }
    writer.End();
}

// A float, which has no payment row. Its means is for the facts to tell.
void ExportFundoTroco(Exportador& exporting, const CupomNumbers& cupom, leitura::Query& fundos)
{
    fundos.With(std::int64_t{cupom.coo}, std::int64_t{NUMERO_FUNDO_TROCO});
    while (fundos.Next()) {
        if (!exporting.fatos.meioFundoTroco) {
            exporting.neutros.AddMissing("E21", Tr("payments of floats: no row tells their means"));
            continue;
        }
        BeginPagamento(exporting, cupom, "item_cupom_nf", fundos.ReadInteger("id").Value(),
                       *exporting.fatos.meioFundoTroco);
        exporting.writer.Amount("valor", fundos.ReadAmount("valor", 2));
        exporting.writer.X("estornado", "N");
        exporting.writer.N("valor_estornado", 0);
        exporting.writer.End();
    }
}

} // namespace

void ExportPagamentos(Exportador& exporting)
{
    std::map<std::int64_t, std::string> meios;
    leitura::Rows programados(exporting.database, leitura::MeioPagamentoTable(), "ORDER BY rowid");
    leitura::MeioPagamentoRow meio;
    while (programados.Next(meio)) {
        meios[meio.numIndice.Value()] = meio.descricao.Value();
    }
    std::sort(exporting.cupons.begin(), exporting.cupons.end(),
              [](const CupomNumbers& a, const CupomNumbers& b) { return a.coo < b.coo; });

    leitura::Rows rows(exporting.database, leitura::PagamentoCupomTable(),
                       "WHERE cont_coo = ?1 ORDER BY rowid");
    leitura::Query fundos(exporting.database,
                          "SELECT rowid AS id, valor_total_liquido AS valor FROM item_cupom_nf "
                          "WHERE cont_coo = ?1 AND indice_totalizador_nf = ?2 ORDER BY seq_item");
    leitura::PagamentoCupomRow row;
    for (const CupomNumbers& cupom : exporting.cupons) {
        rows.With(std::int64_t{cupom.coo});
        while (rows.Next(row)) {
            exporting.RequireOnce(cupom);
            const auto found = meios.find(row.indiceMeioPagamento.Value());
            if (found == meios.end()) {
                exporting.neutros.AddField("E21", "meio",
                                           Tr("means %1 was not programmed by a logged command",
                                              {std::to_string(row.indiceMeioPagamento.Value())}));
            }
            ExportPagamento(exporting, cupom, row, found == meios.end() ? "" : found->second);
        }
        if (!cupom.fiscal) {
            ExportFundoTroco(exporting, cupom, fundos);
        }
    }
    rows.End();
    fundos.End();
    exporting.NoteOrphans("E21", "pagamento_cupom", {"cupom_fiscal", "cupom_nf"});
}

} // namespace bancada::arquivo

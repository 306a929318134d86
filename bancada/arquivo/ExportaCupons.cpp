// E14 and E15: fiscal receipts and their items.
#include "bancada/arquivo/ExportaTotais.h"
#include "bancada/leitura/Limits.h"

namespace bancada::arquivo
{
namespace
{

// How many decimals a column says that another has.
int Decimals(const leitura::Integer& cell)
{
    return cell.Value() < 0 || cell.Value() > leitura::MAX_CASAS ? 0
                                                                 : static_cast<int>(cell.Value());
}

} // namespace

void ExportCupons(Exportador& exporting)
{
    RecordWriter& writer = exporting.writer;
    leitura::Rows rows(exporting.database, leitura::CupomFiscalTable(), "WHERE rowid = ?1");
    leitura::CupomFiscalRow row;
    for (const CupomNumbers& cupom : exporting.cupons) {
        if (!cupom.fiscal) {
            continue;
        }
        rows.With(cupom.rowid).Next(row);
        writer.Begin("E14", {"cupom_fiscal", row.rowid});
        writer.N("usuario", USUARIO);
        writer.N("ccf", row.ccf);
        writer.N("coo", row.coo);
        WriteTotais(exporting, "E14", row, row.valorTotal);
        writer.End();
    }
    rows.End();
}

void ExportItens(Exportador& exporting)
{
    RecordWriter& writer = exporting.writer;
    leitura::Rows rows(exporting.database, leitura::ItemCupomFiscalTable(),
                       "WHERE cont_coo = ?1 ORDER BY seq_item, rowid");
    leitura::ItemCupomFiscalRow row;
    for (const CupomNumbers& cupom : exporting.cupons) {
        if (!cupom.fiscal) {
            continue;
        }
        rows.With(std::int64_t{cupom.coo});
        while (rows.Next(row)) {
            exporting.RequireOnce(cupom);
            writer.Begin("E15", {"item_cupom_fiscal", row.rowid});
            writer.N("usuario", USUARIO);
            writer.N("coo", row.coo);
            writer.N("ccf", cupom.numero);
            writer.N("item", row.seqItem);
            writer.Text("codigo", row.codItem);
            writer.CutText("descricao", row.descricao);
            writer.Amount("quantidade", row.quantidade, Decimals(row.casasDecimaisQuantidade));
            writer.CutText("unidade", row.unMedida);
            writer.Amount("valor_unitario", row.valorUnitario, Decimals(row.casasDecimaisValor));
            writer.Amount("desconto", row.valorDesconto);
            writer.Amount("acrescimo", row.valorAcrescimo);
            writer.CutAmount("total", row.valorTotal);
            writer.Text("totalizador", WithoutPoint(row.aliquota.Value()));
            writer.Flag("cancelado", cupom.cancelado ? leitura::Flag(true) : row.cancelado);
            writer.N("quantidade_cancelada", 0);
            writer.N("valor_cancelado", 0);
            writer.Amount("acrescimo_cancelado", row.valorCancAcrescimo);
            writer.Text("arredonda_trunca", row.arredTruncValor);
            writer.N("decimais_quantidade", row.casasDecimaisQuantidade);
            writer.N("decimais_valor", row.casasDecimaisValor);
            writer.End();
        }
    }
    rows.End();
    exporting.NoteOrphans("E15", "item_cupom_fiscal", {"cupom_fiscal"});
}

} // namespace bancada::arquivo

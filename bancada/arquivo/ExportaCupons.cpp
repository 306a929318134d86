// E14 and E15: fiscal receipts and their items.
#include "bancada/arquivo/Exportador.h"

#include "bancada/leitura/Limits.h"
#include "bancada/leitura/Query.h"

#include <algorithm>

namespace bancada::arquivo
{
namespace
{

std::string WithoutPoint(std::string text)
{
    text.erase(std::remove(text.begin(), text.end(), '.'), text.end());
    return text;
}

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
        writer.D("data_abertura", row.dataHoraEmissao);
        writer.Amount("subtotal", row.valorSubtotal);
        writer.Amount("desconto", row.valorDesconto);
        writer.Text("tipo_desconto", row.tipoDesconto);
        writer.Amount("acrescimo", row.valorAcrescimo);
        writer.Text("tipo_acrescimo", row.tipoAcrescimo);
        writer.Amount("total", row.valorTotal);
        writer.Flag("cancelado", row.cancelado);
        writer.Amount("acrescimo_cancelado", row.valorCancAcrescimo);
        writer.X("ordem",
                 OrdemOf(exporting, "E14", cupom.coo, row.valorDesconto, row.valorAcrescimo));
        writer.Text("nome", row.nomeConsumidor);
        writer.Digits("cpf_cnpj", row.cpfCnpjConsumidor);
        writer.End();
    }
    rows.End();
}

std::string OrdemOf(Exportador& exporting, const char* type, std::int64_t coo,
                    const leitura::Amount& desconto, const leitura::Amount& acrescimo)
{
    const bool hasDesconto = desconto.IsKnown() && !desconto.IsZero();
    const bool hasAcrescimo = acrescimo.IsKnown() && !acrescimo.IsZero();
    if (hasDesconto != hasAcrescimo) {
        return hasDesconto ? "D" : "A";
    }
    if (!hasDesconto) {
        return "";
    }
    const auto told = exporting.fatos.ordens.find(coo);
    if (told != exporting.fatos.ordens.end()) {
        return told->second;
    }
    exporting.neutros.AddField(type, "ordem",
                               "of a discount and a surcharge, no column tells which was first");
    return "";
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
    leitura::Query orphans(exporting.database,
                           "SELECT count(*) AS n FROM item_cupom_fiscal AS i WHERE NOT EXISTS "
                           "(SELECT 1 FROM cupom_fiscal WHERE cont_coo = i.cont_coo)");
    if (orphans.Next() && orphans.ReadInteger("n").Value() != 0) {
        exporting.neutros.AddMissing("E15", "rows of item_cupom_fiscal without a receipt",
                                     orphans.ReadInteger("n").Value());
    }
}

} // namespace bancada::arquivo

// E16, E19 and E20: documents other than fiscal receipts, non-fiscal receipts and their items.
#include "bancada/Messages.h"
#include "bancada/arquivo/ExportaTotais.h"

#include "bancada/leitura/Query.h"

#include <algorithm>
#include <map>

namespace bancada::arquivo
{
namespace
{

// The names of the non-fiscal totalizers: as they were programmed by a command that was logged, as
// the register keeps them, as the facts say.
std::map<std::int64_t, std::string> NomesNf(const Exportador& exporting)
{
    std::map<std::int64_t, std::string> nomes;
    if (exporting.fatos.fundoTroco) {
        nomes[NUMERO_FUNDO_TROCO] = *exporting.fatos.fundoTroco;
    }
    if (exporting.fatos.sangria) {
        nomes[NUMERO_SANGRIA] = *exporting.fatos.sangria;
    }
    if (exporting.memoria) {
        for (const auto& [numero, nome] : exporting.memoria->naoFiscais) {
            if (!nome.empty()) {
                nomes[numero] = nome;
            }
        }
    }
    leitura::Rows rows(exporting.database, leitura::TotalizadorNaoFiscalTable(), "ORDER BY rowid");
    leitura::TotalizadorNaoFiscalRow row;
    while (rows.Next(row)) {
        nomes[row.numIndice.Value()] = row.descricao.Value();
    }
    return nomes;
}

} // namespace

void ExportOutrosDocumentos(Exportador& exporting)
{
    // The rows' places by number; the rows themselves are read one by one.
    std::vector<std::pair<std::int64_t, std::int64_t>> places;
    leitura::Query query(exporting.database, "SELECT rowid AS id, cont_coo, "
                                             "data_hora_inicio_emissao AS inicio "
                                             "FROM outros_documentos ORDER BY rowid");
    while (query.Next()) {
        const std::int64_t rowid = query.ReadInteger("id").Value();
        if (exporting.selecao.HasDocumento(rowid, query.ReadText("inicio").Value())) {
            places.emplace_back(query.ReadInteger("cont_coo").Value(), rowid);
        }
    }
    std::stable_sort(places.begin(), places.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });

    RecordWriter& writer = exporting.writer;
    leitura::Rows rows(exporting.database, leitura::OutroDocumentoTable(), "WHERE rowid = ?1");
    leitura::OutroDocumentoRow row;
    const leitura::Integer none(0);
    for (const auto& [coo, rowid] : places) {
        rows.With(rowid).Next(row);
        const std::string& tipo = row.tipoDocumento.Value();
        const bool movesGnf = tipo == "RG" || tipo == "CC" || tipo == "CN" || tipo == "NC";
        writer.Begin("E16", {"outros_documentos", row.rowid});
        writer.N("usuario", USUARIO);
        writer.N("coo", row.coo);
        writer.N("gnf", movesGnf ? row.gnf : none);
        writer.N("grg", tipo == "RG" ? row.grg : none);
        const bool hasRoom = tipo != "CC" || row.cdc.Value() < CDC_ROOM;
        writer.N("cdc", tipo != "CC" ? none
                        : hasRoom    ? row.cdc
                                     : leitura::Integer(row.cdc.Value() % CDC_ROOM));
        if (!hasRoom) {
            exporting.neutros.AddField("E16", "cdc", Tr("the last four digits of a longer number"));
        }
        writer.N("crz", tipo == "RZ" ? row.crz : none);
        writer.Text("simbolo", row.tipoDocumento);
        writer.D("data_fim", row.dataHoraFimEmissao);
        writer.H("hora_fim", row.dataHoraFimEmissao);
        writer.End();
    }
    rows.End();
}

void ExportCuponsNf(Exportador& exporting)
{
    RecordWriter& writer = exporting.writer;
    leitura::Rows rows(exporting.database, leitura::CupomNfTable(), "WHERE rowid = ?1");
    leitura::CupomNfRow row;
    for (const CupomNumbers& cupom : exporting.cupons) {
        if (cupom.fiscal) {
            continue;
        }
        rows.With(cupom.rowid).Next(row);
        writer.Begin("E19", {"cupom_nf", row.rowid});
        writer.N("usuario", USUARIO);
        writer.N("coo", row.coo);
        writer.N("gnf", row.gnf);
        WriteTotais(exporting, "E19", row, row.valorTotalCupom);
        writer.End();
    }
    rows.End();
}

void ExportItensNf(Exportador& exporting)
{
    RecordWriter& writer = exporting.writer;
    const std::map<std::int64_t, std::string> nomes = NomesNf(exporting);
    leitura::Rows rows(exporting.database, leitura::ItemCupomNfTable(),
                       "WHERE cont_coo = ?1 ORDER BY seq_item, rowid");
    leitura::ItemCupomNfRow row;
    for (const CupomNumbers& cupom : exporting.cupons) {
        if (cupom.fiscal) {
            continue;
        }
        rows.With(std::int64_t{cupom.coo});
        while (rows.Next(row)) {
            exporting.RequireOnce(cupom);
            const auto nome = nomes.find(row.indiceTotalizadorNf.Value());
            writer.Begin("E20", {"item_cupom_nf", row.rowid});
            writer.N("usuario", USUARIO);
            writer.N("coo", row.coo);
            writer.N("gnf", cupom.numero);
            writer.N("item", row.seqItem);
            writer.X("nome", nome == nomes.end() ? "" : nome->second);
            writer.Amount("valor", row.valorTotal);
            writer.Amount("desconto", row.valorDesconto);
            writer.Amount("acrescimo", row.valorAcrescimo);
            writer.Amount("total", row.valorTotalLiquido);
            writer.Flag("cancelado", cupom.cancelado ? leitura::Flag(true) : row.cancelado);
            writer.Amount("acrescimo_cancelado", row.valorCancAcrescimo);
            writer.End();
            if (nome == nomes.end()) {
                exporting.neutros.AddField("E20", "nome",
                                           Tr("totalizer %1 was not programmed by a logged command",
                                              {std::to_string(row.indiceTotalizadorNf.Value())}));
            }
        }
    }
    rows.End();
    exporting.NoteOrphans("E20", "item_cupom_nf", {"cupom_nf"});
}

} // namespace bancada::arquivo

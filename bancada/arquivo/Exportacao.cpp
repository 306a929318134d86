#include "bancada/arquivo/Exportacao.h"

#include "bancada/Messages.h"
#include "bancada/Unusable.h"
#include "bancada/arquivo/Exportador.h"
#include "bancada/leitura/Limits.h"
#include "bancada/leitura/Query.h"

#include <algorithm>
#include <string_view>

namespace bancada::arquivo
{
namespace
{

// Whether the command's file holds the type.
bool Holds(Comando comando, std::string_view type)
{
    switch (comando) {
    case Comando::MF:
        return type <= "E13";
    case Comando::MFD:
        return type <= "E02" || type >= "E14";
    case Comando::RZ:
        return type <= "E02" || (type >= "E14" && type <= "E16");
    case Comando::TDM:
        break;
    }
    return true;
}

// The only row of a table, or the one behind which there is no other.
template <typename Row>
Row LastRow(const leitura::DatabaseReading& database, const leitura::Table<Row>& table)
{
    leitura::Rows rows(database, table, "ORDER BY rowid DESC LIMIT 1");
    Row row;
    if (!rows.Next(row)) {
        return Row();
    }
    return row;
}

std::int64_t UserVersion(const leitura::DatabaseReading& database)
{
    leitura::Query query(database, "PRAGMA user_version");
    return query.Next() ? query.ReadInteger("user_version").Value() : 0;
}

std::int32_t NumberOf(const leitura::DatabaseReading& database, const char* table,
                      std::int64_t rowid, const char* column, const leitura::Integer& cell)
{
    if (!cell.IsKnown() || cell.Value() < 0 || cell.Value() > leitura::LAST_COUNTER) {
        throw Unusable(Tr("%1: %2, row %3: %4 is no number of a document: %5",
                          {database.Path(), table, std::to_string(rowid), column,
                           cell.IsKnown() ? std::to_string(cell.Value()) : cell.Raw()}));
    }
    return static_cast<std::int32_t>(cell.Value());
}

template <typename Table>
void ReadNumbers(Exportador& exporting, const Table& table, const char* counter, bool fiscal,
                 std::vector<std::int32_t>& coos)
{
    leitura::Query query(exporting.database,
                         std::string("SELECT rowid AS id, cont_coo, cont_crz, ") + counter +
                             " AS numero, id_cancelado, data_hora_emissao FROM " + table.Name());
    while (query.Next()) {
        CupomNumbers cupom;
        cupom.rowid = query.ReadInteger("id").Value();
        const char* name = table.Name().c_str();
        cupom.coo = NumberOf(exporting.database, name, cupom.rowid, "cont_coo",
                             query.ReadInteger("cont_coo"));
        coos.push_back(cupom.coo);
        if (!exporting.selecao.HasCupom(query.ReadInteger("cont_crz").Value(),
                                        query.ReadText("data_hora_emissao").Value())) {
            continue;
        }
        cupom.numero =
            NumberOf(exporting.database, name, cupom.rowid, counter, query.ReadInteger("numero"));
        cupom.fiscal = fiscal;
        cupom.cancelado = query.ReadFlag("id_cancelado").IsSet();
        exporting.cupons.push_back(cupom);
    }
}

void ReadCupons(Exportador& exporting)
{
    std::vector<std::int32_t> coos;
    ReadNumbers(exporting, leitura::CupomFiscalTable(), "cont_ccf", true, coos);
    ReadNumbers(exporting, leitura::CupomNfTable(), "cont_gnf", false, coos);
    std::sort(coos.begin(), coos.end());
    for (CupomNumbers& cupom : exporting.cupons) {
        const auto range = std::equal_range(coos.begin(), coos.end(), cupom.coo);
        cupom.doubled = range.second - range.first > 1;
    }
    std::sort(exporting.cupons.begin(), exporting.cupons.end(),
              [](const CupomNumbers& a, const CupomNumbers& b) {
                  const std::int32_t keyA = a.fiscal ? a.numero : a.coo;
                  const std::int32_t keyB = b.fiscal ? b.numero : b.coo;
                  if (a.fiscal != b.fiscal) {
                      return a.fiscal;
                  }
                  return keyA != keyB ? keyA < keyB : a.rowid < b.rowid;
              });
}

} // namespace

Exportador::Exportador(const ExportOptions& exportOptions, std::ostream& out)
    : options(exportOptions), database(exportOptions.database), selecao(database, exportOptions),
      writer(out, exportOptions.lineEnd, exportOptions.database)
{
    leitura::RequireTables(database);
    if (!options.facts.empty()) {
        fatos = ReadFatos(options.facts);
    }
    if (!options.memory.empty()) {
        memoria = ReadMemoriaGuardada(options.memory, UserVersion(database));
    }
    ecf = LastRow(database, leitura::DadosEcfTable());
    usuario = LastRow(database, leitura::DadosUsuarioTable());
    cnpj = usuario.cnpj;
    leitura::Rows versoes(database, leitura::VersaoSbTable(), "ORDER BY rowid DESC LIMIT 1");
    leitura::VersaoSbRow versao;
    if (versoes.Next(versao)) {
        versaoSb = versao.versao.Value();
    }
    writer.SetRegister(ecf.numSerie.Value(), ecf.modelo.Value());
    ReadCupons(*this);
}

void Exportador::RequireOnce(const CupomNumbers& cupom) const
{
    if (cupom.doubled) {
        throw Unusable(Tr("%1: %2, row %3: the COO %4 stands twice: whose its items and payments "
                          "are is told by no row",
                          {database.Path(), cupom.fiscal ? "cupom_fiscal" : "cupom_nf",
                           std::to_string(cupom.rowid), std::to_string(cupom.coo)}));
    }
}

void Exportador::NoteOrphans(const char* type, const std::string& table,
                             std::initializer_list<const char*> receipts)
{
    std::string without;
    for (const char* receipt : receipts) {
        without += std::string(without.empty() ? "" : " AND") + " NOT EXISTS (SELECT 1 FROM " +
                   receipt + " WHERE cont_coo = o.cont_coo)";
    }
    leitura::Query orphans(database,
                           "SELECT count(*) AS n FROM " + table + " AS o WHERE" + without);
    if (orphans.Next() && orphans.ReadInteger("n").Value() != 0) {
        neutros.AddMissing(type, Tr("rows of %1 without a receipt", {table}),
                           orphans.ReadInteger("n").Value());
    }
}

std::string WithoutPoint(std::string text)
{
    text.erase(std::remove(text.begin(), text.end(), '.'), text.end());
    return text;
}

std::string ComandoText(Comando comando)
{
    switch (comando) {
    case Comando::MFD:
        return "MFD";
    case Comando::MF:
        return "MF";
    case Comando::RZ:
        return "RZ";
    case Comando::TDM:
        break;
    }
    return "TDM";
}

void Export(const ExportOptions& options, std::ostream& out, std::ostream& notes)
{
    Exportador exporting(options, out);
    const Comando comando = options.comando;
    using Part = void (*)(Exportador&);
    const std::pair<const char*, Part> parts[] = {
        {"E01", ExportIdentificacao},   {"E03", ExportCadastro},
        {"E09", ExportIntervencoes},    {"E10", ExportFitas},
        {"E11", ExportContadores},      {"E12", ExportReducoes},
        {"E13", ExportTotalizadores},   {"E14", ExportCupons},
        {"E15", ExportItens},           {"E16", ExportOutrosDocumentos},
        {"E17", ExportTotalizadoresNf}, {"E18", ExportMeios},
        {"E19", ExportCuponsNf},        {"E20", ExportItensNf},
        {"E21", ExportPagamentos},
    };
    for (const auto& [type, part] : parts) {
        if (Holds(comando, type)) {
            part(exporting);
        }
    }
    if (exporting.fatos.assinatura) {
        exporting.writer.Begin("EAD");
        exporting.writer.X("assinatura", *exporting.fatos.assinatura);
        exporting.writer.End();
    } else {
        exporting.neutros.AddMissing("EAD", Tr("the signature is made with the maker's key"));
    }
    exporting.database.ConfirmUnchanged();
    exporting.neutros.Print(notes);
}

} // namespace bancada::arquivo

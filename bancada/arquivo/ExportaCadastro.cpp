// E01 to E11: the register, its owner, what was done to it, its counters.
#include "bancada/Messages.h"
#include "bancada/arquivo/Exportador.h"

#include "bancada/leitura/Counter.h"
#include "bancada/leitura/Query.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>

namespace bancada::arquivo
{
namespace
{

// The version that the register has now, and since when.
Fatos::Software PresentSoftware(const Exportador& exporting)
{
    if (exporting.fatos.software) {
        return *exporting.fatos.software;
    }
    if (exporting.memoria && !exporting.memoria->versaoSb.empty()) {
        return {exporting.memoria->versaoSb, ""};
    }
    return {exporting.versaoSb, ""};
}

void ExportUsuario(Exportador& exporting)
{
    RecordWriter& writer = exporting.writer;
    const leitura::DadosUsuarioRow& usuario = exporting.usuario;
    if (usuario.rowid == 0) {
        exporting.neutros.AddMissing("E02", Tr("dados_usuario has no row"));
        return;
    }
    writer.Begin("E02", {"dados_usuario", usuario.rowid});
    writer.Digits("cnpj", usuario.cnpj);
    writer.Text("ie", usuario.ie);
    writer.Text("nome", usuario.razaoSocial);
    writer.Text("endereco", usuario.endereco);
    writer.D("data_cadastro", usuario.dataHoraGravacao);
    writer.H("hora_cadastro", usuario.dataHoraGravacao);
    writer.N("cro", usuario.cro);
    writer.Amount("gt", GrandeTotal(exporting));
    writer.N("usuario", USUARIO);
    writer.End();
}

void ExportSoftware(Exportador& exporting)
{
    std::vector<Fatos::Software> versoes = exporting.fatos.versoesSoftware;
    const auto isOf = [&exporting](const Fatos::Software& one) {
        return one.versao == exporting.versaoSb;
    };
    if (!exporting.versaoSb.empty() && std::none_of(versoes.begin(), versoes.end(), isOf)) {
        versoes.push_back({exporting.versaoSb, ""});
    }
    std::sort(versoes.begin(), versoes.end(),
              [](const auto& a, const auto& b) { return a.versao < b.versao; });
    for (const Fatos::Software& one : versoes) {
        exporting.writer.Begin("E07");
        exporting.writer.X("versao_sb", one.versao);
        exporting.writer.D("data", one.dataHora);
        exporting.writer.End();
        if (one.dataHora.empty()) {
            exporting.neutros.AddField("E07", "data", Tr("versao_sb has no date"));
        }
    }
}

// The facts in the order of their type's keys; `key` is an entry's.
template <typename One, typename Key>
std::vector<One> InOrder(std::vector<One> all, const Key& key)
{
    std::stable_sort(all.begin(), all.end(),
                     [&key](const One& a, const One& b) { return key(a) < key(b); });
    return all;
}

// The digits of a CNPJ as the field has them.
std::string CnpjKey(const std::string& cnpj)
{
    std::string digits;
    std::copy_if(cnpj.begin(), cnpj.end(), std::back_inserter(digits),
                 [](char c) { return c >= '0' && c <= '9'; });
    constexpr std::size_t WIDTH = 14;
    return digits.insert(0, digits.size() < WIDTH ? WIDTH - digits.size() : 0, '0');
}

// Who was registered, and when.
template <typename One>
void WriteInscricao(RecordWriter& writer, const One& one)
{
    writer.D("data", one.dataHora);
    writer.H("hora", one.dataHora);
    writer.Digits("cnpj", one.cnpj);
    writer.X("ie", one.ie);
}

void ExportSimbolos(Exportador& exporting, const char* type, const char* field,
                    const std::vector<Fatos::Simbolo>& simbolos)
{
    const auto key = [](const auto& one) { return std::pair(CnpjKey(one.cnpj), one.dataHora); };
    for (const Fatos::Simbolo& one : InOrder(simbolos, key)) {
        exporting.writer.Begin(type);
        exporting.writer.Digits("cnpj", one.cnpj);
        exporting.writer.D("data", one.dataHora);
        exporting.writer.H("hora", one.dataHora);
        exporting.writer.X(field, one.simbolo);
        exporting.writer.End();
    }
}

std::vector<Fatos::Simbolo> Moedas(const Exportador& exporting)
{
    std::vector<Fatos::Simbolo> moedas = exporting.fatos.moedas;
    leitura::Rows rows(exporting.database, leitura::MoedaTable(), "ORDER BY rowid");
    leitura::MoedaRow row;
    while (rows.Next(row)) {
        moedas.push_back(
            {exporting.cnpj.Value(), row.dataHoraGravacao.Value(), row.simboloMoeda.Value()});
    }
    return moedas;
}

// The counters of the document that the rows end with. What was printed after it without a row is
// not in them.
std::map<std::string, std::int64_t> CountersOfRows(const Exportador& exporting)
{
    std::map<std::string, std::int64_t> contadores;
    const auto last = [&](const char* table, const char* column) -> std::int64_t {
        leitura::Query query(exporting.database, std::string("SELECT ") + column + " AS n FROM " +
                                                     table + " ORDER BY rowid DESC LIMIT 1");
        return query.Next() ? query.ReadInteger("n").Value() : 0;
    };
    const auto later = [&](const std::string& name, std::int64_t number) {
        std::int64_t& known = contadores[name];
        if (number != 0 && (known == 0 || leitura::ComesBefore(known, number))) {
            known = number;
        }
    };
    for (const char* table : {"cupom_fiscal", "cupom_nf", "outros_documentos", "reducao_z"}) {
        later("coo", last(table, "cont_coo"));
    }
    for (const char* table : {"cupom_nf", "outros_documentos", "reducao_z", "pagamento_cupom"}) {
        later("gnf", last(table, "cont_gnf"));
    }
    contadores["crz"] = last("reducao_z", "cont_crz");
    contadores["ccf"] = last("cupom_fiscal", "cont_ccf");
    contadores["grg"] = last("outros_documentos", "cont_grg");
    contadores["cfd"] = last("fita_detalhe", "cont_cfd");
    later("cro", last("dados_usuario", "cont_cro"));
    later("cro", last("intervencao", "cont_cro"));
    later("cro", last("reducao_z", "cont_cro"));
    return contadores;
}

} // namespace

void ExportIdentificacao(Exportador& exporting)
{
    RecordWriter& writer = exporting.writer;
    const leitura::DadosEcfRow& ecf = exporting.ecf;
    const Fatos::Software software = PresentSoftware(exporting);
    const Fechamento* first = nullptr;
    const Fechamento* last = nullptr;
    for (const Fechamento& one : exporting.selecao.Reducoes()) {
        if (one.chosen) {
            first = first == nullptr ? &one : first;
            last = &one;
        }
    }
    writer.Begin("E01", {"dados_ecf", ecf.rowid});
    writer.Text("numero_serie", ecf.numSerie);
    writer.X("letra_adicional", "");
    writer.Text("tipo_ecf", ecf.tipo);
    writer.Text("marca", ecf.marca);
    writer.Text("modelo", ecf.modelo);
    writer.X("versao_sb", software.versao);
    writer.D("data_sb", software.dataHora);
    writer.H("hora_sb", software.dataHora);
    writer.N("numero_caixa", ecf.numCaixa);
    writer.Digits("cnpj", exporting.cnpj);
    writer.X("comando", ComandoText(exporting.options.comando));
    writer.N("crz_inicial", first == nullptr ? 0 : first->crz);
    writer.N("crz_final", last == nullptr ? 0 : last->crz);
    writer.D("data_inicial", first == nullptr ? "" : first->movimento);
    writer.D("data_final", last == nullptr ? "" : last->movimento);
    writer.X("versao_biblioteca",
             exporting.fatos.biblioteca ? *exporting.fatos.biblioteca : exporting.options.library);
    writer.X("versao_ato", VERSAO_ATO);
    writer.End();
    if (software.dataHora.empty()) {
        exporting.neutros.AddField("E01", "data_sb, hora_sb", Tr("versao_sb has no date"));
    }
    ExportUsuario(exporting);
}

void ExportCadastro(Exportador& exporting)
{
    RecordWriter& writer = exporting.writer;
    const Fatos& fatos = exporting.fatos;
    const auto inscricao = [](std::int64_t number, const auto& one) {
        return std::tuple(number, one.dataHora, CnpjKey(one.cnpj));
    };
    for (const auto& one : InOrder(fatos.prestadores, [&inscricao](const auto& prestador) {
             return inscricao(prestador.numero, prestador);
         })) {
        writer.Begin("E03");
        writer.N("numero", one.numero);
        WriteInscricao(writer, one);
        writer.N("vendas", one.vendas);
        writer.End();
    }
    for (const auto& one : InOrder(fatos.proprietarios, [&inscricao](const auto& proprietario) {
             return inscricao(proprietario.usuario, proprietario);
         })) {
        writer.Begin("E04");
        writer.N("usuario", one.usuario);
        WriteInscricao(writer, one);
        writer.N("cro", one.cro);
        writer.N("gt", one.gt);
        writer.End();
    }
    ExportSimbolos(exporting, "E05", "letras", fatos.cifras);
    const std::vector<Fatos::Simbolo> moedas = Moedas(exporting);
    ExportSimbolos(exporting, "E06", "simbolo", moedas);
    ExportSoftware(exporting);
    for (const auto& one : InOrder(fatos.memorias, [](const auto& memoria) {
             return std::pair(CnpjKey(memoria.cnpj), memoria.numeroSerie);
         })) {
        writer.Begin("E08");
        writer.Digits("cnpj", one.cnpj);
        writer.X("numero_serie_mfd", one.numeroSerie);
        writer.End();
    }
    const std::pair<const char*, bool> without[] = {{"E03", fatos.prestadores.empty()},
                                                    {"E04", fatos.proprietarios.empty()},
                                                    {"E05", fatos.cifras.empty()},
                                                    {"E06", moedas.empty()},
                                                    {"E08", fatos.memorias.empty()}};
    for (const auto& [type, empty] : without) {
        if (empty) {
            exporting.neutros.AddMissing(type, Tr("no row tells whether there is one"));
        }
    }
}

void ExportIntervencoes(Exportador& exporting)
{
    std::vector<Fatos::Intervencao> all = exporting.fatos.intervencoes;
    leitura::Rows rows(exporting.database, leitura::IntervencaoTable(),
                       "WHERE id_tipo_intervencao = 'T' ORDER BY rowid");
    leitura::IntervencaoRow row;
    while (rows.Next(row)) {
        // Logged before the counter moves: the record has it as leaving the mode left it.
        const std::int64_t cro = leitura::NextNumber(row.cro.Value());
        const auto& told = exporting.fatos.intervencoes;
        if (std::none_of(told.begin(), told.end(),
                         [cro](const auto& one) { return one.cro == cro; })) {
            all.push_back({cro, row.dataHoraIntervencao.Value(), row.perdaDadosMt.IsSet()});
        }
    }
    std::sort(all.begin(), all.end(), [](const auto& a, const auto& b) {
        return a.cro != b.cro ? a.cro < b.cro : a.dataHora < b.dataHora;
    });
    for (const Fatos::Intervencao& one : all) {
        if (!exporting.selecao.HasInstante(one.dataHora)) {
            continue;
        }
        exporting.writer.Begin("E09");
        exporting.writer.N("cro", one.cro);
        exporting.writer.D("data", one.dataHora);
        exporting.writer.H("hora", one.dataHora);
        exporting.writer.X("perda_dados", one.perdaDados ? "S" : "N");
        exporting.writer.End();
    }
    // A restart that another row of the same counter kept from being logged.
    std::int64_t cro = 0;
    for (const Fechamento& reducao : exporting.selecao.Reducoes()) {
        const auto has = [&reducao](const auto& one) { return one.cro == reducao.cro; };
        if (cro != 0 && reducao.cro != cro && reducao.chosen &&
            std::none_of(all.begin(), all.end(), has)) {
            exporting.neutros.AddMissing("E09",
                                         Tr("the CRO of E12 moved without a row in intervencao"));
        }
        cro = reducao.cro;
    }
}

void ExportFitas(Exportador& exporting)
{
    leitura::Rows rows(exporting.database, leitura::FitaDetalheTable(), "ORDER BY cont_cfd, rowid");
    leitura::FitaDetalheRow row;
    RecordWriter& writer = exporting.writer;
    while (rows.Next(row)) {
        if (!exporting.selecao.HasInstante(row.dataHoraEmissao.Value())) {
            continue;
        }
        writer.Begin("E10", {"fita_detalhe", row.rowid});
        writer.N("cfd", row.cfd);
        writer.D("data", row.dataHoraEmissao);
        writer.N("coo_inicial", row.cooInicial);
        writer.N("coo_final", row.cooFinal);
        writer.Digits("cnpj", exporting.cnpj);
        writer.End();
    }
}

void ExportContadores(Exportador& exporting)
{
    RecordWriter& writer = exporting.writer;
    std::map<std::string, std::int64_t> contadores =
        exporting.memoria ? exporting.memoria->contadores : CountersOfRows(exporting);
    for (const auto& [name, number] : exporting.fatos.contadores) {
        contadores[name] = number;
    }
    const std::string extracao = exporting.fatos.extracao.value_or("");
    writer.Begin("E11");
    for (const char* name :
         {"crz", "cro", "coo", "gnf", "ccf", "cvc", "cbp", "grg", "cmv", "cfd"}) {
        writer.N(name, contadores[name]);
    }
    writer.Amount("gt", GrandeTotal(exporting));
    writer.D("data_extracao", extracao);
    writer.H("hora_extracao", extracao);
    writer.End();
    for (const char* name : {"cvc", "cbp", "cmv"}) {
        if (exporting.fatos.contadores.count(name) == 0) {
            exporting.neutros.AddField("E11", name, Tr("the module does not log it"));
        }
    }
    if (!exporting.memoria) {
        exporting.neutros.AddField("E11", Tr("the other counters and gt"),
                                   Tr("those of the last rows; what was printed after them without "
                                      "a row is not counted"));
    }
    if (extracao.empty()) {
        exporting.neutros.AddField("E11", "data_extracao, hora_extracao", Tr("no source"));
    }
}

} // namespace bancada::arquivo

// The programming that a file implies, and the facts that no row will hold.
#include "bancada/Messages.h"
#include "bancada/arquivo/ImportaCupom.h"

#include "bancada/arquivo/Contadores.h"
#include "bancada/arquivo/Instante.h"
#include "bancada/arquivo/Reinicios.h"
#include "bancada/arquivo/Vinculados.h"
#include "bancada/leitura/Counter.h"
#include "bancada/leitura/Limits.h"

#include <algorithm>

namespace bancada::arquivo
{
namespace
{

// What the fields of the tape have room for.
constexpr std::size_t MAX_MARCA = 15;
constexpr std::size_t MAX_NOME_NF = 20;
constexpr std::size_t MAX_MEIO = 15;
// What the register has room for.
constexpr std::size_t MAX_MEIOS = 20;
constexpr std::size_t MAX_NOMES_NF = 39;

std::string Instant(const Record& record, const char* data, const char* hora)
{
    const std::int64_t seconds = SecondsOf(record.Raw(data), record.Raw(hora));
    return seconds == 0 ? "" : InstantText(seconds);
}

bool Contains(const std::string& text, std::initializer_list<const char*> words)
{
    std::string upper = text;
    for (char& c : upper) {
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return std::any_of(words.begin(), words.end(), [&upper](const char* word) {
        return upper.find(word) != std::string::npos;
    });
}

// The totalizers of the till come first, whatever their place in the file.
void FindNomesNf(ArquivoLido& arquivo, Programacao& programacao)
{
    std::string fundo;
    std::string sangria;
    for (const std::string& nome : arquivo.NomesNf()) {
        if (sangria.empty() && Contains(nome, {"SANGRIA", "RETIRADA"})) {
            sangria = nome;
        } else if (fundo.empty() && Contains(nome, {"SUPRIMENTO", "FUNDO", "TROCO"})) {
            fundo = nome;
        }
    }
    programacao.nomesNf = {fundo, sangria};
    for (const std::string& nome : arquivo.NomesNf()) {
        if (nome != fundo && nome != sangria) {
            programacao.nomesNf.push_back(nome);
        }
    }
}

// Whether some Z reduction names a rate of the number of a code, with a letter.
bool IsReduced(const ArquivoLido& arquivo, const std::string& codigo, char letra)
{
    const std::string prefix = codigo.substr(0, 2) + letra;
    for (const std::string& other : arquivo.Totalizadores()) {
        if (other.substr(0, prefix.size()) != prefix) {
            continue;
        }
        for (const auto& reducao : arquivo.Reducoes()) {
            if (arquivo.Totalizador(reducao.second.Integer("crz"), other) != 0) {
                return true;
            }
        }
    }
    return false;
}

// Whether a code of ICMS is one of ISSQN that the detailed command wrote with the letter of the
// other tax: the Z reductions then know it, or other rates of its number, by its own letter alone.
bool IsIssqn(const ArquivoLido& arquivo, const std::string& codigo)
{
    const std::string issqn = codigo.substr(0, 2) + "S" + codigo.substr(3);
    bool known = false;
    for (const auto& reducao : arquivo.Reducoes()) {
        const std::int64_t crz = reducao.second.Integer("crz");
        if (arquivo.Totalizador(crz, codigo) != 0) {
            return false;
        }
        known = known || arquivo.Totalizador(crz, issqn) != 0;
    }
    return known || (IsReduced(arquivo, codigo, 'S') && !IsReduced(arquivo, codigo, 'T'));
}

void FindAliquotas(const ArquivoLido& arquivo, Programacao& programacao)
{
    for (const std::string& codigo : arquivo.Totalizadores()) {
        constexpr std::size_t RATE_SIZE = 7; // xxTnnnn
        if (codigo.size() == RATE_SIZE && IsTributacao(codigo)) {
            const bool issqn = codigo[2] == 'S' || IsIssqn(arquivo, codigo);
            auto& rates = issqn ? programacao.issqn : programacao.icms;
            rates[std::stoll(codigo.substr(0, 2))].insert(std::stoll(codigo.substr(3)));
        } else if (IsTributacao(codigo)) {
            programacao.especiais.push_back(codigo);
        }
    }
}

// Those that the register has no room for: nothing can be registered on them.
void Limit(Importador& importing, const char* type, const char* what,
           std::vector<std::string>& names, std::size_t room)
{
    for (; names.size() > room; names.pop_back()) {
        importing.Note(type, what);
    }
}

void Cut(Importador& importing, const char* type, const char* field, std::string& text,
         std::size_t size)
{
    if (text.size() > size) {
        text.resize(size);
        importing.naoDito.AddField(
            type, field, Tr("the register has room for %1 letters", {std::to_string(size)}));
    }
}

std::int64_t CadastroOf(const Record& usuario)
{
    return SecondsOf(usuario.Raw("data_cadastro"), usuario.Raw("hora_cadastro"));
}

// The first intervention of the documents, where the owner was registered in it: under the counter
// that leaving it moved, behind its beginning.
std::optional<Record> IntervencaoOf(ArquivoLido& arquivo, const Record& usuario)
{
    const std::int64_t cadastro = CadastroOf(usuario);
    if (CroDoCadastro(arquivo)) {
        const std::int64_t cro = leitura::NextNumber(usuario.Integer("cro"));
        for (const Record& one : arquivo.Small("E09")) {
            if (one.Integer("cro") == cro && TimeOf(one) != 0 && TimeOf(one) <= cadastro) {
                return one;
            }
        }
    }
    return std::nullopt;
}

} // namespace

std::int64_t Programacao::Meio(const std::string& nome) const
{
    const auto found = std::find(meios.begin(), meios.end(), nome);
    return found == meios.end() ? 0 : found - meios.begin() + 1;
}

std::int64_t Programacao::Totalizador(const std::string& nome) const
{
    const auto found = std::find(nomesNf.begin(), nomesNf.end(), nome);
    return nome.empty() || found == nomesNf.end() ? 0 : found - nomesNf.begin() + 1;
}

void FindProgramacao(Importador& importing)
{
    Programacao& programacao = importing.programacao;
    programacao.meios = importing.arquivo.Meios();
    Limit(importing, "E18", Tr("payment means behind the register's 20"), programacao.meios,
          MAX_MEIOS);
    FindNomesNf(importing.arquivo, programacao);
    Limit(importing, "E17", Tr("totalizers behind the register's 39"), programacao.nomesNf,
          MAX_NOMES_NF);
    FindVinculados(importing.arquivo, programacao);
    FindAliquotas(importing.arquivo, programacao);
    for (const auto& [numero, percentuais] : programacao.icms) {
        importing.aliquotas["T" + std::to_string(numero)] = *percentuais.begin();
    }
    for (const auto& [numero, percentuais] : programacao.issqn) {
        importing.aliquotas["S" + std::to_string(numero)] = *percentuais.begin();
    }
}

void WriteUsuario(Importador& importing, std::int64_t em)
{
    const Record& usuario = importing.arquivo.Small("E02").front();
    importing.tape.At("programa_usuario", em)
        .Text("razao_social", usuario.Text("nome"))
        .Text("nome_fantasia", usuario.Text("nome"))
        .Text("endereco", usuario.Text("endereco"));
    if (usuario.Integer("cnpj") != 0) {
        // No record tells the state; any will do.
        importing.tape.At("programa_cnpj_ie_im", em)
            .Text("cnpj", std::string(usuario.Raw("cnpj")))
            .Text("ie", usuario.Text("ie"))
            .Text("im", "")
            .Text("uf", "SP");
    }
}

void WriteProgramacao(Importador& importing)
{
    ArquivoLido& arquivo = importing.arquivo;
    TapeText& tape = importing.tape;
    std::int64_t em = FirstInstant(arquivo);
    const bool hasUsuario = !arquivo.Small("E02").empty();
    if (hasUsuario) {
        const Record& usuario = arquivo.Small("E02").front();
        const std::int64_t cadastro = CadastroOf(usuario);
        importing.cadastroEm = IntervencaoOf(arquivo, usuario);
        if (importing.cadastroEm) {
            em = std::min(em, TimeOf(*importing.cadastroEm));
        } else if (cadastro != 0 && cadastro <= LastFirstInstant(arquivo)) {
            em = cadastro;
        } else {
            importing.naoDito.AddField("E02", "data_cadastro, hora_cadastro",
                                       Tr("not before the first document of the file"));
        }
    }
    // The register's clock begins with the first command.
    const auto line = [&tape, &em](const char* command) { return tape.At(command, em); };
    if (!arquivo.Small("E01").empty() &&
        !arquivo.Small("E01").front().Text("numero_serie").empty()) {
        const Record& ecf = arquivo.Small("E01").front();
        std::string marca = ecf.Text("marca");
        Cut(importing, "E01", "marca", marca, MAX_MARCA);
        line("programa_nr_serie")
            .Text("marca", marca)
            .Text("modelo", ecf.Text("modelo"))
            .Text("tipo", ecf.Text("tipo_ecf"))
            .Text("num_serie", ecf.Text("numero_serie"));
        if (ecf.Integer("numero_caixa") != 0) {
            line("programa_sequencia_ecf").Number("numero", ecf.Integer("numero_caixa"));
        }
    }
    if (hasUsuario && !importing.cadastroEm) {
        WriteUsuario(importing, em);
    }
    const Programacao& programacao = importing.programacao;
    for (std::size_t i = 0; i < programacao.meios.size(); ++i) {
        TapeLine meio = line("insere_meio_pagamento");
        meio.Number("indice", static_cast<std::int64_t>(i) + 1)
            .Text("descricao", programacao.meios[i].substr(0, MAX_MEIO));
        if (programacao.vinculado[i]) {
            meio.Flag("vinculado_ccd", true);
        }
    }
    for (std::size_t i = 0; i < programacao.nomesNf.size(); ++i) {
        if (!programacao.nomesNf[i].empty()) {
            line("insere_reg_ope_nf")
                .Number("indice", static_cast<std::int64_t>(i) + 1)
                .Text("descricao", programacao.nomesNf[i].substr(0, MAX_NOME_NF));
        }
    }
}

Fatos FindFatos(ArquivoLido& arquivo)
{
    Fatos fatos;
    for (const Record& record : arquivo.Small("E01")) {
        fatos.biblioteca = record.Text("versao_biblioteca");
        fatos.software = {record.Text("versao_sb"), Instant(record, "data_sb", "hora_sb")};
    }
    for (const Record& record : arquivo.Small("E03")) {
        fatos.prestadores.push_back({record.Integer("numero"), Instant(record, "data", "hora"),
                                     std::string(record.Raw("cnpj")), record.Text("ie"),
                                     record.Integer("vendas")});
    }
    for (const Record& record : arquivo.Small("E04")) {
        fatos.proprietarios.push_back({record.Integer("usuario"), Instant(record, "data", "hora"),
                                       std::string(record.Raw("cnpj")), record.Text("ie"),
                                       record.Integer("cro"), record.Integer("gt")});
    }
    for (const Record& record : arquivo.Small("E05")) {
        fatos.cifras.push_back({std::string(record.Raw("cnpj")), Instant(record, "data", "hora"),
                                record.Text("letras")});
    }
    for (const Record& record : arquivo.Small("E06")) {
        fatos.moedas.push_back({std::string(record.Raw("cnpj")), Instant(record, "data", "hora"),
                                record.Text("simbolo")});
    }
    for (const Record& record : arquivo.Small("E07")) {
        const std::int64_t data = SecondsOf(record.Raw("data"));
        fatos.versoesSoftware.push_back(
            {record.Text("versao_sb"), data == 0 ? "" : InstantText(data)});
    }
    for (const Record& record : arquivo.Small("E08")) {
        fatos.memorias.push_back(
            {std::string(record.Raw("cnpj")), record.Text("numero_serie_mfd")});
    }
    for (const Record& record : arquivo.Small("E11")) {
        const std::string extracao = Instant(record, "data_extracao", "hora_extracao");
        if (!extracao.empty()) {
            fatos.extracao = extracao;
        }
        for (const char* name : {"cvc", "cbp", "cmv"}) {
            fatos.contadores[name] = record.Integer(name);
        }
    }
    for (const Record& record : arquivo.Small("EAD")) {
        fatos.assinatura = record.Text("assinatura");
    }
    for (const auto& reducao : arquivo.Reducoes()) {
        const std::string flag = reducao.second.Text("desconto_issqn");
        if (!flag.empty()) {
            fatos.descontoIssqn = flag == "S";
        }
    }
    return fatos;
}

} // namespace bancada::arquivo

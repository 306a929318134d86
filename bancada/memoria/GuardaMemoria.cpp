#include "bancada/memoria/GuardaMemoria.h"

#include "bancada/Sha256.h"
#include "bancada/Unusable.h"
#include "bancada/memoria/ArquivoInteiro.h"
#include "bancada/memoria/EscritaJson.h"
#include "bancada/memoria/LeituraJson.h"
#include "bancada/memoria/MemoriaJson.h"
#include "bancada/memoria/TextoJson.h"

#include <cassert>
#include <filesystem>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>

namespace bancada
{
namespace
{

constexpr char FORMATO[] = "ecf-bancada memoria";
constexpr int VERSAO = 1;

// Twice the largest state, an open receipt of 999 items with the longest texts, and as much again.
constexpr std::size_t MAX_BYTES = 32 * 1024 * 1024;

constexpr std::int32_t MAX_SEQUENCIA = std::numeric_limits<std::int32_t>::max() - 1;
constexpr int MAX_LINHAS = std::numeric_limits<int>::max() - 1;
constexpr std::int64_t MAX_INT64 = std::numeric_limits<std::int64_t>::max();

// V and E as in CamposDaMemoria.h.
template <class V, class E>
void CamposDaExecucao(V& v, E& execucao)
{
    v.Inteiro("sequencia", execucao.sequencia, 0, MAX_SEQUENCIA);
    v.Inteiro("confirmada", execucao.confirmada, 0, MAX_SEQUENCIA);
    v.Instante("relogio", execucao.relogio);
    v.Grupo("fita", [&](auto& fita) {
        fita.Inteiro("linhas", execucao.fita.line, 0, MAX_LINHAS);
        fita.Inteiro("bytes", execucao.fita.bytes, 0, MAX_INT64);
        fita.Texto("digest", execucao.fita.digest);
    });
    v.Inteiro("perdidos", execucao.perdidos, 0, MAX_INT64);
    v.Texto("ultima_perda", execucao.ultimaPerda);
}

Execucao ExecucaoDeJson(const nlohmann::json& json, const std::string& lugar)
{
    Execucao execucao;
    LeituraJson leitura(json, lugar);
    CamposDaExecucao(leitura, execucao);
    leitura.Fim();
    if (execucao.confirmada > execucao.sequencia) {
        throw CampoInvalido(lugar + ".confirmada", "it is more than sequencia");
    }
    return execucao;
}

std::string TextoDaExecucao(const Execucao& execucao)
{
    EscritaJson campos;
    CamposDaExecucao(campos, execucao);
    return "\"execucao\":" + campos.Fim().dump();
}

// The digest is that of the file's other fields in the form that the program writes, so that blanks
// and line breaks may be put between them.
std::string Digest(nlohmann::json raiz)
{
    raiz.erase("digest");
    return Sha256Hex(raiz.dump());
}

} // namespace

GuardaMemoria::GuardaMemoria(const std::string& caminho) : m_caminho(caminho)
{
    // The file itself, where a link names it: a link is not to be replaced.
    std::error_code semArquivo;
    const std::filesystem::path real = std::filesystem::canonical(caminho, semArquivo);
    if (!semArquivo) {
        m_caminho = real.string();
    }

    const std::optional<std::string> conteudo = LeArquivo(m_caminho, MAX_BYTES);
    if (!conteudo) {
        return;
    }
    try {
        Le(*conteudo);
    } catch (const std::runtime_error& erro) {
        throw Unusable("cannot use the memory " + caminho + ": " + erro.what());
    }
}

void GuardaMemoria::Le(const std::string& conteudo)
{
    const nlohmann::json raiz = LeJson(conteudo);
    if (!raiz.is_object() || raiz.find("formato") == raiz.end() || raiz["formato"] != FORMATO) {
        throw std::runtime_error(std::string("it is no memory of this program: \"formato\" is not "
                                             "\"") +
                                 FORMATO + "\"");
    }
    const auto versao = raiz.find("versao");
    if (versao == raiz.end()) {
        throw CampoInvalido("versao", "it is missing");
    }
    if (versao->is_number_unsigned() && versao->get<std::uint64_t>() > VERSAO) {
        throw CampoInvalido("versao", versao->dump() +
                                          " was written by a newer program; this one "
                                          "reads version " +
                                          std::to_string(VERSAO));
    }
    if (*versao != VERSAO) {
        throw CampoInvalido("versao", "it is not " + std::to_string(VERSAO));
    }
    const auto digest = raiz.find("digest");
    if (digest != raiz.end() && *digest != Digest(raiz)) {
        throw CampoInvalido("digest", "the file is damaged: the digest is not that of its content "
                                      "(whoever edits it takes the field out)");
    }

    for (const auto& campo : raiz.items()) {
        static const std::set<std::string> CONHECIDOS = {"formato",  "versao",   "digest",
                                                         "registro", "execucao", "antes"};
        if (CONHECIDOS.count(campo.key()) == 0) {
            throw CampoInvalido(campo.key(), "there is no such field");
        }
    }
    const auto LeEstado = [](const nlohmann::json& json, const std::string& lugar, Estado& estado) {
        if (json.find("registro") != json.end()) {
            estado.registro = MemoriaDeJson(json["registro"], lugar + "registro");
        }
        if (json.find("execucao") != json.end()) {
            estado.execucao = ExecucaoDeJson(json["execucao"], lugar + "execucao");
        }
    };
    m_temExecucao = raiz.find("execucao") != raiz.end();
    const auto antes = raiz.find("antes");
    m_pendente = antes != raiz.end();
    LeEstado(raiz, "", m_pendente ? m_depois : m_atual);
    if (!m_pendente) {
        return;
    }
    if (!antes->is_object()) {
        throw CampoInvalido("antes", "an object is due");
    }
    for (const auto& campo : antes->items()) {
        if (campo.key() != "registro" && campo.key() != "execucao") {
            throw CampoInvalido("antes." + campo.key(), "there is no such field");
        }
    }
    LeEstado(*antes, "antes.", m_atual);
    if (!m_temExecucao || m_depois.execucao.sequencia <= m_atual.execucao.sequencia) {
        throw CampoInvalido("execucao.sequencia", "it is not after that of \"antes\"");
    }
}

void GuardaMemoria::ConfereNumero(std::int32_t numero, const std::string& banco) const
{
    if (numero < 0 || numero > MAX_SEQUENCIA) {
        throw Unusable("the database " + banco + " carries the number " + std::to_string(numero) +
                       ", which is not that of a command");
    }
    if (!m_temExecucao) {
        return;
    }
    // A command that was lost may have reached the file all the same, if its disk said that it
    // failed and did not.
    const std::int32_t primeiro = m_atual.execucao.confirmada;
    const std::int32_t ultimo = (m_pendente ? m_depois : m_atual).execucao.sequencia;
    if (numero >= primeiro && numero <= ultimo) {
        return;
    }
    std::string devido = "command " + std::to_string(ultimo);
    if (primeiro != ultimo) {
        devido = "command " + std::to_string(primeiro) + " to " + std::to_string(ultimo);
    }
    throw Unusable("the memory " + m_caminho + " and the database " + banco +
                   " do not belong together: the memory needs a database at " + devido +
                   ", this one is at " + std::to_string(numero));
}

void GuardaMemoria::Assume(std::int32_t numero)
{
    if (!m_temExecucao) {
        // From here on it belongs to this database.
        m_atual.execucao.sequencia = m_atual.execucao.confirmada = numero;
        m_temExecucao = true;
    } else if (m_pendente && numero == m_depois.execucao.sequencia) {
        m_atual = std::move(m_depois);
        m_atual.execucao.confirmada = numero;
    } else {
        m_atual.execucao.confirmada = numero;
    }
    m_pendente = false;
    Firma(m_atual.registro, m_atual.execucao);
}

void GuardaMemoria::Prepara(Estado& estado, const Memoria& registro, const Execucao& execucao)
{
    estado.execucaoEmTexto = TextoDaExecucao(execucao);
    estado.registroEmTexto = "\"registro\":" + JsonDaMemoria(registro).dump();
    estado.registro = registro;
    estado.execucao = execucao;
}

void GuardaMemoria::Grava(const std::string& antes, const Estado& estado) const
{
    // In the order of their names, which is the form that Digest gives them.
    const std::string campos = antes + estado.execucaoEmTexto + ",\"formato\":\"" + FORMATO +
                               "\"," + estado.registroEmTexto +
                               ",\"versao\":" + std::to_string(VERSAO) + "}";
    SubstituiArquivo(m_caminho, "{\"digest\":\"" + Sha256Hex("{" + campos) + "\"," + campos + "\n");
}

void GuardaMemoria::Pendente(const Memoria& registro, const Execucao& execucao)
{
    assert(!m_pendente && execucao.sequencia > m_atual.execucao.sequencia);
    if (execucao.sequencia > MAX_SEQUENCIA) {
        throw Unusable("the memory " + m_caminho + " has no number for another command");
    }
    Prepara(m_depois, registro, execucao);
    m_pendente = true;
    Grava("\"antes\":{" + m_atual.execucaoEmTexto + "," + m_atual.registroEmTexto + "},", m_depois);
}

void GuardaMemoria::Confirma()
{
    assert(m_pendente);
    std::swap(m_atual, m_depois);
    m_pendente = false;
    m_atual.execucao.confirmada = m_atual.execucao.sequencia;
    m_atual.execucaoEmTexto = TextoDaExecucao(m_atual.execucao);
}

void GuardaMemoria::Firma(const Memoria& registro, const Execucao& execucao)
{
    Prepara(m_atual, registro, execucao);
    m_pendente = false;
    Grava("", m_atual);
}

} // namespace bancada

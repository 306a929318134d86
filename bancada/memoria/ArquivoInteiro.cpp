#include "bancada/memoria/ArquivoInteiro.h"

#include "bancada/Unusable.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace bancada
{
namespace
{

class Descritor
{
  public:
    explicit Descritor(int numero) : m_numero(numero) {}
    ~Descritor()
    {
        if (m_numero >= 0) {
            close(m_numero);
        }
    }
    Descritor(const Descritor&) = delete;
    Descritor& operator=(const Descritor&) = delete;

    int Numero() const { return m_numero; }
    bool Aberto() const { return m_numero >= 0; }

  private:
    int m_numero;
};

[[noreturn]] void Falha(const char* oQue, const std::string& caminho)
{
    throw Unusable(std::string("cannot ") + oQue + " " + caminho + ": " + std::strerror(errno));
}

bool EscreveTudo(int arquivo, std::string_view conteudo)
{
    while (!conteudo.empty()) {
        const ssize_t escritos = write(arquivo, conteudo.data(), conteudo.size());
        if (escritos < 0 && errno != EINTR) {
            return false;
        }
        if (escritos > 0) {
            conteudo.remove_prefix(static_cast<std::size_t>(escritos));
        }
    }
    return true;
}

// The entry of the folder is durable with the folder.
void SincronizaPasta(const std::string& caminho)
{
    std::string pasta = std::filesystem::path(caminho).parent_path().string();
    if (pasta.empty()) {
        pasta = ".";
    }
    const Descritor aberta(open(pasta.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!aberta.Aberto() || fsync(aberta.Numero()) != 0) {
        Falha("sync the folder", pasta);
    }
}

} // namespace

std::optional<std::string> LeArquivo(const std::string& caminho, std::size_t maxBytes)
{
    const Descritor arquivo(open(caminho.c_str(), O_RDONLY | O_CLOEXEC));
    if (!arquivo.Aberto()) {
        if (errno == ENOENT) {
            return std::nullopt;
        }
        Falha("read", caminho);
    }
    std::string conteudo;
    char pedaco[16 * 1024];
    for (;;) {
        const ssize_t lidos = read(arquivo.Numero(), pedaco, sizeof pedaco);
        if (lidos < 0 && errno == EINTR) {
            continue;
        }
        if (lidos < 0) {
            Falha("read", caminho);
        }
        if (lidos == 0) {
            return conteudo;
        }
        conteudo.append(pedaco, static_cast<std::size_t>(lidos));
        if (conteudo.size() > maxBytes) {
            throw Unusable("cannot read " + caminho + ": it has more than " +
                           std::to_string(maxBytes) + " bytes");
        }
    }
}

void SubstituiArquivo(const std::string& caminho, std::string_view conteudo)
{
    const std::string novo = caminho + ".tmp";
    {
        const Descritor arquivo(open(novo.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
        if (!arquivo.Aberto() || !EscreveTudo(arquivo.Numero(), conteudo) ||
            fsync(arquivo.Numero()) != 0) {
            Falha("write", novo);
        }
    }
    if (std::rename(novo.c_str(), caminho.c_str()) != 0) {
        Falha("replace", caminho);
    }
    SincronizaPasta(caminho);
}

} // namespace bancada

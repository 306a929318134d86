#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "bancada/relatorio/Documento.h"

namespace bancada::relatorio
{

// The width of the paper, in columns.
constexpr std::size_t LARGURA_BOBINA = 48;

// A strip of paper: lines of at most LARGURA_BOBINA columns, whatever the texts hold.
class Bobina
{
  public:
    const std::vector<std::string>& linhas() const { return m_linhas; }

    // Each wraps where the text is longer than the paper; an empty or blank text prints nothing.
    void texto(std::string_view texto, std::size_t recuo = 0);
    void centro(std::string_view texto);
    // `esquerda` at `recuo` and `direita` at the right edge of the last line it takes.
    void lados(std::string_view esquerda, std::string_view direita, std::size_t recuo = 0);
    // The paper's width of one character.
    void regua(char traco);

  private:
    std::vector<std::string> m_linhas;
};

// The document as its paper shows it, with its heading and its foot. The document is complete.
// Says so where the database does not hold what the paper had: an opening or a closing that was
// not logged, rows of a number that came twice and cannot be told apart.
std::vector<std::string> imprime(const Documento& documento, const Estabelecimento& casa);

} // namespace bancada::relatorio

#include "bancada/relatorio/Bobina.h"

#include "bancada/relatorio/Texto.h"

namespace bancada::relatorio
{

void Bobina::texto(std::string_view texto, std::size_t recuo)
{
    for (const std::string& linha : quebra(texto, LARGURA_BOBINA - recuo)) {
        m_linhas.push_back(std::string(recuo, ' ') + linha);
    }
}

void Bobina::centro(std::string_view texto)
{
    for (const std::string& linha : quebra(texto, LARGURA_BOBINA)) {
        m_linhas.push_back(std::string((LARGURA_BOBINA - colunas(linha)) / 2, ' ') + linha);
    }
}

void Bobina::lados(std::string_view esquerda, std::string_view direita, std::size_t recuo)
{
    const std::string valor = corta(direita, LARGURA_BOBINA);
    std::vector<std::string> linhas = quebra(esquerda, LARGURA_BOBINA - recuo);
    for (std::string& linha : linhas) {
        linha.insert(0, recuo, ' ');
    }
    if (linhas.empty() || colunas(linhas.back()) + 1 + colunas(valor) > LARGURA_BOBINA) {
        linhas.emplace_back();
    }
    std::string& ultima = linhas.back();
    ultima += aDireita(valor, LARGURA_BOBINA - colunas(ultima));
    m_linhas.insert(m_linhas.end(), linhas.begin(), linhas.end());
}

void Bobina::regua(char traco)
{
    m_linhas.emplace_back(LARGURA_BOBINA, traco);
}

} // namespace bancada::relatorio

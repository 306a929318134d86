#include "bancada/relatorio/Texto.h"

#include <algorithm>
#include <cstdint>

namespace bancada::relatorio
{
namespace
{

constexpr char32_t SUBSTITUTO = 0xFFFD;

bool controla(char32_t c)
{
    return c < 0x20 || (c >= 0x7F && c <= 0x9F) || c == 0x061C || c == 0x200E || c == 0x200F ||
           (c >= 0x2028 && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069) || c == 0xFEFF;
}

bool combina(char32_t c)
{
    return (c >= 0x0300 && c <= 0x036F) || c == 0x200B || c == 0x200C || c == 0x200D ||
           (c >= 0xFE00 && c <= 0xFE0F);
}

bool algarismo(char c)
{
    return c >= '0' && c <= '9';
}

// Whether the text has the pattern's length, a digit where it has '9' and its own character
// elsewhere.
bool casa(std::string_view texto, std::string_view padrao)
{
    return texto.size() == padrao.size() &&
           std::equal(texto.begin(), texto.end(), padrao.begin(),
                      [](char c, char p) { return p == '9' ? algarismo(c) : c == p; });
}

// Decodes the character at `i` and moves `i` behind it; a byte that begins none is one SUBSTITUTO.
char32_t decodifica(std::string_view texto, std::size_t& i)
{
    const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(texto[k]); };
    const unsigned primeiro = byte(i);
    std::size_t resto = 0;
    char32_t c = 0;
    char32_t minimo = 0;
    if (primeiro < 0x80) {
        ++i;
        return primeiro;
    }
    if ((primeiro & 0xE0U) == 0xC0U) {
        resto = 1, c = primeiro & 0x1FU, minimo = 0x80;
    } else if ((primeiro & 0xF0U) == 0xE0U) {
        resto = 2, c = primeiro & 0x0FU, minimo = 0x800;
    } else if ((primeiro & 0xF8U) == 0xF0U) {
        resto = 3, c = primeiro & 0x07U, minimo = 0x10000;
    } else {
        ++i;
        return SUBSTITUTO;
    }
    for (std::size_t k = 1; k <= resto; ++k) {
        if (i + k >= texto.size() || (byte(i + k) & 0xC0U) != 0x80U) {
            ++i;
            return SUBSTITUTO;
        }
        c = (c << 6U) | (byte(i + k) & 0x3FU);
    }
    if (c < minimo || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) {
        ++i;
        return SUBSTITUTO;
    }
    i += resto + 1;
    return c;
}

void acrescenta(std::string& saida, char32_t c)
{
    const auto byte = [&](char32_t b) { saida += static_cast<char>(static_cast<std::uint8_t>(b)); };
    if (c < 0x80) {
        byte(c);
    } else if (c < 0x800) {
        byte(0xC0U | (c >> 6U));
        byte(0x80U | (c & 0x3FU));
    } else if (c < 0x10000) {
        byte(0xE0U | (c >> 12U));
        byte(0x80U | ((c >> 6U) & 0x3FU));
        byte(0x80U | (c & 0x3FU));
    } else {
        byte(0xF0U | (c >> 18U));
        byte(0x80U | ((c >> 12U) & 0x3FU));
        byte(0x80U | ((c >> 6U) & 0x3FU));
        byte(0x80U | (c & 0x3FU));
    }
}

// How many characters of the text take at most `largura` columns.
std::size_t quantosCabem(std::u32string_view texto, std::size_t largura)
{
    std::size_t usadas = 0;
    std::size_t i = 0;
    while (i < texto.size() && usadas + (combina(texto[i]) ? 0 : 1) <= largura) {
        usadas += combina(texto[i]) ? 0 : 1;
        ++i;
    }
    return i;
}

} // namespace

std::u32string caracteres(std::string_view texto)
{
    std::u32string saida;
    saida.reserve(texto.size());
    std::size_t i = 0;
    while (i < texto.size()) {
        const char32_t c = decodifica(texto, i);
        if (c == U'\n' || c == U'\r' || c == U'\t') {
            saida += U' ';
        } else {
            saida += controla(c) ? SUBSTITUTO : c;
        }
    }
    return saida;
}

std::string utf8(std::u32string_view texto)
{
    std::string saida;
    saida.reserve(texto.size());
    for (const char32_t c : texto) {
        acrescenta(saida, c);
    }
    return saida;
}

std::size_t colunas(std::u32string_view texto)
{
    return static_cast<std::size_t>(
        std::count_if(texto.begin(), texto.end(), [](char32_t c) { return !combina(c); }));
}

std::size_t colunas(std::string_view texto)
{
    return colunas(caracteres(texto));
}

std::vector<std::string> quebra(std::string_view texto, std::size_t largura)
{
    const std::u32string todos = caracteres(texto);
    std::u32string_view resto = todos;
    std::vector<std::string> linhas;
    const auto semBrancos = [&resto] {
        resto.remove_prefix(std::min(resto.find_first_not_of(U' '), resto.size()));
    };
    for (semBrancos(); !resto.empty(); semBrancos()) {
        std::size_t fim = quantosCabem(resto, largura);
        if (fim < resto.size() && resto[fim] != U' ') {
            const std::size_t branco = resto.substr(0, fim).find_last_of(U' ');
            if (branco != std::u32string_view::npos) {
                fim = branco;
            }
        }
        std::u32string_view linha = resto.substr(0, fim);
        linha = linha.substr(0, linha.find_last_not_of(U' ') + 1);
        linhas.push_back(utf8(linha));
        resto.remove_prefix(fim);
    }
    return linhas;
}

std::string corta(std::string_view texto, std::size_t largura)
{
    const std::u32string todos = caracteres(texto);
    return utf8(std::u32string_view(todos).substr(0, quantosCabem(todos, largura)));
}

std::string aDireita(std::string_view texto, std::size_t largura)
{
    const std::size_t usadas = colunas(texto);
    return std::string(largura > usadas ? largura - usadas : 0, ' ') + std::string(texto);
}

std::string aEsquerda(std::string_view texto, std::size_t largura)
{
    const std::size_t usadas = colunas(texto);
    return std::string(texto) + std::string(largura > usadas ? largura - usadas : 0, ' ');
}

std::string comZeros(long long numero, std::size_t digitos)
{
    const std::string texto = std::to_string(numero);
    return numero < 0 || texto.size() >= digitos ? texto
                                                 : std::string(digitos - texto.size(), '0') + texto;
}

bool emBranco(std::string_view texto)
{
    return texto.find_first_not_of(' ') == std::string_view::npos;
}

std::string formataCpfCnpj(std::string_view texto)
{
    const std::string t(texto);
    if (casa(t, "99999999999")) {
        return t.substr(0, 3) + '.' + t.substr(3, 3) + '.' + t.substr(6, 3) + '-' + t.substr(9);
    }
    if (casa(t, "99999999999999")) {
        return t.substr(0, 2) + '.' + t.substr(2, 3) + '.' + t.substr(5, 3) + '/' + t.substr(8, 4) +
               '-' + t.substr(12);
    }
    return t;
}

std::string formataDataHora(std::string_view texto)
{
    const std::string t(texto);
    if (casa(t, "9999-99-99") || casa(t, "9999-99-99 99:99:99")) {
        return t.substr(8, 2) + '/' + t.substr(5, 2) + '/' + t.substr(0, 4) + t.substr(10);
    }
    return t;
}

std::string escapaHtml(std::string_view texto)
{
    std::string saida;
    saida.reserve(texto.size());
    for (const char32_t c : caracteres(texto)) {
        switch (c) {
        case U'&':
            saida += "&amp;";
            break;
        case U'<':
            saida += "&lt;";
            break;
        case U'>':
            saida += "&gt;";
            break;
        case U'"':
            saida += "&quot;";
            break;
        case U'\'':
            saida += "&#39;";
            break;
        default:
            acrescenta(saida, c);
        }
    }
    return saida;
}

} // namespace bancada::relatorio

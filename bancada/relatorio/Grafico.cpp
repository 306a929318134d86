#include "bancada/relatorio/Grafico.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "bancada/relatorio/Texto.h"

namespace bancada::relatorio
{
namespace
{

constexpr int LARGURA = 720;
constexpr int MAX_DIVISOES = 4;

// The smallest step of 1, 2 or 5 times a power of ten, and at least one whole unit of currency,
// that reaches `maior` in MAX_DIVISOES steps.
std::int64_t passo(std::int64_t maior)
{
    constexpr std::int64_t UNIDADE = 100;
    std::int64_t potencia = UNIDADE;
    for (;; potencia *= 10) {
        for (const std::int64_t fator : {1, 2, 5}) {
            // Beyond the largest amounts there is no finer power to go on with.
            if (potencia * fator >= maior / MAX_DIVISOES + (maior % MAX_DIVISOES != 0) ||
                potencia > INT64_MAX / 100) {
                return potencia * fator;
            }
        }
    }
}

int fracao(std::int64_t valor, std::int64_t total, int pixels)
{
    if (valor <= 0 || total <= 0) {
        return 0;
    }
    // Where to draw only; the amounts themselves are written as they are.
    return static_cast<int>(
        std::lround(static_cast<double>(valor) / static_cast<double>(total) * pixels));
}

std::string texto(const char* classe, int x, int y, const std::string& conteudo)
{
    return "<text class=\"" + std::string(classe) + "\" x=\"" + std::to_string(x) + "\" y=\"" +
           std::to_string(y) + "\">" + escapaHtml(conteudo) + "</text>";
}

std::string barra(int x, int y, int largura, int altura, const std::string& dica)
{
    return "<rect class=\"barra\" x=\"" + std::to_string(x) + "\" y=\"" + std::to_string(y) +
           "\" width=\"" + std::to_string(largura) + "\" height=\"" + std::to_string(altura) +
           "\" rx=\"2\"><title>" + escapaHtml(dica) + "</title></rect>";
}

std::string abreSvg(int altura, const char* rotulo)
{
    return "<svg class=\"grafico\" role=\"img\" aria-label=\"" + std::string(rotulo) +
           "\" viewBox=\"0 0 " + std::to_string(LARGURA) + ' ' + std::to_string(altura) + "\">";
}

} // namespace

std::string graficoPorHora(const std::vector<VendaHora>& horas)
{
    constexpr int ALTURA = 230;
    constexpr int ESQUERDA = 84;
    constexpr int TOPO = 16;
    constexpr int BASE = ALTURA - 28;
    constexpr int COLUNA = (LARGURA - ESQUERDA) / 24;

    std::int64_t maior = 0;
    for (const VendaHora& venda : horas) {
        maior = std::clamp(venda.valor.unidades, maior, INT64_MAX / 2);
    }
    const std::int64_t divisao = passo(maior);
    const std::int64_t topo = divisao * std::max<std::int64_t>(1, (maior + divisao - 1) / divisao);

    std::string svg = abreSvg(ALTURA, "Sales by hour");
    for (std::int64_t marca = 0; marca <= topo; marca += divisao) {
        const int y = BASE - fracao(marca, topo, BASE - TOPO);
        svg += "<line class=\"grade\" x1=\"" + std::to_string(ESQUERDA) + "\" x2=\"" +
               std::to_string(LARGURA) + "\" y1=\"" + std::to_string(y) + "\" y2=\"" +
               std::to_string(y) + "\"/>";
        svg += texto("eixo fim", ESQUERDA - 8, y + 4, textoBr({marca, 2, true}, 0));
    }
    for (std::size_t hora = 0; hora < horas.size(); ++hora) {
        const VendaHora& venda = horas[hora];
        const int x = ESQUERDA + static_cast<int>(hora) * COLUNA;
        const int altura = fracao(venda.valor.unidades, topo, BASE - TOPO);
        if (venda.cupons > 0) {
            svg += barra(x + 3, BASE - altura, COLUNA - 6, altura,
                         comZeros(static_cast<int>(hora), 2) + " h: R$ " + textoBr(venda.valor) +
                             ", " + std::to_string(venda.cupons) + " receipts");
        }
        if (hora % 2 == 0) {
            svg +=
                texto("eixo meio", x + COLUNA / 2, BASE + 18, comZeros(static_cast<int>(hora), 2));
        }
    }
    return svg + "</svg>";
}

std::string graficoPorMeio(std::vector<VendaMeio> meios)
{
    constexpr int LINHA = 34;
    constexpr int ESQUERDA = 190;
    constexpr int DIREITA = 130;
    constexpr std::size_t LARGURA_NOME = 22;

    std::stable_sort(meios.begin(), meios.end(), [](const VendaMeio& a, const VendaMeio& b) {
        return a.valor.unidades > b.valor.unidades;
    });
    const std::int64_t maior = meios.empty() ? 0 : meios.front().valor.unidades;

    std::string svg = abreSvg(LINHA * static_cast<int>(meios.size()) + 8, "Sales by payment means");
    int y = 4;
    for (const VendaMeio& meio : meios) {
        const int largura = fracao(meio.valor.unidades, maior, LARGURA - ESQUERDA - DIREITA);
        const std::string nome = nomeOuNumero(meio);
        svg += texto("rotulo fim", ESQUERDA - 10, y + 21, corta(nome, LARGURA_NOME));
        svg += barra(ESQUERDA, y + 5, std::max(largura, 1), LINHA - 10,
                     nome + ": R$ " + textoBr(meio.valor) + ", " + std::to_string(meio.pagamentos) +
                         " payments");
        svg += texto("rotulo", ESQUERDA + largura + 8, y + 21, textoBr(meio.valor));
        y += LINHA;
    }
    return svg + "</svg>";
}

std::string nomeOuNumero(const VendaMeio& meio)
{
    return emBranco(meio.nome) ? "MEIO DE PAGAMENTO " + comZeros(meio.indice, 2) : meio.nome;
}

} // namespace bancada::relatorio

#include "bancada/relatorio/Chart.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "bancada/relatorio/DisplayText.h"

namespace bancada::relatorio
{
namespace
{

constexpr int WIDTH = 720;
constexpr int MAX_STEPS = 4;

// The smallest step of 1, 2 or 5 times a power of ten, and at least one whole unit of currency,
// that reaches `greatest` in MAX_STEPS steps.
std::int64_t StepFor(std::int64_t greatest)
{
    constexpr std::int64_t UNIT = 100;
    std::int64_t power = UNIT;
    for (;; power *= 10) {
        for (const std::int64_t factor : {1, 2, 5}) {
            // Beyond the largest amounts there is no finer power to go on with.
            if (power * factor >= greatest / MAX_STEPS + (greatest % MAX_STEPS != 0) ||
                power > INT64_MAX / 100) {
                return power * factor;
            }
        }
    }
}

int Fraction(std::int64_t value, std::int64_t total, int pixels)
{
    if (value <= 0 || total <= 0) {
        return 0;
    }
    // Where to draw only; the amounts themselves are written as they are.
    return static_cast<int>(
        std::lround(static_cast<double>(value) / static_cast<double>(total) * pixels));
}

std::string SvgText(const char* style, int x, int y, const std::string& content)
{
    return "<text class=\"" + std::string(style) + "\" x=\"" + std::to_string(x) + "\" y=\"" +
           std::to_string(y) + "\">" + EscapeHtml(content) + "</text>";
}

std::string SvgBar(int x, int y, int width, int height, const std::string& tip)
{
    return "<rect class=\"barra\" x=\"" + std::to_string(x) + "\" y=\"" + std::to_string(y) +
           "\" width=\"" + std::to_string(width) + "\" height=\"" + std::to_string(height) +
           "\" rx=\"2\"><title>" + EscapeHtml(tip) + "</title></rect>";
}

std::string SvgBegin(int height, const char* label)
{
    return "<svg class=\"grafico\" role=\"img\" aria-label=\"" + std::string(label) +
           "\" viewBox=\"0 0 " + std::to_string(WIDTH) + ' ' + std::to_string(height) + "\">";
}

} // namespace

std::string ChartByHora(const std::vector<VendaHora>& horas)
{
    constexpr int HEIGHT = 230;
    constexpr int LEFT = 84;
    constexpr int TOP = 16;
    constexpr int BASE = HEIGHT - 28;
    constexpr int COLUMN = (WIDTH - LEFT) / 24;

    std::int64_t greatest = 0;
    for (const VendaHora& venda : horas) {
        greatest = std::clamp(venda.valor.Units(), greatest, INT64_MAX / 2);
    }
    const std::int64_t step = StepFor(greatest);
    const std::int64_t top = step * std::max<std::int64_t>(1, (greatest + step - 1) / step);

    std::string svg = SvgBegin(HEIGHT, "Sales by hour");
    for (std::int64_t mark = 0; mark <= top; mark += step) {
        const int y = BASE - Fraction(mark, top, BASE - TOP);
        svg += "<line class=\"grade\" x1=\"" + std::to_string(LEFT) + "\" x2=\"" +
               std::to_string(WIDTH) + "\" y1=\"" + std::to_string(y) + "\" y2=\"" +
               std::to_string(y) + "\"/>";
        svg += SvgText("eixo fim", LEFT - 8, y + 4, AmountText({mark, 2}, 0));
    }
    for (std::size_t hora = 0; hora < horas.size(); ++hora) {
        const VendaHora& venda = horas[hora];
        const int x = LEFT + static_cast<int>(hora) * COLUMN;
        const int height = Fraction(venda.valor.Units(), top, BASE - TOP);
        if (venda.cupons > 0) {
            svg += SvgBar(x + 3, BASE - height, COLUMN - 6, height,
                          WithZeros(static_cast<int>(hora), 2) + " h: R$ " +
                              AmountText(venda.valor) + ", " + std::to_string(venda.cupons) +
                              (venda.cupons == 1 ? " receipt" : " receipts"));
        }
        if (hora % 2 == 0) {
            svg += SvgText("eixo meio", x + COLUMN / 2, BASE + 18,
                           WithZeros(static_cast<int>(hora), 2));
        }
    }
    return svg + "</svg>";
}

std::string ChartByMeio(std::vector<VendaMeio> meios)
{
    constexpr int LINE = 34;
    constexpr int LEFT = 190;
    constexpr int RIGHT = 130;
    constexpr std::size_t NAME_COLUMNS = 22;

    std::stable_sort(meios.begin(), meios.end(), [](const VendaMeio& a, const VendaMeio& b) {
        return a.valor.Units() > b.valor.Units();
    });
    const std::int64_t greatest = meios.empty() ? 0 : meios.front().valor.Units();

    std::string svg = SvgBegin(LINE * static_cast<int>(meios.size()) + 8, "Sales by payment means");
    int y = 4;
    for (const VendaMeio& meio : meios) {
        const int width = Fraction(meio.valor.Units(), greatest, WIDTH - LEFT - RIGHT);
        const std::string name = NameOrNumber(meio);
        svg += SvgText("rotulo fim", LEFT - 10, y + 21, Cut(name, NAME_COLUMNS));
        svg += SvgBar(LEFT, y + 5, std::max(width, 1), LINE - 10,
                      name + ": R$ " + AmountText(meio.valor) + ", " +
                          std::to_string(meio.pagamentos) + " payments");
        svg += SvgText("rotulo", LEFT + width + 8, y + 21, AmountText(meio.valor));
        y += LINE;
    }
    return svg + "</svg>";
}

std::string NameOrNumber(const VendaMeio& meio)
{
    return IsBlank(meio.nome.Shown()) ? "MEIO DE PAGAMENTO " + WithZeros(meio.indice, 2)
                                      : meio.nome.Shown();
}

} // namespace bancada::relatorio

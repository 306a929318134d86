#include "bancada/relatorio/Chart.h"

#include "bancada/Messages.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "bancada/relatorio/DisplayText.h"

namespace bancada::relatorio
{
namespace
{

// The page shows the one or the other, so that the texts have their size on a phone too.
constexpr int WIDE = 720;
constexpr int NARROW = 340;
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

std::string SvgBegin(int width, int height, const char* label)
{
    return "<svg class=\"grafico " + std::string(width == WIDE ? "largo" : "estreito") +
           "\" role=\"img\" aria-label=\"" + label + "\" viewBox=\"0 0 " + std::to_string(width) +
           ' ' + std::to_string(height) + "\">";
}

// With a label at every `labelled` hours.
std::string PlotHoras(const std::vector<VendaHora>& horas, int width, int left,
                      std::size_t labelled)
{
    constexpr int HEIGHT = 230;
    constexpr int TOP = 16;
    constexpr int BASE = HEIGHT - 28;
    const int column = (width - left) / 24;
    const int gap = column / 8;

    std::int64_t greatest = 0;
    for (const VendaHora& venda : horas) {
        greatest = std::clamp(venda.valor.Units(), greatest, INT64_MAX / 2);
    }
    const std::int64_t step = StepFor(greatest);
    const std::int64_t top = step * std::max<std::int64_t>(1, (greatest + step - 1) / step);

    std::string svg = SvgBegin(width, HEIGHT, Tr("Sales by hour"));
    for (std::int64_t mark = 0; mark <= top; mark += step) {
        const int y = BASE - Fraction(mark, top, BASE - TOP);
        svg += "<line class=\"grade\" x1=\"" + std::to_string(left) + "\" x2=\"" +
               std::to_string(width) + "\" y1=\"" + std::to_string(y) + "\" y2=\"" +
               std::to_string(y) + "\"/>";
        svg += SvgText("eixo fim", left - 8, y + 4, AmountText({mark, 2}, 0));
    }
    for (std::size_t hora = 0; hora < horas.size(); ++hora) {
        const VendaHora& venda = horas[hora];
        const int x = left + static_cast<int>(hora) * column;
        const int height = Fraction(venda.valor.Units(), top, BASE - TOP);
        if (venda.cupons > 0) {
            svg +=
                SvgBar(x + gap, BASE - height, column - 2 * gap, height,
                       WithZeros(static_cast<int>(hora), 2) + " h: R$ " + AmountText(venda.valor) +
                           ", " + TrCount("%1 receipt", "%1 receipts", venda.cupons));
        }
        if (hora % labelled == 0) {
            svg += SvgText("eixo meio", x + column / 2, BASE + 18,
                           WithZeros(static_cast<int>(hora), 2));
        }
    }
    return svg + "</svg>";
}

std::string Tip(const VendaMeio& meio)
{
    return NameOrNumber(meio) + ": R$ " + AmountText(meio.valor) + ", " +
           TrCount("%1 payment", "%1 payments", meio.pagamentos);
}

std::int64_t Greatest(const std::vector<VendaMeio>& meios)
{
    return meios.empty() ? 0 : meios.front().valor.Units();
}

// A line a means: its name, its bar and its amount beside each other.
std::string PlotMeiosWide(const std::vector<VendaMeio>& meios)
{
    constexpr int LINE = 34;
    constexpr int LEFT = 190;
    constexpr int RIGHT = 130;
    constexpr std::size_t NAME_COLUMNS = 22;

    std::string svg =
        SvgBegin(WIDE, LINE * static_cast<int>(meios.size()) + 8, Tr("Sales by payment means"));
    int y = 4;
    for (const VendaMeio& meio : meios) {
        const int width = Fraction(meio.valor.Units(), Greatest(meios), WIDE - LEFT - RIGHT);
        svg += SvgText("rotulo fim", LEFT - 10, y + 21, Cut(NameOrNumber(meio), NAME_COLUMNS));
        svg += SvgBar(LEFT, y + 5, std::max(width, 1), LINE - 10, Tip(meio));
        svg += SvgText("rotulo", LEFT + width + 8, y + 21, AmountText(meio.valor));
        y += LINE;
    }
    return svg + "</svg>";
}

// The bar below the name and the amount.
std::string PlotMeiosNarrow(const std::vector<VendaMeio>& meios)
{
    constexpr int LINE = 40;
    constexpr std::size_t NAME_COLUMNS = 24;

    std::string svg =
        SvgBegin(NARROW, LINE * static_cast<int>(meios.size()) + 8, Tr("Sales by payment means"));
    int y = 4;
    for (const VendaMeio& meio : meios) {
        const int width = Fraction(meio.valor.Units(), Greatest(meios), NARROW);
        svg += SvgText("rotulo", 0, y + 12, Cut(NameOrNumber(meio), NAME_COLUMNS));
        svg += SvgText("rotulo fim", NARROW, y + 12, AmountText(meio.valor));
        svg += SvgBar(0, y + 18, std::max(width, 1), 12, Tip(meio));
        y += LINE;
    }
    return svg + "</svg>";
}

} // namespace

std::string ChartByHora(const std::vector<VendaHora>& horas)
{
    return PlotHoras(horas, WIDE, 84, 2) + PlotHoras(horas, NARROW, 76, 4);
}

std::string ChartByMeio(std::vector<VendaMeio> meios)
{
    std::stable_sort(meios.begin(), meios.end(), [](const VendaMeio& a, const VendaMeio& b) {
        return a.valor.Units() > b.valor.Units();
    });
    return PlotMeiosWide(meios) + PlotMeiosNarrow(meios);
}

std::string NameOrNumber(const VendaMeio& meio)
{
    return IsBlank(meio.nome.Shown()) ? "MEIO DE PAGAMENTO " + WithZeros(meio.indice, 2)
                                      : meio.nome.Shown();
}

} // namespace bancada::relatorio

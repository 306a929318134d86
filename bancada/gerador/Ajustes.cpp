#include "bancada/gerador/Ajustes.h"

namespace bancada
{

namespace
{

constexpr std::int64_t MIN_BASE = 200; // cents

const char* OperacaoName(bool desconto)
{
    return desconto ? "desconto" : "acrescimo";
}

// Writes an adjustment of at most 10 % of `base`; answers what it comes to.
std::int64_t WriteAjuste(Shop& shop, const char* comando, bool desconto, std::int64_t base,
                         int item)
{
    LineWriter line = shop.tape.Line(comando);
    line.Text("operacao", OperacaoName(desconto));
    std::int64_t valor = 0;
    if (shop.draw.PerMille(500)) {
        const std::int64_t centesimos = shop.draw.Between(2, 20) * 50;
        line.Text("tipo", "percentual").Decimal("valor", centesimos, 2);
        valor = GeneratedCupom::Percentual(base, centesimos);
    } else {
        valor = shop.draw.Between(1, base / 10);
        line.Text("tipo", "valor").Money("valor", valor);
    }
    if (item > 0) {
        line.Number("item", item);
    }
    return valor;
}

} // namespace

void WriteAjusteItem(Shop& shop, GeneratedCupom& cupom, int numero)
{
    const std::int64_t base = cupom.Item(numero).Liquido();
    if (base < MIN_BASE) {
        return;
    }
    const bool desconto = shop.draw.PerMille(850);
    cupom.AjustaItem(numero, desconto,
                     WriteAjuste(shop, "efetua_desc_acres_item", desconto, base, numero));
    if (shop.draw.PerMille(60)) {
        shop.tape.Line("cancela_desc_acres_item")
            .Text("operacao", OperacaoName(desconto))
            .Number("item", numero);
        cupom.CancelaAjusteItem(numero, desconto);
    }
}

void WriteAjusteSubtotal(Shop& shop, GeneratedCupom& cupom)
{
    const std::int64_t base = cupom.Subtotal();
    if (base < MIN_BASE) {
        return;
    }
    const bool desconto = shop.draw.PerMille(850);
    cupom.AjustaSubtotal(desconto,
                         WriteAjuste(shop, "efetua_desc_acres_subtotal", desconto, base, 0));
    if (shop.draw.PerMille(60)) {
        shop.tape.Line("cancela_desc_acres_subtotal").Text("operacao", OperacaoName(desconto));
        cupom.CancelaAjusteSubtotal();
    }
}

} // namespace bancada

#include "bancada/gerador/Itens.h"

#include "bancada/gerador/Ajustes.h"
#include "bancada/gerador/Mercadorias.h"

namespace bancada
{

namespace
{

// About 6 items: most baskets are small, some are the month's.
int DrawItemCount(Draw& draw)
{
    switch (draw.Weighted({40, 40, 17, 3})) {
    case 0:
        return static_cast<int>(draw.Between(1, 3));
    case 1:
        return static_cast<int>(draw.Between(3, 8));
    case 2:
        return static_cast<int>(draw.Between(8, 16));
    default:
        return static_cast<int>(draw.Between(16, 40));
    }
}

std::int64_t DrawUnits(Draw& draw)
{
    switch (draw.Weighted({70, 18, 12})) {
    case 0:
        return 1;
    case 1:
        return 2;
    default:
        return draw.Between(3, 12);
    }
}

// Answers the item's number.
int WriteItem(Shop& shop, GeneratedCupom& cupom)
{
    Draw& draw = shop.draw;
    const Mercadoria& mercadoria = DrawMercadoria(draw);
    const int decimals = mercadoria.weighed ? 3 : 0;
    const std::int64_t quantidade = mercadoria.weighed ? draw.Between(80, 2500) : DrawUnits(draw);
    const bool arredonda = draw.PerMille(500);
    LineWriter line = shop.tape.Line(draw.PerMille(50) ? "vende_item_detalhado" : "vende_item");
    line.Text("codigo", CodigoDeBarras(mercadoria.codigo))
        .Text("descricao", mercadoria.descricao)
        .Decimal("quantidade", quantidade, decimals)
        .Text("unidade", mercadoria.unidade);
    if (mercadoria.thousandths) {
        line.Decimal("valor_unitario", mercadoria.preco, 3);
    } else {
        line.Money("valor_unitario", mercadoria.preco / 10);
    }
    line.Text("tributacao", mercadoria.tributacao).Number("indice", mercadoria.indice);
    if (arredonda) {
        line.True("arredonda");
    }
    return cupom.VendeItem(quantidade, decimals, mercadoria.preco, arredonda);
}

} // namespace

void WriteItens(Shop& shop, GeneratedCupom& cupom)
{
    for (int count = DrawItemCount(shop.draw); count > 0; --count) {
        const int numero = WriteItem(shop, cupom);
        if (shop.draw.PerMille(15)) {
            WriteAjusteItem(shop, cupom, numero);
        }
        if (cupom.LiveCount() > 1 && shop.draw.PerMille(8)) {
            cupom.CancelaItem(numero);
            shop.tape.Line("cancela_item").Number("item", numero);
        }
    }
}

} // namespace bancada

#include "bancada/gerador/GeneratedCupom.h"

namespace bancada
{

int GeneratedCupom::VendeItem(std::int64_t quantidade, int decimals, std::int64_t preco,
                              bool arredonda)
{
    std::int64_t scale = 10; // thousandths to cents
    for (int i = 0; i < decimals; ++i) {
        scale *= 10;
    }
    GeneratedItem item;
    item.bruto = (quantidade * preco + (arredonda ? scale / 2 : 0)) / scale;
    m_itens.push_back(item);
    return Count();
}

void GeneratedCupom::CancelaItem(int numero)
{
    At(numero).cancelado = true;
}

void GeneratedCupom::AjustaItem(int numero, bool desconto, std::int64_t valor)
{
    (desconto ? At(numero).desconto : At(numero).acrescimo) = valor;
}

void GeneratedCupom::CancelaAjusteItem(int numero, bool desconto)
{
    AjustaItem(numero, desconto, 0);
}

int GeneratedCupom::LiveCount() const
{
    int live = 0;
    for (const GeneratedItem& item : m_itens) {
        live += item.cancelado ? 0 : 1;
    }
    return live;
}

std::int64_t GeneratedCupom::Subtotal() const
{
    std::int64_t sum = 0;
    for (const GeneratedItem& item : m_itens) {
        sum += item.cancelado ? 0 : item.Liquido();
    }
    return sum;
}

} // namespace bancada

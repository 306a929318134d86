#include "bancada/gerador/GeneratedCupom.h"

namespace bancada
{

int GeneratedCupom::Vende(std::int64_t quantidade, int casas, std::int64_t preco, bool arredonda)
{
    std::int64_t escala = 10; // thousandths to cents
    for (int i = 0; i < casas; ++i) {
        escala *= 10;
    }
    GeneratedItem item;
    item.bruto = (quantidade * preco + (arredonda ? escala / 2 : 0)) / escala;
    m_itens.push_back(item);
    return Quantos();
}

void GeneratedCupom::Cancela(int numero)
{
    DoNumero(numero).cancelado = true;
}

void GeneratedCupom::Ajusta(int numero, bool desconto, std::int64_t valor)
{
    (desconto ? DoNumero(numero).desconto : DoNumero(numero).acrescimo) = valor;
}

void GeneratedCupom::CancelaAjuste(int numero, bool desconto)
{
    Ajusta(numero, desconto, 0);
}

int GeneratedCupom::Vivos() const
{
    int vivos = 0;
    for (const GeneratedItem& item : m_itens) {
        vivos += item.cancelado ? 0 : 1;
    }
    return vivos;
}

std::int64_t GeneratedCupom::Subtotal() const
{
    std::int64_t soma = 0;
    for (const GeneratedItem& item : m_itens) {
        soma += item.cancelado ? 0 : item.Liquido();
    }
    return soma;
}

} // namespace bancada

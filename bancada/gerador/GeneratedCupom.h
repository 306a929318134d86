// What a receipt of the tape comes to, kept beside it so that it can be paid.
#pragma once

#include "bancada/gerador/Draw.h"
#include "bancada/gerador/Mercadorias.h"

#include <cstdint>
#include <vector>

namespace bancada
{

struct GeneratedItem {
    std::int64_t bruto = 0; // cents
    std::int64_t desconto = 0;
    std::int64_t acrescimo = 0;
    bool cancelado = false;

    std::int64_t Liquido() const { return bruto + acrescimo - desconto; }
};

// The arithmetic of the register, in cents: totals and percentages cut, unless the sale rounds.
class GeneratedCupom
{
  public:
    // Quantity (in units of 10^-decimals) by unit price (in thousandths); answers the item's
    // number, from 1.
    int VendeItem(std::int64_t quantidade, int decimals, std::int64_t preco, bool arredonda);
    void CancelaItem(int numero);
    void AjustaItem(int numero, bool desconto, std::int64_t valor);
    void CancelaAjusteItem(int numero, bool desconto);
    void AjustaSubtotal(bool desconto, std::int64_t valor) { m_ajuste = desconto ? -valor : valor; }
    void CancelaAjusteSubtotal() { m_ajuste = 0; }

    const GeneratedItem& Item(int numero) const
    {
        return m_itens[static_cast<std::size_t>(numero) - 1];
    }
    int Count() const { return static_cast<int>(m_itens.size()); }
    int LiveCount() const;
    std::int64_t Subtotal() const;
    std::int64_t Total() const { return Subtotal() + m_ajuste; }

    // A percentage, in hundredths, of an amount.
    static std::int64_t Percentual(std::int64_t valor, std::int64_t centesimos)
    {
        return valor * centesimos / 10000;
    }

  private:
    GeneratedItem& At(int numero) { return m_itens[static_cast<std::size_t>(numero) - 1]; }

    std::vector<GeneratedItem> m_itens;
    std::int64_t m_ajuste = 0;
};

} // namespace bancada

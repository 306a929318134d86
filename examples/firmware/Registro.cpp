#include "Registro.h"

#include <cstdint>
#include <cstdio>

bool Registro::AbreCupom()
{
    if (m_aberto) {
        return false;
    }
    m_aberto = true;
    ++m_coo;
    ++m_ccf;
    m_itens = 0;
    m_total = Financial();
    m_pago = Financial();
    return true;
}

bool Registro::VendeItem(int quantidade, int centavos)
{
    if (!m_aberto || !m_pago.IsZero() || m_itens == MAX_ITENS || quantidade <= 0 || centavos <= 0) {
        return false;
    }
    m_item[m_itens++] = {quantidade, centavos};
    m_total += Cupom_GetItemValorTotal(m_itens - 1);
    return true;
}

bool Registro::EfetuaPagamento(int centavos)
{
    if (!m_aberto || m_itens == 0 || m_pago >= m_total || centavos <= 0) {
        return false;
    }
    m_pago += Financial::FromCents(centavos);
    return true;
}

bool Registro::FechaCupom()
{
    if (!m_aberto || m_itens == 0 || m_pago < m_total) {
        return false;
    }
    m_aberto = false;
    return true;
}

int Registro::Contador_Get(FISCALDATA_COUNTER_INDEX contador)
{
    switch (contador) {
    case COUNTER_COO:
        return m_coo;
    case COUNTER_CCF:
        return m_ccf;
    default:
        return 0;
    }
}

char* Registro::Cupom_GetItemQtdeStr(int item, char* out, int size)
{
    std::snprintf(out, static_cast<std::size_t>(size), "%d,000",
                  Holds(item) ? m_item[item].quantidade : 0);
    return out;
}

char* Registro::Cupom_GetItemValorUnitarioStr(int item, char* out, int size)
{
    const int centavos = Holds(item) ? m_item[item].centavos : 0;
    std::snprintf(out, static_cast<std::size_t>(size), "%d,%02d", centavos / 100, centavos % 100);
    return out;
}

Financial Registro::Cupom_GetItemValorTotal(int item)
{
    return Holds(item)
               ? Financial::FromCents(std::int64_t{m_item[item].quantidade} * m_item[item].centavos)
               : Financial();
}

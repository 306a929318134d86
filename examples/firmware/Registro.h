// The device's own data: its counters and the receipt that is being issued.
#pragma once

#include "NeutralData.h"

class Registro : public NeutralData
{
  public:
    // Goes on after the last documents that the database holds.
    void GoOnAfter(int coo, int ccf)
    {
        m_coo = coo;
        m_ccf = ccf;
    }

    // The fiscal acts. Each answers false, and changes nothing, where it is not its turn.
    bool AbreCupom();
    bool VendeItem(int quantidade, int centavos); // centavos: of one piece
    bool EfetuaPagamento(int centavos);
    bool FechaCupom();

    int Contador_Get(FISCALDATA_COUNTER_INDEX contador) override;
    int Cupom_GetCOO() override { return m_coo; }
    int Cupom_GetQuantidadeDeItens() override { return m_itens; }
    char* Cupom_GetItemQtdeStr(int item, char* out, int size) override;
    char* Cupom_GetItemValorUnitarioStr(int item, char* out, int size) override;
    Financial Cupom_GetItemValorTotal(int item) override;
    Financial Cupom_GetSubTotal() override { return m_total; }
    Financial Cupom_GetTotal() override { return m_total; }
    Financial Cupom_GetTroco() override { return m_pago - m_total; }

  private:
    static constexpr int MAX_ITENS = 100;
    struct Item {
        int quantidade;
        int centavos;
    };

    bool Holds(int item) const { return item >= 0 && item < m_itens; }

    int m_coo = 0;
    int m_ccf = 0;
    bool m_aberto = false;
    int m_itens = 0;
    Item m_item[MAX_ITENS] = {};
    Financial m_total;
    Financial m_pago;
};

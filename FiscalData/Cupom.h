// The receipt record of the fiscal data model.
#pragma once

#include "libs/Financial.h"
#include "libs/FirmwareTypes.h"

// One registered item. Values are those of the item as it stands, adjustments applied.
struct ItemCupom {
    Financial m_finValorTotal; // total of the item
    Financial m_finValorDesc;  // discount on it
    Financial m_finValorAcr;   // surcharge on it
};

// One payment.
struct PagamentoCupom {
    int m_iMeioPagamento = 0; // index of the payment means
    Financial m_finValor;
};

// A receipt with its items and payments, by value: a copy shares nothing with its source. Indexes
// count from 0. It is large (about 36 KB), so whoever holds one in a frame needs the stack for it.
struct Cupom {
    static constexpr int MAX_ITENS = 999;
    static constexpr int MAX_PAGAMENTOS = 30;

    int m_iQuantidadeDeItens = 0;
    ItemCupom m_Itens[MAX_ITENS];
    PagamentoCupom m_Pagamentos[MAX_PAGAMENTOS];

    int GetQuantidadeDeItens() const { return m_iQuantidadeDeItens; }

    // Surcharge, discount and total of an item; zero for an index that the receipt does not hold.
    Financial GetItemValorAcr(unsigned int index) const
    {
        return Holds(index) ? m_Itens[index].m_finValorAcr : Financial();
    }
    Financial GetItemValorDesc(unsigned int index) const
    {
        return Holds(index) ? m_Itens[index].m_finValorDesc : Financial();
    }
    Financial GetItemValorTotal(unsigned int index) const
    {
        return Holds(index) ? m_Itens[index].m_finValorTotal : Financial();
    }

  private:
    bool Holds(unsigned int index) const
    {
        return index < MAX_ITENS && m_iQuantidadeDeItens > 0 &&
               index < static_cast<unsigned int>(m_iQuantidadeDeItens);
    }
};

// The receipt that a device's model answers by value.
#include "FiscalData/Cupom.h"

#include "tests/libs/Values.h"

#include <gtest/gtest.h>
#include <memory>

namespace
{

TEST(Cupom, HoldsTheItemsThatItCountsAndNoOther)
{
    const auto receipt = std::make_unique<Cupom>();
    receipt->m_Itens[0].m_finValorTotal = Money("1.00");
    receipt->m_Itens[1].m_finValorTotal = Money("2.00");
    receipt->m_Itens[1].m_finValorAcr = Money("3.00");
    receipt->m_Itens[1].m_finValorDesc = Money("4.00");
    receipt->m_Itens[998].m_finValorTotal = Money("5.00");
    for (const int none : {0, -1}) {
        receipt->m_iQuantidadeDeItens = none;
        EXPECT_EQ(receipt->GetItemValorTotal(0), Financial());
    }
    receipt->m_iQuantidadeDeItens = 1;
    EXPECT_EQ(receipt->GetItemValorTotal(0), Money("1.00"));
    EXPECT_EQ(receipt->GetItemValorTotal(1), Financial());
    EXPECT_EQ(receipt->GetItemValorAcr(1), Financial());
    EXPECT_EQ(receipt->GetItemValorDesc(1), Financial());
    receipt->m_iQuantidadeDeItens = 2;
    EXPECT_EQ(receipt->GetItemValorTotal(1), Money("2.00"));
    EXPECT_EQ(receipt->GetItemValorAcr(1), Money("3.00"));
    EXPECT_EQ(receipt->GetItemValorDesc(1), Money("4.00"));
    receipt->m_iQuantidadeDeItens = 2000;
    EXPECT_EQ(receipt->GetItemValorTotal(998), Money("5.00"));
    EXPECT_EQ(receipt->GetItemValorTotal(999), Financial());
}

} // namespace

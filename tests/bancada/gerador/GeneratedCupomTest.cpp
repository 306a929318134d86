// What a receipt of the tape comes to.
#include "bancada/gerador/GeneratedCupom.h"

#include <gtest/gtest.h>

namespace bancada
{
namespace
{

TEST(GeradorGeneratedCupom, TotalsAsTheRegisterMakesThem)
{
    GeneratedCupom cupom;
    EXPECT_EQ(cupom.VendeItem(1375, 3, 3990, false), 1); // 5.48625
    EXPECT_EQ(cupom.VendeItem(1375, 3, 3990, true), 2);
    EXPECT_EQ(cupom.VendeItem(2, 0, 12495, true), 3); // 24.990
    EXPECT_EQ(cupom.Item(1).bruto, 548);
    EXPECT_EQ(cupom.Item(2).bruto, 549);
    EXPECT_EQ(cupom.Item(3).bruto, 2499);
    cupom.AjustaItem(3, true, 99);
    cupom.AjustaItem(1, false, 2);
    cupom.CancelaItem(2);
    EXPECT_EQ(cupom.Subtotal(), 2950);
    cupom.AjustaSubtotal(true, GeneratedCupom::Percentual(2950, 150));
    EXPECT_EQ(cupom.Total(), 2906);
    cupom.CancelaAjusteSubtotal();
    cupom.CancelaAjusteItem(3, true);
    EXPECT_EQ(cupom.Total(), 3049);
    EXPECT_EQ(cupom.LiveCount(), 2);
}

} // namespace
} // namespace bancada

// The reading side's limits against those of the side that writes.
#include "bancada/leitura/Limits.h"

#include "FiscalData/Cupom.h"
#include "bancada/registro/Limits.h"

#include <gtest/gtest.h>

namespace bancada
{
namespace
{

TEST(Limits, AreThoseOfTheRegister)
{
    EXPECT_EQ(leitura::LAST_COUNTER, MAX_CONTADOR);
    EXPECT_EQ(leitura::MAX_ITENS, Cupom::MAX_ITENS);
    EXPECT_EQ(leitura::MAX_PAGAMENTOS, Cupom::MAX_PAGAMENTOS);
    EXPECT_EQ(leitura::MAX_MEIOS_PAGAMENTO, MAX_MEIOS_PAGAMENTO);
    EXPECT_EQ(leitura::MAX_TOTALIZADORES_NF, MAX_TOTALIZADORES_NF);
}

} // namespace
} // namespace bancada

// The facade: totalizers and the tax on them.
#include "tests/bancada/registro/RegistroTest.h"

namespace bancada
{
namespace
{

class RegistroFacadeTotais : public RegistroTest
{
};

TEST_F(RegistroFacadeTotais, TaxIsTruncatedToCents)
{
    EmiteCupom("0.99"); // 18 % of it is 0.1782
    EXPECT_EQ(Text(registro.Totalizador_GetTotTrib(0, 0, 0)), "0.17");
    EXPECT_EQ(Text(registro.Totalizador_GetSoma_TotTrib(0, 0)), "0.17");
    EXPECT_EQ(Text(registro.Totalizador_GetTotTrib(0, 0, 30)), "0.00");
}

} // namespace
} // namespace bancada

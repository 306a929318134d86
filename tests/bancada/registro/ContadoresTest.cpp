// How the counters move.
#include "bancada/registro/Contadores.h"

#include <gtest/gtest.h>

namespace bancada
{
namespace
{

TEST(RegistroContadores, StartOverAtOneAfterSixDigits)
{
    Memoria memoria;
    memoria.contadores[COUNTER_COO] = 999998;
    EXPECT_EQ(AdvanceContador(memoria, COUNTER_COO), 999999);
    EXPECT_EQ(AdvanceContador(memoria, COUNTER_COO), 1);
    EXPECT_EQ(memoria.contadores[COUNTER_COO], 1);
    EXPECT_EQ(memoria.contadores[COUNTER_CCF], 0);
}

} // namespace
} // namespace bancada

// What the grocer sells.
#include "bancada/gerador/Mercadorias.h"

#include <gtest/gtest.h>

namespace bancada
{
namespace
{

TEST(GeradorMercadorias, BarCodesHaveTheirCheckDigit)
{
    EXPECT_EQ(CodigoDeBarras("400638133393"), "4006381333931");
    EXPECT_EQ(CodigoDeBarras("789600010060"), "7896000100603");
    EXPECT_EQ(CodigoDeBarras("101"), "101");
}

} // namespace
} // namespace bancada

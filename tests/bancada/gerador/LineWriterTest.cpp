// One line of the tape.
#include "bancada/gerador/LineWriter.h"

#include <gtest/gtest.h>

#include <sstream>

namespace bancada
{
namespace
{

TEST(GeradorLineWriter, FieldsAsTheTapeHasThem)
{
    std::ostringstream out;
    {
        LineWriter line(out, "x");
        line.Em(1709164799) // the last second of 28 February of a leap year
            .Em(1709251199)
            .Em(951868800) // 2000-03-01
            .Money("a", 5)
            .Money("b", 123456)
            .Decimal("c", 12, 0)
            .Decimal("d", 80, 3)
            .True("e")
            .Number("f", 1234567);
    }
    EXPECT_EQ(out.str(),
              R"({"cmd":"x","em":"2024-02-28 23:59:59","em":"2024-02-29 23:59:59",)"
              R"("em":"2000-03-01 00:00:00","a":"0.05","b":"1234.56","c":"12","d":"0.080",)"
              R"("e":true,"f":1234567})"
              "\n");
}

} // namespace
} // namespace bancada

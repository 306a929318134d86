// What export and import tell of the values that no source has.
#include "bancada/arquivo/Neutros.h"

#include <gtest/gtest.h>
#include <sstream>

using bancada::arquivo::Neutros;

TEST(NeutrosTest, NoTextSteersTheTerminal)
{
    Neutros neutros;
    neutros.AddField("E15", "no\x1b[2Jme", "not \xC2\x9Bkept");
    neutros.AddMissing("E15", "SANGRIA\r\n", 2);
    std::ostringstream out;
    neutros.Print(out);
    EXPECT_EQ(out.str(), "neutral: E15 no\\x1B[2Jme: not \\xC2\\x9Bkept (1 record)\n"
                         "left out: E15: SANGRIA\\x0D\\x0A (2)\n");
}

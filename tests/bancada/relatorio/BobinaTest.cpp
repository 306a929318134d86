// The strip of paper.
#include "bancada/relatorio/Bobina.h"

#include "bancada/relatorio/DisplayText.h"

#include <gmock/gmock.h>
#include <string>

namespace bancada::relatorio
{
namespace
{

using ::testing::ElementsAre;

TEST(Bobina, NoLineIsWiderThanThePaper)
{
    const std::string longText(200, 'x');
    Bobina papel;
    papel.Print(longText, 4);
    papel.PrintCentered(longText);
    papel.PrintSides(longText, "1,00", 4);
    papel.PrintSides("a", longText);
    papel.PrintSides(std::string(48, 'y'), "1,00");
    for (const std::string& line : papel.Lines()) {
        EXPECT_LE(ColumnCount(line), BOBINA_COLUMNS) << line;
    }
    EXPECT_EQ(papel.Lines().back(), std::string(44, ' ') + "1,00");
}

TEST(Bobina, AmountsAlignWhateverTheAccents)
{
    Bobina papel;
    papel.PrintSides("Maçã", "1,00");
    papel.PrintSides("Maca", "10,00");
    EXPECT_THAT(papel.Lines(), ElementsAre("Maçã" + std::string(40, ' ') + "1,00",
                                           "Maca" + std::string(39, ' ') + "10,00"));
}

} // namespace
} // namespace bancada::relatorio

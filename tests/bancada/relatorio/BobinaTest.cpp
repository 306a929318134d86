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

TEST(Bobina, WhatIsExactlyAsWideAsThePaperTakesOneLine)
{
    Bobina papel;
    papel.PrintSides("a", std::string(BOBINA_COLUMNS, '9'));
    papel.PrintSides(std::string(43, 'b'), "1,00");
    papel.PrintSides(std::string(44, 'c'), "1,00");
    papel.PrintSides(std::string(39, 'd'), "1,00", 4);
    papel.Print(std::string(BOBINA_COLUMNS, 'e'));
    papel.Print(std::string(BOBINA_COLUMNS - 4, 'f'), 4);
    papel.PrintCentered(std::string(BOBINA_COLUMNS - 1, 'g'));
    EXPECT_THAT(papel.Lines(),
                ElementsAre("a", std::string(BOBINA_COLUMNS, '9'), std::string(43, 'b') + " 1,00",
                            std::string(44, 'c'), std::string(44, ' ') + "1,00",
                            "    " + std::string(39, 'd') + " 1,00",
                            std::string(BOBINA_COLUMNS, 'e'),
                            "    " + std::string(BOBINA_COLUMNS - 4, 'f'),
                            std::string(BOBINA_COLUMNS - 1, 'g')));
}

} // namespace
} // namespace bancada::relatorio

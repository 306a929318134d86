// Text forms, as the facade gives them out.
#include "tests/bancada/registro/RegistroTest.h"

#include <cstring>

namespace bancada
{
namespace
{

class RegistroTextForms : public RegistroTest
{
};

TEST_F(RegistroTextForms, TextsHonourTheSizeTheyAreGiven)
{
    registro.SetAplicativo("PDV 1.0");
    char text[16];
    for (int size = 1; size <= 9; ++size) {
        std::memset(text, '#', sizeof text);
        EXPECT_EQ(registro.DadosPDV_GetIdAplicativo(text, size), text);
        EXPECT_EQ(std::string(text),
                  std::string("PDV 1.0").substr(0, static_cast<std::size_t>(size) - 1))
            << size;
        EXPECT_EQ(text[size > 8 ? 8 : size], '#') << size;
    }
    std::memset(text, '#', sizeof text);
    registro.DadosPDV_GetIdAplicativo(text, 0);
    EXPECT_EQ(text[0], '#');
}

} // namespace
} // namespace bancada

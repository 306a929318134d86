// Columns, wrapping and escaping of texts.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bancada/relatorio/Bobina.h"
#include "bancada/relatorio/Texto.h"

namespace bancada::relatorio
{
namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(ShowTexto, AnAccentTakesOneColumn)
{
    EXPECT_EQ(colunas("Maçã"), 4U);
    EXPECT_EQ(colunas("Mac\xCC\xA7\x61\xCC\x83"), 4U); // the same with combining marks
    EXPECT_EQ(colunas("\xF0\x9F\x8D\x8E"), 1U);
}

TEST(ShowTexto, BytesThatAreNoUtf8BecomeOneSubstituteEach)
{
    EXPECT_EQ(utf8(caracteres("p\xE3o")), "p\xEF\xBF\xBDo");             // Latin-1
    EXPECT_EQ(utf8(caracteres("\xC0\xAF")), "\xEF\xBF\xBD\xEF\xBF\xBD"); // overlong
    EXPECT_EQ(colunas("\xED\xA0\x80"), 3U);                              // half a surrogate pair
    EXPECT_EQ(colunas("\xF4\x90\x80\x80"), 4U); // beyond the last character
    EXPECT_EQ(colunas("a\xC3"), 2U);            // cut short
}

TEST(ShowTexto, ControlsDoNotReachATerminal)
{
    EXPECT_EQ(utf8(caracteres("\x1B[2J")), "\xEF\xBF\xBD[2J");
    EXPECT_EQ(utf8(caracteres("a\nb\tc\rd")), "a b c d");
    EXPECT_EQ(utf8(caracteres("\xE2\x80\xAE"
                              "abc")),
              "\xEF\xBF\xBD"
              "abc"); // right to left
    EXPECT_EQ(utf8(caracteres("\xC2\x9B"
                              "2J")),
              "\xEF\xBF\xBD"
              "2J"); // an 8-bit escape
    EXPECT_EQ(utf8(caracteres(std::string("a\0b", 3))), "a\xEF\xBF\xBD"
                                                        "b");
}

TEST(ShowTexto, WrapsAtBlanks)
{
    EXPECT_THAT(quebra("pão de queijo", 6), ElementsAre("pão de", "queijo"));
    EXPECT_THAT(quebra("pão de queijo", 7), ElementsAre("pão de", "queijo"));
    EXPECT_THAT(quebra("  a   b  ", 3), ElementsAre("a", "b"));
    EXPECT_THAT(quebra("açúcar", 6), ElementsAre("açúcar"));
}

TEST(ShowTexto, CutsAWordThatIsTooLong)
{
    EXPECT_THAT(quebra("abcdefgh", 3), ElementsAre("abc", "def", "gh"));
    EXPECT_THAT(quebra("x abcdefgh", 3), ElementsAre("x", "abc", "def", "gh"));
}

TEST(ShowTexto, ABlankTextHasNoLines)
{
    EXPECT_THAT(quebra("", 10), IsEmpty());
    EXPECT_THAT(quebra(" \n ", 10), IsEmpty());
}

TEST(ShowTexto, FormatsCpfAndCnpj)
{
    EXPECT_EQ(formataCpfCnpj("12345678909"), "123.456.789-09");
    EXPECT_EQ(formataCpfCnpj("12345678000195"), "12.345.678/0001-95");
    EXPECT_EQ(formataCpfCnpj("1234567890"), "1234567890");
    EXPECT_EQ(formataCpfCnpj("123.456.789-0"), "123.456.789-0");
}

TEST(ShowTexto, FormatsInstants)
{
    EXPECT_EQ(formataDataHora("2024-03-15 09:12:44"), "15/03/2024 09:12:44");
    EXPECT_EQ(formataDataHora("2024-03-15"), "15/03/2024");
    EXPECT_EQ(formataDataHora("2024-3-15"), "2024-3-15");
    EXPECT_EQ(formataDataHora(""), "");
}

TEST(ShowTexto, EscapesHtml)
{
    EXPECT_EQ(escapaHtml("<b a=\"1\" c='2'>&amp;"),
              "&lt;b a=&quot;1&quot; c=&#39;2&#39;&gt;&amp;amp;");
}

TEST(ShowBobina, NoLineIsWiderThanThePaper)
{
    const std::string longo(200, 'x');
    Bobina papel;
    papel.texto(longo, 4);
    papel.centro(longo);
    papel.lados(longo, "1,00", 4);
    papel.lados("a", longo);
    papel.lados(std::string(48, 'y'), "1,00");
    for (const std::string& linha : papel.linhas()) {
        EXPECT_LE(colunas(linha), LARGURA_BOBINA) << linha;
    }
    EXPECT_EQ(papel.linhas().back(), std::string(44, ' ') + "1,00");
}

TEST(ShowBobina, AmountsAlignWhateverTheAccents)
{
    Bobina papel;
    papel.lados("Maçã", "1,00");
    papel.lados("Maca", "10,00");
    EXPECT_THAT(papel.linhas(), ElementsAre("Maçã" + std::string(40, ' ') + "1,00",
                                            "Maca" + std::string(39, ' ') + "10,00"));
}

} // namespace
} // namespace bancada::relatorio

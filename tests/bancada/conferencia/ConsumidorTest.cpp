// The consumer whom a closing message names.
#include "bancada/conferencia/Consumidor.h"

#include <gtest/gtest.h>

namespace bancada::conferencia
{
namespace
{

TEST(Consumidor, IsNamedByElevenOrFourteenDigitsBehindTheLabel)
{
    EXPECT_EQ(ConsumidorDaMensagem("CNPJ/CPF consumidor: 529.982.247-25 Obrigado 1"),
              "52998224725");
    EXPECT_EQ(ConsumidorDaMensagem("Volte! CNPJ/CPF consumidor:11.222.333/0001-81"),
              "11222333000181");
    EXPECT_EQ(ConsumidorDaMensagem("CNPJ/CPF consumidor:112223330001819"), "11222333000181")
        << "no more than fourteen are read";
}

TEST(Consumidor, IsNobodyWithAnyOtherNumberOfThem)
{
    for (const char* mensagem :
         {"", "Obrigado 52998224725", "CNPJ/CPF consumidor:", "CNPJ/CPF consumidor: ",
          "CNPJ/CPF consumidor: 5299822472", "CNPJ/CPF consumidor: 529982247251",
          "CNPJ/CPF consumidor:  52998224725", "CNPJ/CPF consumidor: 529982247 25"}) {
        EXPECT_EQ(ConsumidorDaMensagem(mensagem), "") << mensagem;
    }
}

TEST(Consumidor, HasCheckDigits)
{
    for (const char* consumidor : {"", "52998224725", "11222333000181"}) {
        EXPECT_TRUE(IsConsumidor(consumidor)) << consumidor;
    }
    for (const char* consumidor : {"52998224726", "52998224735", "11222333000182", "11222333000191",
                                   "5299822472", "529.982.247-25", "x"}) {
        EXPECT_FALSE(IsConsumidor(consumidor)) << consumidor;
    }
}

} // namespace
} // namespace bancada::conferencia

// The signature of a closed document.
#include "bancada/registro/Assinatura.h"

#include "tests/bancada/registro/RegistroTest.h"

namespace bancada
{
namespace
{

class RegistroAssinatura : public RegistroTest
{
};

TEST_F(RegistroAssinatura, SignatureIsTheSHA256OfTheCanonicalText)
{
    registro.ProgramaCNPJ_IE_IM("12345678000195", "", "", "SP");
    registro.ProgramaNrSerie("MARCA", "MODELO", "ECF-IF", "BA0001");
    AbreCupom();
    VendeItem("10.00", "1.500");
    VendeItem("2.00");
    CancelaItem(2);
    AjustaSubtotal(ByValor(DESCONTO, "1.00"));
    EfetuaPagamento(DINHEIRO, "20.00");
    FechaCupom("OBRIGADO");
    EXPECT_EQ(CanonicalText(registro.GetMemoria()),
              "ecf 14:12345678000195 6:BA0001\n"
              "documento 1 1 1 0 1709542800 1709542806\n"
              "consumidor 0: 0: 0:\n"
              "item 3:789 5:ARROZ 5:1,500 2:UN 5:10,00 1:T 1 15.00 0.00 0.00 1.00 0\n"
              "item 3:789 5:ARROZ 1:1 2:UN 4:2,00 1:T 1 2.00 0.00 0.00 0.00 1\n"
              "subtotal 15.00\n"
              "ajuste 0 1.00\n"
              "pagamento 1 20.00\n"
              "total 14.00 6.00\n"
              "mensagem 8:OBRIGADO\n");
    // Of that text, by sha256sum.
    char text[64];
    registro.AssinaturaDigital_GetBase64(
        text, const_cast<char*>(reinterpret_cast<const char*>(registro.GetAssinatura().data())));
    EXPECT_STREQ(text, "krR+YTADqIP8R8GwOlOuH503IMmqLJmGQJji9kEO6O0=");
}

TEST_F(RegistroAssinatura, SignatureChangesWithTheContent)
{
    const auto signature = [this](const char* preco, const std::string& mensagem) {
        Registro other = registro;
        other.AbreCupom({}, RtcAbsoluteTime(NINE));
        other.VendeItem(Item(preco), RtcAbsoluteTime(NINE + 1));
        other.EfetuaPagamento(DINHEIRO, Money("5.00"), RtcAbsoluteTime(NINE + 2));
        other.FechaCupom(mensagem, RtcAbsoluteTime(NINE + 3));
        return other.GetAssinatura();
    };
    EXPECT_EQ(signature("1.00", "A"), signature("1.00", "A"));
    EXPECT_NE(signature("1.00", "A"), signature("1.00", "B"));
    EXPECT_NE(signature("1.00", "A"), signature("1.01", "A"));
}

} // namespace
} // namespace bancada

// The facade's texts, signatures and answers for what is not there.
#include "tests/bancada/RegistroTeste.h"

#include "bancada/registro/Assinatura.h"

#include <cstring>

namespace bancada
{
namespace
{

class RegistroFachada : public RegistroTeste
{
};

TEST_F(RegistroFachada, TextsHonourTheSizeTheyAreGiven)
{
    registro.SetAplicativo("PDV 1.0");
    char texto[16];
    for (int size = 1; size <= 9; ++size) {
        std::memset(texto, '#', sizeof texto);
        EXPECT_EQ(registro.DadosPDV_GetIdAplicativo(texto, size), texto);
        EXPECT_EQ(std::string(texto),
                  std::string("PDV 1.0").substr(0, static_cast<std::size_t>(size) - 1))
            << size;
        EXPECT_EQ(texto[size > 8 ? 8 : size], '#') << size;
    }
    std::memset(texto, '#', sizeof texto);
    registro.DadosPDV_GetIdAplicativo(texto, 0);
    EXPECT_EQ(texto[0], '#');
}

TEST_F(RegistroFachada, PositionsThatNameNothingAreEmpty)
{
    char texto[16];
    EXPECT_EQ(registro.Contador_Get(COUNTER_MAX_SIZE), 0);
    EXPECT_EQ(registro.Contador_Get(static_cast<FISCALDATA_COUNTER_INDEX>(-1)), 0);
    EXPECT_EQ(registro.Cupom_GetCOO(), 0);
    EXPECT_TRUE(registro.Cupom_GetItemValorTotal(0).IsZero());
    EXPECT_TRUE(registro.Cupom_GetItemValorDesc(-1).IsZero());
    EXPECT_TRUE(registro.Cupom_GetItemValorAcr(999).IsZero());
    for (int base : {-1, 1, 3, 4}) {
        EXPECT_TRUE(registro.Totalizador_GetTot(base, 0, 0).IsZero());
    }
    EXPECT_TRUE(registro.Totalizador_GetTot(0, 2, 0).IsZero());
    EXPECT_TRUE(registro.Totalizador_GetTot(0, 0, 39).IsZero());
    EXPECT_EQ(registro.Totalizador_GetTotProgramado(1, 0, 0), 0);
    EXPECT_EQ(registro.Totalizador_GetTotProgramado(0, -1, 0), 0);
    EXPECT_EQ(registro.Totalizador_GetTotProgramado(0, 0, 39), 0);
    EXPECT_EQ(registro.Totalizador_GetTotPercTrib(0, 0, 30), 0);
    EXPECT_EQ(registro.Totalizador_GetTotNFProgramado(0, 0), 0);
    EXPECT_EQ(registro.Totalizador_GetTotNFProgramado(BC_IND_NAO_FISCAL, -1), 0);
    EXPECT_STREQ(registro.Totalizador_GetNomeNF(BC_IND_NAO_FISCAL, 39, texto, 16), "");
    EXPECT_STREQ(registro.BaseFormasPagamento_GetMeioPagamento(20, texto, 16), "");
    EXPECT_TRUE(registro.BaseFormasPagamento_GetFPTotal(-1).IsZero());
    EXPECT_TRUE(registro.Totalizador_GetVB(1).IsZero());
}

TEST_F(RegistroFachada, SearchKeyNamesTheTaxpayerTheRegisterTheDateAndTheDocument)
{
    char texto[64];
    AbreCupom();
    EXPECT_STREQ(registro.CFe_GetChaveDeBusca(texto, sizeof texto),
                 "00000000000000--20240304-000001");
    CancelaCupomEmEmissao();
    registro.ProgramaCNPJ_IE_IM("12345678000195", "", "", "SP");
    registro.ProgramaNrSerie("MARCA", "MODELO", "ECF-IF", "BA0001");
    AbreCupom();
    EXPECT_STREQ(registro.CFe_GetChaveDeBusca(texto, sizeof texto),
                 "12345678000195-BA0001-20240304-000002");
}

TEST_F(RegistroFachada, SignatureIsWrittenAsBase64)
{
    char assinatura[32];
    for (int i = 0; i < 32; ++i) {
        assinatura[i] = static_cast<char>(i + 224);
    }
    char texto[64];
    std::memset(texto, '#', sizeof texto);
    EXPECT_EQ(registro.AssinaturaDigital_GetBase64(texto, assinatura), 44);
    EXPECT_STREQ(texto, "4OHi4+Tl5ufo6err7O3u7/Dx8vP09fb3+Pn6+/z9/v8=");
    EXPECT_EQ(texto[45], '#');
}

TEST_F(RegistroFachada, SignatureIsTheSHA256OfTheCanonicalText)
{
    registro.ProgramaCNPJ_IE_IM("12345678000195", "", "", "SP");
    registro.ProgramaNrSerie("MARCA", "MODELO", "ECF-IF", "BA0001");
    AbreCupom();
    Vende("10.00", "1.500");
    Vende("2.00");
    CancelaItem(2);
    AjustaSubtotal(PorValor(DESCONTO, "1.00"));
    Paga(DINHEIRO, "20.00");
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
    char texto[64];
    registro.AssinaturaDigital_GetBase64(
        texto, const_cast<char*>(reinterpret_cast<const char*>(registro.GetAssinatura().data())));
    EXPECT_STREQ(texto, "krR+YTADqIP8R8GwOlOuH503IMmqLJmGQJji9kEO6O0=");
}

TEST_F(RegistroFachada, SignatureChangesWithTheContent)
{
    const auto assina = [this](const char* preco, const std::string& mensagem) {
        Registro outro = registro;
        outro.AbreCupom({}, RtcAbsoluteTime(NOVE_HORAS));
        outro.VendeItem(Venda(preco), RtcAbsoluteTime(NOVE_HORAS + 1));
        outro.EfetuaPagamento(DINHEIRO, Dinheiro("5.00"), RtcAbsoluteTime(NOVE_HORAS + 2));
        outro.FechaCupom(mensagem, RtcAbsoluteTime(NOVE_HORAS + 3));
        return outro.GetAssinatura();
    };
    EXPECT_EQ(assina("1.00", "A"), assina("1.00", "A"));
    EXPECT_NE(assina("1.00", "A"), assina("1.00", "B"));
    EXPECT_NE(assina("1.00", "A"), assina("1.01", "A"));
}

TEST_F(RegistroFachada, SettingsOfTheBench)
{
    EXPECT_FALSE(registro.GetRatearSubtotal());
    registro.SetRatearSubtotal(true);
    EXPECT_TRUE(registro.GetRatearSubtotal());
    char texto[16];
    EXPECT_STREQ(registro.DadosECF_GetVersaoSB(texto, sizeof texto), "01.00.00");
    registro.SetVersaoSB("01.00.02");
    EXPECT_STREQ(registro.DadosECF_GetVersaoSB(texto, sizeof texto), "01.00.02");
}

TEST_F(RegistroFachada, StateCanBeTakenOutAndPutBack)
{
    AbreCupom();
    Vende("10.00");
    Registro outro(registro.GetMemoria());
    outro.EfetuaPagamento(DINHEIRO, Dinheiro("10.00"), Agora());
    outro.FechaCupom("", Agora());
    EXPECT_EQ(Texto(outro.BaseFormasPagamento_GetFPTotal(0)), "10.00");
    EXPECT_EQ(Meio(DINHEIRO), "0.00");
}

} // namespace
} // namespace bancada

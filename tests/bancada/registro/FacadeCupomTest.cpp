// The facade: the current receipt, its signature and its copy; answers for what is not there.
#include "tests/bancada/registro/RegistroTest.h"

#include <cstring>
#include <memory>

namespace bancada
{
namespace
{

class RegistroFacadeCupom : public RegistroTest
{
};

TEST_F(RegistroFacadeCupom, PositionsThatNameNothingAreEmpty)
{
    char text[16];
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
    EXPECT_STREQ(registro.Totalizador_GetNomeNF(BC_IND_NAO_FISCAL, 39, text, 16), "");
    EXPECT_STREQ(registro.BaseFormasPagamento_GetMeioPagamento(20, text, 16), "");
    EXPECT_TRUE(registro.BaseFormasPagamento_GetFPTotal(-1).IsZero());
    EXPECT_TRUE(registro.Totalizador_GetVB(1).IsZero());
}

TEST_F(RegistroFacadeCupom, SearchKeyNamesTheTaxpayerTheRegisterTheDateAndTheDocument)
{
    char text[64];
    AbreCupom();
    EXPECT_STREQ(registro.CFe_GetChaveDeBusca(text, sizeof text),
                 "00000000000000--20240304-000001");
    CancelaCupomEmEmissao();
    registro.ProgramaCNPJ_IE_IM("12345678000195", "", "", "SP");
    registro.ProgramaNrSerie("MARCA", "MODELO", "ECF-IF", "BA0001");
    AbreCupom();
    EXPECT_STREQ(registro.CFe_GetChaveDeBusca(text, sizeof text),
                 "12345678000195-BA0001-20240304-000002");
}

TEST_F(RegistroFacadeCupom, SignatureIsWrittenAsBase64)
{
    char assinatura[32];
    for (int i = 0; i < 32; ++i) {
        assinatura[i] = static_cast<char>(i + 224);
    }
    char text[64];
    std::memset(text, '#', sizeof text);
    EXPECT_EQ(registro.AssinaturaDigital_GetBase64(text, assinatura), 44);
    EXPECT_STREQ(text, "4OHi4+Tl5ufo6err7O3u7/Dx8vP09fb3+Pn6+/z9/v8=");
    EXPECT_EQ(text[45], '#');
}

class RegistroFacadeRateio : public RegistroTest
{
  protected:
    std::unique_ptr<Cupom> copy = std::make_unique<Cupom>();
};

TEST_F(RegistroFacadeRateio, FillsTheCopyWithItemsAndPayments)
{
    AbreCupom();
    VendeItem("10.00");
    VendeItem("20.00");
    VendeItem("30.00");
    AjustaItem(ByValor(ACRESCIMO, "1.00"), 1);
    AjustaItem(ByValor(DESCONTO, "5.00"), 2);
    CancelaItem(3);
    AjustaSubtotal(ByValor(DESCONTO, "2.60"));
    EfetuaPagamento(CARTAO, "3.40");
    EfetuaPagamento(DINHEIRO, "20.00");
    FechaCupom();

    ASSERT_EQ(registro.Cupom_GetRateioPorItem(copy.get()), 1);
    ASSERT_EQ(copy->GetQuantidadeDeItens(), 3);
    EXPECT_EQ(Text(copy->GetItemValorAcr(0)), "1.00");
    EXPECT_EQ(Text(copy->GetItemValorDesc(0)), "1.10");
    EXPECT_EQ(Text(copy->GetItemValorTotal(0)), "9.90");
    EXPECT_EQ(Text(copy->GetItemValorAcr(1)), "0.00");
    EXPECT_EQ(Text(copy->GetItemValorDesc(1)), "6.50");
    EXPECT_EQ(Text(copy->GetItemValorTotal(1)), "13.50");
    EXPECT_EQ(Text(copy->GetItemValorDesc(2)), "0.00");
    EXPECT_EQ(Text(copy->GetItemValorTotal(2)), "30.00");
    EXPECT_EQ(copy->m_Pagamentos[0].m_iMeioPagamento, 1);
    EXPECT_EQ(Text(copy->m_Pagamentos[0].m_finValor), "3.40");
    EXPECT_EQ(Text(copy->m_Pagamentos[1].m_finValor), "20.00");
}

TEST_F(RegistroFacadeRateio, SurchargeGoesToTheItemsSurcharges)
{
    AbreCupom();
    VendeItem("10.00");
    VendeItem("30.00");
    AjustaSubtotal(ByValor(ACRESCIMO, "4.00"));
    ASSERT_EQ(registro.Cupom_GetRateioPorItem(copy.get()), 1);
    EXPECT_EQ(Text(copy->GetItemValorAcr(0)), "1.00");
    EXPECT_EQ(Text(copy->GetItemValorAcr(1)), "3.00");
    EXPECT_EQ(Text(copy->GetItemValorDesc(0)), "0.00");
    EXPECT_EQ(Text(copy->GetItemValorTotal(1)), "33.00");
}

TEST_F(RegistroFacadeRateio, WithoutAnyReceiptAnswersZero)
{
    EXPECT_EQ(registro.Cupom_GetRateioPorItem(copy.get()), 0);
}

TEST_F(RegistroFacadeRateio, HoldsAFullReceipt)
{
    AbreCupom();
    for (int i = 0; i < 999; ++i) {
        VendeItem("1.00");
    }
    AjustaSubtotal(ByValor(DESCONTO, "10.00"));
    ASSERT_EQ(registro.Cupom_GetRateioPorItem(copy.get()), 1);
    ASSERT_EQ(copy->GetQuantidadeDeItens(), 999);
    // 10.00 / 999 = 0.01001..: one cent each, and the cent left over to the first.
    EXPECT_EQ(Text(copy->GetItemValorDesc(0)), "0.02");
    EXPECT_EQ(Text(copy->GetItemValorDesc(1)), "0.01");
    EXPECT_EQ(Text(copy->GetItemValorDesc(998)), "0.01");
}

} // namespace
} // namespace bancada

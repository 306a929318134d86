// The Z reduction.
#include "tests/bancada/registro/RegistroTest.h"

namespace bancada
{
namespace
{

class RegistroReducaoZ : public RegistroTest
{
};

TEST_F(RegistroReducaoZ, ZMovesTheLiveBasesAndEmptiesThem)
{
    AbreCupom();
    VendeItem("10.00", "1", "T", 1);
    VendeItem("20.00", "1", "S", 1);
    VendeItem("3.00", "1", "F", 1);
    VendeItem("4.00", "1", "T", 2);
    AjustaItem(ByValor(DESCONTO, "1.00"), 1);
    AjustaItem(ByValor(ACRESCIMO, "2.00"), 2);
    CancelaItem(4);
    EfetuaPagamento(DINHEIRO, "50.00");
    FechaCupom();
    AbreCNF();
    VendeItemNF(3, "7.00");
    EfetuaPagamento(CHEQUE, "7.00");
    FechaCNF();
    EXPECT_EQ(Text(registro.Totalizador_GetVB(BC_IND_FISCAL)), "39.00");
    ReducaoZ();

    EXPECT_EQ(Contador(COUNTER_COO), 3);
    EXPECT_EQ(Contador(COUNTER_CRZ), 1);
    EXPECT_EQ(Text(registro.Totalizador_GetTot(2, 0, 0)), "9.00");
    EXPECT_EQ(Text(registro.Totalizador_GetTot(2, 1, 0)), "22.00");
    EXPECT_EQ(Text(registro.Totalizador_GetTot(2, 0, 30)), "3.00");
    EXPECT_EQ(Text(registro.Totalizador_GetSoma_Tot_VL(2, 0)), "12.00");
    EXPECT_EQ(Text(registro.Totalizador_GetSoma_Tot_VL(2, 1)), "22.00");
    EXPECT_EQ(Text(registro.Totalizador_GetSoma_Tot_Desc(2, 0)), "1.00");
    EXPECT_EQ(Text(registro.Totalizador_GetSoma_Tot_Acr(2, 1)), "2.00");
    EXPECT_EQ(Text(registro.Totalizador_GetSoma_Tot_Canc(2, 0)), "4.00");
    EXPECT_EQ(Text(registro.Totalizador_GetTotTrib(2, 0, 0)), "1.62");
    EXPECT_EQ(Text(registro.Totalizador_GetSoma_TotTrib(2, 1)), "1.10");
    EXPECT_EQ(Text(registro.Totalizador_GetVB(BC_IND_FISCAL_ULTIMA_RZ)), "39.00");
    EXPECT_EQ(Text(registro.Totalizador_GetTotalNF(3, 2)), "7.00");
    EXPECT_EQ(GT(), "39.00");
    EXPECT_EQ(Meio(DINHEIRO), "50.00");
    EXPECT_EQ(Meio(CHEQUE), "7.00");
    EXPECT_EQ(Troco(), "16.00");

    EXPECT_EQ(TotalT(1), "0.00");
    EXPECT_EQ(TotalS(1), "0.00");
    EXPECT_EQ(TotalNF(3), "0.00");
    EXPECT_EQ(Descontos(), "0.00");
    EXPECT_EQ(Acrescimos(1), "0.00");
    EXPECT_EQ(Cancelamentos(), "0.00");
    EXPECT_EQ(Text(registro.Totalizador_GetVB(BC_IND_FISCAL)), "0.00");
    EXPECT_EQ(registro.Totalizador_GetTotPercTrib(0, 0, 0), 1800);
    EXPECT_EQ(registro.Totalizador_GetTotPercTrib(2, 0, 0), 1800);
    EXPECT_EQ(registro.Totalizador_GetTotProgramado(2, 0, 30), 1);
    EXPECT_EQ(registro.Totalizador_GetTotProgramado(2, 0, 2), 0);

    now += A_DAY;
    AbreCupom();
    EXPECT_EQ(Meio(DINHEIRO), "0.00");
    EXPECT_EQ(Troco(), "0.00");
    VendeItem("1.00");
    EXPECT_EQ(Text(registro.Totalizador_GetVB(BC_IND_FISCAL)), "1.00");
    EXPECT_EQ(Text(registro.Totalizador_GetVB(BC_IND_FISCAL_ULTIMA_RZ)), "39.00");
}

TEST_F(RegistroReducaoZ, ZIsRefusedWhileADocumentIsOpen)
{
    AbreCupom();
    EXPECT_EQ(Reason(registro.CheckReducaoZ(Now())), "a Cupom Fiscal is open: COO 1");
    CancelaCupomEmEmissao();
    AbreCNF();
    EXPECT_EQ(Reason(registro.CheckReducaoZ(Now())), "a Comprovante Não Fiscal is open: COO 2");
    CancelaCupomEmEmissao();
    registro.AbreGerencial(Now());
    EXPECT_EQ(Reason(registro.CheckReducaoZ(Now())), "a Relatório Gerencial is open");
    FechaCCDGerencial();
    ReducaoZ();
}

} // namespace
} // namespace bancada

// Programming of the register, and the check digits.
#include "tests/bancada/registro/RegistroTest.h"

#include "bancada/CheckDigits.h"

namespace bancada
{
namespace
{

class RegistroProgramacao : public RegistroTest
{
};

TEST_F(RegistroProgramacao, RateGoesToItsNumberOrToTheFirstFreeOne)
{
    ExpectAccepted(registro.CheckProgramaAliquota("T", 12, 725));
    registro.ProgramaAliquota("T", 12, 725);
    EXPECT_EQ(registro.Totalizador_GetTotPercTrib(0, 0, 11), 725);
    EXPECT_EQ(registro.Totalizador_GetTotProgramado(0, 0, 11), 1);
    EXPECT_EQ(registro.Totalizador_GetTotProgramado(0, 0, 10), 0);
    registro.ProgramaAliquota("T", 0, 0); // T1 and T2 are taken
    EXPECT_EQ(registro.Totalizador_GetTotProgramado(0, 0, 2), 1);
    EXPECT_EQ(registro.Totalizador_GetTotPercTrib(0, 0, 2), 0);
}

TEST_F(RegistroProgramacao, RatesOutsideTheTableAreRefused)
{
    EXPECT_EQ(Reason(registro.CheckProgramaAliquota("F", 1, 100)),
              "a rate is of T (ICMS) or S (ISSQN), not F");
    EXPECT_EQ(Reason(registro.CheckProgramaAliquota("S", 31, 100)), "there is no rate S31");
    EXPECT_EQ(Reason(registro.CheckProgramaAliquota("S", -1, 100)), "there is no rate S-1");
    EXPECT_EQ(Reason(registro.CheckProgramaAliquota("S", 1, 10000)),
              "a rate goes from 0.00 to 99.99 %");
    EXPECT_EQ(Reason(registro.CheckProgramaAliquota("S", 1, -1)),
              "a rate goes from 0.00 to 99.99 %");
    for (int i = 0; i < 29; ++i) {
        registro.ProgramaAliquota("S", 0, 100 + i);
    }
    EXPECT_EQ(Reason(registro.CheckProgramaAliquota("S", 0, 100)),
              "all 30 rates of S are programmed");
}

TEST_F(RegistroProgramacao, ARateThatMovedStandsUntilTheZ)
{
    EmiteCupom("10.00");
    EXPECT_EQ(Reason(registro.CheckProgramaAliquota("T", 1, 1700)),
              "the rate T1 has moved on this day: it stands until the Redução Z");
    EXPECT_EQ(Reason(registro.CheckProgramaAliquota("T", 1, 1800)), "");
    ReducaoZ();
    EXPECT_EQ(Reason(registro.CheckProgramaAliquota("T", 1, 1700)), "");
    registro.ProgramaAliquota("T", 1, 1700);
    EXPECT_EQ(registro.Totalizador_GetTotPercTrib(BC_IND_FISCAL, 0, 0), 1700);
    EXPECT_EQ(registro.Totalizador_GetTotPercTrib(BC_IND_FISCAL_ULTIMA_RZ, 0, 0), 1800);
}

TEST_F(RegistroProgramacao, SpecialTotalizersAreEnabledAndDisabled)
{
    char ns[] = "NS";
    const int posicao = registro.ResolveTotIndex(BC_IND_FISCAL_BI_IND_ISSQN, ns, 3);
    EXPECT_EQ(posicao, 38);
    EXPECT_EQ(registro.Totalizador_GetTotProgramado(0, 1, posicao), 0);
    ExpectAccepted(registro.CheckHabilitaTotalizador("NS", 3, true));
    registro.HabilitaTotalizador("NS", 3, true);
    EXPECT_EQ(registro.Totalizador_GetTotProgramado(0, 1, posicao), 1);
    ExpectAccepted(registro.CheckHabilitaTotalizador("NS", 3, false));
    registro.HabilitaTotalizador("NS", 3, false);
    EXPECT_EQ(registro.Totalizador_GetTotProgramado(0, 1, posicao), 0);
    EXPECT_EQ(Reason(registro.CheckHabilitaTotalizador("F", 4, true)), "there is no totalizer F4");
    EXPECT_EQ(Reason(registro.CheckHabilitaTotalizador("T", 1, true)), "there is no totalizer T1");
}

TEST_F(RegistroProgramacao, ASpecialTotalizerThatMovedCannotBeDisabledBeforeTheZ)
{
    AbreCupom();
    VendeItem("1.00", "1", "F", 1);
    EfetuaPagamento(DINHEIRO, "1.00");
    FechaCupom();
    EXPECT_EQ(Reason(registro.CheckHabilitaTotalizador("F", 1, false)),
              "the totalizer F1 has moved on this day: it stands until the Redução Z");
    ReducaoZ();
    ExpectAccepted(registro.CheckHabilitaTotalizador("F", 1, false));
}

TEST_F(RegistroProgramacao, PaymentMeansAndTotalizersHaveTheirNames)
{
    char text[32];
    EXPECT_EQ(registro.BaseFormasPagamento_GetNumeroDeFormasDePagamento(), 20);
    EXPECT_STREQ(registro.BaseFormasPagamento_GetMeioPagamento(1, text, sizeof text), "CARTAO");
    EXPECT_EQ(registro.BaseFormasPagamento_GetMeioPagamentoProgramado(1), 1);
    EXPECT_EQ(registro.BaseFormasPagamento_GetMeioPagamentoProgramado(3), 0);
    EXPECT_EQ(registro.BaseFormasPagamento_GetMeioPagamentoProgramado(20), 0);
    EXPECT_EQ(Reason(registro.CheckProgramaMeioPagamento(21, "VALE", SEM_CCD)),
              "a Meio de Pagamento goes from 1 to 20");
    EXPECT_EQ(Reason(registro.CheckProgramaMeioPagamento(1, "", SEM_CCD)),
              "the description is missing");

    EXPECT_EQ(registro.Totalizador_GetTotNFProgramado(BC_IND_NAO_FISCAL, 0), 1);
    EXPECT_EQ(registro.Totalizador_GetTotNFProgramado(BC_IND_NAO_FISCAL, 2), 1);
    EXPECT_EQ(registro.Totalizador_GetTotNFProgramado(BC_IND_NAO_FISCAL, 38), 0);
    EXPECT_EQ(registro.Totalizador_GetTotNFProgramado(BC_IND_NAO_FISCAL, 39), 0);
    ExpectAccepted(registro.CheckProgramaTotalizadorNF(39, "OUTROS"));
    EXPECT_EQ(Reason(registro.CheckProgramaTotalizadorNF(40, "OUTROS")),
              "a non-fiscal totalizer goes from 1 to 39");
    EXPECT_EQ(Reason(registro.CheckProgramaTotalizadorNF(0, "OUTROS")),
              "a non-fiscal totalizer goes from 1 to 39");
    EXPECT_EQ(Reason(registro.CheckProgramaTotalizadorNF(1, "")), "the description is missing");
}

TEST_F(RegistroProgramacao, TheTillsTotalizersKeepTheirUseUnderAnotherName)
{
    for (const int numero : {NUMERO_NF_FUNDO_TROCO, NUMERO_NF_SANGRIA}) {
        ExpectAccepted(registro.CheckProgramaTotalizadorNF(numero, "X"));
    }
    registro.ProgramaTotalizadorNF(NUMERO_NF_FUNDO_TROCO, "SUPRIMENTO");
    registro.ProgramaTotalizadorNF(NUMERO_NF_SANGRIA, "RETIRADA");
    char nome[32];
    EXPECT_STREQ(registro.Totalizador_GetNomeNF(BC_IND_NAO_FISCAL, 0, nome, sizeof nome),
                 "SUPRIMENTO");
    EXPECT_STREQ(registro.Totalizador_GetNomeNF(BC_IND_NAO_FISCAL, 1, nome, sizeof nome),
                 "RETIRADA");
    MovimentaCaixa(FUNDO_TROCO, "100.00");
    MovimentaCaixa(SANGRIA, "30.00");
    EXPECT_EQ(TotalNF(1), "100.00");
    EXPECT_EQ(TotalNF(2), "30.00");
    EXPECT_EQ(registro.GetMemoria().cupom.itens[0].descricao, "RETIRADA");
    AbreCNF();
    EXPECT_EQ(Reason(registro.CheckVendeItemNF(1, Money("1.00"), Now())),
              "the non-fiscal totalizer 1 is reserved for the till's floats and withdrawals");
}

TEST_F(RegistroProgramacao, OwnerIsReadBack)
{
    registro.ProgramaUsuario("MERCADO LTDA", "MERCADO", "RUA 1");
    char text[32];
    EXPECT_STREQ(registro.DadosContribuinte_GetRazaoSocial(text, sizeof text), "MERCADO LTDA");
    EXPECT_STREQ(registro.DadosContribuinte_GetNomeFantasia(text, sizeof text), "MERCADO");
    EXPECT_STREQ(registro.DadosContribuinte_GetEndereco(text, sizeof text), "RUA 1");
    EXPECT_EQ(Reason(registro.CheckProgramaUsuario("", "MERCADO", "RUA 1")),
              "the Razão Social is missing");
}

TEST_F(RegistroProgramacao, GrandTotalIsKeptWhenTheCNPJChanges)
{
    ExpectAccepted(registro.CheckProgramaCNPJ_IE_IM("12345678000195", "1", "2", "SP"));
    registro.ProgramaCNPJ_IE_IM("12345678000195", "1", "2", "SP");
    EmiteCupom("10.00");
    registro.ProgramaCNPJ_IE_IM("12345678000195", "3", "4", "RJ");
    EXPECT_EQ(Text(registro.Totalizador_GetGTIni(0)), "0.00");
    registro.ProgramaCNPJ_IE_IM("11222333000181", "3", "4", "RJ");
    EmiteCupom("5.00");
    EXPECT_EQ(Text(registro.Totalizador_GetGTIni(0)), "10.00");
    EXPECT_EQ(Text(registro.Totalizador_GetGTIni(1)), "0.00");
    EXPECT_EQ(registro.GetMemoria().contribuinte.ie, "3");
}

TEST_F(RegistroProgramacao, WrongCNPJOrUFIsRefused)
{
    EXPECT_EQ(Reason(registro.CheckProgramaCNPJ_IE_IM("12345678000196", "", "", "SP")),
              "the CNPJ 12345678000196 is wrong");
    EXPECT_EQ(Reason(registro.CheckProgramaCNPJ_IE_IM("", "", "", "SP")), "the CNPJ  is wrong");
    EXPECT_EQ(Reason(registro.CheckProgramaCNPJ_IE_IM("12345678000195", "", "", "XX")),
              "there is no UF XX");
}

TEST_F(RegistroProgramacao, TillNumberIsEmptyUntilProgrammed)
{
    char text[16];
    EXPECT_STREQ(registro.DadosECF_GetNrOrdemSeq(text, sizeof text), "");
    EXPECT_EQ(Reason(registro.CheckProgramaSequenciaECF(0)), "the till number goes from 1 to 999");
    EXPECT_EQ(Reason(registro.CheckProgramaSequenciaECF(1000)),
              "the till number goes from 1 to 999");
    ExpectAccepted(registro.CheckProgramaSequenciaECF(7));
    registro.ProgramaSequenciaECF(7);
    EXPECT_STREQ(registro.DadosECF_GetNrOrdemSeq(text, sizeof text), "7");
    EXPECT_EQ(Reason(registro.CheckProgramaLoja(0)), "the shop's number goes from 1 to 9999");
    ExpectAccepted(registro.CheckProgramaLoja(9999));
}

TEST_F(RegistroProgramacao, IsRefusedWhileADocumentIsOpen)
{
    AbreCupom();
    const std::string reason = "a Cupom Fiscal is open: COO 1";
    EXPECT_EQ(Reason(registro.CheckProgramaAliquota("T", 5, 100)), reason);
    EXPECT_EQ(Reason(registro.CheckHabilitaTotalizador("F", 2, true)), reason);
    EXPECT_EQ(Reason(registro.CheckProgramaMeioPagamento(5, "VALE", SEM_CCD)), reason);
    EXPECT_EQ(Reason(registro.CheckProgramaTotalizadorNF(5, "VALE")), reason);
    EXPECT_EQ(Reason(registro.CheckProgramaLoja(1)), reason);
    EXPECT_EQ(Reason(registro.CheckProgramaSequenciaECF(1)), reason);
    EXPECT_EQ(Reason(registro.CheckProgramaUsuario("A", "B", "C")), reason);
    EXPECT_EQ(Reason(registro.CheckProgramaCNPJ_IE_IM("12345678000195", "", "", "SP")), reason);
    EXPECT_EQ(Reason(registro.CheckProgramaNrSerie("A", "B", "C", "D")), reason);
    EXPECT_EQ(Reason(registro.CheckProgramaMoeda("R$")), reason);
}

} // namespace
} // namespace bancada

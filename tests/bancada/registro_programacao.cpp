// Programming of the register, and the check digits.
#include "tests/bancada/RegistroTeste.h"

#include "bancada/registro/CheckDigits.h"

namespace bancada
{
namespace
{

class RegistroProgramacao : public RegistroTeste
{
};

TEST_F(RegistroProgramacao, RateGoesToItsNumberOrToTheFirstFreeOne)
{
    Accept(registro.CheckProgramaAliquota("T", 12, 725));
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
    EXPECT_EQ(Motivo(registro.CheckProgramaAliquota("F", 1, 100)),
              "a rate is of T (ICMS) or S (ISSQN), not F");
    EXPECT_EQ(Motivo(registro.CheckProgramaAliquota("S", 31, 100)), "there is no rate S31");
    EXPECT_EQ(Motivo(registro.CheckProgramaAliquota("S", -1, 100)), "there is no rate S-1");
    EXPECT_EQ(Motivo(registro.CheckProgramaAliquota("S", 1, 10000)),
              "a rate goes from 0.00 to 99.99 %");
    EXPECT_EQ(Motivo(registro.CheckProgramaAliquota("S", 1, -1)),
              "a rate goes from 0.00 to 99.99 %");
    for (int i = 0; i < 29; ++i) {
        registro.ProgramaAliquota("S", 0, 100 + i);
    }
    EXPECT_EQ(Motivo(registro.CheckProgramaAliquota("S", 0, 100)),
              "all 30 rates of S are programmed");
}

TEST_F(RegistroProgramacao, ARateThatMovedStandsUntilTheZ)
{
    Cupom1("10.00");
    EXPECT_EQ(Motivo(registro.CheckProgramaAliquota("T", 1, 1700)),
              "the rate T1 has moved on this day: it stands until the Redução Z");
    EXPECT_EQ(Motivo(registro.CheckProgramaAliquota("T", 1, 1800)), "");
    ReducaoZ();
    EXPECT_EQ(Motivo(registro.CheckProgramaAliquota("T", 1, 1700)), "");
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
    Accept(registro.CheckHabilitaTotalizador("NS", 3, true));
    registro.HabilitaTotalizador("NS", 3, true);
    EXPECT_EQ(registro.Totalizador_GetTotProgramado(0, 1, posicao), 1);
    Accept(registro.CheckHabilitaTotalizador("NS", 3, false));
    registro.HabilitaTotalizador("NS", 3, false);
    EXPECT_EQ(registro.Totalizador_GetTotProgramado(0, 1, posicao), 0);
    EXPECT_EQ(Motivo(registro.CheckHabilitaTotalizador("F", 4, true)), "there is no totalizer F4");
    EXPECT_EQ(Motivo(registro.CheckHabilitaTotalizador("T", 1, true)), "there is no totalizer T1");
}

TEST_F(RegistroProgramacao, ASpecialTotalizerThatMovedCannotBeDisabledBeforeTheZ)
{
    AbreCupom();
    Vende("1.00", "1", "F", 1);
    Paga(DINHEIRO, "1.00");
    FechaCupom();
    EXPECT_EQ(Motivo(registro.CheckHabilitaTotalizador("F", 1, false)),
              "the totalizer F1 has moved on this day: it stands until the Redução Z");
    ReducaoZ();
    Accept(registro.CheckHabilitaTotalizador("F", 1, false));
}

TEST_F(RegistroProgramacao, EverySpecialTotalizerHasAPlaceOfItsOwn)
{
    struct {
        const char* codigo;
        BASE_CONTABIL_FISCAL_BASE_IMPOSTO_INDEXES imposto;
        int primeira;
    } const casos[] = {
        {"F", BC_IND_FISCAL_BI_IND_ICMS, 30},   {"I", BC_IND_FISCAL_BI_IND_ICMS, 33},
        {"N", BC_IND_FISCAL_BI_IND_ICMS, 36},   {"FS", BC_IND_FISCAL_BI_IND_ISSQN, 30},
        {"IS", BC_IND_FISCAL_BI_IND_ISSQN, 33}, {"NS", BC_IND_FISCAL_BI_IND_ISSQN, 36},
    };
    for (const auto& caso : casos) {
        std::string codigo = caso.codigo;
        for (int numero = 1; numero <= 3; ++numero) {
            EXPECT_EQ(registro.ResolveTotIndex(caso.imposto, codigo.data(), numero),
                      caso.primeira + numero - 1)
                << codigo << numero;
        }
        EXPECT_EQ(registro.ResolveTotIndex(caso.imposto, codigo.data(), 0), -1);
        EXPECT_EQ(registro.ResolveTotIndex(caso.imposto, codigo.data(), 4), -1);
    }
    std::string f = "F";
    EXPECT_EQ(registro.ResolveTotIndex(BC_IND_FISCAL_BI_IND_ISSQN, f.data(), 1), -1);
    std::string t = "T";
    EXPECT_EQ(registro.ResolveTotIndex(BC_IND_FISCAL_BI_IND_ICMS, t.data(), 1), -1);
    EXPECT_EQ(registro.Totalizador_GetTotProgramado(2, 0, -1), 0);
}

TEST_F(RegistroProgramacao, PaymentMeansAndTotalizersHaveTheirNames)
{
    char texto[32];
    EXPECT_EQ(registro.BaseFormasPagamento_GetNumeroDeFormasDePagamento(), 20);
    EXPECT_STREQ(registro.BaseFormasPagamento_GetMeioPagamento(1, texto, sizeof texto), "CARTAO");
    EXPECT_EQ(registro.BaseFormasPagamento_GetMeioPagamentoProgramado(1), 1);
    EXPECT_EQ(registro.BaseFormasPagamento_GetMeioPagamentoProgramado(3), 0);
    EXPECT_EQ(registro.BaseFormasPagamento_GetMeioPagamentoProgramado(20), 0);
    EXPECT_EQ(Motivo(registro.CheckProgramaMeioPagamento(21, "VALE", SEM_CCD)),
              "a Meio de Pagamento goes from 1 to 20");
    EXPECT_EQ(Motivo(registro.CheckProgramaMeioPagamento(1, "", SEM_CCD)),
              "the description is missing");

    EXPECT_EQ(registro.Totalizador_GetTotNFProgramado(BC_IND_NAO_FISCAL, 0), 1);
    EXPECT_EQ(registro.Totalizador_GetTotNFProgramado(BC_IND_NAO_FISCAL, 2), 1);
    EXPECT_EQ(registro.Totalizador_GetTotNFProgramado(BC_IND_NAO_FISCAL, 38), 0);
    EXPECT_EQ(registro.Totalizador_GetTotNFProgramado(BC_IND_NAO_FISCAL, 39), 0);
    Accept(registro.CheckProgramaTotalizadorNF(39, "OUTROS"));
    EXPECT_EQ(Motivo(registro.CheckProgramaTotalizadorNF(40, "OUTROS")),
              "a non-fiscal totalizer goes from 1 to 39");
    EXPECT_EQ(Motivo(registro.CheckProgramaTotalizadorNF(2, "OUTROS")),
              "the non-fiscal totalizers 1 and 2 are the till's and stand as they are");
}

TEST_F(RegistroProgramacao, OwnerIsReadBack)
{
    registro.ProgramaUsuario("MERCADO LTDA", "MERCADO", "RUA 1");
    char texto[32];
    EXPECT_STREQ(registro.DadosContribuinte_GetRazaoSocial(texto, sizeof texto), "MERCADO LTDA");
    EXPECT_STREQ(registro.DadosContribuinte_GetNomeFantasia(texto, sizeof texto), "MERCADO");
    EXPECT_STREQ(registro.DadosContribuinte_GetEndereco(texto, sizeof texto), "RUA 1");
    EXPECT_EQ(Motivo(registro.CheckProgramaUsuario("", "MERCADO", "RUA 1")),
              "the Razão Social is missing");
}

TEST_F(RegistroProgramacao, GrandTotalIsKeptWhenTheCNPJChanges)
{
    Accept(registro.CheckProgramaCNPJ_IE_IM("12345678000195", "1", "2", "SP"));
    registro.ProgramaCNPJ_IE_IM("12345678000195", "1", "2", "SP");
    Cupom1("10.00");
    registro.ProgramaCNPJ_IE_IM("12345678000195", "3", "4", "RJ");
    EXPECT_EQ(Texto(registro.Totalizador_GetGTIni(0)), "0.00");
    registro.ProgramaCNPJ_IE_IM("11222333000181", "3", "4", "RJ");
    Cupom1("5.00");
    EXPECT_EQ(Texto(registro.Totalizador_GetGTIni(0)), "10.00");
    EXPECT_EQ(Texto(registro.Totalizador_GetGTIni(1)), "0.00");
    EXPECT_EQ(registro.GetMemoria().contribuinte.ie, "3");
}

TEST_F(RegistroProgramacao, WrongCNPJOrUFIsRefused)
{
    EXPECT_EQ(Motivo(registro.CheckProgramaCNPJ_IE_IM("12345678000196", "", "", "SP")),
              "the CNPJ 12345678000196 is wrong");
    EXPECT_EQ(Motivo(registro.CheckProgramaCNPJ_IE_IM("", "", "", "SP")), "the CNPJ  is wrong");
    EXPECT_EQ(Motivo(registro.CheckProgramaCNPJ_IE_IM("12345678000195", "", "", "XX")),
              "there is no UF XX");
}

TEST_F(RegistroProgramacao, TillNumberIsEmptyUntilProgrammed)
{
    char texto[16];
    EXPECT_STREQ(registro.DadosECF_GetNrOrdemSeq(texto, sizeof texto), "");
    EXPECT_EQ(Motivo(registro.CheckProgramaSequenciaECF(0)), "the till number goes from 1 to 999");
    EXPECT_EQ(Motivo(registro.CheckProgramaSequenciaECF(1000)),
              "the till number goes from 1 to 999");
    Accept(registro.CheckProgramaSequenciaECF(7));
    registro.ProgramaSequenciaECF(7);
    EXPECT_STREQ(registro.DadosECF_GetNrOrdemSeq(texto, sizeof texto), "7");
    EXPECT_EQ(Motivo(registro.CheckProgramaLoja(0)), "the shop's number goes from 1 to 9999");
    Accept(registro.CheckProgramaLoja(9999));
}

TEST_F(RegistroProgramacao, IsRefusedWhileADocumentIsOpen)
{
    AbreCupom();
    const std::string motivo = "a Cupom Fiscal is open: COO 1";
    EXPECT_EQ(Motivo(registro.CheckProgramaAliquota("T", 5, 100)), motivo);
    EXPECT_EQ(Motivo(registro.CheckHabilitaTotalizador("F", 2, true)), motivo);
    EXPECT_EQ(Motivo(registro.CheckProgramaMeioPagamento(5, "VALE", SEM_CCD)), motivo);
    EXPECT_EQ(Motivo(registro.CheckProgramaTotalizadorNF(5, "VALE")), motivo);
    EXPECT_EQ(Motivo(registro.CheckProgramaLoja(1)), motivo);
    EXPECT_EQ(Motivo(registro.CheckProgramaSequenciaECF(1)), motivo);
    EXPECT_EQ(Motivo(registro.CheckProgramaUsuario("A", "B", "C")), motivo);
    EXPECT_EQ(Motivo(registro.CheckProgramaCNPJ_IE_IM("12345678000195", "", "", "SP")), motivo);
    EXPECT_EQ(Motivo(registro.CheckProgramaNrSerie("A", "B", "C", "D")), motivo);
    EXPECT_EQ(Motivo(registro.CheckProgramaMoeda("R$")), motivo);
}

TEST(RegistroDigitos, RightNumbersAreRight)
{
    EXPECT_TRUE(IsCPF("12345678909"));
    EXPECT_TRUE(IsCPF("52998224725"));
    EXPECT_TRUE(IsCNPJ("12345678000195"));
    EXPECT_TRUE(IsCNPJ("11222333000181"));
}

TEST(RegistroDigitos, EverySingleWrongDigitIsNoticed)
{
    const std::string cpf = "52998224725";
    const std::string cnpj = "11222333000181";
    for (std::size_t i = 0; i < cpf.size(); ++i) {
        for (char c = '0'; c <= '9'; ++c) {
            std::string outro = cpf;
            outro[i] = c;
            EXPECT_EQ(IsCPF(outro), outro == cpf) << outro;
        }
    }
    for (std::size_t i = 0; i < cnpj.size(); ++i) {
        for (char c = '0'; c <= '9'; ++c) {
            std::string outro = cnpj;
            outro[i] = c;
            EXPECT_EQ(IsCNPJ(outro), outro == cnpj) << outro;
        }
    }
}

TEST(RegistroDigitos, OtherTextsAreWrong)
{
    EXPECT_FALSE(IsCPF(""));
    EXPECT_FALSE(IsCPF("00000000000"));
    EXPECT_FALSE(IsCPF("123.456.789-09"));
    EXPECT_FALSE(IsCPF("12345678000195"));
    EXPECT_FALSE(IsCNPJ("00000000000000"));
    EXPECT_FALSE(IsCNPJ("1234567800019"));
    EXPECT_FALSE(IsCNPJ("1234567800019A"));
}

} // namespace
} // namespace bancada

// Programming of rates, totalizers and payment means, from a tape line to the database.
#include "tests/bancada/comandos/ComandoTest.h"

#include <gmock/gmock.h>

namespace
{

using ::testing::ElementsAre;

class ComandoTotalizadores : public ProgrammedComandoTest
{
};

TEST_F(ComandoTotalizadores, ProgrammingMeansAndTotalizersAgainRenamesThem)
{
    Run(R"({"cmd":"insere_meio_pagamento","indice":2,"descricao":"DEBITO"})");
    Run(R"({"cmd":"insere_reg_ope_nf","indice":3,"descricao":"CELULAR"})");
    EXPECT_THAT(Rows("SELECT num_indice, descricao, id_vinculacao_ccd FROM meio_pagamento"),
                ElementsAre("1|DINHEIRO|N", "2|DEBITO|N"));
    EXPECT_THAT(Rows("SELECT num_indice, descricao FROM totalizador_nao_fiscal"),
                ElementsAre("3|CELULAR"));
}

TEST_F(ComandoTotalizadores, TheTillsTotalizersAreNamedLikeAnyOther)
{
    Run(R"({"cmd":"insere_reg_ope_nf","indice":1,"descricao":"SUPRIMENTO"})");
    Run(R"({"cmd":"insere_reg_ope_nf","indice":2,"descricao":"RETIRADA"})");
    EXPECT_THAT(Rows("SELECT num_indice, descricao FROM totalizador_nao_fiscal"),
                ElementsAre("3|RECARGA", "1|SUPRIMENTO", "2|RETIRADA"));
    Run(R"({"cmd":"sangria","operacao":"fundo_troco","valor":"100.00"})");
    Run(R"({"cmd":"reducao_z"})");
    EXPECT_THAT(Rows("SELECT totalizador, valor_base_calculo FROM totalizador_reducao WHERE "
                     "id_fiscal = 'N'"),
                ElementsAre("SUPRIMENTO|100", "RETIRADA|0", "RECARGA|0"));
}

TEST_F(ComandoTotalizadores, CommandsThatLogNothingStillProgramTheRegister)
{
    Run(R"({"cmd":"insere_aliquota","tributacao":"S","percentual":"2.00"})");
    Run(R"({"cmd":"habilita_totalizadores","codigo":"NS","numero":3})");
    Run(R"({"cmd":"programa_loja","numero":12})");
    EXPECT_EQ(registro.Totalizador_GetTotPercTrib(0, 1, 0), 200);
    char ns[] = "NS";
    const int posicao = registro.ResolveTotIndex(BC_IND_FISCAL_BI_IND_ISSQN, ns, 3);
    EXPECT_EQ(registro.Totalizador_GetTotProgramado(0, 1, posicao), 1);
    EXPECT_EQ(registro.GetMemoria().ecf.loja, 12);
    Run(R"({"cmd":"desabilita_totalizadores","codigo":"NS","numero":3})");
    EXPECT_EQ(registro.Totalizador_GetTotProgramado(0, 1, posicao), 0);
    // The rows of the programming that came before, and nothing else.
    EXPECT_EQ(database.Counts().statementsExecuted, 3);
}

} // namespace

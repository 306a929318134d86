// Every other command, from a tape line to the database.
#include "tests/bancada/ComandosTest.h"

#include <gmock/gmock.h>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* DOCUMENTOS =
    "SELECT cont_coo, cont_gnf, cont_grg, cont_cdc, cont_crz, id_tipo_documento FROM "
    "outros_documentos ORDER BY rowid";

class ComandosOutros : public ComandosTest
{
  protected:
    void SetUp() override { Programa(); }
};

TEST_F(ComandosOutros, NonFiscalReceipt)
{
    Roda(R"({"cmd":"abre_cnf","cpf_cnpj":"52998224725","nome":"MARIA"})");
    Roda(R"({"cmd":"vende_item_nf","totalizador":3,"valor":"15.00"})");
    Roda(R"({"cmd":"efetua_pagamento","meio":1,"valor":"20.00"})");
    Roda(R"({"cmd":"fecha_cupom_nf"})");
    EXPECT_THAT(Linhas("SELECT cont_coo, cont_crz, cont_gnf, data_hora_emissao, valor_subtotal, "
                       "valor_total_cupom, nome_consumidor, cpf_cnpj_consumidor FROM cupom_nf"),
                ElementsAre("1|1|1|2024-03-04 08:00:06|15|15|MARIA|52998224725"));
    EXPECT_THAT(Linhas("SELECT seq_item, cont_coo, indice_totalizador_nf, valor_total, "
                       "valor_total_liquido FROM item_cupom_nf"),
                ElementsAre("1|1|3|15|15"));
    EXPECT_THAT(Linhas("SELECT cont_coo, cont_gnf, valor_pagamento FROM pagamento_cupom"),
                ElementsAre("1|1|20"));
    EXPECT_THAT(Linhas("SELECT cont_coo, data_hora_inicio_emissao, data_hora_fim_emissao, "
                       "id_tipo_documento FROM outros_documentos"),
                ElementsAre("1|2024-03-04 08:00:06|2024-03-04 08:00:09|CN"));
}

TEST_F(ComandosOutros, AdjustmentsAndCancellationsOnANonFiscalReceipt)
{
    Roda(R"({"cmd":"abre_cnf"})");
    Roda(R"({"cmd":"vende_item_nf","totalizador":3,"valor":"15.00"})");
    Roda(R"({"cmd":"vende_item_nf","totalizador":3,"valor":"40.00"})");
    Roda(R"({"cmd":"vende_item_nf","totalizador":3,"valor":"7.00"})");
    Roda(R"({"cmd":"efetua_desc_acres_item","operacao":"desconto","tipo":"percentual",)"
         R"("valor":"10","item":1})");
    Roda(R"({"cmd":"efetua_desc_acres_item","operacao":"acrescimo","tipo":"valor",)"
         R"("valor":"2.00","item":2})");
    Roda(R"({"cmd":"cancela_desc_acres_item","operacao":"acrescimo","item":2})");
    Roda(R"({"cmd":"cancela_item","item":3})");
    Roda(R"({"cmd":"efetua_desc_acres_subtotal","operacao":"acrescimo","tipo":"valor",)"
         R"("valor":"3.00"})");
    Roda(R"({"cmd":"cancela_desc_acres_subtotal","operacao":"acrescimo"})");
    Roda(R"({"cmd":"cancela_cupom_em_emissao"})");
    EXPECT_THAT(Linhas("SELECT seq_item, valor_total, valor_total_liquido, perc_desconto, "
                       "valor_desconto, valor_acrescimo, valor_canc_acrescimo, id_cancelado "
                       "FROM item_cupom_nf"),
                ElementsAre("1|15|13.5|10|1.5|0|0|N", "2|40|40|0|0|0|2|N", "3|7|7|0|0|0|0|S"));
    EXPECT_THAT(Linhas("SELECT valor_acrescimo, valor_canc_acrescimo, id_cancelado FROM cupom_nf"),
                ElementsAre("0|3|S"));
}

TEST_F(ComandosOutros, CancellingANonFiscalReceiptHasADocumentOfItsOwn)
{
    Roda(R"({"cmd":"abre_cnf"})");
    Roda(R"({"cmd":"vende_item_nf","totalizador":3,"valor":"15.00"})");
    Roda(R"({"cmd":"efetua_pagamento","meio":1,"valor":"15.00"})");
    Roda(R"({"cmd":"fecha_cupom_nf"})");
    Roda(R"({"cmd":"cancela_cupom"})");
    EXPECT_THAT(Linhas("SELECT cont_coo, id_cancelado FROM cupom_nf"), ElementsAre("1|S"));
    EXPECT_THAT(Linhas(DOCUMENTOS), ElementsAre("1|1|0|0|1|CN", "2|2|0|0|1|NC"));
}

TEST_F(ComandosOutros, FloatAndWithdrawal)
{
    Roda(R"({"cmd":"sangria","operacao":"fundo_troco","valor":"100.00"})");
    Roda(R"({"cmd":"sangria","operacao":"sangria","valor":"30.50"})");
    EXPECT_THAT(
        Linhas("SELECT cont_coo, cont_gnf, valor_subtotal, valor_total_cupom FROM cupom_nf"),
        ElementsAre("1|1|100|100", "2|2|30.5|30.5"));
    EXPECT_THAT(Linhas("SELECT seq_item, cont_coo, indice_totalizador_nf, valor_total_liquido, "
                       "tipo_desconto FROM item_cupom_nf"),
                ElementsAre("1|1|1|100|NULL", "1|2|2|30.5|NULL"));
    EXPECT_THAT(Linhas(DOCUMENTOS), ElementsAre("1|1|0|0|1|CN", "2|2|0|0|1|CN"));
}

TEST_F(ComandosOutros, ReadingsTakeANumberUnlessTheyGoToAFile)
{
    Roda(R"({"cmd":"leitura_x"})");
    Roda(R"({"cmd":"leitura_x","midia":"arquivo"})");
    Roda(R"({"cmd":"leitura_x","midia":"arquivo_dll"})");
    Roda(R"({"cmd":"leitura_mf"})");
    EXPECT_THAT(Linhas(DOCUMENTOS), ElementsAre("1|0|0|0|1|LX", "2|0|0|0|1|LX", "3|0|0|0|1|MF"));
}

TEST_F(ComandosOutros, VoucherAndItsReversal)
{
    Vende();
    Roda(R"({"cmd":"efetua_pagamento","meio":2,"valor":"28.98"})");
    Roda(R"({"cmd":"fecha_cupom"})");
    EXPECT_NE(Recusa(R"({"cmd":"abre_ccd","meio":2,"coo":9})"), "");
    Roda(R"({"cmd":"abre_ccd","meio":2,"coo":1})");
    Roda(R"({"cmd":"fecha_ccd_gerencial"})");
    Roda(R"({"cmd":"abre_estorno_ccd"})");
    Roda(R"({"cmd":"fecha_ccd_gerencial"})");
    EXPECT_THAT(Linhas(DOCUMENTOS), ElementsAre("2|1|0|1|1|CC"));
    EXPECT_THAT(Linhas("SELECT data_hora_inicio_emissao, data_hora_fim_emissao "
                       "FROM outros_documentos"),
                ElementsAre("2024-03-04 08:00:12|2024-03-04 08:00:13"));
    EXPECT_EQ(registro.Contador_Get(COUNTER_COO), 3);
}

TEST_F(ComandosOutros, ManagementReport)
{
    Roda(R"({"cmd":"abre_gerencial"})");
    Roda(R"({"cmd":"fecha_ccd_gerencial"})");
    EXPECT_THAT(Linhas(DOCUMENTOS), ElementsAre("1|1|1|0|1|RG"));
}

TEST_F(ComandosOutros, ZReduction)
{
    EmiteCupom();
    Roda(R"({"cmd":"reducao_z"})");
    EXPECT_THAT(Linhas("SELECT cont_crz, data_movimento, cont_coo, cont_cro, valor_gt, valor_vb, "
                       "valor_base_icms, valor_icms FROM reducao_z"),
                ElementsAre("1|2024-03-04 00:00:00|2|0|28.98|28.98|28.98|5.21"));
    EXPECT_THAT(Linhas("SELECT totalizador, valor_base_calculo, id_fiscal, valor_imposto FROM "
                       "totalizador_reducao"),
                ElementsAre("01T18.00|28.98|S|5.21", "02S05.00|0|S|0", "F1|0|S|0", "DT|0|S|0",
                            "DS|0|S|0", "AT|0|S|0", "AS|0|S|0", "Can-T|0|S|0", "Can-S|0|S|0",
                            "FUNDO DE TROCO|0|N|0", "SANGRIA|0|N|0", "RECARGA|0|N|0"));
    EXPECT_THAT(Linhas("SELECT indice_meio_pagamento, descricao_meio_pagamento, valor_acumulado "
                       "FROM meio_pagamento_reducao"),
                ElementsAre("1|DINHEIRO|30", "2|CARTAO|0", "21|TROCO|1.02"));
    EXPECT_THAT(Linhas(DOCUMENTOS), ElementsAre("2|0|0|0|1|RZ"));
}

TEST_F(ComandosOutros, InterventionModeL)
{
    Roda(R"({"cmd":"entrada_mil_interno"})");
    Roda(R"({"cmd":"saida_mil_interno"})");
    EXPECT_THAT(Linhas("SELECT cont_cro, data_hora_intervencao, id_tipo_intervencao FROM "
                       "intervencao"),
                ElementsAre("0|2024-03-04 08:00:06|L"));
    EXPECT_THAT(Linhas(DOCUMENTOS), ElementsAre("1|0|0|0|1|LX", "2|0|0|0|1|LX"));
    EXPECT_EQ(registro.Contador_Get(COUNTER_CRO), 0);
}

TEST_F(ComandosOutros, InterventionModeTIsARestartOfOperation)
{
    Roda(R"({"cmd":"entrada_mit_interno"})");
    Roda(R"({"cmd":"saida_mit_interno"})");
    EXPECT_THAT(Linhas("SELECT cont_cro, id_tipo_intervencao FROM intervencao"),
                ElementsAre("0|T"));
    EXPECT_THAT(Linhas(DOCUMENTOS), ElementsAre("1|0|0|0|1|LX"));
    EXPECT_EQ(registro.Contador_Get(COUNTER_CRO), 1);
}

TEST_F(ComandosOutros, EveryReprintHasItsOwnNumber)
{
    EmiteCupom();
    Roda(R"({"cmd":"reimprime_mfd","coo_inicial":1,"coo_final":1})");
    Roda(R"({"cmd":"reimprime_mfd","coo_inicial":1,"coo_final":2})");
    EXPECT_THAT(Linhas("SELECT cont_cfd, data_hora_emissao, coo_inicial, coo_final FROM "
                       "fita_detalhe"),
                ElementsAre("1|2024-03-04 08:00:11|1|1", "2|2024-03-04 08:00:12|1|2"));
    EXPECT_EQ(registro.Contador_Get(COUNTER_CFD), 2);
}

TEST_F(ComandosOutros, ProgrammingMeansAndTotalizersAgainRenamesThem)
{
    Roda(R"({"cmd":"insere_meio_pagamento","indice":2,"descricao":"DEBITO"})");
    Roda(R"({"cmd":"insere_reg_ope_nf","indice":3,"descricao":"CELULAR"})");
    EXPECT_THAT(Linhas("SELECT num_indice, descricao, id_vinculacao_ccd FROM meio_pagamento"),
                ElementsAre("1|DINHEIRO|N", "2|DEBITO|N"));
    EXPECT_THAT(Linhas("SELECT num_indice, descricao FROM totalizador_nao_fiscal"),
                ElementsAre("3|CELULAR"));
}

TEST_F(ComandosOutros, CommandsThatLogNothingStillProgramTheRegister)
{
    Roda(R"({"cmd":"insere_aliquota","tributacao":"S","percentual":"2.00"})");
    Roda(R"({"cmd":"habilita_totalizadores","codigo":"NS","numero":3})");
    Roda(R"({"cmd":"programa_loja","numero":12})");
    EXPECT_EQ(registro.Totalizador_GetTotPercTrib(0, 1, 0), 200);
    char ns[] = "NS";
    const int posicao = registro.ResolveTotIndex(BC_IND_FISCAL_BI_IND_ISSQN, ns, 3);
    EXPECT_EQ(registro.Totalizador_GetTotProgramado(0, 1, posicao), 1);
    EXPECT_EQ(registro.GetMemoria().ecf.loja, 12);
    Roda(R"({"cmd":"desabilita_totalizadores","codigo":"NS","numero":3})");
    EXPECT_EQ(registro.Totalizador_GetTotProgramado(0, 1, posicao), 0);
    // The rows of the programming that came before, and nothing else.
    EXPECT_EQ(banco.Counts().statementsExecuted, 3);
}

TEST_F(ComandosOutros, OwnerIsOneRow)
{
    Roda(R"({"cmd":"programa_usuario","razao_social":"FLOR LTDA","nome_fantasia":"FLOR",)"
         R"("endereco":"RUA A, 1"})");
    Roda(R"({"cmd":"programa_cnpj_ie_im","cnpj":"11222333000181","ie":"12","im":"34","uf":"SP"})");
    EXPECT_THAT(Linhas("SELECT seq_usuario, endereco, nome_fantasia, razao_social, cnpj, ie, im, "
                       "uf, data_hora_gravacao, cont_cro, valor_gt FROM dados_usuario"),
                ElementsAre("1|RUA A, 1|FLOR|FLOR LTDA|11222333000181|12|34|SP|"
                            "2024-03-04 08:00:06|0|0"));
}

TEST_F(ComandosOutros, WrongCheckDigitsAreRefused)
{
    EXPECT_NE(Recusa(R"({"cmd":"programa_cnpj_ie_im","cnpj":"11222333000182","ie":"","im":"",)"
                     R"("uf":"SP"})"),
              "");
    EXPECT_NE(Recusa(R"({"cmd":"abre_cupom","cpf_cnpj":"52998224726"})"), "");
}

TEST_F(ComandosOutros, RegisterIdentityAndTillNumber)
{
    Roda(R"({"cmd":"programa_sequencia_ecf","numero":2})");
    Roda(R"({"cmd":"programa_nr_serie","marca":"BANCADA","modelo":"R1","tipo":"ECF-IF",)"
         R"("num_serie":"BN01"})");
    Roda(R"({"cmd":"programa_sequencia_ecf","numero":5})");
    EXPECT_THAT(Linhas("SELECT num_ecf, num_serie, marca, modelo, tipo, num_caixa FROM dados_ecf"),
                ElementsAre("1|BN01|BANCADA|R1|ECF-IF|5"));
    EXPECT_THAT(Linhas("SELECT num_ecf, versao FROM versao_sb"), ElementsAre("1|01.00.00"));
}

TEST_F(ComandosOutros, CurrencyStatementIsAlwaysRejected)
{
    Roda(R"({"cmd":"programa_moeda","simbolo":"R$"})");
    EXPECT_THAT(Linhas("SELECT * FROM moeda"), IsEmpty());
    EXPECT_EQ(banco.Counts().statementsRejected, 1);
    EXPECT_EQ(registro.GetMemoria().ecf.simboloMoeda, "R$");
}

} // namespace

// The commands of a fiscal receipt, from a tape line to the database.
#include "tests/bancada/ComandosTest.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class ComandosRecibo : public ComandosTest
{
  protected:
    void SetUp() override { Programa(); }
};

TEST_F(ComandosRecibo, OpeningWritesTheReceiptAndItsConsumer)
{
    Roda(R"({"cmd":"abre_cupom","cpf_cnpj":"52998224725","nome":"MARIA","endereco":"RUA D'AGUA"})");
    EXPECT_THAT(
        Linhas("SELECT cont_coo, cont_ccf, cont_crz, data_hora_emissao, cpf_cnpj_consumidor, "
               "nome_consumidor, endereco_consumidor, id_cancelado FROM cupom_fiscal"),
        ElementsAre("1|1|1|2024-03-04 08:00:06|52998224725|MARIA|RUA DAGUA,|N"));
}

TEST_F(ComandosRecibo, PlainSaleKeepsTheDecimalsAsWritten)
{
    Roda(R"({"cmd":"abre_cupom"})");
    Roda(R"({"cmd":"vende_item","codigo":"7","descricao":"PAO D'OURO","quantidade":"1.500",)"
         R"("unidade":"KG","valor_unitario":"5.99","tributacao":"T","indice":1})");
    Roda(R"({"cmd":"vende_item","codigo":"8","descricao":"AZEITE","quantidade":"2",)"
         R"("valor_unitario":"3.335","tributacao":"F","indice":1,"arredonda":true})");
    EXPECT_THAT(Linhas("SELECT seq_item, cont_coo, cod_item, descricao, quantidade, aliquota, "
                       "un_medida, valor_unitario, valor_total, casas_decimais_quantidade, "
                       "casas_decimais_valor, id_arred_trunc_valor FROM item_cupom_fiscal"),
                ElementsAre("1|1|7|PAO D`OURO|1.5|01T18.00|KG|5.99|8.98|3|2|T",
                            "2|1|8|AZEITE|2|F1|UN|3.335|6.67|0|3|A"));
}

TEST_F(ComandosRecibo, DetailedSaleWritesAServiceRateWithTheLetterT)
{
    Roda(R"({"cmd":"abre_cupom"})");
    Roda(R"({"cmd":"vende_item_detalhado","codigo":"9","descricao":"CONSERTO","quantidade":"1",)"
         R"("valor_unitario":"50.00","tributacao":"S","indice":2})");
    EXPECT_THAT(Linhas("SELECT seq_item, descricao, aliquota, valor_total FROM item_cupom_fiscal"),
                ElementsAre("1|CONSERTO|02T05.00|50"));
}

TEST_F(ComandosRecibo, DetailedSaleWithAnApostropheLosesItsRowAndSellsAllTheSame)
{
    Roda(R"({"cmd":"abre_cupom"})");
    Roda(R"({"cmd":"vende_item_detalhado","codigo":"9","descricao":"GELEIA D'AMORA",)"
         R"("quantidade":"1","valor_unitario":"50.00","tributacao":"T","indice":1})");
    EXPECT_THAT(Linhas("SELECT * FROM item_cupom_fiscal"), IsEmpty());
    EXPECT_EQ(banco.Counts().statementsRejected, 1);
    EXPECT_EQ(registro.GetMemoria().cupom.itens.size(), 1u);
}

TEST_F(ComandosRecibo, ItemAdjustmentsAndTheirCancellation)
{
    Vende();
    Roda(R"({"cmd":"efetua_desc_acres_item","operacao":"desconto","tipo":"percentual",)"
         R"("valor":"10.50"})");
    Roda(R"({"cmd":"efetua_desc_acres_item","operacao":"acrescimo","tipo":"valor",)"
         R"("valor":"1.00","item":1})");
    const char* const itens =
        "SELECT seq_item, tipo_desconto, perc_desconto, valor_desconto, tipo_acrescimo, "
        "valor_acrescimo, valor_canc_acrescimo, valor_total FROM item_cupom_fiscal";
    // 10.50 % of 8.98 is 0.9429, truncated.
    EXPECT_THAT(Linhas(itens), ElementsAre("1|V|0|0|V|1|0|21", "2|P|10.5|0.94|V|0|0|8.04"));
    Roda(R"({"cmd":"cancela_desc_acres_item","operacao":"desconto","item":2})");
    Roda(R"({"cmd":"cancela_desc_acres_item","operacao":"acrescimo","item":1})");
    EXPECT_THAT(Linhas(itens), ElementsAre("1|V|0|0|V|0|1|20", "2|P|10.5|0|V|0|0|8.98"));
}

TEST_F(ComandosRecibo, SubtotalAdjustmentAndItsCancellation)
{
    Vende();
    Roda(R"({"cmd":"efetua_desc_acres_subtotal","operacao":"acrescimo","tipo":"percentual",)"
         R"("valor":"10"})");
    const char* const cupom = "SELECT tipo_acrescimo, perc_acrescimo, valor_acrescimo, "
                              "valor_canc_acrescimo FROM cupom_fiscal";
    EXPECT_THAT(Linhas(cupom), ElementsAre("P|10|2.89|0"));
    Roda(R"({"cmd":"cancela_desc_acres_subtotal","operacao":"acrescimo"})");
    EXPECT_THAT(Linhas(cupom), ElementsAre("P|10|0|2.89"));
}

TEST_F(ComandosRecibo, PaymentsCarryInstalmentsAndInformation)
{
    Vende();
    Roda(R"({"cmd":"efetua_pagamento","meio":2,"valor":"20.00","parcelas":3,"info":"NSU 7"})");
    Roda(R"({"cmd":"efetua_pagamento","meio":1,"valor":"10"})");
    EXPECT_THAT(Linhas("SELECT cont_coo, cont_gnf, valor_pagamento, num_parcelas, info_adicional, "
                       "indice_meio_pagamento, id_estornado, valor_estornado FROM pagamento_cupom"),
                ElementsAre("1|0|20|3|NSU 7|2|N|0", "1|0|10|1||1|N|0"));
}

TEST_F(ComandosRecibo, ClosingCompletesTheReceipt)
{
    Vende();
    Roda(R"({"cmd":"efetua_desc_acres_subtotal","operacao":"desconto","tipo":"valor",)"
         R"("valor":"0.98"})");
    Roda(R"({"cmd":"efetua_pagamento","meio":1,"valor":"30.00"})");
    Roda(R"({"cmd":"fecha_cupom","mensagem":"Volte! CNPJ/CPF consumidor: 529.982.247-25"})");
    EXPECT_THAT(Linhas("SELECT valor_subtotal, valor_total, valor_troco, cpf_cnpj_consumidor, "
                       "texto_suplementar, id_cupom_adicional FROM cupom_fiscal"),
                ElementsAre("28.98|28|2|52998224725|"
                            "Volte! CNPJ/CPF consumidor: 529.982.247-25|N"));
    EXPECT_THAT(Linhas("SELECT assinatura_documento FROM cupom_fiscal"), ElementsAre(SizeIs(44)));
    // Without the setting the items stay as they were sold.
    EXPECT_THAT(Linhas("SELECT valor_desconto, valor_total FROM item_cupom_fiscal"),
                ElementsAre("0|20", "0|8.98"));
}

TEST_F(ComandosRecibo, ClosingWithTheSettingRewritesEveryItem)
{
    registro.SetRatearSubtotal(true);
    Vende();
    Roda(R"({"cmd":"efetua_desc_acres_subtotal","operacao":"desconto","tipo":"valor",)"
         R"("valor":"0.98"})");
    Roda(R"({"cmd":"efetua_pagamento","meio":1,"valor":"28.00"})");
    Roda(R"({"cmd":"fecha_cupom"})");
    EXPECT_THAT(Linhas("SELECT valor_desconto, valor_total FROM item_cupom_fiscal"),
                ElementsAre("0.68|19.32", "0.3|8.68"));
}

TEST_F(ComandosRecibo, ClosingWithAdditionalReceiptIsRejectedByTheDatabase)
{
    Vende();
    Roda(R"({"cmd":"efetua_pagamento","meio":1,"valor":"28.98"})");
    Roda(R"({"cmd":"fecha_cupom","adicional":true})");
    EXPECT_EQ(banco.Counts().statementsRejected, 1);
    EXPECT_THAT(Linhas("SELECT valor_total, id_cupom_adicional FROM cupom_fiscal"),
                ElementsAre("0|N"));
    EXPECT_EQ(registro.GetMemoria().cupom.situacao, bancada::ESituacaoCupom::FECHADO);
}

TEST_F(ComandosRecibo, CancellingAnItemMarksIt)
{
    Vende();
    Roda(R"({"cmd":"cancela_item","item":1})");
    EXPECT_THAT(Linhas("SELECT seq_item, id_cancelado FROM item_cupom_fiscal"),
                ElementsAre("1|S", "2|N"));
}

TEST_F(ComandosRecibo, CancellingInIssueMarksTheReceipt)
{
    Vende();
    Roda(R"({"cmd":"cancela_cupom_em_emissao"})");
    EXPECT_THAT(Linhas("SELECT cont_coo, id_cancelado FROM cupom_fiscal"), ElementsAre("1|S"));
}

TEST_F(ComandosRecibo, CancellingTheReceiptIssuedLastNeedsNoNumber)
{
    EmiteCupom();
    Roda(R"({"cmd":"cancela_cupom"})");
    EXPECT_THAT(Linhas("SELECT cont_coo, id_cancelado FROM cupom_fiscal"), ElementsAre("1|S"));
    EXPECT_THAT(Linhas("SELECT * FROM outros_documentos"), IsEmpty());
}

TEST_F(ComandosRecibo, CancellingByNumber)
{
    EmiteCupom();
    EXPECT_NE(Recusa(R"({"cmd":"cancela_cupom","coo":7})"), "");
    Roda(R"({"cmd":"cancela_cupom","coo":1})");
    EXPECT_THAT(Linhas("SELECT cont_coo, id_cancelado FROM cupom_fiscal"), ElementsAre("1|S"));
}

TEST_F(ComandosRecibo, ReversingAPaymentMarksItAndAddsTheOther)
{
    Vende();
    Roda(R"({"cmd":"efetua_pagamento","meio":2,"valor":"20.00"})");
    Roda(R"({"cmd":"estorna_meio_pagamento","origem":2,"destino":1,"valor":"20.00",)"
         R"("parcelas":2,"info":"TROCA"})");
    EXPECT_THAT(Linhas("SELECT valor_pagamento, num_parcelas, info_adicional, "
                       "indice_meio_pagamento, id_estornado, valor_estornado FROM pagamento_cupom"),
                ElementsAre("20|1||2|S|20", "20|2|TROCA|1|N|0"));
}

TEST_F(ComandosRecibo, SignatureIsThatOfTheRegister)
{
    Vende();
    Roda(R"({"cmd":"efetua_pagamento","meio":1,"valor":"28.98"})");
    const auto fecha = Le(R"({"cmd":"fecha_cupom"})");
    ASSERT_TRUE(executor.Execute(*fecha, RtcAbsoluteTime(agora)).executed);
    const Command& comando = fecha->GetCommand();
    const auto& assinatura = registro.GetAssinatura();
    EXPECT_TRUE(
        std::equal(assinatura.begin(), assinatura.end(), comando.m_sAssinaturaDigitalDocumento,
                   [](std::uint8_t a, char b) { return a == static_cast<std::uint8_t>(b); }));
    EXPECT_NE(std::count(assinatura.begin(), assinatura.end(), 0), 32);
}

} // namespace

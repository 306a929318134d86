// What the register refuses leaves no trace: neither on the register nor in the database or log.
#include "tests/bancada/ComandosTest.h"

#include <gmock/gmock.h>

namespace
{

class ComandosRecusas : public ComandosTest
{
  protected:
    void SetUp() override { Programa(); }

    // The refusal's text, after checking that nothing else came of the command.
    std::string SemEfeito(const std::string& linha)
    {
        const std::string antes = Retrato(registro);
        const std::int64_t mudancas = sqlite3_total_changes(banco.Handle());
        const std::int64_t executadas = banco.Counts().statementsExecuted;
        const std::int64_t registros = log.Records();
        const std::string motivo = Recusa(linha);
        EXPECT_NE(motivo, "") << linha;
        EXPECT_EQ(Retrato(registro), antes) << linha;
        EXPECT_EQ(sqlite3_total_changes(banco.Handle()), mudancas) << linha;
        EXPECT_EQ(banco.Counts().statementsExecuted, executadas) << linha;
        EXPECT_EQ(banco.Counts().statementsRejected, 0) << linha;
        EXPECT_EQ(log.Records(), registros) << linha;
        return motivo;
    }
};

constexpr const char* PAO =
    R"({"cmd":"vende_item","codigo":"2","descricao":"PAO","quantidade":"1",)"
    R"("valor_unitario":"5.99","tributacao":"T","indice":1})";

TEST_F(ComandosRecusas, WithoutAReceipt)
{
    SemEfeito(PAO);
    SemEfeito(R"({"cmd":"vende_item_detalhado","codigo":"2","descricao":"PAO","quantidade":"1",)"
              R"("valor_unitario":"5.99","tributacao":"T","indice":1})");
    SemEfeito(R"({"cmd":"efetua_pagamento","meio":1,"valor":"1.00"})");
    SemEfeito(R"({"cmd":"fecha_cupom"})");
    SemEfeito(R"({"cmd":"cancela_item","item":1})");
    SemEfeito(R"({"cmd":"cancela_cupom"})");
    SemEfeito(R"({"cmd":"cancela_cupom_em_emissao"})");
    SemEfeito(
        R"({"cmd":"efetua_desc_acres_item","operacao":"desconto","tipo":"valor","valor":"1"})");
    SemEfeito(R"({"cmd":"cancela_desc_acres_item","operacao":"desconto","item":1})");
    SemEfeito(
        R"({"cmd":"efetua_desc_acres_subtotal","operacao":"desconto","tipo":"valor","valor":"1"})");
    SemEfeito(R"({"cmd":"cancela_desc_acres_subtotal","operacao":"desconto"})");
    SemEfeito(R"({"cmd":"vende_item_nf","totalizador":3,"valor":"1.00"})");
    SemEfeito(R"({"cmd":"fecha_cupom_nf"})");
    SemEfeito(R"({"cmd":"estorna_meio_pagamento","origem":1,"destino":2,"valor":"1.00"})");
    SemEfeito(R"({"cmd":"abre_ccd","meio":2})");
    SemEfeito(R"({"cmd":"abre_estorno_ccd"})");
    SemEfeito(R"({"cmd":"fecha_ccd_gerencial"})");
    SemEfeito(R"({"cmd":"reimprime_mfd","coo_inicial":1,"coo_final":1})");
    SemEfeito(R"({"cmd":"saida_mil_interno"})");
    SemEfeito(R"({"cmd":"saida_mit_interno"})");
}

TEST_F(ComandosRecusas, WhileAReceiptIsOpen)
{
    Vende();
    SemEfeito(R"({"cmd":"abre_cupom"})");
    SemEfeito(R"({"cmd":"abre_cnf"})");
    SemEfeito(R"({"cmd":"fecha_cupom"})"); // nothing is paid
    SemEfeito(R"({"cmd":"fecha_cupom_nf"})");
    SemEfeito(R"({"cmd":"leitura_x"})");
    SemEfeito(R"({"cmd":"leitura_mf"})");
    SemEfeito(R"({"cmd":"abre_gerencial"})");
    SemEfeito(R"({"cmd":"reducao_z"})");
    SemEfeito(R"({"cmd":"sangria","operacao":"sangria","valor":"1.00"})");
    SemEfeito(R"({"cmd":"entrada_mil_interno"})");
    SemEfeito(R"({"cmd":"entrada_mit_interno"})");
    SemEfeito(R"({"cmd":"insere_aliquota","tributacao":"T","percentual":"7.00"})");
    SemEfeito(R"({"cmd":"habilita_totalizadores","codigo":"N","numero":1})");
    SemEfeito(R"({"cmd":"desabilita_totalizadores","codigo":"F","numero":1})");
    SemEfeito(R"({"cmd":"insere_meio_pagamento","indice":5,"descricao":"CHEQUE"})");
    SemEfeito(R"({"cmd":"insere_reg_ope_nf","indice":4,"descricao":"LUZ"})");
    SemEfeito(R"({"cmd":"programa_loja","numero":1})");
    SemEfeito(R"({"cmd":"programa_sequencia_ecf","numero":1})");
    SemEfeito(R"({"cmd":"programa_moeda","simbolo":"R$"})");
    SemEfeito(R"({"cmd":"programa_usuario","razao_social":"A","nome_fantasia":"B",)"
              R"("endereco":"C"})");
    SemEfeito(R"({"cmd":"programa_cnpj_ie_im","cnpj":"11222333000181","ie":"1","im":"2",)"
              R"("uf":"SP"})");
    SemEfeito(R"({"cmd":"programa_nr_serie","marca":"A","modelo":"B","tipo":"C",)"
              R"("num_serie":"D"})");
}

TEST_F(ComandosRecusas, WhatTheReceiptDoesNotHold)
{
    Vende();
    SemEfeito(R"({"cmd":"cancela_item","item":3})");
    SemEfeito(R"({"cmd":"vende_item","codigo":"2","descricao":"PAO","quantidade":"1",)"
              R"("valor_unitario":"5.99","tributacao":"T","indice":2})"); // no such rate
    SemEfeito(R"({"cmd":"vende_item","codigo":"2","descricao":"PAO","quantidade":"0",)"
              R"("valor_unitario":"5.99","tributacao":"T","indice":1})");
    SemEfeito(R"({"cmd":"efetua_pagamento","meio":9,"valor":"1.00"})");  // not programmed
    SemEfeito(R"({"cmd":"efetua_pagamento","meio":2,"valor":"28.99"})"); // gives no change
    SemEfeito(R"({"cmd":"efetua_desc_acres_subtotal","operacao":"desconto","tipo":"valor",)"
              R"("valor":"28.99"})");
    SemEfeito(R"({"cmd":"vende_item_nf","totalizador":3,"valor":"1.00"})");
    Roda(R"({"cmd":"efetua_pagamento","meio":1,"valor":"1.00"})");
    SemEfeito(PAO); // the items stand once a payment was made
    SemEfeito(R"({"cmd":"estorna_meio_pagamento","origem":1,"destino":2,"valor":"2.00"})");
}

TEST_F(ComandosRecusas, TotalizersOfTheTillAreNotForSale)
{
    Roda(R"({"cmd":"abre_cnf"})");
    SemEfeito(R"({"cmd":"vende_item_nf","totalizador":1,"valor":"1.00"})");
    SemEfeito(R"({"cmd":"vende_item_nf","totalizador":2,"valor":"1.00"})");
    SemEfeito(R"({"cmd":"vende_item_nf","totalizador":4,"valor":"1.00"})"); // not programmed
}

TEST_F(ComandosRecusas, ReceiptOnADayThatIsClosed)
{
    EmiteCupom();
    Roda(R"({"cmd":"reducao_z"})");
    SemEfeito(R"({"cmd":"abre_cupom"})");
    agora = OITO_HORAS + 24 * 60 * 60;
    Roda(R"({"cmd":"abre_cupom"})");
}

TEST_F(ComandosRecusas, SequenceNumbersCountRefusedCommandsToo)
{
    const auto recusado = Le(PAO);
    EXPECT_FALSE(executor.Execute(*recusado, RtcAbsoluteTime(agora)).executed);
    const auto aceito = Le(R"({"cmd":"leitura_x"})");
    EXPECT_TRUE(executor.Execute(*aceito, RtcAbsoluteTime(agora)).executed);
    EXPECT_EQ(aceito->GetCommand().m_iCmdSeq, recusado->GetCommand().m_iCmdSeq + 1);
}

} // namespace

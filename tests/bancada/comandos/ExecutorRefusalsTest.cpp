// What the register refuses is told with its reason and leaves no trace: neither on the register
// nor in the database or log.
#include "tests/bancada/comandos/ComandoTest.h"

namespace
{

constexpr const char* PAO =
    R"({"cmd":"vende_item","codigo":"2","descricao":"PAO","quantidade":"1",)"
    R"("valor_unitario":"5.99","tributacao":"T","indice":1})";

class ComandoExecutorRefusals : public ProgrammedComandoTest
{
  protected:
    // A command that is refused for `reason`, and nothing else comes of it.
    void ExpectRefused(const std::string& line, const std::string& reason)
    {
        const std::string before = Portrait(registro);
        const std::int64_t changes = sqlite3_total_changes(database.Handle());
        const std::int64_t executed = database.Counts().statementsExecuted;
        const std::int64_t records = log.Records();
        EXPECT_EQ(Refused(line), reason) << line;
        EXPECT_EQ(Portrait(registro), before) << line;
        EXPECT_EQ(sqlite3_total_changes(database.Handle()), changes) << line;
        EXPECT_EQ(database.Counts().statementsExecuted, executed) << line;
        EXPECT_EQ(database.Counts().statementsRejected, 0) << line;
        EXPECT_EQ(log.Records(), records) << line;
    }
};

TEST_F(ComandoExecutorRefusals, WithoutAReceipt)
{
    const char* const noReceipt = "no receipt is open";
    const char* const noCupom = "no Cupom Fiscal is open";
    const char* const noCNF = "no Comprovante Não Fiscal is open";
    const char* const noneIssued = "no receipt was issued";
    ExpectRefused(PAO, noCupom);
    ExpectRefused(R"({"cmd":"vende_item_detalhado","codigo":"2","descricao":"PAO",)"
                  R"("quantidade":"1","valor_unitario":"5.99","tributacao":"T","indice":1})",
                  noCupom);
    ExpectRefused(R"({"cmd":"efetua_pagamento","meio":1,"valor":"1.00"})", noReceipt);
    ExpectRefused(R"({"cmd":"fecha_cupom"})", noCupom);
    ExpectRefused(R"({"cmd":"cancela_item","item":1})", noReceipt);
    ExpectRefused(R"({"cmd":"cancela_cupom"})", noneIssued);
    ExpectRefused(R"({"cmd":"cancela_cupom_em_emissao"})", noReceipt);
    ExpectRefused(R"({"cmd":"efetua_desc_acres_item","operacao":"desconto","tipo":"valor",)"
                  R"("valor":"1"})",
                  noReceipt);
    ExpectRefused(R"({"cmd":"cancela_desc_acres_item","operacao":"desconto","item":1})", noReceipt);
    ExpectRefused(R"({"cmd":"efetua_desc_acres_subtotal","operacao":"desconto","tipo":"valor",)"
                  R"("valor":"1"})",
                  noReceipt);
    ExpectRefused(R"({"cmd":"cancela_desc_acres_subtotal","operacao":"desconto"})", noReceipt);
    ExpectRefused(R"({"cmd":"vende_item_nf","totalizador":3,"valor":"1.00"})", noCNF);
    ExpectRefused(R"({"cmd":"fecha_cupom_nf"})", noCNF);
    ExpectRefused(R"({"cmd":"estorna_meio_pagamento","origem":1,"destino":2,"valor":"1.00"})",
                  noneIssued);
    ExpectRefused(R"({"cmd":"abre_ccd","meio":2})", noneIssued);
    ExpectRefused(R"({"cmd":"abre_estorno_ccd"})", noneIssued);
    ExpectRefused(R"({"cmd":"fecha_ccd_gerencial"})",
                  "no Comprovante de Crédito ou Débito and no Relatório Gerencial is open");
    ExpectRefused(R"({"cmd":"reimprime_mfd","coo_inicial":1,"coo_final":1})",
                  "the last document is COO 0: there is no 1");
    ExpectRefused(R"({"cmd":"saida_mil_interno"})", "the register is not in intervention mode L");
    ExpectRefused(R"({"cmd":"saida_mit_interno"})", "the register is not in intervention mode T");
}

TEST_F(ComandoExecutorRefusals, WhileAReceiptIsOpen)
{
    AbreCupomAndVende();
    ExpectRefused(R"({"cmd":"fecha_cupom"})", "28.98 is still to be paid");
    ExpectRefused(R"({"cmd":"fecha_cupom_nf"})", "no Comprovante Não Fiscal is open");
    for (const char* line : {
             R"({"cmd":"abre_cupom"})",
             R"({"cmd":"abre_cnf"})",
             R"({"cmd":"leitura_x"})",
             R"({"cmd":"leitura_mf"})",
             R"({"cmd":"abre_gerencial"})",
             R"({"cmd":"reducao_z"})",
             R"({"cmd":"sangria","operacao":"sangria","valor":"1.00"})",
             R"({"cmd":"entrada_mil_interno"})",
             R"({"cmd":"entrada_mit_interno"})",
             R"({"cmd":"insere_aliquota","tributacao":"T","percentual":"7.00"})",
             R"({"cmd":"habilita_totalizadores","codigo":"N","numero":1})",
             R"({"cmd":"desabilita_totalizadores","codigo":"F","numero":1})",
             R"({"cmd":"insere_meio_pagamento","indice":5,"descricao":"CHEQUE"})",
             R"({"cmd":"insere_reg_ope_nf","indice":4,"descricao":"LUZ"})",
             R"({"cmd":"programa_loja","numero":1})",
             R"({"cmd":"programa_sequencia_ecf","numero":1})",
             R"({"cmd":"programa_moeda","simbolo":"R$"})",
             R"({"cmd":"programa_usuario","razao_social":"A","nome_fantasia":"B","endereco":"C"})",
             R"({"cmd":"programa_cnpj_ie_im","cnpj":"11222333000181","ie":"1","im":"2","uf":"SP"})",
             R"({"cmd":"programa_nr_serie","marca":"A","modelo":"B","tipo":"C","num_serie":"D"})",
         }) {
        ExpectRefused(line, "a Cupom Fiscal is open: COO 1");
    }
}

TEST_F(ComandoExecutorRefusals, WhatTheReceiptDoesNotHold)
{
    AbreCupomAndVende();
    ExpectRefused(R"({"cmd":"cancela_item","item":3})", "the receipt has no item 3");
    ExpectRefused(R"({"cmd":"vende_item","codigo":"2","descricao":"PAO","quantidade":"1",)"
                  R"("valor_unitario":"5.99","tributacao":"T","indice":2})",
                  "the totalizer T2 is not programmed");
    ExpectRefused(R"({"cmd":"vende_item","codigo":"2","descricao":"PAO","quantidade":"0",)"
                  R"("valor_unitario":"5.99","tributacao":"T","indice":1})",
                  "the quantity must be above zero");
    ExpectRefused(R"({"cmd":"efetua_pagamento","meio":9,"valor":"1.00"})",
                  "Meio de Pagamento 9 is not programmed");
    ExpectRefused(R"({"cmd":"efetua_pagamento","meio":2,"valor":"28.99"})",
                  "Meio de Pagamento 2 gives no change: only 28.98 is due");
    ExpectRefused(R"({"cmd":"efetua_desc_acres_subtotal","operacao":"desconto","tipo":"valor",)"
                  R"("valor":"28.99"})",
                  "the discount must be smaller than what it is taken from");
    ExpectRefused(R"({"cmd":"vende_item_nf","totalizador":3,"valor":"1.00"})",
                  "no Comprovante Não Fiscal is open");
    Run(R"({"cmd":"efetua_pagamento","meio":1,"valor":"1.00"})");
    ExpectRefused(PAO, "the receipt is being paid: its items and its subtotal stand");
    ExpectRefused(R"({"cmd":"estorna_meio_pagamento","origem":1,"destino":2,"valor":"2.00"})",
                  "only 1.00 of the receipt COO 1 can be moved from Meio de Pagamento 1");
}

TEST_F(ComandoExecutorRefusals, TotalizersOfTheTillAreNotForSale)
{
    Run(R"({"cmd":"abre_cnf"})");
    ExpectRefused(R"({"cmd":"vende_item_nf","totalizador":1,"valor":"1.00"})",
                  "the non-fiscal totalizer 1 is reserved for the till's floats and withdrawals");
    ExpectRefused(R"({"cmd":"vende_item_nf","totalizador":2,"valor":"1.00"})",
                  "the non-fiscal totalizer 2 is reserved for the till's floats and withdrawals");
    ExpectRefused(R"({"cmd":"vende_item_nf","totalizador":4,"valor":"1.00"})",
                  "the non-fiscal totalizer 4 is not programmed");
}

TEST_F(ComandoExecutorRefusals, ReceiptOnADayThatIsClosed)
{
    EmiteCupom();
    Run(R"({"cmd":"reducao_z"})");
    ExpectRefused(R"({"cmd":"abre_cupom"})", "the day 2024-03-04 was closed by its Redução Z: "
                                             "nothing is sold on that date any more");
    now = EIGHT + 24 * 60 * 60;
    Run(R"({"cmd":"abre_cupom"})");
}

TEST_F(ComandoExecutorRefusals, SequenceNumbersCountRefusedCommandsToo)
{
    const auto refused = Read(PAO);
    EXPECT_EQ(caixa.Execute(*refused, RtcAbsoluteTime(now)).reason, "no Cupom Fiscal is open");
    const auto accepted = Read(R"({"cmd":"leitura_x"})");
    EXPECT_TRUE(caixa.Execute(*accepted, RtcAbsoluteTime(now)).Executed());
    EXPECT_EQ(accepted->GetCommand().m_iCmdSeq, refused->GetCommand().m_iCmdSeq + 1);
}

} // namespace

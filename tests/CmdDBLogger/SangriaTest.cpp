// A cash withdrawal or a till float.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/LoggerTest.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Sangria : public LoggerTest
{
  protected:
    Sangria()
    {
        fiscal.SetCounter(COUNTER_COO, 1234);
        fiscal.SetCounter(COUNTER_CRZ, 9);
        fiscal.SetCounter(COUNTER_GNF, 56);
        fiscal.SetCounter(COUNTER_GRG, 7);
        fiscal.SetCounter(COUNTER_CDC, 8);
        fiscal.money["Cupom_GetItemValorTotal(0)"] = Money("100.00");
    }

    BOOL Log(int operation)
    {
        auto command = NewCommand<CmdSangria>();
        command.m_eTipoOperacao = static_cast<ETipoOPNF>(operation);
        return command.DBLogger(db);
    }
};

TEST_F(Sangria, FloatIsAReceiptOfOneItemOnTotalizerOne)
{
    EXPECT_EQ(Log(FUNDO_TROCO), TRUE);

    EXPECT_THAT(
        Statements(),
        ElementsAre(
            "INSERT INTO cupom_nf (cont_coo, cont_crz, cont_gnf, num_ecf, data_hora_emissao, valor_subtotal, valor_total_cupom, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, id_cancelado, nome_consumidor, cpf_cnpj_consumidor, perc_acrescimo, perc_desconto) VALUES (1234,10,56,1,'2026-03-02 08:15:30',100.00,100.00,'V',0,'V',0,0,'N','','',0,0)",
            "INSERT INTO item_cupom_nf (seq_item, cont_coo, indice_totalizador_nf, valor_total, valor_total_liquido, valor_acrescimo, valor_desconto, valor_canc_acrescimo, id_cancelado) VALUES (1,1234,1,100.00,100.00,0,0,0,'N')",
            "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (1234,1,56,7,8,9,'2026-03-02 08:15:30','2026-03-02 08:15:30','CN')"));
    EXPECT_THAT(LogEntries(), IsEmpty());
    EXPECT_THAT(Rows("SELECT * FROM cupom_nf"),
                ElementsAre("1234|10|56|1|2026-03-02 08:15:30|100|100|V|0|V|0|0|N|||0|0"));
    EXPECT_THAT(Rows("SELECT * FROM item_cupom_nf"),
                ElementsAre("1|1234|1|100|100|NULL|0|NULL|0|0|N|0|0"));
    EXPECT_THAT(Rows("SELECT * FROM outros_documentos"),
                ElementsAre("1234|1|56|7|8|9|2026-03-02 08:15:30|2026-03-02 08:15:30|CN"));
}

TEST_F(Sangria, WithdrawalIsOnTotalizerTwo)
{
    EXPECT_EQ(Log(SANGRIA), TRUE);
    EXPECT_EQ(
        Statements()[1],
        "INSERT INTO item_cupom_nf (seq_item, cont_coo, indice_totalizador_nf, valor_total, valor_total_liquido, valor_acrescimo, valor_desconto, valor_canc_acrescimo, id_cancelado) VALUES (1,1234,2,100.00,100.00,0,0,0,'N')");
}

TEST_F(Sangria, EveryOperationButTheFloatIsAWithdrawal)
{
    for (const int operation : {2, 3, -1}) {
        Log(operation);
    }
    EXPECT_THAT(Rows("SELECT indice_totalizador_nf FROM item_cupom_nf"),
                ElementsAre("2", "2", "2"));
}

TEST_F(Sangria, AmountIsReadOnceForEachRow)
{
    Log(SANGRIA);
    EXPECT_THAT(fiscal.calls, ElementsAre("Contador_Get(COUNTER_COO)", "Contador_Get(COUNTER_CRZ)",
                                          "Contador_Get(COUNTER_GNF)", "Cupom_GetItemValorTotal(0)",
                                          "Contador_Get(COUNTER_COO)", "Cupom_GetItemValorTotal(0)",
                                          "Contador_Get(COUNTER_COO)", "Contador_Get(COUNTER_GNF)",
                                          "Contador_Get(COUNTER_GRG)", "Contador_Get(COUNTER_CDC)",
                                          "Contador_Get(COUNTER_CRZ)"));
}

TEST_F(Sangria, AmountWithoutAnItemIsZero)
{
    fiscal.money["Cupom_GetItemValorTotal(0)"] = Money("0");
    Log(SANGRIA);
    EXPECT_EQ(
        Statements()[0],
        "INSERT INTO cupom_nf (cont_coo, cont_crz, cont_gnf, num_ecf, data_hora_emissao, valor_subtotal, valor_total_cupom, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, id_cancelado, nome_consumidor, cpf_cnpj_consumidor, perc_acrescimo, perc_desconto) VALUES (1234,10,56,1,'2026-03-02 08:15:30',0.00,0.00,'V',0,'V',0,0,'N','','',0,0)");
    EXPECT_EQ(
        Statements()[1],
        "INSERT INTO item_cupom_nf (seq_item, cont_coo, indice_totalizador_nf, valor_total, valor_total_liquido, valor_acrescimo, valor_desconto, valor_canc_acrescimo, id_cancelado) VALUES (1,1234,2,0.00,0.00,0,0,0,'N')");
}

TEST_F(Sangria, AmountHasNoGroups)
{
    fiscal.money["Cupom_GetItemValorTotal(0)"] = Money("-1234567.89");
    Log(SANGRIA);
    EXPECT_THAT(Rows("SELECT valor_subtotal, valor_total_cupom FROM cupom_nf"),
                ElementsAre("-1234567.89|-1234567.89"));
    EXPECT_THAT(Rows("SELECT valor_total, valor_total_liquido FROM item_cupom_nf"),
                ElementsAre("-1234567.89|-1234567.89"));
    EXPECT_THAT(MoneyRequests(), ElementsAre("500,0,0,0", "500,0,0,0", "500,0,0,0", "500,0,0,0"));
}

// What stands after each of its three executions reports 0.
TEST_F(Sangria, ExecutionThatReportsZeroEndsIt)
{
    for (const int passed : {0, 1, 2}) {
        Forget();
        RejectNextExecutions(1, passed);
        EXPECT_EQ(Log(SANGRIA), 0) << passed;
        EXPECT_EQ(Statements().size(), static_cast<std::size_t>(passed) + 1);
    }
}

TEST_F(Sangria, ExecutionThatReportsAnythingElseGoesOn)
{
    ReportNextExecutions(2, 2);
    EXPECT_EQ(Log(SANGRIA), TRUE);
    EXPECT_EQ(Statements().size(), 3u);
}

TEST_F(Sangria, WithoutTablesAllThreeStatementsAreLogged)
{
    DropTables();
    EXPECT_EQ(Log(SANGRIA), TRUE);
    EXPECT_EQ(Statements().size(), 3u);
    EXPECT_EQ(LogEntries().size(), 6u);
}

} // namespace

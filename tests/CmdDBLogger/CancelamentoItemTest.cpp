// The cancellation of an item.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/LoggerTest.h"

#include <climits>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CancelamentoItem : public LoggerTest
{
  protected:
    CancelamentoItem()
    {
        fiscal.SetCounter(COUNTER_COO, 123);
        fiscal.numbers["Cupom_GetTipoCupom()"] = CUPOM_FISCAL;
        for (const char* table : {"item_cupom_fiscal", "item_cupom_nf"}) {
            Execute(std::string("INSERT INTO ") + table +
                    " (cont_coo, seq_item, id_cancelado) VALUES"
                    " (123,1,'N'), (123,2,'N'), (123,4,'N'), (124,2,'N')");
        }
        command.m_iNumeroItem = 2;
    }

    CmdCancelaItem command = NewCommand<CmdCancelaItem>();

    void SetReceiptType(int type) { fiscal.numbers["Cupom_GetTipoCupom()"] = type; }

    // The cancelled items of a table, as receipt and number.
    std::vector<std::string> CancelledOf(const std::string& table)
    {
        return Rows("SELECT cont_coo, seq_item FROM " + table + " WHERE id_cancelado = 'S'");
    }
};

TEST_F(CancelamentoItem, ItemOfAFiscalReceiptIsMarked)
{
    SetReceiptType(1);

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_EQ(
        Statement(),
        "UPDATE item_cupom_fiscal SET id_cancelado = 'S' where cont_coo = '123' and seq_item = '2'");
    EXPECT_THAT(CancelledOf("item_cupom_fiscal"), ElementsAre("123|2"));
    EXPECT_THAT(CancelledOf("item_cupom_nf"), IsEmpty());
    EXPECT_THAT(fiscal.calls, ElementsAre("Cupom_GetTipoCupom()", "Contador_Get(COUNTER_COO)"));
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(CancelamentoItem, ItemOfANonFiscalReceiptIsMarked)
{
    SetReceiptType(0);
    command.m_iNumeroItem = 4;

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_EQ(
        Statement(),
        "UPDATE item_cupom_nf SET id_cancelado = 'S' where cont_coo = '123' and seq_item = '4'");
    EXPECT_THAT(CancelledOf("item_cupom_nf"), ElementsAre("123|4"));
    EXPECT_THAT(CancelledOf("item_cupom_fiscal"), IsEmpty());
    EXPECT_THAT(fiscal.calls, ElementsAre("Cupom_GetTipoCupom()", "Contador_Get(COUNTER_COO)"));
}

TEST_F(CancelamentoItem, AnyTypeThatIsNotFiscalCountsAsNonFiscal)
{
    for (const int type : {2, -1}) {
        Forget();
        SetReceiptType(type);

        EXPECT_EQ(command.DBLogger(db), 1);

        EXPECT_EQ(
            Statement(),
            "UPDATE item_cupom_nf SET id_cancelado = 'S' where cont_coo = '123' and seq_item = '2'");
    }
}

TEST_F(CancelamentoItem, ItemWithoutARowChangesNothingAndIsNoError)
{
    SetReceiptType(1);
    for (const int number : {0, 3, -1, INT_MIN, INT_MAX}) {
        command.m_iNumeroItem = number;
        EXPECT_EQ(command.DBLogger(db), 1);
    }
    EXPECT_THAT(CancelledOf("item_cupom_fiscal"), IsEmpty());
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(CancelamentoItem, StatementThatTheEngineRejectsIsLogged)
{
    SetReceiptType(1);
    Execute("DROP TABLE item_cupom_fiscal");

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'3', Erro:'no such table: item_cupom_fiscal'",
            "UPDATE item_cupom_fiscal SET id_cancelado = 'S' where cont_coo = '123' and seq_item = '2'"));
}

TEST_F(CancelamentoItem, LeavesTheCommandAsItIs)
{
    const std::string asItWas = BytesOf(command);
    command.DBLogger(db);
    EXPECT_EQ(BytesOf(command), asItWas);
}

TEST_F(CancelamentoItem, AnswersWhatItsExecutionReports)
{
    RejectNextExecutions(1);
    EXPECT_EQ(command.DBLogger(db), 0);
    EXPECT_EQ(command.DBLogger(db), 1);
}

} // namespace

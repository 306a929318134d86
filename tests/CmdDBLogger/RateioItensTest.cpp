// The items of a closed receipt, rewritten with their shares of the subtotal's adjustment.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/EmptyRegister.h"
#include "tests/CmdDBLogger/LoggerTest.h"

#include <functional>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RateioItens : public LoggerTest
{
  protected:
    RateioItens()
    {
        ScriptEmptyReceipt(fiscal);
        fiscal.SetCounter(COUNTER_COO, 120);
        fiscal.numbers["Cupom_GetRateioPorItem()"] = 1;
    }

    CmdFechaCupom command = NewCommand<CmdFechaCupom>();

    void AddItem(const std::string& total, const std::string& discount,
                 const std::string& surcharge)
    {
        ItemCupom& item = fiscal.rateio.m_Itens[fiscal.rateio.m_iQuantidadeDeItens++];
        item.m_finValorTotal = Money(total);
        item.m_finValorDesc = Money(discount);
        item.m_finValorAcr = Money(surcharge);
    }

    // The rows of `count` items, sold with a surcharge and a discount by percentage.
    void SellItems(int count)
    {
        Execute("BEGIN");
        for (int number = 1; number <= count; ++number) {
            Execute("INSERT INTO item_cupom_fiscal (cont_coo, seq_item, tipo_acrescimo,"
                    " perc_acrescimo, tipo_desconto, perc_desconto, id_cancelado) VALUES (120," +
                    std::to_string(number) + ",'P',5,'P',10,'N')");
        }
        Execute("COMMIT");
    }

    std::vector<std::string> Items()
    {
        return Rows("SELECT seq_item, tipo_acrescimo, perc_acrescimo, valor_acrescimo,"
                    " tipo_desconto, perc_desconto, valor_desconto, valor_total, id_cancelado"
                    " FROM item_cupom_fiscal WHERE cont_coo = 120 ORDER BY seq_item");
    }
};

TEST_F(RateioItens, EveryItemOfTheReceiptIsRewrittenTheCancelledOneToo)
{
    SellItems(3);
    Execute("UPDATE item_cupom_fiscal SET id_cancelado = 'S' WHERE seq_item = 2");
    Execute("INSERT INTO item_cupom_fiscal (cont_coo, seq_item, valor_total) VALUES (121,1,7)");
    AddItem("9.00", "1.00", "0.00");
    AddItem("0.00", "0.00", "0.00");
    AddItem("1234.56", "0.01", "2345.67");
    SetRatearSubtotal(1);
    fiscal.numbers["Cupom_GetSTDescAplicado()"] = 1;

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_THAT(
        Statements(),
        ElementsAre(
            "UPDATE cupom_fiscal SET assinatura_documento = '', valor_subtotal = 0.00, valor_total = 0.00, valor_troco = 0.00, texto_suplementar = '', texto_complementar = '', chave_cupom = '' WHERE cont_coo = 120",
            "UPDATE item_cupom_fiscal SET tipo_acrescimo = 'V', perc_acrescimo = 0, valor_acrescimo = 0.00, tipo_desconto = 'V', perc_desconto = 0, valor_desconto = 1.00, valor_total = 9.00 WHERE cont_coo = 120 AND seq_item = 1",
            "UPDATE item_cupom_fiscal SET tipo_acrescimo = 'V', perc_acrescimo = 0, valor_acrescimo = 0.00, tipo_desconto = 'V', perc_desconto = 0, valor_desconto = 0.00, valor_total = 0.00 WHERE cont_coo = 120 AND seq_item = 2",
            "UPDATE item_cupom_fiscal SET tipo_acrescimo = 'V', perc_acrescimo = 0, valor_acrescimo = 2345.67, tipo_desconto = 'V', perc_desconto = 0, valor_desconto = 0.01, valor_total = 1234.56 WHERE cont_coo = 120 AND seq_item = 3"));
    EXPECT_THAT(Items(), ElementsAre("1|V|0|0|V|0|1|9|N", "2|V|0|0|V|0|0|0|S",
                                     "3|V|0|2345.67|V|0|0.01|1234.56|N"));
    EXPECT_THAT(Rows("SELECT valor_total FROM item_cupom_fiscal WHERE cont_coo = 121"),
                ElementsAre("7"));
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(RateioItens, MoneyIsAskedForAsEverywhere)
{
    AddItem("1.00", "2.00", "3.00");

    EXPECT_EQ(command.CalculaRateioItens(db), 1);

    EXPECT_EQ(
        Statement(),
        "UPDATE item_cupom_fiscal SET tipo_acrescimo = 'V', perc_acrescimo = 0, valor_acrescimo = 3.00, tipo_desconto = 'V', perc_desconto = 0, valor_desconto = 2.00, valor_total = 1.00 WHERE cont_coo = 120 AND seq_item = 1");
    EXPECT_THAT(MoneyRequests(), ElementsAre("500,0,0,0", "500,0,0,0", "500,0,0,0"));
}

TEST_F(RateioItens, ShorterStatementIsNotFollowedByTheRestOfALongerOne)
{
    AddItem("1234567.89", "1234567.89", "1234567.89");
    AddItem("1.00", "2.00", "3.00");

    command.CalculaRateioItens(db);

    EXPECT_EQ(
        Statements()[1],
        "UPDATE item_cupom_fiscal SET tipo_acrescimo = 'V', perc_acrescimo = 0, valor_acrescimo = 3.00, tipo_desconto = 'V', perc_desconto = 0, valor_desconto = 2.00, valor_total = 1.00 WHERE cont_coo = 120 AND seq_item = 2");
}

TEST_F(RateioItens, SharesThatCannotBeHadTouchNoRow)
{
    SellItems(1);
    AddItem("9.00", "1.00", "0.00");
    fiscal.numbers["Cupom_GetRateioPorItem()"] = 0;

    EXPECT_EQ(command.CalculaRateioItens(db), 0);

    EXPECT_THAT(Statements(), IsEmpty());
    EXPECT_THAT(fiscal.calls, ElementsAre("Cupom_GetRateioPorItem()"));
    EXPECT_THAT(Items(), ElementsAre("1|P|5|NULL|P|10|NULL|NULL|N"));
}

TEST_F(RateioItens, AnyAnswerBut0IsAnApportionment)
{
    AddItem("9.00", "1.00", "0.00");
    for (const int answer : {1, 2, -1}) {
        Forget();
        fiscal.numbers["Cupom_GetRateioPorItem()"] = answer;
        EXPECT_EQ(command.CalculaRateioItens(db), 1);
        EXPECT_EQ(Statements().size(), 1u);
    }
}

TEST_F(RateioItens, ReceiptWithoutItemsIsRewrittenAtOnce)
{
    for (const int count : {0, -1}) {
        fiscal.rateio.m_iQuantidadeDeItens = count;
        EXPECT_EQ(command.CalculaRateioItens(db), 1);
    }
    EXPECT_THAT(Statements(), IsEmpty());
}

TEST_F(RateioItens, ReceiptsNumberIsAskedOfTheControllerForEveryItemAndNothingElse)
{
    AddItem("1.00", "0.00", "0.00");
    AddItem("2.00", "0.00", "0.00");

    command.CalculaRateioItens(db);

    EXPECT_THAT(fiscal.calls, ElementsAre("Cupom_GetRateioPorItem()", "Contador_Get(COUNTER_COO)",
                                          "Contador_Get(COUNTER_COO)"));
}

TEST_F(RateioItens, ItemThatReports0EndsTheApportionment)
{
    SellItems(3);
    for (int item = 0; item < 3; ++item) {
        AddItem("9.00", "1.00", "0.00");
    }
    RejectNextExecutions(1, 1);

    EXPECT_EQ(command.CalculaRateioItens(db), 0);

    EXPECT_EQ(Statements().size(), 2u);
    EXPECT_THAT(Items(), ElementsAre("1|V|0|0|V|0|1|9|N", "2|V|0|0|V|0|1|9|N",
                                     "3|P|5|NULL|P|10|NULL|NULL|N"));
}

TEST_F(RateioItens, LastItemThatReports0IsAnswered0)
{
    AddItem("9.00", "1.00", "0.00");
    RejectNextExecutions(1);
    EXPECT_EQ(command.CalculaRateioItens(db), 0);
}

TEST_F(RateioItens, RejectedItemsAreLoggedAndTheOthersFollow)
{
    AddItem("1.00", "0.00", "0.00");
    AddItem("2.00", "0.00", "0.00");
    Execute("DROP TABLE item_cupom_fiscal");

    EXPECT_EQ(command.CalculaRateioItens(db), 1);

    const std::string message =
        "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'5', Erro:'no such table: item_cupom_fiscal'";
    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            message,
            "UPDATE item_cupom_fiscal SET tipo_acrescimo = 'V', perc_acrescimo = 0, valor_acrescimo = 0.00, tipo_desconto = 'V', perc_desconto = 0, valor_desconto = 0.00, valor_total = 1.00 WHERE cont_coo = 120 AND seq_item = 1",
            message,
            "UPDATE item_cupom_fiscal SET tipo_acrescimo = 'V', perc_acrescimo = 0, valor_acrescimo = 0.00, tipo_desconto = 'V', perc_desconto = 0, valor_desconto = 0.00, valor_total = 2.00 WHERE cont_coo = 120 AND seq_item = 2"));
}

TEST_F(RateioItens, LongestReceiptIsRewrittenItemByItemInOrder)
{
    SellItems(999);
    for (int number = 1; number <= 999; ++number) {
        AddItem(std::to_string(number) + ".25", std::to_string(number) + ".50", "0.00");
    }
    SetRatearSubtotal(1);
    fiscal.numbers["Cupom_GetSTAcrAplicado()"] = 1;

    EXPECT_EQ(command.DBLogger(db), 1);

    ASSERT_EQ(Statements().size(), 1000u);
    EXPECT_EQ(
        Statements()[0],
        "UPDATE cupom_fiscal SET assinatura_documento = '', valor_subtotal = 0.00, valor_total = 0.00, valor_troco = 0.00, texto_suplementar = '', texto_complementar = '', chave_cupom = '' WHERE cont_coo = 120");
    const std::vector<std::string> items = Items();
    ASSERT_EQ(items.size(), 999u);
    for (std::size_t number = 1; number <= 999; ++number) {
        const std::string n = std::to_string(number);
        EXPECT_EQ(
            Statements()[number],
            "UPDATE item_cupom_fiscal SET tipo_acrescimo = 'V', perc_acrescimo = 0, valor_acrescimo = 0.00, tipo_desconto = 'V', perc_desconto = 0, valor_desconto = " +
                n + ".50, valor_total = " + n + ".25 WHERE cont_coo = 120 AND seq_item = " + n);
        EXPECT_EQ(items[number - 1], n + "|V|0|0|V|0|" + n + ".5|" + n + ".25|N");
    }
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(RateioItens, ItemsBeyondTheRecordAreRewrittenWithZero)
{
    for (int item = 0; item < 999; ++item) {
        AddItem("1.00", "2.00", "3.00");
    }
    fiscal.rateio.m_iQuantidadeDeItens = 1001;

    EXPECT_EQ(command.CalculaRateioItens(db), 1);

    ASSERT_EQ(Statements().size(), 1001u);
    EXPECT_EQ(
        Statements()[999],
        "UPDATE item_cupom_fiscal SET tipo_acrescimo = 'V', perc_acrescimo = 0, valor_acrescimo = 0.00, tipo_desconto = 'V', perc_desconto = 0, valor_desconto = 0.00, valor_total = 0.00 WHERE cont_coo = 120 AND seq_item = 1000");
}

TEST_F(RateioItens, LeavesTheCommandAsItIs)
{
    AddItem("1.00", "2.00", "3.00");
    const std::string asItWas = BytesOf(command);
    command.CalculaRateioItens(db);
    EXPECT_EQ(BytesOf(command), asItWas);
}

// A fiscal data model that does something to the copy it has handed out whenever a counter is read.
class ChangingController : public FakeController
{
  public:
    std::function<void(Cupom&)> change;

    BOOL Cupom_GetRateioPorItem(Cupom* copy) override
    {
        m_copy = copy;
        return FakeController::Cupom_GetRateioPorItem(copy);
    }
    int Contador_Get(FISCALDATA_COUNTER_INDEX contador) override
    {
        change(*m_copy);
        return FakeController::Contador_Get(contador);
    }

  private:
    Cupom* m_copy = nullptr;
};

TEST_F(RateioItens, ItemsAreCountedAgainBeforeEachPass)
{
    ChangingController changing;
    changing.SetCounter(COUNTER_COO, 0);
    changing.numbers["Cupom_GetRateioPorItem()"] = 1;
    changing.rateio.m_iQuantidadeDeItens = 5;
    changing.change = [](Cupom& copy) { --copy.m_iQuantidadeDeItens; };
    command.FDController = &changing;

    EXPECT_EQ(command.CalculaRateioItens(db), 1);

    // After items 1, 2 and 3 there are 4, 3 and 2 left of the five.
    EXPECT_EQ(Statements().size(), 3u);
}

TEST_F(RateioItens, CopyIsTheLoggersOwnAndAskedForOnce)
{
    ChangingController changing;
    changing.SetCounter(COUNTER_COO, 0);
    changing.numbers["Cupom_GetRateioPorItem()"] = 1;
    changing.rateio.m_iQuantidadeDeItens = 2;
    changing.change = [&](Cupom&) { changing.rateio.m_Itens[1].m_finValorTotal = Money("7.00"); };
    changing.rateio.m_Itens[1].m_finValorTotal = Money("2.00");
    command.FDController = &changing;

    command.CalculaRateioItens(db);

    EXPECT_EQ(changing.CallsOf("Cupom_GetRateioPorItem()"), 1);
    EXPECT_EQ(
        Statements()[1],
        "UPDATE item_cupom_fiscal SET tipo_acrescimo = 'V', perc_acrescimo = 0, valor_acrescimo = 0.00, tipo_desconto = 'V', perc_desconto = 0, valor_desconto = 0.00, valor_total = 2.00 WHERE cont_coo = 0 AND seq_item = 2");
}

} // namespace

// Discounts and surcharges on an item, and their cancellation.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/LoggerTest.h"

#include <climits>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// What an adjustment of item 2 leaves: its own statement and, of the item's row, surcharge's kind,
// percentage, value and cancelled value, then discount's kind, percentage and value. `question` is
// what it asks of the item, if anything.
struct ItemCase {
    const char* what;
    FD_TIPO_CUPOM receiptType;
    EOperacao operation;
    ETipoValor kind;
    const char* statement;
    const char* row;
    const char* question;
};

// The receipt of number 77 with an adjusted item 2, in the tables of either type.
class ItemAdjustment : public LoggerTest
{
  protected:
    ItemAdjustment()
    {
        fiscal.SetCounter(COUNTER_COO, 77);
        fiscal.money["Cupom_GetItemValorAcr(1)"] = Money("1.05");
        fiscal.money["Cupom_GetItemValorDesc(1)"] = Money("2.10");
        fiscal.money["Cupom_GetItemValorTotal(1)"] = Money("1234.56");
        FillTables();
    }

    void FillTables()
    {
        for (const std::string table : {"item_cupom_fiscal", "item_cupom_nf"}) {
            Execute("DELETE FROM " + table);
            Execute("INSERT INTO " + table +
                    " (cont_coo, seq_item, valor_total, tipo_acrescimo, perc_acrescimo,"
                    " valor_acrescimo, valor_canc_acrescimo, tipo_desconto, perc_desconto,"
                    " valor_desconto) VALUES"
                    " (77,1,1,'a',11,12,13,'d',14,15), (77,2,1,'a',11,12,13,'d',14,15),"
                    " (78,2,1,'a',11,12,13,'d',14,15)");
        }
    }

    void SetReceiptType(int type) { fiscal.numbers["Cupom_GetTipoCupom()"] = type; }

    // Nothing but item 2 of receipt 77 in `table` was touched.
    void ExpectOtherRowsUntouched(const std::string& table)
    {
        for (const std::string name : {"item_cupom_fiscal", "item_cupom_nf"}) {
            EXPECT_THAT(
                Rows("SELECT count(*) FROM " + name +
                     " WHERE valor_total = 1 AND tipo_acrescimo = 'a' AND perc_acrescimo = 11"
                     " AND valor_acrescimo = 12 AND valor_canc_acrescimo = 13 AND"
                     " tipo_desconto = 'd' AND perc_desconto = 14 AND valor_desconto = 15" +
                     (name == "item_cupom_nf" ? " AND valor_total_liquido IS NULL" : "") +
                     (name == table ? " AND NOT (cont_coo = 77 AND seq_item = 2)" : "")),
                ElementsAre(name == table ? "2" : "3"));
        }
    }

    // Logs a command whose case is set, and holds statements, rows and questions to the case.
    void ExpectCase(Command& command, const ItemCase& expected)
    {
        SCOPED_TRACE(expected.what);
        const bool isFiscal = expected.receiptType == CUPOM_FISCAL;
        FillTables();
        Forget();

        EXPECT_EQ(command.DBLogger(db), TRUE);

        EXPECT_THAT(Statements(),
                    ElementsAre(expected.statement, isFiscal ? fiscalTotal : nonFiscalTotal));
        EXPECT_THAT(LogEntries(), IsEmpty());

        const std::string table = isFiscal ? "item_cupom_fiscal" : "item_cupom_nf";
        EXPECT_THAT(
            Rows("SELECT tipo_acrescimo, perc_acrescimo, valor_acrescimo,"
                 " valor_canc_acrescimo, tipo_desconto, perc_desconto, valor_desconto FROM " +
                 table + " WHERE cont_coo = 77 AND seq_item = 2"),
            ElementsAre(expected.row));
        EXPECT_THAT(Rows(std::string("SELECT valor_total, ") +
                         (isFiscal ? "0" : "valor_total_liquido") + " FROM " + table +
                         " WHERE cont_coo = 77 AND seq_item = 2"),
                    ElementsAre(isFiscal ? "1234.56|0" : "1|1234.56"));
        ExpectOtherRowsUntouched(table);

        std::vector<std::string> questions = {"Cupom_GetTipoCupom()"};
        if (!isFiscal) {
            questions.push_back("Cupom_GetTipoCupom()");
        }
        if (expected.question != nullptr) {
            questions.push_back(expected.question);
        }
        for (const char* question : {"Contador_Get(COUNTER_COO)", "Cupom_GetItemValorTotal(1)",
                                     "Cupom_GetTipoCupom()", "Contador_Get(COUNTER_COO)"}) {
            questions.push_back(question);
        }
        EXPECT_EQ(fiscal.calls, questions);
    }

    const std::string fiscalTotal =
        "UPDATE item_cupom_fiscal SET valor_total = 1234.56 WHERE cont_coo = 77 and seq_item = 2";
    const std::string nonFiscalTotal =
        "UPDATE item_cupom_nf SET valor_total_liquido = 1234.56 WHERE cont_coo = 77 and seq_item = 2";
};

class DescAcresItem : public ItemAdjustment
{
  protected:
    DescAcresItem() { command.m_iNumeroItem = 2; }

    CmdEfetuaDescAcresItem command = NewCommand<CmdEfetuaDescAcresItem>();

    void Set(int receiptType, int operation, int kind, UINT32 value = 1050)
    {
        SetReceiptType(receiptType);
        command.m_eOperacao = static_cast<EOperacao>(operation);
        command.m_eTipoValor = static_cast<ETipoValor>(kind);
        command.m_Valor.number[0] = value;
    }
};

const ItemCase APPLIED[] = {
    {"a fiscal surcharge by value keeps the earlier percentage", CUPOM_FISCAL, ACRESCIMO, VALOR,
     "UPDATE item_cupom_fiscal SET tipo_acrescimo = 'V', valor_acrescimo = 1.05 WHERE cont_coo = 77 and seq_item = 2",
     "V|11|1.05|13|d|14|15", "Cupom_GetItemValorAcr(1)"},
    {"a fiscal surcharge by percentage", CUPOM_FISCAL, ACRESCIMO, PERCENTUAL,
     "UPDATE item_cupom_fiscal SET tipo_acrescimo = 'P', perc_acrescimo = 10.50, valor_acrescimo = 1.05 WHERE cont_coo = 77 and seq_item = 2",
     "P|10.5|1.05|13|d|14|15", "Cupom_GetItemValorAcr(1)"},
    {"a fiscal discount by value resets the percentage", CUPOM_FISCAL, DESCONTO, VALOR,
     "UPDATE item_cupom_fiscal SET tipo_desconto = 'V', perc_desconto = 0, valor_desconto = 2.10 WHERE cont_coo = 77 and seq_item = 2",
     "a|11|12|13|V|0|2.1", "Cupom_GetItemValorDesc(1)"},
    {"a fiscal discount by percentage", CUPOM_FISCAL, DESCONTO, PERCENTUAL,
     "UPDATE item_cupom_fiscal SET tipo_desconto = 'P', perc_desconto = 10.50, valor_desconto = 2.10 WHERE cont_coo = 77 and seq_item = 2",
     "a|11|12|13|P|10.5|2.1", "Cupom_GetItemValorDesc(1)"},
    {"a non-fiscal surcharge by value resets the percentage", COMPROVANTE_NAO_FISCAL, ACRESCIMO,
     VALOR,
     "UPDATE item_cupom_nf SET tipo_acrescimo = 'V', perc_acrescimo = 0, valor_acrescimo = 1.05 WHERE cont_coo = 77 and seq_item = 2",
     "V|0|1.05|13|d|14|15", "Cupom_GetItemValorAcr(1)"},
    {"a non-fiscal surcharge by percentage", COMPROVANTE_NAO_FISCAL, ACRESCIMO, PERCENTUAL,
     "UPDATE item_cupom_nf SET tipo_acrescimo = 'P', perc_acrescimo = 10.50, valor_acrescimo = 1.05 WHERE cont_coo = 77 and seq_item = 2",
     "P|10.5|1.05|13|d|14|15", "Cupom_GetItemValorAcr(1)"},
    {"a non-fiscal discount by value resets the percentage", COMPROVANTE_NAO_FISCAL, DESCONTO,
     VALOR,
     "UPDATE item_cupom_nf SET tipo_desconto = 'V', perc_desconto = 0, valor_desconto = 2.10 WHERE cont_coo = 77 and seq_item = 2",
     "a|11|12|13|V|0|2.1", "Cupom_GetItemValorDesc(1)"},
    {"a non-fiscal discount by percentage", COMPROVANTE_NAO_FISCAL, DESCONTO, PERCENTUAL,
     "UPDATE item_cupom_nf SET tipo_desconto = 'P', perc_desconto = 10.50, valor_desconto = 2.10 WHERE cont_coo = 77 and seq_item = 2",
     "a|11|12|13|P|10.5|2.1", "Cupom_GetItemValorDesc(1)"},
};

TEST_F(DescAcresItem, EachAdjustmentWritesItsColumnsThenTheTotal)
{
    for (const ItemCase& one : APPLIED) {
        Set(one.receiptType, one.operation, one.kind);
        ExpectCase(command, one);
        EXPECT_THAT(MoneyRequests(), ElementsAre("500,0,0,0", "500,0,0,0")) << one.what;
    }
}

TEST_F(DescAcresItem, AnyKindThatIsNotByValueCountsAsPercentage)
{
    for (const ItemCase& one : APPLIED) {
        for (const int kind : {2, -1}) {
            if (one.kind == PERCENTUAL) {
                Set(one.receiptType, one.operation, kind);
                ExpectCase(command, one);
            }
        }
    }
}

TEST_F(DescAcresItem, OtherOperationsAreRejectedAndTheTotalIsRewritten)
{
    struct {
        int receiptType;
        std::string statement;
        std::string total;
    } const cases[] = {
        {1, "UPDATE item_cupom_fiscal SET WHERE cont_coo = 77 and seq_item = 2", fiscalTotal},
        {0, "UPDATE item_cupom_nf SET WHERE cont_coo = 77 and seq_item = 2", nonFiscalTotal},
    };
    for (const int operation : {2, -1}) {
        for (const int kind : {0, 1, 2}) {
            for (const auto& one : cases) {
                Forget();
                Set(one.receiptType, operation, kind);

                EXPECT_EQ(command.DBLogger(db), 1);

                EXPECT_THAT(Statements(), ElementsAre(one.statement, one.total));
                EXPECT_THAT(
                    LogEntries(),
                    ElementsAre(
                        "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'27', Erro:'near \"WHERE\": syntax error'",
                        one.statement));
                EXPECT_EQ(fiscal.CallsOf("Cupom_GetItemValorAcr"), 0);
                EXPECT_EQ(fiscal.CallsOf("Cupom_GetItemValorDesc"), 0);
            }
        }
    }
}

TEST_F(DescAcresItem, ReceiptOfAnotherTypeIsLeftAndAnswered0)
{
    for (const int type : {2, -1}) {
        for (const int operation : {0, 1, 2}) {
            Forget();
            Set(type, operation, PERCENTUAL);

            EXPECT_EQ(command.DBLogger(db), 0);

            EXPECT_THAT(Statements(), IsEmpty());
            EXPECT_THAT(LogEntries(), IsEmpty());
            EXPECT_THAT(fiscal.calls, ElementsAre("Cupom_GetTipoCupom()", "Cupom_GetTipoCupom()"));
        }
    }
}

TEST_F(DescAcresItem, Item0IsTheLastItem)
{
    Set(CUPOM_FISCAL, ACRESCIMO, PERCENTUAL);
    fiscal.numbers["Cupom_GetQuantidadeDeItens()"] = 2;
    command.m_iNumeroItem = 0;

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_THAT(
        Statements(),
        ElementsAre(
            "UPDATE item_cupom_fiscal SET tipo_acrescimo = 'P', perc_acrescimo = 10.50, valor_acrescimo = 1.05 WHERE cont_coo = 77 and seq_item = 2",
            "UPDATE item_cupom_fiscal SET valor_total = 1234.56 WHERE cont_coo = 77 and seq_item = 2"));
    EXPECT_EQ(fiscal.calls.front(), "Cupom_GetQuantidadeDeItens()");
    EXPECT_EQ(fiscal.CallsOf("Cupom_GetQuantidadeDeItens()"), 1);
    EXPECT_EQ(command.m_iNumeroItem, 0);
}

TEST_F(DescAcresItem, ItemsAreCountedOnlyForItem0)
{
    for (const int number : {1, 2, -1}) {
        Forget();
        Set(CUPOM_FISCAL, ACRESCIMO, VALOR);
        command.m_iNumeroItem = number;
        const std::string index = "(" + std::to_string(number - 1) + ")";
        fiscal.money["Cupom_GetItemValorAcr" + index] = Money("1.05");
        fiscal.money["Cupom_GetItemValorTotal" + index] = Money("1234.56");
        command.DBLogger(db);
        EXPECT_EQ(fiscal.CallsOf("Cupom_GetQuantidadeDeItens()"), 0);
    }
}

TEST_F(DescAcresItem, ItemNumberIsNotChecked)
{
    for (const int number : {-1, 1000, INT_MAX}) {
        Forget();
        Set(CUPOM_FISCAL, DESCONTO, VALOR);
        command.m_iNumeroItem = number;
        const std::string index = "(" + std::to_string(number - 1) + ")";
        fiscal.money["Cupom_GetItemValorDesc" + index] = Money("0");
        fiscal.money["Cupom_GetItemValorTotal" + index] = Money("0");

        EXPECT_EQ(command.DBLogger(db), 1);

        EXPECT_EQ(fiscal.CallsOf("Cupom_GetItemValorDesc" + index), 1);
        EXPECT_EQ(fiscal.CallsOf("Cupom_GetItemValorTotal" + index), 1);
        EXPECT_THAT(
            Statements(),
            ElementsAre(
                "UPDATE item_cupom_fiscal SET tipo_desconto = 'V', perc_desconto = 0, valor_desconto = 0.00 WHERE cont_coo = 77 and seq_item = " +
                    std::to_string(number),
                "UPDATE item_cupom_fiscal SET valor_total = 0.00 WHERE cont_coo = 77 and seq_item = " +
                    std::to_string(number)));
    }
}

TEST_F(DescAcresItem, PercentageIsTheLowestWordOfTheValueUnsigned)
{
    struct {
        UINT32 value;
        const char* text;
    } const cases[] = {
        {0, "0.00"},
        {5, "0.05"},
        {99, "0.99"},
        {100, "1.00"},
        {1050, "10.50"},
        {9999, "99.99"},
        {10000, "100.00"},
        {2147483648u, "21474836.48"},
        {4294967295u, "42949672.95"},
    };
    for (const auto& one : cases) {
        Forget();
        Set(CUPOM_FISCAL, ACRESCIMO, PERCENTUAL, one.value);
        command.m_Valor.number[1] = 7;
        command.m_Valor.number[2] = 0xFFFFFFFFu;
        command.DBLogger(db);
        EXPECT_EQ(
            Statements()[0],
            std::string("UPDATE item_cupom_fiscal SET tipo_acrescimo = 'P', perc_acrescimo = ") +
                one.text + ", valor_acrescimo = 1.05 WHERE cont_coo = 77 and seq_item = 2");
    }
}

TEST_F(DescAcresItem, AdjustmentThatReports0LeavesTheTotal)
{
    for (const int type : {1, 0}) {
        Forget();
        Set(type, ACRESCIMO, VALOR);
        RejectNextExecutions(1);

        EXPECT_EQ(command.DBLogger(db), 0);

        EXPECT_EQ(Statements().size(), 1u);
        EXPECT_EQ(fiscal.CallsOf("Cupom_GetItemValorTotal"), 0);
    }
}

TEST_F(DescAcresItem, AnswersWhatTheExecutionOfTheTotalReports)
{
    for (const int type : {1, 0}) {
        Forget();
        Set(type, DESCONTO, VALOR);
        RejectNextExecutions(1, 1);
        EXPECT_EQ(command.DBLogger(db), 0);
        EXPECT_EQ(Statements().size(), 2u);
    }
}

TEST_F(DescAcresItem, LeavesTheCommandAsItIs)
{
    Set(CUPOM_FISCAL, ACRESCIMO, PERCENTUAL);
    fiscal.numbers["Cupom_GetQuantidadeDeItens()"] = 2;
    command.m_iNumeroItem = 0;
    const std::string asItWas = BytesOf(command);
    command.DBLogger(db);
    EXPECT_EQ(BytesOf(command), asItWas);
}

// A receipt whose type becomes another after a number of questions.
class TurningController : public FakeController
{
  public:
    TurningController()
    {
        SetCounter(COUNTER_COO, 0);
        money["Cupom_GetItemValorDesc(1)"] = Financial();
        money["Cupom_GetItemValorTotal(1)"] = Financial();
    }

    std::vector<int> types; // what each question is answered

    FD_TIPO_CUPOM Cupom_GetTipoCupom() override
    {
        calls.push_back("Cupom_GetTipoCupom()");
        const int type = types.at(m_asked++);
        return static_cast<FD_TIPO_CUPOM>(type);
    }

  private:
    std::size_t m_asked = 0;
};

TEST_F(DescAcresItem, TotalGoesWhereTheTypeAskedAgainSays)
{
    TurningController turning;
    turning.types = {1, 0};
    command.FDController = &turning;

    command.DBLogger(db);

    EXPECT_THAT(
        Statements(),
        ElementsAre(
            "UPDATE item_cupom_fiscal SET tipo_desconto = 'V', perc_desconto = 0, valor_desconto = 0.00 WHERE cont_coo = 0 and seq_item = 2",
            "UPDATE item_cupom_nf SET valor_total_liquido = 0.00 WHERE cont_coo = 0 and seq_item = 2"));
}

TEST_F(DescAcresItem, TotalOfAnyTypeThatIsNotFiscalIsANonFiscalItems)
{
    TurningController turning;
    turning.types = {2, 0, 2};
    command.FDController = &turning;

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_EQ(
        Statements()[1],
        "UPDATE item_cupom_nf SET valor_total_liquido = 0.00 WHERE cont_coo = 0 and seq_item = 2");
}

class CancelamentoDescAcresItem : public ItemAdjustment
{
  protected:
    CancelamentoDescAcresItem() { command.m_iNumeroItem = 2; }

    CmdCancelaDescAcresItem command = NewCommand<CmdCancelaDescAcresItem>();

    void Set(int receiptType, int operation)
    {
        SetReceiptType(receiptType);
        command.m_eOperacao = static_cast<EOperacao>(operation);
    }
};

TEST_F(CancelamentoDescAcresItem, EachCancellationWritesItsColumnsThenTheTotal)
{
    const ItemCase cases[] = {
        {"a fiscal surcharge moves into the cancelled one within the row", CUPOM_FISCAL, ACRESCIMO,
         VALOR,
         "UPDATE item_cupom_fiscal SET valor_canc_acrescimo = valor_acrescimo, valor_acrescimo = 0 WHERE cont_coo = 77 and seq_item = 2",
         "a|11|0|12|d|14|15", nullptr},
        {"so does a non-fiscal one", COMPROVANTE_NAO_FISCAL, ACRESCIMO, VALOR,
         "UPDATE item_cupom_nf SET valor_canc_acrescimo = valor_acrescimo, valor_acrescimo = 0 WHERE cont_coo = 77 and seq_item = 2",
         "a|11|0|12|d|14|15", nullptr},
        {"a fiscal discount is the one that the item has afterwards", CUPOM_FISCAL, DESCONTO, VALOR,
         "UPDATE item_cupom_fiscal SET valor_desconto = 2.10 WHERE cont_coo = 77 and seq_item = 2",
         "a|11|12|13|d|14|2.1", "Cupom_GetItemValorDesc(1)"},
        {"so is a non-fiscal one", COMPROVANTE_NAO_FISCAL, DESCONTO, VALOR,
         "UPDATE item_cupom_nf SET valor_desconto = 2.10 WHERE cont_coo = 77 and seq_item = 2",
         "a|11|12|13|d|14|2.1", "Cupom_GetItemValorDesc(1)"},
    };
    for (const ItemCase& one : cases) {
        Set(one.receiptType, one.operation);
        ExpectCase(command, one);
    }
}

TEST_F(CancelamentoDescAcresItem, OtherOperationsAreRejectedAndTheTotalIsRewritten)
{
    for (const int operation : {2, -1}) {
        Forget();
        Set(CUPOM_FISCAL, operation);
        EXPECT_EQ(command.DBLogger(db), 1);
        EXPECT_THAT(Statements(),
                    ElementsAre("UPDATE item_cupom_fiscal SET WHERE cont_coo = 77 and seq_item = 2",
                                fiscalTotal));
        EXPECT_THAT(
            LogEntries(),
            ElementsAre(
                "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'28', Erro:'near \"WHERE\": syntax error'",
                "UPDATE item_cupom_fiscal SET WHERE cont_coo = 77 and seq_item = 2"));
        EXPECT_EQ(fiscal.CallsOf("Cupom_GetItemValorDesc"), 0);

        Forget();
        Set(COMPROVANTE_NAO_FISCAL, operation);
        EXPECT_EQ(command.DBLogger(db), 1);
        EXPECT_THAT(Statements(),
                    ElementsAre("UPDATE item_cupom_nf SET WHERE cont_coo = 77 and seq_item = 2",
                                nonFiscalTotal));
    }
}

TEST_F(CancelamentoDescAcresItem, ReceiptOfAnotherTypeIsLeftAndAnswered0)
{
    for (const int type : {2, -1}) {
        Forget();
        Set(type, ACRESCIMO);

        EXPECT_EQ(command.DBLogger(db), 0);

        EXPECT_THAT(Statements(), IsEmpty());
        EXPECT_THAT(LogEntries(), IsEmpty());
        EXPECT_THAT(fiscal.calls, ElementsAre("Cupom_GetTipoCupom()", "Cupom_GetTipoCupom()"));
    }
}

TEST_F(CancelamentoDescAcresItem, Item0IsItem0AndMatchesNoRow)
{
    Set(CUPOM_FISCAL, DESCONTO);
    fiscal.money["Cupom_GetItemValorDesc(-1)"] = Money("0");
    fiscal.money["Cupom_GetItemValorTotal(-1)"] = Money("0");
    command.m_iNumeroItem = 0;

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_THAT(
        Statements(),
        ElementsAre(
            "UPDATE item_cupom_fiscal SET valor_desconto = 0.00 WHERE cont_coo = 77 and seq_item = 0",
            "UPDATE item_cupom_fiscal SET valor_total = 0.00 WHERE cont_coo = 77 and seq_item = 0"));
    EXPECT_THAT(fiscal.calls,
                ElementsAre("Cupom_GetTipoCupom()", "Cupom_GetItemValorDesc(-1)",
                            "Contador_Get(COUNTER_COO)", "Cupom_GetItemValorTotal(-1)",
                            "Cupom_GetTipoCupom()", "Contador_Get(COUNTER_COO)"));
    ExpectOtherRowsUntouched("none");
}

TEST_F(CancelamentoDescAcresItem, CancellationThatReports0LeavesTheTotal)
{
    for (const int operation : {0, 1, 2}) {
        Forget();
        Set(CUPOM_FISCAL, operation);
        RejectNextExecutions(1);
        EXPECT_EQ(command.DBLogger(db), 0);
        EXPECT_EQ(Statements().size(), 1u);
        EXPECT_EQ(fiscal.CallsOf("Cupom_GetItemValorTotal"), 0);
    }
}

TEST_F(CancelamentoDescAcresItem, AnswersWhatTheExecutionOfTheTotalReports)
{
    Set(COMPROVANTE_NAO_FISCAL, ACRESCIMO);
    RejectNextExecutions(1, 1);
    EXPECT_EQ(command.DBLogger(db), 0);
    EXPECT_EQ(Statements().size(), 2u);
}

TEST_F(CancelamentoDescAcresItem, LeavesTheCommandAsItIs)
{
    Set(CUPOM_FISCAL, DESCONTO);
    const std::string asItWas = BytesOf(command);
    command.DBLogger(db);
    EXPECT_EQ(BytesOf(command), asItWas);
}

} // namespace

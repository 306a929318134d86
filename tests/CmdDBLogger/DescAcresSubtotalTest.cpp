// Discounts and surcharges on the subtotal, and their cancellation.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/LoggerTest.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// What an adjustment of the subtotal leaves: its statement and, of the receipt's row, surcharge's
// kind, percentage, value and cancelled value, then discount's kind, percentage and value.
struct SubtotalCase {
    const char* what;
    FD_TIPO_CUPOM receiptType;
    EOperacao operation;
    ETipoValor kind;
    const char* statement;
    const char* row;
};

// The receipt of number 90 with an adjusted subtotal, in the tables of either type.
class SubtotalAdjustment : public LoggerTest
{
  protected:
    SubtotalAdjustment()
    {
        fiscal.SetCounter(COUNTER_COO, 90);
        fiscal.money["Cupom_GetSTValorDescAcr()"] = Money("1234.56");
        fiscal.money["Cupom_GetSTValorCanceladoDescAcr()"] = Money("1000.06");
        FillTables();
    }

    void FillTables()
    {
        for (const std::string table : {"cupom_fiscal", "cupom_nf"}) {
            Execute("DELETE FROM " + table);
            Execute("INSERT INTO " + table +
                    " (cont_coo, tipo_acrescimo, perc_acrescimo, valor_acrescimo,"
                    " valor_canc_acrescimo, tipo_desconto, perc_desconto, valor_desconto) VALUES"
                    " (90,'a',11,12,13,'d',14,15), (91,'a',11,12,13,'d',14,15)");
        }
    }

    void SetReceiptType(int type) { fiscal.numbers["Cupom_GetTipoCupom()"] = type; }

    // The adjustments of receipt 90, as a case names them.
    std::vector<std::string> Receipt(const std::string& table)
    {
        return Rows("SELECT tipo_acrescimo, perc_acrescimo, valor_acrescimo, valor_canc_acrescimo,"
                    " tipo_desconto, perc_desconto, valor_desconto FROM " +
                    table + " WHERE cont_coo = 90");
    }

    // Nothing but receipt 90 in `table` was touched.
    void ExpectOtherRowsUntouched(const std::string& table)
    {
        for (const std::string name : {"cupom_fiscal", "cupom_nf"}) {
            EXPECT_THAT(Rows("SELECT count(*) FROM " + name +
                             " WHERE tipo_acrescimo = 'a' AND perc_acrescimo = 11"
                             " AND valor_acrescimo = 12 AND valor_canc_acrescimo = 13 AND"
                             " tipo_desconto = 'd' AND perc_desconto = 14 AND valor_desconto = 15" +
                             (name == table ? " AND cont_coo <> 90" : "")),
                        ElementsAre(name == table ? "1" : "2"));
        }
    }

    // Logs a command whose case is set, and holds statement, rows and questions to the case.
    // `amounts` are the questions between the type and the number.
    void ExpectCase(Command& command, const SubtotalCase& expected,
                    const std::vector<std::string>& amounts)
    {
        SCOPED_TRACE(expected.what);
        const bool isFiscal = expected.receiptType == CUPOM_FISCAL;
        FillTables();
        Forget();

        EXPECT_EQ(command.DBLogger(db), TRUE);

        EXPECT_EQ(Statement(), expected.statement);
        EXPECT_THAT(LogEntries(), IsEmpty());
        const std::string table = isFiscal ? "cupom_fiscal" : "cupom_nf";
        EXPECT_THAT(Receipt(table), ElementsAre(expected.row));
        ExpectOtherRowsUntouched(table);

        std::vector<std::string> questions(isFiscal ? 1 : 2, "Cupom_GetTipoCupom()");
        questions.insert(questions.end(), amounts.begin(), amounts.end());
        questions.push_back("Contador_Get(COUNTER_COO)");
        EXPECT_EQ(fiscal.calls, questions);
        EXPECT_THAT(MoneyRequests(), ElementsAre("500,0,0,0"));
    }
};

class DescAcresSubtotal : public SubtotalAdjustment
{
  protected:
    CmdEfetuaDescAcresSubtotal command = NewCommand<CmdEfetuaDescAcresSubtotal>();

    void Set(int receiptType, int operation, int kind, UINT32 value = 500)
    {
        SetReceiptType(receiptType);
        command.m_eOperacao = static_cast<EOperacao>(operation);
        command.m_eTipoValor = static_cast<ETipoValor>(kind);
        command.m_Valor.number[0] = value;
    }

    std::string Adjust(int receiptType, int operation, int kind)
    {
        Forget();
        Set(receiptType, operation, kind);
        EXPECT_EQ(command.DBLogger(db), 1);
        return Statement();
    }
};

const SubtotalCase APPLIED[] = {
    {"a fiscal surcharge by value resets the percentage", CUPOM_FISCAL, ACRESCIMO, VALOR,
     "UPDATE cupom_fiscal SET tipo_acrescimo = 'V', perc_acrescimo = 0, valor_acrescimo = 1234.56 WHERE cont_coo = 90",
     "V|0|1234.56|13|d|14|15"},
    {"a fiscal surcharge by percentage says its kind", CUPOM_FISCAL, ACRESCIMO, PERCENTUAL,
     "UPDATE cupom_fiscal SET tipo_acrescimo = 'P', perc_acrescimo = 5.00, valor_acrescimo = 1234.56 WHERE cont_coo = 90",
     "P|5|1234.56|13|d|14|15"},
    {"a fiscal discount by value resets the percentage", CUPOM_FISCAL, DESCONTO, VALOR,
     "UPDATE cupom_fiscal SET tipo_desconto = 'V', perc_desconto = 0, valor_desconto = 1234.56 WHERE cont_coo = 90",
     "a|11|12|13|V|0|1234.56"},
    {"a fiscal discount by percentage leaves its kind", CUPOM_FISCAL, DESCONTO, PERCENTUAL,
     "UPDATE cupom_fiscal SET perc_desconto = 5.00, valor_desconto = 1234.56 WHERE cont_coo = 90",
     "a|11|12|13|d|5|1234.56"},
    {"a non-fiscal surcharge by value leaves the percentage", COMPROVANTE_NAO_FISCAL, ACRESCIMO,
     VALOR,
     "UPDATE cupom_nf SET tipo_acrescimo = 'V', valor_acrescimo = 1234.56 WHERE cont_coo = 90",
     "V|11|1234.56|13|d|14|15"},
    {"a non-fiscal surcharge by percentage leaves its kind", COMPROVANTE_NAO_FISCAL, ACRESCIMO,
     PERCENTUAL,
     "UPDATE cupom_nf SET perc_acrescimo = 5.00, valor_acrescimo = 1234.56 WHERE cont_coo = 90",
     "a|5|1234.56|13|d|14|15"},
    {"a non-fiscal discount by value leaves the percentage", COMPROVANTE_NAO_FISCAL, DESCONTO,
     VALOR, "UPDATE cupom_nf SET tipo_desconto = 'V', valor_desconto = 1234.56 WHERE cont_coo = 90",
     "a|11|12|13|V|14|1234.56"},
    {"a non-fiscal discount by percentage leaves its kind", COMPROVANTE_NAO_FISCAL, DESCONTO,
     PERCENTUAL,
     "UPDATE cupom_nf SET perc_desconto = 5.00, valor_desconto = 1234.56 WHERE cont_coo = 90",
     "a|11|12|13|d|5|1234.56"},
};

TEST_F(DescAcresSubtotal, EachAdjustmentWritesItsColumns)
{
    for (const SubtotalCase& one : APPLIED) {
        Set(one.receiptType, one.operation, one.kind);
        ExpectCase(command, one, {"Cupom_GetSTValorDescAcr()"});
    }
}

TEST_F(DescAcresSubtotal, AnyKindThatIsNotByValueCountsAsPercentage)
{
    for (const SubtotalCase& one : APPLIED) {
        for (const int kind : {2, -1}) {
            if (one.kind == PERCENTUAL) {
                Set(one.receiptType, one.operation, kind);
                ExpectCase(command, one, {"Cupom_GetSTValorDescAcr()"});
            }
        }
    }
}

TEST_F(DescAcresSubtotal, ReceiptIsTheOneOfTheCounter)
{
    fiscal.SetCounter(COUNTER_COO, 91);
    fiscal.money["Cupom_GetSTValorDescAcr()"] = Money("2.00");
    EXPECT_EQ(
        Adjust(COMPROVANTE_NAO_FISCAL, ACRESCIMO, VALOR),
        "UPDATE cupom_nf SET tipo_acrescimo = 'V', valor_acrescimo = 2.00 WHERE cont_coo = 91");
    EXPECT_THAT(Receipt("cupom_nf"), ElementsAre("a|11|12|13|d|14|15"));
    EXPECT_THAT(Rows("SELECT tipo_acrescimo, perc_acrescimo, valor_acrescimo FROM cupom_nf"
                     " WHERE cont_coo = 91"),
                ElementsAre("V|11|2"));
    EXPECT_THAT(Receipt("cupom_fiscal"), ElementsAre("a|11|12|13|d|14|15"));
}

TEST_F(DescAcresSubtotal, OtherOperationsAreRejected)
{
    for (const int operation : {2, -1}) {
        for (const int kind : {0, 1, 2}) {
            EXPECT_EQ(Adjust(1, operation, kind), "UPDATE cupom_fiscal SET WHERE cont_coo = 90");
            EXPECT_THAT(
                LogEntries(),
                ElementsAre(
                    "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'29', Erro:'near \"WHERE\": syntax error'",
                    "UPDATE cupom_fiscal SET WHERE cont_coo = 90"));
            EXPECT_EQ(Adjust(0, operation, kind), "UPDATE cupom_nf SET WHERE cont_coo = 90");
            EXPECT_THAT(LogEntries(), testing::SizeIs(2));
        }
    }
    ExpectOtherRowsUntouched("none");
}

TEST_F(DescAcresSubtotal, ReceiptOfAnotherTypeIsLeftAndAnswered0)
{
    for (const int type : {2, -1}) {
        Forget();
        Set(type, ACRESCIMO, VALOR);

        EXPECT_EQ(command.DBLogger(db), 0);

        EXPECT_THAT(Statements(), IsEmpty());
        EXPECT_THAT(LogEntries(), IsEmpty());
        EXPECT_THAT(fiscal.calls, ElementsAre("Cupom_GetTipoCupom()", "Cupom_GetTipoCupom()"));
    }
}

TEST_F(DescAcresSubtotal, PercentageIsTheLowestWordOfTheValueUnsigned)
{
    struct {
        UINT32 value;
        const char* text;
    } const cases[] = {
        {0, "0.00"},
        {5, "0.05"},
        {1050, "10.50"},
        {9999, "99.99"},
        {10000, "100.00"},
        {2147483648u, "21474836.48"},
        {4294967295u, "42949672.95"},
    };
    for (const auto& one : cases) {
        Forget();
        Set(CUPOM_FISCAL, DESCONTO, PERCENTUAL, one.value);
        command.m_Valor.number[1] = 7;
        command.m_Valor.number[2] = 0xFFFFFFFFu;
        command.DBLogger(db);
        EXPECT_EQ(Statement(), std::string("UPDATE cupom_fiscal SET perc_desconto = ") + one.text +
                                   ", valor_desconto = 1234.56 WHERE cont_coo = 90");
    }
}

TEST_F(DescAcresSubtotal, AnswersWhatItsExecutionReports)
{
    for (const int type : {1, 0}) {
        Set(type, ACRESCIMO, VALOR);
        RejectNextExecutions(1);
        EXPECT_EQ(command.DBLogger(db), 0);
        EXPECT_EQ(command.DBLogger(db), 1);
    }
}

TEST_F(DescAcresSubtotal, LeavesTheCommandAsItIs)
{
    Set(CUPOM_FISCAL, ACRESCIMO, PERCENTUAL);
    const std::string asItWas = BytesOf(command);
    command.DBLogger(db);
    EXPECT_EQ(BytesOf(command), asItWas);
}

class CancelamentoDescAcresSubtotal : public SubtotalAdjustment
{
  protected:
    CmdCancelaDescAcresSubtotal command = NewCommand<CmdCancelaDescAcresSubtotal>();

    void Set(int receiptType, int operation)
    {
        SetReceiptType(receiptType);
        command.m_eOperacao = static_cast<EOperacao>(operation);
    }

    std::string Cancel(int receiptType, int operation)
    {
        Forget();
        Set(receiptType, operation);
        EXPECT_EQ(command.DBLogger(db), 1);
        return Statement();
    }
};

TEST_F(CancelamentoDescAcresSubtotal, EachCancellationWritesItsColumns)
{
    const SubtotalCase cases[] = {
        {"a fiscal surcharge moves into the cancelled one within the row", CUPOM_FISCAL, ACRESCIMO,
         VALOR,
         "UPDATE cupom_fiscal SET valor_canc_acrescimo = valor_acrescimo, valor_acrescimo = 234.50 WHERE cont_coo = 90",
         "a|11|234.5|12|d|14|15"},
        {"so does a non-fiscal one", COMPROVANTE_NAO_FISCAL, ACRESCIMO, VALOR,
         "UPDATE cupom_nf SET valor_canc_acrescimo = valor_acrescimo, valor_acrescimo = 234.50 WHERE cont_coo = 90",
         "a|11|234.5|12|d|14|15"},
        {"a fiscal discount is what is left of it", CUPOM_FISCAL, DESCONTO, VALOR,
         "UPDATE cupom_fiscal SET valor_desconto = 234.50 WHERE cont_coo = 90",
         "a|11|12|13|d|14|234.5"},
        {"so is a non-fiscal one", COMPROVANTE_NAO_FISCAL, DESCONTO, VALOR,
         "UPDATE cupom_nf SET valor_desconto = 234.50 WHERE cont_coo = 90",
         "a|11|12|13|d|14|234.5"},
    };
    for (const SubtotalCase& one : cases) {
        Set(one.receiptType, one.operation);
        ExpectCase(command, one,
                   {"Cupom_GetSTValorDescAcr()", "Cupom_GetSTValorCanceladoDescAcr()"});
    }
}

TEST_F(CancelamentoDescAcresSubtotal, SurchargeCancelledWholeLeavesZero)
{
    fiscal.money["Cupom_GetSTValorDescAcr()"] = Money("3.00");
    fiscal.money["Cupom_GetSTValorCanceladoDescAcr()"] = Money("3.00");

    EXPECT_EQ(
        Cancel(CUPOM_FISCAL, ACRESCIMO),
        "UPDATE cupom_fiscal SET valor_canc_acrescimo = valor_acrescimo, valor_acrescimo = 0.00 WHERE cont_coo = 90");
    EXPECT_THAT(Receipt("cupom_fiscal"), ElementsAre("a|11|0|12|d|14|15"));
}

TEST_F(CancelamentoDescAcresSubtotal, MoreCancelledThanAppliedIsNegative)
{
    fiscal.money["Cupom_GetSTValorDescAcr()"] = Money("1.00");
    fiscal.money["Cupom_GetSTValorCanceladoDescAcr()"] = Money("3.50");

    EXPECT_EQ(Cancel(CUPOM_FISCAL, DESCONTO),
              "UPDATE cupom_fiscal SET valor_desconto = -2.50 WHERE cont_coo = 90");
}

TEST_F(CancelamentoDescAcresSubtotal, ValuesAreAskedBeforeTheOperationIsLookedAt)
{
    for (const int operation : {0, 1, 2}) {
        Cancel(CUPOM_FISCAL, operation);
        EXPECT_THAT(fiscal.calls,
                    ElementsAre("Cupom_GetTipoCupom()", "Cupom_GetSTValorDescAcr()",
                                "Cupom_GetSTValorCanceladoDescAcr()", "Contador_Get(COUNTER_COO)"));

        Cancel(COMPROVANTE_NAO_FISCAL, operation);
        EXPECT_THAT(fiscal.calls,
                    ElementsAre("Cupom_GetTipoCupom()", "Cupom_GetTipoCupom()",
                                "Cupom_GetSTValorDescAcr()", "Cupom_GetSTValorCanceladoDescAcr()",
                                "Contador_Get(COUNTER_COO)"));
    }
}

TEST_F(CancelamentoDescAcresSubtotal, OtherOperationsAreRejected)
{
    for (const int operation : {2, -1}) {
        EXPECT_EQ(Cancel(CUPOM_FISCAL, operation), "UPDATE cupom_fiscal SET WHERE cont_coo = 90");
        EXPECT_THAT(
            LogEntries(),
            ElementsAre(
                "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'30', Erro:'near \"WHERE\": syntax error'",
                "UPDATE cupom_fiscal SET WHERE cont_coo = 90"));
        EXPECT_EQ(Cancel(COMPROVANTE_NAO_FISCAL, operation),
                  "UPDATE cupom_nf SET WHERE cont_coo = 90");
        EXPECT_THAT(LogEntries(), testing::SizeIs(2));
    }
    ExpectOtherRowsUntouched("none");
}

TEST_F(CancelamentoDescAcresSubtotal, ReceiptOfAnotherTypeIsLeftAndAnswered0)
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

TEST_F(CancelamentoDescAcresSubtotal, AnswersWhatItsExecutionReports)
{
    for (const int type : {1, 0}) {
        Set(type, DESCONTO);
        RejectNextExecutions(1);
        EXPECT_EQ(command.DBLogger(db), 0);
        EXPECT_EQ(command.DBLogger(db), 1);
    }
}

TEST_F(CancelamentoDescAcresSubtotal, LeavesTheCommandAsItIs)
{
    Set(CUPOM_FISCAL, DESCONTO);
    const std::string asItWas = BytesOf(command);
    command.DBLogger(db);
    EXPECT_EQ(BytesOf(command), asItWas);
}

} // namespace

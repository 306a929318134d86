// The cancellation of a receipt, while it is being issued and afterwards.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/LoggerTest.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ReceiptRows : public LoggerTest
{
  protected:
    ReceiptRows()
    {
        fiscal.SetCounter(COUNTER_COO, 120);
        fiscal.SetCounter(COUNTER_GNF, 56);
        fiscal.SetCounter(COUNTER_GRG, 7);
        fiscal.SetCounter(COUNTER_CDC, 8);
        fiscal.SetCounter(COUNTER_CRZ, 9);
        for (const char* table : {"cupom_fiscal", "cupom_nf"}) {
            Execute(std::string("INSERT INTO ") + table +
                    " (cont_coo, id_cancelado) VALUES (119,'N'), (120,'N'), (121,'N')");
        }
    }

    void SetReceiptType(int type) { fiscal.numbers["Cupom_GetTipoCupom()"] = type; }

    std::vector<std::string> CancelledOf(const std::string& table)
    {
        return Rows("SELECT cont_coo FROM " + table + " WHERE id_cancelado = 'S'");
    }
};

class CancelamentoEmEmissao : public ReceiptRows
{
  protected:
    CmdCancelaCupomFiscalNfEmEmissao command = NewCommand<CmdCancelaCupomFiscalNfEmEmissao>();
};

class CancelamentoCupom : public ReceiptRows
{
  protected:
    CancelamentoCupom() { command.m_iCOOCancelado = 119; }

    CmdCancelaCupom command = NewCommand<CmdCancelaCupom>();

    const std::string document =
        "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (120,1,56,7,8,9,'2026-03-02 08:15:30','2026-03-02 08:15:30','NC')";
};

TEST_F(CancelamentoEmEmissao, FiscalReceiptOfTheCounterIsMarked)
{
    SetReceiptType(1);

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_EQ(Statement(), "UPDATE cupom_fiscal SET id_cancelado = 'S' WHERE cont_coo = '120'");
    EXPECT_THAT(CancelledOf("cupom_fiscal"), ElementsAre("120"));
    EXPECT_THAT(CancelledOf("cupom_nf"), IsEmpty());
    EXPECT_THAT(fiscal.calls, ElementsAre("Cupom_GetTipoCupom()", "Contador_Get(COUNTER_COO)"));
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(CancelamentoEmEmissao, NonFiscalReceiptIsMarkedWithoutADocumentAfterASecondQuestion)
{
    SetReceiptType(0);

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_EQ(Statement(), "UPDATE cupom_nf SET id_cancelado = 'S' WHERE cont_coo = '120'");
    EXPECT_THAT(CancelledOf("cupom_nf"), ElementsAre("120"));
    EXPECT_THAT(CancelledOf("cupom_fiscal"), IsEmpty());
    EXPECT_THAT(Rows("SELECT * FROM outros_documentos"), IsEmpty());
    EXPECT_THAT(fiscal.calls, ElementsAre("Cupom_GetTipoCupom()", "Cupom_GetTipoCupom()",
                                          "Contador_Get(COUNTER_COO)"));
}

TEST_F(CancelamentoEmEmissao, ReceiptOfAnotherTypeIsLeftAndAnswered0)
{
    for (const int type : {2, -1}) {
        Forget();
        SetReceiptType(type);

        EXPECT_EQ(command.DBLogger(db), 0);

        EXPECT_THAT(Statements(), IsEmpty());
        EXPECT_THAT(LogEntries(), IsEmpty());
        EXPECT_THAT(fiscal.calls, ElementsAre("Cupom_GetTipoCupom()", "Cupom_GetTipoCupom()"));
    }
}

TEST_F(CancelamentoEmEmissao, ReceiptWithoutARowChangesNothingAndIsNoError)
{
    fiscal.SetCounter(COUNTER_COO, 500);
    SetReceiptType(1);
    EXPECT_EQ(command.DBLogger(db), 1);
    SetReceiptType(0);
    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_THAT(CancelledOf("cupom_fiscal"), IsEmpty());
    EXPECT_THAT(CancelledOf("cupom_nf"), IsEmpty());
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(CancelamentoEmEmissao, StatementThatTheEngineRejectsIsLogged)
{
    SetReceiptType(0);
    Execute("DROP TABLE cupom_nf");

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'31', Erro:'no such table: cupom_nf'",
            "UPDATE cupom_nf SET id_cancelado = 'S' WHERE cont_coo = '120'"));
}

TEST_F(CancelamentoEmEmissao, AnswersWhatItsExecutionReports)
{
    for (const int type : {1, 0}) {
        SetReceiptType(type);
        RejectNextExecutions(1);
        EXPECT_EQ(command.DBLogger(db), 0);
        EXPECT_EQ(command.DBLogger(db), 1);
    }
}

TEST_F(CancelamentoEmEmissao, LeavesTheCommandAsItIs)
{
    const std::string asItWas = BytesOf(command);
    for (const int type : {1, 0}) {
        SetReceiptType(type);
        command.DBLogger(db);
    }
    EXPECT_EQ(BytesOf(command), asItWas);
}

TEST_F(CancelamentoCupom, FiscalReceiptOfTheCommandIsMarkedWithoutADocument)
{
    SetReceiptType(1);

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_EQ(Statement(), "UPDATE cupom_fiscal SET id_cancelado = 'S' where cont_coo = '119'");
    EXPECT_THAT(CancelledOf("cupom_fiscal"), ElementsAre("119"));
    EXPECT_THAT(CancelledOf("cupom_nf"), IsEmpty());
    EXPECT_THAT(Rows("SELECT * FROM outros_documentos"), IsEmpty());
    EXPECT_THAT(fiscal.calls, ElementsAre("Cupom_GetTipoCupom()"));
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(CancelamentoCupom, NonFiscalReceiptIsMarkedAndADocumentRecorded)
{
    SetReceiptType(0);

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_THAT(
        Statements(),
        ElementsAre("UPDATE cupom_nf SET id_cancelado = 'S' where cont_coo = '119'", document));
    EXPECT_THAT(CancelledOf("cupom_nf"), ElementsAre("119"));
    EXPECT_THAT(CancelledOf("cupom_fiscal"), IsEmpty());
    EXPECT_THAT(Rows("SELECT * FROM outros_documentos"),
                ElementsAre("120|1|56|7|8|9|2026-03-02 08:15:30|2026-03-02 08:15:30|NC"));
    EXPECT_THAT(fiscal.calls, ElementsAre("Cupom_GetTipoCupom()", "Cupom_GetTipoCupom()",
                                          "Contador_Get(COUNTER_COO)", "Contador_Get(COUNTER_GNF)",
                                          "Contador_Get(COUNTER_GRG)", "Contador_Get(COUNTER_CDC)",
                                          "Contador_Get(COUNTER_CRZ)"));
}

TEST_F(CancelamentoCupom, ReceiptOfAnotherTypeIsLeftAndAnswered0)
{
    for (const int type : {2, -1}) {
        Forget();
        SetReceiptType(type);

        EXPECT_EQ(command.DBLogger(db), 0);

        EXPECT_THAT(Statements(), IsEmpty());
        EXPECT_THAT(LogEntries(), IsEmpty());
        EXPECT_THAT(fiscal.calls, ElementsAre("Cupom_GetTipoCupom()", "Cupom_GetTipoCupom()"));
    }
}

TEST_F(CancelamentoCupom, FiscalReceiptWithoutARowChangesNothing)
{
    command.m_iCOOCancelado = 500;
    SetReceiptType(1);

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_EQ(Statement(), "UPDATE cupom_fiscal SET id_cancelado = 'S' where cont_coo = '500'");
    EXPECT_THAT(CancelledOf("cupom_fiscal"), IsEmpty());
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(CancelamentoCupom, NonFiscalReceiptWithoutARowStillRecordsTheDocument)
{
    command.m_iCOOCancelado = 500;
    SetReceiptType(0);

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_THAT(
        Statements(),
        ElementsAre("UPDATE cupom_nf SET id_cancelado = 'S' where cont_coo = '500'", document));
    EXPECT_THAT(CancelledOf("cupom_nf"), IsEmpty());
    EXPECT_THAT(Rows("SELECT id_tipo_documento FROM outros_documentos"), ElementsAre("NC"));
}

TEST_F(CancelamentoCupom, RejectedUpdateStillRecordsTheDocument)
{
    SetReceiptType(0);
    Execute("DROP TABLE cupom_nf");

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'7', Erro:'no such table: cupom_nf'",
            "UPDATE cupom_nf SET id_cancelado = 'S' where cont_coo = '119'"));
    EXPECT_THAT(Rows("SELECT id_tipo_documento FROM outros_documentos"), ElementsAre("NC"));
}

TEST_F(CancelamentoCupom, FiscalAnswersWhatItsExecutionReports)
{
    SetReceiptType(1);
    RejectNextExecutions(1);
    EXPECT_EQ(command.DBLogger(db), 0);
    EXPECT_EQ(command.DBLogger(db), 1);
}

TEST_F(CancelamentoCupom, UpdateThatReports0EndsANonFiscalCancellation)
{
    SetReceiptType(0);
    RejectNextExecutions(1);

    EXPECT_EQ(command.DBLogger(db), 0);

    EXPECT_EQ(Statement(), "UPDATE cupom_nf SET id_cancelado = 'S' where cont_coo = '119'");
    EXPECT_THAT(Rows("SELECT * FROM outros_documentos"), IsEmpty());
}

TEST_F(CancelamentoCupom, NonFiscalAnswersWhatItsDocumentReports)
{
    SetReceiptType(0);
    RejectNextExecutions(1, 1);
    EXPECT_EQ(command.DBLogger(db), 0);
    EXPECT_EQ(Statements().size(), 2u);
}

TEST_F(CancelamentoCupom, LeavesItsOwnMemberAndOnlyTheDocumentSetsTheEnd)
{
    SetReceiptType(1);
    const std::string asItWas = BytesOf(command);
    command.DBLogger(db);
    EXPECT_EQ(BytesOf(command), asItWas);

    SetReceiptType(0);
    command.DBLogger(db);
    EXPECT_EQ(command.m_iCOOCancelado, 119);
    EXPECT_EQ(command.m_dtExecEnd.s, Instant("2026-03-02 08:15:30").s);
    command.m_dtExecEnd.s = matlong[0];
    EXPECT_EQ(BytesOf(command), asItWas);
}

} // namespace

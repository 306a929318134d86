// The log of documents other than fiscal receipts.
#include "tests/CmdDBLogger/Documento.h"
#include "tests/CmdDBLogger/LoggerTest.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class OutrosDocumentos : public LoggerTest
{
  protected:
    OutrosDocumentos()
    {
        for (const FISCALDATA_COUNTER_INDEX counter :
             {COUNTER_COO, COUNTER_GNF, COUNTER_GRG, COUNTER_CDC, COUNTER_CRZ}) {
            fiscal.SetCounter(counter, 0);
        }
    }

    Documento command = NewCommand<Documento>();

    // What stands before the document type when every counter is 0 and the end is not set.
    const std::string beforeType =
        "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (0,1,0,0,0,1,'2026-03-02 08:15:30','2026-03-02 08:15:30','";

    // Logs a document whose statement, a type made of 'x' filled in, has `bytes` characters.
    std::string LogStatementOf(std::size_t bytes)
    {
        const std::string type(bytes - beforeType.size() - 2, 'x');
        EXPECT_EQ(command.OutrosDocumentosDBLogger(db, type.c_str()), TRUE);
        return type;
    }
};

TEST_F(OutrosDocumentos, InsertCarriesCountersTimesAndType)
{
    fiscal.SetCounter(COUNTER_COO, 1234);
    fiscal.SetCounter(COUNTER_GNF, 56);
    fiscal.SetCounter(COUNTER_GRG, 7);
    fiscal.SetCounter(COUNTER_CDC, 8);
    fiscal.SetCounter(COUNTER_CRZ, 9);
    command.m_dtExecEnd = Instant("2026-03-02 08:16:01");

    EXPECT_EQ(command.OutrosDocumentosDBLogger(db, "MF"), TRUE);

    EXPECT_EQ(
        Statement(),
        "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (1234,1,56,7,8,9,'2026-03-02 08:15:30','2026-03-02 08:16:01','MF')");
    EXPECT_THAT(Rows("SELECT * FROM outros_documentos"),
                ElementsAre("1234|1|56|7|8|9|2026-03-02 08:15:30|2026-03-02 08:16:01|MF"));
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(OutrosDocumentos, InsertAsksForEachCounterOnceInColumnOrder)
{
    command.OutrosDocumentosDBLogger(db, "MF");

    EXPECT_THAT(fiscal.calls, ElementsAre("Contador_Get(COUNTER_COO)", "Contador_Get(COUNTER_GNF)",
                                          "Contador_Get(COUNTER_GRG)", "Contador_Get(COUNTER_CDC)",
                                          "Contador_Get(COUNTER_CRZ)"));
}

TEST_F(OutrosDocumentos, BeforeTheFirstReductionTheRowCarriesReduction1)
{
    fiscal.SetCounter(COUNTER_CRZ, 0);

    command.OutrosDocumentosDBLogger(db, "LX");

    EXPECT_EQ(Statement(), beforeType + "LX')");
    EXPECT_THAT(Rows("SELECT cont_crz FROM outros_documentos"), ElementsAre("1"));
}

TEST_F(OutrosDocumentos, AfterReductionsTheRowCarriesTheLastOne)
{
    for (const int crz : {1, 2, 7, -1}) {
        fiscal.SetCounter(COUNTER_CRZ, crz);
        command.OutrosDocumentosDBLogger(db, "LX");
    }

    EXPECT_THAT(Rows("SELECT cont_crz FROM outros_documentos"), ElementsAre("1", "2", "7", "-1"));
}

TEST_F(OutrosDocumentos, RegisterNumberIs1AndNotAskedFor)
{
    command.OutrosDocumentosDBLogger(db, "LX");

    EXPECT_THAT(Rows("SELECT num_ecf FROM outros_documentos"), ElementsAre("1"));
}

TEST_F(OutrosDocumentos, UnsetEndBecomesTheStartAndStaysSo)
{
    command.m_dtExecEnd.s = matlong[0];

    command.OutrosDocumentosDBLogger(db, "CC");

    EXPECT_THAT(
        Rows("SELECT data_hora_inicio_emissao, data_hora_fim_emissao FROM outros_documentos"),
        ElementsAre("2026-03-02 08:15:30|2026-03-02 08:15:30"));
    EXPECT_EQ(command.m_dtExecEnd.s, Instant("2026-03-02 08:15:30").s);
    EXPECT_EQ(command.m_dtExecStart.s, Instant("2026-03-02 08:15:30").s);
}

TEST_F(OutrosDocumentos, SetEndIsWrittenAndLeftAsItIs)
{
    command.m_dtExecEnd.s = matlong[0] + 1;

    command.OutrosDocumentosDBLogger(db, "CC");

    EXPECT_THAT(Rows("SELECT data_hora_fim_emissao FROM outros_documentos"),
                ElementsAre("1970-01-01 00:00:01"));
    EXPECT_EQ(command.m_dtExecEnd.s, matlong[0] + 1);
}

TEST_F(OutrosDocumentos, UnsetStartIsWrittenAsItIs)
{
    command.m_dtExecStart.s = matlong[0];

    command.OutrosDocumentosDBLogger(db, "CC");

    EXPECT_THAT(
        Rows("SELECT data_hora_inicio_emissao, data_hora_fim_emissao FROM outros_documentos"),
        ElementsAre("1970-01-01 00:00:00|1970-01-01 00:00:00"));
}

TEST_F(OutrosDocumentos, TypeIsStoredAsGiven)
{
    command.OutrosDocumentosDBLogger(db, "a \"b\" % \\ c");

    EXPECT_THAT(Rows("SELECT id_tipo_documento FROM outros_documentos"),
                ElementsAre("a \"b\" % \\ c"));
}

TEST_F(OutrosDocumentos, TypeWithAnApostropheIsLostAndLogged)
{
    command.m_eCmdType = CMD_LEITURA_MF;

    EXPECT_EQ(command.OutrosDocumentosDBLogger(db, "M'F"), TRUE);

    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'22', Erro:'near \"F\": syntax error'",
            beforeType + "M'F')"));
    EXPECT_THAT(Rows("SELECT * FROM outros_documentos"), IsEmpty());
}

TEST_F(OutrosDocumentos, InsertAnswersWhatItsExecutionReports)
{
    RejectNextExecutions(1);
    EXPECT_EQ(command.OutrosDocumentosDBLogger(db, "LX"), FALSE);
    EXPECT_EQ(command.OutrosDocumentosDBLogger(db, "LX"), TRUE);
}

TEST_F(OutrosDocumentos, StatementOneByteShortOfItsArrayIsExecutedWhole)
{
    const std::string type = LogStatementOf(7998);

    EXPECT_EQ(Statement().size(), 7998u);
    EXPECT_THAT(Rows("SELECT id_tipo_documento FROM outros_documentos"), ElementsAre(type));
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(OutrosDocumentos, StatementThatFillsItsArrayIsExecutedWhole)
{
    const std::string type = LogStatementOf(7999);

    EXPECT_EQ(Statement().size(), 7999u);
    EXPECT_THAT(Rows("SELECT id_tipo_documento FROM outros_documentos"), ElementsAre(type));
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(OutrosDocumentos, StatementOneByteOverItsArrayIsLoggedAndNotExecuted)
{
    command.m_eCmdType = CMD_LEITURA_X;

    const std::string type = LogStatementOf(8000);

    EXPECT_THAT(Statements(), IsEmpty());
    EXPECT_THAT(Rows("SELECT * FROM outros_documentos"), IsEmpty());
    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'20', Erro:'statement too long'",
            beforeType + type));
}

TEST_F(OutrosDocumentos, StatementFarOverItsArrayIsLoggedUpToTheTextThatDoesNotFit)
{
    LogStatementOf(100000);

    EXPECT_THAT(Statements(), IsEmpty());
    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'0', Erro:'statement too long'",
            beforeType));
    EXPECT_EQ(command.m_dtExecEnd.s, Instant("2026-03-02 08:15:30").s);
}

TEST_F(OutrosDocumentos, StatementTooLongWithoutMemoryForTheMessageIsNotLogged)
{
    seam.nextMallocIsTheMessages = true;
    seam.messageOutOfMemory = true;

    LogStatementOf(8000);

    EXPECT_EQ(seam.messageBytes, std::string("statement too long").size() + 200);
    EXPECT_THAT(Statements(), IsEmpty());
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(OutrosDocumentos, EndUpdateNamesTheDocumentByItsNumberAlone)
{
    fiscal.SetCounter(COUNTER_COO, 77);
    command.m_dtExecEnd = Instant("2026-03-02 09:00:00");

    EXPECT_EQ(command.OutrosDocumentosDataFinalUpdate(db), TRUE);

    EXPECT_EQ(
        Statement(),
        "UPDATE outros_documentos SET data_hora_fim_emissao = '2026-03-02 09:00:00' WHERE cont_coo = 77");
    EXPECT_THAT(fiscal.calls, ElementsAre("Contador_Get(COUNTER_COO)"));
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(OutrosDocumentos, EndUpdateChangesEveryRowOfTheDocumentNumberAndNoOther)
{
    Execute("INSERT INTO outros_documentos VALUES"
            " (77,1,1,1,1,1,'2026-03-02 08:00:00','2026-03-02 08:00:00','CC'),"
            " (77,2,2,2,2,2,'2026-03-02 08:01:00','2026-03-02 08:01:00','RG'),"
            " (78,1,1,1,1,1,'2026-03-02 08:02:00','2026-03-02 08:02:00','CC')");
    fiscal.SetCounter(COUNTER_COO, 77);
    command.m_dtExecEnd = Instant("2026-03-02 09:00:00");

    command.OutrosDocumentosDataFinalUpdate(db);

    EXPECT_THAT(Rows("SELECT * FROM outros_documentos"),
                ElementsAre("77|1|1|1|1|1|2026-03-02 08:00:00|2026-03-02 09:00:00|CC",
                            "77|2|2|2|2|2|2026-03-02 08:01:00|2026-03-02 09:00:00|RG",
                            "78|1|1|1|1|1|2026-03-02 08:02:00|2026-03-02 08:02:00|CC"));
}

TEST_F(OutrosDocumentos, EndUpdateWithAnUnsetEndWritesTheStartAndKeepsIt)
{
    command.m_dtExecEnd.s = matlong[0];

    command.OutrosDocumentosDataFinalUpdate(db);

    EXPECT_EQ(
        Statement(),
        "UPDATE outros_documentos SET data_hora_fim_emissao = '2026-03-02 08:15:30' WHERE cont_coo = 0");
    EXPECT_EQ(command.m_dtExecEnd.s, Instant("2026-03-02 08:15:30").s);
}

TEST_F(OutrosDocumentos, EndUpdateOfTheExtremeDocumentNumberFitsItsArray)
{
    fiscal.SetCounter(COUNTER_COO, -2147483647 - 1);
    command.m_dtExecEnd.s = 4294967295u;

    command.OutrosDocumentosDataFinalUpdate(db);

    EXPECT_EQ(
        Statement(),
        "UPDATE outros_documentos SET data_hora_fim_emissao = '2106-02-07 06:28:15' WHERE cont_coo = -2147483648");
}

TEST_F(OutrosDocumentos, EndUpdateOfADocumentWithoutARowChangesNothingAndIsNoError)
{
    Execute("INSERT INTO outros_documentos VALUES"
            " (78,1,1,1,1,1,'2026-03-02 08:02:00','2026-03-02 08:02:00','CC')");
    fiscal.SetCounter(COUNTER_COO, 77);

    EXPECT_EQ(command.OutrosDocumentosDataFinalUpdate(db), TRUE);

    EXPECT_THAT(Rows("SELECT * FROM outros_documentos"),
                ElementsAre("78|1|1|1|1|1|2026-03-02 08:02:00|2026-03-02 08:02:00|CC"));
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(OutrosDocumentos, EndUpdateThatTheEngineRejectsIsLogged)
{
    Execute("DROP TABLE outros_documentos");
    command.m_eCmdType = CMD_FECHA_CCD_GERENCIAL;

    EXPECT_EQ(command.OutrosDocumentosDataFinalUpdate(db), TRUE);

    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'10', Erro:'no such table: outros_documentos'",
            "UPDATE outros_documentos SET data_hora_fim_emissao = '2026-03-02 08:15:30' WHERE cont_coo = 0"));
}

TEST_F(OutrosDocumentos, EndUpdateAnswersWhatItsExecutionReports)
{
    RejectNextExecutions(1);
    EXPECT_EQ(command.OutrosDocumentosDataFinalUpdate(db), FALSE);
    EXPECT_EQ(command.OutrosDocumentosDataFinalUpdate(db), TRUE);
}

} // namespace

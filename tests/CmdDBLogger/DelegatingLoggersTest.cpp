// The loggers that hand on to the log of other documents, and those that have nothing to log.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/LoggerTest.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class DelegatingLoggers : public LoggerTest
{
  protected:
    DelegatingLoggers()
    {
        fiscal.SetCounter(COUNTER_COO, 1234);
        fiscal.SetCounter(COUNTER_GNF, 56);
        fiscal.SetCounter(COUNTER_GRG, 7);
        fiscal.SetCounter(COUNTER_CDC, 8);
        fiscal.SetCounter(COUNTER_CRZ, 9);
    }

    // Logs a command of a class, ended at 08:16:01, and answers its one statement. An execution
    // that reports 0 must be the logger's answer too.
    template <class CommandClass>
    std::string Logged(CommandClass command)
    {
        command.m_dtExecEnd = Instant("2026-03-02 08:16:01");
        EXPECT_EQ(command.DBLogger(db), TRUE);
        const std::string statement = Statement();
        EXPECT_THAT(LogEntries(), IsEmpty());

        RejectNextExecutions(1);
        EXPECT_EQ(command.DBLogger(db), FALSE);
        return statement;
    }
    template <class CommandClass>
    std::string Logged()
    {
        return Logged(NewCommand<CommandClass>());
    }

    // Logs a command that has nothing to log: neither fiscal data model nor database are there.
    template <class CommandClass>
    void ExpectNothingLogged()
    {
        CommandClass command;
        EXPECT_EQ(command.DBLogger(nullptr), TRUE);
        EXPECT_EQ(command.m_dtExecEnd.s, 0u);
        EXPECT_THAT(Statements(), IsEmpty());
        EXPECT_THAT(LogEntries(), IsEmpty());
    }
};

TEST_F(DelegatingLoggers, PrintedXReadingIsADocumentLX)
{
    auto command = NewCommand<CmdLeituraX>();
    command.m_eMidia = IMPRESSAO;
    EXPECT_EQ(
        Logged(command),
        "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (1234,1,56,7,8,9,'2026-03-02 08:15:30','2026-03-02 08:16:01','LX')");
}

TEST_F(DelegatingLoggers, XReadingToAFileIsNotLogged)
{
    CmdLeituraX command;
    command.m_eMidia = ARQUIVO;

    EXPECT_EQ(command.DBLogger(nullptr), TRUE);

    EXPECT_THAT(Statements(), IsEmpty());
    EXPECT_THAT(LogEntries(), IsEmpty());
    EXPECT_EQ(command.m_dtExecEnd.s, 0u);
}

TEST_F(DelegatingLoggers, XReadingToAnyOtherMediumIsADocumentLX)
{
    for (const int medium : {0, 1, 3, 4, -1}) {
        auto command = NewCommand<CmdLeituraX>();
        command.m_eMidia = static_cast<EMidia>(medium);
        command.DBLogger(db);
    }
    EXPECT_THAT(Rows("SELECT id_tipo_documento FROM outros_documentos"),
                ElementsAre("LX", "LX", "LX", "LX", "LX"));
}

TEST_F(DelegatingLoggers, FiscalMemoryReadingIsADocumentMF)
{
    EXPECT_EQ(
        Logged<CmdLeituraMF>(),
        "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (1234,1,56,7,8,9,'2026-03-02 08:15:30','2026-03-02 08:16:01','MF')");
}

TEST_F(DelegatingLoggers, LeavingInterventionLIsADocumentLX)
{
    EXPECT_EQ(
        Logged<CmdSaidaMILInterno>(),
        "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (1234,1,56,7,8,9,'2026-03-02 08:15:30','2026-03-02 08:16:01','LX')");
}

TEST_F(DelegatingLoggers, LeavingInterventionTIsADocumentLX)
{
    EXPECT_EQ(
        Logged<CmdSaidaMITInterno>(),
        "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (1234,1,56,7,8,9,'2026-03-02 08:15:30','2026-03-02 08:16:01','LX')");
}

TEST_F(DelegatingLoggers, OpeningAVoucherIsADocumentCC)
{
    EXPECT_EQ(
        Logged<CmdAbreCCD>(),
        "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (1234,1,56,7,8,9,'2026-03-02 08:15:30','2026-03-02 08:16:01','CC')");
}

TEST_F(DelegatingLoggers, OpeningAManagementReportIsADocumentRG)
{
    EXPECT_EQ(
        Logged<CmdAbreGerencial>(),
        "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (1234,1,56,7,8,9,'2026-03-02 08:15:30','2026-03-02 08:16:01','RG')");
}

TEST_F(DelegatingLoggers, ClosingAVoucherOrReportUpdatesItsEnd)
{
    EXPECT_EQ(
        Logged<CmdFechaCCDGerencial>(),
        "UPDATE outros_documentos SET data_hora_fim_emissao = '2026-03-02 08:16:01' WHERE cont_coo = 1234");
}

TEST_F(DelegatingLoggers, VoucherOpenedAndClosedIsOneRowWithItsEnd)
{
    auto open = NewCommand<CmdAbreCCD>();
    open.DBLogger(db);
    EXPECT_THAT(
        Rows("SELECT data_hora_inicio_emissao, data_hora_fim_emissao FROM outros_documentos"),
        ElementsAre("2026-03-02 08:15:30|2026-03-02 08:15:30"));

    auto close = NewCommand<CmdFechaCCDGerencial>();
    close.m_dtExecStart = Instant("2026-03-02 08:17:00");
    close.DBLogger(db);

    EXPECT_THAT(Rows("SELECT * FROM outros_documentos"),
                ElementsAre("1234|1|56|7|8|9|2026-03-02 08:15:30|2026-03-02 08:17:00|CC"));
}

TEST_F(DelegatingLoggers, VoucherWhoseInsertFailedIsClosedWithoutError)
{
    Execute("ALTER TABLE outros_documentos RENAME TO away");
    NewCommand<CmdAbreCCD>().DBLogger(db);
    Execute("ALTER TABLE away RENAME TO outros_documentos");
    EXPECT_EQ(LogEntries().size(), 2u);
    Forget();

    EXPECT_EQ(NewCommand<CmdFechaCCDGerencial>().DBLogger(db), TRUE);

    EXPECT_THAT(LogEntries(), IsEmpty());
    EXPECT_THAT(Rows("SELECT * FROM outros_documentos"), IsEmpty());
}

TEST_F(DelegatingLoggers, RejectedDocumentLeavesTheCommandUnaffected)
{
    Execute("DROP TABLE outros_documentos");

    EXPECT_EQ(NewCommand<CmdLeituraMF>().DBLogger(db), TRUE);

    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'22', Erro:'no such table: outros_documentos'",
            "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (1234,1,56,7,8,9,'2026-03-02 08:15:30','2026-03-02 08:15:30','MF')"));
}

TEST_F(DelegatingLoggers, ReversingAVoucherIsNotLogged)
{
    ExpectNothingLogged<CmdAbreEstornoCCD>();
}

TEST_F(DelegatingLoggers, ProgrammingATaxRateIsNotLogged)
{
    ExpectNothingLogged<CmdInsereAliquota>();
}

TEST_F(DelegatingLoggers, EnablingTotalizersIsNotLogged)
{
    ExpectNothingLogged<CmdHabilitaTotalizadores>();
}

TEST_F(DelegatingLoggers, DisablingTotalizersIsNotLogged)
{
    ExpectNothingLogged<CmdDesabilitaTotalizadores>();
}

TEST_F(DelegatingLoggers, ProgrammingTheShopIsNotLogged)
{
    ExpectNothingLogged<CmdProgramaLoja>();
}

TEST_F(DelegatingLoggers, DocumentIsAskedForItsCountersAndAnEndForItsNumber)
{
    const std::vector<std::string> document = {
        "Contador_Get(COUNTER_COO)", "Contador_Get(COUNTER_GNF)", "Contador_Get(COUNTER_GRG)",
        "Contador_Get(COUNTER_CDC)", "Contador_Get(COUNTER_CRZ)"};
    const auto questions = [this](auto command) {
        Forget();
        command.DBLogger(db);
        return fiscal.calls;
    };
    EXPECT_EQ(questions(NewCommand<CmdLeituraX>()), document);
    EXPECT_EQ(questions(NewCommand<CmdLeituraMF>()), document);
    EXPECT_EQ(questions(NewCommand<CmdSaidaMILInterno>()), document);
    EXPECT_EQ(questions(NewCommand<CmdSaidaMITInterno>()), document);
    EXPECT_EQ(questions(NewCommand<CmdAbreCCD>()), document);
    EXPECT_EQ(questions(NewCommand<CmdAbreGerencial>()), document);
    EXPECT_THAT(questions(NewCommand<CmdFechaCCDGerencial>()),
                ElementsAre("Contador_Get(COUNTER_COO)"));
}

} // namespace

// The register's identity: serial number with the basic software's version, and till number.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/LoggerTest.h"
#include "tests/CmdDBLogger/ScriptedCount.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class IdentidadeECF : public LoggerTest
{
  protected:
    IdentidadeECF()
    {
        SetText(command.m_sNumSerie, "NS0123456789");
        SetText(command.m_sMarca, "MARCA");
        SetText(command.m_sModelo, "MODELO 1");
        SetText(command.m_sTipo, "ECF-IF");
        fiscal.texts["DadosECF_GetNrOrdemSeq()"] = "007";
        fiscal.texts["DadosECF_GetVersaoSB()"] = "01.02.03";
    }

    CmdProgramaNrSerie command = NewCommand<CmdProgramaNrSerie>();

    BOOL ProgramSerialNumber()
    {
        Forget();
        const BOOL result = command.DBLogger(db);
        EXPECT_EQ(OpenQueries(), 0);
        return result;
    }

    BOOL ProgramTill(int number)
    {
        Forget();
        auto till = NewCommand<CmdProgramaSequenciaECF>();
        till.m_iNumCaixa = number;
        return till.DBLogger(db);
    }

    const std::string insertOfIdentity =
        "INSERT INTO dados_ecf (num_serie, marca, modelo, tipo, num_caixa) VALUES ('NS0123456789','MARCA','MODELO 1','ECF-IF',007)";
    const std::string updateOfIdentity =
        "UPDATE dados_ecf SET num_serie = 'NS0123456789',marca = 'MARCA',modelo = 'MODELO 1',tipo = 'ECF-IF' WHERE num_ecf = 1";
    const std::string insertOfVersion =
        "INSERT INTO versao_sb(num_ecf, versao) VALUES(1,'01.02.03')";
};

TEST_F(IdentidadeECF, FirstSerialNumberInsertsTheIdentityThenTheVersion)
{
    EXPECT_EQ(ProgramSerialNumber(), TRUE);

    EXPECT_THAT(
        Statements(),
        ElementsAre(
            "INSERT INTO dados_ecf (num_serie, marca, modelo, tipo, num_caixa) VALUES ('NS0123456789','MARCA','MODELO 1','ECF-IF',007)",
            "INSERT INTO versao_sb(num_ecf, versao) VALUES(1,'01.02.03')"));
    ASSERT_EQ(Queries().size(), 2u);
    EXPECT_EQ(Queries()[0].text, "SELECT count(*) FROM dados_ecf");
    EXPECT_EQ(Queries()[0].bytes, 31);
    EXPECT_EQ(Queries()[1].text, "SELECT count(*) FROM versao_sb");
    EXPECT_EQ(Queries()[1].bytes, 31);
    EXPECT_THAT(LogEntries(), IsEmpty());
    EXPECT_THAT(fiscal.calls,
                ElementsAre("DadosECF_GetNrOrdemSeq(500)", "DadosECF_GetVersaoSB(500)"));
    EXPECT_THAT(Rows("SELECT * FROM dados_ecf"),
                ElementsAre("1|NS0123456789|MARCA|MODELO 1|ECF-IF|7"));
    EXPECT_THAT(Rows("SELECT * FROM versao_sb"), ElementsAre("1|01.02.03"));
}

TEST_F(IdentidadeECF, SecondSerialNumberUpdatesTheFourTextsAlone)
{
    ProgramSerialNumber();
    SetText(command.m_sNumSerie, "N");
    SetText(command.m_sMarca, "M");
    SetText(command.m_sModelo, "O");
    SetText(command.m_sTipo, "");

    EXPECT_EQ(ProgramSerialNumber(), 1);

    EXPECT_EQ(
        Statement(),
        "UPDATE dados_ecf SET num_serie = 'N',marca = 'M',modelo = 'O',tipo = '' WHERE num_ecf = 1");
    EXPECT_THAT(fiscal.calls, IsEmpty());
    EXPECT_THAT(Rows("SELECT * FROM dados_ecf"), ElementsAre("1|N|M|O||7"));
    EXPECT_THAT(Rows("SELECT * FROM versao_sb"), ElementsAre("1|01.02.03"));
}

TEST_F(IdentidadeECF, NoSequenceNumberIsTillZero)
{
    fiscal.texts["DadosECF_GetNrOrdemSeq()"] = "";
    ProgramSerialNumber();
    EXPECT_EQ(
        Statements()[0],
        "INSERT INTO dados_ecf (num_serie, marca, modelo, tipo, num_caixa) VALUES ('NS0123456789','MARCA','MODELO 1','ECF-IF',0)");
    EXPECT_THAT(Rows("SELECT num_caixa FROM dados_ecf"), ElementsAre("0"));
}

TEST_F(IdentidadeECF, SequenceNumberOfOneCharacterIsWritten)
{
    fiscal.texts["DadosECF_GetNrOrdemSeq()"] = "8";
    ProgramSerialNumber();
    EXPECT_THAT(Rows("SELECT num_caixa FROM dados_ecf"), ElementsAre("8"));
}

TEST_F(IdentidadeECF, SequenceNumberThatIsNoNumberLosesTheIdentityButNotTheVersion)
{
    fiscal.texts["DadosECF_GetNrOrdemSeq()"] = "1 2";
    EXPECT_EQ(ProgramSerialNumber(), TRUE);
    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'257', Erro:'near \"2\": syntax error'",
            "INSERT INTO dados_ecf (num_serie, marca, modelo, tipo, num_caixa) VALUES ('NS0123456789','MARCA','MODELO 1','ECF-IF',1 2)"));
    EXPECT_THAT(Rows("SELECT * FROM dados_ecf"), IsEmpty());
    EXPECT_THAT(Rows("SELECT * FROM versao_sb"), ElementsAre("1|01.02.03"));
}

TEST_F(IdentidadeECF, TextsThatFillTheirArraysAreWrittenWhole)
{
    for (const std::size_t size : {498u, 499u}) {
        Execute("DELETE FROM dados_ecf");
        Execute("DELETE FROM versao_sb");
        const std::string number(size, '1');
        const std::string version(size, 'v');
        fiscal.texts["DadosECF_GetNrOrdemSeq()"] = number;
        fiscal.texts["DadosECF_GetVersaoSB()"] = version;
        ProgramSerialNumber();
        EXPECT_THAT(
            Statements(),
            ElementsAre(
                "INSERT INTO dados_ecf (num_serie, marca, modelo, tipo, num_caixa) VALUES ('NS0123456789','MARCA','MODELO 1','ECF-IF'," +
                    number + ")",
                "INSERT INTO versao_sb(num_ecf, versao) VALUES(1,'" + version + "')"));
        EXPECT_THAT(LogEntries(), IsEmpty());
    }
}

TEST_F(IdentidadeECF, ParametersThatFillTheirFieldsAreWrittenWhole)
{
    SetText(command.m_sMarca, "ABCDEFGHIJKLMNO");
    SetText(command.m_sModelo, "ABCDEFGHIJKLMNOPQRST");
    SetText(command.m_sTipo, "ABCDEFG");
    SetText(command.m_sNumSerie, "01234567890123456789");
    ProgramSerialNumber();
    EXPECT_THAT(Rows("SELECT num_serie, marca, modelo, tipo FROM dados_ecf"),
                ElementsAre("01234567890123456789|ABCDEFGHIJKLMNO|ABCDEFGHIJKLMNOPQRST|ABCDEFG"));
}

TEST_F(IdentidadeECF, ParametersWithoutATerminatorEndWithTheirFields)
{
    FillWithoutTerminator(command.m_sMarca, "ABCDEFGHIJKLMNOP");
    FillWithoutTerminator(command.m_sModelo, "abcdefghijklmnopqrstu");
    FillWithoutTerminator(command.m_sTipo, "ABCDEFGH");
    FillWithoutTerminator(command.m_sNumSerie, "012345678901234567890");
    for (int round = 0; round < 2; ++round) { // the insert, then the update
        ProgramSerialNumber();
        EXPECT_THAT(
            Rows("SELECT num_serie, marca, modelo, tipo FROM dados_ecf"),
            ElementsAre("012345678901234567890|ABCDEFGHIJKLMNOP|abcdefghijklmnopqrstu|ABCDEFGH"));
        Execute("UPDATE dados_ecf SET num_serie = '', marca = '', modelo = '', tipo = ''");
    }
}

TEST_F(IdentidadeECF, ParameterWithAnApostropheLosesTheIdentityButNotTheVersion)
{
    SetText(command.m_sMarca, "D'AVILA");
    EXPECT_EQ(ProgramSerialNumber(), TRUE);
    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'257', Erro:'near \"AVILA\": syntax error'",
            "INSERT INTO dados_ecf (num_serie, marca, modelo, tipo, num_caixa) VALUES ('NS0123456789','D'AVILA','MODELO 1','ECF-IF',007)"));
    EXPECT_THAT(Rows("SELECT * FROM versao_sb"), ElementsAre("1|01.02.03"));

    Execute("INSERT INTO dados_ecf (marca) VALUES ('X')");
    EXPECT_EQ(ProgramSerialNumber(), 1);
    EXPECT_EQ(
        LogEntries()[1],
        "UPDATE dados_ecf SET num_serie = 'NS0123456789',marca = 'D'AVILA',modelo = 'MODELO 1',tipo = 'ECF-IF' WHERE num_ecf = 1");
}

TEST_F(IdentidadeECF, VersionWithAnApostropheIsLostAndLogged)
{
    fiscal.texts["DadosECF_GetVersaoSB()"] = "v'1";
    EXPECT_EQ(ProgramSerialNumber(), 1);
    EXPECT_EQ(LogEntries().size(), 2u);
    EXPECT_EQ(LogEntries()[1], "INSERT INTO versao_sb(num_ecf, versao) VALUES(1,'v'1')");
    EXPECT_THAT(Rows("SELECT * FROM versao_sb"), IsEmpty());
}

TEST_F(IdentidadeECF, VersionThatIsMissingIsInsertedBesideAnIdentity)
{
    Execute("INSERT INTO dados_ecf (marca) VALUES ('X')");
    EXPECT_EQ(ProgramSerialNumber(), TRUE);
    EXPECT_THAT(Statements(), ElementsAre(updateOfIdentity, insertOfVersion));
}

TEST_F(IdentidadeECF, VersionThatIsThereStaysBesideANewIdentity)
{
    Execute("INSERT INTO versao_sb VALUES (1,'00.00.01')");
    EXPECT_EQ(ProgramSerialNumber(), 1);
    EXPECT_THAT(Statements(), ElementsAre(insertOfIdentity));
    EXPECT_THAT(Rows("SELECT * FROM versao_sb"), ElementsAre("1|00.00.01"));
}

TEST_F(IdentidadeECF, OnlyTheFirstIdentityIsUpdatedAmongSeveral)
{
    Execute("INSERT INTO dados_ecf (marca) VALUES ('X'), ('Y'), ('Z')");
    ProgramSerialNumber();
    EXPECT_EQ(Statements()[0], updateOfIdentity);
    EXPECT_THAT(Rows("SELECT num_ecf, marca FROM dados_ecf"), ElementsAre("1|MARCA", "2|Y", "3|Z"));
}

TEST_F(IdentidadeECF, IdentitiesThatCannotBeCountedAreNone)
{
    Execute("DROP TABLE dados_ecf");
    EXPECT_EQ(ProgramSerialNumber(), TRUE);
    EXPECT_THAT(Statements(), ElementsAre(insertOfIdentity, insertOfVersion));
    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'257', Erro:'no such table: dados_ecf'",
            insertOfIdentity));
    EXPECT_THAT(Rows("SELECT * FROM versao_sb"), ElementsAre("1|01.02.03"));
}

TEST_F(IdentidadeECF, VersionsThatCannotBeCountedAreAsManyAsIdentitiesWere)
{
    Execute("DROP TABLE versao_sb");

    EXPECT_EQ(ProgramSerialNumber(), TRUE);
    EXPECT_THAT(Statements(), ElementsAre(insertOfIdentity, insertOfVersion));
    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'257', Erro:'no such table: versao_sb'",
            insertOfVersion));

    EXPECT_EQ(ProgramSerialNumber(), 1);
    EXPECT_THAT(Statements(), ElementsAre(updateOfIdentity));
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(IdentidadeECF, WithoutTablesBothInsertsAreTried)
{
    DropTables();
    EXPECT_EQ(ProgramSerialNumber(), TRUE);
    EXPECT_THAT(Statements(), ElementsAre(insertOfIdentity, insertOfVersion));
    EXPECT_EQ(LogEntries().size(), 4u);
}

TEST_F(IdentidadeECF, IdentityCountWithoutATextOrAFailedStepIsNone)
{
    ScriptedCount count(db);
    count.AnswerNull();
    count.AnswerText("1");
    EXPECT_EQ(ProgramSerialNumber(), 1);
    EXPECT_THAT(Statements(), ElementsAre(insertOfIdentity));
    count.FailStep();
    count.AnswerText("1");
    EXPECT_EQ(ProgramSerialNumber(), 1);
    EXPECT_THAT(Statements(), ElementsAre(insertOfIdentity));
}

TEST_F(IdentidadeECF, VersionCountWithoutATextOrAFailedStepIsTheIdentitiesCount)
{
    ScriptedCount count(db);
    count.AnswerText("0");
    count.AnswerNull();
    EXPECT_EQ(ProgramSerialNumber(), TRUE);
    EXPECT_THAT(Statements(), ElementsAre(insertOfIdentity, insertOfVersion));
    count.AnswerText("0");
    count.FailStep();
    EXPECT_EQ(ProgramSerialNumber(), TRUE);
    EXPECT_THAT(Statements(), ElementsAre(insertOfIdentity, insertOfVersion));
    count.AnswerText("2");
    count.AnswerNull();
    EXPECT_EQ(ProgramSerialNumber(), 1);
    EXPECT_THAT(Statements(), ElementsAre(updateOfIdentity));
    count.AnswerText("2");
    count.FailStep();
    EXPECT_EQ(ProgramSerialNumber(), 1);
    EXPECT_THAT(Statements(), ElementsAre(updateOfIdentity));
    EXPECT_EQ(count.Left(), 0u);
}

TEST_F(IdentidadeECF, NegativeCountsAreCounts)
{
    ScriptedCount count(db);
    count.AnswerText("-1");
    count.AnswerText("-1");
    EXPECT_EQ(ProgramSerialNumber(), 1);
    EXPECT_THAT(Statements(), ElementsAre(updateOfIdentity));
}

TEST_F(IdentidadeECF, IdentityThatReportsZeroEndsItBeforeTheVersions)
{
    for (int round = 0; round < 2; ++round) { // the insert, then the update
        Forget();
        RejectNextExecutions(1);
        EXPECT_EQ(command.DBLogger(db), 0);
        EXPECT_EQ(Statements().size(), 1u);
        EXPECT_EQ(Queries().size(), 1u);
    }
    EXPECT_THAT(Rows("SELECT * FROM versao_sb"), IsEmpty());
}

TEST_F(IdentidadeECF, VersionThatReportsZeroIsAnsweredZero)
{
    RejectNextExecutions(1, 1);
    EXPECT_EQ(ProgramSerialNumber(), 0);
    EXPECT_EQ(Statements().size(), 2u);
}

TEST_F(IdentidadeECF, ExecutionsThatReportAnythingElseAreAnsweredOne)
{
    ReportNextExecutions(2, 2);
    EXPECT_EQ(ProgramSerialNumber(), 1);
    EXPECT_EQ(Statements().size(), 2u);
}

// A data model that answers its version from memory of its own.
class VersionElsewhere : public FakeController
{
  public:
    std::string version;

    char* DadosECF_GetVersaoSB(char*, int) override { return version.data(); }
};

TEST_F(IdentidadeECF, VersionIsTheTextThatIsAnswered)
{
    VersionElsewhere ecf;
    ecf.texts["DadosECF_GetNrOrdemSeq()"] = "";
    ecf.version = "09.08.07";
    command.FDController = &ecf;
    ProgramSerialNumber();
    EXPECT_EQ(Statements()[1], "INSERT INTO versao_sb(num_ecf, versao) VALUES(1,'09.08.07')");
}

TEST_F(IdentidadeECF, VersionThatDoesNotFitItsStatementIsLoggedAndNotExecuted)
{
    VersionElsewhere ecf;
    ecf.texts["DadosECF_GetNrOrdemSeq()"] = "";
    ecf.version = std::string(5000, 'v');
    command.FDController = &ecf;
    EXPECT_EQ(ProgramSerialNumber(), 1);
    EXPECT_EQ(Statements().size(), 1u);
    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'257', Erro:'statement too long'",
            "INSERT INTO versao_sb(num_ecf, versao) VALUES(1,'"));
}

TEST_F(IdentidadeECF, TillNumberIsUpdatedWithoutACount)
{
    ProgramSerialNumber();
    EXPECT_EQ(ProgramTill(12), TRUE);
    EXPECT_EQ(Statement(), "UPDATE dados_ecf SET num_caixa = 12 WHERE num_ecf = 1");
    EXPECT_THAT(Queries(), IsEmpty());
    EXPECT_THAT(fiscal.calls, IsEmpty());
    EXPECT_THAT(Rows("SELECT * FROM dados_ecf"),
                ElementsAre("1|NS0123456789|MARCA|MODELO 1|ECF-IF|12"));

    ProgramTill(-1);
    EXPECT_EQ(Statement(), "UPDATE dados_ecf SET num_caixa = -1 WHERE num_ecf = 1");
}

TEST_F(IdentidadeECF, TillNumberBeforeAnIdentityWritesNothing)
{
    EXPECT_EQ(ProgramTill(12), TRUE);
    EXPECT_THAT(LogEntries(), IsEmpty());
    EXPECT_THAT(Rows("SELECT * FROM dados_ecf"), IsEmpty());
}

TEST_F(IdentidadeECF, TillNumberStaysWhenTheSerialNumberIsProgrammedAgain)
{
    ProgramSerialNumber();
    ProgramTill(12);
    ProgramSerialNumber();
    EXPECT_THAT(Rows("SELECT num_caixa FROM dados_ecf"), ElementsAre("12"));
}

TEST_F(IdentidadeECF, TillNumberAnswersWhatItsExecutionReports)
{
    RejectNextExecutions(1);
    EXPECT_EQ(ProgramTill(12), 0);
    DropTables();
    EXPECT_EQ(ProgramTill(12), TRUE);
    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'92', Erro:'no such table: dados_ecf'",
            "UPDATE dados_ecf SET num_caixa = 12 WHERE num_ecf = 1"));
}

} // namespace

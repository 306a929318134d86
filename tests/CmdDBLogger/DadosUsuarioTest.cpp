// The owner's data: names and address by one command, registrations by the other.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/LoggerTest.h"
#include "tests/CmdDBLogger/ScriptedCount.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class DadosUsuario : public LoggerTest
{
  protected:
    DadosUsuario()
    {
        SetOwner("RUA A, 10", "MERCEARIA B", "B E FILHOS LTDA");
        fiscal.SetCounter(COUNTER_CRO, 2);
        fiscal.money["Totalizador_GetGTIni(0)"] = Money("1234.56");
    }

    void SetOwner(const std::string& address, const std::string& tradeName,
                  const std::string& companyName)
    {
        fiscal.texts["DadosContribuinte_GetEndereco()"] = address;
        fiscal.texts["DadosContribuinte_GetNomeFantasia()"] = tradeName;
        fiscal.texts["DadosContribuinte_GetRazaoSocial()"] = companyName;
    }

    BOOL ProgramOwner()
    {
        Forget();
        return NewCommand<CmdProgramaUsuario>().DBLogger(db);
    }

    BOOL ProgramRegistrations(const std::string& cnpj = "12345678000195",
                              const std::string& ie = "110042490114",
                              const std::string& im = "98765", const std::string& uf = "SP")
    {
        Forget();
        auto command = NewCommand<CmdProgramaCNPJ_IE_IM>();
        SetText(command.m_sCNPJ, cnpj);
        SetText(command.m_sIE, ie);
        SetText(command.m_sIM, im);
        SetText(command.m_sUF, uf);
        return command.DBLogger(db);
    }
};

TEST_F(DadosUsuario, OwnerIsInsertedIntoAnEmptyTable)
{
    EXPECT_EQ(ProgramOwner(), TRUE);

    EXPECT_EQ(
        Statement(),
        "INSERT INTO dados_usuario (seq_usuario, endereco, nome_fantasia, razao_social, data_hora_gravacao, cont_cro, valor_gt) VALUES(1,'RUA A, 10','MERCEARIA B','B E FILHOS LTDA','2026-03-02 08:15:30',2,1234.56)");
    ASSERT_EQ(Queries().size(), 1u);
    EXPECT_EQ(Queries()[0].text, "SELECT count(*) FROM dados_usuario");
    EXPECT_EQ(Queries()[0].bytes, 35);
    EXPECT_EQ(OpenQueries(), 0);
    EXPECT_THAT(LogEntries(), IsEmpty());
    EXPECT_THAT(MoneyRequests(), ElementsAre("500,0,0,0"));
    EXPECT_THAT(
        Rows("SELECT * FROM dados_usuario"),
        ElementsAre(
            "1|RUA A, 10|MERCEARIA B|B E FILHOS LTDA|NULL|NULL|NULL|NULL|2026-03-02 08:15:30|2|1234.56"));
}

TEST_F(DadosUsuario, RegistrationsAreInsertedIntoAnEmptyTableWithTheOwner)
{
    EXPECT_EQ(ProgramRegistrations(), TRUE);

    EXPECT_EQ(
        Statement(),
        "INSERT INTO dados_usuario (seq_usuario, endereco, nome_fantasia, razao_social, cnpj, ie, im, uf, data_hora_gravacao, cont_cro, valor_gt) VALUES(1,'RUA A, 10','MERCEARIA B','B E FILHOS LTDA','12345678000195','110042490114','98765','SP','2026-03-02 08:15:30',2,1234.56)");
    ASSERT_EQ(Queries().size(), 1u);
    EXPECT_EQ(Queries()[0].text, "SELECT count(*) FROM dados_usuario");
    EXPECT_EQ(OpenQueries(), 0);
    EXPECT_THAT(LogEntries(), IsEmpty());
    EXPECT_THAT(
        Rows("SELECT * FROM dados_usuario"),
        ElementsAre(
            "1|RUA A, 10|MERCEARIA B|B E FILHOS LTDA|12345678000195|110042490114|98765|SP|2026-03-02 08:15:30|2|1234.56"));
}

TEST_F(DadosUsuario, OwnerIsUpdatedInItsRow)
{
    ProgramRegistrations();
    SetOwner("RUA C", "D", "E");
    EXPECT_EQ(ProgramOwner(), TRUE);

    EXPECT_EQ(
        Statement(),
        "UPDATE dados_usuario SET endereco = 'RUA C',nome_fantasia = 'D',razao_social = 'E', cont_cro = 2, valor_gt = 1234.56 WHERE seq_usuario = 1");
    EXPECT_EQ(OpenQueries(), 0);
    EXPECT_THAT(
        Rows("SELECT * FROM dados_usuario"),
        ElementsAre(
            "1|RUA C|D|E|12345678000195|110042490114|98765|SP|2026-03-02 08:15:30|2|1234.56"));
}

TEST_F(DadosUsuario, RegistrationsAreUpdatedInTheRowWithTheOwner)
{
    ProgramOwner();
    SetOwner("eee", "fff", "rrr");
    fiscal.money["Totalizador_GetGTIni(0)"] = Money("0.00");
    EXPECT_EQ(ProgramRegistrations("ccc", "iii", "mmm", "uu"), TRUE);

    EXPECT_EQ(
        Statement(),
        "UPDATE dados_usuario SET cnpj = 'ccc', ie = 'iii', uf = 'uu', im = 'mmm',cont_cro = 2 ,endereco = 'eee',nome_fantasia = 'fff',razao_social = 'rrr', valor_gt = 0.00 WHERE seq_usuario = 1");
    EXPECT_EQ(OpenQueries(), 0);
    EXPECT_THAT(Rows("SELECT * FROM dados_usuario"),
                ElementsAre("1|eee|fff|rrr|ccc|iii|mmm|uu|2026-03-02 08:15:30|2|0"));
}

TEST_F(DadosUsuario, UpdatesLeaveTheInstantOfTheRow)
{
    Execute("INSERT INTO dados_usuario (seq_usuario, data_hora_gravacao) VALUES (1,'2020-01-01')");
    ProgramOwner();
    ProgramRegistrations();
    EXPECT_THAT(Rows("SELECT data_hora_gravacao FROM dados_usuario"), ElementsAre("2020-01-01"));
}

TEST_F(DadosUsuario, NoRestartYetIsOneInANewRowAndZeroInAnUpdate)
{
    fiscal.SetCounter(COUNTER_CRO, 0);
    ProgramOwner();
    EXPECT_THAT(Rows("SELECT cont_cro FROM dados_usuario"), ElementsAre("1"));
    ProgramOwner();
    EXPECT_EQ(
        Statement(),
        "UPDATE dados_usuario SET endereco = 'RUA A, 10',nome_fantasia = 'MERCEARIA B',razao_social = 'B E FILHOS LTDA', cont_cro = 0, valor_gt = 1234.56 WHERE seq_usuario = 1");

    Execute("DELETE FROM dados_usuario");
    ProgramRegistrations();
    EXPECT_THAT(Rows("SELECT cont_cro FROM dados_usuario"), ElementsAre("1"));
    ProgramRegistrations("c", "i", "m", "u");
    EXPECT_EQ(
        Statement(),
        "UPDATE dados_usuario SET cnpj = 'c', ie = 'i', uf = 'u', im = 'm',cont_cro = 0 ,endereco = 'RUA A, 10',nome_fantasia = 'MERCEARIA B',razao_social = 'B E FILHOS LTDA', valor_gt = 1234.56 WHERE seq_usuario = 1");
}

TEST_F(DadosUsuario, OtherRestartsAreWrittenAsTheyAre)
{
    for (const int restarts : {1, -1}) {
        Execute("DELETE FROM dados_usuario");
        fiscal.SetCounter(COUNTER_CRO, restarts);
        ProgramOwner();
        EXPECT_THAT(Rows("SELECT cont_cro FROM dados_usuario"),
                    ElementsAre(std::to_string(restarts)));
    }
}

TEST_F(DadosUsuario, OnlyTheRowOfTheFirstOwnerIsUpdatedAmongSeveral)
{
    Execute("INSERT INTO dados_usuario (seq_usuario, endereco) VALUES (2,'x'), (1,'y'), (3,'z')");
    EXPECT_EQ(ProgramOwner(), TRUE);
    EXPECT_THAT(Rows("SELECT seq_usuario, endereco FROM dados_usuario"),
                ElementsAre("2|x", "1|RUA A, 10", "3|z"));
    EXPECT_EQ(ProgramRegistrations(), TRUE);
    EXPECT_THAT(Rows("SELECT seq_usuario, cnpj FROM dados_usuario"),
                ElementsAre("2|NULL", "1|12345678000195", "3|NULL"));
}

TEST_F(DadosUsuario, RowOfAnotherOwnerLetsNothingBeInserted)
{
    Execute("INSERT INTO dados_usuario (seq_usuario, endereco) VALUES (2,'x')");
    EXPECT_EQ(ProgramOwner(), TRUE);
    EXPECT_THAT(Rows("SELECT seq_usuario, endereco FROM dados_usuario"), ElementsAre("2|x"));
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(DadosUsuario, FiscalDataModelIsAskedOnceForEachValue)
{
    for (int round = 0; round < 2; ++round) { // the insert, then the update
        ProgramOwner();
        EXPECT_THAT(fiscal.calls,
                    ElementsAre("DadosContribuinte_GetEndereco(500)",
                                "DadosContribuinte_GetNomeFantasia(500)",
                                "DadosContribuinte_GetRazaoSocial(500)",
                                "Contador_Get(COUNTER_CRO)", "Totalizador_GetGTIni(0)"));
    }
    Execute("DELETE FROM dados_usuario");
    ProgramRegistrations();
    EXPECT_THAT(fiscal.calls, ElementsAre("DadosContribuinte_GetEndereco(500)",
                                          "DadosContribuinte_GetNomeFantasia(500)",
                                          "DadosContribuinte_GetRazaoSocial(500)",
                                          "Contador_Get(COUNTER_CRO)", "Totalizador_GetGTIni(0)"));
    // The update states the restarts before the owner.
    ProgramRegistrations();
    EXPECT_THAT(fiscal.calls,
                ElementsAre("Contador_Get(COUNTER_CRO)", "DadosContribuinte_GetEndereco(500)",
                            "DadosContribuinte_GetNomeFantasia(500)",
                            "DadosContribuinte_GetRazaoSocial(500)", "Totalizador_GetGTIni(0)"));
}

TEST_F(DadosUsuario, OwnersTextsThatFillTheirArraysAreWrittenWhole)
{
    for (const std::size_t size : {498u, 499u}) {
        Execute("DELETE FROM dados_usuario");
        const std::string a(size, 'a');
        const std::string n(size, 'n');
        const std::string r(size, 'r');
        SetOwner(a, n, r);
        ProgramOwner();
        EXPECT_EQ(
            Statement(),
            "INSERT INTO dados_usuario (seq_usuario, endereco, nome_fantasia, razao_social, data_hora_gravacao, cont_cro, valor_gt) VALUES(1,'" +
                a + "','" + n + "','" + r + "','2026-03-02 08:15:30',2,1234.56)");
        ProgramOwner();
        EXPECT_EQ(Statement(), "UPDATE dados_usuario SET endereco = '" + a + "',nome_fantasia = '" +
                                   n + "',razao_social = '" + r +
                                   "', cont_cro = 2, valor_gt = 1234.56 WHERE seq_usuario = 1");
        ProgramRegistrations("c", "i", "m", "u");
        EXPECT_EQ(
            Statement(),
            "UPDATE dados_usuario SET cnpj = 'c', ie = 'i', uf = 'u', im = 'm',cont_cro = 2 ,endereco = '" +
                a + "',nome_fantasia = '" + n + "',razao_social = '" + r +
                "', valor_gt = 1234.56 WHERE seq_usuario = 1");
        Execute("DELETE FROM dados_usuario");
        ProgramRegistrations("c", "i", "m", "u");
        EXPECT_EQ(
            Statement(),
            "INSERT INTO dados_usuario (seq_usuario, endereco, nome_fantasia, razao_social, cnpj, ie, im, uf, data_hora_gravacao, cont_cro, valor_gt) VALUES(1,'" +
                a + "','" + n + "','" + r + "','c','i','m','u','2026-03-02 08:15:30',2,1234.56)");
        EXPECT_THAT(LogEntries(), IsEmpty());
    }
}

TEST_F(DadosUsuario, RegistrationsThatFillTheirFieldsAreWrittenWhole)
{
    ProgramRegistrations("12345678901234", "ABCDEFGHIJKLMNOPQRST", "abcdefghijklmnopqrst", "RS");
    EXPECT_THAT(Rows("SELECT cnpj, ie, im, uf FROM dados_usuario"),
                ElementsAre("12345678901234|ABCDEFGHIJKLMNOPQRST|abcdefghijklmnopqrst|RS"));
    ProgramRegistrations("", "", "", "");
    EXPECT_THAT(Rows("SELECT cnpj, ie, im, uf FROM dados_usuario"), ElementsAre("|||"));
}

TEST_F(DadosUsuario, RegistrationsWithoutATerminatorEndWithTheirFields)
{
    auto command = NewCommand<CmdProgramaCNPJ_IE_IM>();
    FillWithoutTerminator(command.m_sCNPJ, "123456789012345");
    FillWithoutTerminator(command.m_sIE, "ABCDEFGHIJKLMNOPQRSTU");
    FillWithoutTerminator(command.m_sIM, "abcdefghijklmnopqrstu");
    FillWithoutTerminator(command.m_sUF, "RSX");
    for (int round = 0; round < 2; ++round) { // the insert, then the update
        command.DBLogger(db);
        EXPECT_THAT(Rows("SELECT cnpj, ie, im, uf FROM dados_usuario"),
                    ElementsAre("123456789012345|ABCDEFGHIJKLMNOPQRSTU|abcdefghijklmnopqrstu|RSX"));
        Execute("UPDATE dados_usuario SET cnpj = '', ie = '', im = '', uf = ''");
    }
}

TEST_F(DadosUsuario, TextWithAnApostropheIsLostAndLogged)
{
    SetOwner("RUA D'AGUA", "B", "C");
    EXPECT_EQ(ProgramOwner(), TRUE);
    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'93', Erro:'near \"AGUA\": syntax error'",
            "INSERT INTO dados_usuario (seq_usuario, endereco, nome_fantasia, razao_social, data_hora_gravacao, cont_cro, valor_gt) VALUES(1,'RUA D'AGUA','B','C','2026-03-02 08:15:30',2,1234.56)"));

    EXPECT_EQ(ProgramRegistrations(), TRUE);
    EXPECT_EQ(
        LogEntries()[0],
        "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'95', Erro:'near \"AGUA\": syntax error'");
    EXPECT_EQ(LogEntries().size(), 2u);
    EXPECT_THAT(Rows("SELECT * FROM dados_usuario"), IsEmpty());
}

TEST_F(DadosUsuario, CountThatCannotBePreparedEndsTheProgramming)
{
    DropTables();
    EXPECT_EQ(ProgramOwner(), 0);
    EXPECT_EQ(ProgramRegistrations(), 0);
    EXPECT_EQ(Queries().size(), 1u);
    EXPECT_THAT(Statements(), IsEmpty());
    EXPECT_THAT(LogEntries(), IsEmpty());
    EXPECT_EQ(OpenQueries(), 0);
    EXPECT_THAT(fiscal.calls, IsEmpty());
}

TEST_F(DadosUsuario, StepThatFailsEndsTheProgrammingWithItsStatementOpen)
{
    ScriptedCount count(db);
    count.FailStep();
    count.FailStep();
    EXPECT_EQ(ProgramOwner(), 0);
    EXPECT_EQ(OpenQueries(), 1);
    EXPECT_THAT(Statements(), IsEmpty());
    EXPECT_EQ(ProgramRegistrations(), 0);
    EXPECT_EQ(OpenQueries(), 2);
    EXPECT_THAT(Statements(), IsEmpty());
    EXPECT_THAT(LogEntries(), IsEmpty());
    ReleaseOpenQueries();
}

TEST_F(DadosUsuario, CountWithoutATextIsNoRow)
{
    ScriptedCount count(db);
    count.AnswerNull();
    count.AnswerNull();
    EXPECT_EQ(ProgramOwner(), TRUE);
    EXPECT_EQ(ProgramRegistrations(), TRUE);
    EXPECT_EQ(count.Left(), 0u);
    EXPECT_EQ(OpenQueries(), 0);
    EXPECT_THAT(Rows("SELECT cnpj FROM dados_usuario"), ElementsAre("NULL", "12345678000195"));
}

TEST_F(DadosUsuario, NegativeCountIsACount)
{
    ScriptedCount count(db);
    count.AnswerText("-1");
    count.AnswerText("-1");
    ProgramOwner();
    ProgramRegistrations();
    EXPECT_EQ(count.Left(), 0u);
    EXPECT_THAT(Rows("SELECT * FROM dados_usuario"), IsEmpty());
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(DadosUsuario, AnswerIsThatOfTheExecution)
{
    RejectNextExecutions(4);
    EXPECT_EQ(ProgramOwner(), 0);
    EXPECT_EQ(ProgramOwner(), 0);
    EXPECT_EQ(ProgramRegistrations(), 0);
    Execute("DELETE FROM dados_usuario");
    EXPECT_EQ(ProgramRegistrations(), 0);
}

// A data model that answers its texts from memory of its own.
class OwnerElsewhere : public FakeController
{
  public:
    std::string address = "RUA Z";
    std::string tradeName = "Y";
    std::string companyName = "X";

    char* DadosContribuinte_GetEndereco(char*, int) override { return address.data(); }
    char* DadosContribuinte_GetNomeFantasia(char*, int) override { return tradeName.data(); }
    char* DadosContribuinte_GetRazaoSocial(char*, int) override { return companyName.data(); }
};

TEST_F(DadosUsuario, TextsAreThoseThatAreAnswered)
{
    OwnerElsewhere owner;
    owner.SetCounter(COUNTER_CRO, 0);
    owner.money["Totalizador_GetGTIni(0)"] = Money("0");
    auto command = NewCommand<CmdProgramaUsuario>();
    auto registrations = NewCommand<CmdProgramaCNPJ_IE_IM>();
    command.FDController = &owner;
    registrations.FDController = &owner;

    command.DBLogger(db);
    command.DBLogger(db);
    registrations.DBLogger(db);
    Execute("DELETE FROM dados_usuario");
    registrations.DBLogger(db);

    EXPECT_THAT(
        Statements(),
        ElementsAre(
            "INSERT INTO dados_usuario (seq_usuario, endereco, nome_fantasia, razao_social, data_hora_gravacao, cont_cro, valor_gt) VALUES(1,'RUA Z','Y','X','2026-03-02 08:15:30',1,0.00)",
            "UPDATE dados_usuario SET endereco = 'RUA Z',nome_fantasia = 'Y',razao_social = 'X', cont_cro = 0, valor_gt = 0.00 WHERE seq_usuario = 1",
            "UPDATE dados_usuario SET cnpj = '', ie = '', uf = '', im = '',cont_cro = 0 ,endereco = 'RUA Z',nome_fantasia = 'Y',razao_social = 'X', valor_gt = 0.00 WHERE seq_usuario = 1",
            "INSERT INTO dados_usuario (seq_usuario, endereco, nome_fantasia, razao_social, cnpj, ie, im, uf, data_hora_gravacao, cont_cro, valor_gt) VALUES(1,'RUA Z','Y','X','','','','','2026-03-02 08:15:30',1,0.00)"));
}

TEST_F(DadosUsuario, StatementThatDoesNotFitItsArrayIsLoggedAndNotExecuted)
{
    OwnerElsewhere owner;
    owner.SetCounter(COUNTER_CRO, 0);
    owner.money["Totalizador_GetGTIni(0)"] = Money("0");
    owner.companyName = std::string(5000, 'x');
    auto command = NewCommand<CmdProgramaUsuario>();
    command.FDController = &owner;

    EXPECT_EQ(command.DBLogger(db), TRUE);

    EXPECT_THAT(Statements(), IsEmpty());
    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'93', Erro:'statement too long'",
            "INSERT INTO dados_usuario (seq_usuario, endereco, nome_fantasia, razao_social, data_hora_gravacao, cont_cro, valor_gt) VALUES(1,'RUA Z','Y','"));
    EXPECT_THAT(Rows("SELECT * FROM dados_usuario"), IsEmpty());
}

} // namespace

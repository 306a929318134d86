// Execution of one statement, and what the firmware log gets when the engine refuses it.
#include "tests/CmdDBLogger/Documento.h"
#include "tests/CmdDBLogger/LoggerTest.h"

#include <cstdio>
#include <sqlite3.h>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ExecuteSQL : public LoggerTest
{
  protected:
    Documento command = NewCommand<Documento>();
};

TEST_F(ExecuteSQL, SuccessfulStatementIsExecutedWithoutALogEntry)
{
    EXPECT_EQ(
        command.DBLoggerExecuteSQL(
            db, "INSERT INTO totalizador_nao_fiscal (num_indice, descricao) VALUES (5,'Gas')"),
        TRUE);

    EXPECT_THAT(
        Statements(),
        ElementsAre("INSERT INTO totalizador_nao_fiscal (num_indice, descricao) VALUES (5,'Gas')"));
    EXPECT_THAT(Rows("SELECT * FROM totalizador_nao_fiscal"), ElementsAre("5|Gas"));
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(ExecuteSQL, RejectedStatementIsLoggedAsMessageThenStatement)
{
    command.m_eCmdType = CMD_VENDE_ITEM;

    EXPECT_EQ(command.DBLoggerExecuteSQL(db, "INSERT INTO nada (a) VALUES (1)"), TRUE);

    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'2', Erro:'no such table: nada'",
            "INSERT INTO nada (a) VALUES (1)"));
}

TEST_F(ExecuteSQL, MessageNamesTheCommandByItsCodeInDecimal)
{
    command.m_eCmdType = CMD_ENTRADA_MIT_INTERNO;

    EXPECT_EQ(command.DBLoggerExecuteSQL(db, "INSERT INTO moeda (nada) VALUES (1)"), TRUE);

    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'267', Erro:'table moeda has no column named nada'",
            "INSERT INTO moeda (nada) VALUES (1)"));
}

TEST_F(ExecuteSQL, StatementWithAnApostropheInATextIsRejectedAndLogged)
{
    command.m_eCmdType = CMD_INSERE_OPNF;
    const std::string sql =
        "INSERT INTO totalizador_nao_fiscal (num_indice, descricao) VALUES (5,'D'Oeste')";

    EXPECT_EQ(command.DBLoggerExecuteSQL(db, sql.c_str()), TRUE);

    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'85', Erro:'near \"Oeste\": syntax error'",
            sql));
    EXPECT_THAT(Rows("SELECT * FROM totalizador_nao_fiscal"), IsEmpty());
}

TEST_F(ExecuteSQL, ConstraintThatRefusesTheRowIsLogged)
{
    Execute("CREATE UNIQUE INDEX um ON totalizador_nao_fiscal (num_indice)");
    Execute("INSERT INTO totalizador_nao_fiscal VALUES (5,'Gas')");
    const std::string sql =
        "INSERT INTO totalizador_nao_fiscal (num_indice, descricao) VALUES (5,'Luz')";

    EXPECT_EQ(command.DBLoggerExecuteSQL(db, sql.c_str()), TRUE);

    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'0', Erro:'UNIQUE constraint failed: totalizador_nao_fiscal.num_indice'",
            sql));
    EXPECT_THAT(Rows("SELECT * FROM totalizador_nao_fiscal"), ElementsAre("5|Gas"));
}

TEST_F(ExecuteSQL, ReadOnlyDatabaseIsLogged)
{
    Execute("PRAGMA query_only = 1");
    const std::string sql = "INSERT INTO versao_sb(num_ecf, versao) VALUES(1,'01.00.00')";

    EXPECT_EQ(command.DBLoggerExecuteSQL(db, sql.c_str()), TRUE);

    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'0', Erro:'attempt to write a readonly database'",
            sql));
}

TEST_F(ExecuteSQL, LockedDatabaseIsLoggedAndNotRetried)
{
    const std::string path = ::testing::TempDir() + "ecf_dblogger_locked.db";
    std::remove(path.c_str());
    sqlite3* owner = nullptr;
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &owner), SQLITE_OK);
    ASSERT_EQ(sqlite3_open(path.c_str(), &other), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(owner, "CREATE TABLE t (a); BEGIN EXCLUSIVE", nullptr, nullptr, nullptr),
              SQLITE_OK);
    Forget();

    EXPECT_EQ(command.DBLoggerExecuteSQL(other, "INSERT INTO t (a) VALUES (1)"), TRUE);

    EXPECT_THAT(Statements(), ElementsAre("INSERT INTO t (a) VALUES (1)"));
    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'0', Erro:'database is locked'",
            "INSERT INTO t (a) VALUES (1)"));
    sqlite3_close(other);
    sqlite3_close(owner);
    std::remove(path.c_str());
}

TEST_F(ExecuteSQL, NullHandleGivesNoErrorTextAndIsLoggedWithAnEmptyOne)
{
    EXPECT_EQ(command.DBLoggerExecuteSQL(nullptr, "INSERT INTO moeda (num_ecf) VALUES (1)"), TRUE);

    EXPECT_THAT(LogEntries(),
                ElementsAre("DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'0', Erro:''",
                            "INSERT INTO moeda (num_ecf) VALUES (1)"));
    EXPECT_EQ(seam.messageBytes, 200u);
}

TEST_F(ExecuteSQL, EngineWithoutMemoryForAnErrorTextIsLoggedWithAnEmptyOne)
{
    seam.engineOutOfMemory = true;
    command.m_eCmdType = CMD_ABRE_CUPOM;

    EXPECT_EQ(command.DBLoggerExecuteSQL(db, "INSERT INTO moeda (num_ecf) VALUES (1)"), TRUE);

    EXPECT_THAT(LogEntries(),
                ElementsAre("DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'1', Erro:''",
                            "INSERT INTO moeda (num_ecf) VALUES (1)"));
}

TEST_F(ExecuteSQL, WithoutMemoryForTheMessageNothingIsLogged)
{
    seam.messageOutOfMemory = true;

    EXPECT_EQ(command.DBLoggerExecuteSQL(db, "INSERT INTO nada (a) VALUES (1)"), TRUE);

    EXPECT_EQ(seam.messageBytes, std::string("no such table: nada").size() + 200);
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(ExecuteSQL, MessageBlockIsTheErrorTextAnd200Bytes)
{
    command.DBLoggerExecuteSQL(db, "INSERT INTO nada (a) VALUES (1)");

    EXPECT_EQ(seam.messageBytes, std::string("no such table: nada").size() + 200);
}

TEST_F(ExecuteSQL, ErrorTextIsReleasedOnEveryPath)
{
    command.DBLoggerExecuteSQL(db, "INSERT INTO nada (a) VALUES (1)");
    const sqlite3_int64 before = sqlite3_memory_used();

    command.DBLoggerExecuteSQL(db, "INSERT INTO nada (a) VALUES (1)");
    EXPECT_EQ(sqlite3_memory_used(), before);

    seam.messageOutOfMemory = true;
    command.DBLoggerExecuteSQL(db, "INSERT INTO nada (a) VALUES (1)");
    EXPECT_EQ(sqlite3_memory_used(), before);
}

TEST_F(ExecuteSQL, LongErrorTextIsLoggedWhole)
{
    const std::string name(3000, 'x');
    const std::string sql = "INSERT INTO " + name + " (a) VALUES (1)";

    EXPECT_EQ(command.DBLoggerExecuteSQL(db, sql.c_str()), TRUE);

    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'0', Erro:'no such table: " +
                name + "'",
            sql));
}

TEST_F(ExecuteSQL, StatementOf7999BytesIsLoggedWhole)
{
    const std::string head = "INSERT INTO nada (a) VALUES ('";
    const std::string sql = head + std::string(7999 - head.size() - 2, 'y') + "')";

    EXPECT_EQ(command.DBLoggerExecuteSQL(db, sql.c_str()), TRUE);

    ASSERT_EQ(LogEntries().size(), 2u);
    EXPECT_EQ(LogEntries()[1].size(), 7999u);
    EXPECT_EQ(LogEntries()[1], sql);
}

TEST_F(ExecuteSQL, PercentSignsAreLoggedAsTheyStand)
{
    EXPECT_EQ(command.DBLoggerExecuteSQL(db, "INSERT INTO \"%s%d%%\" (a) VALUES (1)"), TRUE);

    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'0', Erro:'no such table: %s%d%%'",
            "INSERT INTO \"%s%d%%\" (a) VALUES (1)"));
}

TEST_F(ExecuteSQL, TransactionStaysTheCallers)
{
    command.DBLoggerExecuteSQL(db, "INSERT INTO versao_sb(num_ecf, versao) VALUES(1,'01.00.00')");
    EXPECT_EQ(sqlite3_get_autocommit(db), 1);

    Execute("BEGIN");
    command.DBLoggerExecuteSQL(db, "INSERT INTO versao_sb(num_ecf, versao) VALUES(1,'01.00.01')");
    command.DBLoggerExecuteSQL(db, "INSERT INTO nada (a) VALUES (1)");
    EXPECT_EQ(sqlite3_get_autocommit(db), 0);
    Execute("ROLLBACK");

    EXPECT_THAT(Rows("SELECT versao FROM versao_sb"), ElementsAre("01.00.00"));
}

} // namespace

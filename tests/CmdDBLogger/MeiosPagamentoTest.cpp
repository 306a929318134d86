// The programming of a payment means.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/LoggerTest.h"
#include "tests/CmdDBLogger/ScriptedCount.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MeiosPagamento : public LoggerTest
{
  protected:
    BOOL Program(int index, const std::string& description, int voucher)
    {
        Forget();
        auto command = NewCommand<CmdInsereMeiosPagamento>();
        command.m_iIndice = index;
        SetText(command.m_sDescricao, description);
        command.m_eVinculacaoCCD = static_cast<EVinculacaoCCD>(voucher);
        return command.DBLogger(db);
    }
};

TEST_F(MeiosPagamento, NewIndexIsInserted)
{
    EXPECT_EQ(Program(2, "Cartao", COM_CCD), TRUE);

    EXPECT_EQ(
        Statement(),
        "INSERT INTO meio_pagamento (num_indice, num_ecf, descricao, id_vinculacao_ccd) VALUES (2,1,'Cartao','S')");
    ASSERT_EQ(Queries().size(), 1u);
    EXPECT_EQ(Queries()[0].text, "SELECT count(*) FROM meio_pagamento WHERE num_indice = 2");
    EXPECT_EQ(Queries()[0].bytes, 57);
    EXPECT_EQ(OpenQueries(), 0);
    EXPECT_THAT(LogEntries(), IsEmpty());
    EXPECT_THAT(fiscal.calls, IsEmpty());
    EXPECT_THAT(Rows("SELECT * FROM meio_pagamento"), ElementsAre("2|1|Cartao|S"));
}

TEST_F(MeiosPagamento, IndexProgrammedAgainIsUpdated)
{
    Program(2, "Cartao", COM_CCD);
    EXPECT_EQ(Program(2, "Cartao", SEM_CCD), TRUE);

    EXPECT_EQ(
        Statement(),
        "UPDATE meio_pagamento SET descricao = 'Cartao',id_vinculacao_ccd = 'N' WHERE num_indice = 2");
    EXPECT_EQ(OpenQueries(), 0);
    EXPECT_THAT(Rows("SELECT * FROM meio_pagamento"), ElementsAre("2|1|Cartao|N"));
}

TEST_F(MeiosPagamento, NewMeansWithoutAVoucherCarriesAnN)
{
    Program(3, "Dinheiro", SEM_CCD);
    EXPECT_EQ(
        Statement(),
        "INSERT INTO meio_pagamento (num_indice, num_ecf, descricao, id_vinculacao_ccd) VALUES (3,1,'Dinheiro','N')");
}

TEST_F(MeiosPagamento, UpdatedMeansWithAVoucherCarriesAnS)
{
    Program(3, "Dinheiro", SEM_CCD);
    Program(3, "Vale", COM_CCD);
    EXPECT_EQ(
        Statement(),
        "UPDATE meio_pagamento SET descricao = 'Vale',id_vinculacao_ccd = 'S' WHERE num_indice = 3");
}

TEST_F(MeiosPagamento, EveryOtherTieIsNone)
{
    for (const int voucher : {2, -1}) {
        Program(voucher, "X", voucher);
        Program(voucher, "Y", voucher);
    }
    EXPECT_THAT(Rows("SELECT descricao, id_vinculacao_ccd FROM meio_pagamento"),
                ElementsAre("Y|N", "Y|N"));
}

TEST_F(MeiosPagamento, UpdateLeavesTheRegistersNumberAndOtherIndexes)
{
    Execute("INSERT INTO meio_pagamento VALUES (1,1,'A','S'), (2,7,'B','S')");
    Program(2, "C", SEM_CCD);
    EXPECT_THAT(Rows("SELECT * FROM meio_pagamento"), ElementsAre("1|1|A|S", "2|7|C|N"));
}

TEST_F(MeiosPagamento, SeveralRowsOfAnIndexAreAllUpdated)
{
    Execute("INSERT INTO meio_pagamento VALUES (2,1,'A','S'), (2,1,'B','S')");
    EXPECT_EQ(Program(2, "C", SEM_CCD), TRUE);
    EXPECT_THAT(Rows("SELECT * FROM meio_pagamento"), ElementsAre("2|1|C|N", "2|1|C|N"));
}

TEST_F(MeiosPagamento, NegativeIndexIsAnIndex)
{
    Program(-2, "A", COM_CCD);
    EXPECT_EQ(Queries()[0].text, "SELECT count(*) FROM meio_pagamento WHERE num_indice = -2");
    Program(-2, "B", COM_CCD);
    EXPECT_EQ(
        Statement(),
        "UPDATE meio_pagamento SET descricao = 'B',id_vinculacao_ccd = 'S' WHERE num_indice = -2");
}

TEST_F(MeiosPagamento, DescriptionThatFillsItsFieldIsWrittenWhole)
{
    Program(1, "ABCDEFGHIJKLMNO", COM_CCD);
    EXPECT_EQ(
        Statement(),
        "INSERT INTO meio_pagamento (num_indice, num_ecf, descricao, id_vinculacao_ccd) VALUES (1,1,'ABCDEFGHIJKLMNO','S')");
    Program(1, "", COM_CCD);
    EXPECT_EQ(
        Statement(),
        "UPDATE meio_pagamento SET descricao = '',id_vinculacao_ccd = 'S' WHERE num_indice = 1");
}

TEST_F(MeiosPagamento, DescriptionWithoutATerminatorEndsWithItsField)
{
    auto command = NewCommand<CmdInsereMeiosPagamento>();
    command.m_iIndice = 1;
    command.m_eVinculacaoCCD = static_cast<EVinculacaoCCD>(0x41414141);
    FillWithoutTerminator(command.m_sDescricao, "ABCDEFGHIJKLMNOP");
    command.DBLogger(db);
    EXPECT_EQ(
        Statement(),
        "INSERT INTO meio_pagamento (num_indice, num_ecf, descricao, id_vinculacao_ccd) VALUES (1,1,'ABCDEFGHIJKLMNOP','N')");
    Forget();
    command.DBLogger(db);
    EXPECT_EQ(
        Statement(),
        "UPDATE meio_pagamento SET descricao = 'ABCDEFGHIJKLMNOP',id_vinculacao_ccd = 'N' WHERE num_indice = 1");
}

TEST_F(MeiosPagamento, DescriptionWithAnApostropheIsLostAndLogged)
{
    EXPECT_EQ(Program(1, "D'AGUA", COM_CCD), TRUE);
    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'84', Erro:'near \"AGUA\": syntax error'",
            "INSERT INTO meio_pagamento (num_indice, num_ecf, descricao, id_vinculacao_ccd) VALUES (1,1,'D'AGUA','S')"));

    Program(1, "Agua", COM_CCD);
    EXPECT_EQ(Program(1, "D'AGUA", COM_CCD), TRUE);
    EXPECT_EQ(
        LogEntries()[1],
        "UPDATE meio_pagamento SET descricao = 'D'AGUA',id_vinculacao_ccd = 'S' WHERE num_indice = 1");
    EXPECT_THAT(Rows("SELECT * FROM meio_pagamento"), ElementsAre("1|1|Agua|S"));
}

TEST_F(MeiosPagamento, CountThatCannotBePreparedEndsTheProgramming)
{
    DropTables();
    EXPECT_EQ(Program(2, "Cartao", COM_CCD), 0);
    EXPECT_THAT(Statements(), IsEmpty());
    EXPECT_THAT(LogEntries(), IsEmpty());
    EXPECT_EQ(OpenQueries(), 0);
}

TEST_F(MeiosPagamento, StepThatFailsEndsTheProgrammingWithItsStatementOpen)
{
    ScriptedCount count(db);
    count.FailStep();
    EXPECT_EQ(Program(2, "Cartao", COM_CCD), 0);
    EXPECT_THAT(Statements(), IsEmpty());
    EXPECT_THAT(LogEntries(), IsEmpty());
    EXPECT_EQ(OpenQueries(), 1);
    ReleaseOpenQueries();
}

TEST_F(MeiosPagamento, CountWithoutATextIsNoRow)
{
    Execute("INSERT INTO meio_pagamento VALUES (2,1,'A','S')");
    ScriptedCount count(db);
    count.AnswerNull();
    EXPECT_EQ(Program(2, "Cartao", COM_CCD), TRUE);
    EXPECT_EQ(
        Statement(),
        "INSERT INTO meio_pagamento (num_indice, num_ecf, descricao, id_vinculacao_ccd) VALUES (2,1,'Cartao','S')");
    EXPECT_EQ(OpenQueries(), 0);
}

TEST_F(MeiosPagamento, NegativeCountIsACount)
{
    ScriptedCount count(db);
    count.AnswerText("-1");
    Program(2, "Cartao", COM_CCD);
    EXPECT_EQ(
        Statement(),
        "UPDATE meio_pagamento SET descricao = 'Cartao',id_vinculacao_ccd = 'S' WHERE num_indice = 2");
}

TEST_F(MeiosPagamento, AnswerIsThatOfTheExecution)
{
    RejectNextExecutions(2);
    EXPECT_EQ(Program(2, "Cartao", COM_CCD), 0);
    EXPECT_EQ(Program(2, "Cartao", COM_CCD), 0);
}

} // namespace

// The reversal of a payment.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/LoggerTest.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class EstornoPagamento : public LoggerTest
{
  protected:
    EstornoPagamento()
    {
        fiscal.numbers["Cupom_GetCOO()"] = 1234;
        fiscal.SetCounter(COUNTER_COO, 4321);
        fiscal.SetCounter(COUNTER_GNF, 56);
        command.m_iMeioPagamentoOrigem = 2;
        command.m_iMeioPagamentoDestino = 0;
        command.m_finValor = Money("1030.50");
        command.m_iNumParcelas = 4;
        SetText(command.m_sInfoAdicional, "NSU 77");
    }

    CmdEstornaMeioPagamento command = NewCommand<CmdEstornaMeioPagamento>();
};

TEST_F(EstornoPagamento, SourceIsMarkedThenDestinationInserted)
{
    EXPECT_EQ(command.DBLogger(db), TRUE);

    EXPECT_THAT(
        Statements(),
        ElementsAre(
            "UPDATE pagamento_cupom SET valor_estornado = 1030.50, valor_pagamento = (valor_pagamento - valor_estornado), id_estornado = 'S' WHERE cont_coo = 1234 AND indice_meio_pagamento = 2",
            "INSERT INTO pagamento_cupom (cont_coo, cont_gnf, valor_pagamento, num_parcelas, info_adicional, indice_meio_pagamento, id_estornado, valor_estornado) VALUES (1234,56,1030.50,4,'NSU 77',0,'N',0)"));
    EXPECT_THAT(LogEntries(), IsEmpty());
    EXPECT_THAT(MoneyRequests(), ElementsAre("500,0,0,0", "500,0,0,0"));
}

TEST_F(EstornoPagamento, DocumentIsTheReceiptsAndNotTheCounters)
{
    command.DBLogger(db);
    EXPECT_THAT(fiscal.calls,
                ElementsAre("Cupom_GetCOO()", "Cupom_GetCOO()", "Contador_Get(COUNTER_GNF)"));
}

TEST_F(EstornoPagamento, FirstReversalLeavesThePaymentAndTheSecondTakesTheFirst)
{
    Execute("INSERT INTO pagamento_cupom VALUES (1234,0,100.00,1,'',2,'N',0)");
    command.m_finValor = Money("30.00");
    command.DBLogger(db);
    EXPECT_THAT(Rows("SELECT * FROM pagamento_cupom"),
                ElementsAre("1234|0|100|1||2|S|30", "1234|56|30|4|NSU 77|0|N|0"));

    command.m_finValor = Money("20.00");
    command.DBLogger(db);
    EXPECT_THAT(Rows("SELECT * FROM pagamento_cupom"),
                ElementsAre("1234|0|70|1||2|S|20", "1234|56|30|4|NSU 77|0|N|0",
                            "1234|56|20|4|NSU 77|0|N|0"));
}

TEST_F(EstornoPagamento, OtherMeansAndOtherReceiptsStayAsTheyAre)
{
    Execute("INSERT INTO pagamento_cupom VALUES (1234,0,100.00,1,'',1,'N',0)");
    Execute("INSERT INTO pagamento_cupom VALUES (4321,0,100.00,1,'',2,'N',0)");
    command.DBLogger(db);
    EXPECT_THAT(Rows("SELECT * FROM pagamento_cupom WHERE num_parcelas = 1"),
                ElementsAre("1234|0|100|1||1|N|0", "4321|0|100|1||2|N|0"));
}

TEST_F(EstornoPagamento, DestinationIsInsertedWithoutASource)
{
    EXPECT_EQ(command.DBLogger(db), TRUE);
    EXPECT_THAT(Rows("SELECT * FROM pagamento_cupom"),
                ElementsAre("1234|56|1030.5|4|NSU 77|0|N|0"));
}

TEST_F(EstornoPagamento, NegativeNumbersAndAmountsAreWrittenAsTheyAre)
{
    command.m_iMeioPagamentoOrigem = -1;
    command.m_iMeioPagamentoDestino = -2;
    command.m_iNumParcelas = -3;
    command.m_finValor = Money("-0.01");
    SetText(command.m_sInfoAdicional, "");

    command.DBLogger(db);

    EXPECT_THAT(
        Statements(),
        ElementsAre(
            "UPDATE pagamento_cupom SET valor_estornado = -0.01, valor_pagamento = (valor_pagamento - valor_estornado), id_estornado = 'S' WHERE cont_coo = 1234 AND indice_meio_pagamento = -1",
            "INSERT INTO pagamento_cupom (cont_coo, cont_gnf, valor_pagamento, num_parcelas, info_adicional, indice_meio_pagamento, id_estornado, valor_estornado) VALUES (1234,56,-0.01,-3,'',-2,'N',0)"));
}

TEST_F(EstornoPagamento, InformationWithAnApostropheLosesTheDestinationAlone)
{
    Execute("INSERT INTO pagamento_cupom VALUES (1234,0,1030.50,1,'',2,'N',0)");
    SetText(command.m_sInfoAdicional, "D'AVILA");

    EXPECT_EQ(command.DBLogger(db), TRUE);

    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'19', Erro:'near \"AVILA\": syntax error'",
            "INSERT INTO pagamento_cupom (cont_coo, cont_gnf, valor_pagamento, num_parcelas, info_adicional, indice_meio_pagamento, id_estornado, valor_estornado) VALUES (1234,56,1030.50,4,'D'AVILA',0,'N',0)"));
    EXPECT_THAT(Rows("SELECT * FROM pagamento_cupom"), ElementsAre("1234|0|1030.5|1||2|S|1030.5"));
}

TEST_F(EstornoPagamento, InformationWithoutATerminatorEndsWithItsField)
{
    FillWithoutTerminator(command.m_sInfoAdicional, std::string(85, 'A'));
    command.DBLogger(db);
    EXPECT_EQ(
        Statements()[1],
        "INSERT INTO pagamento_cupom (cont_coo, cont_gnf, valor_pagamento, num_parcelas, info_adicional, indice_meio_pagamento, id_estornado, valor_estornado) VALUES (1234,56,1030.50,4,'AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA',0,'N',0)");

    Forget();
    SetText(command.m_sInfoAdicional, std::string(84, 'B'));
    command.DBLogger(db);
    EXPECT_THAT(
        Rows("SELECT length(info_adicional) FROM pagamento_cupom WHERE info_adicional LIKE 'B%'"),
        ElementsAre("84"));
}

TEST_F(EstornoPagamento, MarkingThatReportsZeroEndsTheReversal)
{
    RejectNextExecutions(1);
    EXPECT_EQ(command.DBLogger(db), 0);
    EXPECT_EQ(Statements().size(), 1u);
}

TEST_F(EstornoPagamento, MarkingThatReportsAnythingElseGoesOn)
{
    ReportNextExecutions(2, 1);
    EXPECT_EQ(command.DBLogger(db), TRUE);
    EXPECT_EQ(Statements().size(), 2u);
}

TEST_F(EstornoPagamento, AnswerIsThatOfTheInsert)
{
    RejectNextExecutions(1, 1);
    EXPECT_EQ(command.DBLogger(db), 0);
    EXPECT_EQ(Statements().size(), 2u);
}

TEST_F(EstornoPagamento, WithoutATableBothStatementsAreLogged)
{
    DropTables();
    EXPECT_EQ(command.DBLogger(db), TRUE);
    EXPECT_EQ(Statements().size(), 2u);
    EXPECT_EQ(LogEntries().size(), 4u);
}

} // namespace

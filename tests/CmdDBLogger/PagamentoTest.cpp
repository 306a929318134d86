// A payment of the open receipt.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/LoggerTest.h"

#include <climits>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Pagamento : public LoggerTest
{
  protected:
    Pagamento()
    {
        fiscal.SetCounter(COUNTER_COO, 120);
        fiscal.SetCounter(COUNTER_GNF, 7);
        command.m_iMeioPagamento = 3;
        command.m_finValor = Money("10.50");
        command.m_iNumParcelas = 2;
        SetText(command.m_sInfoAdicional, "ABC");
    }

    CmdEfetuaPagamento command = NewCommand<CmdEfetuaPagamento>();

    std::string Pay()
    {
        Forget();
        EXPECT_EQ(command.DBLogger(db), 1);
        return Statement();
    }

    const std::string head =
        "INSERT INTO pagamento_cupom (cont_coo, cont_gnf, valor_pagamento, num_parcelas, info_adicional, indice_meio_pagamento, id_estornado, valor_estornado) VALUES (";
};

TEST_F(Pagamento, InsertCarriesThePaymentWithItsMeansInTheSixthPlace)
{
    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_EQ(
        Statement(),
        "INSERT INTO pagamento_cupom (cont_coo, cont_gnf, valor_pagamento, num_parcelas, info_adicional, indice_meio_pagamento, id_estornado, valor_estornado) VALUES (120,7,10.50,2,'ABC',3,'N',0)");
    EXPECT_THAT(Rows("SELECT * FROM pagamento_cupom"), ElementsAre("120|7|10.5|2|ABC|3|N|0"));
    EXPECT_THAT(MoneyRequests(), ElementsAre("500,0,0,0"));
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(Pagamento, NoInformationIsAnEmptyText)
{
    SetText(command.m_sInfoAdicional, "");

    EXPECT_EQ(
        Pay(),
        "INSERT INTO pagamento_cupom (cont_coo, cont_gnf, valor_pagamento, num_parcelas, info_adicional, indice_meio_pagamento, id_estornado, valor_estornado) VALUES (120,7,10.50,2,'',3,'N',0)");
    EXPECT_THAT(Rows("SELECT info_adicional FROM pagamento_cupom"), ElementsAre(""));
}

TEST_F(Pagamento, InformationWithAnApostropheIsLostAndLogged)
{
    SetText(command.m_sInfoAdicional, "D'AVILA");

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'4', Erro:'near \"AVILA\": syntax error'",
            "INSERT INTO pagamento_cupom (cont_coo, cont_gnf, valor_pagamento, num_parcelas, info_adicional, indice_meio_pagamento, id_estornado, valor_estornado) VALUES (120,7,10.50,2,'D'AVILA',3,'N',0)"));
    EXPECT_THAT(Rows("SELECT * FROM pagamento_cupom"), IsEmpty());
}

TEST_F(Pagamento, AmountHasNoGroupsAndTwoDecimals)
{
    command.m_finValor = Money("1234567.8999");
    EXPECT_EQ(Pay(), head + "120,7,1234567.89,2,'ABC',3,'N',0)");
    command.m_finValor = Financial();
    EXPECT_EQ(Pay(), head + "120,7,0.00,2,'ABC',3,'N',0)");
    command.m_finValor = Money("-1234.56");
    EXPECT_EQ(Pay(), head + "120,7,-1234.56,2,'ABC',3,'N',0)");
    EXPECT_THAT(Rows("SELECT valor_pagamento FROM pagamento_cupom"),
                ElementsAre("1234567.89", "0", "-1234.56"));
}

TEST_F(Pagamento, ExtremeNumbers)
{
    fiscal.SetCounter(COUNTER_COO, INT_MAX);
    fiscal.SetCounter(COUNTER_GNF, 0);
    command.m_iMeioPagamento = INT_MIN;
    command.m_iNumParcelas = -1;

    EXPECT_EQ(Pay(), head + "2147483647,0,10.50,-1,'ABC',-2147483648,'N',0)");
}

TEST_F(Pagamento, InformationThatFillsItsArrayIsWrittenWholeAndReadNoFurther)
{
    for (const std::size_t length : {83u, 84u}) {
        const std::string text(length, 'i');
        SetText(command.m_sInfoAdicional, text);
        EXPECT_EQ(Pay(), head + "120,7,10.50,2,'" + text + "',3,'N',0)");
    }
    FillWithoutTerminator(command.m_sInfoAdicional, std::string(85, 'i'));
    EXPECT_EQ(Pay(), head + "120,7,10.50,2,'" + std::string(85, 'i') + "',3,'N',0)");
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(Pagamento, AsksForTwoCountersOnceAndNothingOfTheReceiptsType)
{
    command.DBLogger(db);

    EXPECT_THAT(fiscal.calls,
                ElementsAre("Contador_Get(COUNTER_COO)", "Contador_Get(COUNTER_GNF)"));
}

TEST_F(Pagamento, LeavesTheCommandAsItIs)
{
    SetText(command.m_sInfoAdicional, "D'AVILA");
    const std::string asItWas = BytesOf(command);

    command.DBLogger(db);

    EXPECT_EQ(BytesOf(command), asItWas);
}

TEST_F(Pagamento, AnswersWhatItsExecutionReports)
{
    RejectNextExecutions(1);
    EXPECT_EQ(command.DBLogger(db), 0);
    EXPECT_EQ(command.DBLogger(db), 1);
}

} // namespace

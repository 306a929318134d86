// The opening of a fiscal receipt.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/LoggerTest.h"

#include <climits>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class AberturaCupom : public LoggerTest
{
  protected:
    AberturaCupom()
    {
        fiscal.SetCounter(COUNTER_COO, 120);
        fiscal.SetCounter(COUNTER_CCF, 45);
        fiscal.SetCounter(COUNTER_CRZ, 9);
    }

    CmdAbreCupom command = NewCommand<CmdAbreCupom>();

    // What stands before the consumer's texts with these counters, and what stands after them.
    const std::string before =
        "INSERT INTO cupom_fiscal (cont_coo, cont_ccf, cont_crz, data_hora_emissao, cpf_cnpj_consumidor, nome_consumidor, endereco_consumidor, assinatura_documento, valor_subtotal, valor_total, tipo_desconto, valor_desconto, tipo_acrescimo, valor_acrescimo, valor_canc_acrescimo, valor_troco, texto_suplementar, id_cancelado, id_cupom_adicional, perc_acrescimo, perc_desconto, texto_complementar, chave_cupom) VALUES (120,45,10,'2026-03-02 08:15:30',";
    const std::string after = ",' ',0,0,'V',0,'V',0,0,0,' ','N','N',0,0,' ',' ')";
};

TEST_F(AberturaCupom, InsertCarriesCountersStartAndConsumer)
{
    SetText(command.m_sCPF_CNPJ, "12345678909");
    SetText(command.m_sNomeConsumidor, "MARIA DA SILVA");
    SetText(command.m_sEnderecoConsumidor, "Rua A");

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_EQ(
        Statement(),
        "INSERT INTO cupom_fiscal (cont_coo, cont_ccf, cont_crz, data_hora_emissao, cpf_cnpj_consumidor, nome_consumidor, endereco_consumidor, assinatura_documento, valor_subtotal, valor_total, tipo_desconto, valor_desconto, tipo_acrescimo, valor_acrescimo, valor_canc_acrescimo, valor_troco, texto_suplementar, id_cancelado, id_cupom_adicional, perc_acrescimo, perc_desconto, texto_complementar, chave_cupom) VALUES (120,45,10,'2026-03-02 08:15:30','12345678909','MARIA DA SILVA','Rua A,',' ',0,0,'V',0,'V',0,0,0,' ','N','N',0,0,' ',' ')");
    EXPECT_THAT(
        Rows("SELECT * FROM cupom_fiscal"),
        ElementsAre(
            "120|45|10|2026-03-02 08:15:30|12345678909|MARIA DA SILVA|Rua A,| |0|0|V|0|V|0|0|0| |N|N|0|0| | "));
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(AberturaCupom, BeforeTheFirstReductionTheReceiptIsFiledUnder1)
{
    fiscal.SetCounter(COUNTER_CRZ, 0);

    command.DBLogger(db);

    EXPECT_EQ(
        Statement(),
        "INSERT INTO cupom_fiscal (cont_coo, cont_ccf, cont_crz, data_hora_emissao, cpf_cnpj_consumidor, nome_consumidor, endereco_consumidor, assinatura_documento, valor_subtotal, valor_total, tipo_desconto, valor_desconto, tipo_acrescimo, valor_acrescimo, valor_canc_acrescimo, valor_troco, texto_suplementar, id_cancelado, id_cupom_adicional, perc_acrescimo, perc_desconto, texto_complementar, chave_cupom) VALUES (120,45,1,'2026-03-02 08:15:30','','',',',' ',0,0,'V',0,'V',0,0,0,' ','N','N',0,0,' ',' ')");
    EXPECT_THAT(Rows("SELECT cont_crz FROM cupom_fiscal"), ElementsAre("1"));
}

TEST_F(AberturaCupom, NoConsumerIsTwoEmptyTextsAndALoneComma)
{
    command.DBLogger(db);

    EXPECT_EQ(Statement(), before + "'','',','" + after);
    EXPECT_THAT(
        Rows("SELECT cpf_cnpj_consumidor, nome_consumidor, endereco_consumidor FROM cupom_fiscal"),
        ElementsAre("||,"));
}

TEST_F(AberturaCupom, AddressLosesEveryApostropheAndKeepsItsCommas)
{
    SetText(command.m_sEnderecoConsumidor, "'Pca. d'Agua, 5, 'fundos'");

    command.DBLogger(db);

    EXPECT_EQ(Statement(), before + "'','','Pca. dAgua, 5, fundos,'" + after);
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(AberturaCupom, AddressOfApostrophesAloneIsALoneComma)
{
    SetText(command.m_sEnderecoConsumidor, "'''");

    command.DBLogger(db);

    EXPECT_EQ(Statement(), before + "'','',','" + after);
}

TEST_F(AberturaCupom, NameWithAnApostropheIsLostAndLogged)
{
    SetText(command.m_sNomeConsumidor, "JOANA D'ARC");

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'1', Erro:'near \"ARC\": syntax error'",
            before + "'','JOANA D'ARC',','" + after));
    EXPECT_THAT(Rows("SELECT * FROM cupom_fiscal"), IsEmpty());
}

TEST_F(AberturaCupom, CpfWithAnApostropheIsLostAndLogged)
{
    SetText(command.m_sCPF_CNPJ, "123'456");

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'1', Erro:'near \"456\": syntax error'",
            before + "'123'456','',','" + after));
    EXPECT_THAT(Rows("SELECT * FROM cupom_fiscal"), IsEmpty());
}

TEST_F(AberturaCupom, TextsThatFillTheirArraysAreWrittenWhole)
{
    for (const std::size_t shorter : {1u, 0u}) {
        Forget();
        const std::string number(14 - shorter, '1');
        const std::string name(30 - shorter, 'N');
        const std::string address(80 - shorter, 'E');
        SetText(command.m_sCPF_CNPJ, number);
        SetText(command.m_sNomeConsumidor, name);
        SetText(command.m_sEnderecoConsumidor, address);

        command.DBLogger(db);

        EXPECT_EQ(Statement(),
                  before + "'" + number + "','" + name + "','" + address + ",'" + after);
    }
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(AberturaCupom, TextsWithoutATerminatorAreReadNoFurtherThanTheirArrays)
{
    FillWithoutTerminator(command.m_sCPF_CNPJ, std::string(15, '1'));
    FillWithoutTerminator(command.m_sNomeConsumidor, std::string(31, 'N'));
    FillWithoutTerminator(command.m_sEnderecoConsumidor, std::string(81, 'E'));

    command.DBLogger(db);

    // The address is copied first, and the copy ends with a terminator.
    EXPECT_EQ(Statement(), before + "'" + std::string(15, '1') + "','" + std::string(31, 'N') +
                               "','" + std::string(80, 'E') + ",'" + after);
}

TEST_F(AberturaCupom, ExtremeCountersAndInstant)
{
    fiscal.SetCounter(COUNTER_COO, INT_MIN);
    fiscal.SetCounter(COUNTER_CCF, INT_MAX);
    fiscal.SetCounter(COUNTER_CRZ, -1);
    command.m_dtExecStart = Instant("2106-02-07 06:28:15");

    command.DBLogger(db);

    EXPECT_THAT(Rows("SELECT cont_coo, cont_ccf, cont_crz, data_hora_emissao FROM cupom_fiscal"),
                ElementsAre("-2147483648|2147483647|0|2106-02-07 06:28:15"));
}

TEST_F(AberturaCupom, AsksForThreeCountersOnceInColumnOrder)
{
    command.DBLogger(db);

    EXPECT_THAT(fiscal.calls, ElementsAre("Contador_Get(COUNTER_COO)", "Contador_Get(COUNTER_CCF)",
                                          "Contador_Get(COUNTER_CRZ)"));
}

TEST_F(AberturaCupom, LeavesTheCommandAsItIs)
{
    SetText(command.m_sNomeConsumidor, "D'AVILA");
    SetText(command.m_sEnderecoConsumidor, "Pca. d'Agua");
    const std::string asItWas = BytesOf(command);

    command.DBLogger(db);

    EXPECT_EQ(BytesOf(command), asItWas);
}

TEST_F(AberturaCupom, AnswersWhatItsExecutionReports)
{
    RejectNextExecutions(1);
    EXPECT_EQ(command.DBLogger(db), 0);
    EXPECT_EQ(command.DBLogger(db), 1);
}

TEST_F(AberturaCupom, EveryOpeningMakesARowOfItsOwn)
{
    command.DBLogger(db);
    command.DBLogger(db);

    EXPECT_THAT(Rows("SELECT cont_coo FROM cupom_fiscal"), ElementsAre("120", "120"));
}

} // namespace

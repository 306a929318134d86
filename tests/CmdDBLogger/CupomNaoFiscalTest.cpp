// The life of a non-fiscal receipt.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/LoggerTest.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CupomNaoFiscal : public LoggerTest
{
  protected:
    CupomNaoFiscal()
    {
        fiscal.SetCounter(COUNTER_COO, 1234);
        fiscal.SetCounter(COUNTER_CRZ, 9);
        fiscal.SetCounter(COUNTER_GNF, 56);
        fiscal.SetCounter(COUNTER_GRG, 7);
        fiscal.SetCounter(COUNTER_CDC, 8);
    }

    CmdAbreCNF Opening(const std::string& cpf, const std::string& name)
    {
        auto command = NewCommand<CmdAbreCNF>();
        SetText(command.m_sCPF_CNPJ, cpf);
        SetText(command.m_sNomeConsumidor, name);
        return command;
    }

    // Sells item `number` (from 1) at a unit price, on totalizer 3.
    BOOL Sell(int number, const std::string& price)
    {
        fiscal.numbers["Cupom_GetQuantidadeDeItens()"] = number;
        fiscal.texts["Cupom_GetItemValorUnitarioStr(" + std::to_string(number - 1) + ")"] = price;
        auto command = NewCommand<CmdVendeItemNF>();
        command.m_iIndiceTotalizador = 3;
        return command.DBLogger(db);
    }

    BOOL Close(const std::string& total, const std::string& subtotal)
    {
        fiscal.money["Cupom_GetTotal()"] = Money(total);
        fiscal.money["Cupom_GetSubTotal()"] = Money(subtotal);
        auto command = NewCommand<CmdFechaCupomNF>();
        command.m_dtExecStart = Instant("2026-03-02 08:17:00");
        return command.DBLogger(db);
    }
};

TEST_F(CupomNaoFiscal, OpeningWritesTheReceiptThenItsDocument)
{
    EXPECT_EQ(Opening("12345678901", "MARIA").DBLogger(db), TRUE);

    EXPECT_THAT(
        Statements(),
        ElementsAre(
            "INSERT INTO cupom_nf (cont_coo, cont_crz, cont_gnf, num_ecf, data_hora_emissao, valor_subtotal, valor_total_cupom, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, id_cancelado, nome_consumidor, cpf_cnpj_consumidor, perc_acrescimo, perc_desconto) VALUES (1234,10,56,1,'2026-03-02 08:15:30',0,0,'V',0,'V',0,0,'N','MARIA','12345678901',0,0)",
            "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (1234,1,56,7,8,9,'2026-03-02 08:15:30','2026-03-02 08:15:30','CN')"));
    EXPECT_THAT(LogEntries(), IsEmpty());
    EXPECT_THAT(
        Rows("SELECT * FROM cupom_nf"),
        ElementsAre("1234|10|56|1|2026-03-02 08:15:30|0|0|V|0|V|0|0|N|MARIA|12345678901|0|0"));
    EXPECT_THAT(Rows("SELECT * FROM outros_documentos"),
                ElementsAre("1234|1|56|7|8|9|2026-03-02 08:15:30|2026-03-02 08:15:30|CN"));
}

TEST_F(CupomNaoFiscal, OpeningAsksForTheReceiptsCountersThenForItsDocuments)
{
    Opening("12345678901", "MARIA").DBLogger(db);
    EXPECT_THAT(fiscal.calls,
                ElementsAre("Contador_Get(COUNTER_COO)", "Contador_Get(COUNTER_CRZ)",
                            "Contador_Get(COUNTER_GNF)", "Contador_Get(COUNTER_COO)",
                            "Contador_Get(COUNTER_GNF)", "Contador_Get(COUNTER_GRG)",
                            "Contador_Get(COUNTER_CDC)", "Contador_Get(COUNTER_CRZ)"));
}

TEST_F(CupomNaoFiscal, OpeningWithoutAConsumerWritesTwoEmptyTexts)
{
    Opening("", "").DBLogger(db);

    EXPECT_EQ(
        Statements()[0],
        "INSERT INTO cupom_nf (cont_coo, cont_crz, cont_gnf, num_ecf, data_hora_emissao, valor_subtotal, valor_total_cupom, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, id_cancelado, nome_consumidor, cpf_cnpj_consumidor, perc_acrescimo, perc_desconto) VALUES (1234,10,56,1,'2026-03-02 08:15:30',0,0,'V',0,'V',0,0,'N','','',0,0)");
    EXPECT_THAT(Rows("SELECT nome_consumidor, cpf_cnpj_consumidor FROM cupom_nf"),
                ElementsAre("|"));
}

TEST_F(CupomNaoFiscal, BeforeTheFirstReductionBothRowsAreFiledUnderOne)
{
    fiscal.SetCounter(COUNTER_CRZ, 0);
    Opening("", "").DBLogger(db);
    EXPECT_THAT(Rows("SELECT cont_crz FROM cupom_nf"), ElementsAre("1"));
    EXPECT_THAT(Rows("SELECT cont_crz FROM outros_documentos"), ElementsAre("1"));
}

TEST_F(CupomNaoFiscal, OpeningTextsThatFillTheirFieldsAreWrittenWhole)
{
    Opening("12345678000195", "ABCDEFGHIJKLMNOPQRSTUVWXYZ1234").DBLogger(db);
    EXPECT_THAT(Rows("SELECT nome_consumidor, cpf_cnpj_consumidor FROM cupom_nf"),
                ElementsAre("ABCDEFGHIJKLMNOPQRSTUVWXYZ1234|12345678000195"));
}

TEST_F(CupomNaoFiscal, OpeningTextsWithoutATerminatorEndWithTheirFields)
{
    auto command = NewCommand<CmdAbreCNF>();
    FillWithoutTerminator(command.m_sCPF_CNPJ, "123456780001954");
    FillWithoutTerminator(command.m_sNomeConsumidor, "ABCDEFGHIJKLMNOPQRSTUVWXYZ12345");

    command.DBLogger(db);

    EXPECT_EQ(
        Statements()[0],
        "INSERT INTO cupom_nf (cont_coo, cont_crz, cont_gnf, num_ecf, data_hora_emissao, valor_subtotal, valor_total_cupom, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, id_cancelado, nome_consumidor, cpf_cnpj_consumidor, perc_acrescimo, perc_desconto) VALUES (1234,10,56,1,'2026-03-02 08:15:30',0,0,'V',0,'V',0,0,'N','ABCDEFGHIJKLMNOPQRSTUVWXYZ12345','123456780001954',0,0)");
}

TEST_F(CupomNaoFiscal, NameWithAnApostropheLosesTheReceiptButNotItsDocument)
{
    EXPECT_EQ(Opening("", "D'AVILA").DBLogger(db), TRUE);

    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'16', Erro:'near \"AVILA\": syntax error'",
            "INSERT INTO cupom_nf (cont_coo, cont_crz, cont_gnf, num_ecf, data_hora_emissao, valor_subtotal, valor_total_cupom, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, id_cancelado, nome_consumidor, cpf_cnpj_consumidor, perc_acrescimo, perc_desconto) VALUES (1234,10,56,1,'2026-03-02 08:15:30',0,0,'V',0,'V',0,0,'N','D'AVILA','',0,0)"));
    EXPECT_THAT(Rows("SELECT * FROM cupom_nf"), IsEmpty());
    EXPECT_THAT(Rows("SELECT id_tipo_documento FROM outros_documentos"), ElementsAre("CN"));
}

TEST_F(CupomNaoFiscal, OpeningThatReportsZeroHasNoDocument)
{
    RejectNextExecutions(1);
    EXPECT_EQ(Opening("", "").DBLogger(db), 0);
    EXPECT_EQ(Statements().size(), 1u);
    EXPECT_THAT(Rows("SELECT * FROM outros_documentos"), IsEmpty());
}

TEST_F(CupomNaoFiscal, OpeningThatReportsAnythingElseHasItsDocument)
{
    ReportNextExecutions(2, 1);
    EXPECT_EQ(Opening("", "").DBLogger(db), TRUE);
    EXPECT_EQ(Statements().size(), 2u);
}

TEST_F(CupomNaoFiscal, OpeningAnswersWhatItsDocumentDoes)
{
    RejectNextExecutions(1, 1);
    EXPECT_EQ(Opening("", "").DBLogger(db), 0);
    EXPECT_EQ(Statements().size(), 2u);
}

TEST_F(CupomNaoFiscal, ItemCarriesItsPriceAsBothTotals)
{
    EXPECT_EQ(Sell(1, "1,50"), TRUE);

    EXPECT_EQ(
        Statement(),
        "INSERT INTO item_cupom_nf (seq_item, cont_coo, indice_totalizador_nf, valor_total, valor_total_liquido, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, id_cancelado) VALUES (1,1234,3,1.50,1.50,'V',0,'V',0,0,'N')");
    EXPECT_THAT(LogEntries(), IsEmpty());
    EXPECT_THAT(Rows("SELECT * FROM item_cupom_nf"),
                ElementsAre("1|1234|3|1.5|1.5|V|0|V|0|0|N|0|0"));
}

TEST_F(CupomNaoFiscal, ThirdItemIsNumberThree)
{
    Sell(3, "2,00");
    EXPECT_EQ(
        Statement(),
        "INSERT INTO item_cupom_nf (seq_item, cont_coo, indice_totalizador_nf, valor_total, valor_total_liquido, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, id_cancelado) VALUES (3,1234,3,2.00,2.00,'V',0,'V',0,0,'N')");
}

TEST_F(CupomNaoFiscal, ItemsPriceIsAskedOnceAndNoQuantity)
{
    Sell(3, "2,00");
    EXPECT_THAT(fiscal.calls,
                ElementsAre("Cupom_GetQuantidadeDeItens()", "Contador_Get(COUNTER_COO)",
                            "Cupom_GetItemValorUnitarioStr(2,500)"));
}

TEST_F(CupomNaoFiscal, GroupedPriceKeepsItsPointAndIsRejected)
{
    EXPECT_EQ(Sell(1, "1.234,50"), TRUE);
    EXPECT_EQ(
        Statement(),
        "INSERT INTO item_cupom_nf (seq_item, cont_coo, indice_totalizador_nf, valor_total, valor_total_liquido, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, id_cancelado) VALUES (1,1234,3,1.234.50,1.234.50,'V',0,'V',0,0,'N')");
    EXPECT_EQ(LogEntries().size(), 2u);
    EXPECT_THAT(Rows("SELECT * FROM item_cupom_nf"), IsEmpty());
}

TEST_F(CupomNaoFiscal, PriceThatFillsItsArrayIsWrittenWholeTwice)
{
    for (const std::size_t size : {498u, 499u}) {
        Forget();
        const std::string digits = std::string(size - 3, '7');
        EXPECT_EQ(Sell(1, digits + ",25"), TRUE);
        EXPECT_EQ(
            Statement(),
            "INSERT INTO item_cupom_nf (seq_item, cont_coo, indice_totalizador_nf, valor_total, valor_total_liquido, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, id_cancelado) VALUES (1,1234,3," +
                digits + ".25," + digits + ".25,'V',0,'V',0,0,'N')");
        EXPECT_THAT(LogEntries(), IsEmpty());
    }
}

TEST_F(CupomNaoFiscal, ItemAnswersWhatItsExecutionReports)
{
    RejectNextExecutions(1);
    EXPECT_EQ(Sell(1, "1,00"), 0);
}

TEST_F(CupomNaoFiscal, ClosingWritesTheTotalThenTheSubtotalThenTheEnd)
{
    Opening("", "").DBLogger(db);
    Forget();

    EXPECT_EQ(Close("1234.56", "1300.00"), TRUE);

    EXPECT_THAT(
        Statements(),
        ElementsAre(
            "UPDATE cupom_nf SET valor_total_cupom = 1234.56, valor_subtotal = 1300.00 WHERE cont_coo = 1234",
            "UPDATE outros_documentos SET data_hora_fim_emissao = '2026-03-02 08:17:00' WHERE cont_coo = 1234"));
    EXPECT_THAT(MoneyRequests(), ElementsAre("500,0,0,0", "500,0,0,0"));
    EXPECT_THAT(Rows("SELECT cont_coo, valor_subtotal, valor_total_cupom FROM cupom_nf"),
                ElementsAre("1234|1300|1234.56"));
    EXPECT_THAT(
        Rows("SELECT data_hora_inicio_emissao, data_hora_fim_emissao FROM outros_documentos"),
        ElementsAre("2026-03-02 08:15:30|2026-03-02 08:17:00"));
}

TEST_F(CupomNaoFiscal, ClosingAsksForTheTotalThenTheSubtotalThenItsNumberForEachUpdate)
{
    Close("1234.56", "1300.00");
    EXPECT_THAT(fiscal.calls,
                ElementsAre("Cupom_GetTotal()", "Cupom_GetSubTotal()", "Contador_Get(COUNTER_COO)",
                            "Contador_Get(COUNTER_COO)"));
}

TEST_F(CupomNaoFiscal, ClosingChangesTheReceiptOfTheCounterAlone)
{
    Opening("", "").DBLogger(db);
    fiscal.SetCounter(COUNTER_COO, 1235);
    Opening("", "").DBLogger(db);
    Close("10.00", "10.00");
    EXPECT_THAT(Rows("SELECT cont_coo, valor_total_cupom FROM cupom_nf"),
                ElementsAre("1234|0", "1235|10"));
}

TEST_F(CupomNaoFiscal, ClosingOfAReceiptWithoutARowStillStampsTheEnd)
{
    Opening("", "D'AVILA").DBLogger(db);
    Forget();

    EXPECT_EQ(Close("0.00", "-1.00"), TRUE);

    EXPECT_EQ(
        Statements()[0],
        "UPDATE cupom_nf SET valor_total_cupom = 0.00, valor_subtotal = -1.00 WHERE cont_coo = 1234");
    EXPECT_THAT(LogEntries(), IsEmpty());
    EXPECT_THAT(Rows("SELECT data_hora_fim_emissao FROM outros_documentos"),
                ElementsAre("2026-03-02 08:17:00"));
}

TEST_F(CupomNaoFiscal, ClosingStampsTheEndOnlyWhenItsExecutionReportsExactlyOne)
{
    for (const BOOL result : {0, 2, -1}) {
        Forget();
        ReportNextExecutions(result, 1);
        EXPECT_EQ(Close("1.00", "1.00"), 0) << result;
        EXPECT_EQ(Statements().size(), 1u) << result;
    }
}

TEST_F(CupomNaoFiscal, ClosingAnswersWhatTheStampingDoes)
{
    RejectNextExecutions(1, 1);
    EXPECT_EQ(Close("1.00", "1.00"), 0);
    EXPECT_EQ(Statements().size(), 2u);
}

TEST_F(CupomNaoFiscal, WithoutTablesEveryStepIsLoggedAndGoesOn)
{
    DropTables();
    EXPECT_EQ(Opening("", "").DBLogger(db), TRUE);
    EXPECT_EQ(Sell(1, "1,00"), TRUE);
    EXPECT_EQ(Close("1.00", "1.00"), TRUE);
    EXPECT_EQ(Statements().size(), 5u);
    EXPECT_EQ(LogEntries().size(), 10u);
}

} // namespace

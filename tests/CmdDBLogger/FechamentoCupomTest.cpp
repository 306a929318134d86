// The closing of a fiscal receipt: the update of its row, and when the items are rewritten.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/EmptyRegister.h"
#include "tests/CmdDBLogger/LoggerTest.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FechamentoCupom : public LoggerTest
{
  protected:
    FechamentoCupom()
    {
        ScriptEmptyReceipt(fiscal);
        fiscal.SetCounter(COUNTER_CCF, 45);
        fiscal.SetCounter(COUNTER_CRZ, 0);
        fiscal.SetCounter(COUNTER_COO, 120);
        fiscal.texts["AssinaturaDigital_GetBase64()"] = "c2ln";
        fiscal.money["Cupom_GetSubTotal()"] = Money("1100.00");
        fiscal.money["Cupom_GetTotal()"] = Money("1095.50");
        fiscal.money["Cupom_GetTroco()"] = Money("4.50");
        fiscal.texts["DadosPDV_GetIdAplicativo()"] = "PDV 1.0";
        fiscal.texts["CFe_GetChaveDeBusca()"] = "CHAVE123";
        SetText(command.m_sMsgPromocional, "OBRIGADO");

        CmdAbreCupom opening = NewCommand<CmdAbreCupom>();
        SetText(opening.m_sCPF_CNPJ, "00000000191");
        opening.DBLogger(db);
        Execute("INSERT INTO cupom_fiscal (cont_coo, valor_total) VALUES (121, 7)");
        Forget();
    }

    CmdFechaCupom command = NewCommand<CmdFechaCupom>();

    // The receipt's subtotal carries an adjustment of one item, and apportionment is set.
    void MakeApportionmentDue()
    {
        SetRatearSubtotal(1);
        fiscal.numbers["Cupom_GetSTDescAplicado()"] = 1;
        fiscal.numbers["Cupom_GetRateioPorItem()"] = 1;
        fiscal.rateio.m_iQuantidadeDeItens = 1;
        fiscal.rateio.m_Itens[0].m_finValorTotal = Money("9.00");
        fiscal.KeepAsState();
    }

    const std::string closing =
        "UPDATE cupom_fiscal SET assinatura_documento = 'c2ln', valor_subtotal = 1100.00, valor_total = 1095.50, valor_troco = 4.50, texto_suplementar = 'OBRIGADO', texto_complementar = 'PDV 1.0', chave_cupom = 'CHAVE123' WHERE cont_coo = 120";
    const std::string oneItem =
        "UPDATE item_cupom_fiscal SET tipo_acrescimo = 'V', perc_acrescimo = 0, valor_acrescimo = 0.00, tipo_desconto = 'V', perc_desconto = 0, valor_desconto = 0.00, valor_total = 9.00 WHERE cont_coo = 120 AND seq_item = 1";
};

TEST_F(FechamentoCupom, UpdateCarriesTotalsTextsAndKey)
{
    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_EQ(
        Statement(),
        "UPDATE cupom_fiscal SET assinatura_documento = 'c2ln', valor_subtotal = 1100.00, valor_total = 1095.50, valor_troco = 4.50, texto_suplementar = 'OBRIGADO', texto_complementar = 'PDV 1.0', chave_cupom = 'CHAVE123' WHERE cont_coo = 120");
    EXPECT_THAT(
        Rows("SELECT * FROM cupom_fiscal WHERE cont_coo = 120"),
        ElementsAre(
            "120|45|1|2026-03-02 08:15:30|00000000191||,|c2ln|1100|1095.5|V|0|V|0|0|4.5|OBRIGADO|N|N|0|0|PDV 1.0|CHAVE123"));
    EXPECT_THAT(Rows("SELECT valor_total, chave_cupom FROM cupom_fiscal WHERE cont_coo = 121"),
                ElementsAre("7|NULL"));
    EXPECT_THAT(MoneyRequests(), ElementsAre("500,0,0,0", "500,0,0,0", "500,0,0,0"));
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(FechamentoCupom, ConsumersNumberStandsBetweenChangeAndMessage)
{
    SetText(command.m_sMsgPromocional, "CNPJ/CPF consumidor: 123.456.789-09 VOLTE SEMPRE");

    command.DBLogger(db);

    EXPECT_EQ(
        Statement(),
        "UPDATE cupom_fiscal SET assinatura_documento = 'c2ln', valor_subtotal = 1100.00, valor_total = 1095.50, valor_troco = 4.50, cpf_cnpj_consumidor = '12345678909', texto_suplementar = 'CNPJ/CPF consumidor: 123.456.789-09 VOLTE SEMPRE', texto_complementar = 'PDV 1.0', chave_cupom = 'CHAVE123' WHERE cont_coo = 120");
    EXPECT_THAT(Rows("SELECT cpf_cnpj_consumidor FROM cupom_fiscal WHERE cont_coo = 120"),
                ElementsAre("12345678909"));
}

TEST_F(FechamentoCupom, AsksForEachThingOnceInTheOrderOfThePieces)
{
    command.DBLogger(db);

    EXPECT_THAT(fiscal.calls,
                ElementsAre("AssinaturaDigital_GetBase64()", "Cupom_GetSubTotal()",
                            "Cupom_GetTotal()", "Cupom_GetTroco()",
                            "DadosPDV_GetIdAplicativo(1500)", "CFe_GetChaveDeBusca(1500)",
                            "Contador_Get(COUNTER_COO)", "GetRatearSubtotal()"));
    EXPECT_EQ(fiscal.signature, command.m_sAssinaturaDigitalDocumento);
}

TEST_F(FechamentoCupom, ClosingThatApportionsAsksOnForTheSharesAndForEachItemsReceipt)
{
    MakeApportionmentDue();
    fiscal.numbers["Cupom_GetSTDescAplicado()"] = 0;
    fiscal.numbers["Cupom_GetSTAcrAplicado()"] = 1;
    fiscal.rateio.m_iQuantidadeDeItens = 2;

    command.DBLogger(db);

    EXPECT_THAT(fiscal.calls,
                ElementsAre("AssinaturaDigital_GetBase64()", "Cupom_GetSubTotal()",
                            "Cupom_GetTotal()", "Cupom_GetTroco()",
                            "DadosPDV_GetIdAplicativo(1500)", "CFe_GetChaveDeBusca(1500)",
                            "Contador_Get(COUNTER_COO)", "GetRatearSubtotal()",
                            "Cupom_GetSTDescAplicado()", "Cupom_GetSTAcrAplicado()",
                            "Cupom_GetRateioPorItem()", "Contador_Get(COUNTER_COO)",
                            "Contador_Get(COUNTER_COO)"));
}

TEST_F(FechamentoCupom, EmptyTextsAndZeroValues)
{
    fiscal.texts["AssinaturaDigital_GetBase64()"] = "";
    fiscal.money["Cupom_GetSubTotal()"] = Money("0");
    fiscal.money["Cupom_GetTotal()"] = Money("0");
    fiscal.money["Cupom_GetTroco()"] = Money("0");
    fiscal.texts["DadosPDV_GetIdAplicativo()"] = "";
    fiscal.texts["CFe_GetChaveDeBusca()"] = "";
    SetText(command.m_sMsgPromocional, "");

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_EQ(
        Statement(),
        "UPDATE cupom_fiscal SET assinatura_documento = '', valor_subtotal = 0.00, valor_total = 0.00, valor_troco = 0.00, texto_suplementar = '', texto_complementar = '', chave_cupom = '' WHERE cont_coo = 120");
}

TEST_F(FechamentoCupom, ApostrophesOfMessageApplicationAndKeyBecomeBlanks)
{
    SetText(command.m_sMsgPromocional, "'COPO D'AGUA'");
    fiscal.texts["DadosPDV_GetIdAplicativo()"] = "PDV 'X''Y'";
    fiscal.texts["CFe_GetChaveDeBusca()"] = "'K'E'Y'";

    command.DBLogger(db);

    EXPECT_EQ(
        Statement(),
        "UPDATE cupom_fiscal SET assinatura_documento = 'c2ln', valor_subtotal = 1100.00, valor_total = 1095.50, valor_troco = 4.50, texto_suplementar = ' COPO D AGUA ', texto_complementar = 'PDV  X  Y ', chave_cupom = ' K E Y ' WHERE cont_coo = 120");
    EXPECT_THAT(Rows("SELECT texto_suplementar, texto_complementar, chave_cupom FROM cupom_fiscal"
                     " WHERE cont_coo = 120"),
                ElementsAre(" COPO D AGUA |PDV  X  Y | K E Y "));
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(FechamentoCupom, OtherPunctuationOfTheTextsIsKept)
{
    SetText(command.m_sMsgPromocional, "a \"b\" % %s \\ ` ; -- c\r\nd");

    command.DBLogger(db);

    EXPECT_THAT(Rows("SELECT texto_suplementar FROM cupom_fiscal WHERE cont_coo = 120"),
                ElementsAre("a \"b\" % %s \\ ` ; -- c\r\nd"));
}

TEST_F(FechamentoCupom, SignatureIsNotCleaned)
{
    fiscal.texts["AssinaturaDigital_GetBase64()"] = "c2'ln";

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'5', Erro:'near \"ln\": syntax error'",
            "UPDATE cupom_fiscal SET assinatura_documento = 'c2'ln', valor_subtotal = 1100.00, valor_total = 1095.50, valor_troco = 4.50, texto_suplementar = 'OBRIGADO', texto_complementar = 'PDV 1.0', chave_cupom = 'CHAVE123' WHERE cont_coo = 120"));
}

TEST_F(FechamentoCupom, ClosingWithAdditionalReceiptIsRejected)
{
    const std::vector<std::string> opened = Rows("SELECT * FROM cupom_fiscal");
    command.m_bCupomAdicional = 1;

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_EQ(
        Statement(),
        "UPDATE cupom_fiscal SET assinatura_documento = 'c2ln', valor_subtotal = 1100.00, valor_total = 1095.50, valor_troco = 4.50, texto_suplementar = 'OBRIGADO', texto_complementar = 'PDV 1.0', chave_cupom = 'CHAVE123' id_cupom_adicional = 'S' WHERE cont_coo = 120");
    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'5', Erro:'near \"id_cupom_adicional\": syntax error'",
            Statement()));
    EXPECT_EQ(Rows("SELECT * FROM cupom_fiscal"), opened);
}

TEST_F(FechamentoCupom, ClosingWithAdditionalReceiptStillApportions)
{
    Execute("INSERT INTO item_cupom_fiscal (cont_coo, seq_item) VALUES (120,1)");
    MakeApportionmentDue();
    command.m_bCupomAdicional = 1;

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_THAT(
        Statements(),
        ElementsAre(
            "UPDATE cupom_fiscal SET assinatura_documento = 'c2ln', valor_subtotal = 1100.00, valor_total = 1095.50, valor_troco = 4.50, texto_suplementar = 'OBRIGADO', texto_complementar = 'PDV 1.0', chave_cupom = 'CHAVE123' id_cupom_adicional = 'S' WHERE cont_coo = 120",
            oneItem));
    EXPECT_THAT(LogEntries(), testing::SizeIs(2));
    EXPECT_THAT(Rows("SELECT valor_total FROM item_cupom_fiscal"), ElementsAre("9"));
}

TEST_F(FechamentoCupom, OnlyTheValue1MarksAnAdditionalReceipt)
{
    for (const int value : {0, 2, -1}) {
        Forget();
        command.m_bCupomAdicional = value;
        command.DBLogger(db);
        EXPECT_EQ(Statement(), closing);
    }
}

TEST_F(FechamentoCupom, WithoutTheSettingNothingOfTheSubtotalIsAsked)
{
    MakeApportionmentDue();
    for (const int setting : {0, 2, -1}) {
        Forget();
        SetRatearSubtotal(setting);

        EXPECT_EQ(command.DBLogger(db), 1);

        EXPECT_EQ(Statement(), closing);
        EXPECT_EQ(fiscal.calls.back(), "GetRatearSubtotal()");
        EXPECT_EQ(fiscal.CallsOf("GetRatearSubtotal()"), 1);
    }
}

TEST_F(FechamentoCupom, DiscountOfTheSubtotalApportionsWithoutAskingForASurcharge)
{
    MakeApportionmentDue();

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_THAT(Statements(), ElementsAre(closing, oneItem));
    EXPECT_EQ(fiscal.CallsOf("Cupom_GetSTDescAplicado()"), 1);
    EXPECT_EQ(fiscal.CallsOf("Cupom_GetSTAcrAplicado()"), 0);
}

TEST_F(FechamentoCupom, SurchargeOfTheSubtotalApportions)
{
    for (const int discount : {0, 2}) {
        Forget();
        MakeApportionmentDue();
        fiscal.numbers["Cupom_GetSTDescAplicado()"] = discount;
        fiscal.numbers["Cupom_GetSTAcrAplicado()"] = 1;

        EXPECT_EQ(command.DBLogger(db), 1);

        EXPECT_THAT(Statements(), ElementsAre(closing, oneItem));
        EXPECT_EQ(fiscal.CallsOf("Cupom_GetSTDescAplicado()"), 1);
        EXPECT_EQ(fiscal.CallsOf("Cupom_GetSTAcrAplicado()"), 1);
    }
}

TEST_F(FechamentoCupom, WithoutAdjustmentOfTheSubtotalNoItemIsRewritten)
{
    MakeApportionmentDue();
    for (const int value : {0, 2, -1}) {
        Forget();
        fiscal.numbers["Cupom_GetSTDescAplicado()"] = value;
        fiscal.numbers["Cupom_GetSTAcrAplicado()"] = value;

        EXPECT_EQ(command.DBLogger(db), 1);

        EXPECT_EQ(Statement(), closing);
        EXPECT_EQ(fiscal.CallsOf("Cupom_GetRateioPorItem()"), 0);
    }
}

TEST_F(FechamentoCupom, AnswersWhatTheApportionmentDoes)
{
    MakeApportionmentDue();
    fiscal.numbers["Cupom_GetRateioPorItem()"] = 0;

    EXPECT_EQ(command.DBLogger(db), 0);

    EXPECT_EQ(Statement(), closing);
}

TEST_F(FechamentoCupom, UpdateThatReports0EndsTheClosing)
{
    MakeApportionmentDue();
    RejectNextExecutions(1);

    EXPECT_EQ(command.DBLogger(db), 0);

    EXPECT_EQ(Statement(), closing);
    EXPECT_EQ(fiscal.CallsOf("GetRatearSubtotal()"), 0);
}

TEST_F(FechamentoCupom, ReceiptWithoutARowChangesNothingAndIsNoError)
{
    fiscal.SetCounter(COUNTER_COO, 500);

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_THAT(Rows("SELECT valor_total FROM cupom_fiscal"), ElementsAre("0", "7"));
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(FechamentoCupom, LongestTextsTogetherAreExecutedWhole)
{
    for (const std::size_t length : {1498u, 1499u}) {
        Forget();
        const std::string message(length, 'm');
        const std::string application(length, 'a');
        const std::string key(length, 'k');
        const std::string signature(length - 1000, 's');
        SetText(command.m_sMsgPromocional, message);
        fiscal.texts["DadosPDV_GetIdAplicativo()"] = application;
        fiscal.texts["CFe_GetChaveDeBusca()"] = key;
        fiscal.texts["AssinaturaDigital_GetBase64()"] = signature;

        EXPECT_EQ(command.DBLogger(db), 1);

        EXPECT_EQ(
            Statement(),
            "UPDATE cupom_fiscal SET assinatura_documento = '" + signature +
                "', valor_subtotal = 1100.00, valor_total = 1095.50, valor_troco = 4.50, texto_suplementar = '" +
                message + "', texto_complementar = '" + application + "', chave_cupom = '" + key +
                "' WHERE cont_coo = 120");
        EXPECT_THAT(Rows("SELECT texto_suplementar, texto_complementar, chave_cupom,"
                         " assinatura_documento FROM cupom_fiscal WHERE cont_coo = 120"),
                    ElementsAre(message + "|" + application + "|" + key + "|" + signature));
        EXPECT_THAT(LogEntries(), IsEmpty());
    }
}

TEST_F(FechamentoCupom, ApostropheAtTheVeryEndOfTheLongestTextsBecomesABlank)
{
    SetText(command.m_sMsgPromocional, std::string(1498, 'm') + "'");
    fiscal.texts["DadosPDV_GetIdAplicativo()"] = std::string(1498, 'a') + "'";
    fiscal.texts["CFe_GetChaveDeBusca()"] = std::string(1498, 'k') + "'";

    command.DBLogger(db);

    EXPECT_THAT(Rows("SELECT texto_suplementar, texto_complementar, chave_cupom FROM cupom_fiscal"
                     " WHERE cont_coo = 120"),
                ElementsAre(std::string(1498, 'm') + " |" + std::string(1498, 'a') + " |" +
                            std::string(1498, 'k') + " "));
}

TEST_F(FechamentoCupom, MessageWithoutATerminatorIsReadNoFurtherThanItsArray)
{
    FillWithoutTerminator(command.m_sMsgPromocional, std::string(1500, 'm'));

    EXPECT_EQ(command.DBLogger(db), 1);

    // The message is copied first, and the copy ends with a terminator.
    EXPECT_THAT(Rows("SELECT texto_suplementar FROM cupom_fiscal WHERE cont_coo = 120"),
                ElementsAre(std::string(1499, 'm')));
}

TEST_F(FechamentoCupom, ShorterTextIsNotFollowedByTheRestOfALongerOne)
{
    SetText(command.m_sMsgPromocional, "LONGEST OF THE TEXTS");
    fiscal.texts["DadosPDV_GetIdAplicativo()"] = "LONGER ONE";
    fiscal.texts["CFe_GetChaveDeBusca()"] = "";

    command.DBLogger(db);

    EXPECT_THAT(Rows("SELECT texto_suplementar, texto_complementar, chave_cupom FROM cupom_fiscal"
                     " WHERE cont_coo = 120"),
                ElementsAre("LONGEST OF THE TEXTS|LONGER ONE|"));
}

TEST_F(FechamentoCupom, LeavesTheCommandAsItIs)
{
    MakeApportionmentDue();
    SetText(command.m_sMsgPromocional, "CNPJ/CPF consumidor: 123.456.789-09 D'AGUA");
    const std::string asItWas = BytesOf(command);

    command.DBLogger(db);

    EXPECT_EQ(BytesOf(command), asItWas);
}

TEST_F(FechamentoCupom, MemberBehindTheAdditionalReceiptIsNotRead)
{
    command.m_iReservado = 1;
    command.DBLogger(db);
    EXPECT_EQ(Statement(), closing);
}

} // namespace

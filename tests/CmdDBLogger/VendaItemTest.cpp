// The sale of an item, by the short and by the detailed command.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/LoggerTest.h"

#include <climits>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

template <class Venda>
class VendaItemOf : public LoggerTest
{
  protected:
    VendaItemOf()
    {
        fiscal.SetCounter(COUNTER_COO, 120);
        SetText(command.m_sCodigoItem, "7891000100103");
        SetText(command.m_sDescricao, "ARROZ");
        SetTaxCode("T", 1);
        SetText(command.m_sUnidadeMedida, "KG");
        command.m_iCasasDecimaisQtde = 3;
        command.m_iCasasDecimaisValor = 2;
        command.m_cArredTrunc = 'A';
        fiscal.numbers["Totalizador_GetTotPercTrib(0,0,0)"] = 1800;
        SetLastItem(0, "1,500", "2,99", "4.48");
    }

    Venda command = NewCommand<Venda>();

    // The receipt's last item, of this index from 0.
    void SetLastItem(int index, const std::string& quantity, const std::string& price,
                     const std::string& total)
    {
        const std::string item = "(" + std::to_string(index) + ")";
        fiscal.numbers["Cupom_GetQuantidadeDeItens()"] = index + 1;
        fiscal.texts["Cupom_GetItemQtdeStr" + item] = quantity;
        fiscal.texts["Cupom_GetItemValorUnitarioStr" + item] = price;
        fiscal.money["Cupom_GetItemValorTotal" + item] = Money(total);
    }

    void SetTaxCode(const std::string& code, int number)
    {
        SetText(command.m_sTributacao, code);
        command.m_iIndiceTributacao = number;
    }

    // The statement of the sale, and its one value of the tax code with the quotes and the comma.
    std::string Sell()
    {
        Forget();
        EXPECT_EQ(command.DBLogger(db), 1);
        return Statement();
    }
    std::string TaxCodeText()
    {
        const std::string statement = Sell();
        const std::string lead = head + "1,120,'7891000100103','ARROZ',1.500,";
        const std::string rest = "'KG',2.99,'V',0,'V',0,0,4.48,3,2,'A','N',0,0)";
        EXPECT_EQ(statement.substr(0, lead.size()), lead);
        EXPECT_EQ(statement.substr(statement.size() - rest.size()), rest);
        return statement.substr(lead.size(), statement.size() - lead.size() - rest.size());
    }

    const std::string head =
        "INSERT INTO item_cupom_fiscal (seq_item, cont_coo, cod_item, descricao, quantidade, aliquota, un_medida, valor_unitario, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, valor_total, casas_decimais_quantidade, casas_decimais_valor, id_arred_trunc_valor, id_cancelado, perc_acrescimo, perc_desconto) VALUES (";
};

class VendaItem : public VendaItemOf<CmdVendeItem>
{
};

class VendaItemDetalhado : public VendaItemOf<CmdVendeItemDetalhado>
{
};

// What both commands do.
template <class Venda>
class CadaVendaItem : public VendaItemOf<Venda>
{
};

using CadaVenda = ::testing::Types<CmdVendeItem, CmdVendeItemDetalhado>;
// The comma at the end is for compilers that want an argument where a macro takes any number.
TYPED_TEST_SUITE(CadaVendaItem, CadaVenda, );

TYPED_TEST(CadaVendaItem, InsertCarriesTheItemAsRegistered)
{
    EXPECT_EQ(this->command.DBLogger(this->db), 1);

    EXPECT_EQ(
        this->Statement(),
        "INSERT INTO item_cupom_fiscal (seq_item, cont_coo, cod_item, descricao, quantidade, aliquota, un_medida, valor_unitario, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, valor_total, casas_decimais_quantidade, casas_decimais_valor, id_arred_trunc_valor, id_cancelado, perc_acrescimo, perc_desconto) VALUES (1,120,'7891000100103','ARROZ',1.500,'01T18.00','KG',2.99,'V',0,'V',0,0,4.48,3,2,'A','N',0,0)");
    EXPECT_THAT(
        this->Rows("SELECT * FROM item_cupom_fiscal"),
        ElementsAre("1|120|7891000100103|ARROZ|1.5|01T18.00|KG|2.99|V|0|V|0|0|4.48|3|2|A|N|0|0"));
    EXPECT_THAT(this->LogEntries(), IsEmpty());
}

TYPED_TEST(CadaVendaItem, FifthItemIsNumber5AndIsAskedForByIndex4)
{
    this->SetLastItem(4, "2", "10,00", "20.00");

    EXPECT_EQ(
        this->Sell(),
        "INSERT INTO item_cupom_fiscal (seq_item, cont_coo, cod_item, descricao, quantidade, aliquota, un_medida, valor_unitario, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, valor_total, casas_decimais_quantidade, casas_decimais_valor, id_arred_trunc_valor, id_cancelado, perc_acrescimo, perc_desconto) VALUES (5,120,'7891000100103','ARROZ',2,'01T18.00','KG',10.00,'V',0,'V',0,0,20.00,3,2,'A','N',0,0)");
    EXPECT_THAT(this->fiscal.calls,
                ElementsAre("Cupom_GetQuantidadeDeItens()", "Contador_Get(COUNTER_COO)",
                            "Cupom_GetItemQtdeStr(4,500)", "Totalizador_GetTotPercTrib(0,0,0)",
                            "Cupom_GetItemValorUnitarioStr(4,500)", "Cupom_GetItemValorTotal(4)"));
}

TYPED_TEST(CadaVendaItem, RateIsAskedForInItsTaxBaseAndForNoOtherCode)
{
    this->SetLastItem(4, "2", "10,00", "20.00");
    this->fiscal.numbers["Totalizador_GetTotPercTrib(0,1,6)"] = 500;
    this->SetTaxCode("S", 7);
    this->Sell();
    EXPECT_THAT(this->fiscal.calls,
                ElementsAre("Cupom_GetQuantidadeDeItens()", "Contador_Get(COUNTER_COO)",
                            "Cupom_GetItemQtdeStr(4,500)", "Totalizador_GetTotPercTrib(0,1,6)",
                            "Cupom_GetItemValorUnitarioStr(4,500)", "Cupom_GetItemValorTotal(4)"));

    this->SetTaxCode("F", 1);
    this->Sell();
    EXPECT_THAT(this->fiscal.calls,
                ElementsAre("Cupom_GetQuantidadeDeItens()", "Contador_Get(COUNTER_COO)",
                            "Cupom_GetItemQtdeStr(4,500)", "Cupom_GetItemValorUnitarioStr(4,500)",
                            "Cupom_GetItemValorTotal(4)"));
}

TYPED_TEST(CadaVendaItem, FirstAndLastItemOfTheLongestReceiptAndNone)
{
    for (const int count : {1, 999, 0}) {
        this->SetLastItem(count - 1, "1", "1,00", "1.00");
        this->Sell();
    }

    EXPECT_THAT(this->Rows("SELECT seq_item, valor_total FROM item_cupom_fiscal"),
                ElementsAre("1|1", "999|1", "0|1"));
}

TYPED_TEST(CadaVendaItem, QuantityAndPriceTurnEveryCommaAndKeepTheirFullStops)
{
    this->SetLastItem(0, "1.234,500", "1,2,3", "4.48");

    EXPECT_EQ(
        this->Sell(),
        this->head +
            "1,120,'7891000100103','ARROZ',1.234.500,'01T18.00','KG',1.2.3,'V',0,'V',0,0,4.48,3,2,'A','N',0,0)");
    EXPECT_THAT(this->LogEntries(), testing::SizeIs(2));
    EXPECT_THAT(this->Rows("SELECT * FROM item_cupom_fiscal"), IsEmpty());
}

TYPED_TEST(CadaVendaItem, TotalOfAPriceWithThreeDecimalsHasThree)
{
    this->command.m_iCasasDecimaisValor = 3;
    this->SetLastItem(0, "1,500", "2,999", "1234.5678");

    EXPECT_EQ(
        this->Sell(),
        "INSERT INTO item_cupom_fiscal (seq_item, cont_coo, cod_item, descricao, quantidade, aliquota, un_medida, valor_unitario, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, valor_total, casas_decimais_quantidade, casas_decimais_valor, id_arred_trunc_valor, id_cancelado, perc_acrescimo, perc_desconto) VALUES (1,120,'7891000100103','ARROZ',1.500,'01T18.00','KG',2.999,'V',0,'V',0,0,1234.567,3,3,'A','N',0,0)");
    EXPECT_THAT(this->MoneyRequests(), ElementsAre("500,1,3,0"));
}

TYPED_TEST(CadaVendaItem, TotalOfAnyOtherPriceHasTwo)
{
    this->SetLastItem(0, "1", "1,00", "1234567.8912");
    for (const int decimals : {2, 0, 1, 4, -3}) {
        this->command.m_iCasasDecimaisValor = decimals;
        EXPECT_EQ(
            this->Sell(),
            this->head +
                "1,120,'7891000100103','ARROZ',1,'01T18.00','KG',1.00,'V',0,'V',0,0,1234567.89,3," +
                std::to_string(decimals) + ",'A','N',0,0)");
        EXPECT_THAT(this->MoneyRequests(), ElementsAre("500,0,2,0"));
    }
}

TYPED_TEST(CadaVendaItem, DecimalsOfTheQuantityAreTheCommands)
{
    this->command.m_iCasasDecimaisQtde = -7;

    this->Sell();

    EXPECT_THAT(
        this->Rows("SELECT casas_decimais_quantidade, casas_decimais_valor FROM item_cupom_fiscal"),
        ElementsAre("-7|2"));
}

TYPED_TEST(CadaVendaItem, IcmsRateIsNumberTAndPercent)
{
    auto& numbers = this->fiscal.numbers;
    numbers["Totalizador_GetTotPercTrib(0,0,0)"] = 1800;
    this->SetTaxCode("T", 1);
    EXPECT_EQ(this->TaxCodeText(), "'01T18.00',");

    numbers["Totalizador_GetTotPercTrib(0,0,11)"] = 725;
    this->SetTaxCode("T", 12);
    EXPECT_EQ(this->TaxCodeText(), "'12T07.25',");
    EXPECT_EQ(this->fiscal.CallsOf("Totalizador_GetTotPercTrib"), 1);

    numbers["Totalizador_GetTotPercTrib(0,0,98)"] = 9999;
    this->SetTaxCode("T", 99);
    EXPECT_EQ(this->TaxCodeText(), "'99T99.99',");

    numbers["Totalizador_GetTotPercTrib(0,0,99)"] = 10000;
    this->SetTaxCode("T", 100);
    EXPECT_EQ(this->TaxCodeText(), "'100T100.00',");

    numbers["Totalizador_GetTotPercTrib(0,0,1)"] = 0;
    this->SetTaxCode("T", 2);
    EXPECT_EQ(this->TaxCodeText(), "'02T00.00',");

    numbers["Totalizador_GetTotPercTrib(0,0,2)"] = -725;
    this->SetTaxCode("T", 3);
    EXPECT_EQ(this->TaxCodeText(), "'03T-7.-25',");
}

TYPED_TEST(CadaVendaItem, TotalizerNumber0IsAskedForByIndexMinus1)
{
    this->fiscal.numbers["Totalizador_GetTotPercTrib(0,0,-1)"] = 100;
    this->SetTaxCode("T", 0);
    EXPECT_EQ(this->TaxCodeText(), "'00T01.00',");
}

TYPED_TEST(CadaVendaItem, FirstCharacterAloneChoosesTheRate)
{
    this->fiscal.numbers["Totalizador_GetTotPercTrib(0,1,2)"] = 500;
    this->SetTaxCode("TS", 1);
    EXPECT_EQ(this->TaxCodeText(), "'01T18.00',");
    this->SetTaxCode("ST", 3);
    EXPECT_EQ(this->fiscal.CallsOf("Totalizador_GetTotPercTrib(0,0"), 1);
    this->TaxCodeText();
    EXPECT_EQ(this->fiscal.CallsOf("Totalizador_GetTotPercTrib(0,1,2)"), 1);
    EXPECT_EQ(this->fiscal.CallsOf("Totalizador_GetTotPercTrib"), 1);
}

TYPED_TEST(CadaVendaItem, OtherTaxCodesAreLettersAndNumber)
{
    struct {
        const char* code;
        int number;
        const char* text;
    } const cases[] = {
        {"F", 1, "'F1',"},   {"I", 2, "'I2',"},   {"N", 3, "'N3',"},     {"FS", 1, "'FS1',"},
        {"IS", 2, "'IS2',"}, {"NS", 1, "'NS1',"}, {"NS", 12, "'NS12',"}, {"t", 1, "'t1',"},
        {"s", 1, "'s1',"},   {"", 7, "'7',"},     {"FT", 0, "'FT0',"},   {"N", -1, "'N-1',"},
    };
    for (const auto& one : cases) {
        this->SetTaxCode(one.code, one.number);
        EXPECT_EQ(this->TaxCodeText(), one.text);
        EXPECT_EQ(this->fiscal.CallsOf("Totalizador_GetTotPercTrib"), 0) << one.code;
    }
}

TYPED_TEST(CadaVendaItem, TaxCodeFIsStoredAsF1)
{
    this->SetTaxCode("F", 1);

    EXPECT_EQ(
        this->Sell(),
        "INSERT INTO item_cupom_fiscal (seq_item, cont_coo, cod_item, descricao, quantidade, aliquota, un_medida, valor_unitario, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, valor_total, casas_decimais_quantidade, casas_decimais_valor, id_arred_trunc_valor, id_cancelado, perc_acrescimo, perc_desconto) VALUES (1,120,'7891000100103','ARROZ',1.500,'F1','KG',2.99,'V',0,'V',0,0,4.48,3,2,'A','N',0,0)");
    EXPECT_THAT(this->Rows("SELECT aliquota FROM item_cupom_fiscal"), ElementsAre("F1"));
}

TYPED_TEST(CadaVendaItem, RoundingFlagIsWrittenAsItIs)
{
    for (const char flag : {'A', 'T', '%', ' '}) {
        this->command.m_cArredTrunc = flag;
        EXPECT_EQ(
            this->Sell(),
            this->head +
                "1,120,'7891000100103','ARROZ',1.500,'01T18.00','KG',2.99,'V',0,'V',0,0,4.48,3,2,'" +
                flag + "','N',0,0)");
    }
}

TYPED_TEST(CadaVendaItem, RoundingFlagNotSetEndsItsOwnTextAndIsLogged)
{
    this->command.m_cArredTrunc = '\0';

    const std::string statement = this->Sell();

    EXPECT_EQ(
        statement,
        this->head +
            "1,120,'7891000100103','ARROZ',1.500,'01T18.00','KG',2.99,'V',0,'V',0,0,4.48,3,2,''N',0,0)");
    ASSERT_THAT(this->LogEntries(), testing::SizeIs(2));
    EXPECT_EQ(this->LogEntries()[1], statement);
}

TYPED_TEST(CadaVendaItem, CodeWithAnApostropheIsLostAndLogged)
{
    SetText(this->command.m_sCodigoItem, "78'91");

    const std::string statement = this->Sell();

    EXPECT_EQ(
        statement,
        this->head +
            "1,120,'78'91','ARROZ',1.500,'01T18.00','KG',2.99,'V',0,'V',0,0,4.48,3,2,'A','N',0,0)");
    const std::string code = std::to_string(this->command.m_eCmdType);
    EXPECT_THAT(this->LogEntries(),
                ElementsAre("DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'" + code +
                                "', Erro:'near \"91\": syntax error'",
                            statement));
    EXPECT_THAT(this->Rows("SELECT * FROM item_cupom_fiscal"), IsEmpty());
}

TYPED_TEST(CadaVendaItem, UnitWithAnApostropheIsLostAndLogged)
{
    SetText(this->command.m_sUnidadeMedida, "K'G");

    const std::string statement = this->Sell();

    const std::string code = std::to_string(this->command.m_eCmdType);
    EXPECT_THAT(this->LogEntries(),
                ElementsAre("DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'" + code +
                                "', Erro:'near \"G\": syntax error'",
                            statement));
    EXPECT_THAT(this->Rows("SELECT * FROM item_cupom_fiscal"), IsEmpty());
}

TYPED_TEST(CadaVendaItem, TextsThatFillTheirArraysAreWrittenWhole)
{
    for (const std::size_t shorter : {1u, 0u}) {
        const std::string code(14 - shorter, 'c');
        const std::string description(234 - shorter, 'd');
        const std::string taxCode(3 - shorter, 'F');
        const std::string unit(10 - shorter, 'u');
        SetText(this->command.m_sCodigoItem, code);
        SetText(this->command.m_sDescricao, description);
        this->SetTaxCode(taxCode, 1);
        SetText(this->command.m_sUnidadeMedida, unit);

        EXPECT_EQ(this->Sell(), this->head + "1,120,'" + code + "','" + description + "',1.500,'" +
                                    taxCode + "1','" + unit +
                                    "',2.99,'V',0,'V',0,0,4.48,3,2,'A','N',0,0)");
    }
    EXPECT_THAT(this->LogEntries(), IsEmpty());
}

TYPED_TEST(CadaVendaItem, TextsWithoutATerminatorAreReadNoFurtherThanTheirArrays)
{
    const std::string code(15, 'c');
    const std::string description(235, 'd');
    const std::string unit(11, 'u');
    FillWithoutTerminator(this->command.m_sCodigoItem, code);
    FillWithoutTerminator(this->command.m_sDescricao, description);
    FillWithoutTerminator(this->command.m_sTributacao, "FFFF");
    FillWithoutTerminator(this->command.m_sUnidadeMedida, unit);

    EXPECT_EQ(this->Sell(), this->head + "1,120,'" + code + "','" + description +
                                "',1.500,'FFFF1','" + unit +
                                "',2.99,'V',0,'V',0,0,4.48,3,2,'A','N',0,0)");
}

TYPED_TEST(CadaVendaItem, LongestTextsOfTheFiscalDataAreExecutedWhole)
{
    for (const std::size_t zeros : {496u, 497u}) {
        const std::string decimals(zeros, '0');
        this->SetLastItem(0, "7," + decimals, "8," + decimals, "4.48");

        EXPECT_EQ(this->Sell(), this->head + "1,120,'7891000100103','ARROZ',7." + decimals +
                                    ",'01T18.00','KG',8." + decimals +
                                    ",'V',0,'V',0,0,4.48,3,2,'A','N',0,0)");
    }
    EXPECT_THAT(this->Rows("SELECT quantidade, valor_unitario FROM item_cupom_fiscal"),
                ElementsAre("7|8", "7|8"));
    EXPECT_THAT(this->LogEntries(), IsEmpty());
}

TYPED_TEST(CadaVendaItem, LeavesTheCommandAsItIs)
{
    const std::string asItWas = BytesOf(this->command);

    this->Sell();

    EXPECT_EQ(BytesOf(this->command), asItWas);
}

TYPED_TEST(CadaVendaItem, AnswersWhatItsExecutionReports)
{
    this->RejectNextExecutions(1);
    EXPECT_EQ(this->command.DBLogger(this->db), 0);
    EXPECT_EQ(this->command.DBLogger(this->db), 1);
}

// Where they differ.

TEST_F(VendaItem, DescriptionTurnsItsApostrophesIntoBackquotesAndKeepsThem)
{
    SetText(command.m_sDescricao, "D'AGUA");

    EXPECT_EQ(
        Sell(),
        "INSERT INTO item_cupom_fiscal (seq_item, cont_coo, cod_item, descricao, quantidade, aliquota, un_medida, valor_unitario, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, valor_total, casas_decimais_quantidade, casas_decimais_valor, id_arred_trunc_valor, id_cancelado, perc_acrescimo, perc_desconto) VALUES (1,120,'7891000100103','D`AGUA',1.500,'01T18.00','KG',2.99,'V',0,'V',0,0,4.48,3,2,'A','N',0,0)");
    EXPECT_THAT(Rows("SELECT descricao FROM item_cupom_fiscal"), ElementsAre("D`AGUA"));
    EXPECT_STREQ(command.m_sDescricao, "D`AGUA");
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(VendaItem, EveryApostropheOfTheDescriptionIsTurnedAndNothingElseOfTheCommand)
{
    SetText(command.m_sDescricao, "'A''B'");
    const std::string asItWas = BytesOf(command);

    Sell();

    EXPECT_STREQ(command.m_sDescricao, "`A``B`");
    SetText(command.m_sDescricao, "'A''B'");
    EXPECT_EQ(BytesOf(command), asItWas);
}

TEST_F(VendaItem, DescriptionIsTurnedAlsoWhenTheSaleIsRejected)
{
    SetText(command.m_sDescricao, "D'AGUA");
    SetText(command.m_sCodigoItem, "78'91");

    Sell();

    EXPECT_STREQ(command.m_sDescricao, "D`AGUA");
}

TEST_F(VendaItem, WhatStandsBehindTheDescriptionsTextOrArrayIsLeftAsItIs)
{
    SetText(command.m_sDescricao, "D'AGUA");
    command.m_sDescricao[7] = '\'';
    Sell();
    EXPECT_EQ(command.m_sDescricao[7], '\'');

    FillWithoutTerminator(command.m_sDescricao, std::string(235, '\''));
    SetText(command.m_sTributacao, "'''");
    Sell();
    EXPECT_STREQ(command.m_sTributacao, "'''");
    EXPECT_EQ(std::string(command.m_sDescricao, 235), std::string(235, '`'));
}

TEST_F(VendaItem, IssqnRateIsWrittenWithTheLetterS)
{
    fiscal.numbers["Totalizador_GetTotPercTrib(0,1,2)"] = 500;
    SetTaxCode("S", 3);

    EXPECT_EQ(
        Sell(),
        "INSERT INTO item_cupom_fiscal (seq_item, cont_coo, cod_item, descricao, quantidade, aliquota, un_medida, valor_unitario, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, valor_total, casas_decimais_quantidade, casas_decimais_valor, id_arred_trunc_valor, id_cancelado, perc_acrescimo, perc_desconto) VALUES (1,120,'7891000100103','ARROZ',1.500,'03S05.00','KG',2.99,'V',0,'V',0,0,4.48,3,2,'A','N',0,0)");
    EXPECT_EQ(fiscal.CallsOf("Totalizador_GetTotPercTrib"), 1);
}

TEST_F(VendaItem, IssqnRatesAreNumberSAndPercent)
{
    fiscal.numbers["Totalizador_GetTotPercTrib(0,1,0)"] = 1;
    SetTaxCode("S", 1);
    EXPECT_EQ(TaxCodeText(), "'01S00.01',");
    fiscal.numbers["Totalizador_GetTotPercTrib(0,1,11)"] = 10000;
    SetTaxCode("S", 12);
    EXPECT_EQ(TaxCodeText(), "'12S100.00',");
}

TEST_F(VendaItem, MemberBeforeTheCodeIsNotRead)
{
    const std::string statement = Sell();
    command.m_iReservado = 77;
    EXPECT_EQ(Sell(), statement);
    EXPECT_EQ(command.m_iReservado, 77);
}

TEST_F(VendaItemDetalhado, DescriptionWithAnApostropheIsLostLoggedAndLeftAsItIs)
{
    SetText(command.m_sDescricao, "D'AGUA");

    EXPECT_EQ(command.DBLogger(db), 1);

    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'157', Erro:'near \"AGUA\": syntax error'",
            "INSERT INTO item_cupom_fiscal (seq_item, cont_coo, cod_item, descricao, quantidade, aliquota, un_medida, valor_unitario, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, valor_total, casas_decimais_quantidade, casas_decimais_valor, id_arred_trunc_valor, id_cancelado, perc_acrescimo, perc_desconto) VALUES (1,120,'7891000100103','D'AGUA',1.500,'01T18.00','KG',2.99,'V',0,'V',0,0,4.48,3,2,'A','N',0,0)"));
    EXPECT_THAT(Rows("SELECT * FROM item_cupom_fiscal"), IsEmpty());
    EXPECT_STREQ(command.m_sDescricao, "D'AGUA");
}

TEST_F(VendaItemDetalhado, IssqnRateIsReadFromItsBaseAndWrittenWithTheLetterT)
{
    fiscal.numbers["Totalizador_GetTotPercTrib(0,1,2)"] = 500;
    SetTaxCode("S", 3);

    EXPECT_EQ(
        Sell(),
        "INSERT INTO item_cupom_fiscal (seq_item, cont_coo, cod_item, descricao, quantidade, aliquota, un_medida, valor_unitario, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, valor_total, casas_decimais_quantidade, casas_decimais_valor, id_arred_trunc_valor, id_cancelado, perc_acrescimo, perc_desconto) VALUES (1,120,'7891000100103','ARROZ',1.500,'03T05.00','KG',2.99,'V',0,'V',0,0,4.48,3,2,'A','N',0,0)");
    EXPECT_EQ(fiscal.CallsOf("Totalizador_GetTotPercTrib"), 1);
}

TEST_F(VendaItemDetalhado, IssqnRatesAreNumberTAndPercent)
{
    fiscal.numbers["Totalizador_GetTotPercTrib(0,1,0)"] = 1;
    SetTaxCode("S", 1);
    EXPECT_EQ(TaxCodeText(), "'01T00.01',");
    fiscal.numbers["Totalizador_GetTotPercTrib(0,1,11)"] = 10000;
    SetTaxCode("S", 12);
    EXPECT_EQ(TaxCodeText(), "'12T100.00',");
}

} // namespace

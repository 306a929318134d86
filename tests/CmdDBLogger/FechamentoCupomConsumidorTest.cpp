// The consumer's number in the closing message.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/EmptyRegister.h"
#include "tests/CmdDBLogger/LoggerTest.h"

namespace
{

using ::testing::ElementsAre;

class IdentificacaoConsumidor : public LoggerTest
{
  protected:
    IdentificacaoConsumidor()
    {
        ScriptEmptyReceipt(fiscal);
        fiscal.SetCounter(COUNTER_COO, 0);
        Execute("INSERT INTO cupom_fiscal (cont_coo, cpf_cnpj_consumidor) VALUES (0, 'kept')");
    }

    // Closes a receipt with this message and answers the piece of the statement between the change
    // and the message, which is stored whole either way.
    std::string PieceOf(const std::string& message)
    {
        CmdFechaCupom command = NewCommand<CmdFechaCupom>();
        SetText(command.m_sMsgPromocional, message);
        Forget();
        EXPECT_EQ(command.DBLogger(db), 1);
        const std::string before =
            "UPDATE cupom_fiscal SET assinatura_documento = '', valor_subtotal = 0.00, valor_total = 0.00, valor_troco = 0.00, ";
        std::string stored = message;
        for (char& c : stored) {
            c = c == '\'' ? ' ' : c;
        }
        const std::string after = "texto_suplementar = '" + stored +
                                  "', texto_complementar = '', chave_cupom = '' WHERE cont_coo = 0";
        const std::string statement = Statement();
        EXPECT_EQ(statement.substr(0, before.size()), before);
        if (statement.size() < before.size() + after.size()) {
            return "no statement of a closing: " + statement;
        }
        EXPECT_EQ(statement.substr(statement.size() - after.size()), after);
        return statement.substr(before.size(), statement.size() - before.size() - after.size());
    }

    std::string StoredNumber()
    {
        return Rows("SELECT cpf_cnpj_consumidor FROM cupom_fiscal").front();
    }

    const std::string label = "CNPJ/CPF consumidor:";
    const std::string cpf = "cpf_cnpj_consumidor = '12345678909', ";
    const std::string cnpj = "cpf_cnpj_consumidor = '12345678000195', ";
};

TEST_F(IdentificacaoConsumidor, CpfAfterOneBlankGoesInAsItsElevenDigits)
{
    EXPECT_EQ(PieceOf("CNPJ/CPF consumidor: 123.456.789-09 OBRIGADO PELA VISITA"),
              "cpf_cnpj_consumidor = '12345678909', ");
    EXPECT_EQ(
        Statement(),
        "UPDATE cupom_fiscal SET assinatura_documento = '', valor_subtotal = 0.00, valor_total = 0.00, valor_troco = 0.00, cpf_cnpj_consumidor = '12345678909', texto_suplementar = 'CNPJ/CPF consumidor: 123.456.789-09 OBRIGADO PELA VISITA', texto_complementar = '', chave_cupom = '' WHERE cont_coo = 0");
    EXPECT_EQ(StoredNumber(), "12345678909");
}

TEST_F(IdentificacaoConsumidor, CnpjDirectlyAfterTheLabelGoesInAsItsFourteenDigits)
{
    EXPECT_EQ(PieceOf("CNPJ/CPF consumidor:12.345.678/0001-95"),
              "cpf_cnpj_consumidor = '12345678000195', ");
    EXPECT_EQ(
        Statement(),
        "UPDATE cupom_fiscal SET assinatura_documento = '', valor_subtotal = 0.00, valor_total = 0.00, valor_troco = 0.00, cpf_cnpj_consumidor = '12345678000195', texto_suplementar = 'CNPJ/CPF consumidor:12.345.678/0001-95', texto_complementar = '', chave_cupom = '' WHERE cont_coo = 0");
    EXPECT_EQ(StoredNumber(), "12345678000195");
}

TEST_F(IdentificacaoConsumidor, TwoBlanksAfterTheLabelGiveNoNumber)
{
    EXPECT_EQ(PieceOf("CNPJ/CPF consumidor:  12345678909"), "");
    EXPECT_EQ(
        Statement(),
        "UPDATE cupom_fiscal SET assinatura_documento = '', valor_subtotal = 0.00, valor_total = 0.00, valor_troco = 0.00, texto_suplementar = 'CNPJ/CPF consumidor:  12345678909', texto_complementar = '', chave_cupom = '' WHERE cont_coo = 0");
    EXPECT_EQ(PieceOf(label + "   12345678909"), "");
    EXPECT_EQ(StoredNumber(), "kept");
}

TEST_F(IdentificacaoConsumidor, LineBreaksAndOtherCharactersDoNotEndTheNumber)
{
    EXPECT_EQ(PieceOf("CNPJ/CPF consumidor: 123456\r\n78909 FIM"),
              "cpf_cnpj_consumidor = '12345678909', ");
    EXPECT_EQ(
        Statement(),
        "UPDATE cupom_fiscal SET assinatura_documento = '', valor_subtotal = 0.00, valor_total = 0.00, valor_troco = 0.00, cpf_cnpj_consumidor = '12345678909', texto_suplementar = 'CNPJ/CPF consumidor: 123456\r\n78909 FIM', texto_complementar = '', chave_cupom = '' WHERE cont_coo = 0");
    EXPECT_EQ(PieceOf(label + "\n12345678909\n"), cpf);
    EXPECT_EQ(PieceOf(label + " \n12345678909"), cpf);
    EXPECT_EQ(PieceOf(label + "NOME1234567-8909X"), cpf);
    // Digits of the next line, up to the next blank, are collected too.
    EXPECT_EQ(PieceOf(label + " 12345678909\n000"), "cpf_cnpj_consumidor = '12345678909000', ");
    EXPECT_EQ(PieceOf(label + " 12345678909\n00"), "");
}

TEST_F(IdentificacaoConsumidor, TwelveDigitsGiveNoNumber)
{
    EXPECT_EQ(PieceOf("CNPJ/CPF consumidor: 123456789012 FIM"), "");
    EXPECT_EQ(
        Statement(),
        "UPDATE cupom_fiscal SET assinatura_documento = '', valor_subtotal = 0.00, valor_total = 0.00, valor_troco = 0.00, texto_suplementar = 'CNPJ/CPF consumidor: 123456789012 FIM', texto_complementar = '', chave_cupom = '' WHERE cont_coo = 0");
}

TEST_F(IdentificacaoConsumidor, FifteenDigitsAreCutAfterFourteen)
{
    EXPECT_EQ(PieceOf("CNPJ/CPF consumidor: 123456780001959"),
              "cpf_cnpj_consumidor = '12345678000195', ");
    EXPECT_EQ(
        Statement(),
        "UPDATE cupom_fiscal SET assinatura_documento = '', valor_subtotal = 0.00, valor_total = 0.00, valor_troco = 0.00, cpf_cnpj_consumidor = '12345678000195', texto_suplementar = 'CNPJ/CPF consumidor: 123456780001959', texto_complementar = '', chave_cupom = '' WHERE cont_coo = 0");
}

TEST_F(IdentificacaoConsumidor, MessageWithoutTheLabelLeavesTheColumnAndIsStored)
{
    EXPECT_EQ(PieceOf("12345678909 OBRIGADO"), "");
    EXPECT_EQ(
        Statement(),
        "UPDATE cupom_fiscal SET assinatura_documento = '', valor_subtotal = 0.00, valor_total = 0.00, valor_troco = 0.00, texto_suplementar = '12345678909 OBRIGADO', texto_complementar = '', chave_cupom = '' WHERE cont_coo = 0");
    EXPECT_THAT(Rows("SELECT cpf_cnpj_consumidor, texto_suplementar FROM cupom_fiscal"),
                ElementsAre("kept|12345678909 OBRIGADO"));
}

TEST_F(IdentificacaoConsumidor, OnlyElevenOrFourteenDigitsMakeANumber)
{
    const std::string digits = "90817263544536271809";
    for (std::size_t count = 0; count <= digits.size(); ++count) {
        const std::string number = digits.substr(0, count);
        std::string piece;
        if (count == 11) {
            piece = "cpf_cnpj_consumidor = '90817263544', ";
        }
        if (count >= 14) {
            piece = "cpf_cnpj_consumidor = '90817263544536', ";
        }
        EXPECT_EQ(PieceOf(label + number), piece) << count;
        EXPECT_EQ(PieceOf(label + " " + number), piece) << count;
        EXPECT_EQ(PieceOf(label + " " + number + " 5"), piece) << count;
        EXPECT_EQ(PieceOf(label + " -" + number + "- 5"), piece) << count;
    }
}

TEST_F(IdentificacaoConsumidor, OnlyTheBlankEndsTheNumber)
{
    for (int code = 1; code < 256; ++code) {
        const char c = static_cast<char>(code);
        std::string piece = cpf;
        if (c == ' ') {
            piece = "";
        } else if (c >= '0' && c <= '9') {
            piece = ""; // a twelfth digit
        }
        EXPECT_EQ(PieceOf(label + " 1234567" + c + "8909 1"), piece) << code;
        EXPECT_EQ(PieceOf(label + c + "12345678909"), c == ' ' ? cpf : piece) << code;
    }
}

TEST_F(IdentificacaoConsumidor, BlankInsideTheNumberEndsIt)
{
    EXPECT_EQ(PieceOf(label + " 123 45678909"), "");
    EXPECT_EQ(PieceOf(label + " 12345678909 000"), cpf);
    EXPECT_EQ(PieceOf(label + "12345678909 000"), cpf);
    EXPECT_EQ(PieceOf(label + " 12345678000195 1"), cnpj);
}

TEST_F(IdentificacaoConsumidor, EveryDigitCounts)
{
    EXPECT_EQ(PieceOf(label + " 01234567890"), "cpf_cnpj_consumidor = '01234567890', ");
    EXPECT_EQ(PieceOf(label + " 00000000000"), "cpf_cnpj_consumidor = '00000000000', ");
    EXPECT_EQ(PieceOf(label + " 99999999999999"), "cpf_cnpj_consumidor = '99999999999999', ");
    // The characters on either side of the digits are none.
    EXPECT_EQ(PieceOf(label + " /12345678909:"), cpf);
}

TEST_F(IdentificacaoConsumidor, FirstLabelCounts)
{
    EXPECT_EQ(PieceOf(label + " 12345678909 " + label + " 98765432100"), cpf);
    EXPECT_EQ(PieceOf(label + " 123 " + label + " 98765432100"), "");
    EXPECT_EQ(PieceOf(label + label + " 98765432100"), "");
    EXPECT_EQ(PieceOf(label + "CNPJ/CPF:12345678909"), cpf);
}

TEST_F(IdentificacaoConsumidor, LabelMayStandAnywhereInTheMessage)
{
    EXPECT_EQ(PieceOf("VOLTE SEMPRE " + label + " 12345678909"), cpf);
    EXPECT_EQ(PieceOf("11122233344\n" + label + " 12345678909\nCAIXA"), cpf);
    EXPECT_EQ(PieceOf("CNPJ/" + label + " 12345678909"), cpf);
}

TEST_F(IdentificacaoConsumidor, LabelMustBeWholeAndInItsOwnSpelling)
{
    for (const char* other :
         {"CNPJ/CPF consumidor", "CNPJ/CPF consumidor ", "CNPJ/CPF Consumidor:",
          "cnpj/cpf consumidor:", "NPJ/CPF consumidor:", "CPF/CNPJ consumidor:",
          "CNPJ/CPF  consumidor:", "CNPJ/CPF consumidor :", "CNPJ CPF consumidor:"}) {
        EXPECT_EQ(PieceOf(std::string(other) + " 12345678909"), "") << other;
    }
    EXPECT_EQ(PieceOf(""), "");
}

TEST_F(IdentificacaoConsumidor, LabelAtTheVeryEndGivesNoNumber)
{
    EXPECT_EQ(PieceOf(label), "");
    EXPECT_EQ(PieceOf(label + " "), "");
    EXPECT_EQ(PieceOf(label + "  "), "");
    EXPECT_EQ(PieceOf("OBRIGADO " + label), "");
    // A message of the greatest length that ends with the label, or with the blank after it.
    EXPECT_EQ(PieceOf(std::string(1479, '1') + label), "");
    EXPECT_EQ(PieceOf(std::string(1478, '1') + label + " "), "");
}

TEST_F(IdentificacaoConsumidor, NumberMayEndWithTheLongestMessage)
{
    EXPECT_EQ(PieceOf(std::string(1467, 'm') + label + " 12345678909"), cpf);
    EXPECT_EQ(PieceOf(std::string(1465, 'm') + label + "12345678000195"), cnpj);
    EXPECT_EQ(PieceOf(std::string(1469, 'm') + label + "1234567890"), "");
}

TEST_F(IdentificacaoConsumidor, ApostrophesAmongTheDigitsAreSkippedAndStoredAsBlanks)
{
    EXPECT_EQ(PieceOf(label + " '123'456'789'09'"), cpf);
    EXPECT_THAT(Rows("SELECT cpf_cnpj_consumidor, texto_suplementar FROM cupom_fiscal"),
                ElementsAre("12345678909|CNPJ/CPF consumidor:  123 456 789 09 "));
}

} // namespace

#include "bancada/arquivo/RecordWriter.h"

#include "bancada/Unusable.h"

#include <gtest/gtest.h>
#include <sstream>
#include <stdexcept>
#include <string>

namespace bancada::arquivo
{
namespace
{

using leitura::Amount;
using leitura::CellState;

class RecordWriterTest : public testing::Test
{
  protected:
    RecordWriterTest() { writer.SetRegister("SERIE", "MODELO"); }

    // Begins an E20 of the row 7 up to its first amount.
    void BeginItem(const std::string& nome = "RECARGA")
    {
        writer.Begin("E20", {"item_cupom_nf", 7});
        writer.N("usuario", 1);
        writer.N("coo", 12);
        writer.N("gnf", 3);
        writer.N("item", 2);
        writer.X("nome", nome);
    }

    template <typename Write>
    std::string Fault(Write write)
    {
        try {
            write();
        } catch (const Unusable& error) {
            return error.what();
        }
        return "";
    }

    std::ostringstream out;
    RecordWriter writer{out, LineEnd::CRLF, "db"};
};

TEST_F(RecordWriterTest, WritesEveryFormAtItsPositions)
{
    BeginItem("CAFÉ");
    writer.Amount("valor", Amount(1250, 2));
    writer.Amount("desconto", Amount(5, 1));
    writer.CutAmount("acrescimo", Amount(1239, 3));
    writer.Amount("total", Amount(7, 0));
    writer.Flag("cancelado", true);
    writer.N("acrescimo_cancelado", leitura::Integer(9));
    EXPECT_EQ(out.str(), "") << "a record is written when it is whole";
    writer.End();
    writer.Begin("E07");
    writer.X("versao_sb", "01.00.00");
    writer.D("data", std::string("2024-02-29 10:11:12"));
    writer.End();
    EXPECT_EQ(out.str(), "E20SERIE                MODELO              01000012000003002"
                         "CAFE           0000000001250000000000005000000000001230000000000700"
                         "S0000000000009\r\n"
                         "E07SERIE                MODELO              01.00.00  20240229\r\n");
}

TEST_F(RecordWriterTest, WritesWhatThereIsNot)
{
    RecordWriter lf(out, LineEnd::LF, "db");
    lf.Begin("E05");
    lf.Digits("cnpj", std::string());
    lf.D("data", std::string());
    lf.H("hora", std::string());
    lf.X("letras", "");
    lf.End();
    EXPECT_EQ(out.str(),
              "E05" + std::string(41, ' ') + std::string(28, '0') + std::string(10, ' ') + "\n");
}

TEST_F(RecordWriterTest, ANumberWrittenAsTextIsItsDigits)
{
    writer.Begin("E08");
    writer.Digits("cnpj", std::string("11.222.333/0001-81"));
    writer.X("numero_serie_mfd", "M");
    writer.End();
    EXPECT_EQ(out.str().substr(44, 14), "11222333000181");
}

TEST_F(RecordWriterTest, WhatDoesNotFitNamesTheRow)
{
    const std::string row = "db: item_cupom_nf, row 7: E20, ";
    EXPECT_EQ(Fault([&] { BeginItem("SIXTEEN LETTERS!"); }),
              row + "nome (positions 62-76): \"SIXTEEN LETTERS!\" does not fit");
    EXPECT_EQ(Fault([&] { BeginItem("A\nB"); }),
              row + "nome (positions 62-76): the text has no form in ASCII");
    BeginItem();
    const std::string valor = row + "valor (positions 77-89): ";
    EXPECT_EQ(Fault([&] { writer.Amount("valor", Amount(10000000000000, 2)); }),
              valor + "\"10000000000000\" does not fit");
    EXPECT_EQ(Fault([&] { writer.Amount("valor", Amount(-1, 2)); }),
              valor + "it is below zero: -1");
    EXPECT_EQ(Fault([&] { writer.Amount("valor", Amount(1001, 3)); }),
              valor + "the row's number is not exact to 2 decimals");
    EXPECT_EQ(Fault([&] { writer.Amount("valor", Amount(CellState::NULL_VALUE, "NULL", 2)); }),
              valor + "the row holds no value for it but NULL");
    EXPECT_EQ(Fault([&] { writer.CutAmount("valor", Amount(CellState::TOO_LARGE, "1e99", 2)); }),
              valor + "the row holds no value for it but 1e99");
    writer.Amount("valor", Amount(9999999999999, 2));
    EXPECT_EQ(out.str(), "") << "nothing of such a record is written";
}

TEST_F(RecordWriterTest, ATextOrAnInstantThatIsNoneNamesItsField)
{
    writer.Begin("E05");
    EXPECT_EQ(Fault([&] { writer.Digits("cnpj", std::string("1122A")); }),
              "db: E05, cnpj (positions 45-58): digits are due, not \"1122A\"");
    writer.Begin("E05");
    writer.Digits("cnpj", std::string("1"));
    EXPECT_EQ(Fault([&] { writer.D("data", std::string("2024-13-01 00:00:00")); }),
              "db: E05, data (positions 59-66): a date AAAAMMDD is due, not \"20241301\"");
    writer.Begin("E05");
    writer.Digits("cnpj", std::string("1"));
    writer.D("data", std::string("2024-12-01"));
    EXPECT_EQ(Fault([&] { writer.H("hora", std::string("2024-12-01")); }),
              "db: E05, hora (positions 67-72): a time is due, not \"2024-12-01\"");
    EXPECT_EQ(Fault([&] { writer.H("hora", leitura::Text(CellState::NULL_VALUE, "NULL")); }),
              "db: E05, hora (positions 67-72): the row holds no value for it but NULL");
}

TEST_F(RecordWriterTest, CutsWhereItIsAskedTo)
{
    writer.Begin("E07");
    writer.CutText("versao_sb", std::string("01.00.00 beta"));
    writer.D("data", std::string());
    writer.End();
    EXPECT_EQ(out.str().substr(44, 10), "01.00.00 b");
}

TEST_F(RecordWriterTest, AFieldOutOfItsPlaceIsAFaultOfTheProgram)
{
    EXPECT_THROW(writer.Begin("E99"), std::logic_error);
    writer.Begin("E07");
    EXPECT_THROW(writer.D("data", std::string()), std::logic_error);
    EXPECT_THROW(writer.N("versao_sb", 1), std::logic_error) << "another form";
    EXPECT_THROW(writer.End(), std::logic_error);
    writer.X("versao_sb", "1");
    writer.D("data", std::string());
    EXPECT_THROW(writer.N("more", 1), std::logic_error);
}

} // namespace
} // namespace bancada::arquivo

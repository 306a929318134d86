// The assembled register: what becomes of a line of the tape.
#include "bancada/caixa/Caixa.h"

#include "bancada/tape/TapeClock.h"
#include "bancada/tape/TapeReader.h"
#include "tests/support/Files.h"
#include "tests/support/Rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <stdexcept>
#include <string>

using namespace bancada;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace
{

using Fate = Answer::Fate;

class CaixaTest : public testing::Test
{
  protected:
    Answer Run(Caixa& caixa, const std::string& line)
    {
        TapeReader tape(folder.Write("tape", line));
        TapeCommand command;
        EXPECT_TRUE(tape.Next(command));
        return caixa.Run(command, clock);
    }

    static std::vector<std::string> Rows(Caixa& caixa, const std::string& sql)
    {
        return test_support::Rows(caixa.Database().Handle(), sql);
    }

    test_support::TempFolder folder;
    TapeClock clock;
};

constexpr char OPENS[] = R"({"cmd":"abre_cupom","em":"2026-03-02 08:00:00"})";
constexpr char OPENS_WITH_APOSTROPHE[] =
    R"({"cmd":"abre_cupom","em":"2026-03-02 08:00:00","nome":"D'ARC"})";
constexpr char READS[] = R"({"cmd":"leitura_x","em":"2026-03-02 08:00:00"})";

TEST_F(CaixaTest, ACommandThatIsExecutedIsKept)
{
    Caixa caixa(":memory:");
    const Answer answer = Run(caixa, OPENS);
    EXPECT_EQ(answer.fate, Fate::KEPT);
    EXPECT_TRUE(answer.Executed());
    EXPECT_EQ(answer.reason, "");
    EXPECT_EQ(answer.rejected, 0);
    EXPECT_THAT(Rows(caixa, "SELECT data_hora_emissao FROM cupom_fiscal"),
                ElementsAre("2026-03-02 08:00:00"));
}

// The row of what stays open ends with its opening until it is closed.
TEST_F(CaixaTest, TheRowsOfADocumentTellWhenItsCommandsEnd)
{
    Caixa caixa(":memory:");
    const std::string times =
        "SELECT data_hora_inicio_emissao, data_hora_fim_emissao FROM outros_documentos";
    EXPECT_TRUE(Run(caixa, R"({"cmd":"abre_gerencial","em":"2026-03-02 08:00:00",)"
                           R"("fim":"2026-03-02 08:00:03"})")
                    .Executed());
    EXPECT_THAT(Rows(caixa, times), ElementsAre("2026-03-02 08:00:00|2026-03-02 08:00:03"));
    EXPECT_TRUE(Run(caixa, R"({"cmd":"fecha_ccd_gerencial","em":"2026-03-02 08:01:00",)"
                           R"("fim":"2026-03-02 08:01:04"})")
                    .Executed());
    EXPECT_THAT(Rows(caixa, times), ElementsAre("2026-03-02 08:00:00|2026-03-02 08:01:04"));
    EXPECT_TRUE(Run(caixa, R"({"cmd":"reducao_z","fim":"2026-03-02 08:01:30"})").Executed());
    EXPECT_THAT(Rows(caixa, times + " WHERE id_tipo_documento = 'RZ'"),
                ElementsAre("2026-03-02 08:01:05|2026-03-02 08:01:30"));
    EXPECT_THAT(Rows(caixa, "SELECT data_hora_emissao FROM reducao_z"),
                ElementsAre("2026-03-02 08:01:05"));
}

// The columns of the two are crossed: the issuing time stands under tempo_operacional.
TEST_F(CaixaTest, TheTimesOfTheDayFollowTheEndsOfItsCommands)
{
    Caixa caixa(":memory:");
    for (
        const char* line :
        {R"({"cmd":"insere_aliquota","em":"2026-03-02 08:00:00","tributacao":"T","indice":1,"percentual":"18.00"})",
         R"({"cmd":"insere_meio_pagamento","indice":1,"descricao":"DINHEIRO"})",
         R"({"cmd":"abre_cupom","em":"2026-03-02 09:00:00","fim":"2026-03-02 09:00:02"})",
         R"({"cmd":"vende_item","codigo":"1","descricao":"ARROZ","quantidade":"1","valor_unitario":"10.00","tributacao":"T","indice":1})",
         R"({"cmd":"efetua_pagamento","meio":1,"valor":"10.00"})",
         R"({"cmd":"fecha_cupom","em":"2026-03-02 09:01:00","fim":"2026-03-02 09:01:07"})",
         R"({"cmd":"abre_cupom","em":"2026-03-02 09:02:00"})",
         R"({"cmd":"cancela_cupom_em_emissao","fim":"2026-03-02 09:02:30"})",
         R"({"cmd":"reducao_z","em":"2026-03-02 10:00:00","fim":"2026-03-02 10:00:40"})"}) {
        ASSERT_EQ(Run(caixa, line).fate, Fate::KEPT) << line;
    }
    EXPECT_EQ(caixa.GetRegistro().GetMemoria().cupom.fechamento.s % 3600, 150U);
    EXPECT_THAT(Rows(caixa, "SELECT tempo_operacional, tempo_emitindo_doc FROM reducao_z"),
                ElementsAre("97|3600"));
}

TEST_F(CaixaTest, ARefusedCommandSaysWhyAndChangesNothing)
{
    Caixa caixa(":memory:");
    const Answer answer = Run(caixa, R"({"cmd":"fecha_cupom","em":"2026-03-02 08:00:00"})");
    EXPECT_EQ(answer.fate, Fate::REFUSED);
    EXPECT_FALSE(answer.Executed());
    EXPECT_EQ(answer.reason, "no Cupom Fiscal is open");
    EXPECT_EQ(caixa.Database().Counts().statementsExecuted, 0);
}

TEST_F(CaixaTest, RejectedStatementsAreCountedAndTheirCommandIsKept)
{
    Caixa caixa(":memory:");
    const Answer answer = Run(caixa, OPENS_WITH_APOSTROPHE);
    EXPECT_EQ(answer.fate, Fate::KEPT);
    EXPECT_EQ(answer.rejected, 1);
    EXPECT_EQ(Run(caixa, R"({"cmd":"cancela_cupom_em_emissao"})").rejected, 0);
}

TEST_F(CaixaTest, ALostCommandSaysWhy)
{
    bancada::LogDatabase::Options options;
    options.busyTimeoutMs = 0;
    Caixa caixa(folder.File("db"), options);
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(folder.File("db").c_str(), &other), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    Answer answer = Run(caixa, READS);
    sqlite3_close(other);
    EXPECT_EQ(answer.fate, Fate::LOST);
    EXPECT_TRUE(answer.Executed());
    EXPECT_EQ(answer.reason, "database is locked");
    answer = Run(caixa, READS);
    EXPECT_EQ(answer.fate, Fate::KEPT);
    EXPECT_EQ(answer.reason, "");
    EXPECT_THAT(Rows(caixa, "SELECT cont_coo FROM outros_documentos"), ElementsAre("2"));
}

TEST_F(CaixaTest, TheDirectiveSetsTheBenchAndTakesNoTime)
{
    Caixa caixa(":memory:");
    const Answer answer = Run(caixa, R"({"cmd":"configura","aplicativo":"PDV 7"})");
    EXPECT_EQ(answer.fate, Fate::CONFIGURED);
    EXPECT_FALSE(answer.Executed());
    EXPECT_EQ(caixa.GetRegistro().GetMemoria().aplicativo, "PDV 7");
    EXPECT_EQ(clock.Last().s, matlong[0]);
}

TEST_F(CaixaTest, TheClockDoesNotGoBackByItself)
{
    Caixa caixa(":memory:");
    EXPECT_EQ(Run(caixa, R"({"cmd":"leitura_x","em":"2026-03-02 08:00:00",)"
                         R"("fim":"2026-03-02 08:00:09"})")
                  .fate,
              Fate::KEPT);
    const Answer back = Run(caixa, R"({"cmd":"leitura_x","em":"2026-03-02 08:00:08"})");
    EXPECT_EQ(back.fate, Fate::REFUSED);
    EXPECT_EQ(back.reason, "the clock stands at 2026-03-02 08:00:09, when the last command ended, "
                           "and does not go back by itself");
    EXPECT_EQ(Run(caixa, R"({"cmd":"leitura_x","em":"2026-03-02 08:00:09"})").fate, Fate::KEPT);
    // What was refused does not move the clock.
    EXPECT_EQ(Run(caixa, R"({"cmd":"fecha_cupom","em":"2026-03-02 12:00:00"})").fate,
              Fate::REFUSED);
    EXPECT_EQ(Run(caixa, R"({"cmd":"leitura_x","em":"2026-03-02 08:00:10"})").fate, Fate::KEPT);
    EXPECT_EQ(caixa.GetRegistro().GetMemoria().relogio.s % 60, 10U);
    EXPECT_THAT(Rows(caixa, "SELECT cont_coo FROM outros_documentos"), ElementsAre("1", "2", "3"));
}

TEST_F(CaixaTest, TheClockIsSetInAnIntervention)
{
    Caixa caixa(":memory:");
    EXPECT_EQ(Run(caixa, READS).fate, Fate::KEPT);
    const char* sets = R"({"cmd":"acerta_relogio","em":"2026-03-02 07:00:00"})";
    EXPECT_EQ(Run(caixa, sets).fate, Fate::REFUSED);
    EXPECT_EQ(Run(caixa, R"({"cmd":"entrada_mil_interno"})").fate, Fate::KEPT);
    EXPECT_EQ(Run(caixa, sets).fate, Fate::CONFIGURED);
    EXPECT_EQ(Run(caixa, R"({"cmd":"saida_mil_interno"})").fate, Fate::KEPT);
    EXPECT_THAT(Rows(caixa, "SELECT data_hora_inicio_emissao FROM outros_documentos"),
                ElementsAre("2026-03-02 08:00:00", "2026-03-02 08:00:01", "2026-03-02 07:00:01"));
}

TEST_F(CaixaTest, TheClockIsSetToAnInstantAndTakesNoTime)
{
    Caixa caixa(":memory:");
    EXPECT_THROW(static_cast<void>(Run(caixa, R"({"cmd":"acerta_relogio"})")), TapeError);
    EXPECT_THROW(static_cast<void>(Run(caixa, R"({"cmd":"acerta_relogio",)"
                                              R"("em":"2026-03-02 07:00:00",)"
                                              R"("fim":"2026-03-02 07:00:00"})")),
                 TapeError);
    EXPECT_THROW(static_cast<void>(Run(caixa, R"({"cmd":"acerta_relogio","x":1,)"
                                              R"("em":"2026-03-02 07:00:00"})")),
                 TapeError);
}

TEST_F(CaixaTest, WhatARefusalLeftOpenIsCancelledAndTheTapeGoesOn)
{
    Caixa caixa(":memory:");
    const char* clears = R"({"cmd":"cancela_aberto"})";
    EXPECT_EQ(Run(caixa, clears).fate, Fate::CONFIGURED); // nothing is open: not even a time is due
    EXPECT_EQ(Run(caixa, OPENS).fate, Fate::KEPT);
    EXPECT_EQ(Run(caixa, R"({"cmd":"fecha_cupom"})").fate, Fate::REFUSED);
    EXPECT_EQ(Run(caixa, R"({"cmd":"reducao_z"})").fate, Fate::REFUSED);
    EXPECT_EQ(Run(caixa, clears).fate, Fate::KEPT);
    EXPECT_THAT(Rows(caixa, "SELECT id_cancelado FROM cupom_fiscal"), ElementsAre("S"));
    EXPECT_EQ(Run(caixa, R"({"cmd":"abre_gerencial","em":"2026-03-02 09:00:00"})").fate,
              Fate::KEPT);
    EXPECT_EQ(Run(caixa, R"({"cmd":"cancela_aberto","fim":"2026-03-02 09:00:20"})").fate,
              Fate::KEPT);
    EXPECT_EQ(Run(caixa, clears).fate, Fate::CONFIGURED);
    EXPECT_EQ(Run(caixa, R"({"cmd":"reducao_z"})").fate, Fate::KEPT);
    EXPECT_THAT(Rows(caixa, "SELECT data_hora_inicio_emissao, data_hora_fim_emissao "
                            "FROM outros_documentos"),
                ElementsAre("2026-03-02 09:00:00|2026-03-02 09:00:20",
                            "2026-03-02 09:00:21|2026-03-02 09:00:21"));
}

TEST_F(CaixaTest, TheInstantOfALineThatFindsNothingOpenCounts)
{
    Caixa caixa(":memory:");
    EXPECT_EQ(Run(caixa, R"({"cmd":"cancela_aberto","em":"2026-03-02 08:00:00"})").fate,
              Fate::CONFIGURED);
    EXPECT_EQ(Run(caixa, R"({"cmd":"leitura_x"})").fate, Fate::KEPT);
    EXPECT_THAT(Rows(caixa, "SELECT data_hora_inicio_emissao FROM outros_documentos"),
                ElementsAre("2026-03-02 08:00:01"));
    EXPECT_THROW(static_cast<void>(Run(caixa, R"({"cmd":"cancela_aberto","x":1})")), TapeError);
}

TEST_F(CaixaTest, ALineThatIsNoCommandChangesNothing)
{
    Caixa caixa(":memory:");
    EXPECT_THROW(static_cast<void>(Run(caixa, R"({"cmd":"abre","em":"2026-03-02 08:00:00"})")),
                 TapeError);
    EXPECT_THROW(
        static_cast<void>(Run(caixa, R"({"cmd":"abre_cupom","em":"2026-03-02 08:00:00","x":1})")),
        TapeError);
    EXPECT_THROW(static_cast<void>(Run(caixa, R"({"cmd":"abre_cupom"})")), TapeError); // no time
    EXPECT_EQ(caixa.GetRegistro().GetMemoria().contadores[COUNTER_COO], 0);
    EXPECT_THAT(Rows(caixa, "SELECT cont_coo FROM cupom_fiscal"), IsEmpty());
}

TEST_F(CaixaTest, WhatFailsBeforeTheCommitKeepsNoRow)
{
    {
        Caixa caixa(folder.File("db"));
        caixa.SetBeforeCommit([] { throw std::runtime_error("no memory could be written"); });
        EXPECT_THROW(static_cast<void>(Run(caixa, READS)), std::runtime_error);
    }
    EXPECT_THAT(test_support::Rows(folder.File("db"), "SELECT * FROM outros_documentos"),
                IsEmpty());
}

TEST_F(CaixaTest, TheRegisterBeginsWithTheStateThatItIsGiven)
{
    Memoria memoria;
    memoria.contadores[COUNTER_COO] = 41;
    Caixa caixa(":memory:", {}, memoria);
    EXPECT_EQ(Run(caixa, READS).fate, Fate::KEPT);
    EXPECT_THAT(Rows(caixa, "SELECT cont_coo FROM outros_documentos"), ElementsAre("42"));
}

TEST_F(CaixaTest, EachOfSeveralHasItsOwnLog)
{
    Caixa one(":memory:");
    Caixa other(":memory:");
    one.OpenLog(folder.File("one.log"));
    other.OpenLog(folder.File("other.log"));
    EXPECT_EQ(Run(one, OPENS_WITH_APOSTROPHE).rejected, 1);
    EXPECT_EQ(Run(other, OPENS).rejected, 0);
    EXPECT_THAT(folder.Read("one.log"), HasSubstr("2026-03-02 08:00:00\tDBLoggerExecuteSQL: "));
    EXPECT_EQ(folder.Read("other.log"), "");
}

// A subtotal's discount, which the closing apportions to the items where the register says so.
TEST_F(CaixaTest, EachOfSeveralHasItsOwnSetting)
{
    Caixa with(":memory:");
    Caixa without(":memory:");
    with.GetRegistro().SetRatearSubtotal(true);
    for (Caixa* caixa : {&with, &without}) {
        for (
            const char* line :
            {R"({"cmd":"insere_aliquota","em":"2026-03-02 08:00:00","tributacao":"T","indice":1,"percentual":"18.00"})",
             R"({"cmd":"insere_meio_pagamento","indice":1,"descricao":"DINHEIRO"})",
             R"({"cmd":"abre_cupom"})",
             R"({"cmd":"vende_item","codigo":"1","descricao":"ARROZ","quantidade":"1","valor_unitario":"10.00","tributacao":"T","indice":1})",
             R"({"cmd":"efetua_desc_acres_subtotal","operacao":"desconto","tipo":"valor","valor":"1.00"})",
             R"({"cmd":"efetua_pagamento","meio":1,"valor":"9.00"})", R"({"cmd":"fecha_cupom"})"}) {
            ASSERT_EQ(Run(*caixa, line).fate, Fate::KEPT) << line;
        }
    }
    const std::string updates = "item_cupom_fiscal";
    EXPECT_EQ(with.Database().Counts().rows.at(updates).updated, 1);
    EXPECT_EQ(without.Database().Counts().rows.at(updates).updated, 0);
}

} // namespace

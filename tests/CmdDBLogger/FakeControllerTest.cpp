// The scripted data model itself: what it lets pass and what it fails.
#include "tests/CmdDBLogger/FakeController.h"

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(FakeController, QuestionThatNobodyHasScriptedFails)
{
    FakeController fiscal;
    char text[10] = "before";
    EXPECT_NONFATAL_FAILURE(EXPECT_EQ(fiscal.Contador_Get(COUNTER_GRG), 0),
                            "nobody has scripted Contador_Get(COUNTER_GRG)");
    EXPECT_NONFATAL_FAILURE(EXPECT_TRUE(fiscal.Totalizador_GetTot(2, 0, 5).nr.IsZero()),
                            "nobody has scripted Totalizador_GetTot(2,0,5)");
    EXPECT_NONFATAL_FAILURE(EXPECT_STREQ(fiscal.CFe_GetChaveDeBusca(text, 10), ""),
                            "nobody has scripted CFe_GetChaveDeBusca()");
    EXPECT_NONFATAL_FAILURE(
        EXPECT_EQ(fiscal.Jornada_GetTempoOperacional(RtcAbsoluteTime(59)).s, 0u),
        "nobody has scripted Jornada_GetTempoOperacional(1970-01-01 00:00:59)");
}

TEST(FakeController, AnswerThatNobodyHasAskedForIsNamed)
{
    FakeController fiscal;
    fiscal.SetCounter(COUNTER_CCF, 45);
    fiscal.money["Cupom_GetTotal()"] = Financial();
    fiscal.texts["CFe_GetChaveDeBusca()"] = "k";
    fiscal.seconds["Jornada_GetDataMovimento()"] = 1;
    EXPECT_THAT(fiscal.NotAsked(),
                ElementsAre("Contador_Get(COUNTER_CCF)", "Cupom_GetTotal()",
                            "CFe_GetChaveDeBusca()", "Jornada_GetDataMovimento()"));

    EXPECT_EQ(fiscal.Contador_Get(COUNTER_CCF), 45);
    fiscal.Cupom_GetTotal();
    EXPECT_THAT(fiscal.NotAsked(),
                ElementsAre("CFe_GetChaveDeBusca()", "Jornada_GetDataMovimento()"));
}

TEST(FakeController, AnswerThatIsSetAgainMustBeAskedForAgain)
{
    FakeController fiscal;
    fiscal.SetCounter(COUNTER_COO, 1);
    EXPECT_EQ(fiscal.Contador_Get(COUNTER_COO), 1);
    fiscal.SetCounter(COUNTER_COO, 2);
    EXPECT_THAT(fiscal.NotAsked(), ElementsAre("Contador_Get(COUNTER_COO)"));
}

TEST(FakeController, StateNeedNotBeAskedForAndIsAnswered)
{
    FakeController fiscal;
    fiscal.SetCounter(COUNTER_COO, 7);
    fiscal.KeepAsState();
    EXPECT_THAT(fiscal.NotAsked(), IsEmpty());
    EXPECT_EQ(fiscal.Contador_Get(COUNTER_COO), 7);
}

TEST(FakeController, TranscriptNamesCountersAndInstants)
{
    FakeController fiscal;
    fiscal.SetCounter(COUNTER_COO_RESTANTES_REF, 3);
    fiscal.seconds["Jornada_GetTempoOperacional(2026-03-02 08:15:30)"] = 9;
    fiscal.Contador_Get(COUNTER_COO_RESTANTES_REF);
    EXPECT_EQ(fiscal.Jornada_GetTempoOperacional(RtcAbsoluteTime(1772439330)).s, 9u);
    EXPECT_THAT(fiscal.calls, ElementsAre("Contador_Get(COUNTER_COO_RESTANTES_REF)",
                                          "Jornada_GetTempoOperacional(2026-03-02 08:15:30)"));
}

} // namespace

// The pipeline of a command.
#include "bancada/fita/FieldVisitor.h"
#include "tests/bancada/ComandosTest.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace
{

using ::testing::ElementsAre;

// Writes down what is asked of it, and refuses where it is told to.
class Espiao final : public CmdLeituraMF, public bancada::ComandoBancada
{
  public:
    Command& GetCommand() override { return *this; }
    void Fields(bancada::FieldVisitor&) override {}

    BOOL InitCheck(CommandDataFisco*) override { return Anota("InitCheck"); }
    BOOL FiscalCheck() override { return Anota("FiscalCheck"); }
    BOOL Fiscal() override { return Anota("Fiscal"); }
    BOOL Print() override { return Anota("Print"); }
    BOOL DBLogger(sqlite3* db) override
    {
        fimNoLogger = m_dtExecEnd;
        emTransacao = sqlite3_get_autocommit(db) == 0;
        return Anota("DBLogger");
    }
    BOOL FiscalPostPrint() override { return Anota("FiscalPostPrint"); }
    BOOL Log() override { return Anota("Log"); }
    BOOL FillReply(BYTE) override { return Anota("FillReply"); }

    std::vector<std::string> passos;
    std::string recusaEm;
    RtcAbsoluteTime fimNoLogger{1};
    bool emTransacao = false;

  private:
    BOOL Anota(const char* passo)
    {
        passos.emplace_back(passo);
        if (passo != recusaEm) {
            return TRUE;
        }
        refusal = std::string("refused in ") + passo;
        return FALSE;
    }
};

using ExecutorTest = ComandosTest;

TEST_F(ExecutorTest, RunsTheStepsInTheOrderOfTheirSlots)
{
    Espiao espiao;
    const bancada::Outcome resultado = executor.Execute(espiao, RtcAbsoluteTime(OITO_HORAS));
    EXPECT_TRUE(resultado.executed);
    EXPECT_TRUE(resultado.kept);
    EXPECT_FALSE(resultado.refusal);
    EXPECT_THAT(espiao.passos, ElementsAre("InitCheck", "FiscalCheck", "Fiscal", "Print",
                                           "DBLogger", "FiscalPostPrint", "Log", "FillReply"));
}

TEST_F(ExecutorTest, LoggerRunsInsideATransactionWithItsEndStillUnset)
{
    Espiao espiao;
    executor.Execute(espiao, RtcAbsoluteTime(OITO_HORAS));
    EXPECT_TRUE(espiao.emTransacao);
    EXPECT_TRUE(sqlite3_get_autocommit(banco.Handle()) != 0);
    EXPECT_EQ(espiao.fimNoLogger.s, matlong[0]);
    EXPECT_EQ(espiao.m_dtExecStart.s, OITO_HORAS);
    EXPECT_EQ(espiao.m_dtExecEnd.s, OITO_HORAS + 1);
    EXPECT_EQ(espiao.FDController, &registro);
    EXPECT_EQ(espiao.m_eStatusCmd, CMD_END_EXEC_OK);
}

TEST_F(ExecutorTest, RefusalEndsThePipelineBeforeAnyEffect)
{
    for (const char* passo : {"InitCheck", "FiscalCheck"}) {
        Espiao espiao;
        espiao.recusaEm = passo;
        const bancada::Outcome resultado = executor.Execute(espiao, RtcAbsoluteTime(OITO_HORAS));
        EXPECT_FALSE(resultado.executed);
        EXPECT_EQ(resultado.refusal, std::string("refused in ") + passo);
        EXPECT_EQ(espiao.passos.back(), passo);
        EXPECT_EQ(espiao.m_eStatusCmd, CMD_NAK);
    }
}

TEST_F(ExecutorTest, InterventionsAreRaisedByTheFirmwareTheRestComesFromTheHost)
{
    std::vector<std::string> internos;
    for (const bancada::CatalogueEntry& item : bancada::Catalogue()) {
        if (item.make(registro)->Origin() == CMD_INTERNO) {
            internos.emplace_back(item.name);
        }
    }
    EXPECT_THAT(internos, ElementsAre("entrada_mil_interno", "saida_mil_interno",
                                      "saida_mit_interno", "entrada_mit_interno"));
}

TEST_F(ExecutorTest, StatementsThatALoggerLeavesOpenAreReleased)
{
    // The totalizer's logger never finalizes its counting query.
    const auto insere = Le(R"({"cmd":"insere_reg_ope_nf","indice":3,"descricao":"RECARGA"})");
    Command& comando = insere->GetCommand();
    comando.FDController = &registro;
    const auto abertos = [&] {
        int quantos = 0;
        for (sqlite3_stmt* s = sqlite3_next_stmt(banco.Handle(), nullptr); s != nullptr;
             s = sqlite3_next_stmt(banco.Handle(), s)) {
            ++quantos;
        }
        return quantos;
    };
    EXPECT_EQ(abertos(), 0);
    banco.BeginCommand();
    const int doBanco = abertos(); // the caller's own
    comando.DBLogger(banco.Handle());
    EXPECT_EQ(abertos(), doBanco + 1);
    EXPECT_TRUE(banco.CommitCommand());
    EXPECT_EQ(abertos(), 0);

    Roda(R"({"cmd":"insere_reg_ope_nf","indice":4,"descricao":"LUZ"})");
    EXPECT_EQ(abertos(), 0);
}

} // namespace

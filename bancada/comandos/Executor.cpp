#include "bancada/comandos/Executor.h"

#include "bancada/Messages.h"
#include "bancada/banco/LogDatabase.h"

namespace bancada
{
namespace
{

// How long the bench says that a command took that does not say when it ended. The clock of a tape
// counts whole seconds.
constexpr UINT32 DURATION_S = 1;

// The reply's first byte when the command was executed.
constexpr BYTE REPLY_OK = 0;

} // namespace

Executor::Executor(Registro& registro, LogDatabase& database)
    : m_registro(registro), m_database(database)
{
}

Outcome Executor::Execute(ComandoBancada& comando, RtcAbsoluteTime em, RtcAbsoluteTime fim)
{
    Command& command = comando.GetCommand();
    command.FDController = &m_registro;
    command.m_State = CMD_IN_EXECUTION;
    command.m_eStatusCmd = CMD_NEW;
    command.m_bValidCmd = TRUE;
    command.m_iCmdSeq = ++m_sequence;
    command.m_eOrigem = comando.Origin();
    command.m_eInstanceType = IT_EXEC_NORMAL;
    command.m_dtExecStart = em;
    command.m_dtExecEnd = fim;
    command.m_bDoFiscalCheck = command.m_bDoFiscal = command.m_bDoPrint = TRUE;
    command.m_bDoFiscalPostPrint = command.m_bDoLog = command.m_bDoFillReply = TRUE;

    Outcome outcome;
    comando.refusal = m_registro.CheckRelogio(em);
    if (comando.refusal || !command.InitCheck(nullptr) || !command.FiscalCheck()) {
        command.m_eStatusCmd = CMD_NAK;
        command.m_State = CMD_TOREPLY;
        outcome.refusal = comando.refusal.value_or(Tr("refused"));
        return outcome;
    }
    command.m_eStatusCmd = CMD_INIT_OK;
    command.Fiscal();
    m_registro.AdvanceRelogio(fim.s == matlong[0] ? em : fim);
    // The bench has no paper, so its commands keep the base's Print, which does nothing: what a
    // document looks like is read from the database afterwards.
    command.Print();
    command.m_eStatusCmd = CMD_PRINT_OK;

    m_database.BeginCommand();
    command.DBLogger(m_database.Handle());
    // Only then is the register as the command leaves it, and can be kept together with the rows.
    command.FiscalPostPrint();
    command.Log();
    command.m_eStatusCmd = CMD_LOG_OK;
    if (m_beforeCommit) {
        m_beforeCommit();
    }
    outcome.kept = m_database.CommitCommand();

    command.FillReply(REPLY_OK);
    if (fim.s == matlong[0]) {
        command.m_dtExecEnd = RtcAbsoluteTime(em.s + DURATION_S);
    }
    command.m_eStatusCmd = CMD_END_EXEC_OK;
    command.m_State = CMD_TOREPLY;
    outcome.executed = true;
    return outcome;
}

} // namespace bancada

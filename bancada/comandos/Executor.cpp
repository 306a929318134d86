#include "bancada/comandos/Executor.h"

#include "bancada/banco/LogDatabase.h"

namespace bancada
{
namespace
{

// How long the bench says that a command took. The clock of a tape counts whole seconds.
constexpr UINT32 DURACAO_S = 1;

// The reply's first byte when the command was executed.
constexpr BYTE RESPOSTA_OK = 0;

} // namespace

Executor::Executor(Registro& registro, LogDatabase& banco) : m_registro(registro), m_banco(banco) {}

Resultado Executor::Executa(ComandoBancada& comando, RtcAbsoluteTime em)
{
    Command& comum = comando.GetCommand();
    comum.FDController = &m_registro;
    comum.m_State = CMD_IN_EXECUTION;
    comum.m_eStatusCmd = CMD_NEW;
    comum.m_bValidCmd = TRUE;
    comum.m_iCmdSeq = ++m_sequencia;
    comum.m_eOrigem = comando.Origem();
    comum.m_eInstanceType = IT_EXEC_NORMAL;
    comum.m_dtExecStart = em;
    comum.m_dtExecEnd = RtcAbsoluteTime(matlong[0]);
    comum.m_bDoFiscalCheck = comum.m_bDoFiscal = comum.m_bDoPrint = TRUE;
    comum.m_bDoFiscalPostPrint = comum.m_bDoLog = comum.m_bDoFillReply = TRUE;

    Resultado resultado;
    if (!comum.InitCheck(nullptr) || !comum.FiscalCheck()) {
        comum.m_eStatusCmd = CMD_NAK;
        comum.m_State = CMD_TOREPLY;
        resultado.recusa = comando.recusa.value_or("refused");
        return resultado;
    }
    comum.m_eStatusCmd = CMD_INIT_OK;
    comum.Fiscal();
    // The bench has no paper, so its commands keep the base's Print, which does nothing: what a
    // document looks like is read from the database afterwards.
    comum.Print();
    comum.m_eStatusCmd = CMD_PRINT_OK;

    m_banco.BeginCommand();
    comum.DBLogger(m_banco.Handle());
    // Only then is the register as the command leaves it, and can be kept together with the rows.
    comum.FiscalPostPrint();
    comum.Log();
    comum.m_eStatusCmd = CMD_LOG_OK;
    if (m_antesDeConfirmar) {
        m_antesDeConfirmar();
    }
    resultado.registrado = m_banco.CommitCommand();

    comum.FillReply(RESPOSTA_OK);
    comum.m_dtExecEnd = RtcAbsoluteTime(em.s + DURACAO_S);
    comum.m_eStatusCmd = CMD_END_EXEC_OK;
    comum.m_State = CMD_TOREPLY;
    resultado.executado = true;
    return resultado;
}

} // namespace bancada

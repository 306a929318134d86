#include "Interpreter.h"

#include <cstddef>

void Command::Free() {}

void Command::Destroy() {}

BOOL Command::InitCheck(CommandDataFisco*)
{
    return TRUE;
}

BOOL Command::FiscalCheck()
{
    return TRUE;
}

BOOL Command::Fiscal()
{
    return TRUE;
}

BOOL Command::Print()
{
    return TRUE;
}

BOOL Command::DBLogger(sqlite3*)
{
    return TRUE;
}

BOOL Command::FiscalPostPrint()
{
    return TRUE;
}

BOOL Command::Log()
{
    return TRUE;
}

BOOL Command::FillReply(BYTE)
{
    return TRUE;
}

#if UINTPTR_MAX == UINT32_MAX
// The firmware's own modules and its tools read these records by offset on the 32-bit target.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
static_assert(offsetof(Command, m_CmdManager) == 4);
static_assert(offsetof(Command, FDController) == 8);
static_assert(offsetof(Command, m_PrinterDevice) == 12);
static_assert(offsetof(Command, m_iCmdVersion) == 16);
static_assert(offsetof(Command, m_CmdRAW) == 20);
static_assert(offsetof(Command, m_bSignedDoc) == 24);
static_assert(offsetof(Command, m_bSizedDoc) == 28);
static_assert(offsetof(Command, m_sAssinaturaDigitalDocumento) == 32);
static_assert(offsetof(Command, m_State) == 64);
static_assert(offsetof(Command, m_bValidCmd) == 68);
static_assert(offsetof(Command, m_eError) == 72);
static_assert(offsetof(Command, m_eErrorDetailed) == 76);
static_assert(offsetof(Command, m_eStatusCmd) == 80);
static_assert(offsetof(Command, m_iMode) == 84);
static_assert(offsetof(Command, m_iQtParameters) == 88);
static_assert(offsetof(Command, m_eCmdType) == 92);
static_assert(offsetof(Command, m_iCmdSeq) == 96);
static_assert(offsetof(Command, m_iCondicoes) == 100);
static_assert(offsetof(Command, m_iMFDFreeSpace) == 104);
static_assert(offsetof(Command, m_eOrigem) == 108);
static_assert(offsetof(Command, m_eInstanceType) == 112);
static_assert(offsetof(Command, m_dtExecStart) == 116);
static_assert(offsetof(Command, m_dtExecEnd) == 120);
static_assert(offsetof(Command, m_bDoFiscalCheck) == 124);
static_assert(offsetof(Command, m_bDoFiscal) == 128);
static_assert(offsetof(Command, m_bDoPrint) == 132);
static_assert(offsetof(Command, m_bDoFiscalPostPrint) == 136);
static_assert(offsetof(Command, m_bDoLog) == 140);
static_assert(offsetof(Command, m_bDoFillReply) == 144);
static_assert(offsetof(Command, m_Next) == 148);
static_assert(sizeof(Command) == 152);
#pragma GCC diagnostic pop
#endif

// The command layer's interface, as far as the command loggers see it.
#pragma once

#include "RtcClasses.h"
#include "libs/FirmwareTypes.h"

#include <cstdint>

class CommandDataFisco;
class CommandManager;
class FiscalDataController;
class PrinterDevice;
struct PRN_BUFFER;
struct sqlite3;

enum ECmdState : std::int32_t {
    CMD_LOST = 0,
    CMD_FREE = 1,
    CMD_EXEC = 2,
    CMD_TOREPLY = 3,
    CMD_INTERNAL_FREE = 4,
    CMD_INTERNAL_EXEC = 5,
    CMD_IN_EXECUTION = 6,
    CMD_PF_RECOVER = 7,
};

enum EStatus : std::int32_t {
    CMD_NEW = 0,
    CMD_NAK = 1,
    CMD_WAK = 2,
    CMD_ACK = 3,
    CMD_INIT_OK = 4,
    CMD_LOG_OK = 5,
    CMD_FILL_REPLY_OK = 6,
    CMD_PRINT_OK = 7,
    CMD_END_EXEC_OK = 8,
    CMD_REPLY_ON_POWERFAIL = 9,
};

// Error results of a command. Their values belong to the command layer; 0 is no error.
enum EErrorType : std::int32_t {
};

enum EOrigemCmd : std::int32_t {
    CMD_INTERNO = 0, // raised by the firmware itself
    CMD_EXTERNO = 1, // received from the host
};

enum EInstanceType : std::int32_t {
    IT_EXEC_NORMAL = 0,
    IT_REIMPRESSAO = 1,
    IT_DLL = 2,
    IT_RECOVER_MFD = 3,
};

// The protocol codes of the commands that have a logger.
enum EEscCmd : std::int32_t {
    CMD_ABRE_CUPOM = 1,
    CMD_VENDE_ITEM = 2,
    CMD_CANCELA_ITEM = 3,
    CMD_EFETUA_PAGAMENTO = 4,
    CMD_FECHA_CUPOM = 5,
    CMD_CANCELA_CUPOM = 7,
    CMD_ABRE_CCD = 8,
    CMD_FECHA_CCD_GERENCIAL = 10,
    CMD_ABRE_GERENCIAL = 12,
    CMD_ABRE_ESTORNO_CCD = 13,
    CMD_ABRE_CUPOM_NF = 16,
    CMD_VENDE_ITEM_NF = 17,
    CMD_FECHA_CUPOM_NF = 18,
    CMD_ESTORNA_PAGAMENTO = 19,
    CMD_LEITURA_X = 20,
    CMD_REDUCAO_Z = 21,
    CMD_LEITURA_MF = 22,
    CMD_SANGRIA = 23,
    CMD_EFETUA_DESC_ACRES_ITEM = 27,
    CMD_CANCELA_DESC_ACRES_ITEM = 28,
    CMD_EFETUA_DESC_ACRES_SUBTOTAL = 29,
    CMD_CANCELA_DESC_ACRES_SUBTOTAL = 30,
    CMD_CANCELA_CUPOM_FISCAL_NF_EM_EMISSAO = 31,
    CMD_INSERE_ALIQUOTA_ICMS_ISS = 81,
    CMD_HABILITA_I_F_N_IS_FS_NS = 82,
    CMD_DESABILITA_I_F_N_IS_FS_NS = 83,
    CMD_INSERE_MEIO_PAGAMENTO = 84,
    CMD_INSERE_OPNF = 85,
    CMD_PROGRAMA_LOJA = 91,
    CMD_PROGRAMA_SEQ_ECF = 92,
    CMD_PROGRAMA_USUARIO = 93,
    CMD_PROGRAMA_CNPJ_IE_IM = 95,
    CMD_PROGRAMA_SIMBOLO_MOEDA = 98,
    CMD_REIMPRESSAO_MFD = 100,
    CMD_VENDE_ITEM_DETALHADO = 157,
    CMD_PROGRAMA_NR_SERIE = 257,
    CMD_ENTRADA_MIL_INTERNO = 259,
    CMD_SAIDA_MIL_INTERNO = 260,
    CMD_SAIDA_MIT_INTERNO = 261,
    CMD_ENTRADA_MIT_INTERNO = 267,
};

// The virtual operations stand from slot 0 on, as required: no virtual destructor can come before
// them. Nothing is destroyed through a pointer to a base class.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// The record of one command. A new one has every member zero; a command class sets m_eCmdType to
// its own code and appends its parsed parameters.
//
// Every pointer is borrowed: the command layer owns what it points to and keeps it alive while a
// logger runs. Objects are used on the command layer's thread alone.
class Command
{
  public:
    Command() = default;

    CommandManager* m_CmdManager = nullptr;
    FiscalDataController* FDController = nullptr;
    PrinterDevice* m_PrinterDevice = nullptr;
    UINT8 m_iCmdVersion = 0;
    PRN_BUFFER* m_CmdRAW = nullptr;
    BOOL m_bSignedDoc = FALSE;
    BOOL m_bSizedDoc = FALSE;
    char m_sAssinaturaDigitalDocumento[32] = {}; // raw bytes, not text
    ECmdState m_State = ECmdState{};
    BOOL m_bValidCmd = FALSE;
    EErrorType m_eError = EErrorType{};
    EErrorType m_eErrorDetailed = EErrorType{};
    EStatus m_eStatusCmd = EStatus{};
    int m_iMode = 0;
    int m_iQtParameters = 0;
    EEscCmd m_eCmdType = EEscCmd{};
    int m_iCmdSeq = 0;
    int m_iCondicoes = 0;
    UINT32 m_iMFDFreeSpace = 0;
    EOrigemCmd m_eOrigem = EOrigemCmd{};
    EInstanceType m_eInstanceType = EInstanceType{};
    RtcAbsoluteTime m_dtExecStart; // when execution started
    RtcAbsoluteTime m_dtExecEnd;   // when it ended; matlong[0] while that is not known
    BOOL m_bDoFiscalCheck = FALSE;
    BOOL m_bDoFiscal = FALSE;
    BOOL m_bDoPrint = FALSE;
    BOOL m_bDoFiscalPostPrint = FALSE;
    BOOL m_bDoLog = FALSE;
    BOOL m_bDoFillReply = FALSE;
    Command* m_Next = nullptr;

    // The steps of a command's execution, in the order of their slots. Here they do nothing and
    // answer TRUE; the command classes override DBLogger, the command layer the others.
    virtual void Free();
    virtual void Destroy();
    virtual BOOL InitCheck(CommandDataFisco* dados);
    virtual BOOL FiscalCheck();
    virtual BOOL Fiscal();
    virtual BOOL Print();

    // Mirrors the executed command into the logging database `db`, which stays the caller's: it is
    // neither opened, closed nor given a transaction here. REQUIRES: FDController and `db` are set,
    // every text parameter is NUL-terminated, and the command's fiscal work is done. Never throws
    // and never fails the command; a statement that the engine rejects is written to the firmware
    // log and its row is missing.
    //
    // Each class of FiscalCommands.h says which tables it writes, on which of its own paths it
    // answers FALSE, and what it changes in the command. Beyond that it answers what its last
    // execution or document did, and stops with FALSE where an execution before that answered
    // FALSE; those of this library answer TRUE always. Nothing else in the command changes.
    virtual BOOL DBLogger(sqlite3* db);

    virtual BOOL FiscalPostPrint();
    virtual BOOL Log();
    virtual BOOL FillReply(BYTE resposta);

    // Executes the one complete statement `sql`. If the engine rejects it, two entries go to the
    // firmware log: a message with the command's code and the engine's error text, then the
    // statement; if memory for the message is short, none. Answers TRUE on every path.
    BOOL DBLoggerExecuteSQL(sqlite3* db, const char* sql);

    // Inserts the outros_documentos row of the document just issued or opened, with the current
    // counters and the document type `tipoDoc` (two letters, read during the call alone). An
    // m_dtExecEnd that is not set is first set to m_dtExecStart, and stays so. Answers TRUE.
    BOOL OutrosDocumentosDBLogger(sqlite3* db, const char* tipoDoc);

    // Writes m_dtExecEnd (after the same rule) as the end of every outros_documentos row that
    // carries the current document number. Answers TRUE.
    BOOL OutrosDocumentosDataFinalUpdate(sqlite3* db);

  protected:
    explicit Command(EEscCmd tipo) : m_eCmdType(tipo) {}
};

#pragma GCC diagnostic pop

// The command classes that have a logger, each with the parameters its logger reads.
//
// Texts are NUL-terminated within their arrays; an empty text is a parameter that was not sent. The
// arrays' lengths are the parser's limits for the parameter, the terminator included.
//
// Items, payment means, rates and totalizers are numbered from 1 here, as in the tables; the fiscal
// data model counts their positions from 0.
//
// Each class says what its DBLogger writes. What Command::DBLogger says holds for all of them; a
// logger of which nothing more is said answers TRUE and leaves the command as it is. "A document"
// is a row of outros_documentos; inserting it, or updating its end, first sets an m_dtExecEnd that
// is not known yet to m_dtExecStart.
#pragma once

#include "Interpreter.h"
#include "libs/BigInt.h"
#include "libs/Financial.h"
#include "libs/FirmwareTypes.h"

#include <cstdint>

enum EOperacao : std::int32_t {
    DESCONTO = 0,
    ACRESCIMO = 1,
};

enum ETipoValor : std::int32_t {
    VALOR = 0,
    PERCENTUAL = 1,
};

enum ETipoOPNF : std::int32_t {
    FUNDO_TROCO = 0,
    SANGRIA = 1,
};

// Whether a payment means may be tied to a credit/debit voucher.
enum EVinculacaoCCD : std::int32_t {
    COM_CCD = 0,
    SEM_CCD = 1,
};

// Where a reading goes.
enum EMidia : std::int32_t {
    IMPRESSAO = 1,
    ARQUIVO = 2,
    ARQUIVO_DLL = 3,
};

// Characters of a serial number.
constexpr int SIZE_NUM_SERIE = 20;

// See Command: the required slots leave no room for a virtual destructor.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// --- Fiscal receipts -----------------------------------------------------------------------------

// Opens a fiscal receipt: inserts its cupom_fiscal row.
class CmdAbreCupom : public Command
{
  public:
    CmdAbreCupom() : Command(CMD_ABRE_CUPOM) {}

    char m_sCPF_CNPJ[15] = {};           // consumer's CPF or CNPJ
    char m_sNomeConsumidor[31] = {};     // consumer's name
    char m_sEnderecoConsumidor[81] = {}; // consumer's address

    BOOL DBLogger(sqlite3* db) override;
};

// Sells an item: inserts the item_cupom_fiscal row of the receipt's last item. In m_sDescricao
// every apostrophe becomes a backquote, and stays so.
class CmdVendeItem : public Command
{
  public:
    CmdVendeItem() : Command(CMD_VENDE_ITEM) {}

    int m_iReservado = 0;           // not read by the logger
    char m_sCodigoItem[15] = {};    // item code
    char m_sDescricao[235] = {};    // description; its apostrophes become backquotes
    char m_sTributacao[4] = {};     // tax code: T, S, or F, I, N, FS, IS, NS
    int m_iIndiceTributacao = 0;    // number of the rate or totalizer, from 1
    char m_sUnidadeMedida[11] = {}; // unit of measure
    int m_iCasasDecimaisQtde = 0;   // decimals of the quantity
    int m_iCasasDecimaisValor = 0;  // decimals of the unit price
    char m_cArredTrunc = '\0';      // how the total is made cents: 'A' rounded, 'T' truncated

    BOOL DBLogger(sqlite3* db) override;
};

// Sells an item by the detailed command: inserts the item_cupom_fiscal row of the receipt's last
// item.
class CmdVendeItemDetalhado : public Command
{
  public:
    CmdVendeItemDetalhado() : Command(CMD_VENDE_ITEM_DETALHADO) {}

    char m_sCodigoItem[15] = {};    // item code
    char m_sDescricao[235] = {};    // item description
    char m_sTributacao[4] = {};     // tax code: T, S, or F, I, N, FS, IS, NS
    int m_iIndiceTributacao = 0;    // number of the rate or totalizer, from 1
    char m_sUnidadeMedida[11] = {}; // unit of measure
    int m_iCasasDecimaisQtde = 0;   // decimals of the quantity
    int m_iCasasDecimaisValor = 0;  // decimals of the unit price
    char m_cArredTrunc = '\0';      // how the total is made cents: 'A' rounded, 'T' truncated

    BOOL DBLogger(sqlite3* db) override;
};

// Applies a discount or surcharge to an item of the open receipt: updates the item's row twice, its
// adjustment and its total, in item_cupom_fiscal or item_cupom_nf. Answers FALSE, and writes
// nothing, where the receipt is of neither type.
class CmdEfetuaDescAcresItem : public Command
{
  public:
    CmdEfetuaDescAcresItem() : Command(CMD_EFETUA_DESC_ACRES_ITEM) {}

    EOperacao m_eOperacao = EOperacao{};
    ETipoValor m_eTipoValor = ETipoValor{};
    BigInt m_Valor;        // commanded value; a percentage in hundredths of a percent
    int m_iNumeroItem = 0; // item number from 1; 0 is the last item

    BOOL DBLogger(sqlite3* db) override;
};

// Cancels the discount or surcharge of an item: updates the item's row twice, its adjustment and
// its total, in item_cupom_fiscal or item_cupom_nf. Answers FALSE, and writes nothing, where the
// receipt is of neither type.
class CmdCancelaDescAcresItem : public Command
{
  public:
    CmdCancelaDescAcresItem() : Command(CMD_CANCELA_DESC_ACRES_ITEM) {}

    EOperacao m_eOperacao = EOperacao{}; // which adjustment to cancel
    int m_iNumeroItem = 0;               // item number from 1

    BOOL DBLogger(sqlite3* db) override;
};

// Applies a discount or surcharge to the subtotal of the open receipt: updates its row in
// cupom_fiscal or cupom_nf. Answers FALSE, and writes nothing, where the receipt is of neither
// type.
class CmdEfetuaDescAcresSubtotal : public Command
{
  public:
    CmdEfetuaDescAcresSubtotal() : Command(CMD_EFETUA_DESC_ACRES_SUBTOTAL) {}

    EOperacao m_eOperacao = EOperacao{};
    ETipoValor m_eTipoValor = ETipoValor{};
    BigInt m_Valor; // commanded value; a percentage in hundredths of a percent

    BOOL DBLogger(sqlite3* db) override;
};

// Cancels the discount or surcharge of the subtotal: updates the receipt's row in cupom_fiscal or
// cupom_nf. Answers FALSE, and writes nothing, where the receipt is of neither type.
class CmdCancelaDescAcresSubtotal : public Command
{
  public:
    CmdCancelaDescAcresSubtotal() : Command(CMD_CANCELA_DESC_ACRES_SUBTOTAL) {}

    EOperacao m_eOperacao = EOperacao{}; // which adjustment to cancel

    BOOL DBLogger(sqlite3* db) override;
};

// Pays the open receipt, wholly or in part: inserts a pagamento_cupom row.
class CmdEfetuaPagamento : public Command
{
  public:
    CmdEfetuaPagamento() : Command(CMD_EFETUA_PAGAMENTO) {}

    int m_iMeioPagamento = 0;       // number of the payment means, from 1; not checked
    Financial m_finValor;           // amount paid
    int m_iNumParcelas = 0;         // number of instalments
    char m_sInfoAdicional[85] = {}; // additional information

    BOOL DBLogger(sqlite3* db) override;
};

// Closes the open fiscal receipt: updates its cupom_fiscal row and, where the firmware's setting
// asks for it and the subtotal carries an adjustment, every item_cupom_fiscal row of the receipt.
// Answers FALSE where the items' shares could not be had.
class CmdFechaCupom : public Command
{
  public:
    CmdFechaCupom() : Command(CMD_FECHA_CUPOM) {}

    BOOL m_bCupomAdicional = FALSE;    // an additional receipt is issued
    int m_iReservado = 0;              // not read by the logger
    char m_sMsgPromocional[1500] = {}; // closing message; may name the consumer

    BOOL DBLogger(sqlite3* db) override;

    // Rewrites the adjustments and the total of every item of the closed receipt with its share of
    // the subtotal's adjustment. Answers TRUE when every item was rewritten, FALSE, with no row
    // touched, when the shares could not be had. Holds a whole receipt record in its frame.
    int CalculaRateioItens(sqlite3* db);
};

// Cancels an item of the open receipt: marks its row in item_cupom_fiscal, or in item_cupom_nf for
// a receipt of any other type.
class CmdCancelaItem : public Command
{
  public:
    CmdCancelaItem() : Command(CMD_CANCELA_ITEM) {}

    int m_iNumeroItem = 0; // item number from 1

    BOOL DBLogger(sqlite3* db) override;
};

// Cancels the receipt, fiscal or not, that is being issued: marks its row in cupom_fiscal or
// cupom_nf. Answers FALSE, and writes nothing, where the receipt is of neither type.
class CmdCancelaCupomFiscalNfEmEmissao : public Command
{
  public:
    CmdCancelaCupomFiscalNfEmEmissao() : Command(CMD_CANCELA_CUPOM_FISCAL_NF_EM_EMISSAO) {}

    BOOL DBLogger(sqlite3* db) override;
};

// Cancels the receipt issued last: marks its row in cupom_fiscal, or in cupom_nf, which is a
// document too ("NC"). Answers FALSE, and writes nothing, where the receipt is of neither type.
class CmdCancelaCupom : public Command
{
  public:
    CmdCancelaCupom() : Command(CMD_CANCELA_CUPOM) {}

    int m_iCOOCancelado = 0; // document number of the cancelled receipt

    BOOL DBLogger(sqlite3* db) override;
};

// --- Non-fiscal receipts -------------------------------------------------------------------------

// Opens a non-fiscal receipt: inserts its cupom_nf row; a document ("CN").
class CmdAbreCNF : public Command
{
  public:
    CmdAbreCNF() : Command(CMD_ABRE_CUPOM_NF) {}

    char m_sCPF_CNPJ[15] = {};       // consumer's CPF or CNPJ
    char m_sNomeConsumidor[31] = {}; // consumer's name

    BOOL DBLogger(sqlite3* db) override;
};

// Registers an item on a non-fiscal totalizer: inserts the item_cupom_nf row of the receipt's last
// item.
class CmdVendeItemNF : public Command
{
  public:
    CmdVendeItemNF() : Command(CMD_VENDE_ITEM_NF) {}

    int m_iIndiceTotalizador = 0; // number of the totalizer, from 1

    BOOL DBLogger(sqlite3* db) override;
};

// Closes the open non-fiscal receipt: updates its cupom_nf row and the end of its document.
class CmdFechaCupomNF : public Command
{
  public:
    CmdFechaCupomNF() : Command(CMD_FECHA_CUPOM_NF) {}

    BOOL DBLogger(sqlite3* db) override;
};

// Moves an amount paid from one payment means to another: updates the pagamento_cupom rows that the
// receipt has of the one and inserts a row for the other.
class CmdEstornaMeioPagamento : public Command
{
  public:
    CmdEstornaMeioPagamento() : Command(CMD_ESTORNA_PAGAMENTO) {}

    int m_iMeioPagamentoOrigem = 0;  // number of the means it is taken from, from 1
    int m_iMeioPagamentoDestino = 0; // number of the means it goes to, from 1
    Financial m_finValor;            // amount moved
    int m_iNumParcelas = 0;          // instalments of the new payment
    char m_sInfoAdicional[85] = {};  // additional information

    BOOL DBLogger(sqlite3* db) override;
};

// Takes cash out of the till, or puts a float into it: inserts a cupom_nf row and its one
// item_cupom_nf row; a document ("CN").
class CmdSangria : public Command
{
  public:
    CmdSangria() : Command(CMD_SANGRIA) {}

    ETipoOPNF m_eTipoOperacao = ETipoOPNF{}; // any value but FUNDO_TROCO is a withdrawal

    BOOL DBLogger(sqlite3* db) override;
};

// --- Readings, vouchers, reports and the Z reduction ---------------------------------------------

// Issues an X reading: a document ("LX"). One that goes to a file is none; then nothing is written
// and nothing in the command changes.
class CmdLeituraX : public Command
{
  public:
    CmdLeituraX() : Command(CMD_LEITURA_X) {}

    EMidia m_eMidia = EMidia{}; // where the reading goes

    BOOL DBLogger(sqlite3* db) override;
};

// Issues a fiscal-memory reading: a document ("MF").
class CmdLeituraMF : public Command
{
  public:
    CmdLeituraMF() : Command(CMD_LEITURA_MF) {}

    BOOL DBLogger(sqlite3* db) override;
};

// Closes the fiscal day: inserts its reducao_z row, a totalizador_reducao row for each totalizer in
// use and for the discounts, surcharges and cancellations, and a meio_pagamento_reducao row for
// each payment means in use and for the change; a document ("RZ"). REQUIRES: the data model holds
// the closed day in the bases of the last Z reduction.
class CmdReducaoZ : public Command
{
  public:
    CmdReducaoZ() : Command(CMD_REDUCAO_Z) {}

    BOOL DBLogger(sqlite3* db) override;
};

// Opens a credit/debit voucher: a document ("CC").
class CmdAbreCCD : public Command
{
  public:
    CmdAbreCCD() : Command(CMD_ABRE_CCD) {}

    BOOL DBLogger(sqlite3* db) override;
};

// Opens the reversal of a credit/debit voucher: nothing is written.
class CmdAbreEstornoCCD : public Command
{
  public:
    CmdAbreEstornoCCD() : Command(CMD_ABRE_ESTORNO_CCD) {}

    BOOL DBLogger(sqlite3* db) override;
};

// Opens a management report: a document ("RG").
class CmdAbreGerencial : public Command
{
  public:
    CmdAbreGerencial() : Command(CMD_ABRE_GERENCIAL) {}

    BOOL DBLogger(sqlite3* db) override;
};

// Closes the open voucher or management report: updates the end of its document.
class CmdFechaCCDGerencial : public Command
{
  public:
    CmdFechaCCDGerencial() : Command(CMD_FECHA_CCD_GERENCIAL) {}

    BOOL DBLogger(sqlite3* db) override;
};

// --- Events of the fiscal memory -----------------------------------------------------------------

// Enters the intervention mode L: inserts an intervencao row, unless one carries the current number
// of restarts; a document ("LX") in either case.
class CmdEntradaMILInterno : public Command
{
  public:
    CmdEntradaMILInterno() : Command(CMD_ENTRADA_MIL_INTERNO) {}

    BOOL DBLogger(sqlite3* db) override;
};

// Leaves the intervention mode L: a document ("LX").
class CmdSaidaMILInterno : public Command
{
  public:
    CmdSaidaMILInterno() : Command(CMD_SAIDA_MIL_INTERNO) {}

    BOOL DBLogger(sqlite3* db) override;
};

// Enters the intervention mode T: inserts an intervencao row, unless one carries the current number
// of restarts.
class CmdEntradaMITInterno : public Command
{
  public:
    CmdEntradaMITInterno() : Command(CMD_ENTRADA_MIT_INTERNO) {}

    BOOL DBLogger(sqlite3* db) override;
};

// Leaves the intervention mode T: a document ("LX").
class CmdSaidaMITInterno : public Command
{
  public:
    CmdSaidaMITInterno() : Command(CMD_SAIDA_MIT_INTERNO) {}

    BOOL DBLogger(sqlite3* db) override;
};

// Reprints documents from the detail tape: inserts a fita_detalhe row, unless one carries the
// number of this reprint.
class CmdReimprimeMFD : public Command
{
  public:
    CmdReimprimeMFD() : Command(CMD_REIMPRESSAO_MFD) {}

    int m_iCooInicial = 0; // document number of the first
    int m_iCooFinal = 0;   // document number of the last

    BOOL DBLogger(sqlite3* db) override;
};

// --- Programming of the register -----------------------------------------------------------------

// Programs a tax rate: nothing is written.
class CmdInsereAliquota : public Command
{
  public:
    CmdInsereAliquota() : Command(CMD_INSERE_ALIQUOTA_ICMS_ISS) {}

    BOOL DBLogger(sqlite3* db) override;
};

// Enables special totalizers: nothing is written.
class CmdHabilitaTotalizadores : public Command
{
  public:
    CmdHabilitaTotalizadores() : Command(CMD_HABILITA_I_F_N_IS_FS_NS) {}

    BOOL DBLogger(sqlite3* db) override;
};

// Disables special totalizers: nothing is written.
class CmdDesabilitaTotalizadores : public Command
{
  public:
    CmdDesabilitaTotalizadores() : Command(CMD_DESABILITA_I_F_N_IS_FS_NS) {}

    BOOL DBLogger(sqlite3* db) override;
};

// Programs a payment means: inserts its meio_pagamento row, or updates the rows that carry its
// number. Answers FALSE, writes nothing and leaves its counting query open where the rows cannot be
// counted.
class CmdInsereMeiosPagamento : public Command
{
  public:
    CmdInsereMeiosPagamento() : Command(CMD_INSERE_MEIO_PAGAMENTO) {}

    int m_iIndice = 0;          // number of the means, from 1
    char m_sDescricao[16] = {}; // its description
    // Any value but COM_CCD counts as SEM_CCD.
    EVinculacaoCCD m_eVinculacaoCCD = EVinculacaoCCD{};

    BOOL DBLogger(sqlite3* db) override;
};

// Programs a non-fiscal totalizer: inserts its totalizador_nao_fiscal row, or updates the rows that
// carry its number. Leaves its counting query open.
class CmdInsereRegOpeNF : public Command
{
  public:
    CmdInsereRegOpeNF() : Command(CMD_INSERE_OPNF) {}

    int m_iIndice = 0;          // number of the totalizer, from 1
    char m_sDescricao[21] = {}; // its description

    BOOL DBLogger(sqlite3* db) override;
};

// Programs the shop's number: nothing is written.
class CmdProgramaLoja : public Command
{
  public:
    CmdProgramaLoja() : Command(CMD_PROGRAMA_LOJA) {}

    BOOL DBLogger(sqlite3* db) override;
};

// Programs the till number: updates the dados_ecf row.
class CmdProgramaSequenciaECF : public Command
{
  public:
    CmdProgramaSequenciaECF() : Command(CMD_PROGRAMA_SEQ_ECF) {}

    int m_iNumCaixa = 0; // till number

    BOOL DBLogger(sqlite3* db) override;
};

// Programs the owner's names and address: inserts or updates the one dados_usuario row. Answers
// FALSE, writes nothing and leaves its counting query open where the rows cannot be counted.
class CmdProgramaUsuario : public Command
{
  public:
    CmdProgramaUsuario() : Command(CMD_PROGRAMA_USUARIO) {}

    BOOL DBLogger(sqlite3* db) override;
};

// Programs the owner's registrations: inserts or updates the one dados_usuario row. Answers FALSE,
// writes nothing and leaves its counting query open where the rows cannot be counted.
class CmdProgramaCNPJ_IE_IM : public Command
{
  public:
    CmdProgramaCNPJ_IE_IM() : Command(CMD_PROGRAMA_CNPJ_IE_IM) {}

    char m_sCNPJ[15] = {}; // CNPJ
    char m_sIE[21] = {};   // state registration
    char m_sIM[21] = {};   // municipal registration
    char m_sUF[3] = {};    // state

    BOOL DBLogger(sqlite3* db) override;
};

// Programs the register's identity: inserts or updates the one dados_ecf row, and inserts the
// versao_sb row where there is none.
class CmdProgramaNrSerie : public Command
{
  public:
    CmdProgramaNrSerie() : Command(CMD_PROGRAMA_NR_SERIE) {}

    char m_sMarca[16] = {};                    // make
    char m_sModelo[21] = {};                   // model
    char m_sTipo[8] = {};                      // type of register
    char m_sNumSerie[SIZE_NUM_SERIE + 1] = {}; // serial number

    BOOL DBLogger(sqlite3* db) override;
};

// Programs the currency symbol: a moeda row is tried, which the engine rejects as required.
class CmdProgramaMoeda : public Command
{
  public:
    CmdProgramaMoeda() : Command(CMD_PROGRAMA_SIMBOLO_MOEDA) {}

    char m_sSimboloMoeda[5] = {}; // currency symbol

    BOOL DBLogger(sqlite3* db) override;
};

#pragma GCC diagnostic pop

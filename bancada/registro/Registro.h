// The reference register: the fiscal data model in memory, behind the facade that the loggers read.
#pragma once

#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"
#include "bancada/registro/Decimal.h"
#include "bancada/registro/Memoria.h"
#include "bancada/registro/Refusal.h"
#include "libs/BigInt.h"
#include "libs/Financial.h"

#include <array>
#include <cstdint>
#include <string>

namespace bancada
{

// An item to be sold on a fiscal receipt.
struct VendaItem {
    std::string codigo;
    std::string descricao;
    std::string unidade;
    std::string tributacao; // "T", "S", "F", "I", "N", "FS", "IS" or "NS"
    int indice = 0;         // number of the rate or totalizer, from 1
    Decimal quantidade;     // 0 to 3 decimals, above zero
    Decimal valorUnitario;  // 0 to 3 decimals, above zero
    bool arredonda = false; // the total in cents is rounded half up; otherwise it is truncated
};

// A discount or a surcharge. `valor` is, for VALOR, ten-thousandths of the currency unit as in
// Financial::nr (whole cents); for PERCENTUAL, hundredths of a percent.
struct Ajuste {
    EOperacao operacao = DESCONTO;
    ETipoValor tipo = VALOR;
    BigInt valor;
};

// The operations come in pairs. `CheckX` changes nothing and says whether X would be refused;
// `X`, with the same arguments, applies it. REQUIRES of X: CheckX refuses nothing.
//  - `em` is the instant at which execution starts; X takes `fim`, at which it ends, where it ends
//  a
//    receipt.
//  - Items, rates, totalizers and payment means are given by number, from 1, as on the receipt.
//  - Money is whole cents and above zero; anything else is refused.
//  - No operation takes time that grows with what happened before the current receipt.
//
// The arithmetic and the rules are told in docs/register.md.
class Registro final : public FiscalDataController
{
  public:
    explicit Registro(Memoria initial = {});

    // The whole state, for as long as the register lives.
    const Memoria& GetMemoria() const { return m_memoria; }

    // --- Settings of the bench ---------------------------------------------------------------

    void SetRatearSubtotal(bool ratear);
    bool GetRatearSubtotal() const { return m_memoria.ratearSubtotal; }
    void SetAplicativo(const std::string& identificacao);
    void SetVersaoSB(const std::string& versao);

    // --- The clock ---------------------------------------------------------------------------

    // A command that starts before the last one that was executed ended is refused.
    Refusal CheckRelogio(RtcAbsoluteTime em) const;
    // A command was executed, and ended at `fim`.
    void AdvanceRelogio(RtcAbsoluteTime fim);

    // Sets the clock, forward or back, in an intervention mode. The open day is as old as before.
    Refusal CheckAcertaRelogio(RtcAbsoluteTime em) const;
    void AcertaRelogio(RtcAbsoluteTime em);

    // --- The fiscal receipt ------------------------------------------------------------------

    // Opens a receipt: COO + 1, CCF + 1; the first document of a day opens the fiscal day.
    Refusal CheckAbreCupom(const Consumidor& consumidor, RtcAbsoluteTime em) const;
    void AbreCupom(const Consumidor& consumidor, RtcAbsoluteTime em);

    // Registers an item. Its total is quantity x unit price in cents, whatever the decimals of the
    // price.
    Refusal CheckVendeItem(const VendaItem& venda, RtcAbsoluteTime em) const;
    void VendeItem(const VendaItem& venda, RtcAbsoluteTime em);

    // Closes a paid receipt: the change is known, the payments are booked, the document is signed.
    Refusal CheckFechaCupom(const std::string& mensagem, RtcAbsoluteTime em) const;
    void FechaCupom(const std::string& mensagem, RtcAbsoluteTime fim);

    // --- Either kind of receipt --------------------------------------------------------------

    // Adjusts an item that is not cancelled; number 0 is the item registered last. An item carries
    // at most one discount and one surcharge; a discount leaves at least one cent. A percentage is
    // of the item's total as it stands and is truncated to cents.
    Refusal CheckAjustaItem(const Ajuste& ajuste, int numeroItem, RtcAbsoluteTime em) const;
    void AjustaItem(const Ajuste& ajuste, int numeroItem, RtcAbsoluteTime em);

    // Takes an item's discount or surcharge back.
    Refusal CheckCancelaAjusteItem(EOperacao operacao, int numeroItem, RtcAbsoluteTime em) const;
    void CancelaAjusteItem(EOperacao operacao, int numeroItem, RtcAbsoluteTime em);

    // Adjusts the subtotal and apportions the adjustment among the items. A receipt carries at most
    // one; while it does, its items stand as they are.
    Refusal CheckAjustaSubtotal(const Ajuste& ajuste, RtcAbsoluteTime em) const;
    void AjustaSubtotal(const Ajuste& ajuste, RtcAbsoluteTime em);

    // Takes the subtotal's adjustment, of that operation, back.
    Refusal CheckCancelaAjusteSubtotal(EOperacao operacao, RtcAbsoluteTime em) const;
    void CancelaAjusteSubtotal(EOperacao operacao, RtcAbsoluteTime em);

    // Pays the receipt, wholly or in part. Only a means without CCD may be paid more than is due.
    Refusal CheckEfetuaPagamento(int meio, Financial valor, RtcAbsoluteTime em) const;
    void EfetuaPagamento(int meio, Financial valor, RtcAbsoluteTime em);

    // Cancels an item of the open receipt.
    Refusal CheckCancelaItem(int numeroItem, RtcAbsoluteTime em) const;
    void CancelaItem(int numeroItem, RtcAbsoluteTime em);

    // Cancels the open receipt. The COO stays that of the receipt.
    Refusal CheckCancelaCupomEmEmissao(RtcAbsoluteTime em) const;
    void CancelaCupomEmEmissao(RtcAbsoluteTime fim);

    // Cancels the receipt issued last, `coo` (0: whatever its number), within its fiscal day. The
    // cancellation is a document of its own: COO + 1 (and GNF + 1 for a non-fiscal receipt).
    // Cupom_GetTipoCupom and Cupom_GetCOO go on answering for the cancelled receipt.
    Refusal CheckCancelaCupom(int coo, RtcAbsoluteTime em) const;
    void CancelaCupom(int coo, RtcAbsoluteTime em);

    // Moves an amount paid on the open receipt, or on the one issued last, from one payment means
    // to another. For an issued receipt that is a document: COO + 1, GNF + 1.
    Refusal CheckEstornaMeioPagamento(int origem, int destino, Financial valor,
                                      RtcAbsoluteTime em) const;
    void EstornaMeioPagamento(int origem, int destino, Financial valor, RtcAbsoluteTime em);

    // --- The non-fiscal receipt and the till -------------------------------------------------

    // Opens a non-fiscal receipt: COO + 1, GNF + 1.
    Refusal CheckAbreCNF(const Consumidor& consumidor, RtcAbsoluteTime em) const;
    void AbreCNF(const Consumidor& consumidor, RtcAbsoluteTime em);

    // Registers a value on a programmed non-fiscal totalizer, 3 to 39.
    Refusal CheckVendeItemNF(int totalizador, Financial valor, RtcAbsoluteTime em) const;
    void VendeItemNF(int totalizador, Financial valor, RtcAbsoluteTime em);

    // Closes a paid non-fiscal receipt.
    Refusal CheckFechaCNF(RtcAbsoluteTime em) const;
    void FechaCNF(RtcAbsoluteTime fim);

    // A float or a withdrawal: a closed non-fiscal receipt of one item on its own totalizer. A
    // float is paid in `meio`, which gives change, or for 0 in the first programmed means that
    // does, if there is one; a withdrawal has no payment. COO + 1, GNF + 1. It cannot be cancelled.
    Refusal CheckMovimentaCaixa(ETipoOPNF operacao, Financial valor, RtcAbsoluteTime em,
                                int meio = 0) const;
    void MovimentaCaixa(ETipoOPNF operacao, Financial valor, RtcAbsoluteTime em, int meio = 0);

    // --- Readings, vouchers, reports ---------------------------------------------------------

    // X reading: COO + 1, unless it goes to a file (ARQUIVO).
    Refusal CheckLeituraX(EMidia midia, RtcAbsoluteTime em) const;
    void LeituraX(EMidia midia, RtcAbsoluteTime em);

    // Fiscal-memory reading: COO + 1.
    Refusal CheckLeituraMF(RtcAbsoluteTime em) const;
    void LeituraMF(RtcAbsoluteTime em);

    // Voucher of a payment of the receipt issued last, in a means with CCD: COO, GNF and CDC + 1.
    Refusal CheckAbreCCD(int meio, RtcAbsoluteTime em) const;
    void AbreCCD(int meio, RtcAbsoluteTime em);

    // Reversal of the last voucher of the receipt issued last: COO + 1, GNF + 1.
    Refusal CheckAbreEstornoCCD(RtcAbsoluteTime em) const;
    void AbreEstornoCCD(RtcAbsoluteTime em);

    // Management report: COO, GNF and GRG + 1.
    Refusal CheckAbreGerencial(RtcAbsoluteTime em) const;
    void AbreGerencial(RtcAbsoluteTime em);

    // Closes the open voucher, voucher reversal or report.
    Refusal CheckFechaCCDGerencial(RtcAbsoluteTime em) const;
    void FechaCCDGerencial(RtcAbsoluteTime em);

    // Reprint of the documents `cooInicial` to `cooFinal`: COO + 1. Its own counter, CFD, moves
    // with FinishReimprimeMFD, once the reprint was logged under CFD + 1.
    Refusal CheckReimprimeMFD(int cooInicial, int cooFinal, RtcAbsoluteTime em) const;
    void ReimprimeMFD(int cooInicial, int cooFinal, RtcAbsoluteTime em);
    void FinishReimprimeMFD();

    // --- The Z reduction and the interventions -----------------------------------------------

    // Closes the fiscal day: bases 0 and 1 become bases 2 and 3 and are emptied, COO + 1, CRZ + 1.
    // Allowed without movement.
    Refusal CheckReducaoZ(RtcAbsoluteTime em) const;
    void ReducaoZ(RtcAbsoluteTime em);

    // Enters an intervention mode. The L mode prints an X reading (COO + 1), the T mode nothing.
    // REQUIRES: `modo` is MIL or MIT.
    Refusal CheckEntraIntervencao(EModoIntervencao modo, RtcAbsoluteTime em) const;
    void EntraIntervencao(EModoIntervencao modo, RtcAbsoluteTime em);

    // Leaves the mode the register is in, printing an X reading: COO + 1. Leaving T is a restart
    // of operation: CRO + 1.
    Refusal CheckSaiIntervencao(EModoIntervencao modo, RtcAbsoluteTime em) const;
    void SaiIntervencao(EModoIntervencao modo, RtcAbsoluteTime em);

    // --- Programming; refused while a document is open ---------------------------------------

    // Rate of tributacao "T" or "S" at `indice`, 1 to 30; 0 takes the first free one. A rate whose
    // totalizer has moved on this day stands until the Z reduction.
    Refusal CheckProgramaAliquota(const std::string& tributacao, int indice, int centesimos) const;
    void ProgramaAliquota(const std::string& tributacao, int indice, int centesimos);

    // Special totalizer F, I, N, FS, IS or NS, 1 to 3. One that has moved on this day cannot be
    // disabled before the Z reduction.
    Refusal CheckHabilitaTotalizador(const std::string& codigo, int numero, bool habilita) const;
    void HabilitaTotalizador(const std::string& codigo, int numero, bool habilita);

    // Payment means 1 to 20, anew or over the one there.
    Refusal CheckProgramaMeioPagamento(int indice, const std::string& descricao,
                                       EVinculacaoCCD vinculacao) const;
    void ProgramaMeioPagamento(int indice, const std::string& descricao, EVinculacaoCCD vinculacao);

    // Name of the non-fiscal totalizer 1 to 39, anew or over the one there. 1 and 2 stay those of
    // the till's floats and withdrawals under any name.
    Refusal CheckProgramaTotalizadorNF(int indice, const std::string& descricao) const;
    void ProgramaTotalizadorNF(int indice, const std::string& descricao);

    Refusal CheckProgramaLoja(int numero) const; // 1 to 9999
    void ProgramaLoja(int numero);
    Refusal CheckProgramaSequenciaECF(int numero) const; // 1 to 999
    void ProgramaSequenciaECF(int numero);

    Refusal CheckProgramaUsuario(const std::string& razaoSocial, const std::string& nomeFantasia,
                                 const std::string& endereco) const;
    void ProgramaUsuario(const std::string& razaoSocial, const std::string& nomeFantasia,
                         const std::string& endereco);

    // `cnpj` is 14 digits with right check digits, `uf` a state's two letters.
    Refusal CheckProgramaCNPJ_IE_IM(const std::string& cnpj, const std::string& ie,
                                    const std::string& im, const std::string& uf) const;
    void ProgramaCNPJ_IE_IM(const std::string& cnpj, const std::string& ie, const std::string& im,
                            const std::string& uf);

    Refusal CheckProgramaNrSerie(const std::string& marca, const std::string& modelo,
                                 const std::string& tipo, const std::string& numSerie) const;
    void ProgramaNrSerie(const std::string& marca, const std::string& modelo,
                         const std::string& tipo, const std::string& numSerie);
    Refusal CheckProgramaMoeda(const std::string& simbolo) const;
    void ProgramaMoeda(const std::string& simbolo);

    // The signature of the receipt issued last: SHA-256 of its canonical text. Zeros while none
    // was closed.
    const std::array<std::uint8_t, 32>& GetAssinatura() const { return m_memoria.cupom.assinatura; }

    // --- The facade --------------------------------------------------------------------------
    // What FiscalDataController says, and: all take constant time but Cupom_GetRateioPorItem, which
    // copies the items; a text longer than `size` allows is cut.

    int Contador_Get(FISCALDATA_COUNTER_INDEX contador) override;
    int Cupom_GetCOO() override;
    int Cupom_GetQuantidadeDeItens() override;
    char* Cupom_GetItemQtdeStr(int item, char* out, int size) override;
    char* Cupom_GetItemValorUnitarioStr(int item, char* out, int size) override;
    // A cancelled item goes on answering what it came to.
    Financial Cupom_GetItemValorTotal(int item) override;
    Financial Cupom_GetItemValorAcr(int item) override;
    Financial Cupom_GetItemValorDesc(int item) override;
    // What the items come to, and that with the subtotal's adjustment.
    Financial Cupom_GetSubTotal() override;
    Financial Cupom_GetTotal() override;
    Financial Cupom_GetTroco() override;
    BOOL Cupom_GetSTAcrAplicado() override;
    BOOL Cupom_GetSTDescAplicado() override;
    Financial Cupom_GetSTValorDescAcr() override;
    Financial Cupom_GetSTValorCanceladoDescAcr() override;
    FD_TIPO_CUPOM Cupom_GetTipoCupom() override;
    // Answers 0 while there has been no receipt.
    BOOL Cupom_GetRateioPorItem(Cupom* copy) override;
    // CNPJ (14 digits, zeros without one), serial number, opening date (yyyymmdd) and COO (6
    // digits), joined by '-'.
    char* CFe_GetChaveDeBusca(char* out, int size) override;
    int AssinaturaDigital_GetBase64(char* out, char* signature) override;
    char* DadosPDV_GetIdAplicativo(char* out, int size) override;
    int BaseFormasPagamento_GetNumeroDeFormasDePagamento() override;
    char* BaseFormasPagamento_GetMeioPagamento(int index, char* out, int size) override;
    BOOL BaseFormasPagamento_GetMeioPagamentoProgramado(int index) override;
    // Of the open day or, when none is, of the day closed last.
    Financial BaseFormasPagamento_GetFPTotal(int index) override;
    Financial BaseFormasPagamento_GetTrocoTotal() override;
    Financial Totalizador_GetGT() override;
    // Point 0: GT when the present CNPJ was programmed. Any other: zero.
    Financial Totalizador_GetGTIni(int ponto) override;
    Financial Totalizador_GetVB(int base) override;
    Financial Totalizador_GetTot(int base, int taxBase, int index) override;
    // Value x rate, truncated to cents; zero for the special totalizers.
    Financial Totalizador_GetTotTrib(int base, int taxBase, int index) override;
    int Totalizador_GetTotPercTrib(int base, int taxBase, int index) override;
    BOOL Totalizador_GetTotProgramado(int base, int taxBase, int index) override;
    // Over all 39 positions of the tax base: rates and special totalizers.
    Financial Totalizador_GetSoma_Tot_VL(int base, int taxBase) override;
    Financial Totalizador_GetSoma_Tot_Canc(int base, int taxBase) override;
    Financial Totalizador_GetSoma_Tot_Desc(int base, int taxBase) override;
    Financial Totalizador_GetSoma_Tot_Acr(int base, int taxBase) override;
    Financial Totalizador_GetSoma_TotTrib(int base, int taxBase) override;
    Financial Totalizador_GetTotalNF(int base, int index) override;
    int Totalizador_GetTotNFProgramado(int base, int index) override;
    char* Totalizador_GetNomeNF(int base, int index, char* out, int size) override;
    // -1 for a code and number that name no totalizer.
    int ResolveTotIndex(BASE_CONTABIL_FISCAL_BASE_IMPOSTO_INDEXES taxBase, char* code,
                        int number) override;
    // The date of the open day or, when none is, of the day closed last.
    RtcAbsoluteTime Jornada_GetDataMovimento() override;
    // From the day's first document to `until`, or to the Z reduction that closed the day.
    RtcRelativeTime Jornada_GetTempoOperacional(RtcAbsoluteTime until) override;
    RtcRelativeTime Jornada_GetTempoEmitindoDocFiscal() override;
    char* DadosContribuinte_GetRazaoSocial(char* out, int size) override;
    char* DadosContribuinte_GetNomeFantasia(char* out, int size) override;
    char* DadosContribuinte_GetEndereco(char* out, int size) override;
    char* DadosECF_GetVersaoSB(char* out, int size) override;
    // The till number in decimal; empty until it is programmed.
    char* DadosECF_GetNrOrdemSeq(char* out, int size) override;

  private:
    Memoria m_memoria;
};

} // namespace bancada

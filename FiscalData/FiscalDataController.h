// The facade over the fiscal data model, through which the command loggers read the register.
#pragma once

#include "FiscalData/Cupom.h"
#include "FiscalData/FiscalDataTypes.h"
#include "RtcClasses.h"
#include "libs/Financial.h"
#include "libs/FirmwareTypes.h"

// Whoever links the library supplies the implementation. For every operation:
//  - asking changes nothing that a logger can see;
//  - the answer is the register's state after the command being logged has taken effect;
//  - item, totalizer and payment-means positions count from 0, and a position that names nothing is
//    answered like one that is empty (zero, not programmed, an empty text);
//  - an operation with `out` and `size` writes a NUL-terminated text of at most `size` bytes, the
//    terminator included, and answers `out`;
//  - nothing throws.
class FiscalDataController
{
  public:
    virtual ~FiscalDataController() = default;

    // Current value of a counter.
    virtual int Contador_Get(FISCALDATA_COUNTER_INDEX contador) = 0;

    // --- The current receipt -----------------------------------------------------------------

    // Its document number.
    virtual int Cupom_GetCOO() = 0;
    // How many items are registered; the last one's index is this minus 1.
    virtual int Cupom_GetQuantidadeDeItens() = 0;
    // Quantity and unit price of an item, with a decimal comma.
    virtual char* Cupom_GetItemQtdeStr(int item, char* out, int size) = 0;
    virtual char* Cupom_GetItemValorUnitarioStr(int item, char* out, int size) = 0;
    // Total of an item, its surcharge and its discount.
    virtual Financial Cupom_GetItemValorTotal(int item) = 0;
    virtual Financial Cupom_GetItemValorAcr(int item) = 0;
    virtual Financial Cupom_GetItemValorDesc(int item) = 0;
    virtual Financial Cupom_GetSubTotal() = 0;
    virtual Financial Cupom_GetTotal() = 0;
    // Change given.
    virtual Financial Cupom_GetTroco() = 0;
    // 1 when the subtotal carries an applied surcharge, or discount.
    virtual BOOL Cupom_GetSTAcrAplicado() = 0;
    virtual BOOL Cupom_GetSTDescAplicado() = 0;
    // Amount of the discount or surcharge on the subtotal, and the cancelled part of it.
    virtual Financial Cupom_GetSTValorDescAcr() = 0;
    virtual Financial Cupom_GetSTValorCanceladoDescAcr() = 0;
    virtual FD_TIPO_CUPOM Cupom_GetTipoCupom() = 0;
    // Fills `copy` with the receipt, the adjustment of its subtotal shared among its items. Answers
    // 0 when it cannot.
    virtual BOOL Cupom_GetRateioPorItem(Cupom* copy) = 0;
    // Search key of the receipt.
    virtual char* CFe_GetChaveDeBusca(char* out, int size) = 0;

    // Writes the Base64 text (44 characters and the terminator) of the 32 bytes at `signature`.
    virtual int AssinaturaDigital_GetBase64(char* out, char* signature) = 0;

    // Identification of the point-of-sale application.
    virtual char* DadosPDV_GetIdAplicativo(char* out, int size) = 0;

    // --- Payment means -----------------------------------------------------------------------

    virtual int BaseFormasPagamento_GetNumeroDeFormasDePagamento() = 0;
    // Name of a payment means, whether it is programmed, and the total received in it.
    virtual char* BaseFormasPagamento_GetMeioPagamento(int index, char* out, int size) = 0;
    virtual BOOL BaseFormasPagamento_GetMeioPagamentoProgramado(int index) = 0;
    virtual Financial BaseFormasPagamento_GetFPTotal(int index) = 0;
    // Total change given.
    virtual Financial BaseFormasPagamento_GetTrocoTotal() = 0;

    // --- Totalizers --------------------------------------------------------------------------
    // `base` is one of BASE_CONTABIL_INDEXES, `taxBase` one of the fiscal tax bases.

    // Grand total, now and at a starting point.
    virtual Financial Totalizador_GetGT() = 0;
    virtual Financial Totalizador_GetGTIni(int ponto) = 0;
    // Gross sales of a base.
    virtual Financial Totalizador_GetVB(int base) = 0;
    // Value of a totalizer, its tax, its rate in hundredths of a percent, whether it is programmed.
    virtual Financial Totalizador_GetTot(int base, int taxBase, int index) = 0;
    virtual Financial Totalizador_GetTotTrib(int base, int taxBase, int index) = 0;
    virtual int Totalizador_GetTotPercTrib(int base, int taxBase, int index) = 0;
    virtual BOOL Totalizador_GetTotProgramado(int base, int taxBase, int index) = 0;
    // Sums over a tax base: values, cancellations, discounts, surcharges, taxes.
    virtual Financial Totalizador_GetSoma_Tot_VL(int base, int taxBase) = 0;
    virtual Financial Totalizador_GetSoma_Tot_Canc(int base, int taxBase) = 0;
    virtual Financial Totalizador_GetSoma_Tot_Desc(int base, int taxBase) = 0;
    virtual Financial Totalizador_GetSoma_Tot_Acr(int base, int taxBase) = 0;
    virtual Financial Totalizador_GetSoma_TotTrib(int base, int taxBase) = 0;
    // Value of a non-fiscal totalizer, whether it is programmed (greater than 0), its name.
    virtual Financial Totalizador_GetTotalNF(int base, int index) = 0;
    virtual int Totalizador_GetTotNFProgramado(int base, int index) = 0;
    virtual char* Totalizador_GetNomeNF(int base, int index, char* out, int size) = 0;
    // Position of a special totalizer ("F", "I", "N", "FS", "IS", "NS" and a number from 1) within
    // its tax base. For a code and number that name none it answers a position that
    // Totalizador_GetTotProgramado calls not programmed.
    virtual int ResolveTotIndex(BASE_CONTABIL_FISCAL_BASE_IMPOSTO_INDEXES taxBase, char* code,
                                int number) = 0;

    // --- The fiscal day ----------------------------------------------------------------------

    // Date of the fiscal day; matlong[0] when there is none.
    virtual RtcAbsoluteTime Jornada_GetDataMovimento() = 0;
    // Operating time up to an instant, and time spent issuing fiscal documents.
    virtual RtcRelativeTime Jornada_GetTempoOperacional(RtcAbsoluteTime ate) = 0;
    virtual RtcRelativeTime Jornada_GetTempoEmitindoDocFiscal() = 0;

    // --- Owner and register ------------------------------------------------------------------

    virtual char* DadosContribuinte_GetRazaoSocial(char* out, int size) = 0;
    virtual char* DadosContribuinte_GetNomeFantasia(char* out, int size) = 0;
    virtual char* DadosContribuinte_GetEndereco(char* out, int size) = 0;
    // Version of the basic software.
    virtual char* DadosECF_GetVersaoSB(char* out, int size) = 0;
    // Sequence number of the register.
    virtual char* DadosECF_GetNrOrdemSeq(char* out, int size) = 0;
};

// A fiscal data model of fixed answers: a shop's register in the middle of a day. What the cases of
// the catalogue vary is a member; all else is always the same.
#pragma once

#include "FiscalData/FiscalDataController.h"

class FixedModel final : public FiscalDataController
{
  public:
    FD_TIPO_CUPOM tipoCupom = CUPOM_FISCAL;
    int itens = 6;             // in the open receipt
    int crz = 321;             // Z reductions so far
    BOOL descSubtotal = FALSE; // the subtotal carries a discount
    BOOL acrSubtotal = FALSE;  // or a surcharge
    int rateio = 0;            // the apportionment setting of the firmware
    bool semMovimento = false; // a day without totalizers and payments
    const char* aplicativo = "CAIXA 2.10";
    const char* chave = "35260311222333000181000004321";
    const char* razaoSocial = "MERCEARIA DA ESQUINA LTDA";
    const char* nomeFantasia = "MERCEARIA DA ESQUINA";
    const char* endereco = "RUA DAS FLORES, 123 - CENTRO - SAO PAULO/SP";
    const char* numeroDeOrdem = "1";

    static constexpr int COO = 4321;

    int Contador_Get(FISCALDATA_COUNTER_INDEX contador) override;
    int Cupom_GetCOO() override;
    int Cupom_GetQuantidadeDeItens() override;
    char* Cupom_GetItemQtdeStr(int item, char* out, int size) override;
    char* Cupom_GetItemValorUnitarioStr(int item, char* out, int size) override;
    Financial Cupom_GetItemValorTotal(int item) override;
    Financial Cupom_GetItemValorAcr(int item) override;
    Financial Cupom_GetItemValorDesc(int item) override;
    Financial Cupom_GetSubTotal() override;
    Financial Cupom_GetTotal() override;
    Financial Cupom_GetTroco() override;
    BOOL Cupom_GetSTAcrAplicado() override;
    BOOL Cupom_GetSTDescAplicado() override;
    Financial Cupom_GetSTValorDescAcr() override;
    Financial Cupom_GetSTValorCanceladoDescAcr() override;
    FD_TIPO_CUPOM Cupom_GetTipoCupom() override;
    BOOL Cupom_GetRateioPorItem(Cupom* copy) override;
    char* CFe_GetChaveDeBusca(char* out, int size) override;
    int AssinaturaDigital_GetBase64(char* out, char* signature) override;
    char* DadosPDV_GetIdAplicativo(char* out, int size) override;
    int BaseFormasPagamento_GetNumeroDeFormasDePagamento() override;
    char* BaseFormasPagamento_GetMeioPagamento(int index, char* out, int size) override;
    BOOL BaseFormasPagamento_GetMeioPagamentoProgramado(int index) override;
    Financial BaseFormasPagamento_GetFPTotal(int index) override;
    Financial BaseFormasPagamento_GetTrocoTotal() override;
    Financial Totalizador_GetGT() override;
    Financial Totalizador_GetGTIni(int ponto) override;
    Financial Totalizador_GetVB(int base) override;
    Financial Totalizador_GetTot(int base, int taxBase, int index) override;
    Financial Totalizador_GetTotTrib(int base, int taxBase, int index) override;
    int Totalizador_GetTotPercTrib(int base, int taxBase, int index) override;
    BOOL Totalizador_GetTotProgramado(int base, int taxBase, int index) override;
    Financial Totalizador_GetSoma_Tot_VL(int base, int taxBase) override;
    Financial Totalizador_GetSoma_Tot_Canc(int base, int taxBase) override;
    Financial Totalizador_GetSoma_Tot_Desc(int base, int taxBase) override;
    Financial Totalizador_GetSoma_Tot_Acr(int base, int taxBase) override;
    Financial Totalizador_GetSoma_TotTrib(int base, int taxBase) override;
    Financial Totalizador_GetTotalNF(int base, int index) override;
    int Totalizador_GetTotNFProgramado(int base, int index) override;
    char* Totalizador_GetNomeNF(int base, int index, char* out, int size) override;
    int ResolveTotIndex(BASE_CONTABIL_FISCAL_BASE_IMPOSTO_INDEXES taxBase, char* code,
                        int number) override;
    RtcAbsoluteTime Jornada_GetDataMovimento() override;
    RtcRelativeTime Jornada_GetTempoOperacional(RtcAbsoluteTime ate) override;
    RtcRelativeTime Jornada_GetTempoEmitindoDocFiscal() override;
    char* DadosContribuinte_GetRazaoSocial(char* out, int size) override;
    char* DadosContribuinte_GetNomeFantasia(char* out, int size) override;
    char* DadosContribuinte_GetEndereco(char* out, int size) override;
    char* DadosECF_GetVersaoSB(char* out, int size) override;
    char* DadosECF_GetNrOrdemSeq(char* out, int size) override;
};

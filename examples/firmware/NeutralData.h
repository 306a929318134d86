// A register that holds nothing: the 49 answers that the loggers may ask for, each neutral. A
// device derives its own data model from it and answers what it knows, one operation after the
// other.
#pragma once

#include "FiscalData/FiscalDataController.h"

class NeutralData : public FiscalDataController
{
  public:
    int Contador_Get(FISCALDATA_COUNTER_INDEX) override { return 0; }
    int Cupom_GetCOO() override { return 0; }
    int Cupom_GetQuantidadeDeItens() override { return 0; }
    char* Cupom_GetItemQtdeStr(int, char* out, int size) override { return Empty(out, size); }
    char* Cupom_GetItemValorUnitarioStr(int, char* out, int size) override
    {
        return Empty(out, size);
    }
    Financial Cupom_GetItemValorTotal(int) override { return Financial(); }
    Financial Cupom_GetItemValorAcr(int) override { return Financial(); }
    Financial Cupom_GetItemValorDesc(int) override { return Financial(); }
    Financial Cupom_GetSubTotal() override { return Financial(); }
    Financial Cupom_GetTotal() override { return Financial(); }
    Financial Cupom_GetTroco() override { return Financial(); }
    BOOL Cupom_GetSTAcrAplicado() override { return FALSE; }
    BOOL Cupom_GetSTDescAplicado() override { return FALSE; }
    Financial Cupom_GetSTValorDescAcr() override { return Financial(); }
    Financial Cupom_GetSTValorCanceladoDescAcr() override { return Financial(); }
    FD_TIPO_CUPOM Cupom_GetTipoCupom() override { return CUPOM_FISCAL; }
    BOOL Cupom_GetRateioPorItem(Cupom*) override { return FALSE; }
    char* CFe_GetChaveDeBusca(char* out, int size) override { return Empty(out, size); }
    int AssinaturaDigital_GetBase64(char* out, char*) override { return *out = 0; }
    char* DadosPDV_GetIdAplicativo(char* out, int size) override { return Empty(out, size); }
    int BaseFormasPagamento_GetNumeroDeFormasDePagamento() override { return 0; }
    char* BaseFormasPagamento_GetMeioPagamento(int, char* out, int size) override
    {
        return Empty(out, size);
    }
    BOOL BaseFormasPagamento_GetMeioPagamentoProgramado(int) override { return FALSE; }
    Financial BaseFormasPagamento_GetFPTotal(int) override { return Financial(); }
    Financial BaseFormasPagamento_GetTrocoTotal() override { return Financial(); }
    Financial Totalizador_GetGT() override { return Financial(); }
    Financial Totalizador_GetGTIni(int) override { return Financial(); }
    Financial Totalizador_GetVB(int) override { return Financial(); }
    Financial Totalizador_GetTot(int, int, int) override { return Financial(); }
    Financial Totalizador_GetTotTrib(int, int, int) override { return Financial(); }
    int Totalizador_GetTotPercTrib(int, int, int) override { return 0; }
    BOOL Totalizador_GetTotProgramado(int, int, int) override { return FALSE; }
    Financial Totalizador_GetSoma_Tot_VL(int, int) override { return Financial(); }
    Financial Totalizador_GetSoma_Tot_Canc(int, int) override { return Financial(); }
    Financial Totalizador_GetSoma_Tot_Desc(int, int) override { return Financial(); }
    Financial Totalizador_GetSoma_Tot_Acr(int, int) override { return Financial(); }
    Financial Totalizador_GetSoma_TotTrib(int, int) override { return Financial(); }
    Financial Totalizador_GetTotalNF(int, int) override { return Financial(); }
    int Totalizador_GetTotNFProgramado(int, int) override { return 0; }
    char* Totalizador_GetNomeNF(int, int, char* out, int size) override { return Empty(out, size); }
    int ResolveTotIndex(BASE_CONTABIL_FISCAL_BASE_IMPOSTO_INDEXES, char*, int) override
    {
        return 0;
    }
    RtcAbsoluteTime Jornada_GetDataMovimento() override { return RtcAbsoluteTime(); }
    RtcRelativeTime Jornada_GetTempoOperacional(RtcAbsoluteTime) override
    {
        return RtcRelativeTime();
    }
    RtcRelativeTime Jornada_GetTempoEmitindoDocFiscal() override { return RtcRelativeTime(); }
    char* DadosContribuinte_GetRazaoSocial(char* out, int size) override
    {
        return Empty(out, size);
    }
    char* DadosContribuinte_GetNomeFantasia(char* out, int size) override
    {
        return Empty(out, size);
    }
    char* DadosContribuinte_GetEndereco(char* out, int size) override { return Empty(out, size); }
    char* DadosECF_GetVersaoSB(char* out, int size) override { return Empty(out, size); }
    char* DadosECF_GetNrOrdemSeq(char* out, int size) override { return Empty(out, size); }

  protected:
    static char* Empty(char* out, int size)
    {
        if (size > 0) {
            *out = '\0';
        }
        return out;
    }
};

// A fiscal data model that answers what the test has set, and writes down what it is asked.
#pragma once

#include "FiscalData/FiscalDataController.h"

#include <map>
#include <string>
#include <vector>

// Answers are set by the text of the call, arguments without blanks: "Contador_Get(0)",
// "Totalizador_GetTot(2,0,5)", "ResolveTotIndex(0,F,1)", "Cupom_GetTotal()". The array and the size
// of an operation that writes a text are left out of that text ("Cupom_GetItemQtdeStr(0)"), and an
// instant is its count of seconds. What is not set is answered 0, zero or an empty text.
class FakeController : public FiscalDataController
{
  public:
    std::map<std::string, int> numbers; // integers, truth values and the receipt type
    std::map<std::string, Financial> money;
    std::map<std::string, std::string> texts;
    std::map<std::string, UINT32> seconds; // instants and spans
    Cupom rateio;                          // what Cupom_GetRateioPorItem fills in

    void SetCounter(FISCALDATA_COUNTER_INDEX counter, int value);

    // Every call so far, in order, as the text under which it is answered; the size of an array
    // handed over stands last ("Cupom_GetItemQtdeStr(0,500)").
    std::vector<std::string> calls;

    // How many of `calls` begin with `text`.
    int CallsOf(const std::string& text) const;

    // The 32 bytes that AssinaturaDigital_GetBase64 was last asked about.
    const char* signature = nullptr;

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
    int AssinaturaDigital_GetBase64(char* out, char* bytes) override;
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

  private:
    int Number(const std::string& call);
    Financial Money(const std::string& call);
    char* Text(const std::string& name, const std::string& arguments, char* out, int size);
    UINT32 Seconds(const std::string& call);
};

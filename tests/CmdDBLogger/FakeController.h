// A fiscal data model that answers what is scripted, and writes down what it is asked.
#pragma once

#include "FiscalData/FiscalDataController.h"

#include <map>
#include <string>
#include <vector>

// The text of an instant as a question names it: "2026-03-02 08:15:30".
std::string TextOf(RtcAbsoluteTime instant);

// The answers of one kind, by question.
template <class Value>
class Answers
{
  public:
    // The answer to a question, to be set. From here on it is one that must be asked for.
    Value& operator[](const std::string& question)
    {
        Answer& answer = m_answers[question];
        answer.mustBeAsked = true;
        return answer.value;
    }

    // The answer to a question, which has now been asked; null where nobody has scripted it.
    const Value* Ask(const std::string& question)
    {
        const auto found = m_answers.find(question);
        if (found == m_answers.end()) {
            return nullptr;
        }
        found->second.mustBeAsked = false;
        return &found->second.value;
    }

    // What is scripted so far need not be asked for.
    void NeedNotBeAsked()
    {
        for (auto& [question, answer] : m_answers) {
            answer.mustBeAsked = false;
        }
    }

    // Appends the questions that must still be asked.
    void AppendNotAsked(std::vector<std::string>& questions) const
    {
        for (const auto& [question, answer] : m_answers) {
            if (answer.mustBeAsked) {
                questions.push_back(question);
            }
        }
    }

  private:
    struct Answer {
        Value value = Value();
        bool mustBeAsked = false;
    };
    std::map<std::string, Answer> m_answers;
};

// Answers are scripted by the text of the call, arguments without blanks, counters and instants by
// name: "Contador_Get(COUNTER_COO)", "Totalizador_GetTot(2,0,5)", "ResolveTotIndex(0,F,1)",
// "Jornada_GetTempoOperacional(2026-03-02 08:15:30)", "Cupom_GetTotal()". The array and the size of
// an operation that writes a text are left out of that text ("Cupom_GetItemQtdeStr(0)").
//
// A question that nobody has scripted fails the test and is answered 0, zero or an empty text. An
// answer that the test itself has scripted and that nobody asks for fails it at its end; what its
// fixture has set when the test begins is the register's state, which may be left alone.
class FakeController : public FiscalDataController
{
  public:
    Answers<int> numbers; // integers, truth values and the receipt type
    Answers<Financial> money;
    Answers<std::string> texts;
    Answers<UINT32> seconds; // instants and spans
    Cupom rateio;            // what Cupom_GetRateioPorItem fills in

    void SetCounter(FISCALDATA_COUNTER_INDEX counter, int value);

    // What is scripted so far becomes the register's state.
    void KeepAsState();

    // The answers that the test has scripted and that nobody has asked for.
    std::vector<std::string> NotAsked() const;

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

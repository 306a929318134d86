#include "tests/CmdDBLogger/FakeController.h"

#include <algorithm>
#include <cstring>
#include <ctime>
#include <gtest/gtest.h>
#include <iterator>

namespace
{

// The names of the counters, by index.
const char* const COUNTERS[] = {
    "COUNTER_COO",
    "COUNTER_CRZ",
    "COUNTER_CRO",
    "COUNTER_CCF",
    "COUNTER_GNF",
    "COUNTER_CFD",
    "COUNTER_CDC",
    "COUNTER_GRG",
    "COUNTER_NFC",
    "COUNTER_GFC",
    "COUNTER_CFC",
    "COUNTER_CTM",
    "COUNTER_CON",
    "COUNTER_CER",
    "COUNTER_NCN",
    "COUNTER_COO_INSERIDOS",
    "COUNTER_COO_RESTANTES_REF",
};
static_assert(std::size(COUNTERS) == COUNTER_MAX_SIZE, "every counter has its name");

std::string QuestionOf(FISCALDATA_COUNTER_INDEX counter)
{
    const bool known = counter >= 0 && counter < COUNTER_MAX_SIZE;
    return std::string("Contador_Get(") + (known ? COUNTERS[counter] : "no counter") + ")";
}

// The scripted answer, or, the test failing, none.
template <class Value>
Value AnswerOf(Answers<Value>& answers, const std::string& question)
{
    const Value* answer = answers.Ask(question);
    if (answer == nullptr) {
        ADD_FAILURE() << "nobody has scripted " << question;
        return Value();
    }
    return *answer;
}

std::string ListOf(int a)
{
    return std::to_string(a);
}

std::string ListOf(int a, int b)
{
    return ListOf(a) + "," + std::to_string(b);
}

std::string ListOf(int a, int b, int c)
{
    return ListOf(a, b) + "," + std::to_string(c);
}

} // namespace

std::string TextOf(RtcAbsoluteTime instant)
{
    const std::time_t seconds = static_cast<std::time_t>(instant.s);
    char text[sizeof "2026-03-02 08:15:30"] = "";
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", std::gmtime(&seconds));
    return text;
}

void FakeController::SetCounter(FISCALDATA_COUNTER_INDEX counter, int value)
{
    numbers[QuestionOf(counter)] = value;
}

void FakeController::KeepAsState()
{
    numbers.NeedNotBeAsked();
    money.NeedNotBeAsked();
    texts.NeedNotBeAsked();
    seconds.NeedNotBeAsked();
}

std::vector<std::string> FakeController::NotAsked() const
{
    std::vector<std::string> questions;
    numbers.AppendNotAsked(questions);
    money.AppendNotAsked(questions);
    texts.AppendNotAsked(questions);
    seconds.AppendNotAsked(questions);
    return questions;
}

int FakeController::CallsOf(const std::string& text) const
{
    return static_cast<int>(std::count_if(calls.begin(), calls.end(), [&](const std::string& call) {
        return call.rfind(text, 0) == 0;
    }));
}

int FakeController::Number(const std::string& call)
{
    calls.push_back(call);
    return AnswerOf(numbers, call);
}

Financial FakeController::Money(const std::string& call)
{
    calls.push_back(call);
    return AnswerOf(money, call);
}

char* FakeController::Text(const std::string& name, const std::string& arguments, char* out,
                           int size)
{
    const std::string separator = arguments.empty() ? "" : ",";
    calls.push_back(name + "(" + arguments + separator + std::to_string(size) + ")");
    const std::string text = AnswerOf(texts, name + "(" + arguments + ")");
    if (size > 0) {
        const std::size_t length = std::min(text.size(), static_cast<std::size_t>(size) - 1);
        std::memcpy(out, text.data(), length);
        out[length] = '\0';
    }
    return out;
}

UINT32 FakeController::Seconds(const std::string& call)
{
    calls.push_back(call);
    return AnswerOf(seconds, call);
}

int FakeController::Contador_Get(FISCALDATA_COUNTER_INDEX contador)
{
    return Number(QuestionOf(contador));
}

int FakeController::Cupom_GetCOO()
{
    return Number("Cupom_GetCOO()");
}

int FakeController::Cupom_GetQuantidadeDeItens()
{
    return Number("Cupom_GetQuantidadeDeItens()");
}

char* FakeController::Cupom_GetItemQtdeStr(int item, char* out, int size)
{
    return Text("Cupom_GetItemQtdeStr", ListOf(item), out, size);
}

char* FakeController::Cupom_GetItemValorUnitarioStr(int item, char* out, int size)
{
    return Text("Cupom_GetItemValorUnitarioStr", ListOf(item), out, size);
}

Financial FakeController::Cupom_GetItemValorTotal(int item)
{
    return Money("Cupom_GetItemValorTotal(" + ListOf(item) + ")");
}

Financial FakeController::Cupom_GetItemValorAcr(int item)
{
    return Money("Cupom_GetItemValorAcr(" + ListOf(item) + ")");
}

Financial FakeController::Cupom_GetItemValorDesc(int item)
{
    return Money("Cupom_GetItemValorDesc(" + ListOf(item) + ")");
}

Financial FakeController::Cupom_GetSubTotal()
{
    return Money("Cupom_GetSubTotal()");
}

Financial FakeController::Cupom_GetTotal()
{
    return Money("Cupom_GetTotal()");
}

Financial FakeController::Cupom_GetTroco()
{
    return Money("Cupom_GetTroco()");
}

BOOL FakeController::Cupom_GetSTAcrAplicado()
{
    return Number("Cupom_GetSTAcrAplicado()");
}

BOOL FakeController::Cupom_GetSTDescAplicado()
{
    return Number("Cupom_GetSTDescAplicado()");
}

Financial FakeController::Cupom_GetSTValorDescAcr()
{
    return Money("Cupom_GetSTValorDescAcr()");
}

Financial FakeController::Cupom_GetSTValorCanceladoDescAcr()
{
    return Money("Cupom_GetSTValorCanceladoDescAcr()");
}

FD_TIPO_CUPOM FakeController::Cupom_GetTipoCupom()
{
    return static_cast<FD_TIPO_CUPOM>(Number("Cupom_GetTipoCupom()"));
}

BOOL FakeController::Cupom_GetRateioPorItem(Cupom* copy)
{
    *copy = rateio;
    return Number("Cupom_GetRateioPorItem()");
}

char* FakeController::CFe_GetChaveDeBusca(char* out, int size)
{
    return Text("CFe_GetChaveDeBusca", "", out, size);
}

int FakeController::AssinaturaDigital_GetBase64(char* out, char* bytes)
{
    signature = bytes;
    calls.push_back("AssinaturaDigital_GetBase64()");
    const std::string text = AnswerOf(texts, "AssinaturaDigital_GetBase64()");
    std::memcpy(out, text.c_str(), text.size() + 1);
    return static_cast<int>(text.size());
}

char* FakeController::DadosPDV_GetIdAplicativo(char* out, int size)
{
    return Text("DadosPDV_GetIdAplicativo", "", out, size);
}

int FakeController::BaseFormasPagamento_GetNumeroDeFormasDePagamento()
{
    return Number("BaseFormasPagamento_GetNumeroDeFormasDePagamento()");
}

char* FakeController::BaseFormasPagamento_GetMeioPagamento(int index, char* out, int size)
{
    return Text("BaseFormasPagamento_GetMeioPagamento", ListOf(index), out, size);
}

BOOL FakeController::BaseFormasPagamento_GetMeioPagamentoProgramado(int index)
{
    return Number("BaseFormasPagamento_GetMeioPagamentoProgramado(" + ListOf(index) + ")");
}

Financial FakeController::BaseFormasPagamento_GetFPTotal(int index)
{
    return Money("BaseFormasPagamento_GetFPTotal(" + ListOf(index) + ")");
}

Financial FakeController::BaseFormasPagamento_GetTrocoTotal()
{
    return Money("BaseFormasPagamento_GetTrocoTotal()");
}

Financial FakeController::Totalizador_GetGT()
{
    return Money("Totalizador_GetGT()");
}

Financial FakeController::Totalizador_GetGTIni(int ponto)
{
    return Money("Totalizador_GetGTIni(" + ListOf(ponto) + ")");
}

Financial FakeController::Totalizador_GetVB(int base)
{
    return Money("Totalizador_GetVB(" + ListOf(base) + ")");
}

Financial FakeController::Totalizador_GetTot(int base, int taxBase, int index)
{
    return Money("Totalizador_GetTot(" + ListOf(base, taxBase, index) + ")");
}

Financial FakeController::Totalizador_GetTotTrib(int base, int taxBase, int index)
{
    return Money("Totalizador_GetTotTrib(" + ListOf(base, taxBase, index) + ")");
}

int FakeController::Totalizador_GetTotPercTrib(int base, int taxBase, int index)
{
    return Number("Totalizador_GetTotPercTrib(" + ListOf(base, taxBase, index) + ")");
}

BOOL FakeController::Totalizador_GetTotProgramado(int base, int taxBase, int index)
{
    return Number("Totalizador_GetTotProgramado(" + ListOf(base, taxBase, index) + ")");
}

Financial FakeController::Totalizador_GetSoma_Tot_VL(int base, int taxBase)
{
    return Money("Totalizador_GetSoma_Tot_VL(" + ListOf(base, taxBase) + ")");
}

Financial FakeController::Totalizador_GetSoma_Tot_Canc(int base, int taxBase)
{
    return Money("Totalizador_GetSoma_Tot_Canc(" + ListOf(base, taxBase) + ")");
}

Financial FakeController::Totalizador_GetSoma_Tot_Desc(int base, int taxBase)
{
    return Money("Totalizador_GetSoma_Tot_Desc(" + ListOf(base, taxBase) + ")");
}

Financial FakeController::Totalizador_GetSoma_Tot_Acr(int base, int taxBase)
{
    return Money("Totalizador_GetSoma_Tot_Acr(" + ListOf(base, taxBase) + ")");
}

Financial FakeController::Totalizador_GetSoma_TotTrib(int base, int taxBase)
{
    return Money("Totalizador_GetSoma_TotTrib(" + ListOf(base, taxBase) + ")");
}

Financial FakeController::Totalizador_GetTotalNF(int base, int index)
{
    return Money("Totalizador_GetTotalNF(" + ListOf(base, index) + ")");
}

int FakeController::Totalizador_GetTotNFProgramado(int base, int index)
{
    return Number("Totalizador_GetTotNFProgramado(" + ListOf(base, index) + ")");
}

char* FakeController::Totalizador_GetNomeNF(int base, int index, char* out, int size)
{
    return Text("Totalizador_GetNomeNF", ListOf(base, index), out, size);
}

int FakeController::ResolveTotIndex(BASE_CONTABIL_FISCAL_BASE_IMPOSTO_INDEXES taxBase, char* code,
                                    int number)
{
    return Number("ResolveTotIndex(" + ListOf(taxBase) + "," + code + "," + ListOf(number) + ")");
}

RtcAbsoluteTime FakeController::Jornada_GetDataMovimento()
{
    return RtcAbsoluteTime(Seconds("Jornada_GetDataMovimento()"));
}

RtcRelativeTime FakeController::Jornada_GetTempoOperacional(RtcAbsoluteTime ate)
{
    return RtcRelativeTime(Seconds("Jornada_GetTempoOperacional(" + TextOf(ate) + ")"));
}

RtcRelativeTime FakeController::Jornada_GetTempoEmitindoDocFiscal()
{
    return RtcRelativeTime(Seconds("Jornada_GetTempoEmitindoDocFiscal()"));
}

char* FakeController::DadosContribuinte_GetRazaoSocial(char* out, int size)
{
    return Text("DadosContribuinte_GetRazaoSocial", "", out, size);
}

char* FakeController::DadosContribuinte_GetNomeFantasia(char* out, int size)
{
    return Text("DadosContribuinte_GetNomeFantasia", "", out, size);
}

char* FakeController::DadosContribuinte_GetEndereco(char* out, int size)
{
    return Text("DadosContribuinte_GetEndereco", "", out, size);
}

char* FakeController::DadosECF_GetVersaoSB(char* out, int size)
{
    return Text("DadosECF_GetVersaoSB", "", out, size);
}

char* FakeController::DadosECF_GetNrOrdemSeq(char* out, int size)
{
    return Text("DadosECF_GetNrOrdemSeq", "", out, size);
}

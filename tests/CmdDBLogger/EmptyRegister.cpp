#include "tests/CmdDBLogger/EmptyRegister.h"

#include "tests/CmdDBLogger/FakeController.h"

#include <string>

namespace
{

void ScriptOwner(FakeController& fiscal)
{
    for (const char* question :
         {"DadosContribuinte_GetRazaoSocial()", "DadosContribuinte_GetNomeFantasia()",
          "DadosContribuinte_GetEndereco()", "DadosECF_GetVersaoSB()",
          "DadosECF_GetNrOrdemSeq()"}) {
        fiscal.texts[question] = "";
    }
    fiscal.money["Totalizador_GetGTIni(0)"] = Financial();
}

void ScriptTaxBase(FakeController& fiscal, const std::string& base)
{
    for (const std::string sum : {"VL", "Canc", "Desc", "Acr"}) {
        fiscal.money["Totalizador_GetSoma_Tot_" + sum + "(2," + base + ")"] = Financial();
    }
    fiscal.money["Totalizador_GetSoma_TotTrib(2," + base + ")"] = Financial();
    for (int position = 0; position < 30; ++position) {
        fiscal.numbers["Totalizador_GetTotProgramado(2," + base + "," + std::to_string(position) +
                       ")"] = 0;
    }
    for (const char* number : {"1", "2", "3"}) {
        for (const char* letter : {"F", "I", "N"}) {
            const std::string code = base == "0" ? letter : std::string(letter) + "S";
            fiscal.numbers["ResolveTotIndex(" + base + "," + code + "," + number + ")"] = 99;
        }
    }
    fiscal.numbers["Totalizador_GetTotProgramado(2," + base + ",99)"] = 0;
}

} // namespace

void ScriptEmptyReceipt(FakeController& fiscal)
{
    for (const char* question :
         {"Cupom_GetCOO()", "Cupom_GetQuantidadeDeItens()", "Cupom_GetTipoCupom()",
          "Cupom_GetSTAcrAplicado()", "Cupom_GetSTDescAplicado()", "Cupom_GetRateioPorItem()"}) {
        fiscal.numbers[question] = 0;
    }
    for (const char* question :
         {"Cupom_GetSubTotal()", "Cupom_GetTotal()", "Cupom_GetTroco()",
          "Cupom_GetSTValorDescAcr()", "Cupom_GetSTValorCanceladoDescAcr()"}) {
        fiscal.money[question] = Financial();
    }
    for (const char* question :
         {"AssinaturaDigital_GetBase64()", "DadosPDV_GetIdAplicativo()", "CFe_GetChaveDeBusca()"}) {
        fiscal.texts[question] = "";
    }
    fiscal.KeepAsState();
}

void ScriptEmptyDay(FakeController& fiscal)
{
    fiscal.seconds["Jornada_GetDataMovimento()"] = 0;
    fiscal.seconds["Jornada_GetTempoEmitindoDocFiscal()"] = 0;
    fiscal.seconds["Jornada_GetTempoOperacional(2026-03-02 08:15:30)"] = 0;
    fiscal.money["Totalizador_GetGT()"] = Financial();
    fiscal.money["Totalizador_GetVB(2)"] = Financial();
    ScriptTaxBase(fiscal, "0");
    ScriptTaxBase(fiscal, "1");
    for (int position = 0; position < 39; ++position) {
        fiscal.numbers["Totalizador_GetTotNFProgramado(3," + std::to_string(position) + ")"] = 0;
    }
    fiscal.numbers["BaseFormasPagamento_GetNumeroDeFormasDePagamento()"] = 0;
    fiscal.money["BaseFormasPagamento_GetTrocoTotal()"] = Financial();
    fiscal.KeepAsState();
}

void ScriptEmptyRegister(FakeController& fiscal)
{
    for (const FISCALDATA_COUNTER_INDEX counter :
         {COUNTER_COO, COUNTER_CRZ, COUNTER_CRO, COUNTER_CCF, COUNTER_GNF, COUNTER_CFD, COUNTER_CDC,
          COUNTER_GRG}) {
        fiscal.SetCounter(counter, 0);
    }
    ScriptEmptyReceipt(fiscal);
    ScriptOwner(fiscal);
    ScriptEmptyDay(fiscal);
    fiscal.KeepAsState();
}

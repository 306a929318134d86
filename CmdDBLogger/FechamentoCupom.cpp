// The closing of a fiscal receipt.
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"
#include "FiscalData/RateioSubtotal.h"
#include "libs/CharTools.h"

#include <cstring>

namespace
{

constexpr int CPF_DIGITS = 11;
constexpr int CNPJ_DIGITS = 14;

// Finds the consumer's number after its label in the closing message and puts its digits, without
// punctuation, into `cpfFormated`. Answers whether they make a CPF or a CNPJ. One blank after the
// label is passed over; the next one ends the number, and nothing else does before the message's
// end or the 14th digit.
bool FindConsumer(const char* message, char (&cpfFormated)[CNPJ_DIGITS + 1])
{
    static constexpr char LABEL[] = "CNPJ/CPF consumidor:";

    const char* text = std::strstr(message, LABEL);
    if (text == nullptr) {
        return false;
    }

    std::size_t i = sizeof LABEL - 1;
    const std::size_t j = std::strlen(text);
    int k = 0;
    if (text[i] == ' ') {
        ++i;
    }
    while (text[i] != ' ' && i < j && k < CNPJ_DIGITS) {
        if (text[i] >= '0' && text[i] <= '9') {
            cpfFormated[k++] = text[i];
        }
        ++i;
    }
    cpfFormated[k] = '\0';
    return k == CPF_DIGITS || k == CNPJ_DIGITS;
}

} // namespace

BOOL CmdFechaCupom::DBLogger(sqlite3* db)
{
    Statement<SQL_SIZE_CUPOM, AUX_SIZE_FECHAMENTO> update;
    char assinatura[AUX_SIZE] = {};
    char cpfFormated[CNPJ_DIGITS + 1] = {};

    update.Begin("UPDATE cupom_fiscal SET ");
    FDController->AssinaturaDigital_GetBase64(assinatura, m_sAssinaturaDigitalDocumento);
    update.Text("assinatura_documento = '%s', ", assinatura);
    update.MoneyText("valor_subtotal = %s, ", FDController->Cupom_GetSubTotal());
    update.MoneyText("valor_total = %s, ", FDController->Cupom_GetTotal());
    update.MoneyText("valor_troco = %s, ", FDController->Cupom_GetTroco());

    update.CopyToAux(m_sMsgPromocional, "");
    if (FindConsumer(update.aux, cpfFormated)) {
        update.Text("cpf_cnpj_consumidor = '%s', ", cpfFormated);
    }
    CharReplace(update.aux, '\'', ' ');
    update.Text("texto_suplementar = '%s', ", update.aux);

    FDController->DadosPDV_GetIdAplicativo(update.aux, AUX_SIZE_FECHAMENTO);
    CharReplace(update.aux, '\'', ' ');
    update.Text("texto_complementar = '%s', ", update.aux);

    FDController->CFe_GetChaveDeBusca(update.aux, AUX_SIZE_FECHAMENTO);
    CharReplace(update.aux, '\'', ' ');
    update.Text("chave_cupom = '%s' ", update.aux);

    // Required text: no comma before this piece. The engine rejects the statement, and an
    // additional receipt keeps the values that its opening wrote.
    if (m_bCupomAdicional == TRUE) {
        update.Piece("id_cupom_adicional = 'S' ");
    }
    update.Integer("WHERE cont_coo = %d", FDController->Contador_Get(COUNTER_COO));
    if (update.Execute(*this, db) == FALSE) {
        return FALSE;
    }

    if (GetRatearSubtotal() != 1) {
        return TRUE;
    }
    if (FDController->Cupom_GetSTDescAplicado() == TRUE ||
        FDController->Cupom_GetSTAcrAplicado() == TRUE) {
        return CalculaRateioItens(db);
    }
    return TRUE;
}

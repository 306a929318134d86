// The closing of a fiscal receipt.
#include "CmdDBLogger/ReceiptTable.h"
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"
#include "FiscalData/RateioSubtotal.h"

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

    text += sizeof LABEL - 1;
    if (*text == ' ') {
        ++text;
    }
    int k = 0;
    for (; k < CNPJ_DIGITS; ++text) {
        if (*text >= '0' && *text <= '9') {
            cpfFormated[k++] = *text;
        } else if (*text == ' ' || *text == '\0') {
            break;
        }
    }
    cpfFormated[k] = '\0';
    return k == CPF_DIGITS || k == CNPJ_DIGITS;
}

// Stays a function of its own, so that its arrays no longer stand beneath the apportionment, which
// holds a whole receipt record.
[[gnu::noinline]] BOOL UpdateCupom(CmdFechaCupom& fecha, sqlite3* db)
{
    Statement<SQL_SIZE_CUPOM, AUX_SIZE_FECHAMENTO> update;
    char cpfFormated[CNPJ_DIGITS + 1] = {};

    update.Begin("UPDATE cupom_fiscal SET ");
    fecha.FDController->AssinaturaDigital_GetBase64(update.aux2,
                                                    fecha.m_sAssinaturaDigitalDocumento);
    update.Text("assinatura_documento = '%s', ", update.aux2);
    update.MoneyText("valor_subtotal = %s, ", fecha.FDController->Cupom_GetSubTotal());
    update.MoneyText("valor_total = %s, ", fecha.FDController->Cupom_GetTotal());
    update.MoneyText("valor_troco = %s, ", fecha.FDController->Cupom_GetTroco());

    update.CopyToAux(fecha.m_sMsgPromocional, "");
    if (FindConsumer(update.aux, cpfFormated)) {
        update.Text("cpf_cnpj_consumidor = '%s', ", cpfFormated);
    }
    update.TextReplacing("texto_suplementar = '%s', ", update.aux, '\'', ' ');

    fecha.FDController->DadosPDV_GetIdAplicativo(update.aux, AUX_SIZE_FECHAMENTO);
    update.TextReplacing("texto_complementar = '%s', ", update.aux, '\'', ' ');

    fecha.FDController->CFe_GetChaveDeBusca(update.aux, AUX_SIZE_FECHAMENTO);
    update.TextReplacing("chave_cupom = '%s' ", update.aux, '\'', ' ');

    // Required text: no comma before this piece. The engine rejects the statement, and an
    // additional receipt keeps the values that its opening wrote.
    if (fecha.m_bCupomAdicional == TRUE) {
        update.Piece("id_cupom_adicional = 'S' ");
    }
    return ExecuteForReceipt(update, fecha, db);
}

} // namespace

BOOL CmdFechaCupom::DBLogger(sqlite3* db)
{
    if (UpdateCupom(*this, db) == FALSE) {
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
